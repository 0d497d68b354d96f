#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/model/DefinedBodyIndex.h"

#include <string_view>
#include <unordered_map>

namespace quillon {

class LqBodyDefData;
class LqProblemDefData;
struct LqBDBody;
struct LqPDDBodyMap;

// Walks from a body to its parent, to the parent's parent and so on up to the global frame, whose name
// `referenceSystemName` is no body. The definition gives the parents, the model the base transforms. A body
// of the chain that is in neither, or that is above itself, ends the process: after a line on standard error
// it aborts. Each step looks a body up by a scan, where no `BodyIndex` is given.

/// Whether `ancestor` is on the chain from `start` up, `start` included. The global frame is on every chain.
bool isAncestor(const LqProblemDefData& problem, const LmStr& ancestor, const LmStr& start);

/// out = the product of the base transforms of the bodies from `start` up to, not including, `ancestor`: it
/// maps a point from the frame of `start` to the frame of `ancestor`, which must be on the chain.
void chainTransform(LmMat4& out, const LqProblemDefData& problem, const LqBodyDefData& model,
                    const LmStr& start, const LmStr& ancestor);

/// `point` plus the translation of a transform between two bodies of one chain: that of `to` into `from` when
/// `from` is above, otherwise the inverse of that of `from` into `to`. Deliberately, the rotation does not
/// turn the point.
LmVec3 offsetBetweenBodies(const LqProblemDefData& problem, const LqBodyDefData& model, const LmVec3& point,
                           const LmStr& from, const LmStr& to);
/// `point` minus that translation.
LmVec3 offsetBetweenBodiesInverse(const LqProblemDefData& problem, const LqBodyDefData& model,
                                  const LmVec3& point, const LmStr& from, const LmStr& to);

/// The bodies of a definition and its model by their names, for many walks: of several bodies of one name the
/// first one counts, as in a scan. Good until a body of either is added, removed or renamed.
class BodyIndex {
public:
    /// Of all bodies of the two, which outlive it.
    BodyIndex(const LqProblemDefData& problem, const LqBodyDefData& model);

    /// The body in the definition, or null.
    const LqPDDBodyMap* findBody(const LmStr& name) const;
    /// The body in the model, or null.
    const LqBDBody* findGeometry(const LmStr& name) const;
    /// The number of bodies in the definition.
    int count() const { return bodyCount; }

private:
    DefinedBodyIndex definedBodies;
    std::unordered_map<std::string_view, const LqBDBody*> geometries;
    int bodyCount;
};

/// The same as with the definition and the model themselves.
LmVec3 offsetBetweenBodies(const BodyIndex& bodies, const LmVec3& point, const LmStr& from, const LmStr& to);

} // namespace quillon
