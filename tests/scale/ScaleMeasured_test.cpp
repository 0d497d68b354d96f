#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using scaleDef::ScaleFloat;
using scaleDef::ScaleMapping;
using test::error;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

ScaleFloat literal(float value) {
    return {value, 0, 0};
}

ScaleFloat offsetOf(std::int32_t measuredId, float offset) {
    return {0, offset, measuredId};
}

StatusChain unknownId(int id, int count) {
    return {error("Invalid measured id " + std::to_string(id) + ".  There are only " + std::to_string(count) +
                  " measured constants in the measured data.")};
}

/// Measured constants 3 and 10.
class ValidateMeasured : public testing::Test {
protected:
    ValidateMeasured() {
        measured.append(3);
        measured.append(10);
    }

    void addLimits(std::int32_t sysVarId, ScaleFloat lower, ScaleFloat upper) {
        definition.limitOverrides.append({sysVarId, lower, upper});
    }

    void addScaleVar(ScaleFloat lower, ScaleFloat upper) {
        scaleDef::ScaleVar scaleVar;
        scaleVar.lower = lower;
        scaleVar.upper = upper;
        definition.scaleVars.append(scaleVar);
    }

    StatusChain chain(const LqMeasuredData* data) const {
        definition.validateMeasured(data);
        return takeChain();
    }

    test::CleanStatus cleanStatus;
    LqMeasuredData measured;
    LqScaleDefData definition;
};

TEST_F(ValidateMeasured, PassesWithoutDataWhenNothingRefersToIt) {
    addLimits(1, literal(-1), literal(1));
    addScaleVar(literal(2), literal(1));
    definition.bodyParams.append({});
    definition.bodyParams[0].scale[0] = ScaleMapping(-1);
    EXPECT_THAT(chain(nullptr), IsEmpty());
}

TEST_F(ValidateMeasured, PassesInfiniteLimits) {
    addLimits(1, literal(noLowerLimit), literal(noUpperLimit));
    EXPECT_THAT(chain(nullptr), IsEmpty());
    EXPECT_THAT(chain(&measured), IsEmpty());
}

TEST_F(ValidateMeasured, PassesLimitsThatAreEqual) {
    addLimits(1, offsetOf(1, 1), literal(4));
    EXPECT_THAT(chain(&measured), IsEmpty());
}

TEST_F(ValidateMeasured, ReportsALowerLimitAboveTheUpperOne) {
    addLimits(8, literal(0), literal(1));
    addLimits(7, offsetOf(1, 1), literal(2));
    addLimits(6, offsetOf(9, 0), literal(2));
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 7.")));
}

TEST_F(ValidateMeasured, ReportsAReferenceWithoutData) {
    addLimits(7, literal(0), offsetOf(1, 0));
    EXPECT_THAT(
        chain(nullptr),
        ElementsAre(error("No measured data has been specified, but the scaling definition references "
                          "measured constants.")));
}

TEST_F(ValidateMeasured, LooksAtAnUpperLimitFirst) {
    addLimits(7, offsetOf(3, 0), offsetOf(4, 0));
    EXPECT_EQ(chain(&measured), unknownId(4, 2));
    definition.limitOverrides[0].upper = literal(1);
    EXPECT_EQ(chain(&measured), unknownId(3, 2));
}

TEST_F(ValidateMeasured, LooksAtTheLowerLimitOfAScalingVariableFirst) {
    addScaleVar(offsetOf(3, 0), offsetOf(4, 0));
    EXPECT_EQ(chain(&measured), unknownId(3, 2));
    definition.scaleVars[0].lower = offsetOf(2, 0);
    EXPECT_EQ(chain(&measured), unknownId(4, 2));
}

TEST_F(ValidateMeasured, DoesNotCompareTheLimitsOfAScalingVariable) {
    addScaleVar(offsetOf(2, 0), offsetOf(1, 0));
    EXPECT_THAT(chain(&measured), IsEmpty());
}

TEST_F(ValidateMeasured, LooksAtMappingsOfScaledBodiesInOrder) {
    definition.bodyParams.append({});
    definition.bodyParams.append({});
    ScaleMapping& mapping = definition.bodyParams[1].scale[2];
    mapping.constant = offsetOf(5, 0);
    mapping.appendTerm(1, offsetOf(6, 0));
    mapping.appendTerm(2, offsetOf(7, 0));
    EXPECT_EQ(chain(&measured), unknownId(5, 2));
    mapping.constant = offsetOf(2, 0);
    EXPECT_EQ(chain(&measured), unknownId(6, 2));
    (*mapping.termList().begin())->coefficient = literal(1);
    EXPECT_EQ(chain(&measured), unknownId(7, 2));
}

TEST_F(ValidateMeasured, LooksAtLimitsThenScalingVariablesThenScaledBodies) {
    definition.bodyParams.append({});
    definition.bodyParams[0].scale[1] = ScaleMapping(-1);
    definition.bodyParams[0].scale[1].constant = offsetOf(7, 0);
    addScaleVar(literal(0), offsetOf(6, 0));
    addLimits(1, literal(0), literal(1));
    addLimits(2, literal(1), literal(0));
    addLimits(3, literal(0), offsetOf(5, 0));
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 2.")));
    definition.limitOverrides[1].upper = literal(1);
    EXPECT_EQ(chain(&measured), unknownId(5, 2));
    definition.limitOverrides[2].upper = literal(1);
    EXPECT_EQ(chain(&measured), unknownId(6, 2));
    definition.scaleVars[0].upper = literal(1);
    EXPECT_EQ(chain(&measured), unknownId(7, 2));
    definition.bodyParams[0].scale[1].constant = literal(1);
    EXPECT_THAT(chain(&measured), IsEmpty());
}

TEST_F(ValidateMeasured, ReportsAReferenceWithoutDataWhereverItStands) {
    const StatusChain noData = {error("No measured data has been specified, but the scaling definition "
                                      "references measured constants.")};
    addLimits(7, offsetOf(1, 0), literal(9));
    EXPECT_EQ(chain(nullptr), noData);
    definition.limitOverrides = {};
    addScaleVar(offsetOf(1, 0), literal(1));
    EXPECT_EQ(chain(nullptr), noData);
    definition.scaleVars[0].lower = literal(0);
    definition.scaleVars[0].upper = {2, 0, 1};
    EXPECT_EQ(chain(nullptr), noData);
    definition.scaleVars = {};
    definition.bodyParams.append({});
    ScaleMapping& mapping = definition.bodyParams[0].scale[2];
    mapping = ScaleMapping(-1);
    mapping.constant = offsetOf(1, 0);
    EXPECT_EQ(chain(nullptr), noData);
    mapping.constant = literal(1);
    mapping.appendTerm(1, literal(1));
    mapping.appendTerm(1, offsetOf(1, 0));
    EXPECT_EQ(chain(nullptr), noData);
}

TEST_F(ValidateMeasured, ComparesLiteralsWithoutDataToo) {
    addLimits(7, literal(1), literal(0.5F));
    EXPECT_THAT(chain(nullptr), ElementsAre(error("Invalid limits for variable 7.")));
}

TEST_F(ValidateMeasured, ComparesInfiniteLimitsAsTheNumbersThatTheyAre) {
    addLimits(7, literal(noUpperLimit), literal(noUpperLimit));
    addLimits(8, literal(noLowerLimit), literal(noLowerLimit));
    EXPECT_THAT(chain(&measured), IsEmpty());
    addLimits(9, literal(noUpperLimit), literal(1e38F));
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 9.")));
}

TEST_F(ValidateMeasured, ComparesWhatTheScaleFormEvaluatesTo) {
    // 10 / 2 - 1
    addLimits(7, {2, 0, 2}, literal(4));
    EXPECT_THAT(chain(&measured), IsEmpty());
    definition.limitOverrides[0].upper = literal(3.9F);
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 7.")));
    // 10 / 5 - 1 is below 3 - 1.
    definition.limitOverrides[0] = {7, {1, 0, 1}, {5, 0, 2}};
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 7.")));
}

TEST_F(ValidateMeasured, NamesTheVariableByItsIdWhateverItIs) {
    addLimits(-1, literal(1), literal(0));
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable -1.")));
}

TEST_F(ValidateMeasured, LooksAtAllMappingsOfABodyInTheOrderOfItsAxes) {
    definition.bodyParams.append({});
    for (int axis = 2; axis >= 0; --axis) {
        ScaleMapping& mapping = definition.bodyParams[0].scale[static_cast<std::size_t>(axis)];
        mapping = ScaleMapping(-1);
        mapping.constant = offsetOf(11 + axis, 0);
        EXPECT_EQ(chain(&measured), unknownId(11 + axis, 2));
    }
}

TEST_F(ValidateMeasured, LeavesWhatStoodOnTheStatus) {
    pushError("before");
    EXPECT_THAT(chain(&measured), ElementsAre(error("before")));
    addLimits(7, literal(1), literal(0));
    pushError("before");
    EXPECT_THAT(chain(&measured), ElementsAre(error("Invalid limits for variable 7."), error("before")));
}

TEST_F(ValidateMeasured, PassesOverAMappingThatIsNotDriven) {
    definition.bodyParams.append({});
    definition.bodyParams[0].scale[0].constant = offsetOf(9, 0);
    definition.bodyParams[0].scale[0].terms.append(new LqLinearTerm<ScaleFloat>{1, offsetOf(9, 0)});
    EXPECT_EQ(definition.bodyParams[0].scale[0].id, 0);
    EXPECT_THAT(chain(&measured), IsEmpty());
    EXPECT_THAT(chain(nullptr), IsEmpty());
}

TEST_F(ValidateMeasured, PassesOverAConstantThatIsNotUsed) {
    definition.bodyParams.append({});
    definition.bodyParams[0].scale[0] = ScaleMapping(1);
    definition.bodyParams[0].scale[0].constant = offsetOf(9, 0);
    EXPECT_THAT(chain(&measured), IsEmpty());
}

TEST_F(ValidateMeasured, DoesNotLookElsewhere) {
    auto* const pose = new scaleDef::Pose_t;
    pose->limitOverrides.append({1, offsetOf(9, 0), offsetOf(9, 0)});
    definition.poses.append(pose);
    definition.temps.append({});
    definition.temps[0].position[0] = offsetOf(9, 0);
    definition.positionConstraints.append({});
    definition.positionConstraints[0].mapping[0] = ScaleMapping(-1);
    definition.positionConstraints[0].mapping[0].constant = offsetOf(9, 0);
    EXPECT_THAT(chain(&measured), IsEmpty());
}

} // namespace
} // namespace quillon
