#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"

namespace quillon {

/// A quaternion of single-precision elements, scalar part first. A rotation is a quaternion of length 1.
struct LmQuat {
    float w; ///< scalar part
    float x; ///< vector part
    float y; ///< vector part
    float z; ///< vector part
};

/// The Hamilton product a b: as a rotation, `b` happens before `a`.
LmQuat multiply(const LmQuat& a, const LmQuat& b);

/// The sum of the four products of elements.
float dot(const LmQuat& a, const LmQuat& b);

/// `q` with its vector part negated: the inverse of a rotation.
LmQuat conjugate(const LmQuat& q);

/// `q` with all four elements negated: the same rotation.
LmQuat negate(const LmQuat& q);

/// `q` with each element multiplied by `s`.
LmQuat scale(const LmQuat& q, float s);

/// a + b, element by element.
LmQuat add(const LmQuat& a, const LmQuat& b);

/// `v` turned by the rotation `q`.
LmVec3 rotate(const LmVec3& v, const LmQuat& q);

/// The rotation at part `t` (0 to 1) of the arc from `a` to `b`, at even speed.
/// Deliberately ignores the sign of their dot product: where it is negative this is the longer arc.
LmQuat slerp(const LmQuat& a, const LmQuat& b, float t);

/// m = the rotation `q` as a matrix of the row-vector form.
void toMatrix(LmMat3& m, const LmQuat& q);

/// q = the rotation `m` as a quaternion, by way of the Euler angles of the order 1, 2, 3.
void fromMatrix(const LmMat3& m, LmQuat& q);

} // namespace quillon
