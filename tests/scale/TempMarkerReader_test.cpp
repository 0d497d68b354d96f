#include "quillon/scale/TempMarkerReader.h"

#include "tests/scale/ScaleDefFile.h"
#include "tests/scale/ScaleSections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon::scaleDef {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

class TempMarkerReader : public test::ScaleSections {
protected:
    bool read(const std::string& blockText, bool lenient = false) {
        ScaleDefContext context(definition, problemDef, lenient);
        return readTemps(blockText, context);
    }

    std::vector<std::string> lines() const { return linesOf(definition.temps); }
};

TEST_F(TempMarkerReader, ReadsATempPerLine) {
    EXPECT_TRUE(read("# id, position, body, weight\n"
                     "3 0 [m2 + 0.5] 0 pelvis/thigh 1\n"
                     "\n"
                     "4 1.5 -2 [ m1 2 ] shank 0.25 and what else stands on the line\n"
                     "5 0 0 0 \"left foot\" 1\n"
                     "6 0 0 0 \"left foot/shank\" 1\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("3 at 0 [m2 factor 0 offset 0.5] 0 of 'pelvis' on 'thigh' weight 1",
                                     "4 at 1.5 -2 [m1 factor 2 offset 0] of 'shank' on 'shank' weight 0.25",
                                     "5 at 0 0 0 of 'left foot' on 'left foot' weight 1",
                                     "6 at 0 0 0 of 'left foot' on 'shank' weight 1"));
}

TEST_F(TempMarkerReader, KeepsTheOrderOfTheFileAndAnyIds) {
    EXPECT_TRUE(read("9 0 0 0 thigh 1\n-2 0 0 0 thigh 1\n0 0 0 0 thigh 1\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("9 at 0 0 0 of 'thigh' on 'thigh' weight 1",
                                     "-2 at 0 0 0 of 'thigh' on 'thigh' weight 1",
                                     "0 at 0 0 0 of 'thigh' on 'thigh' weight 1"));
}

TEST_F(TempMarkerReader, RowMayBreakBetweenAnyTwoTokensAndNeedsNoLineEndAtLast) {
    EXPECT_TRUE(read("3 0 # x\n0\n0 thigh\n1 rest\n4 0 0 0 thigh 2"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("3 at 0 0 0 of 'thigh' on 'thigh' weight 1",
                                     "4 at 0 0 0 of 'thigh' on 'thigh' weight 2"));
}

TEST_F(TempMarkerReader, LaterBlockReplacesTheEarlier) {
    EXPECT_TRUE(read("3 0 0 0 thigh 1\n"));
    EXPECT_TRUE(read("3 0 0 0 shank 1\n"));
    EXPECT_THAT(lines(), ElementsAre("3 at 0 0 0 of 'shank' on 'shank' weight 1"));
    for (const char* const noRows : {"", "# no rows\n"}) {
        EXPECT_TRUE(read("3 0 0 0 thigh 1\n"));
        EXPECT_TRUE(read(noRows));
        EXPECT_THAT(lines(), IsEmpty());
    }
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(TempMarkerReader, ReportsWhatCannotBeRead) {
    struct Case {
        const char* text;
        StatusChain expected;
        std::vector<std::string> kept;
    };
    const std::string untouched = " at 0 0 0 of '' on '' weight 0";
    const Case cases[] = {
        {"x 0 0 0 thigh 1\n", {error("Error reading temp id.")}, {"0" + untouched}},
        {"3 x 0 0 thigh 1\n", {error("Error reading temp position x.")}, {"3" + untouched}},
        {"3 7 x 0 thigh 1\n", {error("Error reading temp position y.")}, {"3 at 7 0 0 of '' on '' weight 0"}},
        {"3 7 7\n", {error("Error reading temp position z.")}, {"3 at 7 7 0 of '' on '' weight 0"}},
        {"3 * 0 0 thigh 1\n",
         {error("Cannot specify an infinite value for temp position x.")},
         {"3" + untouched}},
        {"3 0 * 0 thigh 1\n",
         {error("Cannot specify an infinite value for temp position y.")},
         {"3" + untouched}},
        {"3 0 0 * thigh 1\n",
         {error("Cannot specify an infinite value for temp position z.")},
         {"3" + untouched}},
        {"3 [m0 2] 0 0 thigh 1\n", {error("Invalid measured constant 0.")}, {"3" + untouched}},
        {"3 0 0 0\n", {error("Error reading temp body.")}, {"3" + untouched}},
        {"3 0 0 0 \"thigh\n", {error("Hit end of line in string reading temp body")}, {"3" + untouched}},
        {"3 0 0 0 thigh\n",
         {error("Error reading temp weight.")},
         {"3 at 0 0 0 of 'thigh' on 'thigh' weight 0"}},
        {"3 0 0 0 thigh x\n4 0 0 0 thigh 1\n",
         {error("Error reading temp weight.")},
         {"3 at 0 0 0 of 'thigh' on 'thigh' weight 0"}},
    };
    for (const bool lenient : {false, true}) {
        for (const Case& c : cases) {
            EXPECT_FALSE(read(c.text, lenient)) << c.text;
            EXPECT_EQ(takeChain(), c.expected) << c.text;
            EXPECT_EQ(lines(), c.kept) << c.text;
        }
    }
}

TEST_F(TempMarkerReader, RepeatedIdIsRefused) {
    for (const bool lenient : {false, true}) {
        EXPECT_FALSE(read("3 0 0 0 thigh 1\n4 0 0 0 thigh 1\n3 0 0 0 thigh 1\n", lenient));
        EXPECT_EQ(takeChain(), StatusChain{error("Multiple temp markers with id 3")});
        EXPECT_THAT(lines(), ElementsAre("3 at 0 0 0 of 'thigh' on 'thigh' weight 1",
                                         "4 at 0 0 0 of 'thigh' on 'thigh' weight 1"));
    }
}

TEST_F(TempMarkerReader, UnreadableIdCountsAsARepeated0) {
    EXPECT_FALSE(read("0 0 0 0 thigh 1\nx 0 0 0 thigh 1\n"));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Multiple temp markers with id 0"), error("Error reading temp id.")}));
    EXPECT_EQ(definition.temps.count(), 1);
}

struct BodyCase {
    const char* bodies;
    StatusChain strict;
    StatusChain lenient;
    const char* kept;
};

test::StatusLine attached(bool asWarning, const std::string& body) {
    return {asWarning ? test::Kind::Warning : test::Kind::Error,
            "Temp 3 is attached to body " + body + ", which is not in the problem definition."};
}

test::StatusLine relative(bool asWarning, const std::string& body) {
    return {asWarning ? test::Kind::Warning : test::Kind::Error,
            "Temp 3 is relative to body " + body + ", which is not in the problem definition."};
}

TEST_F(TempMarkerReader, UnknownBodiesStopAStrictReadingAndAreKeptInALenientOne) {
    const BodyCase cases[] = {
        {"tail",
         {attached(false, "tail")},
         {relative(true, "tail"), attached(true, "tail")},
         "3 at 0 0 0 of 'tail' on 'tail' weight 1"},
        {"thigh/tail",
         {attached(false, "tail")},
         {attached(true, "tail")},
         "3 at 0 0 0 of 'thigh' on 'tail' weight 1"},
        {"tail/thigh",
         {relative(false, "tail")},
         {relative(true, "tail")},
         "3 at 0 0 0 of 'tail' on 'thigh' weight 1"},
        {"a/b/c",
         {attached(false, "b/c")},
         {relative(true, "a"), attached(true, "b/c")},
         "3 at 0 0 0 of 'a' on 'b/c' weight 1"},
        {"/thigh", {relative(false, "")}, {relative(true, "")}, "3 at 0 0 0 of '' on 'thigh' weight 1"},
        {"thigh/", {attached(false, "")}, {attached(true, "")}, "3 at 0 0 0 of 'thigh' on '' weight 1"},
        {"GLOBAL/thigh",
         {relative(false, "GLOBAL")},
         {relative(true, "GLOBAL")},
         "3 at 0 0 0 of 'GLOBAL' on 'thigh' weight 1"},
    };
    for (const BodyCase& c : cases) {
        const std::string row = "3 0 0 0 " + std::string(c.bodies) + " 1\n";
        EXPECT_FALSE(read(row)) << row;
        EXPECT_EQ(takeChain(), c.strict) << row;
        EXPECT_TRUE(read(row, true)) << row;
        EXPECT_EQ(takeChain(), c.lenient) << row;
        EXPECT_THAT(lines(), ElementsAre(c.kept)) << row;
    }
}

TEST_F(TempMarkerReader, UnknownBodyLeavesTheWeightOfAStrictReadingUnread) {
    EXPECT_FALSE(read("3 0 0 0 tail 5\n4 0 0 0 thigh 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{attached(false, "tail")});
    EXPECT_THAT(lines(), ElementsAre("3 at 0 0 0 of 'tail' on 'tail' weight 0"));
}

TEST_F(TempMarkerReader, ErrorThatStoodBeforeStopsTheFirstRow) {
    pushError("before");
    EXPECT_FALSE(read("3 1 2 3 thigh 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("before")});
    EXPECT_THAT(lines(), ElementsAre("3 at 0 0 0 of '' on '' weight 0"));
}

/// The same section as the last item of a file.
class TempsOfAFile : public test::ScaleDefFile {};

TEST_F(TempsOfAFile, AreGoneBehindASectionWithoutRows) {
    for (const char* const noRows : {"TEMPS {\n}\n", "TEMPS:\n", "TEMPS {\n# none\n}\n"}) {
        ASSERT_TRUE(readItems(test::ScaleDefText{.temps = "TEMPS {\n3 0 0 0 thigh 1\n}\n"}.items()));
        ASSERT_EQ(definition.temps.count(), 1);
        EXPECT_TRUE(readItems(test::ScaleDefText{.temps = noRows}.items())) << noRows;
        EXPECT_EQ(definition.temps.count(), 0) << noRows;
    }
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(TempsOfAFile, ReportTheirErrorsWithNothingOnTop) {
    EXPECT_THAT(chainOfText({.temps = "TEMPS {\n3 * 0 0 thigh 1\n}\n"}),
                ElementsAre(error("Cannot specify an infinite value for temp position x.")));
}

} // namespace
} // namespace quillon::scaleDef
