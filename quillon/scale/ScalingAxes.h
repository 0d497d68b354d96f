#pragma once

#include "quillon/geometry/Vec3.h"

namespace quillon::scaleDef {

/// Three axes of unit length at right angles to each other, right-handed in this order.
struct ScalingAxes {
    LmVec3 first;  ///< of length 1
    LmVec3 second; ///< of length 1
    LmVec3 third;  ///< first x second
};

/// Whether a vector has no direction: its length is exactly 0. Without a tolerance, but in single precision,
/// where the squares of tiny elements vanish.
bool isWithoutDirection(const LmVec3& v);

/// The axes along `first`, of any length but 0, and in the plane of `first` and `second`. Returns false, with
/// the third axis 0, when the two are parallel; no tolerance helps nearly parallel ones.
bool makeScalingAxes(const LmVec3& first, const LmVec3& second, ScalingAxes& axes);

} // namespace quillon::scaleDef
