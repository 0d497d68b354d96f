#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Vec3.h"

namespace quillon {

// Changes from the local side (m = X m): what X does happens before what m did.

/// Moves `m` by `d` along its own X axis: row 3 += d row 0, all 4 columns.
void translateX(LmMat4& m, float d);

/// Moves `m` by `d` along its own Y axis: row 3 += d row 1, all 4 columns.
void translateY(LmMat4& m, float d);

/// Moves `m` by `d` along its own Z axis: row 3 += d row 2, all 4 columns.
void translateZ(LmMat4& m, float d);

/// Moves `m` along its own axes: row 3 += x row 0 + y row 1 + z row 2, all 4 columns.
void translate(LmMat4& m, float x, float y, float z);

/// Moves `m` along its own axes by the elements of `v`.
void translate(LmMat4& m, const LmVec3& v);

/// Scales `m` along its own axes: rows 0, 1, 2 times sx, sy, sz, all 4 columns.
void scale(LmMat4& m, float sx, float sy, float sz);

/// Scales `m` along its own axes by the elements of `v`.
void scale(LmMat4& m, const LmVec3& v);

/// Rotates `m` about its own X axis by `angle` radians; columns 0 to 2 only.
void rotateX(LmMat4& m, float angle);

/// Rotates `m` about its own Y axis by `angle` radians; columns 0 to 2 only.
void rotateY(LmMat4& m, float angle);

/// Rotates `m` about its own Z axis by `angle` radians; columns 0 to 2 only.
void rotateZ(LmMat4& m, float angle);

/// Rotates `m` about the unit vector `axis` of its own frame by `angle` radians.
/// Deliberately mixes all 4 columns, where `rotateX`, `rotateY` and `rotateZ` leave column 3 alone.
void rotateAxis(LmMat4& m, const LmVec3& axis, float angle);

/// m = r m on rows 0 to 2, columns 0 to 2.
void leftMultiply(LmMat4& m, const LmMat3& r);

// Changes from the parent side (m = m Y): what Y does happens after what m did.

/// Moves `m` by `d` along the parent's X axis: column 0 += d column 3, all 4 rows.
void postTranslateX(LmMat4& m, float d);

/// Moves `m` by `d` along the parent's Y axis: column 1 += d column 3, all 4 rows.
void postTranslateY(LmMat4& m, float d);

/// Moves `m` by `d` along the parent's Z axis: column 2 += d column 3, all 4 rows.
void postTranslateZ(LmMat4& m, float d);

/// Moves `m` along the parent's axes by the elements of `v`.
void postTranslate(LmMat4& m, const LmVec3& v);

/// Scales `m` along the parent's axes: column j *= v[j], all 4 rows.
void postScale(LmMat4& m, const LmVec3& v);

/// Rotates `m` about the parent's X axis by `angle` radians, all 4 rows.
void postRotateX(LmMat4& m, float angle);

/// Rotates `m` about the parent's Y axis by `angle` radians, all 4 rows.
void postRotateY(LmMat4& m, float angle);

/// Rotates `m` about the parent's Z axis by `angle` radians, all 4 rows.
void postRotateZ(LmMat4& m, float angle);

/// Rotates `m` about the unit vector `axis` of the parent's frame by `angle` radians; columns 0 to 2.
void postRotateAxis(LmMat4& m, const LmVec3& axis, float angle);

/// m = m r on columns 0 to 2, all 4 rows.
void postMultiply(LmMat4& m, const LmMat3& r);

/// a = a b, with column 3 of both taken as 0, 0, 0, 1; column 3 of `a` stays. `b` may be `a`.
void postMultiplyAffine(LmMat4& a, const LmMat4& b);

/// m = T(-p) m T(p): makes `m` act about the point `p` as it did about the origin.
void aboutPoint(LmMat4& m, const LmVec3& p);

} // namespace quillon
