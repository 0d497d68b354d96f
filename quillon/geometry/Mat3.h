#pragma once

#include "quillon/geometry/Vec3.h"

#include <array>
#include <cstddef>
#include <iosfwd>

namespace quillon {

/// A 3x3 matrix of single-precision elements, row by row: element (r, c) is at index 3r + c.
///
/// Vectors are row vectors, p' = p M, so a rotation is stored as the transpose of its column-vector form.
/// No operation guards a division: what cannot be divided becomes infinite or NaN, and callers ask first.
using LmMat3 = std::array<float, 9>;

/// The 3x3 identity.
inline constexpr LmMat3 identityMat3 = {1, 0, 0, 0, 1, 0, 0, 0, 1};

/// Element (`row`, `column`) of `m`, both counted from 0.
inline float element(const LmMat3& m, std::size_t row, std::size_t column) {
    return m[3 * row + column];
}

/// Row `row` of `m`, counted from 0.
LmVec3 getRow(const LmMat3& m, std::size_t row);

/// Replaces row `row` of `m`, counted from 0.
void setRow(LmMat3& m, std::size_t row, const LmVec3& v);

/// out = m.
void copy(LmMat3& out, const LmMat3& m);

/// out = a + b, element by element.
void add(LmMat3& out, const LmMat3& a, const LmMat3& b);

/// out = a - b, element by element.
void sub(LmMat3& out, const LmMat3& a, const LmMat3& b);

/// a += b, element by element.
void addTo(LmMat3& a, const LmMat3& b);

/// out = a with `s` added to each element.
void addScalar(LmMat3& out, const LmMat3& a, float s);

/// out = a with `s` subtracted from each element.
void subScalar(LmMat3& out, const LmMat3& a, float s);

/// out = a with each element multiplied by `s`.
void mulScalar(LmMat3& out, const LmMat3& a, float s);

/// Multiplies each element of `a` by `s` in place.
void scaleBy(LmMat3& a, float s);

/// Makes `a` the matrix with `s` on the diagonal and 0 elsewhere; `s` = 1 gives the identity.
void setDiagonal(LmMat3& a, float s);

/// Writes `s` on the diagonal of `a`; the other elements stay.
void fillDiagonal(LmMat3& a, float s);

/// out = a b. `out` may be `a` or `b`.
void mul(LmMat3& out, const LmMat3& a, const LmMat3& b);

/// out = v m, with `v` a row vector. `out` may be `v`.
void rowTimes(LmVec3& out, const LmVec3& v, const LmMat3& m);

/// out = m v, with `v` a column vector. `out` may be `v`.
void timesColumn(LmVec3& out, const LmMat3& m, const LmVec3& v);

/// out = the transpose of m. `out` must be another object than `m`.
void transpose(LmMat3& out, const LmMat3& m);

/// out = the transpose of m, where `out` may be `m`.
void transposeAliasSafe(LmMat3& out, const LmMat3& m);

/// Transposes `m` in place.
void transposeInPlace(LmMat3& m);

/// The determinant of `m`, expanded along row 0.
float determinant(const LmMat3& m);

/// out = the inverse of any 3x3: the transposed cofactors over the determinant (Cramer's rule). `out` may be
/// `m`. A singular `m` gives non-finite elements.
void inverse(LmMat3& out, const LmMat3& m);

/// out = the inverse of an orthonormal matrix: its transpose. `out` may be `m`.
void invertRigid(LmMat3& out, const LmMat3& m);

/// Replaces the orthonormal `m` by its inverse.
void invertRigidInPlace(LmMat3& m);

/// out = the inverse of a matrix whose rows are orthogonal, of any length but 0: row r of `m` over its
/// squared length is column r of `out`, which may be `m`.
void invertRotationScale(LmMat3& out, const LmMat3& m);

/// Replaces `m`, whose rows are orthogonal, by its inverse.
void invertRotationScaleInPlace(LmMat3& m);

/// Divides each row of `m` by its length and returns the three lengths.
LmVec3 normalizeRows(LmMat3& m);

/// Stretches row `row` of `m` along the direction of `v` by the length L of `v`: r + v dot(r, v) (L - 1) /
/// L². A zero `v` gives NaNs.
void scaleAlong(LmMat3& m, std::size_t row, const LmVec3& v);

/// `scaleAlong` on each of the three rows of `m`.
void scaleAlongAll(LmMat3& m, const LmVec3& v);

/// m = R m, with R the rotation about X by `angle` radians, of the rows 1 0 0, 0 c s and 0 -s c with its
/// cosine c and sine s: mixes rows 1 and 2.
void rotateX(LmMat3& m, float angle);

/// m = R m, with R the rotation about Y, of the rows c 0 -s, 0 1 0 and s 0 c: mixes rows 0 and 2.
void rotateY(LmMat3& m, float angle);

/// m = R m, with R the rotation about Z, of the rows c s 0, -s c 0 and 0 0 1: mixes rows 0 and 1.
void rotateZ(LmMat3& m, float angle);

/// m = m R, with R the rotation about X by `angle` radians: mixes columns 1 and 2.
void postRotateX(LmMat3& m, float angle);

/// m = m R, with R the rotation about Y by `angle` radians: mixes columns 0 and 2.
void postRotateY(LmMat3& m, float angle);

/// m = m R, with R the rotation about Z by `angle` radians: mixes columns 0 and 1.
void postRotateZ(LmMat3& m, float angle);

/// Whether all elements are equal; a NaN makes it false.
bool equalExact(const LmMat3& a, const LmMat3& b);

/// Whether no elements differ by more than `comparisonTolerance`. NaN differences pass.
bool equalApprox(const LmMat3& a, const LmMat3& b);

/// Whether no element is a NaN.
bool hasNoNaN(const LmMat3& m);

/// Whether (row 0 x row 1) . row 2 is above 0.
bool isRightHanded(const LmMat3& m);

/// Whether the directions of the rows have pairwise dot products of at most `comparisonTolerance`.
/// A row of length 0 has no direction, and makes it false.
bool isOrthogonal(const LmMat3& m);

/// Whether the length of each row differs from 1 by less than `lengthTolerance`.
bool isUnitRows(const LmMat3& m);

/// Prints `m` in brackets, a line for each row, each element 14 wide, and flushes `out`.
void printBracketed(std::ostream& out, const LmMat3& m);

/// Prints `m` with one blank after each element, a line for each row; does not flush.
void printPlain(std::ostream& out, const LmMat3& m);

} // namespace quillon
