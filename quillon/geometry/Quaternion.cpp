#include "quillon/geometry/Quaternion.h"

#include "quillon/geometry/EulerAngles.h"

#include <cmath>

namespace quillon {

namespace {

LmVec3 vectorPart(const LmQuat& q) {
    return {q.x, q.y, q.z};
}

} // namespace

LmQuat multiply(const LmQuat& a, const LmQuat& b) {
    const LmVec3 crossed = cross(vectorPart(a), vectorPart(b));
    return {a.w * b.w - dot(vectorPart(a), vectorPart(b)), a.w * b.x + b.w * a.x + crossed[0],
            a.w * b.y + b.w * a.y + crossed[1], a.w * b.z + b.w * a.z + crossed[2]};
}

float dot(const LmQuat& a, const LmQuat& b) {
    return a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
}

LmQuat conjugate(const LmQuat& q) {
    return {q.w, -q.x, -q.y, -q.z};
}

LmQuat negate(const LmQuat& q) {
    return {-q.w, -q.x, -q.y, -q.z};
}

LmQuat scale(const LmQuat& q, float s) {
    return {q.w * s, q.x * s, q.y * s, q.z * s};
}

LmQuat add(const LmQuat& a, const LmQuat& b) {
    return {a.w + b.w, a.x + b.x, a.y + b.y, a.z + b.z};
}

LmVec3 rotate(const LmVec3& v, const LmQuat& q) {
    const LmVec3 axis = vectorPart(q);
    const LmVec3 half = cross(axis, v);
    const LmVec3 t = {2.0F * half[0], 2.0F * half[1], 2.0F * half[2]};
    const LmVec3 crossed = cross(axis, t);
    return {v[0] + q.w * t[0] + crossed[0], v[1] + q.w * t[1] + crossed[1], v[2] + q.w * t[2] + crossed[2]};
}

LmQuat slerp(const LmQuat& a, const LmQuat& b, float t) {
    const float d = dot(a, b);
    const float s = std::sqrt(1.0F - d * d);
    // Where rounding takes d past 1, s is a NaN and counts as no arc too.
    if (!(s > 0.0F)) {
        return a;
    }
    const float angle = std::acos(d);
    return add(scale(a, std::sin((1.0F - t) * angle) / s), scale(b, std::sin(t * angle) / s));
}

void toMatrix(LmMat3& m, const LmQuat& q) {
    const auto [w, x, y, z] = q;
    setRow(m, 0, {1.0F - 2.0F * y * y - 2.0F * z * z, 2.0F * (x * y + w * z), 2.0F * (x * z - w * y)});
    setRow(m, 1, {2.0F * (x * y - w * z), 1.0F - 2.0F * z * z - 2.0F * x * x, 2.0F * (y * z + w * x)});
    setRow(m, 2, {2.0F * (x * z + w * y), 2.0F * (y * z - w * x), 1.0F - 2.0F * x * x - 2.0F * y * y});
}

void fromMatrix(const LmMat3& m, LmQuat& q) {
    LmVec3 angles;
    matrixToEuler(angles, {1, 2, 3}, m);
    const LmVec3 half = {angles[0] / 2.0F, angles[1] / 2.0F, angles[2] / 2.0F};
    const LmQuat aboutX = {std::cos(half[0]), std::sin(half[0]), 0.0F, 0.0F};
    const LmQuat aboutY = {std::cos(half[1]), 0.0F, std::sin(half[1]), 0.0F};
    const LmQuat aboutZ = {std::cos(half[2]), 0.0F, 0.0F, std::sin(half[2])};
    q = multiply(multiply(aboutX, aboutY), aboutZ);
}

} // namespace quillon
