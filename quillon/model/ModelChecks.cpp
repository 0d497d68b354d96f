// The checks of a model against a problem definition.

#include "quillon/model/ModelChecks.h"

#include "quillon/core/LmStatus.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace quillon {

// --- The number of bodies ------------------------------------------------------------------------

void LqBodyDefData::checkBodyCount(int bodyCount, const LqProblemDefData& definition) const {
    if (bodyCount == definition.bodies.count()) {
        return;
    }
    const auto report = strictMatch ? pushErrorf : pushWarningf;
    report("The number of bodies in this body def (%d) does not match the number of bodies in the given "
           "problem def (%d).",
           bodyCount, definition.bodies.count());
    report("The body def does not match the previously loaded problem def.");
}

// --- The model by itself -------------------------------------------------------------------------

namespace {

/// As asking whether `duplicateBodies` is empty, whose length grows with the square of equal names.
bool hasDuplicateBodies(const LqBodyDefData& model) {
    std::unordered_set<std::string_view> names;
    const auto bodies = model.storedBodies();
    return std::any_of(bodies.begin(), bodies.end(),
                       [&names](const LqBDBody* body) { return !names.insert(body->name.view()).second; });
}

/// The marker arrays in the order of their numbering, in which global direction markers have no part.
constexpr std::array<LmDArray<LqBDMarker*> LqBodyDefData::*, 4> numberedArrays = {
    &LqBodyDefData::realMarkers, &LqBodyDefData::fixMarkers, &LqBodyDefData::doubleMarkers,
    &LqBodyDefData::artificialMarkers};

bool markerIdsStartAtOne(const LqBodyDefData& model) {
    for (const auto array : numberedArrays) {
        const LmDArray<LqBDMarker*>& markers = model.*array;
        if (markers.count() != 0) {
            return markers[0]->id == 1;
        }
    }
    return true;
}

/// Artificial points count in array order, not by their pairs.
bool markerIdsRunFromOne(const LqBodyDefData& model) {
    std::int64_t lastId = 0;
    for (const auto array : numberedArrays) {
        for (const LqBDMarker* marker : model.*array) {
            if (marker->id != ++lastId) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

void LqBodyDefData::checkModel() const {
    if (hasDuplicateBodies(*this)) {
        pushError("There are duplicate body names in the bodydef.");
    } else if (compareBodyCount() != 0) {
        pushError("The number of bodies in the bodydef does not match the problem definition.");
    } else if (!markerIdsStartAtOne(*this)) {
        pushError("The marker ids do not start at 1 in the bodydef.");
    } else if (!markerIdsRunFromOne(*this)) {
        pushError("The markers are not consecutively numbered in the bodydef.");
    } else if (compareMarkerCount() != 0) {
        pushError("The number of markers in the bodydef does not match the problem definition.");
    }
}

// --- The model and the definition ----------------------------------------------------------------

namespace {

/// Compares the numbers of markers of one kind. Reports a difference and answers false.
bool matchMarkerCounts(const char* kind, std::int64_t definitionCount, std::int64_t modelCount,
                       LmStatus& status) {
    if (definitionCount == modelCount) {
        return true;
    }
    status.pushErrorf("The number of %s markers in the problem definition and body definition do not match.",
                      kind);
    return false;
}

/// As for the other kinds; of this kind alone the numbers are told, below that error.
bool matchRealMarkerCounts(int definitionCount, int modelCount, LmStatus& status) {
    if (definitionCount != modelCount) {
        status.pushErrorf("The problem definition has %d real markers, but the body definition has %d.",
                          definitionCount, modelCount);
    }
    return matchMarkerCounts("real", definitionCount, modelCount, status);
}

bool hasAllBodies(const LqBodyDefData& model, const LqProblemDefData& problemDef, LmStatus& status) {
    std::unordered_set<std::string_view> modelNames;
    for (const LqBDBody* body : model.storedBodies()) {
        modelNames.insert(body->name.view());
    }
    for (const LqPDDBodyMap* body : problemDef.bodies) {
        if (body != nullptr && !modelNames.contains(body->name.view())) {
            status.pushError("Body \"" + body->name +
                             "\" is in the problem definition but not in the body definition.");
            return false;
        }
    }
    return true;
}

} // namespace

bool matchProblemDef(const LqProblemDefData& problemDef, const LqBodyDefData& model, LmStatus& status) {
    return matchRealMarkerCounts(problemDef.realMarkers.count(), model.realMarkers.count(), status) &&
           matchMarkerCounts("fix", problemDef.fixMarkers.count(), model.fixMarkers.count(), status) &&
           matchMarkerCounts("double", problemDef.doubleMarkers.count(), model.doubleMarkers.count(),
                             status) &&
           matchMarkerCounts("artificial", 2 * std::int64_t{problemDef.artificialMarkers.count()},
                             model.artificialMarkers.count(), status) &&
           hasAllBodies(model, problemDef, status);
}

} // namespace quillon
