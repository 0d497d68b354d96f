#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleArrays.h"

#include <algorithm>

// Limit and guide overrides of system variables, outside poses and in them.

namespace quillon {

using scaleDef::elementAt;
using scaleDef::indexWhere;
using scaleDef::removeAt;

namespace {

using Limits = LmDArray<scaleDef::LimitOverride_t>;
using Guides = LmDArray<scaleDef::SysVarGuideOverride>;

int limitIndex(const Limits& limits, std::int32_t sysVarId) {
    return indexWhere(limits, [sysVarId](const auto& record) { return record.sysVarId == sysVarId; });
}

int guideIndex(const Guides& guides, std::int32_t sysVarId) {
    return indexWhere(guides, [sysVarId](const auto& record) { return record.sysVarId == sysVarId; });
}

void updateLimit(Limits& limits, const scaleDef::LimitOverride_t& record) {
    const int index = limitIndex(limits, record.sysVarId);
    if (index >= 0) {
        limits[index] = record;
    }
}

bool removeLimit(Limits& limits, std::int32_t sysVarId) {
    const int index = limitIndex(limits, sysVarId);
    if (index < 0) {
        return false;
    }
    removeAt(limits, index);
    return true;
}

void renameInLimits(Limits& limits, std::int32_t oldId, std::int32_t newId) {
    for (scaleDef::LimitOverride_t& record : limits) {
        if (record.sysVarId == oldId) {
            record.sysVarId = newId;
        }
    }
}

/// The pose that a definition without poses is looked at through. It is one for the whole process and stays
/// empty.
class DefaultPose {
public:
    DefaultPose() {
        pose.name = "Default";
        poses.append(&pose);
    }
    const LmDArray<scaleDef::Pose_t*>& asArray() const { return poses; }

private:
    scaleDef::Pose_t pose;
    LmDArray<scaleDef::Pose_t*> poses; // of length 1, not owned
};

const DefaultPose defaultPose;

} // namespace

const LqScaleDefData::Pose_t* LqScaleDefData::poseToLookIn(int pose) const {
    return poses.count() == 0 ? defaultPose.asArray()[pose] : poses[pose];
}

// --- Limit overrides --------------------------------------------------------------------------------------

bool LqScaleDefData::hasLimitOverride(std::int32_t sysVarId) const {
    return findLimitOverride(sysVarId) != nullptr;
}

LqScaleDefData::LimitOverride_t* LqScaleDefData::findLimitOverride(std::int32_t sysVarId) {
    return elementAt(limitOverrides, limitIndex(limitOverrides, sysVarId));
}

const LqScaleDefData::LimitOverride_t* LqScaleDefData::findLimitOverride(std::int32_t sysVarId) const {
    return elementAt(limitOverrides, limitIndex(limitOverrides, sysVarId));
}

void LqScaleDefData::updateLimitOverride(const LimitOverride_t& record) {
    updateLimit(limitOverrides, record);
}

void LqScaleDefData::addLimitOverride(const LimitOverride_t& record) {
    limitOverrides.append(record);
}

bool LqScaleDefData::removeLimitOverride(std::int32_t sysVarId) {
    return removeLimit(limitOverrides, sysVarId);
}

bool LqScaleDefData::removeLimitOverrideEverywhere(std::int32_t sysVarId) {
    bool found = removeLimitOverride(sysVarId);
    for (const Pose_t* const pose : poses) {
        const int index = pose == nullptr ? -1 : limitIndex(pose->limitOverrides, sysVarId);
        if (index < 0) {
            continue;
        }
        found = true;
        // Deliberately from the definition's own array, at the index of the pose's.
        if (index < limitOverrides.count()) {
            removeAt(limitOverrides, index);
        }
    }
    return found;
}

bool LqScaleDefData::hasPoseLimitOverride(std::int32_t sysVarId, int pose) const {
    return limitIndex(poseToLookIn(pose)->limitOverrides, sysVarId) >= 0;
}

LqScaleDefData::LimitOverride_t* LqScaleDefData::findPoseLimitOverride(std::int32_t sysVarId, int pose) {
    Limits& limits = poses[pose]->limitOverrides;
    return elementAt(limits, limitIndex(limits, sysVarId));
}

const LqScaleDefData::LimitOverride_t* LqScaleDefData::findPoseLimitOverride(std::int32_t sysVarId,
                                                                             int pose) const {
    const Limits& limits = poses[pose]->limitOverrides;
    return elementAt(limits, limitIndex(limits, sysVarId));
}

void LqScaleDefData::updatePoseLimitOverride(const LimitOverride_t& record, int pose) {
    updateLimit(poses[pose]->limitOverrides, record);
}

void LqScaleDefData::addPoseLimitOverride(const LimitOverride_t& record, int pose) {
    poses[pose]->limitOverrides.append(record);
}

bool LqScaleDefData::removePoseLimitOverride(std::int32_t sysVarId, int pose) {
    return removeLimit(poses[pose]->limitOverrides, sysVarId);
}

void LqScaleDefData::setPoseLimitOverride(std::int32_t sysVarId, int pose, bool on) {
    if (hasPoseLimitOverride(sysVarId, pose) == on) {
        return;
    }
    if (on) {
        addPoseLimitOverride({sysVarId, {}, {}}, pose);
    } else {
        removePoseLimitOverride(sysVarId, pose);
    }
}

void LqScaleDefData::renameSysVar(std::int32_t oldId, std::int32_t newId) {
    renameInLimits(limitOverrides, oldId, newId);
    for (Pose_t* const pose : poses) {
        if (pose != nullptr) {
            renameInLimits(pose->limitOverrides, oldId, newId);
        }
    }
}

// --- Guide overrides --------------------------------------------------------------------------------------

LqScaleDefData::SysVarGuideOverride* LqScaleDefData::findGuideOverride(std::int32_t sysVarId) {
    return elementAt(sysVarGuideOverrides, guideIndex(sysVarGuideOverrides, sysVarId));
}

const LqScaleDefData::SysVarGuideOverride* LqScaleDefData::findGuideOverride(std::int32_t sysVarId) const {
    return elementAt(sysVarGuideOverrides, guideIndex(sysVarGuideOverrides, sysVarId));
}

const LqScaleDefData::SysVarGuideOverride* LqScaleDefData::findPoseGuideOverride(std::int32_t sysVarId,
                                                                                 int pose) const {
    const Pose_t* const lookedIn = poseToLookIn(pose);
    const Guides& guides = lookedIn == nullptr ? sysVarGuideOverrides : lookedIn->sysVarGuideOverrides;
    return elementAt(guides, guideIndex(guides, sysVarId));
}

LmDArray<LqScaleDefData::SysVarGuideOverride>& LqScaleDefData::guideOverrides(std::optional<int> pose) {
    Pose_t* const chosen = pose ? poses[*pose] : nullptr;
    return chosen == nullptr ? sysVarGuideOverrides : chosen->sysVarGuideOverrides;
}

const LmDArray<LqScaleDefData::SysVarGuideOverride>&
LqScaleDefData::guideOverrides(std::optional<int> pose) const {
    const Pose_t* const chosen = pose ? poses[*pose] : nullptr;
    return chosen == nullptr ? sysVarGuideOverrides : chosen->sysVarGuideOverrides;
}

void LqScaleDefData::updateGuideOverride(const SysVarGuideOverride& record, std::optional<int> pose) {
    Guides& guides = guideOverrides(pose);
    const int index = guideIndex(guides, record.sysVarId);
    if (index >= 0) {
        guides[index] = record;
    }
}

void LqScaleDefData::addGuideOverride(const SysVarGuideOverride& record, std::optional<int> pose) {
    Guides& guides = guideOverrides(pose);
    const auto isBelow = [](const SysVarGuideOverride& present, std::int32_t id) {
        return present.sysVarId < id;
    };
    const SysVarGuideOverride* const position =
        std::lower_bound(guides.begin(), guides.end(), record.sysVarId, isBelow);
    if (position == guides.end() || position->sysVarId != record.sysVarId) {
        guides.insert(static_cast<int>(position - guides.begin()), 1, record);
    }
}

void LqScaleDefData::removeGuideOverride(std::int32_t sysVarId, std::optional<int> pose) {
    Guides& guides = guideOverrides(pose);
    const int index = guideIndex(guides, sysVarId);
    if (index >= 0) {
        removeAt(guides, index);
    }
}

} // namespace quillon
