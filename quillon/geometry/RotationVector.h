#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"

namespace quillon {

/// out = the rotation about the unit vector `axis` by `angle` radians, in the row-vector form, by Rodrigues'
/// formula: c I + (1 - c) aᵀ a + s K, with the cosine c, the sine s, and K of the rows 0 z -y, -z 0 x, y -x
/// 0. `axis` must be of unit length already; with another length `out` is no rotation.
void axisAngleToMatrix(LmMat3& out, const LmVec3& axis, float angle);

/// out = the rotation vector of the rotation `m`: its direction is the axis, its length the angle, from
/// 0 to pi radians. By the quaternion of `m`, of whose vector part v the angle is 2 atan2(|v|, w); below a
/// length of 0.001 it is twice v.
void matrixToRotationVector(const LmMat3& m, LmVec3& out);

/// out = the rotation about the direction of `v` by the length of `v` in radians; a zero `v` gives the
/// identity.
void rotationVectorToMatrix(LmMat3& out, const LmVec3& v);

} // namespace quillon
