#include "tests/scale/WrittenScaleDef.h"

#include <gmock/gmock.h>

#include <limits>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using test::error;
using test::literal;
using test::notANumber;
using test::offsetForm;
using test::scaleForm;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

class ScaleDefWriterSections : public test::WrittenScaleDef {
protected:
    /// What is written on standard error meanwhile stands in `remarks`.
    std::string writtenWithRemarks(std::string& remarks) const {
        testing::internal::CaptureStderr();
        std::string text = written();
        remarks = testing::internal::GetCapturedStderr();
        return text;
    }
};

// --- Numbers -------------------------------------------------------------------------------------

TEST_F(ScaleDefWriterSections, KeepsSixDigitsOfARealInTheShorterForm) {
    const struct {
        float number;
        const char* text;
    } cases[] = {
        {0, "0"},
        {-0.0F, "-0"},
        {2, "2"},
        {0.1F, "0.1"},
        {1234.5678F, "1234.57"},
        {123456, "123456"},
        {1234567, "1.23457e+06"},
        {999999.5F, "1e+06"},
        {0.0001F, "0.0001"},
        {0.00001F, "1e-05"},
        {std::numeric_limits<float>::denorm_min(), "1.4013e-45"},
        {noUpperLimit, "3.40282e+38"},
        {std::numeric_limits<float>::infinity(), "inf"},
        {notANumber, "nan"},
    };
    for (const auto& [number, text] : cases) {
        definition.defaultRealWeight = number;
        EXPECT_EQ(written(), (test::WrittenText{
                                 .counts = std::string("REAL_COUNT: 0\nDEFAULT_REAL_WEIGHT: ") + text + "\n"}
                                  .all()));
    }
}

TEST_F(ScaleDefWriterSections, WritesIntegersPlainly) {
    definition.realCount = std::numeric_limits<int>::min();
    definition.realWeightOverrides.append({1234567, 1});
    definition.artificialWeightOverrides.append({-1, std::numeric_limits<int>::max(), 0});
    EXPECT_EQ(written(), (test::WrittenText{.counts = "REAL_COUNT: -2147483648\nDEFAULT_REAL_WEIGHT: 0\n",
                                            .realWeights = "  1234567 1\n",
                                            .artificialWeights = "  -1 2147483647 0\n"}
                              .all()));
}

// --- Limits and scaling variables ----------------------------------------------------------------

TEST_F(ScaleDefWriterSections, WritesALimitAsAStarOnlyAtItsOwnInfinity) {
    const struct {
        scaleDef::ScaleFloat lower;
        scaleDef::ScaleFloat upper;
        const char* text;
    } cases[] = {
        {literal(0), literal(0), "0 0"},
        {literal(noLowerLimit), literal(noUpperLimit), "* *"},
        {literal(noUpperLimit), literal(noLowerLimit), "3.40282e+38 -3.40282e+38"},
        {scaleForm(1, noLowerLimit), offsetForm(2, noUpperLimit), "[m1 -3.40282e+38] [m2 + 3.40282e+38]"},
        {scaleForm(1, 0), offsetForm(2147483647, -2), "[m1 0] [m2147483647 + -2]"},
    };
    for (const auto& [lower, upper, text] : cases) {
        definition = LqScaleDefData();
        definition.limitOverrides.append({3, lower, upper});
        definition.scaleVars.append({"height", LmStr(), lower, upper});
        EXPECT_EQ(written(),
                  (test::WrittenText{.limits = std::string("  \"knee_x\" ") + text + "\n",
                                     .variables = test::variableHeading + "  height " + text + "\n"}
                       .all()));
    }
}

TEST_F(ScaleDefWriterSections, WritesAnEmptyNameForALimitOfAnUnknownVariable) {
    definition.limitOverrides.append(test::limit(17, -1, 1));
    test::addPose(definition, "standing").limitOverrides.append(test::limit(-1));
    EXPECT_EQ(written(), (test::WrittenText{.limits = "  \"\" -1 1\n",
                                            .poses = "POSE {\n"
                                                     "  NAME: standing\n"
                                                     "  LIMIT_ADJUSTMENTS {\n"
                                                     "    \"\" 0 0\n"
                                                     "  }\n"
                                                     "}\n"}
                              .all()));
}

TEST_F(ScaleDefWriterSections, NamesTheFirstOfTwoVariablesWithOneId) {
    problemDef.sysVars.append(new LqPDDSysVar(4, "hip y"));
    definition.limitOverrides.append(test::limit(4));
    EXPECT_EQ(written(), test::WrittenText{.limits = "  \"hip x\" 0 0\n"}.all());
}

TEST_F(ScaleDefWriterSections, GivesAllScalingVariablesTheColumnsOfTheLongestName) {
    definition.scaleVars.append({"a", "first", literal(0), literal(1)});
    definition.scaleVars.append({"twenty_characters_abc", "", literal(0), literal(1)});
    definition.scaleVars.append({"bcd", LmStr(), literal(0), literal(1)});
    EXPECT_EQ(written(),
              test::WrittenText{.variables = test::variableHeading + "  a                     0 1 \"first\"\n"
                                                                     "  twenty_characters_abc 0 1\n"
                                                                     "  bcd                   0 1\n"}
                  .all());
}

// --- Guides --------------------------------------------------------------------------------------

TEST_F(ScaleDefWriterSections, LeavesOutGuidesOfUnknownVariablesAndTellsThem) {
    definition.sysVarGuideOverrides.append({2, 1, 1});
    definition.sysVarGuideOverrides.append({3, 2, 2});
    scaleDef::Pose_t& pose = test::addPose(definition, "standing");
    pose.sysVarGuideOverrides.append({-7, 1, 1});
    pose.sysVarGuideOverrides.append({4, 0, 0});
    std::string remarks;
    EXPECT_EQ(writtenWithRemarks(remarks), (test::WrittenText{.guides = "SYS_VAR_GUIDE_OVERRIDE {\n"
                                                                        "  SYS_VAR: \"knee_x\"\n"
                                                                        "  VALUE: 2\n"
                                                                        "  WEIGHT: 2\n"
                                                                        "}\n",
                                                              .poses = "POSE {\n"
                                                                       "  NAME: standing\n"
                                                                       "  SYS_VAR_GUIDE_OVERRIDE {\n"
                                                                       "    SYS_VAR: \"hip x\"\n"
                                                                       "    VALUE: 0\n"
                                                                       "    WEIGHT: 0\n"
                                                                       "  }\n"
                                                                       "}\n"}
                                                .all()));
    EXPECT_EQ(remarks, "No description found for sysvar 2\nNo description found for sysvar -7\n");
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefWriterSections, WritesAGuideOfAVariableWithAnEmptyName) {
    problemDef.sysVars.append(new LqPDDSysVar(5, ""));
    definition.sysVarGuideOverrides.append({5, 1, 1});
    LqScaleDefData back;
    std::string remarks;
    writtenWithRemarks(remarks);
    EXPECT_EQ(remarks, "");
    EXPECT_THAT(chainOfReadingBack(back), IsEmpty());
    EXPECT_TRUE(back == definition);
}

// --- Poses and constraints -----------------------------------------------------------------------

TEST_F(ScaleDefWriterSections, PassesOverAPoseThatIsNull) {
    definition.poses.append(nullptr);
    test::addPose(definition, "standing");
    definition.poses.append(nullptr);
    EXPECT_EQ(written(), test::WrittenText{.poses = "POSE {\n  NAME: standing\n}\n"}.all());
}

TEST_F(ScaleDefWriterSections, GivesGlobalConstraintsTheColumnsOfTheLongestNameOfTheirOwnBlock) {
    definition.globalConstraints.append(test::globalConstraint("a"));
    definition.globalConstraints.append(test::globalConstraint("bc"));
    scaleDef::Pose_t& pose = test::addPose(definition, "standing");
    pose.globalConstraints.append(test::globalConstraint("d"));
    pose.globalConstraints.append(test::globalConstraint("left_foot", {1e-7F, -2, 3}, {4, 5, 1e7F}));
    EXPECT_EQ(written(), (test::WrittenText{.poses = "POSE {\n"
                                                     "  NAME: standing\n"
                                                     "  GLOBAL_CONSTRAINTS {\n"
                                                     "    # body         local            global\n"
                                                     "    d         0 1 0  0 0 1\n"
                                                     "    left_foot 1e-07 -2 3  4 5 1e+07\n"
                                                     "  }\n"
                                                     "}\n",
                                            .globals = "  # body    local            global\n"
                                                       "  a  0 1 0  0 0 1\n"
                                                       "  bc 0 1 0  0 0 1\n"}
                              .all()));
}

TEST_F(ScaleDefWriterSections, PutsPosesAndPositionConstraintsOnEitherSideOfTheBodies) {
    definition.positionConstraints.append(test::positionConstraint("thigh"));
    definition.positionConstraints.append(test::positionConstraint("GLOBAL"));
    test::addPose(definition, "standing");
    definition.bodyParams.append(test::scaledBody("thigh"));
    std::istringstream lines(written());
    std::vector<std::string> outermost;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with(" {") && !line.starts_with(" ")) {
            outermost.push_back(line.substr(0, line.size() - 2));
        }
    }
    EXPECT_THAT(outermost,
                ElementsAre("REAL_WEIGHT_OVERRIDES", "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES", "LIMIT_ADJUSTMENTS",
                            "SCALING_VARIABLES", "POSE", "BODY_SCALINGS", "POSITION_CONSTRAINT",
                            "POSITION_CONSTRAINT", "GLOBAL_CONSTRAINTS", "TEMPS"));
}

// --- Scaled bodies and temporary markers -----------------------------------------------------------

TEST_F(ScaleDefWriterSections, WritesLongNamesOfScaledBodiesWhole) {
    definition.bodyParams.append(test::scaledBody("twenty_four_characters_x"));
    definition.bodyParams.append(test::scaledBody("twenty_five_characters_xx"));
    definition.bodyParams.append(test::scaledBody("twenty_six_characters_xxxx"));
    const std::string firstRest = " # body name\n"
                                  "    1 0 0    # first axis\n"
                                  "    0 1 0    # second axis\n"
                                  "    0                 # scaling vars\n"
                                  "    0\n"
                                  "    0\n";
    const std::string rest = "\n    1 0 0\n    0 1 0\n    0\n    0\n    0\n";
    EXPECT_EQ(written(), test::WrittenText{.bodies = "  twenty_four_characters_x " + firstRest +
                                                     "  twenty_five_characters_xx" + rest +
                                                     "  twenty_six_characters_xxxx" + rest}
                             .all());
    std::swap(definition.bodyParams[0].bodyName, definition.bodyParams[2].bodyName);
    EXPECT_EQ(written(), test::WrittenText{.bodies = "  twenty_six_characters_xxxx" + firstRest +
                                                     "  twenty_five_characters_xx" + rest +
                                                     "  twenty_four_characters_x " + rest}
                             .all());
}

TEST_F(ScaleDefWriterSections, DoesNotWriteTheThirdAxis) {
    definition.bodyParams.append(test::scaledBody("thigh"));
    const std::string text = written();
    definition.bodyParams[0].thirdAxis = {7, 8, 9};
    EXPECT_EQ(written(), text);
}

TEST_F(ScaleDefWriterSections, WritesTempsInTheirFormsAndNeverAStar) {
    definition.temps.append(
        {-2, {literal(noUpperLimit), literal(noLowerLimit), scaleForm(1, 0)}, "thigh", "thigh", 0});
    definition.temps.append({3, {scaleForm(3, 2), offsetForm(4, -1), literal(-0.5F)}, "a/b", "c", 2});
    EXPECT_EQ(
        written(),
        test::WrittenText{.temps = "  -2 3.40282e+38 -3.40282e+38 [m1 0] thigh 0                # id  local  "
                                   "body  weight\n"
                                   "  3 [m3 2] [m4 + -1] -0.5 c/a/b 2\n"}
            .all());
}

// --- Many records --------------------------------------------------------------------------------

TEST_F(ScaleDefWriterSections, WritesManyRecordsWithoutAScanForEach) {
    constexpr int count = 50000;
    LqProblemDefData crowd;
    crowd.sysVars.setLength(count);
    definition.limitOverrides.setLength(count);
    definition.scaleVars.setLength(count);
    std::string limits;
    std::string variables = test::variableHeading;
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(100000 + i);
        crowd.sysVars[i] = new LqPDDSysVar(count - i, name.c_str());
        definition.limitOverrides[i] = test::limit(count - i);
        new (&definition.scaleVars[i]) LqScaleDefData::ScaleVar(test::scaleVar(name.c_str()));
        limits += "  \"" + name + "\" 0 0\n";
        variables += "  " + name + " 0 1\n";
    }
    std::ostringstream output;
    definition.write(output, crowd);
    EXPECT_TRUE(output.str() == (test::WrittenText{.limits = limits, .variables = variables}.all()));
}

} // namespace
} // namespace quillon
