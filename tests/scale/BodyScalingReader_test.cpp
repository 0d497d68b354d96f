#include "quillon/scale/BodyScalingReader.h"

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

class BodyScalingReader : public test::ScaleSections {
protected:
    bool read(const std::string& blockText, bool lenient = false) {
        ScaleDefContext context(definition, problemDef, lenient);
        return readBodyScalings(blockText, context);
    }

    std::vector<std::string> lines() const { return linesOf(definition.bodyParams); }
};

const test::StatusLine unableToRead = error("Unable to read BODY_SCALINGS.");

/// Axes and mappings that can be read.
const std::string goodRest = "1 0 0\n0 1 0\n0 0 0\n";
const std::string goodRestAsText = ": (1 0 0) by 0, (0 1 0) by 0, (0 0 1) by 0";

const test::StatusLine tailIsIgnored =
    warning("Body 'tail' is being scaled by the scaling definition, but it is not in the problem definition."
            "  This body will be ignored.");

TEST_F(BodyScalingReader, ReadsBodiesOneAfterTheOther) {
    EXPECT_TRUE(read("thigh\n"
                     "1 0 0\n"
                     "0 1 0\n"
                     "height\n"
                     "0\n"
                     "-2 0.1 height 0.5\n"
                     "# the next one\n"
                     "\"left foot\"\n"
                     "0 0 3\n"
                     "2 0 0\n"
                     "-1 [m3 + 0.5]\n"
                     "-3 1 height 2 \"arm width\" [m2 4]\n"
                     "\"arm width\"\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(),
                ElementsAre("thigh: (1 0 0) by var 1, (0 1 0) by 0, (0 0 1) by -2 0.100000001 + 0.5 * var 1",
                            "left foot: (0 0 1) by -1 [m3 factor 0 offset 0.5], (1 0 0) by "
                            "-3 1 + 2 * var 1 + [m2 factor 4 offset 0] * var 2, (0 1 0) by var 2"));
}

TEST_F(BodyScalingReader, SecondAxisIsMadeOrthogonalToTheFirst) {
    EXPECT_TRUE(read("thigh\n2 0 0\n1 1 0\n0 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh" + goodRestAsText));
}

TEST_F(BodyScalingReader, RestsOfTheFirstThreeLinesAreIgnored) {
    EXPECT_TRUE(read("thigh 9 9 9\n1 0 0 9\n0 1 0 # the second\nheight 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh: (1 0 0) by var 1, (0 1 0) by 0, (0 0 1) by 0"));
}

TEST_F(BodyScalingReader, LineEndsBetweenMappingsDoNotMatter) {
    EXPECT_TRUE(read("thigh\n1 0 0\n0 1 0\n0 -2\n0.5\nheight\n\n2 0 shank\n" + goodRest));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh: (1 0 0) by 0, (0 1 0) by -2 0.5 + 2 * var 1, (0 0 1) by 0",
                                     "shank" + goodRestAsText));
}

TEST_F(BodyScalingReader, LastMappingNeedsNoLineEnd) {
    EXPECT_TRUE(read("thigh\n1 0 0\n0 1 0\n0 0 height"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh: (1 0 0) by 0, (0 1 0) by 0, (0 0 1) by var 1"));
}

TEST_F(BodyScalingReader, BlocksAddToTheDefinitionAndMayRepeatABody) {
    EXPECT_TRUE(read("thigh\n" + goodRest));
    EXPECT_TRUE(read("thigh\n" + goodRest + "shank\n" + goodRest));
    EXPECT_TRUE(read(""));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(),
                ElementsAre("thigh" + goodRestAsText, "thigh" + goodRestAsText, "shank" + goodRestAsText));
}

TEST_F(BodyScalingReader, NearlyParallelAxesPass) {
    EXPECT_TRUE(read("thigh\n1 0 0\n1 1e-15 0\n0 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh" + goodRestAsText));
}

TEST_F(BodyScalingReader, TinyAxesPassAsLongAsTheirSquaresAreNotZero) {
    EXPECT_TRUE(read("thigh\n1e-18 0 0\n0 -1e-18 0\n0 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh: (1 0 0) by 0, (0 -1 0) by 0, (0 0 -1) by 0"));
}

TEST_F(BodyScalingReader, AxisMayBreakOverLinesAndTheRestOfItsLastOneIsIgnored) {
    EXPECT_TRUE(read("thigh\n# the first axis\n1 # x\n0\n0 rest\n\n0 1\n0 0 0 0 0\n0 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("thigh" + goodRestAsText));
}

TEST_F(BodyScalingReader, UnknownBodyIsReadWholeAndIgnoredWithAWarning) {
    for (const bool lenient : {false, true}) {
        EXPECT_TRUE(read("tail\n" + goodRest + "thigh\n" + goodRest, lenient));
        EXPECT_EQ(takeChain(), StatusChain{tailIsIgnored});
        EXPECT_THAT(lines(), ElementsAre("thigh" + goodRestAsText));
        definition.bodyParams = LmDArray<BodyParams_t>();
    }
}

TEST_F(BodyScalingReader, ErrorsInABodyThatWouldBeIgnoredCount) {
    EXPECT_FALSE(read("tail\n1 0 0\n0 1 0\n0 0 depth\n"));
    EXPECT_EQ(takeChain(),
              (StatusChain{unableToRead, error("Invalid scaling variable 'depth' used for third scale "
                                               "variable for body tail (#1).")}));
}

TEST_F(BodyScalingReader, MessagesCountTheBodiesThatAreKept) {
    EXPECT_TRUE(read("thigh\n" + goodRest));
    EXPECT_FALSE(read("shank\n" + goodRest + "tail\n" + goodRest + "pelvis\n0 0 0\n"));
    EXPECT_EQ(takeChain(),
              (StatusChain{unableToRead, error("Invalid first scaling axis  for body pelvis (#3)"),
                           tailIsIgnored}));
}

TEST_F(BodyScalingReader, ManyBodiesThatAreIgnoredLeaveTheNumberOfTheNextOne) {
    EXPECT_FALSE(read("tail\n" + goodRest + "tail\n" + goodRest + "thigh\n1 0 0\n1 0 0\n"));
    EXPECT_EQ(
        takeChain(),
        (StatusChain{unableToRead, error("First and second scaling axes are parallel for body thigh (#1)"),
                     tailIsIgnored, tailIsIgnored}));
}

TEST_F(BodyScalingReader, ReportsTheBodyAndWhatCannotBeReadOfIt) {
    struct Case {
        std::string text;
        std::string expected;
    };
    const Case cases[] = {
        {"\"thigh\n", "Hit end of line in string reading body name"},
        {"thigh\n", "Error reading first axis for body thigh (#1)."},
        {"thigh\n1 0 x\n", "Error reading first axis for body thigh (#1)."},
        {"thigh\n0 0 0\n", "Invalid first scaling axis  for body thigh (#1)"},
        {"thigh\n0 0 -0\n0 0 x\n", "Invalid first scaling axis  for body thigh (#1)"},
        {"thigh\n1 0 0 9\n", "Error reading second axis for body thigh (#1)."},
        {"thigh\n1 0 0\n0 x 0\n", "Error reading second axis for body thigh (#1)."},
        {"thigh\n1 0 0\n0 0 0\n", "Invalid second scaling axis for body thigh (#1)"},
        {"thigh\n1 0 0\n2 0 0\n", "First and second scaling axes are parallel for body thigh (#1)"},
        {"thigh\n0 1 0\n0 -3 0\n", "First and second scaling axes are parallel for body thigh (#1)"},
        // The square of 1e-30 is too small for single precision, that of 1e30 too large.
        {"thigh\n1e-30 0 0\n0 1 0\n0 0 0\n", "Invalid first scaling axis  for body thigh (#1)"},
        {"thigh\n1 0 0\n0 -1e-30 0\n0 0 0\n", "Invalid second scaling axis for body thigh (#1)"},
        {"thigh\n1 0 0\n1 1e-30 0\n0 0 0\n",
         "First and second scaling axes are parallel for body thigh (#1)"},
        {"thigh\n1e30 0 0\n0 1 0\n0 0 0\n", "First and second scaling axes are parallel for body thigh (#1)"},
        {"thigh\n1 0 0\n0 1 0\n", "Error reading first scale variable for body thigh (#1)."},
        {"thigh\n1 0 0\n0 1 0\n0\n", "Error reading second scale variable for body thigh (#1)."},
        {"thigh\n1 0 0\n0 1 0\n0 0\n", "Error reading third scale variable for body thigh (#1)."},
        {"thigh\n1 0 0\n0 1 0\ndepth 0 0\n",
         "Invalid scaling variable 'depth' used for first scale variable for body thigh (#1)."},
        {"thigh\n1 0 0\n0 1 0\n0 -2 0.1 0 1 0\n",
         "Invalid scaling variable (0) used for second scale variable for body thigh (#1)."},
        {"thigh\n1 0 0\n0 1 0\n0 0 -1 *\n",
         "Cannot specify an infinite value for third scale variable for body thigh (#1)."},
        {"thigh\n" + goodRest + "\"left foot\"\n0 0 0\n",
         "Invalid first scaling axis  for body left foot (#2)"},
    };
    for (const bool lenient : {false, true}) {
        for (const Case& c : cases) {
            EXPECT_FALSE(read(c.text, lenient)) << c.text;
            EXPECT_EQ(takeChain(), (StatusChain{unableToRead, error(c.expected)})) << c.text;
            definition.bodyParams = LmDArray<BodyParams_t>();
        }
    }
}

TEST_F(BodyScalingReader, PercentSignsInNamesAreNoConversions) {
    EXPECT_FALSE(read("50%s\n0 0 0\n"));
    EXPECT_EQ(takeChain(),
              (StatusChain{unableToRead, error("Invalid first scaling axis  for body 50%s (#1)")}));
}

TEST_F(BodyScalingReader, BodyThatFailsStaysAsTheLastOne) {
    EXPECT_FALSE(read("thigh\n" + goodRest + "shank\n1 0 0\n0 1 0\nheight depth 0\npelvis\n" + goodRest));
    EXPECT_EQ(takeChain(),
              (StatusChain{unableToRead, error("Invalid scaling variable 'depth' used for second scale "
                                               "variable for body shank (#2).")}));
    EXPECT_THAT(lines(),
                ElementsAre("thigh" + goodRestAsText, "shank: (1 0 0) by var 1, (0 1 0) by 0, (0 0 1) by 0"));
}

TEST_F(BodyScalingReader, ErrorThatStoodBeforeFailsTheSectionAtItsFirstBody) {
    pushError("before");
    EXPECT_TRUE(read("# no body\n"));
    EXPECT_FALSE(read("thigh\n" + goodRest));
    EXPECT_EQ(takeChain(), (StatusChain{unableToRead, error("before")}));
    EXPECT_THAT(lines(), IsEmpty());
}

} // namespace
} // namespace quillon::scaleDef
