#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"

namespace quillon {

/// out = the rotation about the unit vector `axis` by `angle` radians, in the row-vector form.
/// `axis` must be of unit length already; with another length `out` is no rotation.
void axisAngleToMatrix(LmMat3& out, const LmVec3& axis, float angle);

/// out = the rotation vector of the rotation `m`: its direction is the axis, its length the angle, from
/// 0 to pi radians.
void matrixToRotationVector(const LmMat3& m, LmVec3& out);

/// out = the rotation about the direction of `v` by the length of `v` in radians; a zero `v` gives the
/// identity.
void rotationVectorToMatrix(LmMat3& out, const LmVec3& v);

} // namespace quillon
