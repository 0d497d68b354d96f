#include "quillon/geometry/RotationVector.h"

#include "quillon/geometry/Angles.h"
#include "quillon/geometry/Quaternion.h"

#include <cmath>

namespace quillon {

namespace {

/// Below this sine of half the angle the angle is taken as twice the sine.
constexpr double smallRotationLimit = 0.001;

} // namespace

void axisAngleToMatrix(LmMat3& out, const LmVec3& axis, float angle) {
    const auto [x, y, z] = axis;
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const float t = 1.0F - c;
    setRow(out, 0, {x * x * t + c, x * y * t + z * s, x * z * t - y * s});
    setRow(out, 1, {x * y * t - z * s, y * y * t + c, y * z * t + x * s});
    setRow(out, 2, {x * z * t + y * s, y * z * t - x * s, z * z * t + c});
}

void matrixToRotationVector(const LmMat3& m, LmVec3& out) {
    LmQuat q;
    fromMatrix(m, q);
    const LmVec3 v = {q.x, q.y, q.z};
    const float size = length(v);
    float angle = 2.0F * std::atan2(size, q.w);
    if (angle > pi) {
        angle -= twoPi;
    } else if (angle < -pi) {
        angle += twoPi;
    }
    if (static_cast<double>(size) > smallRotationLimit) {
        out = {v[0] * angle / size, v[1] * angle / size, v[2] * angle / size};
    } else {
        out = {2.0F * v[0], 2.0F * v[1], 2.0F * v[2]};
    }
}

void rotationVectorToMatrix(LmMat3& out, const LmVec3& v) {
    const float angle = length(v);
    if (!(angle > 0.0F)) {
        out = identityMat3;
        return;
    }
    axisAngleToMatrix(out, {v[0] / angle, v[1] / angle, v[2] / angle}, angle);
}

} // namespace quillon
