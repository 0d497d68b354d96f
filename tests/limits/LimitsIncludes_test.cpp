#include "quillon/limits/LimitsIncludes.h"

#include "quillon/limits/LimitsReader.h"
#include "tests/limits/LimitsText.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/RandomSource.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <optional>
#include <sstream>

namespace quillon {
namespace {

using support::writeBytes;
using test::error;
using test::idsOf;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string header = "Kym System Variable Limits File\nv2.00\n";

/// A file of the tagged form with records that have nothing but an id, and more items behind them.
std::string fileOf(const std::vector<int>& ids, const std::string& items = "") {
    std::string text = header;
    for (const int id : ids) {
        text += "VARIABLE {\nID: " + std::to_string(id) + "\n}\n";
    }
    return text + items;
}

const test::StatusLine unableToInclude = error("Unable to include sub-limits.");

class LimitsIncludes : public testing::Test {
protected:
    /// Writes a file into the scratch directory and returns its path.
    std::string file(const std::string& name, const std::string& text) const {
        writeBytes(scratch_ / name, text);
        return scratch_ / name;
    }

    /// An INCLUDE section for a file of the scratch directory.
    std::string includeOf(const std::string& name) const {
        return "INCLUDE {\nFILE_NAME: " + (scratch_ / name) + "\n}\n";
    }
    std::string includeOf(const std::string& name, int offset) const {
        return "INCLUDE {\nFILE_NAME: " + (scratch_ / name) +
               "\nSYSTEM_VARIABLE_ID_OFFSET: " + std::to_string(offset) + "\n}\n";
    }

    bool readMerged(const std::string& path) { return readLimitsFile(limits_, path.c_str(), true); }

    std::vector<int> mergedIds(const std::string& text) {
        EXPECT_TRUE(readMerged(file("host", text)));
        EXPECT_EQ(takeChain(), StatusChain{});
        EXPECT_EQ(limits_.includes.count(), 0);
        return idsOf(limits_);
    }

    test::StatusLine unableToRead(const std::string& name) const {
        return error("Unable to read limit data file \"" + (scratch_ / name) + "\".");
    }

    /// The two entries of a file that is not there, newest first.
    StatusChain missing(const std::string& name) const {
        return {error("Unable to open \"" + (scratch_ / name) + "\"."), error("File does not exist.")};
    }

    support::ScratchDirectory scratch_;
    test::CleanStatus cleanStatus_;
    LqLimitsData limits_;
};

StatusChain operator+(StatusChain chain, const StatusChain& below) {
    chain.insert(chain.end(), below.begin(), below.end());
    return chain;
}

// --- What is merged ------------------------------------------------------------------------------

TEST_F(LimitsIncludes, LimitsWithoutIncludesStayAsTheyAre) {
    limits_.setUpperLimit(9, 1);
    const LqVarLimits* const record = limits_.findVar(9);
    EXPECT_TRUE(mergeIncludes(limits_));
    EXPECT_EQ(limits_.findVar(9), record);
    EXPECT_EQ(limits_.vars.count(), 1);
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST_F(LimitsIncludes, NothingIsMergedUnlessAskedFor) {
    const std::string path = file("host", fileOf({1}, includeOf("missing")));
    EXPECT_TRUE(readLimitsFile(limits_, path.c_str(), false));
    EXPECT_THAT(linesOf(limits_), ElementsAre("1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "include " + (scratch_ / "missing") + " offset -1"));
}

TEST_F(LimitsIncludes, IdsWithoutAnOffsetFollowTheGreatestSoFar) {
    file("arm", fileOf({1, 2, 3}));
    EXPECT_THAT(mergedIds(fileOf({2, 7, 4}, includeOf("arm") + includeOf("arm"))),
                ElementsAre(2, 7, 4, 8, 9, 10, 11, 12, 13));
    EXPECT_THAT(mergedIds(fileOf({}, includeOf("arm") + includeOf("arm"))), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(LimitsIncludes, AnOffsetOfMinus1IsNone) {
    file("arm", fileOf({1, 2}));
    EXPECT_THAT(mergedIds(fileOf({5}, includeOf("arm", -1))), ElementsAre(5, 6, 7));
}

TEST_F(LimitsIncludes, AnOffsetOf0LeavesTheIdsAsTheyAre) {
    file("arm", fileOf({4, 1}));
    EXPECT_THAT(mergedIds(fileOf({2, 5}, includeOf("arm", 0))), ElementsAre(1, 2, 4, 5));
}

TEST_F(LimitsIncludes, OffsetsAreAddedWhateverTheirSign) {
    file("arm", fileOf({1, 12}));
    EXPECT_THAT(mergedIds(fileOf({5}, includeOf("arm", 40))), ElementsAre(5, 41, 52));
    EXPECT_THAT(mergedIds(fileOf({5}, includeOf("arm", -10))), ElementsAre(-9, 2, 5));
}

TEST_F(LimitsIncludes, TheGreatestIdIsAtLeast0) {
    file("arm", fileOf({1, 2}));
    EXPECT_THAT(mergedIds(fileOf({-8}, includeOf("arm"))), ElementsAre(-8, 1, 2));
}

TEST_F(LimitsIncludes, IdsBeyondTheGreatestIntegerGoOnAtTheLeast) {
    constexpr int greatest = std::numeric_limits<int>::max();
    file("arm", fileOf({greatest, 1}));
    EXPECT_THAT(mergedIds(fileOf({greatest - 5}, includeOf("arm", 1))),
                ElementsAre(std::numeric_limits<int>::min(), 2, greatest - 5));
}

TEST_F(LimitsIncludes, RecordsAreInsertedAmongThoseOfTheFileWhoseOrderStays) {
    struct Case {
        std::vector<int> host;
        std::vector<int> included;
        std::vector<int> merged;
    };
    const Case cases[] = {
        {{9, 2}, {5, 3}, {3, 9, 2, 5}},   // 5 is above the last record, 3 is not
        {{9, 2}, {3, 5}, {9, 2, 3, 5}},   // both are above the last record of their time
        {{9, 2}, {12, 1}, {1, 9, 2, 12}}, //
        {{3, 8, 5, 8, 20, 6}, {7, 4}, {3, 4, 8, 5, 8, 20, 6, 7}},
        {{3, 8, 5, 8, 20, 6}, {4, 19}, {3, 4, 8, 5, 8, 20, 6, 19}},
        {{3, 8, 5, 8, 20, 6}, {2, 1}, {1, 2, 3, 8, 5, 8, 20, 6}},
        {{5, 5, 5}, {6, 4}, {4, 5, 5, 5, 6}}, // ids that the file itself repeats are not refused
        {{}, {2, 1, 3}, {1, 2, 3}},
    };
    for (const Case& c : cases) {
        file("arm", fileOf(c.included));
        EXPECT_EQ(mergedIds(fileOf(c.host, includeOf("arm", 0))), c.merged);
    }
}

TEST_F(LimitsIncludes, RecordsKeepAllTheirFieldsAndEachFileItsOwnGuideWeightScale) {
    file("arm", header + "GUIDE_WEIGHT_SCALE: linear\n"
                         "VARIABLE {\nID: 1\n"
                         "LOWER {\nVALUE: -1.5\nWEIGHT: 2\n}\nUPPER {\nVALUE: 1.5\nWEIGHT: 0.5\n}\n"
                         "GUIDE {\nVALUE: 0.25\nWEIGHT: 3\n}\n}\n");
    const std::string host = fileOf({}, "VARIABLE {\nID: 1\nGUIDE {\nWEIGHT: 3\n}\n}\n" + includeOf("arm"));
    EXPECT_TRUE(readMerged(file("host", host)));
    EXPECT_THAT(linesOf(limits_), ElementsAre("1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 9",
                                              "2 mode 3 lower -1.5 * 2 upper 1.5 * 0.5 guide 0.25 * 3"));
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST_F(LimitsIncludes, AFileOfTheOlderFormMayBeIncluded) {
    file("arm", "1 Field Number\n2 3 -1 1\n0 1\n");
    EXPECT_TRUE(readMerged(file("host", fileOf({2}, includeOf("arm", 0)))));
    EXPECT_THAT(linesOf(limits_), ElementsAre("1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "2 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "3 mode 3 lower -1 * unset(0) upper 1 * unset(0) guide 0 * 0"));
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST_F(LimitsIncludes, AnEmptyFileMayBeIncluded) {
    file("nothing", "");
    EXPECT_THAT(mergedIds(fileOf({2}, includeOf("nothing"))), ElementsAre(2));
}

TEST_F(LimitsIncludes, IncludedFilesMergeTheirOwnIncludesFirst) {
    file("finger", fileOf({1}));
    file("hand", fileOf({1, 2}, includeOf("finger") + includeOf("finger"))); // 1 2 3 4
    file("arm", fileOf({10}, includeOf("hand", 0)));                         // 1 2 3 4 10
    EXPECT_THAT(mergedIds(fileOf({1, 2, 3}, includeOf("arm") + includeOf("hand", 20))),
                ElementsAre(1, 2, 3, 4, 5, 6, 7, 13, 21, 22, 23, 24));
}

TEST_F(LimitsIncludes, AStreamHasItsIncludesMerged) {
    file("arm", fileOf({1}));
    std::istringstream input(fileOf({3}, includeOf("arm")));
    EXPECT_TRUE(readLimitsStream(limits_, input, true));
    EXPECT_THAT(idsOf(limits_), ElementsAre(3, 4));
}

// --- What is refused -----------------------------------------------------------------------------

TEST_F(LimitsIncludes, AnIdOfTheIncludingFileMayNotComeAgain) {
    file("arm", fileOf({1, 2}));
    EXPECT_FALSE(readMerged(file("host", fileOf({9, 5}, includeOf("arm", 3)))));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude,
                                        error("Sys var id 5 cannot have more than one set of limits.")}));
    EXPECT_THAT(linesOf(limits_), ElementsAre("9 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "include " + (scratch_ / "arm") + " offset 3"));
}

TEST_F(LimitsIncludes, AnIdMayNotComeTwiceFromIncludedFiles) {
    file("arm", fileOf({1, 2}));
    file("leg", fileOf({2, 3}));
    file("twice", fileOf({4, 4}));
    struct Case {
        std::string includes;
        const char* id;
    };
    const Case cases[] = {
        {includeOf("arm", 10) + includeOf("leg", 10), "12"},
        {includeOf("arm", 10) + includeOf("arm", 10), "11"},
        {includeOf("arm", 10) + includeOf("leg", 8), "11"}, // the second of its records
        {includeOf("twice", -6), "-2"},
        {includeOf("twice"), "5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.includes);
        EXPECT_FALSE(readMerged(file("host", fileOf({1}, c.includes))));
        EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude,
                                            error("Sys var id " + std::string(c.id) +
                                                  " cannot have more than one set of limits.")}));
        EXPECT_THAT(idsOf(limits_), ElementsAre(1));
    }
}

TEST_F(LimitsIncludes, AFailureAtAnyPlaceLeavesTheTargetAsItWas) {
    file("arm", fileOf({1, 2}));
    file("far", fileOf({1}));
    file("bad", header + "x\n");
    file("older", "1 Field Number\n0 1\n7 1\n");
    const StatusChain badChain = {unableToRead("bad"), error("No ':' or '{' following tag 'x'.")};
    const StatusChain olderChain = {unableToRead("older"),
                                    error("Unable to read var limits.  Last read was var id 1."),
                                    error("Invalid limit mode of 7.")};
    const StatusChain idChain = {error("Sys var id 5 cannot have more than one set of limits.")};
    struct Include {
        const char* name;
        int offset;
    };
    struct Case {
        std::vector<Include> includes;
        StatusChain cause;
    };
    const Case cases[] = {
        {{{"missing", 0}}, missing("missing")},
        {{{"missing", -1}, {"arm", 10}, {"far", 20}}, missing("missing")},
        {{{"arm", 10}, {"missing", -1}, {"far", 20}}, missing("missing")},
        {{{"arm", 10}, {"far", 20}, {"missing", -1}}, missing("missing")},
        {{{"arm", 10}, {"bad", -1}, {"far", 20}}, badChain},
        {{{"arm", 10}, {"far", 20}, {"older", -1}}, olderChain},
        {{{"arm", 3}, {"far", 20}}, idChain},
        {{{"far", 20}, {"arm", 3}}, idChain},
        // All files are read before any record is merged.
        {{{"arm", 3}, {"bad", -1}}, badChain},
    };
    for (const Case& c : cases) {
        LqLimitsData target;
        target.setUpperLimit(5, 1.5F);
        target.vars.append(new LqVarLimits(3));
        for (const Include& include : c.includes) {
            target.addInclude((scratch_ / include.name).c_str(), include.offset);
        }
        const std::vector<std::string> before = linesOf(target);
        EXPECT_FALSE(mergeIncludes(target));
        EXPECT_EQ(takeChain(), StatusChain{unableToInclude} + c.cause);
        EXPECT_EQ(linesOf(target), before);
    }
}

TEST_F(LimitsIncludes, AFailureDeepInsideIsToldAtEachLevel) {
    file("arm", fileOf({1}, includeOf("hand")));
    file("hand", fileOf({1}, includeOf("finger")));
    EXPECT_FALSE(readMerged(file("host", fileOf({1}, includeOf("arm")))));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude, unableToRead("arm"),
                                        unableToInclude, unableToRead("hand"), unableToInclude}) +
                               missing("finger"));
    EXPECT_THAT(idsOf(limits_), ElementsAre(1));
    EXPECT_EQ(limits_.includes.count(), 1);
}

TEST_F(LimitsIncludes, AReadingThatFailsBeforeItsIncludesLeavesTheTargetAsItWas) {
    limits_.setUpperLimit(5, 1);
    EXPECT_FALSE(readMerged(file("host", fileOf({1}, includeOf("missing") + "x\n"))));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), error("No ':' or '{' following tag 'x'.")}));
    EXPECT_THAT(idsOf(limits_), ElementsAre(5));
    EXPECT_EQ(limits_.includes.count(), 0);
}

TEST_F(LimitsIncludes, MergingReportsOnTheCurrentStatusWhateverThatOfTheReading) {
    LmStatus status;
    std::istringstream input(fileOf({1}, includeOf("missing")));
    EXPECT_FALSE(readLimitsStream(limits_, input, true, status));
    EXPECT_EQ(takeChain(status), StatusChain{});
    EXPECT_EQ(takeChain(), StatusChain{unableToInclude} + missing("missing"));
}

TEST_F(LimitsIncludes, ACancelWithinAnIncludedFileMergesNothing) {
    std::string rows = "1 Field Number\n";
    for (int id = 1; id <= 20; ++id) {
        rows += "0 " + std::to_string(id) + "\n";
    }
    file("older", rows);
    file("arm", fileOf({1}));
    const std::string host = file("host", fileOf({1}, includeOf("older") + includeOf("arm")));
    const test::CancelAtAsking hook(2);
    EXPECT_FALSE(readMerged(host));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude, unableToRead("older"),
                                        warning("Read aborted."), error("Canceled.")}));
    EXPECT_THAT(idsOf(limits_), ElementsAre(1));
    EXPECT_EQ(limits_.includes.count(), 2);
}

TEST_F(LimitsIncludes, AnOlderFileIsNotReadUnderAWarning) {
    file("older", "1 Field Number\n0 1\n");
    limits_.addInclude((scratch_ / "older").c_str(), -1);
    pushWarning("earlier");
    EXPECT_FALSE(mergeIncludes(limits_));
    EXPECT_EQ(takeChain(), (StatusChain{unableToInclude, unableToRead("older"),
                                        error("Unable to read first var limit."), warning("earlier")}));
}

// --- Files that include themselves ---------------------------------------------------------------

TEST_F(LimitsIncludes, AFileThatIncludesItselfIsRefused) {
    const std::string host = file("host", fileOf({4}, includeOf("host")));
    EXPECT_FALSE(readMerged(host));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude,
                                        error("\"" + host + "\" includes itself.")}));
    EXPECT_THAT(linesOf(limits_), ElementsAre("4 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                              "include " + host + " offset -1"));
}

TEST_F(LimitsIncludes, ACycleOfFilesIsRefusedWhereItCloses) {
    const std::string host = file("host", fileOf({4}, includeOf("arm")));
    file("arm", fileOf({1}, includeOf("hand")));
    file("hand", fileOf({1}, includeOf("host")));
    EXPECT_FALSE(readMerged(host));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude, unableToRead("arm"),
                                        unableToInclude, unableToRead("hand"), unableToInclude,
                                        error("\"" + host + "\" includes itself.")}));
    EXPECT_THAT(idsOf(limits_), ElementsAre(4));
    EXPECT_EQ(limits_.includes.count(), 1);
}

TEST_F(LimitsIncludes, ACycleBelowTheFileThatIsReadIsRefused) {
    file("arm", fileOf({1}, includeOf("hand")));
    file("hand", fileOf({1}, includeOf("arm")));
    EXPECT_FALSE(readMerged(file("host", fileOf({4}, includeOf("arm")))));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude, unableToRead("arm"),
                                        unableToInclude, unableToRead("hand"), unableToInclude,
                                        error("\"" + (scratch_ / "arm") + "\" includes itself.")}));
}

TEST_F(LimitsIncludes, AFileIsKnownUnderEveryNameOfIt) {
    const std::string host = scratch_ / "host";
    std::filesystem::create_directory(scratch_.path() / "d");
    const std::string names[] = {scratch_ / "link", scratch_ / "hard", scratch_ / "d/../host",
                                 scratch_ / "./host"};
    file("host", "");
    std::filesystem::create_symlink(host, names[0]);
    std::filesystem::create_hard_link(host, names[1]);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        file("host", fileOf({4}, "INCLUDE {\nFILE_NAME: " + name + "\n}\n"));
        EXPECT_FALSE(readMerged(host));
        EXPECT_EQ(takeChain(), (StatusChain{unableToRead("host"), unableToInclude,
                                            error("\"" + name + "\" includes itself.")}));
    }
}

TEST_F(LimitsIncludes, AFileThatIncludesItselfCanBeReadWithoutItsIncludesAndAgain) {
    const std::string host = file("host", fileOf({4}, includeOf("host")));
    EXPECT_FALSE(readMerged(host));
    takeChain();
    EXPECT_TRUE(readLimitsFile(limits_, host.c_str(), false));
    file("host", fileOf({4}));
    EXPECT_TRUE(readMerged(host));
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST_F(LimitsIncludes, OneFileMayBeIncludedOverSeveralWays) {
    file("hand", fileOf({1}));
    file("arm", fileOf({1}, includeOf("hand")));
    EXPECT_THAT(mergedIds(fileOf({}, includeOf("hand") + includeOf("arm") + includeOf("hand"))),
                ElementsAre(1, 2, 3, 4));
}

// --- Against inserting one by one ----------------------------------------------------------------

/// What is merged, as the public operations of the limits do it with a scan for each record.
class OneByOne {
public:
    explicit OneByOne(const LqLimitsData& host) : merged(host) { merged.clearIncludes(); }

    /// Returns the id that is refused, if one is.
    std::optional<int> add(const LqLimitsData& included, int offset) {
        const int raise = offset == -1 ? merged.lastVarId() : offset;
        for (const LqVarLimits* record : LmListView<const LqVarLimits>(included.vars)) {
            LqVarLimits copy = *record;
            copy.id += raise;
            if (merged.findVar(copy.id) != nullptr) {
                return copy.id;
            }
            merged.insertVar(copy);
        }
        return std::nullopt;
    }

    LqLimitsData merged;
};

/// Records in no order, each with an upper limit of its own; duplicates among them when `span` is small.
LqLimitsData recordsInNoOrder(test::RandomSource& random, int most, int span, float& serial) {
    LqLimitsData made;
    for (int left = random.between(0, most); left > 0; --left) {
        auto* const record = new LqVarLimits(random.between(-2, span));
        record->mode = LimitUpper;
        record->upperValue = ++serial;
        made.vars.append(record);
    }
    return made;
}

std::string olderFileOf(const LqLimitsData& limits) {
    std::string text = "1 Field Number\n";
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        text += "1 " + std::to_string(record->id) + " " + std::to_string(record->upperValue) + "\n";
    }
    return text;
}

TEST_F(LimitsIncludes, GivesTheListThatInsertingOneByOneGives) {
    int mergedCount = 0;
    int refusedCount = 0;
    test::forGenerated(400, [&](test::RandomSource& random) {
        float serial = 0;
        LqLimitsData target = recordsInNoOrder(random, 12, random.oneIn(2) ? 15 : 60, serial);
        OneByOne expected(target);
        std::optional<int> refused;
        const int includeCount = random.between(1, 3);
        for (int i = 0; i < includeCount; ++i) {
            const LqLimitsData included = recordsInNoOrder(random, 4, 60, serial);
            const int offset = random.oneIn(3) ? random.between(-20, 60) : -1;
            target.addInclude(file("part" + std::to_string(i), olderFileOf(included)).c_str(), offset);
            if (!refused) {
                refused = expected.add(included, offset);
            }
        }
        const std::vector<std::string> before = linesOf(target);
        EXPECT_EQ(mergeIncludes(target), !refused);
        if (refused) {
            ++refusedCount;
            EXPECT_EQ(takeChain(),
                      (StatusChain{unableToInclude, error("Sys var id " + std::to_string(*refused) +
                                                          " cannot have more than one set of limits.")}));
            EXPECT_EQ(linesOf(target), before);
        } else {
            ++mergedCount;
            EXPECT_EQ(takeChain(), StatusChain{});
            EXPECT_EQ(linesOf(target), linesOf(expected.merged));
        }
    });
    EXPECT_GT(mergedCount, 100);
    EXPECT_GT(refusedCount, 40);
}

TEST_F(LimitsIncludes, ACrowdIsMergedInTimeThatGrowsWithItsSize) {
    constexpr int count = 100000;
    LqLimitsData included;
    for (int id = count; id >= 1; --id) {
        limits_.vars.append(new LqVarLimits(2 * (count - id)));
        included.vars.append(new LqVarLimits(2 * id - 1));
    }
    limits_.addInclude(file("crowd", olderFileOf(included)).c_str(), 0);
    // A scan for each record would take minutes.
    support::ChildOptions options;
    options.timeLimit = std::chrono::seconds(20);
    const support::ChildResult result = support::runFunction(
        [this] {
            const bool merged = mergeIncludes(limits_);
            const std::vector<int> ids = idsOf(limits_);
            _exit(merged && ids.size() == 2 * count && std::is_sorted(ids.begin(), ids.end()) ? 0 : 1);
        },
        options);
    EXPECT_EQ(result.outcome, "0") << result.err;
}

} // namespace
} // namespace quillon
