#include "quillon/geometry/Vec3.h"

#include <cmath>

namespace quillon {

namespace {

LmVec3 difference(const LmVec3& a, const LmVec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

LmVec3 divided(const LmVec3& v, float divisor) {
    return {v[0] / divisor, v[1] / divisor, v[2] / divisor};
}

LmVec3 axisForPerpendicular(const LmVec3& v) {
    constexpr LmVec3 xAxis = {1.0F, 0.0F, 0.0F};
    constexpr LmVec3 yAxis = {0.0F, 1.0F, 0.0F};
    constexpr LmVec3 zAxis = {0.0F, 0.0F, 1.0F};
    const float x = std::fabs(v[0]);
    const float y = std::fabs(v[1]);
    const float z = std::fabs(v[2]);
    if (x >= y) {
        return x >= z ? zAxis : yAxis;
    }
    return y >= z ? xAxis : yAxis;
}

} // namespace

float dot(const LmVec3& a, const LmVec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

LmVec3 cross(const LmVec3& a, const LmVec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

float length(const LmVec3& v) {
    return std::sqrt(dot(v, v));
}

LmVec3 normalized(const LmVec3& v) {
    return divided(v, length(v));
}

bool hasUnitLength(const LmVec3& v) {
    return std::fabs(static_cast<double>(length(v)) - 1.0) < lengthTolerance;
}

LmVec3 planeNormal(const LmVec3& a, const LmVec3& b, const LmVec3& c) {
    const LmVec3 normal = cross(difference(c, b), difference(a, b));
    const float size = length(normal);
    return size > 0.0F ? divided(normal, size) : normal;
}

LmVec3 perpendicular(const LmVec3& v) {
    return cross(v, axisForPerpendicular(v));
}

} // namespace quillon
