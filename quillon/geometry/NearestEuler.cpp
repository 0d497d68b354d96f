#include "quillon/geometry/NearestEuler.h"

#include "quillon/geometry/Angles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillon {

namespace {

int eulerContinuityMode = EulerNearestByQuadrant;

LmVec3 inSequence(const LmVec3& byAxis, const LmEulerOrder& order) {
    LmVec3 sequence;
    for (std::size_t position = 0; position < 3; ++position) {
        sequence[position] = byAxis[static_cast<std::size_t>(order[position] - 1)];
    }
    return sequence;
}

/// The second Euler solution of the angles in sequence.
LmVec3 flipped(const LmVec3& sequence) {
    return {sequence[0] + pi, pi - sequence[1], sequence[2] + pi};
}

/// `angle` moved by whole turns to within half a turn of `reference`.
float wrapNear(float reference, float angle) {
    // An angle so large that a turn is lost in its rounding stays, where the loops would not end.
    while (angle > reference + pi && angle - twoPi < angle) {
        angle -= twoPi;
    }
    while (angle < reference - pi && angle + twoPi > angle) {
        angle += twoPi;
    }
    return angle;
}

LmVec3 wrappedNear(const LmVec3& reference, const LmVec3& sequence) {
    return {wrapNear(reference[0], sequence[0]), wrapNear(reference[1], sequence[1]),
            wrapNear(reference[2], sequence[2])};
}

/// The sum of squared differences: each term in double precision, the running sum in single.
float squaredDistance(const LmVec3& a, const LmVec3& b) {
    float sum = 0.0F;
    for (std::size_t i = 0; i < 3; ++i) {
        const double difference = static_cast<double>(a[i]) - static_cast<double>(b[i]);
        sum = static_cast<float>(static_cast<double>(sum) + difference * difference);
    }
    return sum;
}

LmVec3 nearestByDistance(const LmVec3& reference, const LmVec3& sequence) {
    const LmVec3 direct = wrappedNear(reference, sequence);
    const LmVec3 other = wrappedNear(reference, flipped(sequence));
    return squaredDistance(other, reference) >= squaredDistance(direct, reference) ? direct : other;
}

/// The sign of the cosine of `angle`: 1, -1, or 0 at exactly a quarter turn to either side.
int cosineSign(float angle) {
    const double exact = static_cast<double>(angle);
    const double turns = std::floor(-exact / twoPiDouble + 0.5);
    const auto wrapped = static_cast<float>(exact + twoPiDouble * turns);
    if (wrapped > -halfPi && wrapped < halfPi) {
        return 1;
    }
    return wrapped < -halfPi || wrapped > halfPi ? -1 : 0;
}

float movedByTurns(float reference, float base) {
    const double exact = static_cast<double>(base);
    const double turns = std::floor((static_cast<double>(reference) - exact) / twoPiDouble + 0.5);
    return static_cast<float>(exact + twoPiDouble * turns);
}

LmVec3 nearestByQuadrant(const LmVec3& reference, const LmVec3& sequence) {
    const bool opposite = cosineSign(reference[1]) + cosineSign(sequence[1]) == 0;
    const LmVec3 base = opposite ? flipped(sequence) : sequence;
    return {movedByTurns(reference[0], base[0]), movedByTurns(reference[1], base[1]),
            movedByTurns(reference[2], base[2])};
}

} // namespace

int getEulerContinuityMode() {
    return eulerContinuityMode;
}

void setEulerContinuityMode(int mode) {
    eulerContinuityMode = mode;
}

void nearestEuler(LmVec3& out, const LmVec3& reference, const LmVec3& angles, const LmEulerOrder& order) {
    const LmVec3 wanted = inSequence(reference, order);
    const LmVec3 sequence = inSequence(angles, order);
    const bool byDistance = eulerContinuityMode == EulerNearestByDistance;
    const LmVec3 nearest =
        byDistance ? nearestByDistance(wanted, sequence) : nearestByQuadrant(wanted, sequence);
    for (std::size_t position = 0; position < 3; ++position) {
        out[static_cast<std::size_t>(order[position] - 1)] = nearest[position];
    }
}

void nearestEuler(LmArray<float>& out, const LmArray<float>& reference, const LmArray<float>& angles,
                  const LmArray<int>& order) {
    LmVec3 nearest;
    nearestEuler(nearest, vec3FromArray(reference), vec3FromArray(angles), orderFromArray(order));
    std::copy(nearest.begin(), nearest.end(), out.begin());
}

} // namespace quillon
