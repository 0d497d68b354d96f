#include "quillon/geometry/NearestEuler.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillon {
namespace {

using namespace testing_geometry;

/// A few roundings of 6e-8 on angles up to a few turns.
constexpr float angleTolerance = 3e-6F;

constexpr LmEulerOrder xyz = {1, 2, 3};

/// Puts the process-wide choice back after each test.
class NearestEuler : public ::testing::Test {
protected:
    void TearDown() override { setEulerContinuityMode(EulerNearestByQuadrant); }

    static LmVec3 nearest(const LmVec3& reference, const LmVec3& angles, const LmEulerOrder& order = xyz) {
        LmVec3 out{};
        nearestEuler(out, reference, angles, order);
        return out;
    }
};

class NearestEulerByDistance : public NearestEuler {
protected:
    void SetUp() override { setEulerContinuityMode(EulerNearestByDistance); }
};

using NearestEulerByQuadrant = NearestEuler;

TEST_F(NearestEuler, ModeIsByQuadrantAtProgramStartAndIsSetForTheProcess) {
    EXPECT_EQ(getEulerContinuityMode(), 1);
    setEulerContinuityMode(EulerNearestByDistance);
    EXPECT_EQ(getEulerContinuityMode(), 0);
}

TEST_F(NearestEulerByDistance, WrapsEachAngleToTheReference) {
    EXPECT_THAT(nearest({0.1F, 0.2F, 0.3F}, {0.1F + twoPi, 0.2F - 2 * twoPi, 0.3F + 3 * twoPi}),
                elementsNear(LmVec3{0.1F, 0.2F, 0.3F}, angleTolerance));
    EXPECT_THAT(nearest({20, 0, -20}, {1, 0.5F, -1}),
                elementsNear(LmVec3{1 + 3 * twoPi, 0.5F, -1 - 3 * twoPi}, angleTolerance));
}

TEST_F(NearestEulerByDistance, LeavesAnAngleAtExactlyHalfATurn) {
    EXPECT_EQ(nearest({0, 0, 0}, {pi, 0, 0}), (LmVec3{pi, 0, 0}));
    EXPECT_EQ(nearest({0, 0, 0}, {-pi, 0, 0}), (LmVec3{-pi, 0, 0}));
}

TEST_F(NearestEulerByDistance, TakesTheFlippedTripleWhereItIsNearer) {
    // Squares: 1 + 4 + 9 = 14 as it stands, (1 - pi)² + (pi - 2)² + (3 - pi)² = 5.9 flipped.
    EXPECT_THAT(nearest({0, 0, 0}, {1, 2, 3}), elementsNear(LmVec3{1 - pi, pi - 2, 3 - pi}, angleTolerance));
    EXPECT_EQ(nearest({0, 0, 0}, {1, 0.5F, -1}), (LmVec3{1, 0.5F, -1}));
}

TEST_F(NearestEulerByDistance, KeepsTheTripleHandedInOnATie) {
    const LmVec3 angles = {-halfPi, halfPi, -halfPi};
    EXPECT_EQ(nearest({0, halfPi, 0}, angles), angles);
    const LmVec3 flipped = {halfPi, halfPi, halfPi};
    EXPECT_EQ(nearest({0, halfPi, 0}, flipped), flipped);
}

TEST_F(NearestEulerByDistance, WorksInTheSequenceOfTheOrder) {
    // The middle angle is that about Z: 2 goes to pi - 2, and the others go half a turn on.
    EXPECT_THAT(nearest({0, 0, 0}, {1, 3, 2}, {1, 3, 2}),
                elementsNear(LmVec3{1 - pi, 3 - pi, pi - 2}, angleTolerance));
}

TEST_F(NearestEulerByDistance, EndsOnAnglesThatNoTurnChanges) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(nearest({0, 0, 0}, {1e30F, 0, -1e30F})[0], 1e30F);
    EXPECT_EQ(nearest({0, 0, 0}, {infinity, 0, -infinity})[2], -infinity);
}

TEST_F(NearestEulerByQuadrant, ReturnsAnglesThatEqualTheReferenceUnchanged) {
    Random random(96);
    for (int round = 0; round < 10000; ++round) {
        const LmVec3 angles = random.vectorWithin(10);
        ASSERT_EQ(nearest(angles, angles), angles);
    }
}

TEST_F(NearestEulerByQuadrant, MovesEachAngleByWholeTurns) {
    EXPECT_THAT(nearest({10, 0.2F, -20}, {1, 0.5F, 3}),
                elementsNear(LmVec3{1 + twoPi, 0.5F, 3 - 4 * twoPi}, angleTolerance));
    EXPECT_THAT(nearest({0, twoPi + 0.3F, 0}, {0, 0.2F, 0}),
                elementsNear(LmVec3{0, twoPi + 0.2F, 0}, angleTolerance));
}

TEST_F(NearestEulerByQuadrant, FlipsWhereTheMiddleAnglesLieOnOppositeSidesOfAQuarterTurn) {
    EXPECT_THAT(nearest({0, 0, 0}, {1, 2, 3}), elementsNear(LmVec3{1 - pi, pi - 2, 3 - pi}, angleTolerance));
    EXPECT_THAT(nearest({0, 3, 0}, {1, 0.5F, -1}),
                elementsNear(LmVec3{1 - pi, pi - 0.5F, pi - 1}, angleTolerance));
}

TEST_F(NearestEulerByQuadrant, KeepsTheTripleWhereTheMiddleAnglesLieOnOneSide) {
    EXPECT_EQ(nearest({0, 3, 0}, {1, 2, -1}), (LmVec3{1, 2, -1}));
    EXPECT_EQ(nearest({0, -1, 0}, {1, 1, -1}), (LmVec3{1, 1, -1}));
}

TEST_F(NearestEulerByQuadrant, KeepsTheTripleWhereOneMiddleAngleIsExactlyAQuarterTurn) {
    EXPECT_EQ(nearest({0, halfPi, 0}, {1, 0.5F, -1}), (LmVec3{1, 0.5F, -1}));
    EXPECT_EQ(nearest({0, 2, 0}, {1, -halfPi, -1})[0], 1.0F);
}

TEST_F(NearestEulerByQuadrant, FlipsWhereBothMiddleAnglesAreExactlyAQuarterTurn) {
    // Both signs are 0 and so is their sum. The single pi is just above half a turn, and goes below -pi.
    EXPECT_THAT(nearest({0, halfPi, 0}, {0, halfPi, 0}),
                elementsNear(LmVec3{-pi, halfPi, -pi}, angleTolerance));
}

TEST_F(NearestEulerByQuadrant, WorksInTheSequenceOfTheOrder) {
    EXPECT_THAT(nearest({0, 0, 0}, {2, 1, 3}, {2, 1, 3}),
                elementsNear(LmVec3{pi - 2, 1 - pi, 3 - pi}, angleTolerance));
    EXPECT_EQ(nearest({0, 0, 0}, {2, 1, 3}, {1, 2, 3}), (LmVec3{2, 1, 3}));
}

TEST_F(NearestEulerByQuadrant, MayWriteOverItsInput) {
    LmVec3 angles = {1, 2, 3};
    nearestEuler(angles, {0, 0, 0}, angles, xyz);
    EXPECT_EQ(angles, nearest({0, 0, 0}, {1, 2, 3}));
}

TEST_F(NearestEuler, BothMethodsKeepTheRotation) {
    Random random(97);
    for (const EulerContinuityMode mode : {EulerNearestByDistance, EulerNearestByQuadrant}) {
        setEulerContinuityMode(mode);
        for (const LmEulerOrder& order : allOrders) {
            for (int round = 0; round < 1000 && order[0] != order[2]; ++round) {
                const LmVec3 angles = random.vectorWithin(exactPi);
                LmMat3 before{};
                LmMat3 after{};
                eulerToMatrix(before, angles, order);
                eulerToMatrix(after, nearest(random.vectorWithin(2 * exactPi), angles, order), order);
                ASSERT_LE(largestDifference(before, after), static_cast<double>(angleTolerance));
            }
        }
    }
}

TEST_F(NearestEuler, TakesItsDataFromArrays) {
    LmArray<float> reference(3);
    LmArray<float> angles(3);
    LmArray<float> out(3);
    LmArray<int> order(3);
    for (int i = 0; i < 3; ++i) {
        reference[i] = 0;
        angles[i] = static_cast<float>(i + 1);
        order[i] = i + 1;
    }
    nearestEuler(out, reference, angles, order);
    const LmVec3 expected = nearest({0, 0, 0}, {1, 2, 3});
    EXPECT_EQ((LmVec3{out[0], out[1], out[2]}), expected);
}

} // namespace
} // namespace quillon
