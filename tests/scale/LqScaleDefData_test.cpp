#include "quillon/scale/LqScaleDefData.h"

#include "quillon/scale/ScaleArrays.h"
#include "tests/core/StrForms.h"
#include "tests/scale/ScaleSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using test::addPose;
using test::fill;
using test::globalConstraint;
using test::limit;
using test::literal;
using test::notANumber;
using test::positionConstraint;
using test::Scale;
using test::scaledBody;
using test::scaleVar;
using test::temp;
using testing::Each;
using testing::ElementsAre;

using Change = std::function<void(Scale&)>;

/// One change of each field that takes part in comparing definitions.
std::vector<Change> changesThatShow() {
    return {
        [](Scale& d) { d.realWeightOverrides[0].markerId = 1; },
        [](Scale& d) { d.realWeightOverrides[0].weight = 9; },
        [](Scale& d) {
            d.realWeightOverrides.append({3, 1});
        },
        [](Scale& d) { d.artificialWeightOverrides[0].firstMarkerId = 7; },
        [](Scale& d) { d.artificialWeightOverrides[0].secondMarkerId = 10; },
        [](Scale& d) { d.artificialWeightOverrides[0].weight = 9; },
        [](Scale& d) { d.limitOverrides[0].sysVarId = 9; },
        [](Scale& d) { d.limitOverrides[0].lower.value = 9; },
        [](Scale& d) { d.limitOverrides[0].upper.measuredId = 9; },
        [](Scale& d) { d.bodyParams[0].bodyName = "other"; },
        [](Scale& d) { d.bodyParams[0].firstAxis[2] = 9; },
        [](Scale& d) { d.bodyParams[0].secondAxis[1] = 9; },
        [](Scale& d) { d.bodyParams[0].thirdAxis[0] = 9; },
        [](Scale& d) { d.bodyParams[0].scale[0].id = 2; },
        [](Scale& d) { d.bodyParams[0].scale[1].constant.offset = 9; },
        [](Scale& d) { (*d.bodyParams[0].scale[1].termList().begin())->coefficient.measuredId = 9; },
        [](Scale& d) { (*d.bodyParams[0].scale[1].termList().begin())->sysVar = 9; },
        [](Scale& d) { d.bodyParams[0].scale[2].id = -1; },
        [](Scale& d) { d.temps[0].id = 9; },
        [](Scale& d) { d.temps[0].position[2].value = 9; },
        [](Scale& d) { d.temps[0].attachedBody = "other"; },
        [](Scale& d) { d.temps[0].relativeBody = "other"; },
        [](Scale& d) { d.temps[0].weight = 9; },
        [](Scale& d) { d.scaleVars[0].name = "other"; },
        [](Scale& d) { d.scaleVars[0].description = "other"; },
        [](Scale& d) { d.scaleVars[0].lower.value = 9; },
        [](Scale& d) { d.scaleVars[0].upper.offset = 9; },
        [](Scale& d) { std::swap(d.scaleVars[0], d.scaleVars[1]); },
        [](Scale& d) { d.globalConstraints[0].bodyName = "other"; },
        [](Scale& d) { d.globalConstraints[0].local[0] = 9; },
        [](Scale& d) { d.globalConstraints[0].global[1] = 9; },
        [](Scale& d) { d.realCount = 9; },
        [](Scale& d) { d.defaultRealWeight = 9; },
        [](Scale& d) { addPose(d, "other"); },
        [](Scale& d) { d.poses[0]->name = "other"; },
        [](Scale& d) { d.poses[0]->limitOverrides[0].sysVarId = 9; },
        [](Scale& d) { d.poses[0]->sysVarGuideOverrides[0].value = 9; },
        [](Scale& d) { d.poses[0]->globalConstraints[0].bodyName = "other"; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].transformOrder[0] = 9; },
        [](Scale& d) { (*d.poses[0]->positionConstraints[0].mapping[2].termList().begin())->sysVar = 9; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].body = "other"; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].parent = "other"; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].weight = 9; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].localPosition[0] = 9; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].baseTranslation[1] = 9; },
        [](Scale& d) { d.poses[0]->positionConstraints[0].baseRotation[8] = 9; },
        [](Scale& d) { d.sysVarGuideOverrides[0].sysVarId = 9; },
        [](Scale& d) { d.sysVarGuideOverrides[0].value = 9; },
        [](Scale& d) { d.sysVarGuideOverrides[0].weight = 9; },
        [](Scale& d) {
            d.sysVarGuideOverrides.append({9, 1, 1});
        },
    };
}

// --- Records ----------------------------------------------------------------------------------------------

TEST(ScaleRecords, ALimitOverrideStartsWithoutAVariable) {
    EXPECT_EQ(Scale::LimitOverride_t().sysVarId, -1);
    EXPECT_EQ(Scale::LimitOverride_t().lower, literal(0));
    EXPECT_EQ(Scale::LimitOverride_t().upper, literal(0));
}

TEST(ScaleRecords, APositionConstraintStartsInPlainOrderFixedAtZero) {
    const Scale::PositionConst_t constraint;
    EXPECT_THAT(std::vector<int>(constraint.transformOrder.begin(), constraint.transformOrder.end()),
                ElementsAre(1, 2, 3, 4, 5, 6));
    ASSERT_EQ(constraint.mapping.count(), 6);
    for (const scaleDef::ScaleMapping& mapping : constraint.mapping) {
        EXPECT_EQ(mapping.id, 0);
        EXPECT_EQ(mapping.constant, literal(0));
        EXPECT_EQ(mapping.terms.count(), 0);
    }
    EXPECT_EQ(constraint.body, "");
    EXPECT_EQ(constraint.parent, "");
    EXPECT_EQ(constraint.weight, 1.0F);
    EXPECT_THAT(constraint.localPosition, Each(0.0F));
    EXPECT_THAT(constraint.baseTranslation, Each(0.0F));
    EXPECT_THAT(constraint.baseRotation, ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 1));
}

TEST(ScaleRecords, OwnTheirStringsAndTermsInArraysThatGrowAndShrink) {
    LmDArray<Scale::BodyParams_t> bodies;
    Scale::BodyParams_t body = scaledBody("a body with a long enough name to need a block of its own");
    body.scale[2].appendTerm(1, literal(2));
    for (int i = 0; i < 50; ++i) {
        bodies.append(body);
    }
    bodies.insert(10, 5, bodies[3]);
    LmDArray<Scale::BodyParams_t> other = bodies;
    other = LmDArray<Scale::BodyParams_t>(3);
    other = bodies;
    ASSERT_EQ(other.count(), 55);
    for (const Scale::BodyParams_t& each : other) {
        EXPECT_EQ(each, body);
    }
}

// --- The whole object -------------------------------------------------------------------------------------

TEST(LqScaleDefData, StartsEmpty) {
    const Scale definition;
    EXPECT_TRUE(definition.isEmpty());
    EXPECT_EQ(definition.poses.count() + definition.sysVarGuideOverrides.count() +
                  definition.positionConstraints.count(),
              0);
    EXPECT_EQ(definition, Scale());
}

TEST(LqScaleDefData, IsNotEmptyWithAnyOneThing) {
    const Change things[] = {
        [](Scale& d) { addPose(d, "standing"); },
        [](Scale& d) { d.poses.append(nullptr); },
        [](Scale& d) { d.realWeightOverrides.append({}); },
        [](Scale& d) { d.artificialWeightOverrides.append({}); },
        [](Scale& d) { d.limitOverrides.append({}); },
        [](Scale& d) { d.bodyParams.append({}); },
        [](Scale& d) { d.temps.append({}); },
        [](Scale& d) { d.scaleVars.append({}); },
        [](Scale& d) { d.globalConstraints.append({}); },
        [](Scale& d) { d.realCount = 1; },
        [](Scale& d) { d.realCount = -1; },
        [](Scale& d) { d.defaultRealWeight = 0.5F; },
        [](Scale& d) { d.defaultRealWeight = notANumber; },
    };
    int number = 0;
    for (const Change& add : things) {
        Scale definition;
        add(definition);
        EXPECT_FALSE(definition.isEmpty()) << "thing " << number;
        ++number;
    }
}

TEST(LqScaleDefData, CountsAsEmptyWithPositionConstraintsAndGuideOverridesOnly) {
    Scale definition;
    definition.positionConstraints.append(positionConstraint("pelvis"));
    EXPECT_TRUE(definition.isEmpty());
    definition.sysVarGuideOverrides.append({1, 2, 3});
    EXPECT_TRUE(definition.isEmpty());
}

TEST(LqScaleDefData, EqualsItsCopyUntilEitherChanges) {
    Scale original;
    fill(original);
    EXPECT_EQ(original, original);
    int number = 0;
    for (const Change& change : changesThatShow()) {
        Scale copy(original);
        EXPECT_TRUE(copy == original);
        change(copy);
        EXPECT_FALSE(copy == original) << "change " << number;
        EXPECT_FALSE(original == copy) << "change " << number;
        ++number;
    }
}

TEST(LqScaleDefData, IsUnequalToOneWithAShorterArray) {
    const Change shortenings[] = {
        [](Scale& d) { d.realWeightOverrides.setLength(0); },
        [](Scale& d) { d.artificialWeightOverrides.setLength(0); },
        [](Scale& d) { d.limitOverrides.setLength(0); },
        [](Scale& d) { d.bodyParams = LmDArray<Scale::BodyParams_t>(); },
        [](Scale& d) { d.temps = LmDArray<Scale::TempData_t>(); },
        [](Scale& d) { scaleDef::removeAt(d.scaleVars, 1); },
        [](Scale& d) { d.globalConstraints = LmDArray<Scale::GlobalConst_t>(); },
        [](Scale& d) { d.removePose("standing"); },
        [](Scale& d) { d.sysVarGuideOverrides.setLength(0); },
        [](Scale& d) { d.bodyParams[0].scale[1].removeTerms({2}); },
        [](Scale& d) { d.poses[0]->limitOverrides.setLength(0); },
        [](Scale& d) { d.poses[0]->sysVarGuideOverrides.setLength(0); },
        [](Scale& d) { d.poses[0]->globalConstraints = LmDArray<Scale::GlobalConst_t>(); },
        [](Scale& d) { d.poses[0]->positionConstraints = LmDArray<Scale::PositionConst_t>(); },
    };
    Scale original;
    fill(original);
    int number = 0;
    for (const Change& shorten : shortenings) {
        Scale shorter(original);
        shorten(shorter);
        EXPECT_FALSE(shorter == original) << "shortening " << number;
        EXPECT_FALSE(original == shorter) << "shortening " << number;
        ++number;
    }
}

TEST(LqScaleDefData, IsUnequalToOneWithItsPosesSwapped) {
    Scale one;
    Scale other;
    for (const char* name : {"standing", "sitting"}) {
        addPose(one, name);
        addPose(other, name);
    }
    EXPECT_TRUE(one == other);
    std::swap(other.poses[0], other.poses[1]);
    EXPECT_FALSE(one == other);
    EXPECT_FALSE(other == one);
}

TEST(LqScaleDefData, DoesNotCompareItsOwnPositionConstraints) {
    Scale one;
    fill(one);
    Scale other(one);
    other.positionConstraints[0].weight = 9;
    other.positionConstraints.append(positionConstraint("head"));
    EXPECT_EQ(one, other);
}

TEST(LqScaleDefData, WithANaNIsUnequalToItself) {
    Scale definition;
    definition.defaultRealWeight = notANumber;
    EXPECT_FALSE(definition == definition);
    definition.defaultRealWeight = 0;
    EXPECT_TRUE(definition == definition);
    addPose(definition, "standing").sysVarGuideOverrides.append({1, notANumber, 1});
    EXPECT_FALSE(definition == definition);
}

TEST(LqScaleDefData, ANullPoseEqualsOnlyANullPose) {
    Scale withNull;
    withNull.poses.append(nullptr);
    Scale withPose;
    addPose(withPose, "");
    const Scale copy(withNull);
    EXPECT_EQ(withNull, copy);
    EXPECT_FALSE(withNull == withPose);
    EXPECT_FALSE(withPose == withNull);
}

TEST(LqScaleDefData, AssigningReplacesEverything) {
    Scale filled;
    fill(filled);
    Scale target;
    addPose(target, "first");
    addPose(target, "second");
    target.temps.append(temp(1));
    target.temps.append(temp(2));
    target = filled;
    EXPECT_EQ(target, filled);
    EXPECT_EQ(target.positionConstraints.count(), 1);
    EXPECT_EQ(target.positionConstraints[0], filled.positionConstraints[0]);
    target = Scale();
    EXPECT_EQ(target, Scale());
    EXPECT_EQ(target.positionConstraints.count(), 0);
}

TEST(LqScaleDefData, CopiesOwnTheirPoses) {
    Scale original;
    fill(original);
    Scale assigned;
    assigned = original;
    const Scale constructed(original);
    EXPECT_NE(assigned.poses[0], original.poses[0]);
    EXPECT_NE(constructed.poses[0], original.poses[0]);
    original.poses[0]->limitOverrides[0].sysVarId = 77;
    original.clearPoses();
    EXPECT_EQ(assigned.poses[0]->limitOverrides[0].sysVarId, 5);
    EXPECT_EQ(constructed.poses[0]->limitOverrides[0].sysVarId, 5);
}

TEST(LqScaleDefData, AssigningItToItselfDoesNothing) {
    Scale definition;
    fill(definition);
    const Scale::Pose_t* const pose = definition.poses[0];
    const Scale& same = definition;
    definition = same;
    EXPECT_EQ(definition.poses[0], pose);
    Scale expected;
    fill(expected);
    EXPECT_EQ(definition, expected);
}

// --- Poses ------------------------------------------------------------------------------------------------

std::vector<std::string> poseNamesOf(const Scale& definition) {
    std::vector<std::string> names;
    for (const Scale::Pose_t* pose : definition.poses) {
        names.push_back(test::textOf(pose->name));
    }
    return names;
}

TEST(ScalePoses, AreFoundByName) {
    Scale definition;
    EXPECT_FALSE(definition.hasPose("Default")) << "the default pose belongs to no definition";
    definition.poses.append(nullptr);
    addPose(definition, "standing");
    EXPECT_TRUE(definition.hasPose("standing"));
    EXPECT_FALSE(definition.hasPose("Standing"));
    EXPECT_FALSE(definition.hasPose(""));
}

TEST(ScalePoses, AreClearedTogether) {
    Scale definition;
    fill(definition);
    definition.poses.append(nullptr);
    definition.clearPoses();
    EXPECT_EQ(definition.poses.count(), 0);
    EXPECT_EQ(definition.limitOverrides.count(), 1);
    definition.clearPoses();
    EXPECT_EQ(definition.poses.count(), 0);
}

TEST(ScalePoses, OfOneNameAreRemovedOneByOne) {
    Scale definition;
    for (const char* name : {"a", "b", "c", "b"}) {
        addPose(definition, name);
    }
    definition.removePose("b");
    EXPECT_THAT(poseNamesOf(definition), ElementsAre("a", "c", "b"));
    definition.removePose("x");
    definition.removePose("b");
    EXPECT_THAT(poseNamesOf(definition), ElementsAre("a", "c"));
    definition.removePose(definition.poses[0]->name);
    EXPECT_THAT(poseNamesOf(definition), ElementsAre("c"));
}

TEST(ScalePoses, AreReplacedByTheFirstOfTheName) {
    Scale definition;
    for (const char* name : {"a", "b", "b"}) {
        addPose(definition, name);
    }
    const Scale::Pose_t* const second = definition.poses[1];
    Scale source;
    fill(source);
    definition.replacePose("b", *source.poses[0]);
    EXPECT_THAT(poseNamesOf(definition), ElementsAre("a", "standing", "b"));
    EXPECT_EQ(definition.poses[1], second) << "the record stays, its content is copied";
    EXPECT_EQ(*definition.poses[1], *source.poses[0]);
    definition.replacePose("x", *source.poses[0]);
    EXPECT_THAT(poseNamesOf(definition), ElementsAre("a", "standing", "b"));
    definition.replacePose("standing", *definition.poses[1]);
    EXPECT_EQ(*definition.poses[1], *source.poses[0]) << "replaced by itself";
}

} // namespace
} // namespace quillon
