#include "quillon/geometry/EulerAngles.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <string>

namespace quillon {
namespace {

using namespace testing_geometry;

/// The conversions lose a few roundings of 6e-8 on angles up to 2 pi and on sums of two of them.
constexpr float angleTolerance = 2e-6F;

/// What a matrix may differ by after it was taken apart and rebuilt.
constexpr double rebuiltTolerance = 1e-5;

/// A product of three elementary rotations in single precision.
constexpr double productTolerance = 5e-7;

constexpr int roundsPerOrder = 100000;

constexpr LmEulerOrder xyz = {1, 2, 3};

/// The smallest single that the comparison in double precision finds at or above the gimbal limit, and the
/// one below it. The single nearest to 0.70711 is the lower one.
const float belowGimbalLimit = 0.70711F;
const float atGimbalLimit = std::nextafter(0.70711F, 1.0F);

std::string nameOf(const LmEulerOrder& order) {
    return std::to_string(order[0]) + std::to_string(order[1]) + std::to_string(order[2]);
}

bool repeatsAxis(const LmEulerOrder& order) {
    return order[0] == order[2];
}

std::size_t middleAxis(const LmEulerOrder& order) {
    return static_cast<std::size_t>(order[1] - 1);
}

LmMat3 built(const LmVec3& angles, const LmEulerOrder& order) {
    LmMat3 m{};
    eulerToMatrix(m, angles, order);
    return m;
}

LmVec3 takenApart(const LmMat3& m, const LmEulerOrder& order) {
    LmVec3 angles{};
    matrixToEuler(angles, order, m);
    return angles;
}

double rebuildingError(const LmMat3& m, const LmEulerOrder& order) {
    return largestDifference(built(takenApart(m, order), order), m);
}

TEST(EulerToMatrix, OfOneAngleIsTheElementaryRotation) {
    // The angle of the 3-4-5 triangle: sine 0.6, cosine 0.8.
    const float angle = std::atan2(3.0F, 4.0F);
    EXPECT_THAT(built({angle, 0, 0}, xyz),
                elementsNear(LmMat3{1, 0, 0, 0, 0.8F, 0.6F, 0, -0.6F, 0.8F}, angleTolerance));
    EXPECT_THAT(built({0, angle, 0}, xyz),
                elementsNear(LmMat3{0.8F, 0, -0.6F, 0, 1, 0, 0.6F, 0, 0.8F}, angleTolerance));
    EXPECT_THAT(built({0, 0, angle}, xyz),
                elementsNear(LmMat3{0.8F, 0.6F, 0, -0.6F, 0.8F, 0, 0, 0, 1}, angleTolerance));
}

TEST(EulerToMatrix, PutsTheLastEntryOfTheOrderLeftmost) {
    // Quarter turns: first R(Z) R(X), then R(X) R(Z).
    EXPECT_THAT(built({halfPi, 0, halfPi}, xyz),
                elementsNear(LmMat3{0, 0, 1, -1, 0, 0, 0, -1, 0}, angleTolerance));
    EXPECT_THAT(built({halfPi, 0, halfPi}, {3, 2, 1}),
                elementsNear(LmMat3{0, 1, 0, 0, 0, 1, 1, 0, 0}, angleTolerance));
}

TEST(EulerToMatrix, AgreesWithTheProductInDoublePrecisionForAllOrders) {
    Random random(91);
    for (const LmEulerOrder& order : allOrders) {
        for (int round = 0; round < 1000; ++round) {
            const LmVec3 angles = random.vectorWithin(2 * exactPi);
            const auto rotation = [&](std::size_t position) {
                const int axis = order[position];
                return elementaryRotation(axis,
                                          static_cast<double>(angles[static_cast<std::size_t>(axis - 1)]));
            };
            const DMat3 expected = product(product(rotation(2), rotation(1)), rotation(0));
            ASSERT_LE(largestDifference(built(angles, order), expected), productTolerance) << nameOf(order);
        }
    }
}

TEST(EulerToMatrix, OtherEntriesOfTheOrderRotateNothing) {
    EXPECT_EQ(built({0.3F, 0.4F, 0.5F}, {0, 4, -1}), identityMat3);
    EXPECT_EQ(built({0.3F, 0.4F, 0.5F}, {0, 2, 7}), built({0, 0.4F, 0}, xyz));
}

TEST(EulerToMatrix, TakesAnglesAndOrderFromArrays) {
    LmArray<float> angles(3);
    LmArray<int> order(3);
    for (int i = 0; i < 3; ++i) {
        angles[i] = 0.25F * static_cast<float>(i + 1);
        order[i] = 3 - i;
    }
    LmMat3 m{};
    eulerToMatrix(m, angles, order);
    EXPECT_EQ(m, built({0.25F, 0.5F, 0.75F}, {3, 2, 1}));
}

TEST(MatrixToEuler, OfTheIdentityIsZeroForAllOrders) {
    for (const LmEulerOrder& order : allOrders) {
        EXPECT_EQ(takenApart(identityMat3, order), (LmVec3{0, 0, 0})) << nameOf(order);
    }
}

TEST(MatrixToEuler, GivesTheAnglesByAxisForEvenAndOddOrders) {
    constexpr LmVec3 angles = {0.3F, -0.4F, 0.5F};
    for (const LmEulerOrder& order : allOrders) {
        if (!repeatsAxis(order)) {
            EXPECT_THAT(takenApart(built(angles, order), order), elementsNear(angles, angleTolerance))
                << nameOf(order);
        }
    }
}

TEST(MatrixToEuler, KeepsTheLastAngleOfAnAxisThatIsFirstAndLast) {
    // The middle angle comes out from 0 to pi for even orders and from -pi to 0 for odd ones.
    for (const LmEulerOrder& order : allOrders) {
        if (repeatsAxis(order)) {
            const bool odd = order[1] % 3 != (order[0] + 1) % 3;
            const double middle = odd ? -0.9 : 0.9;
            const DMat3 m =
                product(product(elementaryRotation(order[2], 0.7), elementaryRotation(order[1], middle)),
                        elementaryRotation(order[0], 0.2));
            const LmVec3 angles = takenApart(narrowed(m), order);
            EXPECT_NEAR(angles[static_cast<std::size_t>(order[0] - 1)], 0.7F, angleTolerance)
                << nameOf(order);
            EXPECT_NEAR(angles[middleAxis(order)], static_cast<float>(middle), angleTolerance)
                << nameOf(order);
        }
    }
}

TEST(MatrixToEuler, LeavesTheElementOfAnAxisThatTheOrderDoesNotName) {
    LmVec3 angles = {9, 9, 9};
    matrixToEuler(angles, {1, 2, 1}, identityMat3);
    EXPECT_EQ(angles, (LmVec3{0, 0, 9}));
}

TEST(MatrixToEuler, ReadsTheUpperLeftOfATransform) {
    LmMat4 m{};
    fromRotationTranslation(m, built({0.3F, -0.4F, 0.5F}, xyz), {7, 8, 9});
    LmVec3 angles{};
    matrixToEuler(angles, xyz, m);
    EXPECT_THAT(angles, elementsNear(LmVec3{0.3F, -0.4F, 0.5F}, angleTolerance));
}

TEST(MatrixToEuler, SwitchesToTheSumOfAnglesAtTheGimbalLimit) {
    // No rotation: built so that the first angle is 0, the plain last angle 0, and the sum or difference pi
    // / 2.
    const auto last = [](float y) { return takenApart({1, 0, 0, 0, 0, 1, y, 0, 1}, xyz)[2]; };
    EXPECT_EQ(last(belowGimbalLimit), 0.0F);
    EXPECT_EQ(last(atGimbalLimit), halfPi);
    EXPECT_EQ(last(-belowGimbalLimit), 0.0F);
    EXPECT_EQ(last(-atGimbalLimit), -halfPi);
}

TEST(MatrixToEuler, SwitchesToTheSumOfAnglesAtTheGimbalLimitWhereAnAxisRepeats) {
    const auto last = [](float y) { return takenApart({y, 0, -1, 0, 0, 1, 1, 0, 0}, {1, 2, 1})[0]; };
    EXPECT_EQ(last(belowGimbalLimit), 0.0F);
    EXPECT_EQ(last(atGimbalLimit), halfPi);
    EXPECT_EQ(last(-belowGimbalLimit), 0.0F);
    EXPECT_EQ(last(-atGimbalLimit), -halfPi);
}

TEST(MatrixToEuler, AnglesAgreeOnBothSidesOfTheGimbalLimit) {
    for (const double sign : {1.0, -1.0}) {
        const double middle = sign * std::asin(static_cast<double>(atGimbalLimit));
        const DMat3 exact = product(product(elementaryRotation(3, 0.5), elementaryRotation(2, middle)),
                                    elementaryRotation(1, 0.3));
        LmMat3 above = narrowed(exact);
        above[6] = static_cast<float>(sign) * atGimbalLimit;
        LmMat3 below = above;
        below[6] = static_cast<float>(sign) * belowGimbalLimit;
        const LmVec3 expected = {0.3F, static_cast<float>(middle), 0.5F};
        EXPECT_THAT(takenApart(above, xyz), elementsNear(expected, angleTolerance));
        EXPECT_THAT(takenApart(below, xyz), elementsNear(expected, angleTolerance));
    }
}

TEST(MatrixToEuler, HalvesTheSumWhereTheMiddleAngleIsExactlyAQuarterTurn) {
    const float c = std::cos(1.0F);
    const float s = std::sin(1.0F);
    // The outer angles add up to 1 ...
    EXPECT_THAT(takenApart({0, s, -c, 0, c, s, 1, 0, 0}, xyz),
                elementsNear(LmVec3{0.5F, halfPi, 0.5F}, angleTolerance));
    // ... and here the first less the last is 1.
    EXPECT_THAT(takenApart({0, -s, c, 0, c, s, -1, 0, 0}, xyz),
                elementsNear(LmVec3{0.5F, -halfPi, -0.5F}, angleTolerance));
}

TEST(MatrixToEuler, HalvesTheSumWhereTheMiddleAngleOfARepeatedAxisIsNothing) {
    const float c = std::cos(1.0F);
    const float s = std::sin(1.0F);
    EXPECT_THAT(takenApart({1, 0, 0, 0, c, s, 0, -s, c}, {1, 2, 1}),
                elementsNear(LmVec3{0.5F, 0, 0}, angleTolerance));
    // Half a turn about Y: the first less the last is 1, and the last one stays.
    EXPECT_THAT(takenApart({-1, 0, 0, 0, c, s, 0, s, -c}, {1, 2, 1}),
                elementsNear(LmVec3{-0.5F, pi, 0}, angleTolerance));
}

TEST(EulerRoundTrip, RebuildsMatricesOfAnyAnglesForAllOrders) {
    Random random(92);
    for (const LmEulerOrder& order : allOrders) {
        double worst = 0;
        for (int round = 0; round < roundsPerOrder; ++round) {
            worst = std::max(worst, rebuildingError(built(random.vectorWithin(2 * exactPi), order), order));
        }
        EXPECT_LE(worst, rebuiltTolerance) << nameOf(order);
    }
}

/// A middle angle close to where the outer axes coincide: from far below to far above rounding, or exact.
float middleAngleNearGimbal(Random& random, int round, const LmEulerOrder& order) {
    const double lock = repeatsAxis(order) ? (round % 2) * exactPi : (round % 2 - 0.5) * exactPi;
    const double away = round % 5 == 0 ? 0 : std::pow(10, random.between(-12, -0.1));
    return static_cast<float>(lock + (round % 3 == 0 ? -away : away));
}

TEST(EulerRoundTrip, RebuildsMatricesNearGimbalLockForAllOrders) {
    Random random(93);
    for (const LmEulerOrder& order : allOrders) {
        double worst = 0;
        for (int round = 0; round < roundsPerOrder; ++round) {
            LmVec3 angles = random.vectorWithin(exactPi);
            angles[middleAxis(order)] = middleAngleNearGimbal(random, round, order);
            worst = std::max(worst, rebuildingError(built(angles, order), order));
        }
        EXPECT_LE(worst, rebuiltTolerance) << nameOf(order);
    }
}

TEST(EulerRoundTrip, RebuildsMatricesNearTheGimbalLimitForAllOrders) {
    Random random(94);
    for (const LmEulerOrder& order : allOrders) {
        double worst = 0;
        for (int round = 0; round < roundsPerOrder; ++round) {
            LmVec3 angles = random.vectorWithin(exactPi);
            const double quarter = (2 * (round % 4) - 3) * exactPi / 4;
            angles[middleAxis(order)] = static_cast<float>(quarter + random.between(-1e-5, 1e-5));
            worst = std::max(worst, rebuildingError(built(angles, order), order));
        }
        EXPECT_LE(worst, rebuiltTolerance) << nameOf(order);
    }
}

TEST(EulerRoundTrip, RebuildsAnyRotationForOrdersOfThreeAxes) {
    Random random(95);
    for (const LmEulerOrder& order : allOrders) {
        double worst = 0;
        for (int round = 0; round < roundsPerOrder && !repeatsAxis(order); ++round) {
            worst = std::max(worst, rebuildingError(narrowed(random.rotation()), order));
        }
        EXPECT_LE(worst, rebuiltTolerance) << nameOf(order);
    }
}

/// Puts the process-wide choice back after a test that changes it.
class KeepRotationAbout : public ::testing::Test {
protected:
    void TearDown() override { setEulerContinuityMode(EulerNearestByQuadrant); }

    static LmMat3 reduced(LmMat3 m, int axis) {
        keepRotationAbout(m, axis);
        return m;
    }
};

TEST_F(KeepRotationAbout, OfAPureRotationReturnsIt) {
    for (const EulerContinuityMode mode : {EulerNearestByDistance, EulerNearestByQuadrant}) {
        setEulerContinuityMode(mode);
        for (int axis = 0; axis < 3; ++axis) {
            for (const double angle : {0.0, 0.3, -1.5, 2.0, -3.0}) {
                const LmMat3 m = narrowed(elementaryRotation(axis + 1, angle));
                EXPECT_THAT(reduced(m, axis), elementsNear(m, angleTolerance)) << axis << " by " << angle;
            }
        }
    }
}

TEST_F(KeepRotationAbout, DropsTheOtherTwoAngles) {
    constexpr LmVec3 angles = {0.3F, -0.2F, 0.4F};
    EXPECT_THAT(reduced(built(angles, {1, 3, 2}), 0), elementsNear(built({0.3F, 0, 0}, xyz), angleTolerance));
    EXPECT_THAT(reduced(built(angles, {2, 1, 3}), 1),
                elementsNear(built({0, -0.2F, 0}, xyz), angleTolerance));
    EXPECT_THAT(reduced(built(angles, {3, 2, 1}), 2), elementsNear(built({0, 0, 0.4F}, xyz), angleTolerance));
}

TEST_F(KeepRotationAbout, TakesTheSolutionWithTheSmallerRest) {
    // By distance the solutions are 0.3 about X with 0.2 and 3 beside it, a rest of 3.2, and 0.3 + pi about X
    // with pi - 0.2 and 3 - pi beside it, a rest of 3.08.
    const LmMat3 m = built({0.3F, 3.0F, 0.2F}, {1, 3, 2});
    setEulerContinuityMode(EulerNearestByDistance);
    EXPECT_THAT(reduced(m, 0), elementsNear(built({0.3F + pi, 0, 0}, xyz), angleTolerance));
    // By quadrant both references find the solution whose middle angle is below a quarter turn.
    setEulerContinuityMode(EulerNearestByQuadrant);
    EXPECT_THAT(reduced(m, 0), elementsNear(built({0.3F, 0, 0}, xyz), angleTolerance));
}

using KeepRotationAboutDeathTest = KeepRotationAbout;

TEST_F(KeepRotationAboutDeathTest, AbortsOnAnyOtherAxis) {
    EXPECT_EXIT(reduced(identityMat3, -1), ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(reduced(identityMat3, 3), ::testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace quillon
