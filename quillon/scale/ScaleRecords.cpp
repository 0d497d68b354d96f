#include "quillon/scale/ScaleRecords.h"

#include "quillon/scale/ScaleArrays.h"

#include <algorithm>
#include <numeric>

namespace quillon::scaleDef {

namespace {

bool equalMappings(const ScaleMapping& left, const ScaleMapping& right) {
    return equals(left, right);
}

} // namespace

PositionConst_t::PositionConst_t() {
    std::iota(transformOrder.begin(), transformOrder.end(), 1);
}

bool operator==(const PositionConst_t& left, const PositionConst_t& right) {
    return equalElements(left.transformOrder, right.transformOrder) &&
           std::equal(left.mapping.begin(), left.mapping.end(), right.mapping.begin(), right.mapping.end(),
                      equalMappings) &&
           left.body == right.body && left.parent == right.parent && left.weight == right.weight &&
           left.localPosition == right.localPosition && left.baseTranslation == right.baseTranslation &&
           left.baseRotation == right.baseRotation;
}

bool operator==(const BodyParams_t& left, const BodyParams_t& right) {
    return left.bodyName == right.bodyName && left.firstAxis == right.firstAxis &&
           left.secondAxis == right.secondAxis && left.thirdAxis == right.thirdAxis &&
           std::equal(left.scale.begin(), left.scale.end(), right.scale.begin(), equalMappings);
}

bool operator==(const Pose_t& left, const Pose_t& right) {
    return left.name == right.name && equalElements(left.limitOverrides, right.limitOverrides) &&
           equalElements(left.positionConstraints, right.positionConstraints) &&
           equalElements(left.sysVarGuideOverrides, right.sysVarGuideOverrides) &&
           equalElements(left.globalConstraints, right.globalConstraints);
}

} // namespace quillon::scaleDef
