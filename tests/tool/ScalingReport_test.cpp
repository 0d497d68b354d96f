#include "quillon/tool/ScalingReport.h"

#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemReport.h"
#include "tests/support/StatusChain.h"
#include "tests/tool/WrittenText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using test::written;

using ScaleFloat = LqScaleDefData::ScaleFloat;

constexpr float infinity = std::numeric_limits<float>::max();

ScaleFloat literal(float value) {
    return {.value = value};
}

ScaleFloat offsetFrom(std::int32_t measuredId, float offset) {
    return {.offset = offset, .measuredId = measuredId};
}

ScaleFloat scaled(std::int32_t measuredId, float factor) {
    return {.value = factor, .measuredId = measuredId};
}

std::string reportOf(const LqProblemBundle& bundle) {
    std::ostringstream out;
    std::ostringstream messages;
    writeProblemReport(out, messages, bundle);
    EXPECT_EQ(messages.str(), "");
    return out.str();
}

/// The lines behind "scaling_params" of a scale definition that has nothing else.
std::string linesBehindParameters(const LqProblemBundle& bundle) {
    const std::string report = reportOf(bundle);
    const std::string parameters = "scaling_params scale_real_count=0 default_real_weight=0\n";
    EXPECT_EQ(report.substr(0, parameters.size()), parameters);
    return report.substr(parameters.size());
}

TEST(ScalingReport, OfAnEmptyScaleDefinitionIsEmpty) {
    EXPECT_EQ(reportOf(LqProblemBundle()), "");
}

TEST(ScalingReport, OfARealCountAloneIsTheParameters) {
    LqProblemBundle bundle;
    bundle.scaleDef.realCount = 40;
    bundle.scaleDef.defaultRealWeight = 0.5F;
    EXPECT_EQ(reportOf(bundle), "scaling_params scale_real_count=40 default_real_weight=0.5\n");
}

TEST(ScalingReport, PrintsScalingVariablesWithTheLimitsThatAreFinite) {
    LqProblemBundle bundle;
    LqScaleDefData::ScaleVar var;
    var.name = "height";
    var.description = LmStr();
    var.lower = literal(0.5F);
    var.upper = literal(2.5F);
    bundle.scaleDef.scaleVars.append(var);
    var.name = "girth";
    var.description = "of the \"chest\"";
    var.lower = literal(infinity);
    var.upper = literal(-infinity);
    bundle.scaleDef.scaleVars.append(var);
    var.description = "";
    var.lower = offsetFrom(3, 2);
    var.upper = scaled(4, infinity);
    bundle.scaleDef.scaleVars.append(var);
    EXPECT_EQ(reportOf(bundle),
              "scaling_var s1 name=height lower_limit=0.5 upper_limit=2.5\n"
              "scaling_var s2 name=girth description=\"of the \"chest\"\"\n"
              "scaling_var s3 name=girth description=\"\" lower_limit=[m3 2] upper_limit=[m4 0]\n"
              "scaling_params scale_real_count=0 default_real_weight=0\n");
}

TEST(ScalingReport, PrintsLimitOverridesByTheirValueWithoutMeasuredData) {
    struct Case {
        ScaleFloat lower;
        ScaleFloat upper;
        const char* limits;
    };
    const Case cases[] = {
        {literal(-infinity), literal(infinity), ""},
        {literal(infinity), literal(-infinity), " lower_limit=3.40282e+38 upper_limit=-3.40282e+38"},
        {literal(-0.1F), literal(0), " lower_limit=-0.1 upper_limit=0"},
        {scaled(3, 2), offsetFrom(2, 0.5F), " lower_limit=[m3 0] upper_limit=[m2 0.5]"},
        {offsetFrom(1, -infinity), offsetFrom(1, infinity), ""},
    };
    for (const Case& c : cases) {
        LqProblemBundle bundle;
        LqScaleDefData::LimitOverride_t limits;
        limits.sysVarId = 3;
        limits.lower = c.lower;
        limits.upper = c.upper;
        bundle.scaleDef.limitOverrides.append(limits);
        EXPECT_EQ(linesBehindParameters(bundle),
                  "scaling_sys_var_limit_override sys_var=v3" + std::string(c.limits) + "\n");
    }
}

TEST(ScalingReport, PrintsThreeLinesForEachBodyScaling) {
    LqProblemBundle bundle;
    LqScaleDefData::BodyParams_t body;
    body.bodyName = "Thigh";
    body.firstAxis = {2, 0, 0};
    body.secondAxis = {0, 0.5F, 0};
    body.thirdAxis = {0, 0, 1};
    body.scale[0].id = 1;
    body.scale[1].id = -1;
    bundle.scaleDef.bodyParams.append(body);
    body.bodyName = LmStr();
    bundle.scaleDef.bodyParams.append(body);
    EXPECT_EQ(linesBehindParameters(bundle), "body_scaling_transform body=Thigh direction=(2 0 0) value=s1\n"
                                             "body_scaling_transform body=Thigh direction=(0 0.5 0) value=\n"
                                             "body_scaling_transform body=Thigh direction=(0 0 1)\n"
                                             "body_scaling_transform direction=(2 0 0) value=s1\n"
                                             "body_scaling_transform direction=(0 0.5 0) value=\n"
                                             "body_scaling_transform direction=(0 0 1)\n");
}

TEST(ScalingReport, PrintsTheRelativeBodyOfATemporaryMarkerOnlyWhenItIsAnother) {
    LqProblemBundle bundle;
    LqScaleDefData::TempData_t temp;
    temp.id = 41;
    temp.attachedBody = "Thigh";
    temp.weight = 1;
    temp.position = {literal(0), offsetFrom(3, 0.5F), literal(0.1F)};
    for (const LmStr& relative : {LmStr(), LmStr("Thigh"), LmStr("Shin"), LmStr("")}) {
        temp.relativeBody = relative;
        bundle.scaleDef.temps.append(temp);
    }
    EXPECT_EQ(linesBehindParameters(bundle),
              "temp_marker id=41 body=Thigh weight=1 local=(0 [m3 0.5] 0.1)\n"
              "temp_marker id=41 body=Thigh weight=1 local=(0 [m3 0.5] 0.1)\n"
              "temp_marker id=41 body=Thigh relative_body=Shin weight=1 local=(0 [m3 0.5] 0.1)\n"
              "temp_marker id=41 body=Thigh relative_body= weight=1 local=(0 [m3 0.5] 0.1)\n");
}

TEST(ScalingReport, PrintsTheDirectionsOfVectorConstraintsAndTheirMagnitudesAsAWeight) {
    LqProblemBundle bundle;
    LqScaleDefData::GlobalConst_t constraint;
    constraint.bodyName = "Pelvis";
    constraint.local = {3, 0, 4};
    constraint.global = {0, -2, 0};
    bundle.scaleDef.globalConstraints.append(constraint);
    EXPECT_EQ(linesBehindParameters(bundle),
              "scaling_vector_constraint body=Pelvis local_direction=(0.6 0 0.8) "
              "global_direction=(0 -1 0) weight=10\n");
}

TEST(ScalingReport, PrintsAZeroVectorAsAStreamPrintsNaN) {
    LqProblemBundle bundle;
    LqScaleDefData::GlobalConst_t constraint;
    constraint.bodyName = "Pelvis";
    constraint.global = {0, 1, 0};
    bundle.scaleDef.globalConstraints.append(constraint);
    volatile float zero = 0.0F;
    std::ostringstream nan;
    nan << static_cast<double>(zero / zero);
    EXPECT_EQ(linesBehindParameters(bundle), "scaling_vector_constraint body=Pelvis local_direction=(" +
                                                 nan.str() + " " + nan.str() + " " + nan.str() +
                                                 ") global_direction=(0 1 0) weight=0\n");
}

TEST(ScalingReport, ComputesMagnitudesInSinglePrecision) {
    LqProblemBundle bundle;
    LqScaleDefData::GlobalConst_t constraint;
    constraint.bodyName = "Pelvis";
    constraint.local = {1e20F, 0, 0};
    constraint.global = {1, 0, 0};
    bundle.scaleDef.globalConstraints.append(constraint);
    EXPECT_EQ(linesBehindParameters(bundle), "scaling_vector_constraint body=Pelvis local_direction=(0 0 0) "
                                             "global_direction=(1 0 0) weight=inf\n");
}

TEST(ScalingReport, PrintsPositionConstraintsWithWhatIsNotZero) {
    LqProblemBundle bundle;
    // Position constraints alone do not count against emptiness.
    bundle.scaleDef.realCount = 1;
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "GLOBAL";
    constraint.parent = "GLOBAL";
    bundle.scaleDef.positionConstraints.append(constraint);
    constraint.body = "Thigh";
    constraint.parent = "Pelvis";
    constraint.weight = 2;
    constraint.localPosition = {0, 0.1F, 0};
    constraint.baseTranslation = {0, 0, 0.9F};
    constraint.transformOrder[0] = 6;
    constraint.mapping[0].id = 2;
    constraint.mapping[4].id = -1;
    constraint.mapping[4].constant = literal(0.25F);
    bundle.scaleDef.positionConstraints.append(constraint);
    EXPECT_EQ(reportOf(bundle),
              "scaling_params scale_real_count=1 default_real_weight=0\n"
              "scaling_position_constraint body=GLOBAL weight=1\n"
              "scaling_position_constraint body=Thigh parent_body=Pelvis weight=2 local=(0 0.1 0) "
              "base_transform=(tz=0.9) transforms=(rz=s2 ry=0.25)\n");
}

TEST(ScalingReport, TurnsTheOrderOfConstraintsRoundWithinPoses) {
    LqProblemBundle bundle;
    LqScaleDefData& scaleDef = bundle.scaleDef;
    scaleDef.realWeightOverrides.append({.markerId = 1, .weight = 2});
    scaleDef.artificialWeightOverrides.append({.firstMarkerId = 5, .secondMarkerId = 6, .weight = 0.5F});
    LqScaleDefData::LimitOverride_t limits;
    limits.sysVarId = 7;
    limits.lower = literal(-1);
    limits.upper = literal(1);
    LqScaleDefData::GlobalConst_t vector;
    vector.bodyName = "A";
    vector.local = {1, 0, 0};
    vector.global = {0, 1, 0};
    LqScaleDefData::PositionConst_t position;
    position.body = "B";
    position.parent = "GLOBAL";
    scaleDef.limitOverrides.append(limits);
    scaleDef.globalConstraints.append(vector);
    scaleDef.positionConstraints.append(position);
    auto* const pose = new LqScaleDefData::Pose_t;
    scaleDef.poses.append(pose);
    pose->name = "Standing";
    pose->limitOverrides.append(limits);
    pose->globalConstraints.append(vector);
    pose->positionConstraints.append(position);
    pose->sysVarGuideOverrides.append({.sysVarId = 1, .value = 2, .weight = 3});
    auto* const empty = new LqScaleDefData::Pose_t;
    scaleDef.poses.append(empty);
    empty->name = "Empty";
    scaleDef.poses.append(nullptr);
    EXPECT_EQ(
        linesBehindParameters(bundle),
        "scaling_real_weight_override marker_id=1 weight=2\n"
        "scaling_artificial_weight_override marker_id=5 other_marker_id=6 weight=0.5\n"
        "scaling_sys_var_limit_override sys_var=v7 lower_limit=-1 upper_limit=1\n"
        "scaling_position_constraint body=B weight=1\n"
        "scaling_vector_constraint body=A local_direction=(1 0 0) global_direction=(0 1 0) weight=1\n"
        "scaling_pose Standing\n"
        "scaling_sys_var_limit_override pose=Standing sys_var=v7 lower_limit=-1 upper_limit=1\n"
        "scaling_vector_constraint pose=Standing body=A local_direction=(1 0 0) global_direction=(0 1 0) "
        "weight=1\n"
        "scaling_position_constraint pose=Standing body=B weight=1\n"
        "scaling_pose Empty\n");
}

TEST(ScalingReport, StandsBehindTheFirstHalf) {
    LqProblemBundle bundle;
    LqPDDArtificialMarker pair;
    pair.id = 1;
    pair.otherId = 2;
    bundle.problemDef.addArtificialMarker(pair);
    bundle.scaleDef.realCount = 1;
    EXPECT_EQ(reportOf(bundle), "artificial_pair id=1 other_id=2 weight=0\n"
                                "artificial_marker id=1 body=\n"
                                "artificial_marker id=2 body=\n"
                                "scaling_params scale_real_count=1 default_real_weight=0\n");
}

// --- The record printers by themselves ---------------------------------------------------------------------

LmDArray<LqScaleDefData::LimitOverride_t>
limitOverrides(std::initializer_list<LqScaleDefData::LimitOverride_t> records) {
    LmDArray<LqScaleDefData::LimitOverride_t> overrides;
    for (const LqScaleDefData::LimitOverride_t& record : records) {
        overrides.append(record);
    }
    return overrides;
}

TEST(WriteLimitOverrides, PutsThePoseBehindTheFirstWordUnlessItsNameIsNull) {
    const auto overrides =
        limitOverrides({{3, literal(-0.1F), literal(infinity)}, {12, literal(0), literal(1)}});
    const auto textIn = [&overrides](const LmStr& poseName) {
        return written([&](ReportText& out) { writeLimitOverrides(out, poseName, overrides); });
    };
    EXPECT_EQ(textIn(LmStr()), "scaling_sys_var_limit_override sys_var=v3 lower_limit=-0.1\n"
                               "scaling_sys_var_limit_override sys_var=v12 lower_limit=0 upper_limit=1\n");
    EXPECT_EQ(textIn("Default"),
              "scaling_sys_var_limit_override pose=Default sys_var=v3 lower_limit=-0.1\n"
              "scaling_sys_var_limit_override pose=Default sys_var=v12 lower_limit=0 upper_limit=1\n");
    EXPECT_EQ(textIn(""), "scaling_sys_var_limit_override pose= sys_var=v3 lower_limit=-0.1\n"
                          "scaling_sys_var_limit_override pose= sys_var=v12 lower_limit=0 upper_limit=1\n");
}

TEST(WriteLimitOverrides, ComparesEachLimitWithTheInfinityOnItsOwnSide) {
    const float beyond = std::numeric_limits<float>::infinity();
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const struct {
        ScaleFloat lower;
        ScaleFloat upper;
        const char* limits;
    } cases[] = {
        // The greatest reals themselves, and the next ones within them.
        {literal(-infinity), literal(infinity), ""},
        {literal(-3.40282e38F), literal(3.40282e38F), " lower_limit=-3.40282e+38 upper_limit=3.40282e+38"},
        {literal(infinity), literal(-infinity), " lower_limit=3.40282e+38 upper_limit=-3.40282e+38"},
        {literal(-beyond), literal(beyond), ""},
        {literal(beyond), literal(-beyond), " lower_limit=inf upper_limit=-inf"},
        {literal(notANumber), literal(notANumber), ""},
        // A reference counts as its offset, or as 0 behind a factor, whatever the factor is.
        {scaled(3, 2), scaled(3, 2), " lower_limit=[m3 0] upper_limit=[m3 0]"},
        {scaled(3, -infinity), scaled(3, infinity), " lower_limit=[m3 0] upper_limit=[m3 0]"},
        {offsetFrom(3, -infinity), offsetFrom(3, infinity), ""},
        {offsetFrom(3, infinity), offsetFrom(3, -infinity),
         " lower_limit=[m3 3.40282e+38] upper_limit=[m3 -3.40282e+38]"},
        {offsetFrom(3, -1.5F), offsetFrom(12, 0), " lower_limit=[m3 -1.5] upper_limit=[m12 0]"},
    };
    for (const auto& [lower, upper, limits] : cases) {
        const auto overrides = limitOverrides({{-1, lower, upper}});
        EXPECT_EQ(written([&](ReportText& out) { writeLimitOverrides(out, LmStr(), overrides); }),
                  "scaling_sys_var_limit_override sys_var=v-1" + std::string(limits) + "\n");
    }
}

TEST(WriteLimitOverrides, WritesNothingWithoutRecords) {
    EXPECT_EQ(written([](ReportText& out) { writeLimitOverrides(out, "Default", {}); }), "");
}

TEST(WriteVectorConstraints, WritesUnitDirectionsAndTheProductOfTheMagnitudes) {
    LmDArray<LqScaleDefData::GlobalConst_t> constraints;
    constraints.append({"Pelvis", {1, 0, 0}, {0, 1, 0}});
    // As the reader leaves them, with one magnitude: 3, whose square is the weight.
    constraints.append({"left foot", {2, -2, 1}, {0, 0, -3}});
    EXPECT_EQ(written([&](ReportText& out) { writeVectorConstraints(out, "Default", constraints); }),
              "scaling_vector_constraint pose=Default body=Pelvis local_direction=(1 0 0) "
              "global_direction=(0 1 0) weight=1\n"
              "scaling_vector_constraint pose=Default body=left foot local_direction=(0.666667 -0.666667 "
              "0.333333) global_direction=(0 0 -1) weight=9\n");
    EXPECT_EQ(written([&](ReportText& out) { writeVectorConstraints(out, LmStr(), constraints); }),
              "scaling_vector_constraint body=Pelvis local_direction=(1 0 0) "
              "global_direction=(0 1 0) weight=1\n"
              "scaling_vector_constraint body=left foot local_direction=(0.666667 -0.666667 "
              "0.333333) global_direction=(0 0 -1) weight=9\n");
    EXPECT_EQ(written([](ReportText& out) { writeVectorConstraints(out, "Default", {}); }), "");
}

std::string positionText(const LmStr& poseName, const LqScaleDefData::PositionConst_t& constraint) {
    return written([&](ReportText& out) { writePositionConstraint(out, poseName, constraint); });
}

TEST(WritePositionConstraint, LeavesOutWhatIsZeroOrTheGlobalFrame) {
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "Thigh";
    constraint.parent = "GLOBAL";
    EXPECT_EQ(positionText(LmStr(), constraint), "scaling_position_constraint body=Thigh weight=1\n");
    EXPECT_EQ(positionText("Default", constraint),
              "scaling_position_constraint pose=Default body=Thigh weight=1\n");
    constraint.parent = "Pelvis";
    constraint.localPosition = {0, 0.1F, 0};
    constraint.mapping[1].id = 1;
    EXPECT_EQ(positionText(LmStr(), constraint),
              "scaling_position_constraint body=Thigh parent_body=Pelvis weight=1 local=(0 0.1 0) "
              "transforms=(ty=s1)\n");
}

TEST(WritePositionConstraint, NamesTheGlobalFrameAsABodyButNotAsAParent) {
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "GLOBAL";
    constraint.parent = "global";
    constraint.weight = 0;
    EXPECT_EQ(positionText(LmStr(), constraint),
              "scaling_position_constraint body=GLOBAL parent_body=global weight=0\n");
    constraint.parent = "";
    EXPECT_EQ(positionText(LmStr(), constraint),
              "scaling_position_constraint body=GLOBAL parent_body= weight=0\n");
}

TEST(WritePositionConstraint, WritesTheBaseAsTranslationAndAnglesAboutTheAxes) {
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "Thigh";
    constraint.parent = "GLOBAL";
    constraint.baseTranslation = {0.25F, 0, -2};
    // A quarter turn about x takes y to z.
    constraint.baseRotation = {1, 0, 0, 0, 0, 1, 0, -1, 0};
    EXPECT_EQ(positionText("P", constraint), "scaling_position_constraint pose=P body=Thigh weight=1 "
                                             "base_transform=(tx=0.25 tz=-2 rx=1.5708)\n");
}

TEST(WritePositionConstraint, WritesTheTransformsByTheirOrder) {
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "Thigh";
    constraint.parent = "GLOBAL";
    const int order[] = {6, 6, 5, 1, 2, 3};
    std::copy(std::begin(order), std::end(order), constraint.transformOrder.begin());
    constraint.mapping[0].id = 4;
    constraint.mapping[1].id = -1;
    constraint.mapping[3].id = -1;
    constraint.mapping[3].constant = offsetFrom(2, 0.5F);
    constraint.mapping[3].appendTerm(4, literal(0));
    EXPECT_EQ(positionText(LmStr(), constraint), "scaling_position_constraint body=Thigh weight=1 "
                                                 "transforms=(rz=s4 rz= tx=[m2 0.5]+0*s4)\n");
}

TEST(WritePositionConstraint, CallsATransformThatThereIsNotUnknown) {
    LqScaleDefData::PositionConst_t constraint;
    constraint.body = "Thigh";
    constraint.parent = "GLOBAL";
    constraint.transformOrder[2] = 9;
    testing::internal::CaptureStderr();
    EXPECT_EQ(positionText(LmStr(), constraint), "scaling_position_constraint body=Thigh weight=1\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    constraint.mapping[2].id = 1;
    testing::internal::CaptureStderr();
    EXPECT_EQ(positionText(LmStr(), constraint),
              "scaling_position_constraint body=Thigh weight=1 transforms=(unknown=s1)\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "invalid transform_id 9\n");
}

TEST(ScalingReport, NeverPrintsGuidesAndTestsNothing) {
    test::CleanStatus cleanStatus;
    pushWarning("before");
    LqProblemBundle bundle;
    bundle.scaleDef.sysVarGuideOverrides.append({.sysVarId = 1, .value = 2, .weight = 3});
    EXPECT_EQ(reportOf(bundle), "") << "guides alone do not count against emptiness";
    bundle.scaleDef.realCount = 1;
    // Bodies, variables and measured constants that nobody has.
    bundle.scaleDef.temps.append({.id = 2,
                                  .position = {offsetFrom(99, 1), literal(0), literal(0)},
                                  .attachedBody = "nobody",
                                  .relativeBody = "nobody",
                                  .weight = 1});
    bundle.scaleDef.limitOverrides.append({77, literal(2), literal(1)});
    EXPECT_EQ(reportOf(bundle), "scaling_params scale_real_count=1 default_real_weight=0\n"
                                "scaling_sys_var_limit_override sys_var=v77 lower_limit=2 upper_limit=1\n"
                                "temp_marker id=2 body=nobody weight=1 local=([m99 1] 0 0)\n");
    EXPECT_EQ(test::takeChain(), test::StatusChain{test::warning("before")});
}

TEST(ScalingReport, PrintsABodyScalingWithoutANameAndOneWithAnEmptyName) {
    LqProblemBundle bundle;
    LqScaleDefData::BodyParams_t body;
    for (const LmStr& name : {LmStr(), LmStr("")}) {
        body.bodyName = name;
        bundle.scaleDef.bodyParams.append(body);
    }
    EXPECT_EQ(linesBehindParameters(bundle), "body_scaling_transform direction=(0 0 0)\n"
                                             "body_scaling_transform direction=(0 0 0)\n"
                                             "body_scaling_transform direction=(0 0 0)\n"
                                             "body_scaling_transform body= direction=(0 0 0)\n"
                                             "body_scaling_transform body= direction=(0 0 0)\n"
                                             "body_scaling_transform body= direction=(0 0 0)\n");
}

TEST(IsInfiniteLimit, TakesEitherInfinityForNone) {
    EXPECT_TRUE(isInfiniteLimit(literal(infinity)));
    EXPECT_TRUE(isInfiniteLimit(literal(-infinity)));
    EXPECT_FALSE(isInfiniteLimit(literal(0)));
    EXPECT_FALSE(isInfiniteLimit(literal(3.4e38F)));
    EXPECT_FALSE(isInfiniteLimit(scaled(1, infinity)));
    EXPECT_FALSE(isInfiniteLimit({.value = infinity, .offset = 1}));
}

TEST(WriteScaleMappingText, FollowsTheFormOfTheMapping) {
    const auto textOf = [](const LqBasicVarMapping<ScaleFloat>& mapping) {
        return written([&mapping](ReportText& out) { writeScaleMappingText(out, mapping); });
    };
    const auto combination = [&textOf](const ScaleFloat& constant,
                                       std::initializer_list<LqLinearTerm<ScaleFloat>> terms) {
        LqBasicVarMapping<ScaleFloat> mapping(-1);
        mapping.constant = constant;
        for (const LqLinearTerm<ScaleFloat>& term : terms) {
            mapping.appendTerm(term.sysVar, term.coefficient);
        }
        return textOf(mapping);
    };
    EXPECT_EQ(textOf(LqBasicVarMapping<ScaleFloat>(0)), "");
    EXPECT_EQ(textOf(LqBasicVarMapping<ScaleFloat>(12)), "s12");
    EXPECT_EQ(combination(literal(0), {}), "");
    EXPECT_EQ(combination(literal(0.5F), {}), "0.5");
    EXPECT_EQ(combination(offsetFrom(2, 0), {}), "[m2 0]");
    EXPECT_EQ(combination(literal(0.5F), {{3, literal(-2)}, {4, literal(1)}}), "0.5+-2*s3+s4");
    EXPECT_EQ(combination(literal(0), {{3, literal(1)}, {4, scaled(1, 1)}}), "s3+[m1 0]*s4");
    EXPECT_EQ(combination(literal(-0.0F), {{3, literal(0)}}), "0*s3");
    EXPECT_EQ(combination(offsetFrom(2, -0.5F), {{3, offsetFrom(2, 1)}}), "[m2 -0.5]+[m2 1]*s3");
    // An offset without a measured constant does not show, but the number is then neither the literal 0
    // nor 1.
    EXPECT_EQ(combination({.offset = 5}, {{3, {.value = 1, .offset = 5}}}), "0+1*s3");
}

} // namespace
} // namespace quillon
