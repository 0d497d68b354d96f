#include "quillon/geometry/EulerAngles.h"

#include "quillon/geometry/Angles.h"
#include "quillon/geometry/NearestEuler.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace quillon {

namespace {

/// Sine or cosine of the middle angle from which on the outer angles are found by their sum or difference.
constexpr double gimbalLimit = 0.70711;

/// Three angles in the sequence of an order.
struct Sequence {
    float first, middle, last;
};

void rotateAbout(LmMat3& m, std::int32_t axis, const LmVec3& angles) {
    switch (axis) {
    case 1:
        rotateX(m, angles[0]);
        break;
    case 2:
        rotateY(m, angles[1]);
        break;
    case 3:
        rotateZ(m, angles[2]);
        break;
    default:
        break;
    }
}

std::size_t axisIndex(std::int32_t axis) {
    return static_cast<std::size_t>(axis - 1);
}

/// The angles for the axes i, j, k, all different.
Sequence anglesOfThreeAxes(const LmMat3& m, std::size_t i, std::size_t j, std::size_t k) {
    const float y = element(m, k, i);
    const float x = std::sqrt(element(m, k, k) * element(m, k, k) + element(m, k, j) * element(m, k, j));
    const float middle = std::atan2(y, x);
    const float plainFirst = std::atan2(-element(m, k, j), element(m, k, k));
    if (static_cast<double>(y) >= gimbalLimit) {
        const float sum =
            std::atan2(element(m, i, j) + element(m, j, k), element(m, j, j) - element(m, i, k));
        const float first = x != 0.0F ? plainFirst : sum / 2.0F;
        return {first, middle, sum - first};
    }
    if (static_cast<double>(y) <= -gimbalLimit) {
        const float difference =
            std::atan2(-(element(m, i, j) - element(m, j, k)), element(m, j, j) + element(m, i, k));
        const float first = x != 0.0F ? plainFirst : difference / 2.0F;
        return {first, middle, first - difference};
    }
    return {plainFirst, middle, std::atan2(-element(m, j, i), element(m, i, i))};
}

/// The angles for the axes i, j, i, with l the axis that takes no part.
Sequence anglesOfTwoAxes(const LmMat3& m, std::size_t i, std::size_t j, std::size_t l) {
    const float q = element(m, i, l);
    const float p = element(m, i, j);
    const float r = std::sqrt(q * q + p * p);
    const float y = element(m, i, i);
    const float middle = std::atan2(r, y);
    const float plainFirst = std::atan2(p, -q);
    if (static_cast<double>(y) >= gimbalLimit) {
        const float sum =
            std::atan2(element(m, j, l) - element(m, l, j), element(m, j, j) + element(m, l, l));
        const float first = r != 0.0F ? plainFirst : sum / 2.0F;
        return {first, middle, sum - first};
    }
    if (static_cast<double>(y) <= -gimbalLimit) {
        const float difference =
            std::atan2(element(m, j, l) + element(m, l, j), element(m, j, j) - element(m, l, l));
        const float first = r != 0.0F ? plainFirst : difference / 2.0F;
        return {first, middle, first - difference};
    }
    return {plainFirst, middle, std::atan2(element(m, j, i), element(m, l, i))};
}

/// The angles of `m` for `axis` and 0 for the others, of the solution near `start` about `axis`.
LmVec3 solutionNear(float start, std::size_t axis, const LmVec3& angles, const LmEulerOrder& order) {
    LmVec3 reference = {0.0F, 0.0F, 0.0F};
    reference[axis] = start;
    LmVec3 solution;
    nearestEuler(solution, reference, angles, order);
    return solution;
}

} // namespace

LmVec3 vec3FromArray(const LmArray<float>& values) {
    return {values[0], values[1], values[2]};
}

LmEulerOrder orderFromArray(const LmArray<int>& axes) {
    return {axes[0], axes[1], axes[2]};
}

void eulerToMatrix(LmMat3& out, const LmVec3& angles, const LmEulerOrder& order) {
    out = identityMat3;
    for (const std::int32_t axis : order) {
        rotateAbout(out, axis, angles);
    }
}

void eulerToMatrix(LmMat3& out, const LmArray<float>& angles, const LmArray<int>& order) {
    eulerToMatrix(out, vec3FromArray(angles), orderFromArray(order));
}

void matrixToEuler(LmVec3& angles, const LmEulerOrder& order, const LmMat3& m) {
    const std::size_t i = axisIndex(order[0]);
    const std::size_t j = axisIndex(order[1]);
    const std::size_t k = axisIndex(order[2]);
    const std::size_t next = (i + 1) % 3;
    const bool oddOrder = j != next;
    const std::size_t afterNext = (i + 2) % 3;
    Sequence found =
        i != k ? anglesOfThreeAxes(m, i, j, k) : anglesOfTwoAxes(m, i, j, oddOrder ? next : afterNext);
    if (oddOrder) {
        found = {-found.first, -found.middle, -found.last};
    }
    // Where i is k, the last angle goes over the first; callers keep both in one element.
    angles[i] = found.first;
    angles[j] = found.middle;
    angles[k] = found.last;
}

void matrixToEuler(LmVec3& angles, const LmEulerOrder& order, const LmMat4& m) {
    LmMat3 rotation;
    getRotation(m, rotation);
    matrixToEuler(angles, order, rotation);
}

void keepRotationAbout(LmMat3& m, int axis) {
    constexpr std::array<LmEulerOrder, 3> orders = {{{1, 3, 2}, {2, 1, 3}, {3, 2, 1}}};
    if (axis < 0 || axis > 2) {
        std::abort();
    }
    const auto kept = static_cast<std::size_t>(axis);
    const LmEulerOrder& order = orders[kept];
    LmVec3 angles;
    matrixToEuler(angles, order, m);
    const LmVec3 near = solutionNear(angles[kept], kept, angles, order);
    const LmVec3 turned = solutionNear(angles[kept] + pi, kept, angles, order);
    const auto rest = [kept](const LmVec3& solution) {
        return std::fabs(solution[(kept + 1) % 3]) + std::fabs(solution[(kept + 2) % 3]);
    };
    LmVec3 reduced = {0.0F, 0.0F, 0.0F};
    reduced[kept] = rest(turned) > rest(near) ? near[kept] : turned[kept];
    eulerToMatrix(m, reduced, order);
}

} // namespace quillon
