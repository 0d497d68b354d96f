#include "quillon/scale/ConstraintReader.h"

#include "tests/scale/ScaleSections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace quillon::scaleDef {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

class GlobalConstraintReader : public test::ScaleSections {
protected:
    bool read(const std::string& blockText, bool lenient = false) {
        const ScaleDefContext context(definition, problemDef, lenient);
        return readGlobalConstraints(blockText, context, rows);
    }

    LmDArray<GlobalConst_t> rows;
};

const test::StatusLine adjustedThigh =
    warning("A global constraint was specified for body thigh which has differing magnitudes for the local "
            "and global vectors.  Adjusting the vectors.");

const std::string unknownTail =
    "A global constraint was specified for body tail, but this body is not in the problem definition.";

TEST_F(GlobalConstraintReader, ReadsARowPerLine) {
    EXPECT_TRUE(read("# a remark\n"
                     "thigh 0 1 0  0 0 1\n"
                     "\n"
                     "\"left foot\" -1.5 0 0 0 1.5 0 and what else stands on the line\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(rows),
                ElementsAre("thigh: (0 1 0) along (0 0 1)", "left foot: (-1.5 0 0) along (0 1.5 0)"));
}

TEST_F(GlobalConstraintReader, RowMayBreakBetweenAnyTwoTokens) {
    EXPECT_TRUE(read("thigh # its name\n0 1\n0\n0 0 # the last follows\n1 rest\nshank 1 0 0 1 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(rows), ElementsAre("thigh: (0 1 0) along (0 0 1)", "shank: (1 0 0) along (1 0 0)"));
}

TEST_F(GlobalConstraintReader, LastRowNeedsNoLineEnd) {
    EXPECT_TRUE(read("thigh 0 1 0 0 0 1"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(rows), ElementsAre("thigh: (0 1 0) along (0 0 1)"));
}

TEST_F(GlobalConstraintReader, LaterBlockReplacesTheEarlier) {
    EXPECT_TRUE(read("thigh 0 1 0 0 0 1\n"));
    EXPECT_TRUE(read("shank 0 1 0 0 0 1\n"));
    EXPECT_THAT(linesOf(rows), ElementsAre("shank: (0 1 0) along (0 0 1)"));
    EXPECT_TRUE(read("# nothing\n"));
    EXPECT_THAT(linesOf(rows), IsEmpty());
    EXPECT_TRUE(read(""));
    EXPECT_THAT(linesOf(rows), IsEmpty());
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(GlobalConstraintReader, ReportsWhatCannotBeRead) {
    struct Case {
        const char* text;
        StatusChain expected;
    };
    const Case cases[] = {
        {"\"thigh\n", {error("Hit end of line in string reading constraint body name")}},
        {"thigh\n", {error("Error reading constraint local vect.")}},
        {"thigh 0 x 0 0 0 1\n", {error("Error reading constraint local vect.")}},
        {"thigh 0 1 0 0 0\n", {error("Error reading constraint global vect.")}},
        {"thigh 0 1 0 0 0\nshank 0 1 0 0 0 1\n", {error("Error reading constraint global vect.")}},
    };
    for (const bool lenient : {false, true}) {
        for (const Case& c : cases) {
            EXPECT_FALSE(read(c.text, lenient)) << c.text;
            EXPECT_EQ(takeChain(), c.expected) << c.text;
        }
    }
}

TEST_F(GlobalConstraintReader, RowThatFailsStaysAsTheLastOne) {
    EXPECT_FALSE(read("thigh 0 1 0 0 0 1\nshank 7 8 x\npelvis 1 0 0 1 0 0\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("Error reading constraint local vect.")});
    EXPECT_THAT(linesOf(rows), ElementsAre("thigh: (0 1 0) along (0 0 1)", "shank: (7 8 0) along (0 0 0)"));
}

TEST_F(GlobalConstraintReader, UnknownBodyStopsAStrictReading) {
    EXPECT_FALSE(read("tail 0 1 0 0 0 1\nthigh 0 1 0 0 0 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error(unknownTail)});
    EXPECT_THAT(linesOf(rows), ElementsAre("tail: (0 0 0) along (0 0 0)"));
}

TEST_F(GlobalConstraintReader, UnknownBodyIsKeptWithAWarningInALenientReading) {
    EXPECT_TRUE(read("tail 0 1 0 0 0 1\nthigh 0 1 0 0 0 1\n", true));
    EXPECT_EQ(takeChain(), StatusChain{warning(unknownTail)});
    EXPECT_THAT(linesOf(rows), ElementsAre("tail: (0 1 0) along (0 0 1)", "thigh: (0 1 0) along (0 0 1)"));
}

TEST_F(GlobalConstraintReader, NameOfTheGlobalFrameIsNoBody) {
    EXPECT_FALSE(read("GLOBAL 0 1 0 0 0 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("A global constraint was specified for body GLOBAL, but this "
                                             "body is not in the problem definition.")});
}

TEST_F(GlobalConstraintReader, LongNamesAreCutWithTheirMessage) {
    const std::string name(2000, 'n');
    const std::string start = "A global constraint was specified for body ";
    EXPECT_FALSE(read(name + " 0 1 0 0 0 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error((start + name).substr(0, 1023))});
}

TEST_F(GlobalConstraintReader, LengthsOf1And4BothBecome2WithAWarning) {
    for (const bool lenient : {false, true}) {
        EXPECT_TRUE(read("thigh 0 1 0  0 0 -4\n", lenient));
        EXPECT_EQ(takeChain(), StatusChain{adjustedThigh});
        EXPECT_THAT(linesOf(rows), ElementsAre("thigh: (0 2 0) along (0 0 -2)"));
    }
}

TEST_F(GlobalConstraintReader, LengthsThatDifferByLessThanTheThresholdAreLeftAlone) {
    EXPECT_TRUE(read("thigh 2.00005 0 0  0 2.0001 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows[0].local, (LmVec3{2.00005F, 0, 0}));
    EXPECT_EQ(rows[0].global, (LmVec3{0, 2.0001F, 0}));
}

TEST_F(GlobalConstraintReader, ZeroVectorYieldsNoNumbersAndIsNotRefused) {
    EXPECT_TRUE(read("thigh 0 0 0  0 3 0\nshank 0 0 0 0 0 0\n"));
    EXPECT_EQ(takeChain(), StatusChain{adjustedThigh});
    ASSERT_EQ(rows.count(), 2);
    EXPECT_TRUE(std::isnan(rows[0].local[0]));
    EXPECT_TRUE(std::isnan(rows[0].local[2]));
    EXPECT_EQ(rows[0].global, (LmVec3{0, 0, 0}));
    EXPECT_EQ(rows[1].local, (LmVec3{0, 0, 0}));
}

TEST_F(GlobalConstraintReader, WarningsOfOneRowStandInTheOrderOfItsReading) {
    EXPECT_TRUE(read("tail 0 1 0 0 0 4\n", true));
    EXPECT_EQ(takeChain(),
              (StatusChain{warning("A global constraint was specified for body tail which has differing "
                                   "magnitudes for the local and global vectors.  Adjusting the vectors."),
                           warning(unknownTail)}));
}

TEST_F(GlobalConstraintReader, ErrorThatStoodBeforeEndsTheFirstRow) {
    pushError("before");
    EXPECT_FALSE(read("thigh 0 1 0 0 0 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("before")});
    EXPECT_THAT(linesOf(rows), ElementsAre("thigh: (0 0 0) along (0 0 0)"));
}

} // namespace
} // namespace quillon::scaleDef
