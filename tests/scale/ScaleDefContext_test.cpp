#include "quillon/scale/ScaleDefContext.h"

#include "quillon/core/LmSStream.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace quillon::scaleDef {
namespace {

using test::error;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

/// A problem definition with two system variables and one body, and a definition with three scaling
/// variables.
class ScaleDefContextTest : public testing::Test {
protected:
    ScaleDefContextTest() {
        problemDef.sysVars.append(new LqPDDSysVar(4, "knee_x"));
        problemDef.sysVars.append(new LqPDDSysVar(9, "hip x"));
        problemDef.sysVars.append(new LqPDDSysVar(11, "knee_x"));
        problemDef.addBody("thigh", referenceSystemName, 1);
        for (const char* name : {"height", "arm width", "5"}) {
            ScaleVar scaleVar;
            scaleVar.name = name;
            definition.scaleVars.append(scaleVar);
        }
        strict = std::make_unique<ScaleDefContext>(definition, problemDef, false);
    }

    std::int32_t sysVarIdOf(const std::string& text) {
        LmISStream input(text.c_str());
        return strict->readSysVarId(input, "variable");
    }

    ScaleMapping mappingOf(const std::string& text) {
        LmISStream input(text.c_str());
        ScaleMapping mapping = strict->readScaleMapping(input, "the knee");
        behind = std::string(std::istreambuf_iterator<char>(input), {});
        return mapping;
    }

    StatusChain chainOfMapping(const std::string& text) {
        mappingOf(text);
        return takeChain();
    }

    test::CleanStatus cleanStatus;
    LqProblemDefData problemDef;
    LqScaleDefData definition;
    std::unique_ptr<ScaleDefContext> strict;
    std::string behind; // what a mapping left in the stream
};

struct TermLine {
    std::int32_t id;
    ScaleFloat factor;

    friend bool operator==(const TermLine&, const TermLine&) = default;
};

std::vector<TermLine> termsOf(const ScaleMapping& mapping) {
    std::vector<TermLine> lines;
    for (const LqLinearTerm<ScaleFloat>* term : mapping.termList()) {
        lines.push_back({term->sysVar, term->coefficient});
    }
    return lines;
}

ScaleFloat literal(float value) {
    return {value, 0, 0};
}

// --- References to the problem definition --------------------------------------------------------

TEST_F(ScaleDefContextTest, KnowsBodiesByTheirExactName) {
    EXPECT_TRUE(strict->hasBody("thigh"));
    EXPECT_FALSE(strict->hasBody("Thigh"));
    EXPECT_FALSE(strict->hasBody(referenceSystemName));
    EXPECT_FALSE(strict->hasBody(""));
}

TEST_F(ScaleDefContextTest, NamesSystemVariables) {
    EXPECT_EQ(strict->sysVarName(9), "hip x");
    EXPECT_EQ(strict->sysVarName(17), "");
}

TEST_F(ScaleDefContextTest, FindsASystemVariableByItsNameAndTheFirstOfTwo) {
    EXPECT_EQ(sysVarIdOf(" # a remark\n knee_x 1"), 4);
    EXPECT_EQ(sysVarIdOf("\"hip x\""), 9);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, DoesNotLookUpTheNumberOfASystemVariable) {
    EXPECT_EQ(sysVarIdOf("17"), 17);
    EXPECT_EQ(sysVarIdOf("0"), 0);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, TakesANegativeNumberForAName) {
    EXPECT_EQ(sysVarIdOf("-4"), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Variable '-4' is not in the problem definition.")));
}

TEST_F(ScaleDefContextTest, ReportsAnUnknownSystemVariable) {
    EXPECT_EQ(sysVarIdOf("Knee_x"), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Variable 'Knee_x' is not in the problem definition.")));
}

TEST_F(ScaleDefContextTest, ReportsASystemVariableThatCannotBeRead) {
    EXPECT_EQ(sysVarIdOf("  "), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading variable.")));
    EXPECT_EQ(sysVarIdOf("\"hip\n"), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Hit end of line in string reading variable")));
}

TEST_F(ScaleDefContextTest, TakesTheDigitsOfASystemVariableAndLeavesTheRest) {
    for (const auto& [text, id, left] : {std::tuple("17abc 1", 17, "abc 1"), std::tuple("3.5 1", 3, ".5 1"),
                                         std::tuple(" # a remark\n 007\n1", 7, "\n1")}) {
        LmISStream input(text);
        EXPECT_EQ(strict->readSysVarId(input, "variable"), id);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), left);
    }
    EXPECT_THAT(takeChain(), IsEmpty());
    sysVarIdOf("99999999999");
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading variable.")));
}

TEST_F(ScaleDefContextTest, TakesAQuotedNumberForTheNameOfASystemVariable) {
    EXPECT_EQ(sysVarIdOf("\"4\""), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Variable '4' is not in the problem definition.")));
    EXPECT_EQ(sysVarIdOf("+4"), 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Variable '+4' is not in the problem definition.")));
}

TEST_F(ScaleDefContextTest, ReportsAnUnresolvedReferenceByItsLeniency) {
    EXPECT_FALSE(strict->reportUnresolved("100% unknown"));
    EXPECT_THAT(takeChain(), ElementsAre(error("100% unknown")));
    strict.reset();
    const ScaleDefContext lenient(definition, problemDef, true);
    EXPECT_TRUE(lenient.reportUnresolved("100% unknown"));
    EXPECT_THAT(takeChain(), ElementsAre(warning("100% unknown")));
}

// --- Scaling variables ---------------------------------------------------------------------------

TEST_F(ScaleDefContextTest, FindsAScalingVariableOnceItIsNamed) {
    EXPECT_EQ(strict->scaleVarId("girth"), 0);
    strict->nameScaleVar(strict->appendScaleVar(), "girth");
    strict->nameScaleVar(strict->appendScaleVar(), "height");
    EXPECT_EQ(strict->scaleVarId("girth"), 4);
    EXPECT_EQ(strict->scaleVarId("height"), 1);
    EXPECT_EQ(strict->scaleVarCount(), 5);
    strict.reset();
    ASSERT_EQ(definition.scaleVars.count(), 5);
    EXPECT_EQ(definition.scaleVars[3].name, "girth");
}

TEST_F(ScaleDefContextTest, ReadsTheNumberOfAMappingAsANumberBelow1OrAsTheIdOfAName) {
    strict->nameScaleVar(strict->appendScaleVar(), "0");
    strict->nameScaleVar(strict->appendScaleVar(), "-2");
    strict->nameScaleVar(strict->appendScaleVar(), "+5");
    const struct {
        const char* text;
        std::int32_t number;
    } cases[] = {
        {"height", 1},
        {"\"arm width\" 1", 2},
        {"5", 3},
        // A name that is a number below 1 cannot be reached, in quotes or not; any other one can.
        {"0", 0},
        {"\"0\"", 0},
        {"-2", -2},
        {"\"-2\"", -2},
        {"\" -7\"", -7},
        {"-0", 0},
        {"+5", 6},
    };
    for (const auto& [text, number] : cases) {
        LmISStream input(text);
        EXPECT_EQ(strict->readScaleVarId(input, "the knee"), number) << text;
        EXPECT_THAT(takeChain(), IsEmpty()) << text;
    }
}

TEST_F(ScaleDefContextTest, GivesTheNumber0AfterAnErrorInIt) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"", "Error reading the knee."},
        {"\"arm width\n", "Hit end of line in string reading the knee"},
        {"\"\"", "Invalid scaling variable '' used for the knee."},
        {"\"-1 \"", "Invalid scaling variable '-1 ' used for the knee."},
        {"-1.5", "Invalid scaling variable '-1.5' used for the knee."},
        {"HEIGHT", "Invalid scaling variable 'HEIGHT' used for the knee."},
    };
    for (const auto& [text, message] : cases) {
        LmISStream input(text);
        EXPECT_EQ(strict->readScaleVarId(input, "the knee"), 0) << text;
        EXPECT_THAT(takeChain(), ElementsAre(error(message))) << text;
    }
}

// --- Mappings ------------------------------------------------------------------------------------

TEST_F(ScaleDefContextTest, ReadsAMappingThatIsNotDriven) {
    const ScaleMapping mapping = mappingOf("0 height");
    EXPECT_EQ(mapping.id, 0);
    EXPECT_THAT(termsOf(mapping), IsEmpty());
    EXPECT_EQ(behind, " height");
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, ReadsAMappingThatFollowsAVariable) {
    EXPECT_EQ(mappingOf("height").id, 1);
    EXPECT_EQ(mappingOf("\"arm width\"").id, 2);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, TakesAPositiveNumberForAName) {
    EXPECT_EQ(mappingOf("5").id, 3);
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(mappingOf("1").id, 0);
    EXPECT_THAT(takeChain(), ElementsAre(error("Invalid scaling variable '1' used for the knee.")));
}

TEST_F(ScaleDefContextTest, ReadsAConstantWithoutTerms) {
    const ScaleMapping mapping = mappingOf("-1 [m3 + 0.5] height");
    EXPECT_EQ(mapping.id, -1);
    EXPECT_EQ(mapping.constant, (ScaleFloat{0, 0.5F, 3}));
    EXPECT_THAT(termsOf(mapping), IsEmpty());
    EXPECT_EQ(behind, " height");
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, ReadsALinearCombinationAcrossLines) {
    const ScaleMapping mapping = mappingOf("-3\n0.5 height # a remark\n 0.25\n\"arm width\" [m2 2] next");
    EXPECT_EQ(mapping.id, -3);
    EXPECT_EQ(mapping.constant, literal(0.5F));
    EXPECT_THAT(termsOf(mapping), ElementsAre(TermLine{1, literal(0.25F)}, TermLine{2, {2, 0, 2}}));
    EXPECT_EQ(behind, " next");
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefContextTest, ReportsWhatIsWrongWithAMapping) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"", "Error reading the knee."},
        {"\"height\n", "Hit end of line in string reading the knee"},
        {"Height", "Invalid scaling variable 'Height' used for the knee."},
        {"7", "Invalid scaling variable '7' used for the knee."},
        {"-1x", "Invalid scaling variable '-1x' used for the knee."},
        {"-1", "Error reading the knee."},
        {"-1 *", "Cannot specify an infinite value for the knee."},
        {"-2 0.1", "Error reading the knee."},
        {"-2 0.1 0 1", "Invalid scaling variable (0) used for the knee."},
        {"-2 0.1 -1 1", "Invalid scaling variable (-1) used for the knee."},
        {"-2 0.1 girth 1", "Invalid scaling variable 'girth' used for the knee."},
        {"-2 0.1 height", "Error reading the knee."},
        {"-2 0.1 height [x1 2]", "Invalid measured constant name."},
        {"-2147483648 0.1 height 1", "Error reading the knee."},
    };
    for (const auto& [text, message] : cases) {
        SCOPED_TRACE(text);
        EXPECT_THAT(chainOfMapping(text), ElementsAre(error(message)));
    }
}

TEST_F(ScaleDefContextTest, LeavesOfAMappingWhatWasReadUpToTheError) {
    const struct {
        const char* text;
        std::int32_t id;
        ScaleFloat constant;
        std::vector<TermLine> terms;
    } cases[] = {
        // The number itself.
        {"", 0, {}, {}},
        {"girth", 0, {}, {}},
        // The constant: the number stays.
        {"-1", -1, {}, {}},
        {"-3 *", -3, {}, {}},
        {"-3 [m2 x] height 1 height 1", -3, {}, {}},
        // The name of a term, the first one or a later one: nothing stays.
        {"-2 0.5", 0, {}, {}},
        {"-2 0.5 girth 1", 0, {}, {}},
        {"-3 0.5 height 0.25 girth 1", 0, {}, {}},
        {"-3 0.5 height 0.25", 0, {}, {}},
        // A number in the place of a term's name: all that was read stays.
        {"-2 0.5 0 1", -2, literal(0.5F), {}},
        {"-3 [m2 + 1] height 0.25 -1 1", -3, {0, 1, 2}, {{1, literal(0.25F)}}},
        // The factor of a term: that term is left out.
        {"-2 0.5 height", -2, literal(0.5F), {}},
        {"-2 0.5 height *", -2, literal(0.5F), {}},
        {"-3 0.5 height 0.25 \"arm width\" [m0 1]", -3, literal(0.5F), {{1, literal(0.25F)}}},
    };
    for (const auto& [text, id, constant, terms] : cases) {
        SCOPED_TRACE(text);
        const ScaleMapping mapping = mappingOf(text);
        EXPECT_EQ(takeChain().size(), 1U);
        EXPECT_EQ(mapping.id, id);
        EXPECT_EQ(mapping.constant, constant);
        EXPECT_EQ(termsOf(mapping), terms);
    }
}

TEST_F(ScaleDefContextTest, ReadsOfAMappingOnlyItsNumberWhenAnErrorStoodBefore) {
    pushError("before");
    const ScaleMapping mapping = mappingOf("-2 0.5 height 1");
    EXPECT_EQ(takeChain(), StatusChain{error("before")});
    EXPECT_EQ(mapping.id, 0);
    EXPECT_EQ(mapping.constant, ScaleFloat());
    EXPECT_EQ(behind, " 0.5 height 1");
}

TEST_F(ScaleDefContextTest, MayNameOneVariableInSeveralTermsOfAMapping) {
    const ScaleMapping mapping = mappingOf("-4 0 height 1 height 2 5 [m1 0]");
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(mapping.id, -4);
    EXPECT_THAT(termsOf(mapping),
                ElementsAre(TermLine{1, literal(1)}, TermLine{1, literal(2)}, TermLine{3, {0, 0, 1}}));
}

TEST_F(ScaleDefContextTest, TakesNoNumberOfAVariableForATermThoughItIsAName) {
    // "5" names the third variable; "3" names none.
    EXPECT_THAT(termsOf(mappingOf("-2 0 5 1")), ElementsAre(TermLine{3, literal(1)}));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(chainOfMapping("-2 0 3 1"),
                ElementsAre(error("Invalid scaling variable '3' used for the knee.")));
}

} // namespace
} // namespace quillon::scaleDef
