#include "quillon/problem/RecordArrays.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleArrays.h"

#include <algorithm>

// Scaled bodies, the constraints on bodies, and the temporary markers.

namespace quillon {

using scaleDef::elementAt;
using scaleDef::indexWhere;
using scaleDef::removeAt;

namespace {

int bodyParamsIndex(const LmArray<scaleDef::BodyParams_t>& bodies, const LmStr& bodyName) {
    return indexWhere(bodies, [&bodyName](const auto& record) { return record.bodyName == bodyName; });
}

int tempIndex(const LmArray<scaleDef::TempData_t>& temps, std::int32_t id) {
    return indexWhere(temps, [id](const auto& temp) { return temp.id == id; });
}

void renameIfEqual(LmStr& name, const LmStr& oldName, const LmStr& newName) {
    if (name == oldName) {
        name = newName;
    }
}

template <class Constraint>
int indexOf(const LmArray<Constraint>& constraints, const Constraint& record) {
    return indexWhere(constraints, [&record](const Constraint& present) { return present == record; });
}

template <class Constraint>
void replaceEqual(LmArray<Constraint>& constraints, const Constraint& record, const Constraint& replacement) {
    const int index = indexOf(constraints, record);
    if (index >= 0) {
        constraints[index] = replacement;
    }
}

template <class Constraint>
void removeEqual(LmDArray<Constraint>& constraints, const Constraint& record) {
    const int index = indexOf(constraints, record);
    if (index >= 0) {
        removeAt(constraints, index);
    }
}

} // namespace

// --- Scaled bodies ----------------------------------------------------------------------------------------

LqScaleDefData::BodyParams_t* LqScaleDefData::findBodyParams(const LmStr& bodyName) {
    return elementAt(bodyParams, bodyParamsIndex(bodyParams, bodyName));
}

const LqScaleDefData::BodyParams_t* LqScaleDefData::findBodyParams(const LmStr& bodyName) const {
    return elementAt(bodyParams, bodyParamsIndex(bodyParams, bodyName));
}

void LqScaleDefData::addBodyParams(const BodyParams_t& record) {
    bodyParams.append(record);
}

void LqScaleDefData::removeBodyParams(const LmStr& bodyName) {
    const int index = bodyParamsIndex(bodyParams, bodyName);
    if (index >= 0) {
        removeAt(bodyParams, index);
    }
}

void LqScaleDefData::renameBody(const LmStr& oldName, const LmStr& newName) {
    // The names may be those of records that are renamed on the way.
    const LmStr from = oldName;
    const LmStr to = newName;
    for (BodyParams_t& record : bodyParams) {
        renameIfEqual(record.bodyName, from, to);
    }
    for (GlobalConst_t& record : globalConstraints) {
        renameIfEqual(record.bodyName, from, to);
    }
    for (TempData_t& temp : temps) {
        renameIfEqual(temp.attachedBody, from, to);
        renameIfEqual(temp.relativeBody, from, to);
    }
}

// --- Constraints ------------------------------------------------------------------------------------------

void LqScaleDefData::replaceGlobalConstraint(const GlobalConst_t& record, const GlobalConst_t& replacement) {
    replaceEqual(globalConstraints, record, replacement);
}

void LqScaleDefData::removeGlobalConstraint(const GlobalConst_t& record) {
    removeEqual(globalConstraints, record);
}

void LqScaleDefData::addPoseGlobalConstraint(const GlobalConst_t& record, int pose) {
    poses[pose]->globalConstraints.append(record);
}

void LqScaleDefData::replacePoseGlobalConstraint(const GlobalConst_t& record,
                                                 const GlobalConst_t& replacement, int pose) {
    replaceEqual(poses[pose]->globalConstraints, record, replacement);
}

void LqScaleDefData::removePoseGlobalConstraint(const GlobalConst_t& record, int pose) {
    removeEqual(poses[pose]->globalConstraints, record);
}

void LqScaleDefData::addPosePositionConstraint(const PositionConst_t& record, int pose) {
    poses[pose]->positionConstraints.append(record);
}

void LqScaleDefData::replacePositionConstraint(const PositionConst_t& record,
                                               const PositionConst_t& replacement, std::optional<int> pose) {
    replaceEqual(pose ? poses[*pose]->positionConstraints : positionConstraints, record, replacement);
}

void LqScaleDefData::removePositionConstraint(const PositionConst_t& record) {
    removeEqual(positionConstraints, record);
}

void LqScaleDefData::removePosePositionConstraint(const PositionConst_t& record, int pose) {
    removeEqual(poses[pose]->positionConstraints, record);
}

// --- Temporary markers ------------------------------------------------------------------------------------

bool LqScaleDefData::hasTemp(std::int32_t id) const {
    return findTemp(id) != nullptr;
}

LqScaleDefData::TempData_t* LqScaleDefData::findTemp(std::int32_t id) {
    return elementAt(temps, tempIndex(temps, id));
}

const LqScaleDefData::TempData_t* LqScaleDefData::findTemp(std::int32_t id) const {
    return elementAt(temps, tempIndex(temps, id));
}

void LqScaleDefData::addTemp(const TempData_t& record) {
    temps.append(record);
}

void LqScaleDefData::insertTemp(const TempData_t& record) {
    const int index = tempIndex(temps, record.id);
    if (index < 0) {
        addTemp(record);
        return;
    }
    temps.insert(index, 1, record);
    for (int i = index + 1; i < temps.count(); ++i) {
        shiftId(temps[i].id, 1);
    }
}

void LqScaleDefData::removeTemp(std::int32_t id) {
    const int index = tempIndex(temps, id);
    if (index < 0) {
        return;
    }
    removeAt(temps, index);
    for (int i = index; i < temps.count(); ++i) {
        shiftId(temps[i].id, -1);
    }
}

bool LqScaleDefData::tempsFollowReals() const {
    return temps.count() == 0 || temps[0].id == std::int64_t{realCount} + 1;
}

bool LqScaleDefData::tempIdsAreConsecutive() const {
    const auto doNotFollow = [](const TempData_t& temp, const TempData_t& next) {
        return next.id != std::int64_t{temp.id} + 1;
    };
    return std::adjacent_find(temps.begin(), temps.end(), doNotFollow) == temps.end();
}

} // namespace quillon
