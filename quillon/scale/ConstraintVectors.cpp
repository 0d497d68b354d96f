#include "quillon/scale/ConstraintVectors.h"

#include <cmath>

namespace quillon::scaleDef {

namespace {

LmVec3 resized(const LmVec3& v, float oldLength, float newLength) {
    LmVec3 result = v;
    for (float& component : result) {
        component = component / oldLength * newLength;
    }
    return result;
}

} // namespace

bool haveDifferingLengths(const LmVec3& local, const LmVec3& global) {
    return std::fabs(length(local) - length(global)) > comparisonTolerance;
}

void equalizeLengths(LmVec3& local, LmVec3& global) {
    const float localLength = length(local);
    const float globalLength = length(global);
    const float mean = std::sqrt(localLength * globalLength);
    local = resized(local, localLength, mean);
    global = resized(global, globalLength, mean);
}

} // namespace quillon::scaleDef
