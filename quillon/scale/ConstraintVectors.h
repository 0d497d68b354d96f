#pragma once

#include "quillon/geometry/Vec3.h"

namespace quillon::scaleDef {

/// Whether the lengths of the two vectors of a global constraint differ by more than 0.0001.
bool haveDifferingLengths(const LmVec3& local, const LmVec3& global);

/// Gives both vectors the geometric mean of their lengths, in single precision; their directions stay. A
/// vector of length 0 has no direction, and its elements become NaN.
void equalizeLengths(LmVec3& local, LmVec3& global);

} // namespace quillon::scaleDef
