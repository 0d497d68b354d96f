#include "quillon/geometry/Mat4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace quillon {
namespace {

constexpr LmMat4 counting = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
constexpr LmMat4 countingSquared = {90,  100, 110, 120, 202, 228, 254, 280,
                                    314, 356, 398, 440, 426, 484, 542, 600};
constexpr LmMat4 countingTransposed = {1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16};
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

LmMat4 identityWith(std::size_t index, float value) {
    LmMat4 m = identityMat4;
    m[index] = value;
    return m;
}

TEST(Mat4, CopyTakesAllElements) {
    LmMat4 out{};
    copy(out, counting);
    EXPECT_EQ(out, counting);
    EXPECT_EQ(element(out, 2, 1), 10.0F);
}

TEST(Mat4, ArithmeticGoesElementByElement) {
    LmMat4 out{};
    add(out, counting, countingTransposed);
    EXPECT_EQ(out, (LmMat4{2, 7, 12, 17, 7, 12, 17, 22, 12, 17, 22, 27, 17, 22, 27, 32}));
    sub(out, counting, countingTransposed);
    EXPECT_EQ(out, (LmMat4{0, -3, -6, -9, 3, 0, -3, -6, 6, 3, 0, -3, 9, 6, 3, 0}));
    addScalar(out, counting, -1);
    EXPECT_EQ(out, (LmMat4{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    scaleBy(out, 2);
    EXPECT_EQ(out, (LmMat4{0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30}));
}

TEST(Mat4, SetDiagonalClearsTheRestAndFillDiagonalLeavesIt) {
    LmMat4 m = counting;
    fillDiagonal(m, 0);
    EXPECT_EQ(m, (LmMat4{0, 2, 3, 4, 5, 0, 7, 8, 9, 10, 0, 12, 13, 14, 15, 0}));
    setDiagonal(m, 1);
    EXPECT_EQ(m, identityMat4);
}

TEST(Mat4, ProductIsRowByColumnAndMayGoOverEitherFactor) {
    LmMat4 out{};
    multiply(out, counting, counting);
    EXPECT_EQ(out, countingSquared);
    out = counting;
    multiply(out, out, out);
    EXPECT_EQ(out, countingSquared);
    out = counting;
    multiply(out, out, identityMat4);
    EXPECT_EQ(out, counting);
    multiply(out, countingTransposed, out);
    EXPECT_EQ(out, (LmMat4{276, 304, 332, 360, 304, 336, 368, 400, 332, 368, 404, 440, 360, 400, 440, 480}));
}

TEST(Mat4, TheProcessWideProductStartsAsThePlainOne) {
    LmMat4 out{};
    matrixMultiply(out, counting, counting);
    EXPECT_EQ(out, countingSquared);
}

TEST(Mat4, TransposesExchangeRowsAndColumns) {
    LmMat4 out{};
    transpose(out, counting);
    EXPECT_EQ(out, countingTransposed);
    LmMat4 same = counting;
    transpose(same, same);
    EXPECT_EQ(same, countingTransposed);
    LmMat4 inPlace = counting;
    transposeInPlace(inPlace);
    EXPECT_EQ(inPlace, countingTransposed);
}

TEST(Mat4, RotationIsTheUpperLeftAndTranslationTheLastRow) {
    LmMat3 r{};
    LmVec3 t{};
    getRotation(counting, r);
    getTranslation(counting, t);
    EXPECT_EQ(r, (LmMat3{1, 2, 3, 5, 6, 7, 9, 10, 11}));
    EXPECT_EQ(t, (LmVec3{13, 14, 15}));
    LmMat4 m = counting;
    setRotation(m, {-1, -2, -3, -4, -5, -6, -7, -8, -9});
    EXPECT_EQ(m, (LmMat4{-1, -2, -3, 4, -4, -5, -6, 8, -7, -8, -9, 12, 13, 14, 15, 16}));
    setTranslation(m, {0, 0.5F, 1});
    EXPECT_EQ(m, (LmMat4{-1, -2, -3, 4, -4, -5, -6, 8, -7, -8, -9, 12, 0, 0.5F, 1, 16}));
}

TEST(Mat4, FromRotationAndTranslationIsAffine) {
    LmMat4 m = counting;
    fromRotationTranslation(m, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12});
    EXPECT_EQ(m, (LmMat4{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 1}));
}

TEST(Mat4, VectorsMultiplyAsRowFromTheLeftAndAsColumnFromTheRight) {
    LmVec4 v = {1, 2, 3, 4};
    rowTimes(v, v, counting);
    EXPECT_EQ(v, (LmVec4{90, 100, 110, 120}));
    v = {1, 2, 3, 4};
    timesColumn(v, counting, v);
    EXPECT_EQ(v, (LmVec4{30, 70, 110, 150}));
}

TEST(Mat4, PointsAreDividedByTheirFourthElement) {
    LmVec3 p{};
    transformPoint(p, {1, 2, 3}, counting);
    EXPECT_EQ(p, (LmVec3{51.0F / 72, 58.0F / 72, 65.0F / 72}));
    transformPointColumn(p, counting, {1, 2, 3});
    EXPECT_EQ(p, (LmVec3{18.0F / 102, 46.0F / 102, 74.0F / 102}));
    p = {1, 2, 3};
    transformPoint(p, p, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1});
    EXPECT_EQ(p, (LmVec3{11, 22, 33}));
}

TEST(Mat4Test, ExactEqualityFailsOnAnyDifferenceAndOnNaN) {
    EXPECT_TRUE(equalExact(counting, counting));
    EXPECT_FALSE(equalExact(identityMat4, identityWith(14, 1e-30F)));
    EXPECT_FALSE(equalExact(identityWith(3, nan), identityWith(3, nan)));
}

TEST(Mat4Test, ApproximateEqualityAllowsExactlyTheToleranceAndNaN) {
    EXPECT_TRUE(equalApprox(identityMat4, identityWith(14, 0.0001F)));
    EXPECT_FALSE(equalApprox(identityMat4, identityWith(14, std::nextafter(0.0001F, 1.0F))));
    EXPECT_TRUE(equalApprox(identityMat4, identityWith(0, nan)));
}

TEST(Mat4Test, HasNoNaNLooksAtEveryElement) {
    EXPECT_TRUE(hasNoNaN(counting));
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_FALSE(hasNoNaN(identityWith(i, nan))) << "element " << i;
    }
}

TEST(Mat4Test, AffineMeansNoNaNAndAnExactLastColumn) {
    EXPECT_TRUE(isAffine(identityMat4));
    EXPECT_TRUE(isAffine({1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 1, 2, 3, 1}));
    EXPECT_FALSE(isAffine(identityWith(15, 1.0000001F)));
    EXPECT_FALSE(isAffine(identityWith(3, 1e-30F)));
    EXPECT_FALSE(isAffine(identityWith(7, 1e-30F)));
    EXPECT_FALSE(isAffine(identityWith(11, 1e-30F)));
    EXPECT_FALSE(isAffine(identityWith(12, nan)));
}

TEST(Mat4Test, OrthogonalityLooksAtTheUpperLeft) {
    EXPECT_TRUE(isOrthogonal(LmMat4{0, 2, 0, 9, 3, 0, 0, 9, 0, 0, 4, 9, 9, 9, 9, 9}));
    EXPECT_FALSE(isOrthogonal(counting));
}

TEST(Mat4Test, RigidMeansAnExactLastColumnAndUnitRows) {
    EXPECT_TRUE(isRigid({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
    EXPECT_TRUE(isRigid({1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})) << "rows need not be orthogonal";
    EXPECT_FALSE(isRigid(identityWith(5, 1.0001F)));
    EXPECT_FALSE(isRigid(identityWith(7, 0.5F)));
    EXPECT_FALSE(isRigid(identityWith(15, 1.0000001F)));
    EXPECT_TRUE(isRigid(identityWith(12, nan))) << "the translation is not looked at";
}

TEST(Mat4, RemoveScaleNormalisesThreeRowsAndReturnsTheirLengths) {
    LmMat4 m = {0, 3, 0, 5, 0, 0, -2, 6, 0.5F, 0, 0, 7, 10, 20, 30, 8};
    EXPECT_EQ(removeScale(m), (LmVec3{3, 2, 0.5F}));
    EXPECT_EQ(m, (LmMat4{0, 1, 0, 5, 0, 0, -1, 6, 1, 0, 0, 7, 10, 20, 30, 8}));
}

TEST(Mat4Print, HasFourElementsToARow) {
    std::ostringstream bracketed;
    printBracketed(bracketed, identityWith(12, -0.5F));
    EXPECT_EQ(bracketed.str(), "[\n"
                               "[             1               0               0               0  ]\n"
                               " [             0               1               0               0  ]\n"
                               " [             0               0               1               0  ]\n"
                               " [          -0.5               0               0               1  ]\n"
                               "]");
    std::ostringstream plain;
    printPlain(plain, identityWith(12, -0.5F));
    EXPECT_EQ(plain.str(), "[\n  [ 1 0 0 0 ]\n  [ 0 1 0 0 ]\n  [ 0 0 1 0 ]\n  [ -0.5 0 0 1 ]\n\n]");
}

} // namespace
} // namespace quillon
