#include "quillon/scale/ScalingAxes.h"

#include "quillon/geometry/Mat3.h"
#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillon::scaleDef {
namespace {

using testing_geometry::Random;

/// The axes of two vectors that are not parallel.
ScalingAxes axesOf(const LmVec3& first, const LmVec3& second) {
    ScalingAxes axes = {};
    EXPECT_TRUE(makeScalingAxes(first, second, axes));
    return axes;
}

LmMat3 matrixOf(const ScalingAxes& axes) {
    LmMat3 matrix = identityMat3;
    setRow(matrix, 0, axes.first);
    setRow(matrix, 1, axes.second);
    setRow(matrix, 2, axes.third);
    return matrix;
}

/// The sine of the angle between two vectors, in double precision.
double sineBetween(const LmVec3& a, const LmVec3& b) {
    double aa = 0;
    double bb = 0;
    double ab = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        aa += static_cast<double>(a[i]) * static_cast<double>(a[i]);
        bb += static_cast<double>(b[i]) * static_cast<double>(b[i]);
        ab += static_cast<double>(a[i]) * static_cast<double>(b[i]);
    }
    return std::sqrt(std::max(0.0, 1.0 - ab * ab / (aa * bb)));
}

TEST(ScalingAxes, SecondAxisIsMadeOrthogonalToTheFirst) {
    const ScalingAxes axes = axesOf({2, 0, 0}, {1, 1, 0});
    EXPECT_EQ(axes.first, (LmVec3{1, 0, 0}));
    EXPECT_EQ(axes.second, (LmVec3{0, 1, 0}));
    EXPECT_EQ(axes.third, (LmVec3{0, 0, 1}));
}

TEST(ScalingAxes, AreThoseGivenWhenTheyAreOrthonormal) {
    // z x x = y
    const ScalingAxes axes = axesOf({0, 0, 1}, {1, 0, 0});
    EXPECT_EQ(axes.first, (LmVec3{0, 0, 1}));
    EXPECT_EQ(axes.second, (LmVec3{1, 0, 0}));
    EXPECT_EQ(axes.third, (LmVec3{0, 1, 0}));
}

TEST(ScalingAxes, ThirdAxisPointsTheOtherWayForASecondAxisOnTheOtherSide) {
    const ScalingAxes axes = axesOf({0, 5, 0}, {3, 7, 0});
    EXPECT_EQ(axes.first, (LmVec3{0, 1, 0}));
    EXPECT_EQ(axes.second, (LmVec3{1, 0, 0}));
    EXPECT_EQ(axes.third, (LmVec3{0, 0, -1}));
}

TEST(ScalingAxes, OfParallelVectorsDoNotExist) {
    ScalingAxes axes = {};
    EXPECT_FALSE(makeScalingAxes({1, 0, 0}, {2, 0, 0}, axes));
    EXPECT_FALSE(makeScalingAxes({0, 3, 0}, {0, -2, 0}, axes));
    EXPECT_FALSE(makeScalingAxes({0, 0, 4}, {0, 0, 0}, axes));
}

TEST(ScalingAxes, OfNearlyParallelVectorsExist) {
    const ScalingAxes axes = axesOf({1, 0, 0}, {1, 1e-15F, 0});
    EXPECT_EQ(axes.second, (LmVec3{0, 1, 0}));
    EXPECT_EQ(axes.third, (LmVec3{0, 0, 1}));
}

TEST(ScalingAxes, SecondAxisIsTheProductOfTheOthersAsItComes) {
    // Nothing normalises it again: each bit is that of the cross product.
    for (const LmVec3& second :
         {LmVec3{0.3F, 0.1F, -7}, LmVec3{1, 1.001F, 0.999F}, LmVec3{-2, 0.5F, 0.25F}}) {
        const ScalingAxes axes = axesOf({1, 1, 1}, second);
        EXPECT_EQ(axes.second, cross(axes.third, axes.first));
    }
}

TEST(ScalingAxes, OnlyALengthOfExactlyZeroIsWithoutDirection) {
    EXPECT_TRUE(isWithoutDirection({0, 0, 0}));
    EXPECT_TRUE(isWithoutDirection({-0.0F, 0, 0}));
    EXPECT_FALSE(isWithoutDirection({0, 1e-18F, 0}));
    // Its square is too small for single precision.
    EXPECT_TRUE(isWithoutDirection({0, 1e-30F, 0}));
}

TEST(ScalingAxes, AreOrthonormalAndRightHandedOverRandomVectors) {
    // Rounding is blown up by one over the sine of the angle between the given vectors, here at most 20.
    constexpr double smallestSine = 0.05;
    Random random(65);
    int tested = 0;
    while (tested < 20000) {
        const double size = std::pow(10.0, random.between(-4, 4));
        const LmVec3 first = random.vectorWithin(size);
        const LmVec3 second = random.vectorWithin(1 / size);
        if (sineBetween(first, second) < smallestSine) {
            continue;
        }
        ++tested;
        const ScalingAxes axes = axesOf(first, second);
        const LmMat3 matrix = matrixOf(axes);
        ASSERT_TRUE(isUnitRows(matrix));
        ASSERT_TRUE(isOrthogonal(matrix));
        ASSERT_TRUE(isRightHanded(matrix));
        ASSERT_LT(sineBetween(axes.first, first), 0.001);
        ASSERT_GT(dot(axes.first, first), 0.0F);
        ASSERT_GT(dot(axes.second, second), 0.0F);
        ASSERT_NEAR(dot(axes.third, normalized(second)), 0.0F, 1e-5F);
    }
}

} // namespace
} // namespace quillon::scaleDef
