#include "quillon/scale/LqScaleDefData.h"

#include "tests/core/StrForms.h"
#include "tests/scale/ScaleSamples.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using test::addPose;
using test::globalConstraint;
using test::idsOf;
using test::literal;
using test::notANumber;
using test::positionConstraint;
using test::Scale;
using test::scaledBody;
using test::temp;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesOf(const LmArray<Scale::BodyParams_t>& bodies) {
    std::vector<std::string> names;
    for (const Scale::BodyParams_t& body : bodies) {
        names.push_back(test::textOf(body.bodyName));
    }
    return names;
}

std::vector<std::string> namesOf(const LmArray<Scale::GlobalConst_t>& constraints) {
    std::vector<std::string> names;
    for (const Scale::GlobalConst_t& constraint : constraints) {
        names.push_back(test::textOf(constraint.bodyName));
    }
    return names;
}

std::vector<std::string> namesOf(const LmArray<Scale::PositionConst_t>& constraints) {
    std::vector<std::string> names;
    for (const Scale::PositionConst_t& constraint : constraints) {
        names.push_back(test::textOf(constraint.body));
    }
    return names;
}

// --- Scaled bodies ----------------------------------------------------------------------------------------

TEST(ScaledBodies, AreFoundAddedAndRemovedByName) {
    Scale definition;
    for (const char* name : {"thigh", "shin", "thigh", "foot"}) {
        definition.addBodyParams(scaledBody(name));
    }
    EXPECT_EQ(definition.findBodyParams("thigh"), &definition.bodyParams[0]);
    EXPECT_EQ(std::as_const(definition).findBodyParams("shin"), &definition.bodyParams[1]);
    EXPECT_EQ(definition.findBodyParams("Thigh"), nullptr);
    definition.removeBodyParams("thigh");
    EXPECT_THAT(namesOf(definition.bodyParams), ElementsAre("shin", "thigh", "foot"));
    definition.removeBodyParams("pelvis");
    definition.removeBodyParams(definition.bodyParams[2].bodyName);
    EXPECT_THAT(namesOf(definition.bodyParams), ElementsAre("shin", "thigh"));
}

TEST(ScaledBodies, AreAddedAsDeepCopies) {
    Scale definition;
    Scale::BodyParams_t body = scaledBody("thigh");
    body.scale[1].appendTerm(1, literal(2));
    definition.addBodyParams(body);
    EXPECT_EQ(definition.bodyParams[0], body);
    body.scale[1].appendTerm(2, literal(3));
    EXPECT_NE(definition.bodyParams[0], body);
    EXPECT_EQ(definition.bodyParams[0].scale[1].terms.count(), 1);
}

TEST(ScaledBodies, AreRenamedWithGlobalConstraintsAndTempsButNothingElse) {
    Scale definition;
    definition.addBodyParams(scaledBody("thigh"));
    definition.addBodyParams(scaledBody("shin"));
    definition.addBodyParams(scaledBody("thigh"));
    definition.globalConstraints.append(globalConstraint("thigh"));
    definition.globalConstraints.append(globalConstraint("foot"));
    definition.addTemp(temp(1, "thigh", "shin"));
    definition.addTemp(temp(2, "shin", "thigh"));
    definition.positionConstraints.append(positionConstraint("thigh"));
    definition.positionConstraints[0].parent = "thigh";
    Scale::Pose_t& pose = addPose(definition, "thigh");
    pose.globalConstraints.append(globalConstraint("thigh"));
    pose.positionConstraints.append(positionConstraint("thigh"));

    definition.renameBody("thigh", "femur");

    EXPECT_THAT(namesOf(definition.bodyParams), ElementsAre("femur", "shin", "femur"));
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("femur", "foot"));
    EXPECT_EQ(definition.temps[0], temp(1, "femur", "shin"));
    EXPECT_EQ(definition.temps[1], temp(2, "shin", "femur"));
    EXPECT_EQ(definition.positionConstraints[0].body, "thigh");
    EXPECT_EQ(definition.positionConstraints[0].parent, "thigh");
    EXPECT_EQ(pose.name, "thigh");
    EXPECT_THAT(namesOf(pose.globalConstraints), ElementsAre("thigh"));
    EXPECT_THAT(namesOf(pose.positionConstraints), ElementsAre("thigh"));
}

TEST(ScaledBodies, AreRenamedByANameThatIsARecordsOwn) {
    Scale definition;
    definition.addBodyParams(scaledBody("thigh"));
    definition.addBodyParams(scaledBody("thigh"));
    definition.renameBody(definition.bodyParams[0].bodyName, "femur");
    EXPECT_THAT(namesOf(definition.bodyParams), ElementsAre("femur", "femur"));
}

// --- Global constraints -----------------------------------------------------------------------------------

TEST(GlobalConstraints, AreFoundByNameAndAllSixComponents) {
    const Scale::GlobalConst_t present = globalConstraint("thigh", {1, 2, 3}, {4, 5, 6});
    Scale definition;
    definition.globalConstraints.append(present);
    std::vector<Scale::GlobalConst_t> others{globalConstraint("shin", {1, 2, 3}, {4, 5, 6})};
    for (std::size_t i = 0; i < 3; ++i) {
        others.insert(others.end(), 2, present);
        others[others.size() - 2].local[i] = 9;
        others.back().global[i] = 9;
    }
    for (const Scale::GlobalConst_t& other : others) {
        definition.replaceGlobalConstraint(other, globalConstraint("new"));
        definition.removeGlobalConstraint(other);
        EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("thigh"));
    }
    definition.replaceGlobalConstraint(present, globalConstraint("new"));
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("new"));
    EXPECT_EQ(definition.globalConstraints[0], globalConstraint("new"));
}

TEST(GlobalConstraints, AreReplacedAndRemovedAtTheFirstMatch) {
    Scale definition;
    for (const char* name : {"a", "b", "b", "c"}) {
        definition.globalConstraints.append(globalConstraint(name));
    }
    definition.replaceGlobalConstraint(globalConstraint("b"), globalConstraint("x"));
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("a", "x", "b", "c"));
    definition.removeGlobalConstraint(globalConstraint("a"));
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("x", "b", "c"));
    definition.removeGlobalConstraint(definition.globalConstraints[2]);
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("x", "b"));
}

TEST(GlobalConstraints, OfAPoseAreItsOwn) {
    Scale definition;
    addPose(definition, "first");
    const Scale::Pose_t& pose = addPose(definition, "second");
    definition.globalConstraints.append(globalConstraint("a"));
    for (const char* name : {"a", "b", "a"}) {
        definition.addPoseGlobalConstraint(globalConstraint(name), 1);
    }
    definition.replacePoseGlobalConstraint(globalConstraint("a"), globalConstraint("x"), 1);
    EXPECT_THAT(namesOf(pose.globalConstraints), ElementsAre("x", "b", "a"));
    definition.removePoseGlobalConstraint(globalConstraint("b"), 1);
    definition.removePoseGlobalConstraint(globalConstraint("b"), 1);
    EXPECT_THAT(namesOf(pose.globalConstraints), ElementsAre("x", "a"));
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("a"));
    EXPECT_THAT(namesOf(definition.poses[0]->globalConstraints), IsEmpty());
}

TEST(GlobalConstraints, WithANaNAreNeverFound) {
    Scale definition;
    definition.globalConstraints.append(globalConstraint("a", {notANumber, 0, 0}));
    definition.removeGlobalConstraint(definition.globalConstraints[0]);
    EXPECT_THAT(namesOf(definition.globalConstraints), ElementsAre("a"));
}

// --- Position constraints ---------------------------------------------------------------------------------

TEST(PositionConstraints, AreFoundByAllTheirFields) {
    const std::function<void(Scale::PositionConst_t&)> changes[] = {
        [](Scale::PositionConst_t& c) { std::swap(c.transformOrder[0], c.transformOrder[5]); },
        [](Scale::PositionConst_t& c) { c.mapping[5].id = 1; },
        [](Scale::PositionConst_t& c) { c.mapping[0].id = -1; },
        [](Scale::PositionConst_t& c) { c.body = "other"; },
        [](Scale::PositionConst_t& c) { c.parent = "other"; },
        [](Scale::PositionConst_t& c) { c.weight = 9; },
        [](Scale::PositionConst_t& c) { c.localPosition[2] = 9; },
        [](Scale::PositionConst_t& c) { c.baseTranslation[0] = 9; },
        [](Scale::PositionConst_t& c) { c.baseRotation[4] = 9; },
    };
    const Scale::PositionConst_t present = positionConstraint("thigh");
    Scale definition;
    definition.positionConstraints.append(present);
    for (const auto& change : changes) {
        Scale::PositionConst_t other = present;
        change(other);
        definition.replacePositionConstraint(other, positionConstraint("new"));
        definition.removePositionConstraint(other);
        EXPECT_THAT(namesOf(definition.positionConstraints), ElementsAre("thigh"));
    }
    definition.replacePositionConstraint(present, present);
    EXPECT_EQ(definition.positionConstraints[0], present);
    definition.replacePositionConstraint(present, positionConstraint("new"));
    EXPECT_THAT(namesOf(definition.positionConstraints), ElementsAre("new"));
    definition.removePositionConstraint(positionConstraint("new"));
    EXPECT_THAT(namesOf(definition.positionConstraints), IsEmpty());
}

TEST(PositionConstraints, OfAPoseAreItsOwn) {
    Scale definition;
    addPose(definition, "first");
    const Scale::Pose_t& pose = addPose(definition, "second");
    definition.positionConstraints.append(positionConstraint("a"));
    for (const char* name : {"a", "b", "a"}) {
        definition.addPosePositionConstraint(positionConstraint(name), 1);
    }
    definition.replacePositionConstraint(positionConstraint("a"), positionConstraint("x"), 1);
    EXPECT_THAT(namesOf(pose.positionConstraints), ElementsAre("x", "b", "a"));
    EXPECT_THAT(namesOf(definition.positionConstraints), ElementsAre("a"));
    definition.removePosePositionConstraint(positionConstraint("b"), 1);
    definition.removePosePositionConstraint(positionConstraint("b"), 1);
    definition.removePosePositionConstraint(positionConstraint("x"), 0);
    EXPECT_THAT(namesOf(pose.positionConstraints), ElementsAre("x", "a"));
    EXPECT_THAT(namesOf(definition.positionConstraints), ElementsAre("a"));
}

// --- Temporary markers ------------------------------------------------------------------------------------

class ScaleTemps : public testing::Test {
protected:
    ScaleTemps() {
        for (const int id : {4, 5, 6}) {
            definition.addTemp(temp(id));
        }
    }

    Scale definition;
};

TEST_F(ScaleTemps, AreFoundById) {
    EXPECT_TRUE(definition.hasTemp(5));
    EXPECT_FALSE(definition.hasTemp(7));
    EXPECT_EQ(definition.findTemp(5), &definition.temps[1]);
    EXPECT_EQ(std::as_const(definition).findTemp(6), &definition.temps[2]);
    EXPECT_EQ(definition.findTemp(7), nullptr);
}

TEST_F(ScaleTemps, AreAddedAtTheEndWhateverTheirId) {
    definition.addTemp(temp(4, "foot"));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5, 6, 4));
    EXPECT_EQ(definition.temps[3], temp(4, "foot"));
}

TEST_F(ScaleTemps, AreInsertedInFrontOfTheSameIdAndRaiseTheRest) {
    definition.insertTemp(temp(5, "foot"));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(definition.temps[1], temp(5, "foot"));
    EXPECT_EQ(definition.temps[2], temp(6));
}

TEST_F(ScaleTemps, AreAppendedWhenNoneHasTheId) {
    definition.insertTemp(temp(1, "foot"));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5, 6, 1));
}

TEST_F(ScaleTemps, AreRemovedAndLowerTheRest) {
    definition.removeTemp(5);
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5));
    definition.removeTemp(9);
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5));
    definition.removeTemp(4);
    definition.removeTemp(4);
    EXPECT_THAT(idsOf(definition.temps), IsEmpty());
}

TEST_F(ScaleTemps, OfOneIdTheFirstIsFoundInsertedBeforeAndRemoved) {
    definition.temps[2] = temp(5, "foot");
    definition.addTemp(temp(6));
    EXPECT_EQ(definition.findTemp(5), &definition.temps[1]);
    definition.insertTemp(temp(5, "head"));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5, 6, 6, 7));
    EXPECT_EQ(definition.temps[1].attachedBody, "head");
    EXPECT_EQ(definition.temps[3].attachedBody, "foot");
    definition.removeTemp(6);
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5, 5, 6));
    EXPECT_EQ(definition.temps[2].attachedBody, "foot");
    EXPECT_EQ(definition.findTemp(5), &definition.temps[1]);
}

TEST_F(ScaleTemps, FollowTheRealsByTheFirstId) {
    definition.realCount = 3;
    EXPECT_TRUE(definition.tempsFollowReals());
    definition.temps[2].id = 20;
    EXPECT_TRUE(definition.tempsFollowReals()) << "only the first is looked at";
    definition.realCount = 4;
    EXPECT_FALSE(definition.tempsFollowReals());
    EXPECT_TRUE(Scale().tempsFollowReals());
    definition.realCount = 2147483647;
    EXPECT_FALSE(definition.tempsFollowReals());
}

TEST_F(ScaleTemps, AreConsecutiveWhenEachIdIsTheNext) {
    EXPECT_TRUE(definition.tempIdsAreConsecutive());
    EXPECT_TRUE(Scale().tempIdsAreConsecutive());
    definition.temps[1].id = 4;
    EXPECT_FALSE(definition.tempIdsAreConsecutive());
    definition.temps[0].id = 2147483647;
    definition.temps[1].id = -2147483647 - 1;
    EXPECT_FALSE(definition.tempIdsAreConsecutive());
}

} // namespace
} // namespace quillon
