#include "quillon/model/RestPose.h"

#include "quillon/core/NameIndex.h"
#include "quillon/core/RecordIndex.h"
#include "quillon/geometry/Mat4Transform.h"
#include "quillon/model/BodyChain.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>

namespace quillon {

namespace {

/// From the frame of a body to that of its parent. Each transformation happens before the one in front of it,
/// and the base transform last of all.
LmMat4 toParent(const LqPDDBodyMap& body, const LqBDBody& geometry) {
    static constexpr void (*move[])(LmMat4&, float) = {translateX, translateY, translateZ,
                                                       rotateX,    rotateY,    rotateZ};
    LmMat4 out = geometry.baseTransform;
    for (int k = 0; k < body.mappings.count(); ++k) {
        // A linear combination, too, is its constant at rest. A new record's order names no transformations
        // yet.
        const int transform = body.transformOrder[k];
        if (body.mappings[k].id < 0 && transform >= 1 && transform <= transformCount) {
            move[transform - 1](out, body.mappings[k].constant);
        }
    }
    return out;
}

LmVec3 endOf(const BodyAtRest& body) {
    const LqBDBody& geometry = *body.geometry;
    if ((body.body->type & bodyTypeOne) == 0 || geometry.vectorDirection == LmVec3{}) {
        return body.place;
    }
    LmVec3 vector = normalized(geometry.vectorDirection);
    for (float& coordinate : vector) {
        coordinate *= geometry.vectorLength;
    }
    LmVec3 end = {};
    transformPoint(end, vector, body.toGlobal);
    return end;
}

bool isFinite(const LmVec3& place) {
    return std::ranges::all_of(place, [](float coordinate) { return std::isfinite(coordinate); });
}

class RestPose {
public:
    RestPose(const LqProblemDefData& problem, const LqBodyDefData& model, LmStatus& status)
        : records(problem, model), status(status) {
        for (const LqPDDBodyMap* body : problem.bodies) {
            if (body != nullptr) {
                definedBodies.push_back(body);
            }
        }
    }

    std::vector<BodyAtRest> take() {
        for (const LqPDDBodyMap* body : definedBodies) {
            if (!placeWithParents(*body)) {
                return {};
            }
        }
        numberChains();
        return std::move(placedBodies);
    }

private:
    /// Without a recursion: a chain may have as many bodies as there are.
    bool placeWithParents(const LqPDDBodyMap& body) {
        std::vector<const LqPDDBodyMap*> waiting;
        for (const LqPDDBodyMap* next = &body; next != nullptr && !indexOf.contains(next);) {
            if (waiting.size() == definedBodies.size()) {
                status.pushErrorf("Body %s is above itself.", next->name.c_str());
                return false;
            }
            waiting.push_back(next);
            if (next->parentName == referenceSystemName) {
                break;
            }
            const LqPDDBodyMap* const parent = records.findBody(next->parentName);
            if (parent == nullptr) {
                status.pushErrorf("Body %s hangs on a body that is not in the problem definition.",
                                  next->name.c_str());
                return false;
            }
            next = parent;
        }
        for (; !waiting.empty(); waiting.pop_back()) {
            if (!placeBelowParent(*waiting.back())) {
                return false;
            }
        }
        return true;
    }

    bool placeBelowParent(const LqPDDBodyMap& body) {
        const LqBDBody* const geometry = records.findGeometry(body.name);
        if (geometry == nullptr) {
            status.pushErrorf("Body %s is not in the model.", body.name.c_str());
            return false;
        }
        BodyAtRest placed = {&body, geometry, -1, 0, toParent(body, *geometry)};
        if (body.parentName != referenceSystemName) {
            placed.parent = indexOf.at(records.findBody(body.parentName));
            const LmMat4& parentToGlobal = placedBodies[static_cast<std::size_t>(placed.parent)].toGlobal;
            const LmMat4 toParentFrame = placed.toGlobal;
            matrixMultiply(placed.toGlobal, toParentFrame, parentToGlobal);
        }
        getTranslation(placed.toGlobal, placed.place);
        placed.end = endOf(placed);
        indexOf.emplace(&body, static_cast<int>(placedBodies.size()));
        placedBodies.push_back(placed);
        if (!isFinite(placed.place) || !isFinite(placed.end)) {
            status.pushErrorf("Body %s has no finite place.", body.name.c_str());
            return false;
        }
        return true;
    }

    void numberChains() {
        std::vector<int> children(placedBodies.size());
        for (const BodyAtRest& body : placedBodies) {
            if (body.parent >= 0) {
                ++children[static_cast<std::size_t>(body.parent)];
            }
        }
        int chainCount = 0;
        for (BodyAtRest& body : placedBodies) {
            const auto parent = static_cast<std::size_t>(body.parent);
            const bool goesOn = body.parent >= 0 && children[parent] == 1;
            body.chain = goesOn ? placedBodies[parent].chain : chainCount++;
        }
    }

    const BodyIndex records;
    LmStatus& status;
    std::vector<const LqPDDBodyMap*> definedBodies;
    std::vector<BodyAtRest> placedBodies;
    std::unordered_map<const LqPDDBodyMap*, int> indexOf;
};

} // namespace

std::vector<BodyAtRest> bodiesAtRest(const LqProblemDefData& problem, const LqBodyDefData& model,
                                     LmStatus& status) {
    return RestPose(problem, model, status).take();
}

namespace {

class MarkerPlaces {
public:
    MarkerPlaces(const LqBodyDefData& model, const std::vector<BodyAtRest>& bodies, LmStatus& status)
        : bodies(bodies), status(status) {
        for (const auto* kind :
             {&model.realMarkers, &model.fixMarkers, &model.doubleMarkers, &model.artificialMarkers}) {
            locals.addAll(*kind);
        }
        locals.finish();
        bodyOfName.add(referenceSystemName, globalFrame);
        for (std::size_t i = 0; i < bodies.size(); ++i) {
            bodyOfName.add(bodies[i].body->name.view(), static_cast<int>(i));
        }
    }

    /// Of any array of markers that have an `id` and a `bodyName`.
    template <class Markers>
    void addAll(const Markers& kind) {
        for (const auto* marker : kind) {
            if (marker != nullptr) {
                add(marker->id, marker->bodyName);
            }
        }
    }

    void add(std::int32_t id, const LmStr& bodyName) {
        const LqBDMarker* const local = locals.find(id);
        const std::optional<int> body = bodyOfName.find(bodyName.view());
        if (local != nullptr && body.has_value()) {
            MarkerAtRest marker = {id, *body};
            transformPoint(marker.place, local->position, toGlobal(*body));
            if (isFinite(marker.place)) {
                markers.push_back(marker);
                return;
            }
        }
        status.pushWarningf("Marker %d has no place and is left out.", id);
    }

    std::vector<MarkerAtRest> markers;

private:
    static constexpr int globalFrame = -1;

    const LmMat4& toGlobal(int body) const {
        return body == globalFrame ? identityMat4 : bodies[static_cast<std::size_t>(body)].toGlobal;
    }

    const std::vector<BodyAtRest>& bodies;
    LmStatus& status;
    RecordIndex<LqBDMarker> locals;
    NameIndex bodyOfName;
};

} // namespace

std::vector<MarkerAtRest> markersAtRest(const LqProblemDefData& problem, const LqBodyDefData& model,
                                        const std::vector<BodyAtRest>& bodies, LmStatus& status) {
    MarkerPlaces places(model, bodies, status);
    places.addAll(problem.realMarkers);
    places.addAll(problem.fixMarkers);
    places.addAll(problem.doubleMarkers);
    for (const LqPDDArtificialMarker* pair : problem.artificialMarkers) {
        if (pair != nullptr) {
            places.add(pair->id, pair->bodyName);
            places.add(pair->otherId, pair->otherBodyName);
        }
    }
    return std::move(places.markers);
}

} // namespace quillon
