#pragma once

#include <array>

namespace quillon {

/// A vector or point of three single-precision elements: x, y, z. Always a row vector.
using LmVec3 = std::array<float, 3>;

/// A row vector of four single-precision elements; a point carries 1 in the fourth.
using LmVec4 = std::array<float, 4>;

/// The tolerance of the element-wise and dot product tests of vectors and matrices.
inline constexpr float comparisonTolerance = 0.0001F;

/// The tolerance of the tests on lengths, which are made in double precision.
inline constexpr double lengthTolerance = 0.0001;

/// The scalar product of `a` and `b`.
float dot(const LmVec3& a, const LmVec3& b);

/// The vector product a x b.
LmVec3 cross(const LmVec3& a, const LmVec3& b);

/// The square root of x² + y² + z².
float length(const LmVec3& v);

/// `v` divided by its length; a zero vector gives NaNs.
LmVec3 normalized(const LmVec3& v);

/// Whether the length of `v` differs from 1 by less than `lengthTolerance`.
bool hasUnitLength(const LmVec3& v);

/// The unit normal of the plane through three points: the direction of (c - b) x (a - b).
/// Points on one line give the zero vector.
LmVec3 planeNormal(const LmVec3& a, const LmVec3& b, const LmVec3& c);

/// A vector at right angles to `v`: v x e, with e the unit axis Z where x is the greatest element of `v` by
/// magnitude, X where y is, and Y where z is. Not of unit length; the zero vector gives the zero vector.
LmVec3 perpendicular(const LmVec3& v);

} // namespace quillon
