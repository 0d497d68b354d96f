// Where the markers of a problem are at rest, that is when every system variable is 0.
#pragma once

#include "Bodies.h"

#include "quillon/tool/RecordIndex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace skeleton {

struct Marker {
    std::int32_t id;
    const Body* body; ///< or the global frame
    bool isReal;      ///< whether the capture system sees it
    LmVec3 place;
};

/// The markers of a problem definition and its model on bodies that are placed.
class Markers {
public:
    Markers(const LqProblemDefData& definition, const LqBodyDefData& geometry, Bodies& placed)
        : problem(definition), bodies(placed) {
        for (const auto* kind : {&geometry.realMarkers, &geometry.fixMarkers, &geometry.doubleMarkers,
                                 &geometry.artificialMarkers}) {
            for (const LqBDMarker* marker : *kind) {
                locals.add(marker);
            }
        }
        locals.finish();
    }

    /// Places them, once, and ends the bodies in them that end nowhere else. A marker without a place is left
    /// out with a warning.
    void place() {
        placeAll(problem.realMarkers, true);
        placeAll(problem.fixMarkers, false);
        placeAll(problem.doubleMarkers, false);
        for (const LqPDDArtificialMarker* pair : problem.artificialMarkers) {
            placeMarker(pair->id, pair->bodyName, false);
            placeMarker(pair->otherId, pair->otherBodyName, false);
        }
    }

    std::vector<Marker> all; ///< real, fix and double markers, then the points of the artificial pairs

private:
    template <class Kind>
    void placeAll(const Kind& markers, bool isReal) {
        for (const auto* marker : markers) {
            placeMarker(marker->id, marker->bodyName, isReal);
        }
    }

    void placeMarker(std::int32_t id, const LmStr& bodyName, bool isReal) {
        Body* const body = bodies.find(bodyName);
        const LqBDMarker* const local = locals.find(id);
        LmVec3 place = {};
        if (body != nullptr && local != nullptr) {
            transformPoint(place, local->position, body->toGlobal);
        }
        if (body == nullptr || local == nullptr || !isFinite(place)) {
            pushWarningf("Marker %d has no place and is left out.", id);
            return;
        }
        all.push_back({id, body, isReal, place});
        const float reach = length(local->position);
        const bool isOpen = body != &bodies.global && (body->ends.empty() || body->reach > 0);
        if (isOpen && reach > body->reach) {
            body->reach = reach;
            body->ends = {place};
        }
    }

    const LqProblemDefData& problem;
    Bodies& bodies;
    RecordIndex<LqBDMarker> locals;
};

/// The room that all places take.
class Extent {
public:
    Extent(const Bodies& bodies, const Markers& markers) {
        if (bodies.all.empty()) {
            include(bodies.global.place);
        }
        for (const Body& body : bodies.all) {
            include(body.place);
            std::ranges::for_each(body.ends, [this](const LmVec3& end) { include(end); });
        }
        std::ranges::for_each(markers.all, [this](const Marker& marker) { include(marker.place); });
    }

    /// Along an axis, 0 for x.
    double size(std::size_t axis) const { return highest[axis] - lowest[axis]; }
    double middle(std::size_t axis) const { return (lowest[axis] + highest[axis]) / 2; }

    std::array<double, 3> lowest = {HUGE_VAL, HUGE_VAL, HUGE_VAL};
    std::array<double, 3> highest = {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};

private:
    void include(const LmVec3& place) {
        for (std::size_t axis = 0; axis < place.size(); ++axis) {
            const auto coordinate = static_cast<double>(place[axis]);
            lowest[axis] = std::min(lowest[axis], coordinate);
            highest[axis] = std::max(highest[axis], coordinate);
        }
    }
};

} // namespace skeleton
