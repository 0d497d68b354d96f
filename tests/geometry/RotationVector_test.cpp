#include "quillon/geometry/RotationVector.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillon {
namespace {

using namespace testing_geometry;

/// A few roundings of 6e-8 on elements up to 1 and angles up to pi.
constexpr float rotationTolerance = 2e-6F;

LmVec3 vectorOf(const LmMat3& m) {
    LmVec3 v{};
    matrixToRotationVector(m, v);
    return v;
}

LmMat3 matrixOf(const LmVec3& v) {
    LmMat3 m{};
    rotationVectorToMatrix(m, v);
    return m;
}

TEST(AxisAngleToMatrix, AboutACoordinateAxisIsTheElementaryRotation) {
    const LmVec3 axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int axis = 1; axis <= 3; ++axis) {
        LmMat3 m{};
        axisAngleToMatrix(m, axes[axis - 1], 0.7F);
        EXPECT_THAT(m, elementsNear(narrowed(elementaryRotation(axis, 0.7)), rotationTolerance)) << axis;
    }
}

TEST(AxisAngleToMatrix, AboutTheDiagonalByAThirdOfATurnPassesTheAxesOn) {
    LmMat3 m{};
    axisAngleToMatrix(m, normalized({1, 1, 1}), twoPi / 3);
    EXPECT_THAT(m, elementsNear(LmMat3{0, 1, 0, 0, 0, 1, 1, 0, 0}, rotationTolerance));
}

TEST(AxisAngleToMatrix, UsesTheAxisAsItIs) {
    LmMat3 m{};
    axisAngleToMatrix(m, {2, 0, 0}, halfPi);
    EXPECT_THAT(m, elementsNear(LmMat3{4, 0, 0, 0, 0, 2, 0, -2, 0}, rotationTolerance));
}

TEST(RotationVectorToMatrix, DividesTheAxisByTheAngle) {
    EXPECT_THAT(matrixOf({0, -0.7F, 0}),
                elementsNear(narrowed(elementaryRotation(2, -0.7)), rotationTolerance));
    // Angle 7 about (2, 3, 6) / 7, whose part along the axis stays: row vector times matrix.
    LmVec3 turned{};
    rowTimes(turned, {2, 3, 6}, matrixOf({2, 3, 6}));
    EXPECT_THAT(turned, elementsNear(LmVec3{2, 3, 6}, 3 * rotationTolerance));
}

TEST(RotationVectorToMatrix, OfNoLengthIsTheIdentity) {
    EXPECT_EQ(matrixOf({0, 0, 0}), identityMat3);
    EXPECT_EQ(matrixOf({std::numeric_limits<float>::quiet_NaN(), 0, 0}), identityMat3);
}

TEST(MatrixToRotationVector, OfTheIdentityIsZero) {
    EXPECT_EQ(vectorOf(identityMat3), (LmVec3{0, 0, 0}));
}

TEST(MatrixToRotationVector, OfAnElementaryRotationIsTheAngleAboutItsAxis) {
    EXPECT_THAT(vectorOf(narrowed(elementaryRotation(1, 0.7))),
                elementsNear(LmVec3{0.7F, 0, 0}, rotationTolerance));
    EXPECT_THAT(vectorOf(narrowed(elementaryRotation(2, -1.2))),
                elementsNear(LmVec3{0, -1.2F, 0}, rotationTolerance));
    EXPECT_THAT(vectorOf(narrowed(elementaryRotation(3, 3.0))),
                elementsNear(LmVec3{0, 0, 3}, rotationTolerance));
}

TEST(MatrixToRotationVector, OfSmallRotationsIsContinuousOverTheSmallRotationLimit) {
    for (const float angle : {1e-6F, 0.0005F, 0.0019F, 0.0021F, 0.004F}) {
        EXPECT_THAT(vectorOf(narrowed(elementaryRotation(3, static_cast<double>(angle)))),
                    elementsNear(LmVec3{0, 0, angle}, 1e-8F))
            << angle;
    }
}

TEST(MatrixToRotationVector, TakesTheShorterWayWhereTheQuaternionTurnsFurther) {
    // The half angles 75, 20 and 75 degrees make a quaternion with w = -0.256: 210 degrees, or -150.
    const float degree = pi / 180;
    LmMat3 m{};
    eulerToMatrix(m, {150 * degree, 40 * degree, 150 * degree}, {1, 2, 3});
    LmQuat q{};
    fromMatrix(m, q);
    ASSERT_LT(q.w, -0.2F);
    const LmVec3 v = vectorOf(m);
    EXPECT_NEAR(length(v), twoPi - 2 * std::acos(q.w), rotationTolerance);
    EXPECT_THAT(matrixOf(v), elementsNear(m, rotationTolerance));
}

TEST(MatrixToRotationVector, GivesBackTheMatrixAndIsAtMostHalfATurn) {
    Random random(100);
    for (int round = 0; round < 10000; ++round) {
        const LmMat3 m = narrowed(random.rotation());
        const LmVec3 v = vectorOf(m);
        ASSERT_LE(length(v), pi + rotationTolerance);
        ASSERT_THAT(matrixOf(v), elementsNear(m, rotationTolerance)) << "round " << round;
    }
}

TEST(RotationVector, OfLessThanHalfATurnComesBack) {
    Random random(101);
    for (int round = 0; round < 10000; ++round) {
        const LmVec3 v = random.vectorWithin(1.7);
        ASSERT_THAT(vectorOf(matrixOf(v)), elementsNear(v, 2 * rotationTolerance)) << "round " << round;
    }
}

} // namespace
} // namespace quillon
