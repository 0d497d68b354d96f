#include "quillon/scale/LqScaleDefData.h"

#include "tests/scale/ScaleSamples.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace quillon {
namespace {

using test::addPose;
using test::idsOf;
using test::limit;
using test::literal;
using test::Scale;
using test::StatusChain;
using testing::ElementsAre;
using testing::IsEmpty;

/// Two poses without anything in them.
class ScaleOverrides : public testing::Test {
protected:
    ScaleOverrides() : first(addPose(definition, "first")), second(addPose(definition, "second")) {}

    Scale definition;
    Scale::Pose_t& first;
    Scale::Pose_t& second;

private:
    test::CleanStatus cleanStatus;
};

// --- Limit overrides --------------------------------------------------------------------------------------

TEST_F(ScaleOverrides, LimitsAreFoundByVariable) {
    definition.addLimitOverride(limit(3, 1));
    definition.addLimitOverride(limit(5, 2));
    definition.addLimitOverride(limit(3, 3));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(3, 5, 3)) << "an id may occur twice";
    EXPECT_TRUE(definition.hasLimitOverride(5));
    EXPECT_FALSE(definition.hasLimitOverride(4));
    EXPECT_EQ(definition.findLimitOverride(3), &definition.limitOverrides[0]);
    EXPECT_EQ(std::as_const(definition).findLimitOverride(5), &definition.limitOverrides[1]);
    EXPECT_EQ(definition.findLimitOverride(4), nullptr);
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleOverrides, LimitsAreUpdatedOnlyWhereThereIsOne) {
    definition.addLimitOverride(limit(3, 1));
    definition.addLimitOverride(limit(3, 2));
    definition.updateLimitOverride(limit(3, 7, 8));
    definition.updateLimitOverride(limit(4, 7, 8));
    ASSERT_EQ(definition.limitOverrides.count(), 2);
    EXPECT_EQ(definition.limitOverrides[0], limit(3, 7, 8));
    EXPECT_EQ(definition.limitOverrides[1], limit(3, 2));
}

TEST_F(ScaleOverrides, LimitsAreRemovedOneByOneOutsidePosesOnly) {
    for (const int id : {3, 5, 3}) {
        definition.addLimitOverride(limit(id));
    }
    definition.addPoseLimitOverride(limit(4), 0);
    EXPECT_TRUE(definition.removeLimitOverride(3));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(5, 3));
    EXPECT_FALSE(definition.removeLimitOverride(4));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(5, 3));
    EXPECT_THAT(idsOf(first.limitOverrides), ElementsAre(4));
}

TEST_F(ScaleOverrides, RemovingEverywhereTakesTheRecordAtThePosesIndexFromTheDefinition) {
    for (const int id : {1, 2, 3, 4}) {
        definition.addLimitOverride(limit(id));
    }
    definition.addPoseLimitOverride(limit(8), 0);
    definition.addPoseLimitOverride(limit(9), 0);
    definition.addPoseLimitOverride(limit(9), 1);
    EXPECT_TRUE(definition.removeLimitOverrideEverywhere(9));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(3, 4))
        << "without index 1, then without index 0";
    EXPECT_THAT(idsOf(first.limitOverrides), ElementsAre(8, 9));
    EXPECT_THAT(idsOf(second.limitOverrides), ElementsAre(9));
}

TEST_F(ScaleOverrides, RemovingEverywhereTakesTheDefinitionsOwnFirst) {
    for (const int id : {9, 1, 2}) {
        definition.addLimitOverride(limit(id));
    }
    definition.addPoseLimitOverride(limit(9), 1);
    EXPECT_TRUE(definition.removeLimitOverrideEverywhere(9));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(2));
    EXPECT_THAT(idsOf(second.limitOverrides), ElementsAre(9));
}

TEST_F(ScaleOverrides, RemovingEverywhereFindsAPosesRecordEvenWithoutOneAtItsIndex) {
    definition.poses.append(nullptr);
    definition.addPoseLimitOverride(limit(8), 1);
    definition.addPoseLimitOverride(limit(9), 1);
    definition.addLimitOverride(limit(1));
    EXPECT_TRUE(definition.removeLimitOverrideEverywhere(9));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(1));
    EXPECT_THAT(idsOf(second.limitOverrides), ElementsAre(8, 9));
    EXPECT_FALSE(definition.removeLimitOverrideEverywhere(7));
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(1));
}

TEST_F(ScaleOverrides, APosesLimitsAreItsOwn) {
    definition.addLimitOverride(limit(3));
    definition.addPoseLimitOverride(limit(3, 1), 0);
    definition.addPoseLimitOverride(limit(4, 2), 1);
    EXPECT_TRUE(definition.hasPoseLimitOverride(3, 0));
    EXPECT_FALSE(definition.hasPoseLimitOverride(3, 1));
    EXPECT_EQ(definition.findPoseLimitOverride(3, 0), &first.limitOverrides[0]);
    EXPECT_EQ(std::as_const(definition).findPoseLimitOverride(4, 1), &second.limitOverrides[0]);
    EXPECT_EQ(definition.findPoseLimitOverride(4, 0), nullptr);
    EXPECT_EQ(std::as_const(definition).findPoseLimitOverride(3, 1), nullptr);
    definition.updatePoseLimitOverride(limit(3, 7, 8), 0);
    definition.updatePoseLimitOverride(limit(3, 7, 8), 1);
    EXPECT_EQ(first.limitOverrides[0], limit(3, 7, 8));
    EXPECT_EQ(second.limitOverrides[0], limit(4, 2));
    EXPECT_FALSE(definition.removePoseLimitOverride(4, 0));
    EXPECT_TRUE(definition.removePoseLimitOverride(3, 0));
    EXPECT_THAT(idsOf(first.limitOverrides), IsEmpty());
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(3));
}

TEST_F(ScaleOverrides, APosesLimitIsSwitchedOnWithZerosAndOffAgain) {
    definition.setPoseLimitOverride(3, 1, false);
    EXPECT_THAT(idsOf(second.limitOverrides), IsEmpty());
    definition.setPoseLimitOverride(3, 1, true);
    ASSERT_THAT(idsOf(second.limitOverrides), ElementsAre(3));
    EXPECT_EQ(second.limitOverrides[0], limit(3, 0, 0));
    second.limitOverrides[0].lower = literal(5);
    definition.setPoseLimitOverride(3, 1, true);
    ASSERT_THAT(idsOf(second.limitOverrides), ElementsAre(3));
    EXPECT_EQ(second.limitOverrides[0], limit(3, 5, 0)) << "one that is there stays";
    definition.setPoseLimitOverride(3, 1, false);
    EXPECT_THAT(idsOf(second.limitOverrides), IsEmpty());
    EXPECT_THAT(idsOf(first.limitOverrides), IsEmpty());
}

TEST_F(ScaleOverrides, RenamingAVariableLeavesTheGuides) {
    definition.poses.append(nullptr);
    for (const int id : {3, 5, 3}) {
        definition.addLimitOverride(limit(id));
    }
    definition.addPoseLimitOverride(limit(5), 1);
    definition.addPoseLimitOverride(limit(3), 1);
    definition.addGuideOverride({3, 1, 1});
    definition.addGuideOverride({3, 1, 1}, 1);
    definition.renameSysVar(3, 9);
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(9, 5, 9));
    EXPECT_THAT(idsOf(second.limitOverrides), ElementsAre(5, 9));
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), ElementsAre(3));
    EXPECT_THAT(idsOf(second.sysVarGuideOverrides), ElementsAre(3));
}

// --- Guide overrides --------------------------------------------------------------------------------------

TEST_F(ScaleOverrides, GuidesStandByAscendingIdOnceEach) {
    for (const int id : {5, 1, 9, 3, 7, 1, 9, 5, -2}) {
        definition.addGuideOverride({id, 0, 0});
    }
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), ElementsAre(-2, 1, 3, 5, 7, 9));
}

TEST_F(ScaleOverrides, AGuideThatIsThereStaysWithoutAMessage) {
    definition.addGuideOverride({3, 1, 2});
    definition.addGuideOverride({3, 7, 8});
    ASSERT_EQ(definition.sysVarGuideOverrides.count(), 1);
    EXPECT_EQ(definition.sysVarGuideOverrides[0], (Scale::SysVarGuideOverride{3, 1, 2}));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleOverrides, GuidesWorkOnThePoseThatIsGiven) {
    definition.addGuideOverride({3, 1, 1});
    definition.addGuideOverride({3, 2, 2}, 1);
    definition.addGuideOverride({4, 3, 3}, 1);
    EXPECT_EQ(&definition.guideOverrides(), &definition.sysVarGuideOverrides);
    EXPECT_EQ(&definition.guideOverrides(1), &second.sysVarGuideOverrides);
    EXPECT_EQ(&std::as_const(definition).guideOverrides(), &definition.sysVarGuideOverrides);
    EXPECT_EQ(&std::as_const(definition).guideOverrides(0), &first.sysVarGuideOverrides);
    definition.updateGuideOverride({3, 7, 8}, 1);
    definition.updateGuideOverride({4, 7, 8});
    EXPECT_EQ(definition.sysVarGuideOverrides[0], (Scale::SysVarGuideOverride{3, 1, 1}));
    EXPECT_EQ(second.sysVarGuideOverrides[0], (Scale::SysVarGuideOverride{3, 7, 8}));
    EXPECT_EQ(second.sysVarGuideOverrides[1], (Scale::SysVarGuideOverride{4, 3, 3}));
    definition.removeGuideOverride(3, 1);
    definition.removeGuideOverride(3, 1);
    EXPECT_THAT(idsOf(second.sysVarGuideOverrides), ElementsAre(4));
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), ElementsAre(3));
    definition.removeGuideOverride(3);
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), IsEmpty());
}

TEST_F(ScaleOverrides, GuidesOfANullPoseAreThoseOutsidePoses) {
    definition.poses.append(nullptr);
    definition.addGuideOverride({3, 1, 1}, 2);
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), ElementsAre(3));
    definition.updateGuideOverride({3, 7, 8}, 2);
    EXPECT_EQ(definition.sysVarGuideOverrides[0], (Scale::SysVarGuideOverride{3, 7, 8}));
    EXPECT_EQ(&definition.guideOverrides(2), &definition.sysVarGuideOverrides);
    EXPECT_EQ(&std::as_const(definition).guideOverrides(2), &definition.sysVarGuideOverrides);
    EXPECT_EQ(definition.findPoseGuideOverride(3, 2), &definition.sysVarGuideOverrides[0]);
    definition.removeGuideOverride(3, 2);
    EXPECT_THAT(idsOf(definition.sysVarGuideOverrides), IsEmpty());
}

TEST_F(ScaleOverrides, GuidesAreFoundInTheirPlaceOnly) {
    definition.addGuideOverride({3, 1, 1});
    definition.addGuideOverride({4, 2, 2}, 0);
    EXPECT_EQ(definition.findGuideOverride(3), &definition.sysVarGuideOverrides[0]);
    EXPECT_EQ(std::as_const(definition).findGuideOverride(3), &definition.sysVarGuideOverrides[0]);
    EXPECT_EQ(definition.findGuideOverride(4), nullptr);
    EXPECT_EQ(definition.findPoseGuideOverride(4, 0), &first.sysVarGuideOverrides[0]);
    EXPECT_EQ(definition.findPoseGuideOverride(3, 0), nullptr);
    EXPECT_EQ(definition.findPoseGuideOverride(4, 1), nullptr);
}

// --- The default pose -------------------------------------------------------------------------------------

TEST(DefaultPose, HasNoOverridesForADefinitionWithoutPoses) {
    Scale definition;
    definition.addLimitOverride(limit(3));
    definition.addGuideOverride({3, 1, 1});
    EXPECT_FALSE(definition.hasPoseLimitOverride(3, 0));
    EXPECT_EQ(definition.findPoseGuideOverride(3, 0), nullptr);
    definition.setPoseLimitOverride(3, 0, false);
    EXPECT_EQ(definition.poses.count(), 0);
    EXPECT_THAT(idsOf(definition.limitOverrides), ElementsAre(3));
}

TEST(DefaultPose, IsNotSeenFromADefinitionWithPoses) {
    Scale definition;
    EXPECT_FALSE(definition.hasPoseLimitOverride(3, 0));
    Scale::Pose_t& pose = addPose(definition, "standing");
    definition.setPoseLimitOverride(3, 0, true);
    pose.sysVarGuideOverrides.append({3, 1, 1});
    EXPECT_THAT(idsOf(pose.limitOverrides), ElementsAre(3));
    EXPECT_TRUE(definition.hasPoseLimitOverride(3, 0));
    EXPECT_EQ(definition.findPoseGuideOverride(3, 0), &pose.sysVarGuideOverrides[0]);
    definition.clearPoses();
    EXPECT_FALSE(definition.hasPoseLimitOverride(3, 0));
    EXPECT_EQ(definition.findPoseGuideOverride(3, 0), nullptr);
}

} // namespace
} // namespace quillon
