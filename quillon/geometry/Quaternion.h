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

/// The Hamilton product a b, of the scalar part aw bw - dot(av, bv) and the vector part aw bv + bw av + av x
/// bv: as a rotation, `b` happens before `a`.
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

/// `v` turned by the rotation `q`, the vector part of q v q*: v + w t + qv x t with t = 2 (qv x v).
LmVec3 rotate(const LmVec3& v, const LmQuat& q);

/// The rotation at part `t` (0 to 1) of the arc from `a` to `b`, at even speed: with the arc A, whose cosine
/// is their dot product, a sin((1 - t) A) / sin A + b sin(t A) / sin A; `a` where there is no arc.
/// Deliberately ignores the sign of their dot product: where it is negative this is the longer arc.
LmQuat slerp(const LmQuat& a, const LmQuat& b, float t);

/// m = the rotation `q` as a matrix of the row-vector form.
void toMatrix(LmMat3& m, const LmQuat& q);

/// q = the rotation `m` as a quaternion: the product of those about X, Y and Z by the Euler angles of the
/// order 1, 2, 3. Its sign is that of these half angles, so `w` may be negative.
void fromMatrix(const LmMat3& m, LmQuat& q);

} // namespace quillon
