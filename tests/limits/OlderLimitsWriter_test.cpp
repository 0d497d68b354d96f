#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"

#include "tests/limits/LimitsText.h"
#include "tests/support/FlushMarks.h"
#include "tests/support/RoundTrip.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace quillon {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;

const std::string firstLine = "            1               Field Number\n";

std::string written(const LqLimitsData& limits) {
    return test::writtenBy([&](std::ostream& output) { writeOlderLimits(limits, output); });
}

class OlderLimitsWriter : public testing::Test {
protected:
    void add(int id, LqLimitMode mode, float lower = 0, float upper = 0) {
        auto* const record = new LqVarLimits(id);
        record->mode = mode;
        record->lowerValue = lower;
        record->upperValue = upper;
        limits_.vars.append(record);
    }
    void addBoth(int id, float lower, float upper) { add(id, LimitBoth, lower, upper); }

    bool readBack(LqLimitsData& back) {
        std::istringstream input(written(limits_));
        return readLimitsStream(back, input, false);
    }

    test::CleanStatus cleanStatus_;
    LqLimitsData limits_;
};

TEST_F(OlderLimitsWriter, NoRecordsAreTheFirstLineAlone) {
    EXPECT_EQ(written(limits_), firstLine);
}

TEST_F(OlderLimitsWriter, WritesEveryModeInListOrder) {
    addBoth(7, -1.5F, 1.5F);
    add(1, LimitNone);
    add(23, LimitLower, 2.25F);
    add(456, LimitUpper, 0, 10);
    EXPECT_EQ(written(limits_), firstLine + "             2            7\n"
                                            "     -1.5000\n"
                                            "      1.5000\n"
                                            "             0            1\n"
                                            "             -1           23\n"
                                            "      2.2500\n"
                                            "             1          456\n"
                                            "     10.0000\n");
}

TEST_F(OlderLimitsWriter, NumbersWiderThanTheirFieldsTakeTheRoomThatTheyNeed) {
    addBoth(-12345, -12345.678F, 100000000);
    EXPECT_EQ(written(limits_), firstLine + "             2          -12345\n"
                                            "   -12345.6777\n"
                                            "   100000000.0000\n");
}

TEST_F(OlderLimitsWriter, WritesAndReadsTheGreatestNumbers) {
    constexpr float most = std::numeric_limits<float>::max();
    addBoth(std::numeric_limits<int>::min(), -most, most);
    EXPECT_EQ(written(limits_), firstLine + "             2          -2147483648\n"
                                            "   -340282346638528859811704183484516925440.0000\n"
                                            "   340282346638528859811704183484516925440.0000\n");
    LqLimitsData back;
    EXPECT_TRUE(readBack(back));
    EXPECT_EQ(linesOf(back), linesOf(limits_));
}

TEST_F(OlderLimitsWriter, RealsAreCutToFourDecimals) {
    addBoth(1, -0.00004F, 0.123456F);
    addBoth(2, 0.00006F, 0.00016F);
    EXPECT_EQ(written(limits_), firstLine + "             2            1\n"
                                            "     -0.0000\n"
                                            "      0.1235\n"
                                            "             2            2\n"
                                            "      0.0001\n"
                                            "      0.0002\n");
    LqLimitsData back;
    EXPECT_TRUE(readBack(back));
    EXPECT_THAT(
        linesOf(back),
        ElementsAre("1 mode 3 lower -0 * unset(0) upper 0.123499997 * unset(0) guide 0 * 0",
                    "2 mode 3 lower 9.99999975e-05 * unset(0) upper 0.000199999995 * unset(0) guide 0 * 0"));
}

TEST_F(OlderLimitsWriter, WeightsGuidesIncludesAndTheValuesOfAbsentLimitsAreLost) {
    limits_.setUpperLimit(3, 1);
    limits_.setUpperWeight(3, 2);
    limits_.setGuideValue(3, 4);
    limits_.setGuideWeight(3, 5);
    limits_.findVar(3)->lowerValue = 6;
    limits_.setGuideWeight(4, 7);
    limits_.addInclude("arm.limits", 40);
    EXPECT_EQ(written(limits_), firstLine + "             1            3\n"
                                            "      1.0000\n"
                                            "             0            4\n");
    LqLimitsData back;
    EXPECT_TRUE(readBack(back));
    EXPECT_THAT(linesOf(back), ElementsAre("3 mode 1 lower 0 * unset(0) upper 1 * unset(0) guide 0 * 0",
                                           "4 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"));
}

TEST_F(OlderLimitsWriter, InfinitiesAndNotANumbersAreWrittenAndThenRefused) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    struct Case {
        float lower;
        float upper;
        const char* rows;
        const char* cause;
    };
    const Case cases[] = {
        {std::numeric_limits<float>::quiet_NaN(), 1, "         nan\n      1.0000\n",
         "Unable to read lower bound for limit."},
        {-infinity, 1, "        -inf\n      1.0000\n", "Unable to read lower bound for limit."},
        {1, infinity, "      1.0000\n         inf\n", "Unable to read upper bound for limit."},
    };
    for (const Case& c : cases) {
        limits_.clear();
        addBoth(8, c.lower, c.upper);
        EXPECT_EQ(written(limits_), firstLine + "             2            8\n" + c.rows);
        LqLimitsData back;
        EXPECT_FALSE(readBack(back));
        EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read first var limit."), error(c.cause)}));
    }
}

TEST_F(OlderLimitsWriter, LimitsInTheWrongOrderAreWrittenAndThenRefused) {
    add(2, LimitNone);
    addBoth(8, 2, 1);
    LqLimitsData back;
    EXPECT_FALSE(readBack(back));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to read var limits.  Last read was var id 2."),
                           error("The lower limit for var id 8 is greater than the upper limit.")}));
}

TEST_F(OlderLimitsWriter, EveryLineIsFlushed) {
    addBoth(1, 0, 1);
    add(2, LimitNone);
    test::FlushMarks marks;
    std::ostream output(&marks);
    writeOlderLimits(limits_, output);
    EXPECT_EQ(marks.text(), "            1               Field Number\n|"
                            "             2            1\n|"
                            "      0.0000\n|"
                            "      1.0000\n|"
                            "             0            2\n|");
}

TEST_F(OlderLimitsWriter, WritesTheSameWhateverTheFormatOfTheStreamAndPutsThatBack) {
    addBoth(255, -1.5F, 1.5F);
    std::ostringstream output;
    output << std::hex << std::scientific << std::left << std::showpos << std::uppercase;
    output.precision(11);
    output.fill('*');
    const std::ios::fmtflags flags = output.flags();
    writeOlderLimits(limits_, output);
    EXPECT_EQ(output.str(), written(limits_));
    EXPECT_EQ(output.flags(), flags);
    EXPECT_EQ(output.precision(), 11);
    EXPECT_EQ(output.fill(), '*');
}

TEST_F(OlderLimitsWriter, BehindTheTaggedFormOnOneStreamItIsTheSame) {
    addBoth(7, -1.5F, 1.5F);
    std::ostringstream output;
    writeTaggedLimits(limits_, output);
    output.str("");
    writeOlderLimits(limits_, output);
    EXPECT_EQ(output.str(), written(limits_));
    EXPECT_EQ(output.precision(), 2);
}

} // namespace
} // namespace quillon
