#include "quillon/geometry/Orthonormalize.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillon {
namespace {

using namespace testing_geometry;

/// Some ten products of three elements up to 1 stand behind each element: that many roundings of 6e-8.
constexpr double orthonormalTolerance = 1e-6;

/// What two passes leave of a drift of up to 0.01 in an element: its fourth power, below rounding.
constexpr double passesTolerance = 1e-6;

constexpr int randomRounds = 2000;

LmMat3 drifted(Random& random, double drift) {
    DMat3 m = random.rotation();
    for (double& element : m) {
        element += random.between(-drift, drift);
    }
    return narrowed(m);
}

DMat3 cofactors(const DMat3& m) {
    double determinant = 0;
    DMat3 result = transposed(eliminated(m, determinant));
    for (double& element : result) {
        element *= determinant;
    }
    return result;
}

void normalizeRowsOf(DMat3& m) {
    for (std::size_t row = 0; row < 3; ++row) {
        const double size = std::hypot(m[3 * row], m[3 * row + 1], m[3 * row + 2]);
        for (std::size_t column = 0; column < 3; ++column) {
            m[3 * row + column] /= size;
        }
    }
}

DMat3 orthonormalizedByPasses(DMat3 m) {
    for (int pass = 0; pass < 2; ++pass) {
        normalizeRowsOf(m);
        m = transposed(m);
        normalizeRowsOf(m);
        m = transposed(m);
        const DMat3 other = cofactors(m);
        for (std::size_t i = 0; i < 9; ++i) {
            m[i] = (m[i] + other[i]) / 2;
        }
    }
    return m;
}

/// The nearest rotation by Newton's iteration on m and its inverse transposed, to its fixed point.
DMat3 polarFactor(DMat3 m) {
    for (int step = 0; step < 20; ++step) {
        double determinant = 0;
        const DMat3 other = transposed(eliminated(m, determinant));
        for (std::size_t i = 0; i < 9; ++i) {
            m[i] = (m[i] + other[i]) / 2;
        }
    }
    return m;
}

double distanceFromOrthonormal(const LmMat3& m) {
    const DMat3 wide = widened(m);
    return largestDifference(product(wide, transposed(wide)), identityMat3);
}

TEST(Orthonormalize, BothMethodsReturnTheIdentityExactly) {
    LmMat3 m = identityMat3;
    orthonormalize(m);
    EXPECT_EQ(m, identityMat3);
    orthonormalizeSeries(m);
    EXPECT_EQ(m, identityMat3);
}

TEST(Orthonormalize, BothMethodsReturnARotationWithinRounding) {
    Random random(102);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat3 rotation = narrowed(random.rotation());
        LmMat3 byPasses = rotation;
        orthonormalize(byPasses);
        ASSERT_LE(largestDifference(byPasses, rotation), orthonormalTolerance);
        LmMat3 bySeries = rotation;
        orthonormalizeSeries(bySeries);
        ASSERT_LE(largestDifference(bySeries, rotation), orthonormalTolerance);
    }
}

TEST(Orthonormalize, UndoesAScaleOfRows) {
    LmMat3 m = {0, 1.5F, 0, -0.5F, 0, 0, 0, 0, 3};
    orthonormalize(m);
    EXPECT_EQ(m, (LmMat3{0, 1, 0, -1, 0, 0, 0, 0, 1}));
}

TEST(Orthonormalize, ByPassesAgreesWithDoublePrecision) {
    Random random(103);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat3 m = drifted(random, 0.1);
        LmMat3 actual = m;
        orthonormalize(actual);
        ASSERT_LE(largestDifference(actual, orthonormalizedByPasses(widened(m))), orthonormalTolerance);
    }
}

TEST(Orthonormalize, ByPassesLeavesOrthonormalRows) {
    Random random(104);
    for (int round = 0; round < randomRounds; ++round) {
        LmMat3 m = drifted(random, 0.01);
        orthonormalize(m);
        ASSERT_LE(distanceFromOrthonormal(m), passesTolerance) << "round " << round;
    }
}

TEST(Orthonormalize, BySeriesAgreesWithThePolarFactorInDoublePrecision) {
    Random random(105);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat3 m = drifted(random, 0.02);
        LmMat3 actual = m;
        orthonormalizeSeries(actual);
        ASSERT_LE(largestDifference(actual, polarFactor(widened(m))), orthonormalTolerance);
        ASSERT_LE(distanceFromOrthonormal(actual), 2 * orthonormalTolerance);
    }
}

TEST(Orthonormalize, BySeriesStopsAfterTheNinthTerm) {
    // For a stretch by the root of 1.5 the series runs in x = 0.5, where the terms left out still count: the
    // whole series would give 1.
    const double coefficients[] = {
        -0.5,         0.375,          -0.3125,           0.2734375,          -0.24609375,
        0.2255859375, -0.20947265625, 0.196380615234375, -0.1854705810546875};
    const float stretch = std::sqrt(1.5F);
    const double x = static_cast<double>(stretch) * static_cast<double>(stretch) - 1;
    double sum = 1;
    double power = 1;
    for (const double coefficient : coefficients) {
        power *= x;
        sum += coefficient * power;
    }
    const double expected = static_cast<double>(stretch) * sum;
    ASSERT_GT(std::fabs(expected - 1), 5e-5);
    LmMat3 m{};
    setDiagonal(m, stretch);
    orthonormalizeSeries(m);
    for (const std::size_t i : {0U, 4U, 8U}) {
        EXPECT_NEAR(static_cast<double>(m[i]), expected, orthonormalTolerance);
    }
}

TEST(Orthonormalize, BySeriesOnATransformLeavesTheRest) {
    Random random(106);
    const LmMat3 rotation = drifted(random, 0.02);
    LmMat3 expected = rotation;
    orthonormalizeSeries(expected);
    LmMat4 m = {0, 0, 0, 4, 0, 0, 0, 8, 0, 0, 0, 12, 13, 14, 15, 16};
    setRotation(m, rotation);
    orthonormalizeSeries(m);
    EXPECT_EQ(m, (LmMat4{expected[0], expected[1], expected[2], 4, expected[3], expected[4], expected[5], 8,
                         expected[6], expected[7], expected[8], 12, 13, 14, 15, 16}));
}

} // namespace
} // namespace quillon
