#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Mat4.h"

namespace quillon {

/// Brings a rotation that has drifted back to orthonormal rows: two passes that normalise rows, then
/// columns, and take the mean of the matrix and its cofactor matrix. Where the determinant is 1 that mean is
/// (m + m⁻ᵀ) / 2, a step of Newton's iteration for the polar factor.
void orthonormalize(LmMat3& m);

/// Brings a rotation that has drifted to the nearest rotation, its polar factor m (mᵀ m)^(-1/2), by nine
/// terms of the binomial series. The drift must be small: mᵀ m - I of norm below 1.
void orthonormalizeSeries(LmMat3& m);

/// The same for the upper left 3x3 of a transform; the other elements stay.
void orthonormalizeSeries(LmMat4& m);

} // namespace quillon
