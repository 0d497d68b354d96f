#include "quillon/limits/LimitsReader.h"

#include "tests/limits/LimitsText.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

namespace quillon {
namespace {

using test::error;
using test::idsOf;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string firstLine = "            1               Field Number\n";

class OlderLimitsReader : public testing::Test {
protected:
    bool read(const std::string& text) {
        std::istringstream input(text);
        return readLimitsStream(limits, input, false);
    }

    bool readRows(const std::string& rows) { return read(firstLine + rows); }

    test::CleanStatus cleanStatus;
    LqLimitsData limits;
};

std::string rowsOfMode0(int count) {
    std::string rows;
    for (int id = 1; id <= count; ++id) {
        rows += "             0          " + std::to_string(id) + "\n";
    }
    return rows;
}

TEST_F(OlderLimitsReader, AnEmptyFileHoldsNoRecordsAndIsNoError) {
    limits.setUpperLimit(1, 2);
    EXPECT_TRUE(read(""));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits), IsEmpty());
}

TEST_F(OlderLimitsReader, AFirstLineAloneTakesTheIncludesAwayToo) {
    for (const char* const text : {"1", "1\n", "1 Field Number", "1 Field Number\n"}) {
        limits.addInclude("arm.limits", 40);
        EXPECT_TRUE(read(text)) << text;
        EXPECT_THAT(takeChain(), IsEmpty()) << text;
        EXPECT_THAT(linesOf(limits), IsEmpty()) << text;
    }
}

TEST_F(OlderLimitsReader, TheNumberOfTheFirstLineIsNotUsed) {
    for (const char* const line : {"0\n", "-7 x\n", "12345 1 9 1\n", "\n\n 2 Field Number\n", "1.5\n"}) {
        EXPECT_TRUE(read(std::string(line) + "0 4\n")) << line;
        EXPECT_THAT(takeChain(), IsEmpty()) << line;
        EXPECT_THAT(idsOf(limits), ElementsAre(4)) << line;
    }
}

TEST_F(OlderLimitsReader, ReadsRowsOfEveryModeInFileOrder) {
    EXPECT_TRUE(readRows("             2            7\n"
                         "     -1.5000\n"
                         "      1.5000\n"
                         "            -1            3\n"
                         "      2.2500\n"
                         "             1            5\n"
                         "     10.0000\n"
                         "             0            1\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits),
                ElementsAre("7 mode 3 lower -1.5 * unset(0) upper 1.5 * unset(0) guide 0 * 0",
                            "3 mode 2 lower 2.25 * unset(0) upper 0 * unset(0) guide 0 * 0",
                            "5 mode 1 lower 0 * unset(0) upper 10 * unset(0) guide 0 * 0",
                            "1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"));
}

TEST_F(OlderLimitsReader, LineBreaksBetweenTheTokensDoNotMatter) {
    EXPECT_TRUE(read("1\r\n2 7 -1 1 1\r\n3\r\n\r\n0.1 0 9\r\n \t\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits),
                ElementsAre("7 mode 3 lower -1 * unset(0) upper 1 * unset(0) guide 0 * 0",
                            "3 mode 1 lower 0 * unset(0) upper 0.100000001 * unset(0) guide 0 * 0",
                            "9 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"));
}

TEST_F(OlderLimitsReader, EqualLimitsAreTakenAndIdsMayRepeat) {
    EXPECT_TRUE(readRows("2 7 1 1\n0 7\n"));
    EXPECT_THAT(idsOf(limits), ElementsAre(7, 7));
}

TEST_F(OlderLimitsReader, TheRestOfTheFirstLineIsSkippedUpTo256Characters) {
    // Behind the "1": 255 characters and the newline are 256 and all skipped.
    EXPECT_TRUE(read("1" + std::string(255, 'x') + "\n0 4\n"));
    EXPECT_THAT(idsOf(limits), ElementsAre(4));
    // The 257th character is the first that is read as a row.
    EXPECT_TRUE(read("1" + std::string(256, 'x') + " 0 3\n0 4\n"));
    EXPECT_THAT(idsOf(limits), ElementsAre(3, 4));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(OlderLimitsReader, ALastRowThatTouchesTheEndOfTheFileIsDropped) {
    EXPECT_TRUE(readRows("0 4\n2 5 1 2"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(limits), ElementsAre(4));
    EXPECT_TRUE(readRows("0 4\n0"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(limits), ElementsAre(4));
}

TEST_F(OlderLimitsReader, ARowCutOffByTheEndOfTheFileIsDroppedAndItsMessageStays) {
    EXPECT_FALSE(readRows("0 4\n1 5\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read upper bound for limit.")}));
    EXPECT_THAT(idsOf(limits), ElementsAre(4));
    EXPECT_FALSE(readRows("0 4\n2\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read var id for limit.")}));
    EXPECT_THAT(idsOf(limits), ElementsAre(4));
}

TEST_F(OlderLimitsReader, ReportsABadRowAndKeepsTheRowsInFrontOfIt) {
    struct Case {
        const char* row;
        const char* cause;
    };
    const Case cases[] = {
        {"x 5\n", "Unable to read mode for limit."},
        {"99999999999 5\n", "Unable to read mode for limit."},
        {"3 5 1 2\n", "Invalid limit mode of 3."},
        {"-2 5 1 2\n", "Invalid limit mode of -2."},
        {"0 x\n", "Unable to read var id for limit."},
        {"-1 5 x\n", "Unable to read lower bound for limit."},
        {"2 5 x 1\n", "Unable to read lower bound for limit."},
        {"1 5 x\n", "Unable to read upper bound for limit."},
        {"2 5 1 x\n", "Unable to read upper bound for limit."},
        {"2 5 2 1\n", "The lower limit for var id 5 is greater than the upper limit."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.row);
        const std::string row = c.row;
        EXPECT_FALSE(readRows(row + "0 9\n"));
        EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read first var limit."), error(c.cause)}));
        EXPECT_THAT(linesOf(limits), IsEmpty());
        EXPECT_FALSE(readRows("0 3\n0 4\n" + row + "0 9\n"));
        EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read var limits.  Last read was var id 4."),
                                            error(c.cause)}));
        EXPECT_THAT(idsOf(limits), ElementsAre(3, 4));
    }
}

TEST_F(OlderLimitsReader, AnyFirstByteButTheFirstLetterOfTheFileIdIsTakenForTheOlderForm) {
    using namespace std::string_literals;
    for (const std::string& text :
         {"kym System Variable Limits File\nv2.00\n"s, "x\n"s, "\0Kym\n"s, "\xFF\n"s}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(read(text));
        EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read first var limit."),
                                            error("Unable to read mode for limit.")}));
    }
}

TEST_F(OlderLimitsReader, AnyEntryThatStandsBeforeTheReadingStopsItAtTheFirstRow) {
    pushWarning("earlier");
    EXPECT_FALSE(readRows("0 3\n0 4\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read first var limit."), warning("earlier")}));
    EXPECT_THAT(linesOf(limits), IsEmpty());
}

TEST_F(OlderLimitsReader, AsksForACancelAfterTheSixthRecordAndThenAfterEveryFifth) {
    struct Case {
        int records;
        int timesAsked;
    };
    for (const Case& c : {Case{5, 0}, Case{6, 1}, Case{10, 1}, Case{11, 2}, Case{15, 2}, Case{16, 3}}) {
        const test::CancelAtAsking hook(0);
        EXPECT_TRUE(readRows(rowsOfMode0(c.records)));
        EXPECT_EQ(hook.timesAsked(), c.timesAsked) << c.records;
    }
}

TEST_F(OlderLimitsReader, ACancelKeepsTheRecordsReadSoFar) {
    for (int asking = 1; asking <= 3; ++asking) {
        const test::CancelAtAsking hook(asking);
        EXPECT_FALSE(readRows(rowsOfMode0(20)));
        EXPECT_EQ(takeChain(), (StatusChain{warning("Read aborted."), error("Canceled.")}));
        std::vector<int> kept(static_cast<std::size_t>(5 * asking + 1));
        std::iota(kept.begin(), kept.end(), 1);
        EXPECT_EQ(idsOf(limits), kept);
    }
}

TEST_F(OlderLimitsReader, TheFileSaysThatItWasNotReadAfterACancel) {
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "x.limits";
    support::writeBytes(path, firstLine + rowsOfMode0(8));
    const test::CancelAtAsking hook(1);
    EXPECT_FALSE(readLimitsFile(limits, path.c_str(), false));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read limit data file \"" + path + "\"."),
                                        warning("Read aborted."), error("Canceled.")}));
    EXPECT_EQ(limits.vars.count(), 6);
}

} // namespace
} // namespace quillon
