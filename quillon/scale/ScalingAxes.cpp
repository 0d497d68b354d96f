#include "quillon/scale/ScalingAxes.h"

namespace quillon::scaleDef {

bool isWithoutDirection(const LmVec3& v) {
    return length(v) == 0.0F;
}

bool makeScalingAxes(const LmVec3& first, const LmVec3& second, ScalingAxes& axes) {
    axes.first = normalized(first);
    axes.third = cross(axes.first, second);
    if (isWithoutDirection(axes.third)) {
        return false;
    }
    axes.third = normalized(axes.third);
    // Of unit length as it is, being the product of two unit vectors at right angles.
    axes.second = cross(axes.third, axes.first);
    return true;
}

} // namespace quillon::scaleDef
