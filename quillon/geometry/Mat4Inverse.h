#pragma once

#include "quillon/geometry/Mat4.h"

#include <array>
#include <cstddef>

namespace quillon {

// A caller picks the inverse that its matrix allows; none tests its input, and a singular matrix gives
// non-finite elements.

/// out = the inverse of any 4x4: the transposed cofactors over the determinant, both by Laplace's expansion
/// over the 2x2 sub-determinants of rows 0, 1 and of rows 2, 3. `out` may be `m`.
void inverse(LmMat4& out, const LmMat4& m);

/// Replaces any 4x4 by its inverse: `adjugate` over the determinant, from `subDeterminant`.
void invertInPlace(LmMat4& m);

/// Replaces `m` by its adjugate: the inverse times the determinant, which may be 0.
void adjugate(LmMat4& m);

/// out = the inverse of a transform of a rotation and a translation. `out` may be `m`.
void invertRigid(LmMat4& out, const LmMat4& m);

/// Replaces the rigid `m` by its inverse.
void invertRigidInPlace(LmMat4& m);

/// out = the inverse of a transform whose 3x3 rows are orthogonal, of any length but 0. `out` may be `m`.
void invertRotationScale(LmMat4& out, const LmMat4& m);

/// Replaces `m`, whose 3x3 rows are orthogonal, by its inverse.
void invertRotationScaleInPlace(LmMat4& m);

/// out = the inverse of any affine transform; column 3 of `m` is taken as 0, 0, 0, 1. `out` may be `m`.
void invertAffine(LmMat4& out, const LmMat4& m);

/// Row or column numbers of a 4x4 matrix, of which a sub-determinant uses the first few.
using SubDeterminantIndices = std::array<std::size_t, 4>;

/// The determinant of the `n` x `n` part (`n` from 1 to 4) of `m` that the first `n` entries of `rows` and
/// `columns` pick out, expanded along its first row.
float subDeterminant(const LmMat4& m, std::size_t n, const SubDeterminantIndices& rows,
                     const SubDeterminantIndices& columns);

} // namespace quillon
