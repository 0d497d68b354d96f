#include "quillon/geometry/Quaternion.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace quillon {
namespace {

using namespace testing_geometry;

/// A few roundings of 6e-8 on elements up to 1.
constexpr float unitTolerance = 1e-6F;

std::array<float, 4> elementsOf(const LmQuat& q) {
    return {q.w, q.x, q.y, q.z};
}

using Four = std::array<float, 4>;

LmQuat aboutZ(float angle) {
    return {std::cos(angle / 2), 0, 0, std::sin(angle / 2)};
}

LmQuat randomUnit(Random& random) {
    LmQuat q{};
    fromMatrix(narrowed(random.rotation()), q);
    return q;
}

TEST(Quaternion, MultiplyIsTheHamiltonProduct) {
    EXPECT_EQ(elementsOf(multiply({1, 2, 3, 4}, {5, 6, 7, 8})), (Four{-60, 12, 30, 24}));
    // i j = k, j i = -k
    EXPECT_EQ(elementsOf(multiply({0, 1, 0, 0}, {0, 0, 1, 0})), (Four{0, 0, 0, 1}));
    EXPECT_EQ(elementsOf(multiply({0, 0, 1, 0}, {0, 1, 0, 0})), (Four{0, 0, 0, -1}));
}

TEST(Quaternion, ElementwiseOperations) {
    EXPECT_EQ(dot(LmQuat{1, 2, 3, 4}, LmQuat{5, 6, 7, -8}), 6.0F);
    EXPECT_EQ(elementsOf(conjugate({1, 2, -3, 4})), (Four{1, -2, 3, -4}));
    EXPECT_EQ(elementsOf(negate({1, 2, -3, 4})), (Four{-1, -2, 3, -4}));
    EXPECT_EQ(elementsOf(scale({1, 2, -3, 4}, 2)), (Four{2, 4, -6, 8}));
    EXPECT_EQ(elementsOf(add({1, 2, 3, 4}, {5, 6, 7, -8})), (Four{6, 8, 10, -4}));
}

TEST(QuaternionRotate, TurnsXToYAboutZ) {
    EXPECT_THAT(rotate({1, 0, 0}, aboutZ(halfPi)), elementsNear(LmVec3{0, 1, 0}, unitTolerance));
    EXPECT_THAT(rotate({2, 0, 5}, aboutZ(pi)), elementsNear(LmVec3{-2, 0, 5}, unitTolerance));
}

TEST(QuaternionRotate, AgreesWithTheMatrix) {
    Random random(98);
    for (int round = 0; round < 2000; ++round) {
        const LmQuat q = randomUnit(random);
        const LmVec3 v = random.vectorWithin(1);
        LmMat3 m{};
        toMatrix(m, q);
        LmVec3 expected{};
        rowTimes(expected, v, m);
        ASSERT_THAT(rotate(v, q), elementsNear(expected, unitTolerance));
    }
}

TEST(QuaternionToMatrix, IsOfTheRowVectorForm) {
    LmMat3 m{};
    toMatrix(m, {0.5F, 0.5F, 0.5F, 0.5F});
    EXPECT_EQ(m, (LmMat3{0, 1, 0, 0, 0, 1, 1, 0, 0}));
    toMatrix(m, {1, 2, 3, 4});
    EXPECT_EQ(m, (LmMat3{-49, 20, 10, 4, -39, 28, 22, 20, -25}));
    toMatrix(m, {1, 0, 0, 0});
    EXPECT_EQ(m, identityMat3);
}

TEST(QuaternionFromMatrix, HalvesTheAngleOfAnElementaryRotation) {
    const float c = std::cos(0.4F);
    const float s = std::sin(0.4F);
    const Four expected[] = {{c, s, 0, 0}, {c, 0, s, 0}, {c, 0, 0, s}};
    for (int axis = 1; axis <= 3; ++axis) {
        LmQuat q{};
        fromMatrix(narrowed(elementaryRotation(axis, 0.8)), q);
        EXPECT_THAT(elementsOf(q), elementsNear(expected[axis - 1], unitTolerance)) << "axis " << axis;
    }
}

TEST(QuaternionFromMatrix, GivesBackTheMatrix) {
    Random random(99);
    for (int round = 0; round < 10000; ++round) {
        const LmMat3 m = narrowed(random.rotation());
        LmQuat q{};
        fromMatrix(m, q);
        LmMat3 back{};
        toMatrix(back, q);
        ASSERT_THAT(back, elementsNear(m, 2 * unitTolerance)) << "round " << round;
    }
}

TEST(QuaternionSlerp, DividesTheArcEvenly) {
    const LmQuat from = aboutZ(0.2F);
    const LmQuat to = aboutZ(1.4F);
    EXPECT_THAT(elementsOf(slerp(from, to, 0)), elementsNear(elementsOf(from), unitTolerance));
    EXPECT_THAT(elementsOf(slerp(from, to, 0.25F)), elementsNear(elementsOf(aboutZ(0.5F)), unitTolerance));
    EXPECT_THAT(elementsOf(slerp(from, to, 0.5F)), elementsNear(elementsOf(aboutZ(0.8F)), unitTolerance));
    EXPECT_THAT(elementsOf(slerp(from, to, 1)), elementsNear(elementsOf(to), unitTolerance));
}

TEST(QuaternionSlerp, GoesTheLongerArcWhereTheDotProductIsNegative) {
    // The negated end stands for the same rotation, a whole turn on: half of 1 - 2 pi.
    const LmQuat half = slerp({1, 0, 0, 0}, negate(aboutZ(1)), 0.5F);
    EXPECT_THAT(elementsOf(half), elementsNear(elementsOf(aboutZ(0.5F - pi)), unitTolerance));
}

TEST(QuaternionSlerp, OfEqualQuaternionsIsTheFirst) {
    EXPECT_EQ(elementsOf(slerp({1, 0, 0, 0}, {1, 0, 0, 0}, 0.5F)), (Four{1, 0, 0, 0}));
    EXPECT_EQ(elementsOf(slerp({1, 0, 0, 0}, {-1, 0, 0, 0}, 0.5F)), (Four{1, 0, 0, 0}));
}

TEST(QuaternionSlerp, WhereRoundingTakesTheDotProductAboveOneIsTheFirst) {
    const LmQuat a = {1.0001F, 0, 0, 0};
    EXPECT_EQ(elementsOf(slerp(a, a, 0.5F)), elementsOf(a));
}

} // namespace
} // namespace quillon
