// The temporary markers of a scale definition as real markers of a problem definition and its model.

#include "quillon/model/BodyChain.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/ArrayAppender.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"

#include <algorithm>

namespace quillon {

namespace {

/// The weight of a temp as a real marker. Deliberately not the temp's own, which is for the scaling alone.
constexpr float installedWeight = 2.0F;

/// The id of the last real marker, 0 when there is none. The last slots may be empty: those of the markers
/// that went with their body.
std::int32_t lastRealId(const LqProblemDefData& problemDef) {
    const LmDArray<LqPDDRealMarker*>& markers = problemDef.realMarkers;
    for (int i = markers.count() - 1; i >= 0; --i) {
        if (markers[i] != nullptr) {
            return markers[i]->id;
        }
    }
    return 0;
}

/// New ids that leave room for the temps behind the first `realCount` markers, of which the last one that
/// there is has the id `lastReal`.
LmDArray<int> tableWithRoom(const LqProblemDefData& problemDef, std::int32_t realCount, std::int32_t lastReal,
                            std::int32_t tempCount) {
    LmDArray<int> table(problemDef.highestMarkerId());
    const std::int64_t shift = std::int64_t{realCount} - lastReal + tempCount;
    for (int i = 0; i < table.count(); ++i) {
        const std::int64_t id = std::int64_t{i} + 1;
        table[i] = static_cast<int>(id > lastReal ? id + shift : id);
    }
    return table;
}

} // namespace

void LqScaleDefData::installTemps(LqProblemDefData& problemDef, LqBodyDefData& model,
                                  const LqMeasuredData* measured) const {
    while (problemDef.realMarkers.count() != 0 && lastRealId(problemDef) > realCount) {
        problemDef.removeLastRealMarker();
        model.removeLastRealMarker();
    }
    const LmDArray<int> table = tableWithRoom(problemDef, realCount, lastRealId(problemDef), temps.count());
    problemDef.applyMarkerIdTable(table);
    model.applyMarkerIdTable(table);

    const LqMeasuredData none;
    const LqMeasuredData& constants = measured == nullptr ? none : *measured;
    const BodyIndex bodies(problemDef, model);
    scaleDef::ArrayAppender<LqPDDRealMarker*> newMarkers(problemDef.realMarkers);
    scaleDef::ArrayAppender<LqBDMarker*> newPlaces(model.realMarkers);
    for (const TempData_t& temp : temps) {
        newMarkers.append() = new LqPDDRealMarker(temp.id, 0, installedWeight, temp.attachedBody);
        LmVec3 position = {};
        for (std::size_t axis = 0; axis < position.size(); ++axis) {
            if (!validateMeasuredRef(temp.position[axis], measured)) {
                return;
            }
            position[axis] = temp.position[axis].evaluate(constants);
        }
        const LmVec3 place = offsetBetweenBodies(bodies, position, temp.attachedBody, temp.relativeBody);
        newPlaces.append() = new LqBDMarker{temp.id, place};
    }
}

} // namespace quillon
