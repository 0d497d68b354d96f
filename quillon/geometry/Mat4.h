#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"

#include <array>
#include <cstddef>
#include <iosfwd>

namespace quillon {

/// A 4x4 matrix of single-precision elements, row by row: element (r, c) is at index 4r + c.
///
/// A transform of row vectors, p' = p M: the 3x3 part is the upper left, the translation is row 3, and
/// column 3 of an affine transform is 0, 0, 0, 1. No operation tests its input or guards a division.
using LmMat4 = std::array<float, 16>;

/// The 4x4 identity.
inline constexpr LmMat4 identityMat4 = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// Element (`row`, `column`) of `m`, both counted from 0.
inline float element(const LmMat4& m, std::size_t row, std::size_t column) {
    return m[4 * row + column];
}

/// out = m.
void copy(LmMat4& out, const LmMat4& m);

/// out = a + b, element by element.
void add(LmMat4& out, const LmMat4& a, const LmMat4& b);

/// out = a - b, element by element.
void sub(LmMat4& out, const LmMat4& a, const LmMat4& b);

/// out = a with `s` added to each element.
void addScalar(LmMat4& out, const LmMat4& a, float s);

/// Multiplies all 16 elements of `a` by `s` in place.
void scaleBy(LmMat4& a, float s);

/// Makes `a` the matrix with `s` on the diagonal and 0 elsewhere; `s` = 1 gives the identity.
void setDiagonal(LmMat4& a, float s);

/// Writes `s` on the diagonal of `a`; the other elements stay.
void fillDiagonal(LmMat4& a, float s);

/// out = a b. `out` may be `a` or `b`.
void multiply(LmMat4& out, const LmMat4& a, const LmMat4& b);

/// The 4x4 product that body chains are composed with; `multiply` at program start. Process-wide.
inline void (*matrixMultiply)(LmMat4& out, const LmMat4& a, const LmMat4& b) = multiply;

/// out = the transpose of m. `out` may be `m`.
void transpose(LmMat4& out, const LmMat4& m);

/// Transposes `m` in place.
void transposeInPlace(LmMat4& m);

/// r = the upper left 3x3 of m.
void getRotation(const LmMat4& m, LmMat3& r);

/// Writes `r` into the upper left 3x3 of `m`; the other elements stay.
void setRotation(LmMat4& m, const LmMat3& r);

/// v = the translation of m: the first three elements of row 3.
void getTranslation(const LmMat4& m, LmVec3& v);

/// Writes `v` into the first three elements of row 3 of `m`; the other elements stay.
void setTranslation(LmMat4& m, const LmVec3& v);

/// out = the affine transform with the 3x3 part `r` and the translation `t`.
void fromRotationTranslation(LmMat4& out, const LmMat3& r, const LmVec3& t);

/// out = v m, with `v` a row vector. `out` may be `v`.
void rowTimes(LmVec4& out, const LmVec4& v, const LmMat4& m);

/// out = m v, with `v` a column vector. `out` may be `v`.
void timesColumn(LmVec4& out, const LmMat4& m, const LmVec4& v);

/// out = (p, 1) m, divided by its fourth element. `out` may be `p`.
void transformPoint(LmVec3& out, const LmVec3& p, const LmMat4& m);

/// out = m (p, 1) with the point as a column, divided by its fourth element. `out` may be `p`.
void transformPointColumn(LmVec3& out, const LmMat4& m, const LmVec3& p);

/// Whether all elements are equal; a NaN makes it false.
bool equalExact(const LmMat4& a, const LmMat4& b);

/// Whether no elements differ by more than `comparisonTolerance`. NaN differences pass.
bool equalApprox(const LmMat4& a, const LmMat4& b);

/// Whether no element is a NaN.
bool hasNoNaN(const LmMat4& m);

/// Whether `m` has no NaN and its column 3 is exactly 0, 0, 0, 1.
bool isAffine(const LmMat4& m);

/// Whether the rows of the upper left 3x3 are orthogonal, by the test for `LmMat3`.
bool isOrthogonal(const LmMat4& m);

/// Whether column 3 is exactly 0, 0, 0, 1 and the rows of the upper left 3x3 have unit length.
/// Deliberately does not ask whether those rows are orthogonal: `isOrthogonal` answers that.
bool isRigid(const LmMat4& m);

/// Divides the first three elements of each of rows 0 to 2 by their length; returns the three lengths.
LmVec3 removeScale(LmMat4& m);

/// Prints `m` in brackets, a line for each row, each element 14 wide, and flushes `out`.
void printBracketed(std::ostream& out, const LmMat4& m);

/// Prints `m` with one blank after each element, a line for each row; does not flush.
void printPlain(std::ostream& out, const LmMat4& m);

} // namespace quillon
