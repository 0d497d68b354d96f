#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Rotations.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>

/// What the geometry tests share: random input, and a second computation in double precision.
namespace quillon::testing_geometry {

using DMat3 = std::array<double, 9>;
using DMat4 = std::array<double, 16>;

inline constexpr double exactPi = 3.14159265358979323846;

/// All orders of rotations: even and odd ones of three axes, then those whose first and last axis are one.
inline constexpr std::array<LmEulerOrder, 12> allOrders = {{{1, 2, 3},
                                                            {2, 3, 1},
                                                            {3, 1, 2},
                                                            {1, 3, 2},
                                                            {2, 1, 3},
                                                            {3, 2, 1},
                                                            {1, 2, 1},
                                                            {1, 3, 1},
                                                            {2, 1, 2},
                                                            {2, 3, 2},
                                                            {3, 1, 3},
                                                            {3, 2, 3}}};

/// The same numbers in every run and with every standard library.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine(seed) {}

    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine()) / 4294967296.0);
    }
    float floatBetween(double low, double high) { return static_cast<float>(between(low, high)); }
    LmVec3 vectorWithin(double bound) {
        const float x = floatBetween(-bound, bound);
        const float y = floatBetween(-bound, bound);
        return {x, y, floatBetween(-bound, bound)};
    }

    /// An evenly spread rotation: the unit quaternion is a point of the ball, pushed out to the sphere.
    DMat3 rotation() {
        double w = 0, x = 0, y = 0, z = 0, squared = 0;
        do {
            w = between(-1, 1);
            x = between(-1, 1);
            y = between(-1, 1);
            z = between(-1, 1);
            squared = w * w + x * x + y * y + z * z;
        } while (squared < 0.01 || squared > 1);
        const double s = 2 / squared;
        return {1 - s * (y * y + z * z), s * (x * y + w * z),     s * (x * z - w * y),
                s * (x * y - w * z),     1 - s * (z * z + x * x), s * (y * z + w * x),
                s * (x * z + w * y),     s * (y * z - w * x),     1 - s * (x * x + y * y)};
    }

private:
    std::mt19937 engine;
};

template <std::size_t Count>
std::array<double, Count> widened(const std::array<float, Count>& values) {
    std::array<double, Count> result;
    std::copy(values.begin(), values.end(), result.begin());
    return result;
}

template <std::size_t Count>
std::array<float, Count> narrowed(const std::array<double, Count>& values) {
    std::array<float, Count> result;
    std::transform(values.begin(), values.end(), result.begin(),
                   [](double value) { return static_cast<float>(value); });
    return result;
}

/// The largest difference of two runs of elements; a NaN counts as infinite.
template <class A, class B>
double largestDifference(const A& a, const B& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double difference = std::fabs(static_cast<double>(a[i]) - static_cast<double>(b[i]));
        largest = std::isnan(difference) ? HUGE_VAL : std::max(largest, difference);
    }
    return largest;
}

inline DMat3 product(const DMat3& a, const DMat3& b) {
    DMat3 result{};
    for (std::size_t i = 0; i < 9; ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            result[i] += a[3 * (i / 3) + k] * b[3 * k + i % 3];
        }
    }
    return result;
}

inline DMat3 transposed(const DMat3& m) {
    return {m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8]};
}

/// The rotation about axis 1, 2 or 3, so that p' = p M.
inline DMat3 elementaryRotation(int axis, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    if (axis == 1) {
        return {1, 0, 0, 0, c, s, 0, -s, c};
    }
    if (axis == 2) {
        return {c, 0, -s, 0, 1, 0, s, 0, c};
    }
    return {c, s, 0, -s, c, 0, 0, 0, 1};
}

/// The inverse of a square matrix by elimination with row exchanges: another way than cofactors.
/// Also gives the determinant.
template <std::size_t Count>
std::array<double, Count> eliminated(std::array<double, Count> m, double& determinant) {
    constexpr std::size_t size = Count == 9 ? 3 : 4;
    std::array<double, Count> result{};
    for (std::size_t i = 0; i < size; ++i) {
        result[i * size + i] = 1;
    }
    const auto exchange = [](std::array<double, Count>& a, std::size_t one, std::size_t other) {
        for (std::size_t column = 0; column < size; ++column) {
            std::swap(a[one * size + column], a[other * size + column]);
        }
    };
    determinant = 1;
    for (std::size_t step = 0; step < size; ++step) {
        std::size_t best = step;
        for (std::size_t row = step; row < size; ++row) {
            best = std::fabs(m[row * size + step]) > std::fabs(m[best * size + step]) ? row : best;
        }
        determinant *= best == step ? m[best * size + step] : -m[best * size + step];
        exchange(m, step, best);
        exchange(result, step, best);
        const double pivot = m[step * size + step];
        for (std::size_t column = 0; column < size; ++column) {
            m[step * size + column] /= pivot;
            result[step * size + column] /= pivot;
        }
        for (std::size_t row = 0; row < size; ++row) {
            const double factor = row == step ? 0 : m[row * size + step];
            for (std::size_t column = 0; column < size; ++column) {
                m[row * size + column] -= factor * m[step * size + column];
                result[row * size + column] -= factor * result[step * size + column];
            }
        }
    }
    return result;
}

template <std::size_t Count>
std::array<double, Count> eliminated(const std::array<float, Count>& m) {
    double determinant = 0;
    return eliminated(widened(m), determinant);
}

/// Matches a vector or matrix whose elements all lie within `tolerance` of those of `expected`.
template <class Elements>
auto elementsNear(const Elements& expected, float tolerance) {
    return ::testing::Pointwise(::testing::FloatNear(tolerance), expected);
}

} // namespace quillon::testing_geometry
