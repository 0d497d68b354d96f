#include "quillon/geometry/Vec3.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillon {
namespace {

TEST(Vec3, DotSumsTheProducts) {
    EXPECT_EQ(dot({1, 2, 3}, {4, -5, 6}), 12.0F);
}

TEST(Vec3, CrossIsTheRightHandedVectorProduct) {
    EXPECT_EQ(cross({1, 0, 0}, {0, 1, 0}), (LmVec3{0, 0, 1}));
    EXPECT_EQ(cross({1, 2, 3}, {4, 5, 7}), (LmVec3{-1, 5, -3}));
}

TEST(Vec3, LengthIsTheRootOfTheSquares) {
    EXPECT_EQ(length({2, -3, 6}), 7.0F);
    EXPECT_EQ(length({0, 0, 0}), 0.0F);
}

TEST(Vec3, NormalizedDividesByTheLength) {
    EXPECT_EQ(normalized({0, 0, -4}), (LmVec3{0, 0, -1}));
    EXPECT_TRUE(std::isnan(normalized({0, 0, 0})[0]));
}

TEST(Vec3, UnitLengthIsStrictAndInDoublePrecision) {
    EXPECT_TRUE(hasUnitLength({0, -1, 0}));
    EXPECT_TRUE(hasUnitLength({1.00009F, 0, 0}));
    EXPECT_TRUE(hasUnitLength({0.99991F, 0, 0}));
    EXPECT_FALSE(hasUnitLength({1.0001F, 0, 0}));
    EXPECT_FALSE(hasUnitLength({0.9998F, 0, 0}));
    EXPECT_FALSE(hasUnitLength({std::nanf(""), 0, 0}));
}

TEST(PlaneNormal, IsTheUnitDirectionOfTheTwoEdgesAtTheMiddlePoint) {
    // c - b = (0, 3, 0), a - b = (2, 0, 0): their product is (0, 0, -6).
    EXPECT_EQ(planeNormal({3, 1, 5}, {1, 1, 5}, {1, 4, 5}), (LmVec3{0, 0, -1}));
}

TEST(PlaneNormal, OfThreeEqualPointsIsTheZeroVector) {
    EXPECT_EQ(planeNormal({1, 2, 3}, {1, 2, 3}, {1, 2, 3}), (LmVec3{0, 0, 0}));
}

TEST(PlaneNormal, OfPointsOnOneLineIsTheZeroVector) {
    EXPECT_EQ(planeNormal({0, 0, 0}, {1, 1, 1}, {3, 3, 3}), (LmVec3{0, 0, 0}));
}

TEST(Perpendicular, ChoosesItsAxisByTheMagnitudes) {
    struct Case {
        const char* what;
        LmVec3 v;
        LmVec3 expected;
    };
    // v x X = (0, z, -y), v x Y = (-z, 0, x), v x Z = (y, -x, 0)
    const Case cases[] = {
        {"x largest: Z", {-3, 2, 1}, {2, 3, 0}},
        {"x and y equal, above z: Z", {2, -2, 1}, {-2, -2, 0}},
        {"all equal: Z", {1, 1, 1}, {1, -1, 0}},
        {"x above y, z largest: Y", {2, 1, -3}, {3, 0, 2}},
        {"x and y equal, below z: Y", {1, 1, 2}, {-2, 0, 1}},
        {"x below y, y largest: X", {1, -3, 2}, {0, 2, 3}},
        {"x below y, y and z equal: X", {1, 2, 2}, {0, 2, -2}},
        {"x below y, z largest: Y", {1, 2, 3}, {-3, 0, 1}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(perpendicular(c.v), c.expected) << c.what;
    }
}

TEST(Perpendicular, OfTheZeroVectorIsTheZeroVector) {
    EXPECT_EQ(perpendicular({0, 0, 0}), (LmVec3{0, 0, 0}));
}

} // namespace
} // namespace quillon
