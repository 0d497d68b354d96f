#include "quillon/files/Timecode.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::error;
using test::StatusChain;

struct Row {
    const char* name;
    float fps;
};

const std::vector<Row> table = {
    {"23.976", 23.976023F},  {"24", 24.0F}, {"25", 25.0F},          {"29.97", 29.970028F},
    {"29.97df", 29.970028F}, {"30", 30.0F}, {"47.952", 47.952045F}, {"48", 48.0F},
    {"59.94", 59.940056F},   {"60", 60.0F},
};

TEST(TimecodeRate, HasANameAndFramesPerSecondByItsIndex) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        const auto rate = static_cast<LmTimecodeRate>(i);
        EXPECT_EQ(timecodeRateName(rate), table[i].name);
        EXPECT_EQ(timecodeRateFps(rate), table[i].fps);
        EXPECT_EQ(timecodeRateFromName(table[i].name), rate);
        float fps = 0.0F;
        bool dropFrame = false;
        timecodeRateInfo(rate, fps, dropFrame);
        EXPECT_EQ(fps, table[i].fps);
        EXPECT_EQ(dropFrame, i == 4);
    }
}

TEST(TimecodeRate, BeyondTheTableHasNeither) {
    for (const LmTimecodeRate rate : {11, 12, INT_MAX, -1, INT_MIN}) {
        EXPECT_EQ(timecodeRateName(rate), "") << rate;
        EXPECT_EQ(timecodeRateFps(rate), 0.0F) << rate;
        float fps = 1.0F;
        bool dropFrame = true;
        timecodeRateInfo(rate, fps, dropFrame);
        EXPECT_EQ(fps, 0.0F) << rate;
        EXPECT_FALSE(dropFrame) << rate;
    }
}

TEST(TimecodeRate, OfIndexTenAborts) {
    const std::vector<std::function<void()>> questions = {
        [] { timecodeRateName(10); },
        [] { timecodeRateFps(10); },
        [] {
            float fps = 0.0F;
            bool dropFrame = false;
            timecodeRateInfo(10, fps, dropFrame);
        },
    };
    for (const auto& question : questions) {
        const support::ChildResult result = support::runFunction(question);
        EXPECT_EQ(result.outcome, "SIGABRT");
        EXPECT_EQ(result.out + result.err, "");
    }
}

TEST(TimecodeRateFromName, WantsTheExactSpelling) {
    EXPECT_EQ(timecodeRateFromName("29.97"), 3);
    EXPECT_EQ(timecodeRateFromName("29.97df"), 4);
    for (const char* const name : {"29.970", "29.97DF", "29.97d", "29.97 ", " 24", "24.0", "2", "61", ""}) {
        EXPECT_EQ(timecodeRateFromName(name), 11) << name;
    }
    EXPECT_EQ(timecodeRateFromName({}), 11);
}

// --- From frames per second ----------------------------------------------------------------------

TEST(TimecodeRateFromFps, FindsARateOrTheOneBelow) {
    struct Case {
        bool dropFrame;
        bool exact;
        float fps;
        LmTimecodeRate expected;
    };
    const std::vector<Case> cases = {
        {false, true, 25.0F, 2},     {false, true, 25.00009F, 2}, {false, true, 24.99991F, 2},
        {false, true, 25.0002F, 11}, {false, true, 24.9998F, 11}, {false, false, 24.9998F, 1},
        {false, false, 25.0002F, 2}, {false, true, 29.97F, 3},    {false, false, 29.98F, 3},
        {true, true, 29.97F, 4},     {true, false, 29.98F, 4},    {true, true, 29.98F, 11},
        {true, false, 25.0F, 11},    {true, true, 25.0F, 11},     {true, false, 60.0F, 4},
        {false, false, 23.0F, 11},   {false, false, 1000.0F, 9},  {false, false, -25.0F, 11},
        {false, false, 59.95F, 8},   {false, false, 0.0F, 11},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(timecodeRateFromFps(c.dropFrame, c.exact, c.fps), c.expected)
            << c.dropFrame << c.exact << ' ' << c.fps;
    }
}

TEST(SnapTimecodeRate, GoesToTheNextRateUp) {
    struct Case {
        bool dropFrame;
        float fps;
        float expected;
    };
    const std::vector<Case> cases = {
        {false, 26.0F, 29.970028F}, {false, 29.98F, 30.0F},     {false, 20.0F, 23.976023F},
        {false, 61.0F, 60.0F},      {true, 25.0F, 29.970028F},  {true, 61.0F, 29.970028F},
        {false, 23.98F, 24.0F},     {false, 24.5F, 25.0F},      {false, 31.0F, 47.952045F},
        {false, 47.96F, 48.0F},     {false, 50.0F, 59.940056F}, {false, 59.95F, 60.0F},
        {false, 0.0F, 23.976023F},  {false, -1.0F, 23.976023F}, {false, 60.0002F, 60.0F},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(snapTimecodeRate(c.dropFrame, c.fps), c.expected) << c.dropFrame << ' ' << c.fps;
    }
}

TEST(SnapTimecodeRate, LeavesARateThatIsNearlyOneAsItIs) {
    for (const float fps : {25.0F, 25.00009F, 24.99991F, 60.00009F, 29.97F, 23.976F, 47.952F, 59.94F}) {
        EXPECT_EQ(snapTimecodeRate(false, fps), fps);
    }
    EXPECT_EQ(snapTimecodeRate(true, 29.97F), 29.97F);
}

TEST(SnapTimecodeRate, MakesARateOfWhatIsNoNumber) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(snapTimecodeRate(false, infinity), 60.0F);
    EXPECT_EQ(snapTimecodeRate(false, -infinity), 23.976023F);
    EXPECT_EQ(snapTimecodeRate(false, nan), 23.976023F);
    EXPECT_EQ(snapTimecodeRate(true, infinity), 29.970028F);
    EXPECT_EQ(snapTimecodeRate(true, nan), 29.970028F);
}

bool isNear(float rate, float fps) {
    const double distance = static_cast<double>(fps) - static_cast<double>(rate);
    return distance <= 0.0001 && distance >= -0.0001;
}

/// The indices that a search with this flag looks at.
std::vector<LmTimecodeRate> indicesLookedAt(bool dropFrame) {
    return dropFrame ? std::vector<LmTimecodeRate>{4}
                     : std::vector<LmTimecodeRate>{0, 1, 2, 3, 5, 6, 7, 8, 9};
}

LmTimecodeRate expectedFromFps(bool dropFrame, bool exact, float fps) {
    LmTimecodeRate below = 11;
    for (const LmTimecodeRate index : indicesLookedAt(dropFrame)) {
        const float rate = table[static_cast<std::size_t>(index)].fps;
        if (isNear(rate, fps)) {
            return index;
        }
        below = rate < fps ? index : below;
    }
    return exact ? 11 : below;
}

float expectedSnap(bool dropFrame, float fps) {
    for (const LmTimecodeRate index : indicesLookedAt(dropFrame)) {
        if (isNear(table[static_cast<std::size_t>(index)].fps, fps)) {
            return fps;
        }
    }
    if (dropFrame) {
        return 29.970028F;
    }
    for (const Row& row : table) {
        if (row.fps > fps) {
            return row.fps;
        }
    }
    return 60.0F;
}

void expectAsInTheModel(float fps) {
    for (const bool dropFrame : {false, true}) {
        for (const bool exact : {false, true}) {
            ASSERT_EQ(timecodeRateFromFps(dropFrame, exact, fps), expectedFromFps(dropFrame, exact, fps))
                << dropFrame << exact << ' ' << fps;
        }
        ASSERT_EQ(snapTimecodeRate(dropFrame, fps), expectedSnap(dropFrame, fps)) << dropFrame << ' ' << fps;
    }
}

TEST(TimecodeRates, AgreeWithThePlainTableOverADenseSweep) {
    for (int i = 0; i <= 100000; ++i) {
        expectAsInTheModel(20.0F + static_cast<float>(i) * 0.00045F);
    }
}

TEST(TimecodeRates, AgreeWithThePlainTableAtEveryNumberAroundEachRate) {
    for (const Row& row : table) {
        float fps = row.fps - 0.0002F;
        while (fps <= row.fps + 0.0002F) {
            expectAsInTheModel(fps);
            fps = std::nextafter(fps, std::numeric_limits<float>::max());
        }
    }
}

// --- Reading -------------------------------------------------------------------------------------

TEST(ReadTimecodeRate, TakesOneRateOffTheText) {
    LmStatus status;
    LmStr text = " \n\v29.97df\t24\n60\r25 rest";
    std::vector<LmTimecodeRate> rates(4);
    for (LmTimecodeRate& rate : rates) {
        EXPECT_TRUE(readTimecodeRate(text, rate, status));
    }
    EXPECT_EQ(rates, (std::vector<LmTimecodeRate>{4, 1, 9, 2}));
    EXPECT_EQ(text, " rest");
    EXPECT_EQ(test::chainOf(status), StatusChain{});
}

TEST(ReadTimecodeRate, OfTheLastRateLeavesAnEmptyText) {
    LmStatus status;
    LmStr text = "48";
    LmTimecodeRate rate = 0;
    EXPECT_TRUE(readTimecodeRate(text, rate, status));
    EXPECT_EQ(rate, 7);
    EXPECT_EQ(text, "");
}

TEST(ReadTimecodeRate, ReportsWhatIsNoneAndTakesTheWhiteSpaceAlone) {
    // Only blank, tab and the two line ends end a word.
    for (const char* const word : {"", "29.970 24", "24,", "24\v25", "24\f", "fps", "#24"}) {
        LmStatus status;
        LmStr text = LmStr(" \t\r\n") + word;
        LmTimecodeRate rate = 77;
        EXPECT_FALSE(readTimecodeRate(text, rate, status)) << word;
        EXPECT_EQ(rate, 77) << word;
        EXPECT_EQ(text, word);
        EXPECT_EQ(test::chainOf(status), (StatusChain{error("Unsupported timecode rate.")})) << word;
    }
}

TEST(ReadTimecodeRate, ReportsOnTheCurrentStatusUnlessGivenAnother) {
    const test::CleanStatus clean;
    LmStr text = "1";
    LmTimecodeRate rate = 0;
    EXPECT_FALSE(readTimecodeRate(text, rate));
    EXPECT_EQ(test::chainOf(), (StatusChain{error("Unsupported timecode rate.")}));
}

} // namespace
} // namespace quillon
