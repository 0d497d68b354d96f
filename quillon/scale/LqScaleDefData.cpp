#include "quillon/scale/LqScaleDefData.h"

#include "quillon/problem/RecordArrays.h"
#include "quillon/scale/ScaleArrays.h"

#include <algorithm>

namespace quillon {

using scaleDef::equalElements;

namespace {

bool equalPoses(const scaleDef::Pose_t* left, const scaleDef::Pose_t* right) {
    return left == nullptr || right == nullptr ? left == right : *left == *right;
}

} // namespace

LqScaleDefData::LqScaleDefData(const LqScaleDefData& other) {
    *this = other;
}

LqScaleDefData& LqScaleDefData::operator=(const LqScaleDefData& other) {
    if (this == &other) {
        return *this;
    }
    replaceRecords(poses, other.poses);
    realWeightOverrides = other.realWeightOverrides;
    artificialWeightOverrides = other.artificialWeightOverrides;
    limitOverrides = other.limitOverrides;
    sysVarGuideOverrides = other.sysVarGuideOverrides;
    bodyParams = other.bodyParams;
    temps = other.temps;
    scaleVars = other.scaleVars;
    globalConstraints = other.globalConstraints;
    positionConstraints = other.positionConstraints;
    realCount = other.realCount;
    defaultRealWeight = other.defaultRealWeight;
    return *this;
}

LqScaleDefData::~LqScaleDefData() {
    clearPoses();
}

bool LqScaleDefData::operator==(const LqScaleDefData& other) const {
    return equalElements(realWeightOverrides, other.realWeightOverrides) &&
           equalElements(artificialWeightOverrides, other.artificialWeightOverrides) &&
           equalElements(limitOverrides, other.limitOverrides) &&
           equalElements(bodyParams, other.bodyParams) && equalElements(temps, other.temps) &&
           equalElements(scaleVars, other.scaleVars) &&
           equalElements(globalConstraints, other.globalConstraints) && realCount == other.realCount &&
           defaultRealWeight == other.defaultRealWeight &&
           std::equal(poses.begin(), poses.end(), other.poses.begin(), other.poses.end(), equalPoses) &&
           equalElements(sysVarGuideOverrides, other.sysVarGuideOverrides);
}

bool LqScaleDefData::isEmpty() const {
    return poses.count() == 0 && realWeightOverrides.count() == 0 && artificialWeightOverrides.count() == 0 &&
           limitOverrides.count() == 0 && bodyParams.count() == 0 && temps.count() == 0 &&
           scaleVars.count() == 0 && globalConstraints.count() == 0 && realCount == 0 &&
           defaultRealWeight == 0.0F;
}

// --- Poses ------------------------------------------------------------------------------------------------

bool LqScaleDefData::hasPose(const LmStr& name) const {
    return poseIndex(name) >= 0;
}

void LqScaleDefData::clearPoses() {
    freeRecords(poses);
}

void LqScaleDefData::removePose(const LmStr& name) {
    const int index = poseIndex(name);
    if (index >= 0) {
        delete poses[index];
        scaleDef::removeAt(poses, index);
    }
}

void LqScaleDefData::replacePose(const LmStr& name, const Pose_t& pose) {
    const int index = poseIndex(name);
    if (index >= 0) {
        *poses[index] = pose;
    }
}

int LqScaleDefData::poseIndex(const LmStr& name) const {
    return scaleDef::indexWhere(
        poses, [&name](const Pose_t* pose) { return pose != nullptr && pose->name == name; });
}

} // namespace quillon
