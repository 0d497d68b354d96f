#include "quillon/scale/OverrideReader.h"

#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/ScaleDefContext.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace quillon::scaleDef {

// For the messages of tests.
void PrintTo(const LimitOverride_t& record, std::ostream* output) {
    *output << record.sysVarId << ": ";
    record.lower.print(*output);
    *output << " to ";
    record.upper.print(*output);
}

void PrintTo(const SysVarGuideOverride& record, std::ostream* output) {
    *output << record.sysVarId << ": " << record.value << " by " << record.weight;
}

namespace {

using test::error;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

enum class Reading { Strict, Lenient };

ScaleFloat literal(float value) {
    return {value, 0, 0};
}

LimitOverride_t limits(std::int32_t sysVarId, float lower, float upper) {
    return {sysVarId, literal(lower), literal(upper)};
}

/// A problem definition with the system variables 3 "knee_x" and 4 "hip x".
class OverrideReader : public testing::Test {
protected:
    OverrideReader() {
        problemDef.sysVars.append(new LqPDDSysVar(3, "knee_x"));
        problemDef.sysVars.append(new LqPDDSysVar(4, "hip x"));
    }

    bool readLimits(const std::string& text, Reading reading = Reading::Strict) {
        const ScaleDefContext context(definition, problemDef, reading == Reading::Lenient);
        return readLimitOverrides(text, context, definition.limitOverrides);
    }

    std::vector<LimitOverride_t> limitsRead() const {
        return {definition.limitOverrides.begin(), definition.limitOverrides.end()};
    }

    bool readGuide(const std::string& text, Reading reading = Reading::Strict) {
        ScaleDefContext context(definition, problemDef, reading == Reading::Lenient);
        return readGuideOverride(text, context, context.sysVarGuideOverrides);
    }

    std::vector<SysVarGuideOverride> guidesRead() const {
        return {definition.sysVarGuideOverrides.begin(), definition.sysVarGuideOverrides.end()};
    }

    test::CleanStatus cleanStatus;
    LqProblemDefData problemDef;
    LqScaleDefData definition;
};

// --- Limits --------------------------------------------------------------------------------------

TEST_F(OverrideReader, ReadsLimitRowsAndIgnoresWhatStandsBehindThem) {
    EXPECT_TRUE(readLimits("# a remark\n"
                           "knee_x -1.5 * and so on\n"
                           "\n"
                           "\"hip x\" * [m2 + 0.5] # a remark\n"));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(3, -1.5F, noUpperLimit),
                                          LimitOverride_t{4, literal(noLowerLimit), {0, 0.5F, 2}}));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(OverrideReader, ReadsALimitRowThatBreaksBetweenItsTokens) {
    EXPECT_TRUE(readLimits("knee_x\n-1\n1\n4 0 2\n"));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(3, -1, 1), limits(4, 0, 2)));
}

TEST_F(OverrideReader, AcceptsTheNumberOfASystemVariableWhateverThereIs) {
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        EXPECT_TRUE(readLimits("17 0 1\n", reading));
        EXPECT_THAT(limitsRead(), ElementsAre(limits(17, 0, 1)));
        EXPECT_THAT(takeChain(), IsEmpty());
    }
}

TEST_F(OverrideReader, PutsLimitsInThePlaceOfThoseHeld) {
    definition.limitOverrides.append(limits(9, 0, 1));
    EXPECT_TRUE(readLimits("\n"));
    EXPECT_THAT(limitsRead(), IsEmpty());
}

TEST_F(OverrideReader, EndsALimitRowAtTheEndOfTheText) {
    EXPECT_TRUE(readLimits("knee_x -1 1"));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(3, -1, 1)));
}

TEST_F(OverrideReader, EndsAtALimitRowOfAnUnknownVariable) {
    EXPECT_FALSE(readLimits("knee_x 0 1\nelbow 0 1\n\"hip x\" 0 1\n"));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(3, 0, 1)));
    EXPECT_THAT(takeChain(), ElementsAre(error("Variable 'elbow' is not in the problem definition.")));
}

TEST_F(OverrideReader, DropsALimitRowOfAnUnknownVariableInALenientReading) {
    EXPECT_TRUE(readLimits("knee_x 0 1\nelbow 0 [m1 + 2] x\n\"hip x\" 0 1\n", Reading::Lenient));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(3, 0, 1), limits(4, 0, 1)));
    EXPECT_THAT(takeChain(), ElementsAre(warning("Variable 'elbow' is not in the problem definition.")));
}

TEST_F(OverrideReader, ReadsADroppedLimitRowToItsEnd) {
    EXPECT_FALSE(readLimits("elbow 0 x\n", Reading::Lenient));
    EXPECT_THAT(limitsRead(), IsEmpty());
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading upper limit."),
                                         warning("Variable 'elbow' is not in the problem definition.")));
}

TEST_F(OverrideReader, EndsAtALimitRowThatRepeatsAVariable) {
    EXPECT_FALSE(readLimits("\"hip x\" 0 1\n4 0 2\nknee_x 0 1\n"));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(4, 0, 1)));
    EXPECT_THAT(takeChain(),
                ElementsAre(error("There are multiple limit adjustments for variable 4 (hip x).")));
}

TEST_F(OverrideReader, KeepsBothLimitRowsOfAVariableInALenientReading) {
    EXPECT_TRUE(readLimits("\"hip x\" 0 1\n4 0 2\nknee_x 0 1\n", Reading::Lenient));
    EXPECT_THAT(limitsRead(), ElementsAre(limits(4, 0, 1), limits(4, 0, 2), limits(3, 0, 1)));
    EXPECT_THAT(takeChain(),
                ElementsAre(warning("There are multiple limit adjustments for variable 4 (hip x).")));
}

TEST_F(OverrideReader, LeavesTheNameOfARepeatedUnknownVariableEmpty) {
    EXPECT_FALSE(readLimits("17 0 1\n17 0 2\n"));
    EXPECT_THAT(takeChain(), ElementsAre(error("There are multiple limit adjustments for variable 17 ().")));
}

TEST_F(OverrideReader, ReportsLimitsThatCannotBeRead) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"\"knee\n", "Hit end of line in string reading variable"},
        {"knee_x\n", "Error reading lower limit."},
        {"knee_x low 1\n", "Error reading lower limit."},
        {"knee_x 0\n", "Error reading upper limit."},
        {"knee_x * [m0 1]\n", "Invalid measured constant 0."},
        {"knee_x [m1 1 1\n", "No ']' after measured constant specification."},
    };
    for (const auto& [text, message] : cases) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(readLimits(text));
        EXPECT_THAT(limitsRead(), IsEmpty());
        EXPECT_THAT(takeChain(), ElementsAre(error(message)));
    }
}

// --- Guides --------------------------------------------------------------------------------------

TEST_F(OverrideReader, ReadsAGuideWhateverTheCaseOfItsTags) {
    EXPECT_TRUE(readGuide("sys_var: \"hip x\"\nVALUE: 0.5\nWeight: 2\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{4, 0.5F, 2}));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(OverrideReader, KeepsGuidesSortedByVariable) {
    EXPECT_TRUE(readGuide("SYS_VAR: 17\nVALUE: 1\nWEIGHT: 1\n"));
    EXPECT_TRUE(readGuide("SYS_VAR: knee_x\nVALUE: 2\nWEIGHT: 1\n"));
    EXPECT_TRUE(readGuide("SYS_VAR: 9\nVALUE: 3\nWEIGHT: 1\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{3, 2, 1}, SysVarGuideOverride{9, 3, 1},
                                          SysVarGuideOverride{17, 1, 1}));
}

TEST_F(OverrideReader, KeepsTheFirstGuideOfAVariableInSilence) {
    EXPECT_TRUE(readGuide("SYS_VAR: knee_x\nVALUE: 1\nWEIGHT: 1\n"));
    EXPECT_TRUE(readGuide("SYS_VAR: 3\nVALUE: wrong\n"));
    EXPECT_TRUE(readGuide("VALUE: 2\nWEIGHT: 2\nSYS_VAR: 3\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{3, 1, 1}));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(OverrideReader, GivesAGuideWithoutAVariableTheIdZero) {
    EXPECT_TRUE(readGuide("VALUE: 1\nWEIGHT: 2\n"));
    EXPECT_TRUE(readGuide("VALUE: 3\nWEIGHT: 4\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{0, 1, 2}));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(OverrideReader, SkipsOtherItemsOfAGuideAndBlocks) {
    EXPECT_TRUE(readGuide("COLOR: red\nSYS_VAR: 3\nVALUE {\n7\n}\nVALUE: 1\nWEIGHT {\n8\n}\nWEIGHT: 2\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{3, 1, 2}));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_FALSE(readGuide("SYS_VAR: 4\nVALUE {\n7\n}\nWEIGHT: 2\n"));
    EXPECT_THAT(takeChain(), ElementsAre(error("No value specified")));
}

TEST_F(OverrideReader, TakesTheLastValueAndWeightOfAGuide) {
    EXPECT_TRUE(readGuide("VALUE: 1\nWEIGHT: 2\nSYS_VAR: 3\nVALUE: 3\nWEIGHT: 4\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{3, 3, 4}));
}

TEST_F(OverrideReader, ReportsWhatIsWrongWithAGuideInEveryReading) {
    const struct {
        const char* text;
        StatusChain chain;
    } cases[] = {
        {"SYS_VAR: elbow\nVALUE: 1\nWEIGHT: 1\n",
         {error("Variable 'elbow' is not in the problem definition.")}},
        {"SYS_VAR:\nVALUE: 1\nWEIGHT: 1\n", {error("Error reading SYS_VAR.")}},
        {"SYS_VAR: 3\nVALUE: x\nWEIGHT: 1\n", {error("Error reading VALUE.")}},
        {"SYS_VAR: 3\nVALUE: 1\nweight:\n", {error("Error reading weight.")}},
        {"SYS_VAR: 3\nWEIGHT: 1\n", {error("No value specified")}},
        {"SYS_VAR: 3\nVALUE: 1\n", {error("No weight specified.")}},
        {"", {error("No value specified")}},
        {"SYS_VAR: 3\nhello\nVALUE: 1\nWEIGHT: 1\n",
         {error("No value specified"), error("No ':' or '{' following tag 'hello'.")}},
        {"SYS_VAR: 3\nBLOCK { x\nVALUE: 1\nWEIGHT: 1\n",
         {error("Invalid characters trailing '{' for 'BLOCK'.")}},
    };
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        for (const auto& [text, chain] : cases) {
            SCOPED_TRACE(text);
            EXPECT_FALSE(readGuide(text, reading));
            EXPECT_THAT(guidesRead(), IsEmpty());
            EXPECT_EQ(takeChain(), chain);
        }
    }
}

TEST_F(OverrideReader, SkipsAnItemOfAGuideWithoutATag) {
    EXPECT_TRUE(readGuide("SYS_VAR: 3\nVALUE: 1\n: x\nWEIGHT: 2\n"));
    EXPECT_THAT(guidesRead(), ElementsAre(SysVarGuideOverride{3, 1, 2}));
}

} // namespace
} // namespace quillon::scaleDef
