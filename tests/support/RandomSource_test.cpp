#include "tests/support/RandomSource.h"

#include "tests/support/EnvironmentValue.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <optional>
#include <set>
#include <vector>

namespace quillon::test {
namespace {

/// What the text of a real in such a format gives back.
float readBack(const char* format, int decimals, float value) {
    char text[80];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(text, sizeof text, format, decimals, static_cast<double>(value));
#pragma GCC diagnostic pop
    return static_cast<float>(std::strtod(text, nullptr));
}

TEST(RandomSource, DrawsTheNumbersOfItsGenerator) {
    // The generator's published numbers for this seed.
    RandomSource random(1234567);
    for (const std::uint64_t expected : {6457827717110365317U, 3203168211198807973U, 9817491932198370423U,
                                         4593380528125082431U, 16408922859458223821U}) {
        EXPECT_EQ(random.next(), expected);
    }
}

TEST(RandomSource, BoundsBelongToTheIntegersBetweenThem) {
    RandomSource random(1);
    std::set<int> drawn;
    for (int i = 0; i < 200; ++i) {
        drawn.insert(random.between(-1, 2));
    }
    EXPECT_EQ(drawn, (std::set<int>{-1, 0, 1, 2}));
    EXPECT_EQ(random.between(7, 7), 7);
}

TEST(RandomSource, IntegersReachBothEnds) {
    RandomSource random(2);
    std::set<int> drawn;
    for (int i = 0; i < 1000; ++i) {
        drawn.insert(random.anyInt());
    }
    EXPECT_EQ(*drawn.begin(), std::numeric_limits<int>::min());
    EXPECT_EQ(*drawn.rbegin(), std::numeric_limits<int>::max());
    EXPECT_TRUE(drawn.contains(0));
}

TEST(RandomSource, DecimalsComeBackFromTheirText) {
    RandomSource random(3);
    for (int i = 0; i < 20000; ++i) {
        const int decimals = random.between(0, 9);
        const float value = random.decimal(decimals);
        ASSERT_EQ(readBack("%.*f", decimals, value), value) << decimals << " decimals";
    }
}

TEST(RandomSource, RealsOfSixDigitsComeBackFromTheirTextAndAreNormalOrTinyOrExtreme) {
    RandomSource random(4);
    bool hasTiny = false;
    bool hasExtreme = false;
    for (int i = 0; i < 20000; ++i) {
        const float value = random.sixDigits();
        ASSERT_EQ(readBack("%.*g", 6, value), value);
        hasTiny = hasTiny || std::fpclassify(value) == FP_SUBNORMAL;
        hasExtreme = hasExtreme || std::fabs(value) > 1e36F;
    }
    EXPECT_TRUE(hasTiny);
    EXPECT_TRUE(hasExtreme);
}

TEST(RandomSource, NamesHaveNoWhiteSpaceAtTheirEnds) {
    RandomSource random(5);
    std::set<std::size_t> lengths;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = random.name(30, letters::line);
        lengths.insert(name.size());
        ASSERT_EQ(std::isspace(static_cast<unsigned char>(name.front())), 0);
        ASSERT_EQ(std::isspace(static_cast<unsigned char>(name.back())), 0);
    }
    EXPECT_EQ(*lengths.begin(), 1U);
    EXPECT_EQ(*lengths.rbegin(), 30U);
    EXPECT_EQ(RandomSource(6).name(1).size(), 1U);
}

TEST(TestSeed, IsThatOfTheEnvironmentOrElseAlwaysTheSame) {
    {
        const EnvironmentValue given("QUILLON_TEST_SEED", "9876543210987654321");
        EXPECT_EQ(testSeed(), 9876543210987654321U);
    }
    const EnvironmentValue none("QUILLON_TEST_SEED", std::nullopt);
    EXPECT_EQ(testSeed(), 20261122U);
}

TEST(ForGenerated, EveryTimeHasASeedOfItsOwn) {
    const EnvironmentValue seed("QUILLON_TEST_SEED", "1234567");
    std::vector<std::uint64_t> firstDraws;
    forGenerated(3, [&](RandomSource& random) { firstDraws.push_back(random.next()); });
    ASSERT_EQ(firstDraws.size(), 3U);
    EXPECT_EQ(firstDraws[0], 6457827717110365317U);
    EXPECT_EQ(firstDraws[1], RandomSource(1234568).next());
    EXPECT_EQ(firstDraws[2], RandomSource(1234569).next());
}

} // namespace
} // namespace quillon::test
