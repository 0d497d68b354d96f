#include "quillon/tool/ScalingReport.h"

#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemReport.h"

#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>

namespace quillon {
namespace {

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

TEST(IsInfiniteLimit, TakesEitherInfinityForNone) {
    EXPECT_TRUE(isInfiniteLimit(literal(infinity)));
    EXPECT_TRUE(isInfiniteLimit(literal(-infinity)));
    EXPECT_FALSE(isInfiniteLimit(literal(0)));
    EXPECT_FALSE(isInfiniteLimit(literal(3.4e38F)));
    EXPECT_FALSE(isInfiniteLimit(scaled(1, infinity)));
    EXPECT_FALSE(isInfiniteLimit({.value = infinity, .offset = 1}));
}

TEST(ScaleMappingText, FollowsTheFormOfTheMapping) {
    const auto combination = [](const ScaleFloat& constant,
                                std::initializer_list<LqLinearTerm<ScaleFloat>> terms) {
        LqBasicVarMapping<ScaleFloat> mapping(-1);
        mapping.constant = constant;
        for (const LqLinearTerm<ScaleFloat>& term : terms) {
            mapping.appendTerm(term.sysVar, term.coefficient);
        }
        return scaleMappingText(mapping);
    };
    EXPECT_TRUE(scaleMappingText(LqBasicVarMapping<ScaleFloat>(0)).isNull());
    EXPECT_EQ(scaleMappingText(LqBasicVarMapping<ScaleFloat>(12)), "s12");
    EXPECT_EQ(combination(literal(0), {}), "");
    EXPECT_EQ(combination(literal(0.5F), {}), "0.5");
    EXPECT_EQ(combination(offsetFrom(2, 0), {}), "[m2 0]");
    EXPECT_EQ(combination(literal(0.5F), {{3, literal(-2)}, {4, literal(1)}}), "0.5+-2*s3+s4");
    EXPECT_EQ(combination(literal(0), {{3, literal(1)}, {4, scaled(1, 1)}}), "s3+[m1 0]*s4");
    // An offset without a measured constant does not show, but the number is then neither the literal 0
    // nor 1.
    EXPECT_EQ(combination({.offset = 5}, {{3, {.value = 1, .offset = 5}}}), "0+1*s3");
}

} // namespace
} // namespace quillon
