#include "quillon/geometry/Mat3.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace quillon {
namespace {

using namespace testing_geometry;

constexpr LmMat3 counting = {1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr LmMat3 sample = {2, 0, 1, 1, 3, 2, 1, 1, 4};
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// The angle of the 3-4-5 triangle: sine 0.6, cosine 0.8.
const float angle345 = std::atan2(3.0F, 4.0F);

/// Elements up to 16 carry a rounding of 1e-6, and a rotation adds two products.
constexpr float turnedTolerance = 4e-6F;

/// Random input has condition numbers up to 4: a few roundings of 6e-8 on elements up to 2, times that.
constexpr double inverseTolerance = 2e-6;

constexpr int randomRounds = 2000;

TEST(Mat3, CopyTakesAllElements) {
    LmMat3 out{};
    copy(out, counting);
    EXPECT_EQ(out, counting);
}

TEST(Mat3, RowsAreReadAndReplaced) {
    LmMat3 m = counting;
    EXPECT_EQ(getRow(m, 1), (LmVec3{4, 5, 6}));
    EXPECT_EQ(element(m, 1, 2), 6.0F);
    setRow(m, 1, {0, -1, -2});
    EXPECT_EQ(m, (LmMat3{1, 2, 3, 0, -1, -2, 7, 8, 9}));
}

TEST(Mat3, ArithmeticGoesElementByElement) {
    LmMat3 out{};
    add(out, counting, sample);
    EXPECT_EQ(out, (LmMat3{3, 2, 4, 5, 8, 8, 8, 9, 13}));
    sub(out, counting, sample);
    EXPECT_EQ(out, (LmMat3{-1, 2, 2, 3, 2, 4, 6, 7, 5}));
    addScalar(out, counting, 0.5F);
    EXPECT_EQ(out, (LmMat3{1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 6.5F, 7.5F, 8.5F, 9.5F}));
    subScalar(out, counting, 1);
    EXPECT_EQ(out, (LmMat3{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    mulScalar(out, counting, 2);
    EXPECT_EQ(out, (LmMat3{2, 4, 6, 8, 10, 12, 14, 16, 18}));
}

TEST(Mat3, AddToAndScaleByChangeInPlace) {
    LmMat3 m = counting;
    addTo(m, sample);
    EXPECT_EQ(m, (LmMat3{3, 2, 4, 5, 8, 8, 8, 9, 13}));
    scaleBy(m, -1);
    EXPECT_EQ(m, (LmMat3{-3, -2, -4, -5, -8, -8, -8, -9, -13}));
}

TEST(Mat3, SetDiagonalClearsTheRestAndFillDiagonalLeavesIt) {
    LmMat3 m = counting;
    fillDiagonal(m, 0.5F);
    EXPECT_EQ(m, (LmMat3{0.5F, 2, 3, 4, 0.5F, 6, 7, 8, 0.5F}));
    setDiagonal(m, 3);
    EXPECT_EQ(m, (LmMat3{3, 0, 0, 0, 3, 0, 0, 0, 3}));
    setDiagonal(m, 1);
    EXPECT_EQ(m, identityMat3);
}

TEST(Mat3, ProductIsRowByColumnAndMayGoOverEitherFactor) {
    constexpr LmMat3 expected = {7, 9, 17, 19, 21, 38, 31, 33, 59};
    LmMat3 out{};
    mul(out, counting, sample);
    EXPECT_EQ(out, expected);
    LmMat3 left = counting;
    mul(left, left, sample);
    EXPECT_EQ(left, expected);
    LmMat3 right = sample;
    mul(right, counting, right);
    EXPECT_EQ(right, expected);
}

TEST(Mat3, VectorsMultiplyAsRowFromTheLeftAndAsColumnFromTheRight) {
    LmVec3 v{};
    rowTimes(v, {1, 2, 3}, counting);
    EXPECT_EQ(v, (LmVec3{30, 36, 42}));
    timesColumn(v, counting, {1, 2, 3});
    EXPECT_EQ(v, (LmVec3{14, 32, 50}));
    v = {1, 2, 3};
    rowTimes(v, v, counting);
    EXPECT_EQ(v, (LmVec3{30, 36, 42}));
    v = {1, 2, 3};
    timesColumn(v, counting, v);
    EXPECT_EQ(v, (LmVec3{14, 32, 50}));
}

TEST(Mat3, TransposesExchangeRowsAndColumns) {
    constexpr LmMat3 expected = {1, 4, 7, 2, 5, 8, 3, 6, 9};
    LmMat3 out{};
    transpose(out, counting);
    EXPECT_EQ(out, expected);
    LmMat3 other{};
    transposeAliasSafe(other, counting);
    EXPECT_EQ(other, expected);
    LmMat3 same = counting;
    transposeAliasSafe(same, same);
    EXPECT_EQ(same, expected);
    LmMat3 inPlace = counting;
    transposeInPlace(inPlace);
    EXPECT_EQ(inPlace, expected);
}

TEST(Mat3, DeterminantIsExpandedAlongRowZero) {
    EXPECT_EQ(determinant(sample), 18.0F);
    EXPECT_EQ(determinant(counting), 0.0F);
    EXPECT_EQ(determinant(identityMat3), 1.0F);
}

TEST(Mat3, NormalizeRowsReturnsTheLengths) {
    LmMat3 m = {0, 0, -2, 3, 0, 0, 0, 0.5F, 0};
    EXPECT_EQ(normalizeRows(m), (LmVec3{2, 3, 0.5F}));
    EXPECT_EQ(m, (LmMat3{0, 0, -1, 1, 0, 0, 0, 1, 0}));
}

TEST(Mat3Inverse, DividesTheCofactorsByTheDeterminant) {
    const LmMat3 expected = {10.0F / 18, 1.0F / 18,  -3.0F / 18, -2.0F / 18, 7.0F / 18,
                             -3.0F / 18, -2.0F / 18, -2.0F / 18, 6.0F / 18};
    LmMat3 out{};
    inverse(out, sample);
    EXPECT_EQ(out, expected);
    LmMat3 same = sample;
    inverse(same, same);
    EXPECT_EQ(same, expected);
}

TEST(Mat3Inverse, OfASingularMatrixIsNotFinite) {
    LmMat3 out{};
    inverse(out, counting);
    EXPECT_TRUE(std::none_of(out.begin(), out.end(), [](float element) { return std::isfinite(element); }));
}

TEST(Mat3Inverse, AgreesWithEliminationInDoublePrecision) {
    Random random(81);
    for (int round = 0; round < randomRounds; ++round) {
        DMat3 stretched = random.rotation();
        for (std::size_t i = 0; i < 9; ++i) {
            stretched[i] *= i / 3 == 0 ? 0.5 : i / 3 == 1 ? random.between(0.5, 2) : -2;
        }
        const LmMat3 m = narrowed(product(stretched, random.rotation()));
        LmMat3 out{};
        inverse(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat3Inverse, OfARigidMatrixIsItsTranspose) {
    LmMat3 out{};
    invertRigid(out, counting);
    EXPECT_EQ(out, (LmMat3{1, 4, 7, 2, 5, 8, 3, 6, 9}));
    LmMat3 same = counting;
    invertRigidInPlace(same);
    EXPECT_EQ(same, out);
}

TEST(Mat3Inverse, OfARigidMatrixAgreesWithEliminationInDoublePrecision) {
    Random random(82);
    for (int round = 0; round < randomRounds; ++round) {
        const LmMat3 m = narrowed(random.rotation());
        LmMat3 out{};
        invertRigid(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat3Inverse, OfARotationWithScaleDividesByTheSquaredLengths) {
    constexpr LmMat3 m = {0, 2, 0, -4, 0, 0, 0, 0, 0.5F};
    constexpr LmMat3 expected = {0, -0.25F, 0, 0.5F, 0, 0, 0, 0, 2};
    LmMat3 out{};
    invertRotationScale(out, m);
    EXPECT_EQ(out, expected);
    LmMat3 same = m;
    invertRotationScaleInPlace(same);
    EXPECT_EQ(same, expected);
}

TEST(Mat3Inverse, OfARotationWithScaleAgreesWithEliminationInDoublePrecision) {
    Random random(83);
    for (int round = 0; round < randomRounds; ++round) {
        DMat3 stretched = random.rotation();
        for (std::size_t row = 0; row < 3; ++row) {
            const double size = random.between(0.5, 2);
            for (std::size_t column = 0; column < 3; ++column) {
                stretched[3 * row + column] *= size;
            }
        }
        const LmMat3 m = narrowed(stretched);
        LmMat3 out{};
        invertRotationScale(out, m);
        ASSERT_LE(largestDifference(out, eliminated(m)), inverseTolerance) << "round " << round;
    }
}

TEST(Mat3Stretch, GoesAlongTheVectorByItsLength) {
    LmMat3 m = counting;
    scaleAlong(m, 1, {0, 0, 2});
    EXPECT_EQ(m, (LmMat3{1, 2, 3, 4, 5, 12, 7, 8, 9}));
    scaleAlongAll(m, {0, 4, 0});
    EXPECT_EQ(m, (LmMat3{1, 8, 3, 4, 20, 12, 7, 32, 9}));
}

TEST(Mat3Stretch, OfAnObliqueVectorKeepsWhatIsAtRightAnglesToIt) {
    // The part of the row along (0.6, 0.8, 0) is 7 long; the vector's length of 5 makes it 35.
    LmMat3 m = {5, 5, 1, 0, 0, 0, 0, 0, 0};
    scaleAlong(m, 0, {3, 4, 0});
    const LmMat3 expected = {5 + 28 * 0.6F, 5 + 28 * 0.8F, 1, 0, 0, 0, 0, 0, 0};
    EXPECT_THAT(m, elementsNear(expected, turnedTolerance));
}

TEST(Mat3Turn, MixesTwoRowsFromTheLeftAndTwoColumnsFromTheRight) {
    struct Case {
        const char* what;
        void (*turn)(LmMat3&, float);
        LmMat3 expected;
    };
    const Case cases[] = {
        {"rotateX", rotateX, {1, 2, 3, 7.4F, 8.8F, 10.2F, 3.2F, 3.4F, 3.6F}},
        {"rotateY", rotateY, {-3.4F, -3.2F, -3, 4, 5, 6, 6.2F, 7.6F, 9}},
        {"rotateZ", rotateZ, {3.2F, 4.6F, 6, 2.6F, 2.8F, 3, 7, 8, 9}},
        {"postRotateX", postRotateX, {1, -0.2F, 3.6F, 4, 0.4F, 7.8F, 7, 1, 12}},
        {"postRotateY", postRotateY, {2.6F, 2, 1.8F, 6.8F, 5, 2.4F, 11, 8, 3}},
        {"postRotateZ", postRotateZ, {-0.4F, 2.2F, 3, 0.2F, 6.4F, 6, 0.8F, 10.6F, 9}},
    };
    for (const Case& c : cases) {
        LmMat3 m = counting;
        c.turn(m, angle345);
        EXPECT_THAT(m, elementsNear(c.expected, turnedTolerance)) << c.what;
    }
}

TEST(Mat3Turn, OfTheIdentityIsTheElementaryRotation) {
    using Turn = void (*)(LmMat3&, float);
    const Turn turns[] = {rotateX, rotateY, rotateZ, postRotateX, postRotateY, postRotateZ};
    int axis = 0;
    for (const Turn turn : turns) {
        LmMat3 m = identityMat3;
        turn(m, 0.7F);
        const LmMat3 expected = narrowed(elementaryRotation(axis % 3 + 1, static_cast<double>(0.7F)));
        EXPECT_THAT(m, elementsNear(expected, turnedTolerance)) << "turn " << axis;
        ++axis;
    }
}

TEST(Mat3Test, ExactEqualityFailsOnAnyDifferenceAndOnNaN) {
    LmMat3 m = counting;
    EXPECT_TRUE(equalExact(m, counting));
    m[8] = std::nextafter(9.0F, 10.0F);
    EXPECT_FALSE(equalExact(m, counting));
    m[8] = nan;
    EXPECT_FALSE(equalExact(m, m));
}

TEST(Mat3Test, ApproximateEqualityAllowsExactlyTheTolerance) {
    LmMat3 m{};
    constexpr LmMat3 zero{};
    m[4] = 0.0001F;
    EXPECT_TRUE(equalApprox(m, zero));
    EXPECT_TRUE(equalApprox(zero, m));
    m[4] = std::nextafter(0.0001F, 1.0F);
    EXPECT_FALSE(equalApprox(m, zero));
    EXPECT_FALSE(equalApprox(zero, m));
}

TEST(Mat3Test, ApproximateEqualityLetsNaNDifferencesPass) {
    LmMat3 m{};
    m[0] = nan;
    EXPECT_TRUE(equalApprox(m, LmMat3{}));
    m[8] = 1;
    EXPECT_FALSE(equalApprox(m, LmMat3{}));
}

TEST(Mat3Test, HasNoNaNLooksAtEveryElement) {
    EXPECT_TRUE(hasNoNaN(counting));
    for (std::size_t i = 0; i < 9; ++i) {
        LmMat3 m = counting;
        m[i] = nan;
        EXPECT_FALSE(hasNoNaN(m)) << "element " << i;
    }
    LmMat3 infinite{};
    infinite[0] = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(hasNoNaN(infinite));
}

TEST(Mat3Test, HandednessIsTheSignOfTheTripleProduct) {
    EXPECT_TRUE(isRightHanded(identityMat3));
    EXPECT_FALSE(isRightHanded({0, 1, 0, 1, 0, 0, 0, 0, 1}));
    EXPECT_FALSE(isRightHanded(counting)) << "determinant 0";
}

TEST(Mat3Test, OrthogonalityLooksAtDirectionsOnly) {
    EXPECT_TRUE(isOrthogonal(LmMat3{0, 200, 0, 0.01F, 0, 0, 0, 0, -3}));
    EXPECT_FALSE(isOrthogonal(LmMat3{1, 0, 0, 0.001F, 1, 0, 0, 0, 1})) << "rows 0 and 1";
    EXPECT_FALSE(isOrthogonal(LmMat3{1, 0, 0, 0, 1, 0, 0.001F, 0, 1})) << "rows 0 and 2";
    EXPECT_FALSE(isOrthogonal(LmMat3{1, 0, 0, 0, 1, 0, 0, 0.001F, 1})) << "rows 1 and 2";
    EXPECT_TRUE(isOrthogonal(LmMat3{1, 0, 0, 0.0001F, 1, 0, 0, 0, 1})) << "exactly the tolerance";
    EXPECT_FALSE(isOrthogonal(LmMat3{1, 0, 0, 0, 0, 0, 0, 0, 1})) << "a row of length 0";
}

TEST(Mat3Test, UnitRowsAreWithinTheToleranceOfLengthOne) {
    EXPECT_TRUE(isUnitRows(LmMat3{1, 0, 0, 0.6F, 0.8F, 0, 0, 0, -1})) << "orthogonal or not";
    EXPECT_FALSE(isUnitRows(LmMat3{1.0001F, 0, 0, 0, 1, 0, 0, 0, 1})) << "the bound is strict";
    EXPECT_FALSE(isUnitRows(LmMat3{1, 0, 0, 0, 0.9F, 0, 0, 0, 1}));
    EXPECT_FALSE(isUnitRows(LmMat3{1, 0, 0, 0, 1, 0, 0, 0, 2}));
}

TEST(Mat3Print, InBracketsSetsEachElementFourteenWide) {
    std::ostringstream out;
    printBracketed(out, LmMat3{1, -2.5F, 0, 0.1F, 1e-9F, 123456789.0F, 3, 4, 5});
    EXPECT_EQ(out.str(), "[\n"
                         "[             1            -2.5               0  ]\n"
                         " [           0.1           1e-09     1.23457e+08  ]\n"
                         " [             3               4               5  ]\n"
                         "]");
}

TEST(Mat3Print, PlainlyPutsOneBlankAfterEachElement) {
    std::ostringstream out;
    printPlain(out, LmMat3{1, -2.5F, 0, 0.1F, 1e-9F, 123456789.0F, 3, 4, 5});
    EXPECT_EQ(out.str(), "[\n"
                         "  [ 1 -2.5 0 ]\n"
                         "  [ 0.1 1e-09 1.23457e+08 ]\n"
                         "  [ 3 4 5 ]\n"
                         "\n]");
}

TEST(Mat3Print, ShowsTheWidenedValueAtHighPrecision) {
    std::ostringstream out;
    out.precision(17);
    printPlain(out, LmMat3{0.1F, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(out.str(), "[\n  [ 0.10000000149011612 0 0 ]\n  [ 0 0 0 ]\n  [ 0 0 0 ]\n\n]");
}

/// Counts how often it is flushed.
class FlushCounter : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override {
        ++flushes;
        return std::stringbuf::sync();
    }
};

TEST(Mat3Print, FlushesAfterTheBracketedFormOnly) {
    FlushCounter buffer;
    std::ostream out(&buffer);
    printPlain(out, identityMat3);
    EXPECT_EQ(buffer.flushes, 0);
    printBracketed(out, identityMat3);
    EXPECT_EQ(buffer.flushes, 1);
}

} // namespace
} // namespace quillon
