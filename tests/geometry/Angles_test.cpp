#include "quillon/geometry/Angles.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace quillon {
namespace {

TEST(Angles, ConstantsHaveTheirBits) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(pi), 0x40490FDBU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(twoPi), 0x40C90FDBU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(halfPi), 0x3FC90FDBU);
    EXPECT_EQ(twoPiDouble, 6.283185307179586);
}

TEST(ClampedAsin, IsTheArcSineWhereTheCosineIsNotNegative) {
    EXPECT_EQ(clampedAsin(0.5F, 1), std::asin(0.5F));
    EXPECT_EQ(clampedAsin(-0.5F, 0), std::asin(-0.5F));
}

TEST(ClampedAsin, IsPiLessTheArcSineWhereTheCosineIsNegative) {
    EXPECT_EQ(clampedAsin(0, -1), pi);
    EXPECT_EQ(clampedAsin(0.5F, -0.1F), pi - std::asin(0.5F));
    EXPECT_EQ(clampedAsin(-1, -0.1F), pi + halfPi);
}

TEST(ClampedAsin, ClampsSinesThatRoundingTookTooFar) {
    EXPECT_EQ(clampedAsin(1.5F, 1), halfPi);
    EXPECT_EQ(clampedAsin(-1.0000001F, 1), -halfPi);
    EXPECT_EQ(clampedAsin(2, -1), pi - halfPi);
}

} // namespace
} // namespace quillon
