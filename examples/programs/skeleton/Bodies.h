// Where the bodies of a problem are at rest, that is when every system variable is 0.
#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Mat4Transform.h"
#include "quillon/model/BodyChain.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace skeleton {

using namespace quillon;

struct Body {
    const LqPDDBodyMap* record = nullptr; ///< null for the global frame
    Body* parent = nullptr;               ///< null for the global frame alone
    int children = 0;                     ///< how many bodies hang on it
    bool isPlaced = false;                ///< whether what stands below holds
    LmMat4 toGlobal = identityMat4;       ///< from its frame to the global one
    LmVec3 place = {};                    ///< its origin
    std::vector<LmVec3> ends = {};        ///< its children, the end of its vector; else its farthest marker
    float reach = 0;                      ///< how far that marker is; 0 without one
    std::size_t chain = 0;                ///< an index of `Bodies::chains`
};

/// The first and the last body of a line that ends where it branches.
using Chain = std::pair<const Body*, const Body*>;

/// Whether no element of a vector or a matrix is infinite or no number.
template <class Elements>
bool isFinite(const Elements& elements) {
    return std::ranges::all_of(elements, [](float element) { return std::isfinite(element); });
}

/// The bodies of a problem definition and its model, which outlive them.
class Bodies {
public:
    Bodies(const LqProblemDefData& definition, const LqBodyDefData& geometry)
        : problem(definition), index(definition, geometry) {
        global.isPlaced = true;
    }
    Bodies(const Bodies&) = delete;
    Bodies& operator=(const Bodies&) = delete;
    ~Bodies() = default;

    /// Places them, once. False when one has no place, which is reported as an error.
    bool place() {
        if (!link()) {
            return false;
        }
        std::vector<Body*> waiting;
        for (Body& body : all) {
            // Those above it come first; a chain without a loop has no more bodies than there are.
            for (Body* next = &body; !next->isPlaced; next = next->parent) {
                if (waiting.size() == all.size()) {
                    return refuse(*next, "is above itself");
                }
                waiting.push_back(next);
            }
            for (; !waiting.empty(); waiting.pop_back()) {
                if (!placeBelowParent(*waiting.back())) {
                    return false;
                }
            }
        }
        return true;
    }

    /// The body of that name, `global` for the global frame, or null.
    Body* find(const LmStr& name) {
        if (name == referenceSystemName) {
            return &global;
        }
        const LqPDDBodyMap* const record = index.findBody(name);
        return record == nullptr ? nullptr : bodyOfRecord.at(record);
    }

    std::vector<Body> all; ///< in the order of the definition
    std::vector<Chain> chains;
    Body global; ///< the global frame

private:
    bool link() {
        all.reserve(static_cast<std::size_t>(problem.bodies.count()));
        for (const LqPDDBodyMap* record : problem.bodies) {
            bodyOfRecord[record] = &all.emplace_back(Body{record});
        }
        for (Body& body : all) {
            body.parent = find(body.record->parentName);
            if (body.parent == nullptr) {
                return refuse(body, "hangs on a body that is not in the problem definition");
            }
            ++body.parent->children;
        }
        return true;
    }

    static bool refuse(const Body& body, const char* reason) {
        pushErrorf("Body %s %s.", body.record->name.c_str(), reason);
        return false;
    }

    bool placeBelowParent(Body& body) {
        const LqBDBody* const geometry = index.findGeometry(body.record->name);
        if (geometry == nullptr) {
            return refuse(body, "is not in the model");
        }
        matrixMultiply(body.toGlobal, toParent(*body.record, *geometry), body.parent->toGlobal);
        getTranslation(body.toGlobal, body.place);
        LmVec3 tip = body.place;
        if ((body.record->type & bodyTypeOne) != 0 && geometry->vectorDirection != LmVec3{}) {
            const auto [x, y, z] = normalized(geometry->vectorDirection);
            const float length = geometry->vectorLength;
            transformPoint(tip, {length * x, length * y, length * z}, body.toGlobal);
            body.ends.push_back(tip);
        }
        if (!isFinite(body.toGlobal) || !isFinite(tip)) {
            return refuse(body, "has no finite place");
        }
        body.isPlaced = true;
        body.parent->ends.push_back(body.place);
        putInChain(body);
        return true;
    }

    /// Each transformation happens before the one in front of it, and the base transform last of all.
    static LmMat4 toParent(const LqPDDBodyMap& body, const LqBDBody& geometry) {
        static constexpr void (*move[])(LmMat4&, float) = {translateX, translateY, translateZ,
                                                           rotateX,    rotateY,    rotateZ};
        LmMat4 out = geometry.baseTransform;
        for (int k = 0; k < transformCount; ++k) {
            // A linear combination, too, is its constant when its variables are 0.
            if (body.mappings[k].id < 0) {
                move[body.transformOrder[k] - 1](out, body.mappings[k].constant);
            }
        }
        return out;
    }

    void putInChain(Body& body) {
        if (body.parent != &global && body.parent->children == 1) {
            body.chain = body.parent->chain;
            chains[body.chain].second = &body;
        } else {
            body.chain = chains.size();
            chains.emplace_back(&body, &body);
        }
    }

    const LqProblemDefData& problem;
    BodyIndex index;
    std::unordered_map<const LqPDDBodyMap*, Body*> bodyOfRecord;
};

} // namespace skeleton
