#include "tests/scale/ScaleDefFile.h"
#include "tests/scale/ScaleSections.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using test::block;
using test::error;
using test::linesOf;
using test::Reading;
using test::StatusChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

/// The same four kinds of sections stand outside of poses and in each pose; what one level says is never seen
/// by another.
class ScaleDefLevels : public test::ScaleDefFile {
protected:
    static std::string guide(const std::string& value) {
        return block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: knee_x\nVALUE: " + value + "\nWEIGHT: 1\n");
    }

    static std::string pose(const std::string& name, const std::string& sections) {
        return block("POSE", "NAME: " + name + "\n" + sections);
    }

    static std::vector<std::pair<int, float>>
    guidesOf(const LmDArray<scaleDef::SysVarGuideOverride>& guides) {
        std::vector<std::pair<int, float>> values;
        for (const scaleDef::SysVarGuideOverride& each : guides) {
            values.emplace_back(each.sysVarId, each.value);
        }
        return values;
    }

    static std::vector<std::string> limitsOf(const LmDArray<scaleDef::LimitOverride_t>& limits) {
        std::vector<std::string> lines;
        for (const scaleDef::LimitOverride_t& each : limits) {
            lines.push_back(std::to_string(each.sysVarId) + " from " + test::textOf(each.lower) + " to " +
                            test::textOf(each.upper));
        }
        return lines;
    }
};

TEST_F(ScaleDefLevels, GuidesOfOneVariableAreARecordOnEachLevel) {
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        EXPECT_THAT(chainOfText({.sections = pose("first", guide("1") + guide("9")) + guide("2") +
                                             pose("second", guide("3")) + guide("8")},
                                reading),
                    IsEmpty());
        EXPECT_THAT(guidesOf(definition.sysVarGuideOverrides), ElementsAre(std::pair(3, 2.0F)));
        ASSERT_EQ(definition.poses.count(), 2);
        EXPECT_THAT(guidesOf(definition.poses[0]->sysVarGuideOverrides), ElementsAre(std::pair(3, 1.0F)));
        EXPECT_THAT(guidesOf(definition.poses[1]->sysVarGuideOverrides), ElementsAre(std::pair(3, 3.0F)));
    }
}

TEST_F(ScaleDefLevels, LimitsOfOneVariableAreARecordOnEachLevelWithoutAMessage) {
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        EXPECT_THAT(chainOfText({.limits = block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n"),
                                 .sections = pose("first", block("LIMIT_ADJUSTMENTS", "3 0 2\n")) +
                                             pose("second", block("LIMIT_ADJUSTMENTS", "knee_x 0 3\n"))},
                                reading),
                    IsEmpty());
        EXPECT_THAT(limitsOf(definition.limitOverrides), ElementsAre("3 from 0 to 1"));
        ASSERT_EQ(definition.poses.count(), 2);
        EXPECT_THAT(limitsOf(definition.poses[0]->limitOverrides), ElementsAre("3 from 0 to 2"));
        EXPECT_THAT(limitsOf(definition.poses[1]->limitOverrides), ElementsAre("3 from 0 to 3"));
    }
}

TEST_F(ScaleDefLevels, LimitsOfOneVariableMayRepeatAcrossTheBlocksOfAPoseOfWhichTheLastCounts) {
    EXPECT_THAT(chainOfText({.sections = pose("first", block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n") +
                                                           block("LIMIT_ADJUSTMENTS", "knee_x 0 2\n"))}),
                IsEmpty());
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_THAT(limitsOf(definition.poses[0]->limitOverrides), ElementsAre("3 from 0 to 2"));
}

TEST_F(ScaleDefLevels, AsteriskMeansTheSameInThePoseAsOutside) {
    EXPECT_THAT(chainOfText({.limits = block("LIMIT_ADJUSTMENTS", "knee_x * *\n"),
                             .sections = pose("first", block("LIMIT_ADJUSTMENTS", "knee_x * *\n"))}),
                IsEmpty());
    ASSERT_EQ(definition.poses.count(), 1);
    for (const auto* limits : {&definition.limitOverrides, &definition.poses[0]->limitOverrides}) {
        ASSERT_EQ(limits->count(), 1);
        EXPECT_EQ((*limits)[0].lower.value, noLowerLimit);
        EXPECT_EQ((*limits)[0].upper.value, noUpperLimit);
    }
}

TEST_F(ScaleDefLevels, APoseHoldsWhatItsBlockSaysAndNothingElse) {
    EXPECT_THAT(chainOfText({.limits = block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n"),
                             .sections = guide("1") + block("POSITION_CONSTRAINT", "BODY: thigh\n") +
                                         pose("bare", "") +
                                         pose("full", block("GLOBAL_CONSTRAINTS", "thigh 1 0 0 1 0 0\n") +
                                                          block("POSITION_CONSTRAINT", "BODY: pelvis\n")),
                             .globals = block("GLOBAL_CONSTRAINTS", "pelvis 0 1 0 0 0 1\n")}),
                IsEmpty());
    ASSERT_EQ(definition.poses.count(), 2);
    scaleDef::Pose_t bare;
    bare.name = "bare";
    EXPECT_TRUE(*definition.poses[0] == bare);
    const scaleDef::Pose_t& full = *definition.poses[1];
    EXPECT_THAT(limitsOf(full.limitOverrides), IsEmpty());
    EXPECT_THAT(guidesOf(full.sysVarGuideOverrides), IsEmpty());
    EXPECT_THAT(linesOf(full.globalConstraints), ElementsAre("thigh: (1 0 0) along (1 0 0)"));
    ASSERT_EQ(full.positionConstraints.count(), 1);
    EXPECT_EQ(full.positionConstraints[0].body, "pelvis");
    EXPECT_THAT(linesOf(definition.globalConstraints), ElementsAre("pelvis: (0 1 0) along (0 0 1)"));
    ASSERT_EQ(definition.positionConstraints.count(), 1);
    EXPECT_EQ(definition.positionConstraints[0].body, "thigh");
}

TEST_F(ScaleDefLevels, APositionConstraintIsReadAlikeOnBothLevels) {
    const std::string constraint = "POSITION_CONSTRAINT {\n"
                                   "  BODY: thigh\n"
                                   "  PARENT: GLOBAL\n"
                                   "  LOCAL_POSITION: 0 0 0\n"
                                   "  WEIGHT: 2\n"
                                   "  BASE_TRANSLATION: 0 0.8 0\n"
                                   "  BASE_ROTATION: 0 0 0 Z Y X\n"
                                   "  TRANSFORM_ORDER: 1 2 3 6 5 4\n"
                                   "  MAPPING {\n"
                                   "    0\n"
                                   "    height\n"
                                   "    0\n"
                                   "    0\n"
                                   "    0\n"
                                   "    0\n"
                                   "  }\n"
                                   "}\n";
    EXPECT_THAT(chainOfText({.sections = block("SCALING_VARIABLES", "height * *\n") + constraint +
                                         pose("standing", constraint)}),
                IsEmpty());
    const char* const line =
        "thigh on GLOBAL: at (0 0 0) order (1 2 3 6 5 4) weight 2 mapping 0, var 1, 0, 0, "
        "0, 0 base (0 0.800000012 0) turned (1 0 0 0 1 0 0 0 1)";
    EXPECT_THAT(linesOf(definition.positionConstraints), ElementsAre(line));
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_THAT(linesOf(definition.poses[0]->positionConstraints), ElementsAre(line));
}

TEST_F(ScaleDefLevels, AnErrorInAPoseStandsUnderTheNumberOfThePose) {
    const struct {
        std::string section;
        StatusChain below;
    } cases[] = {
        {block("LIMIT_ADJUSTMENTS", "knee_x 0 x\n"), {error("Error reading upper limit.")}},
        {block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nWEIGHT: 1\n"), {error("No value specified")}},
        {block("GLOBAL_CONSTRAINTS", "thigh 0 1 0\n"), {error("Error reading constraint global vect.")}},
        {block("POSITION_CONSTRAINT", "WEIGHT: 1\n"),
         {error("A POSITION_CONSTRAINT was specified with no BODY.")}},
        {block("POSITION_CONSTRAINT", "BODY: thigh\nWEIGHT: x\n"),
         {error("Unable to read WEIGHT."), error("Error reading WEIGHT.")}},
        {"NAME:\n", {error("A pose was specified with no name.\n")}},
        {"TEMPS {\n}\n", {error("Unknown tag 'TEMPS' in pose section.")}},
        {"hello\n", {error("No ':' or '{' following tag 'hello'.")}},
    };
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        for (const auto& [section, below] : cases) {
            SCOPED_TRACE(section);
            StatusChain expected = {error("Unable to read POSE #3.")};
            expected.insert(expected.end(), below.begin(), below.end());
            EXPECT_EQ(chainOfText({.sections = pose("a", "") + pose("a", "") + pose("c", section)}, reading),
                      expected);
            EXPECT_EQ(definition.poses.count(), 2) << "a pose is kept once it has been read in full";
        }
    }
}

TEST_F(ScaleDefLevels, PosesMayShareAName) {
    EXPECT_THAT(chainOfText({.sections = pose("a", guide("1")) + pose("a", guide("2"))}), IsEmpty());
    ASSERT_EQ(definition.poses.count(), 2);
    EXPECT_EQ(definition.poses[0]->name, "a");
    EXPECT_EQ(definition.poses[1]->name, "a");
}

} // namespace
} // namespace quillon
