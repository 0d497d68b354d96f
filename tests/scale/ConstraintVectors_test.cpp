#include "quillon/scale/ConstraintVectors.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillon::scaleDef {
namespace {

using testing_geometry::Random;

TEST(ConstraintVectors, DifferOnlyAboveTheThreshold) {
    EXPECT_FALSE(haveDifferingLengths({0, 1, 0}, {0, 0, -1}));
    EXPECT_FALSE(haveDifferingLengths({2.00005F, 0, 0}, {0, 2.0001F, 0}));
    EXPECT_TRUE(haveDifferingLengths({2.0F, 0, 0}, {0, 2.0002F, 0}));
    EXPECT_TRUE(haveDifferingLengths({2.0002F, 0, 0}, {0, 2.0F, 0}));
}

TEST(ConstraintVectors, ThresholdItselfIsNoDifference) {
    // 0.0001 in single precision; the next number above it differs.
    EXPECT_FALSE(haveDifferingLengths({0, 0, 0}, {0.0001F, 0, 0}));
    EXPECT_TRUE(haveDifferingLengths({0, 0, 0}, {std::nextafter(0.0001F, 1.0F), 0, 0}));
}

TEST(ConstraintVectors, DifferenceThatIsNoNumberIsNone) {
    const float infinite = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(haveDifferingLengths({std::nanf(""), 0, 0}, {1, 0, 0}));
    EXPECT_FALSE(haveDifferingLengths({infinite, 0, 0}, {0, infinite, 0}));
}

TEST(ConstraintVectors, OfLengths1And4EndWithLength2) {
    LmVec3 local = {0, -1, 0};
    LmVec3 global = {0, 0, 4};
    equalizeLengths(local, global);
    EXPECT_EQ(local, (LmVec3{0, -2, 0}));
    EXPECT_EQ(global, (LmVec3{0, 0, 2}));
}

TEST(ConstraintVectors, ZeroVectorBecomesNoNumberAndTheOtherZero) {
    LmVec3 local = {0, 0, 0};
    LmVec3 global = {0, 3, 0};
    equalizeLengths(local, global);
    for (const float component : local) {
        EXPECT_TRUE(std::isnan(component));
    }
    EXPECT_EQ(global, (LmVec3{0, 0, 0}));
}

TEST(ConstraintVectors, EndWithEqualLengthsAndTheirDirectionsOverRandomVectors) {
    // A few roundings of single precision: each is 6e-8 of the value.
    constexpr float tolerance = 1e-6F;
    Random random(64);
    for (int i = 0; i < 5000; ++i) {
        const LmVec3 local = random.vectorWithin(std::pow(10.0, random.between(-4, 4)));
        const LmVec3 global = random.vectorWithin(std::pow(10.0, random.between(-4, 4)));
        LmVec3 newLocal = local;
        LmVec3 newGlobal = global;
        equalizeLengths(newLocal, newGlobal);
        const float mean = std::sqrt(length(local) * length(global));
        ASSERT_NEAR(length(newLocal) / mean, 1.0F, tolerance);
        ASSERT_NEAR(length(newGlobal) / mean, 1.0F, tolerance);
        ASSERT_THAT(normalized(newLocal), testing_geometry::elementsNear(normalized(local), tolerance));
        ASSERT_THAT(normalized(newGlobal), testing_geometry::elementsNear(normalized(global), tolerance));
    }
}

} // namespace
} // namespace quillon::scaleDef
