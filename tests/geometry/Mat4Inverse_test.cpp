#include "quillon/geometry/Mat4Inverse.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quillon {
namespace {

using namespace testing_geometry;

constexpr LmMat4 counting = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

/// Determinant -2: exchanging the first two rows makes it triangular, with 1, 1, 2, 1 on the diagonal.
constexpr LmMat4 sample = {0, 1, 2, 0, 1, 0, 0, 3, 0, 0, 2, 1, 0, 0, 0, 1};
constexpr LmMat4 sampleInverse = {0, 1, 0, -3, 1, 0, -1, 1, 0, 0, 0.5F, -0.5F, 0, 0, 0, 1};

/// Linear parts have condition numbers up to 4 and translations reach 2: a few roundings of 6e-8 on
/// elements up to about 8, times that.
constexpr double inverseTolerance = 8e-6;

/// Of determinants up to 32 and as many cofactors, by products of three elements up to 3.
constexpr double adjugateTolerance = 4e-5;

constexpr int randomRounds = 2000;

/// A rotation whose row lengths are random between 0.5 and 2.
DMat3 rotationWithScale(Random& random) {
    DMat3 m = random.rotation();
    for (std::size_t row = 0; row < 3; ++row) {
        const double size = random.between(0.5, 2);
        for (std::size_t column = 0; column < 3; ++column) {
            m[3 * row + column] *= size;
        }
    }
    return m;
}

LmMat4 transformOf(const DMat3& linear, Random& random) {
    LmMat4 m{};
    fromRotationTranslation(m, narrowed(linear), random.vectorWithin(2));
    return m;
}

/// A 4x4 that is no transform: diagonally dominant, so that it is far from singular.
LmMat4 generalMatrix(Random& random) {
    LmMat4 m{};
    for (std::size_t i = 0; i < 16; ++i) {
        m[i] = random.floatBetween(-0.5, 0.5) + (i % 5 == 0 ? 2.0F : 0.0F);
    }
    // Turn the rows round, so that the large elements are off the diagonal too.
    std::rotate(m.begin(), m.begin() + 4, m.end());
    return m;
}

void expectInverts(void (*invert)(LmMat4&, const LmMat4&), const LmMat4& m, const LmMat4& expected) {
    LmMat4 out{};
    invert(out, m);
    EXPECT_EQ(out, expected);
    LmMat4 same = m;
    invert(same, same);
    EXPECT_EQ(same, expected) << "over its own input";
}

TEST(Mat4Inverse, ClosedFormInvertsAHandMadeMatrix) {
    expectInverts(inverse, sample, sampleInverse);
}

TEST(Mat4Inverse, InPlaceInvertsAHandMadeMatrix) {
    LmMat4 m = sample;
    invertInPlace(m);
    EXPECT_EQ(m, sampleInverse);
}

TEST(Mat4Inverse, OfASingularMatrixIsNotFinite) {
    LmMat4 closed{};
    inverse(closed, LmMat4{});
    LmMat4 inPlace{};
    invertInPlace(inPlace);
    const auto finite = [](float element) { return std::isfinite(element); };
    EXPECT_TRUE(std::none_of(closed.begin(), closed.end(), finite));
    EXPECT_TRUE(std::none_of(inPlace.begin(), inPlace.end(), finite));
}

TEST(Mat4Inverse, BothGeneralFormsAgreeWithEliminationInDoublePrecision) {
    Random random(84);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat4 m = generalMatrix(random);
        const DMat4 expected = eliminated(m);
        LmMat4 closed{};
        inverse(closed, m);
        ASSERT_LE(largestDifference(closed, expected), inverseTolerance) << "round " << round;
        LmMat4 inPlace = m;
        invertInPlace(inPlace);
        ASSERT_LE(largestDifference(inPlace, expected), inverseTolerance) << "round " << round;
    }
}

TEST(Mat4Adjugate, OfAHandMadeMatrixIsItsInverseTimesItsDeterminant) {
    LmMat4 m = sample;
    adjugate(m);
    EXPECT_EQ(m, (LmMat4{0, -2, 0, 6, -2, 0, 2, -2, 0, 0, -1, 1, 0, 0, 0, -2}));
}

TEST(Mat4Adjugate, OfASingularMatrixIsFinite) {
    // Only the minor of the missing diagonal element is left.
    LmMat4 m = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 5, 0, 0, 0, 0, 0};
    adjugate(m);
    EXPECT_EQ(m, (LmMat4{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 30}));
}

TEST(Mat4Adjugate, AgreesWithEliminationInDoublePrecision) {
    Random random(85);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat4 m = generalMatrix(random);
        double determinant = 0;
        DMat4 expected = eliminated(widened(m), determinant);
        for (double& cofactor : expected) {
            cofactor *= determinant;
        }
        LmMat4 actual = m;
        adjugate(actual);
        ASSERT_LE(largestDifference(actual, expected), adjugateTolerance) << "round " << round;
    }
}

TEST(Mat4Inverse, OfARigidTransformTurnsTheTranslationBack) {
    constexpr LmMat4 m = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1};
    constexpr LmMat4 expected = {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, -6, 5, -7, 1};
    expectInverts(invertRigid, m, expected);
    LmMat4 same = m;
    invertRigidInPlace(same);
    EXPECT_EQ(same, expected);
}

TEST(Mat4Inverse, OfARigidTransformAgreesWithEliminationInDoublePrecision) {
    Random random(86);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat4 m = transformOf(random.rotation(), random);
        LmMat4 out{};
        invertRigid(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat4Inverse, OfARotationWithScaleDividesByTheSquaredLengths) {
    constexpr LmMat4 m = {0, 2, 0, 0, -4, 0, 0, 0, 0, 0, 0.5F, 0, 8, 6, 7, 1};
    constexpr LmMat4 expected = {0, -0.25F, 0, 0, 0.5F, 0, 0, 0, 0, 0, 2, 0, -3, 2, -14, 1};
    expectInverts(invertRotationScale, m, expected);
    LmMat4 same = m;
    invertRotationScaleInPlace(same);
    EXPECT_EQ(same, expected);
}

TEST(Mat4Inverse, OfARotationWithScaleAgreesWithEliminationInDoublePrecision) {
    Random random(87);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat4 m = transformOf(rotationWithScale(random), random);
        LmMat4 out{};
        invertRotationScale(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat4Inverse, OfAnAffineTransformTakesAnyLinearPart) {
    constexpr LmMat4 m = {1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 4, 0, 3, 5, 8, 1};
    constexpr LmMat4 expected = {1, -2, 0, 0, 0, 1, 0, 0, 0, 0, 0.25F, 0, -3, 1, -2, 1};
    expectInverts(invertAffine, m, expected);
}

TEST(Mat4Inverse, OfAnAffineTransformAgreesWithEliminationInDoublePrecision) {
    Random random(88);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat4 m = transformOf(product(rotationWithScale(random), random.rotation()), random);
        LmMat4 out{};
        invertAffine(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat4Inverse, OfTransformsWritesAnExactLastColumn) {
    LmMat4 m = {1, 0, 0, 9, 0, 1, 0, 9, 0, 0, 1, 9, 0, 0, 0, 9};
    LmMat4 out = counting;
    invertRigid(out, m);
    EXPECT_EQ(out, identityMat4);
    out = counting;
    invertRotationScale(out, m);
    EXPECT_EQ(out, identityMat4);
    out = counting;
    invertAffine(out, m);
    EXPECT_EQ(out, identityMat4);
}

TEST(SubDeterminant, IsOfTheRowsAndColumnsThatTheListsBeginWith) {
    constexpr SubDeterminantIndices all = {0, 1, 2, 3};
    EXPECT_EQ(subDeterminant(counting, 1, {2, 0, 0, 0}, {1, 0, 0, 0}), 10.0F);
    EXPECT_EQ(subDeterminant(counting, 2, {0, 3, 0, 0}, {1, 2, 0, 0}), 2.0F * 15 - 3 * 14);
    EXPECT_EQ(subDeterminant(counting, 2, {3, 0, 0, 0}, {1, 2, 0, 0}), 3.0F * 14 - 2 * 15);
    EXPECT_EQ(subDeterminant(sample, 3, {0, 1, 2, 0}, {0, 1, 2, 0}), -2.0F);
    EXPECT_EQ(subDeterminant(sample, 4, all, all), -2.0F);
    EXPECT_EQ(subDeterminant(counting, 4, all, all), 0.0F);
}

} // namespace
} // namespace quillon
