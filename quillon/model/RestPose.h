#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Vec3.h"

#include <cstdint>
#include <vector>

namespace quillon {

class LqBodyDefData;
class LqProblemDefData;
struct LqBDBody;
struct LqPDDBodyMap;

/// Where a body is at rest, that is when every system variable is 0.
struct BodyAtRest {
    const LqPDDBodyMap* body = nullptr; ///< in the definition, which owns it
    const LqBDBody* geometry = nullptr; ///< the body of that name in the model, which owns it
    int parent = -1;                    ///< the index of its parent, which is lower; -1 for the global frame
    int chain = 0; ///< counts the lines of bodies from 0; a line ends where several bodies hang on one
    LmMat4 toGlobal = identityMat4; ///< maps points of its frame to the global one
    LmVec3 place = {};              ///< its origin, in the global frame
    LmVec3 end = {};                ///< where the vector of a body of type one ends; of others their place
};

/// All bodies at rest: in the order of the definition, but parents first. Of several bodies of one name the
/// first one is the parent. A parent that is unknown, a body that is above itself, that the model lacks or
/// that has no finite place is reported as an error; there are no bodies then. The time grows with their
/// number.
std::vector<BodyAtRest> bodiesAtRest(const LqProblemDefData& problem, const LqBodyDefData& model,
                                     LmStatus& status = currentStatus());

/// Where a marker is at rest.
struct MarkerAtRest {
    std::int32_t id = 0; ///< as in the definition
    int body = -1;       ///< the index of its body; -1 for the global frame
    LmVec3 place = {};   ///< in the global frame
};

/// The real, fix and double markers at rest, then both of each artificial pair. One that the model lacks, on
/// an unknown body or without a finite place is left out with a warning. `bodies` are those of
/// `bodiesAtRest`.
std::vector<MarkerAtRest> markersAtRest(const LqProblemDefData& problem, const LqBodyDefData& model,
                                        const std::vector<BodyAtRest>& bodies,
                                        LmStatus& status = currentStatus());

} // namespace quillon
