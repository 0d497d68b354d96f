#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Vec3.h"

#include <array>
#include <cstdint>

namespace quillon {

/// Three axis numbers, 1 = X, 2 = Y, 3 = Z, adjacent ones different: rotations of a product, the last
/// entry's leftmost. The first and the last may be one axis (1, 2, 1) or all three may differ (1, 2, 3).
using LmEulerOrder = std::array<std::int32_t, 3>;

/// The first three elements of `values`, which must hold that many.
LmVec3 vec3FromArray(const LmArray<float>& values);

/// The first three elements of `axes`, which must hold that many.
LmEulerOrder orderFromArray(const LmArray<int>& axes);

/// out = R(order[2]) R(order[1]) R(order[0]), each the rotation about that axis by the angle that `angles`
/// holds for it: angles in radians, indexed by axis, X first, whatever the order.
/// Entries of the order other than 1, 2, 3 rotate nothing.
void eulerToMatrix(LmMat3& out, const LmVec3& angles, const LmEulerOrder& order);

/// The same with the angles and the order from arrays of at least 3 elements each.
void eulerToMatrix(LmMat3& out, const LmArray<float>& angles, const LmArray<int>& order);

/// angles = the Euler angles (radians, indexed by axis) of the rotation `m` for `order`, of entries 1 to 3.
/// Deliberately, where the first and last axis are one, its element holds the last angle: the one slot was
/// written twice. The element of an axis that the order does not name stays as it was.
void matrixToEuler(LmVec3& angles, const LmEulerOrder& order, const LmMat3& m);

/// The same for the upper left 3x3 of a transform.
void matrixToEuler(LmVec3& angles, const LmEulerOrder& order, const LmMat4& m);

/// Reduces the rotation `m` to its part about one axis: 0 = X, 1 = Y, 2 = Z. Another number aborts the
/// process. Of the two Euler solutions that `nearestEuler` finds, the one with the smaller rest counts.
void keepRotationAbout(LmMat3& m, int axis);

} // namespace quillon
