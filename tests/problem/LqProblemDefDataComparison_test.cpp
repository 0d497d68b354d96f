#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace quillon::test {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

void fill(LqProblemDefData& data) {
    addSysVar(data, 1, "Hips X");
    addSysVar(data, 2, "Hips Y");
    LqPDDBodyMap& hips = data.addBody("Hips", referenceSystemName, 1);
    hips.setMapping(0, 1);
    hips.setMapping(1, combination(0.5F, {{2, 3.0F}}));
    data.addBody("Hand", "Hips", 2);
    addFixMarker(data, LqPDDFixMarker(2, 0.5F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(1, 7, 1.0F, "Hand"));
    addDoubleMarker(data, LqPDDDoubleMarker(3, 1, 2.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(4, 5, 0.25F, "Hips", "Hand"));
    data.addInclude(LqPDDInclude("arm.prb", "_left", 10, 20));
}

LqPDDInclude& include(LqProblemDefData& data) {
    return *static_cast<LqPDDInclude*>(data.includes[0]);
}

struct Change {
    const char* what;
    std::function<void(LqProblemDefData&)> make;
    bool equal;
};

const Change changes[] = {
    {"nothing", [](LqProblemDefData&) {}, true},
    {"id of a variable", [](LqProblemDefData& data) { data.sysVars[1]->id = 9; }, false},
    {"description", [](LqProblemDefData& data) { data.sysVars[0]->description = "hips X"; }, false},
    {"null description", [](LqProblemDefData& data) { data.sysVars[0]->description.reset(); }, false},
    {"one variable more", [](LqProblemDefData& data) { addSysVar(data, 3, ""); }, false},
    {"order of the bodies", [](LqProblemDefData& data) { std::swap(data.bodies[0], data.bodies[1]); }, false},
    {"body name", [](LqProblemDefData& data) { data.bodies[1]->name = "hand"; }, false},
    {"parent name", [](LqProblemDefData& data) { data.bodies[1]->parentName = "Hand"; }, false},
    {"graphics number", [](LqProblemDefData& data) { data.bodies[0]->graphicsNumber = 5; }, false},
    {"type", [](LqProblemDefData& data) { data.bodies[0]->type = 1; }, false},
    {"type one variable", [](LqProblemDefData& data) { data.bodies[0]->typeOneVar = 1; }, false},
    {"type two variable", [](LqProblemDefData& data) { data.bodies[0]->typeTwoVar = 1; }, true},
    {"number of mappings",
     [](LqProblemDefData& data) { data.bodies[0]->mappings = LmArray<LqBasicVarMapping<float>>(5); }, false},
    {"a mapping", [](LqProblemDefData& data) { data.bodies[0]->mappings[1].constant = 1.0F; }, false},
    {"a NaN in a mapping", [](LqProblemDefData& data) { data.bodies[0]->mappings[1].constant = nan; }, false},
    {"order of transformations", [](LqProblemDefData& data) { data.bodies[0]->transformOrder[5] = 6; },
     false},
    {"fix marker id", [](LqProblemDefData& data) { data.fixMarkers[0]->id = 9; }, false},
    {"fix marker weight", [](LqProblemDefData& data) { data.fixMarkers[0]->weight = 0.6F; }, false},
    {"fix marker body", [](LqProblemDefData& data) { data.fixMarkers[0]->bodyName = "Hand"; }, false},
    {"prediction type", [](LqProblemDefData& data) { data.realMarkers[0]->predictionType = 8; }, false},
    {"real marker weight", [](LqProblemDefData& data) { data.realMarkers[0]->weight = 9.0F; }, false},
    {"one real marker less", [](LqProblemDefData& data) { data.removeLastRealMarker(); }, false},
    {"double id", [](LqProblemDefData& data) { data.doubleMarkers[0]->doubleId = 2; }, false},
    {"double marker body", [](LqProblemDefData& data) { data.doubleMarkers[0]->bodyName = "Hand"; }, false},
    {"pair id", [](LqProblemDefData& data) { data.artificialMarkers[0]->id = 9; }, false},
    {"other id", [](LqProblemDefData& data) { data.artificialMarkers[0]->otherId = 9; }, false},
    {"other body", [](LqProblemDefData& data) { data.artificialMarkers[0]->otherBodyName = "Hips"; }, false},
    {"a global direction marker",
     [](LqProblemDefData& data) { data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker()); }, true},
    {"include file", [](LqProblemDefData& data) { include(data).fileName = "leg.prb"; }, true},
    {"include suffix", [](LqProblemDefData& data) { include(data).bodyNameSuffix = "_right"; }, false},
    {"include body offset", [](LqProblemDefData& data) { include(data).bodyIdOffset = 0; }, false},
    {"include variable offset", [](LqProblemDefData& data) { include(data).sysVarIdOffset = -1; }, false},
    {"one include more", [](LqProblemDefData& data) { data.addInclude(LqPDDInclude()); }, false},
};

TEST(LqProblemDefDataComparison, SeesEveryDifferenceButTheDeliberatelyIgnored) {
    LqProblemDefData data;
    fill(data);
    for (const Change& change : changes) {
        LqProblemDefData changed(data);
        change.make(changed);
        EXPECT_EQ(equals(data, changed), change.equal) << change.what;
        EXPECT_EQ(equals(changed, data), change.equal) << change.what;
    }
}

TEST(LqProblemDefDataComparison, ADefinitionWithANaNEqualsItselfButNotItsCopy) {
    LqProblemDefData data;
    fill(data);
    data.realMarkers[0]->weight = nan;
    EXPECT_TRUE(equals(data, data));
    const LqProblemDefData copy(data);
    EXPECT_FALSE(equals(data, copy));
}

TEST(LqProblemDefDataComparison, DoesNotFollowNullSlots) {
    LqProblemDefData left;
    LqProblemDefData right;
    fill(left);
    fill(right);
    left.bodies.append(nullptr);
    EXPECT_FALSE(equals(left, right));
    right.bodies.append(nullptr);
    EXPECT_TRUE(equals(left, right));
}

TEST(LqProblemDefDataAssignment, IsDeep) {
    LqProblemDefData source;
    fill(source);
    LqProblemDefData target;
    target.addBody("Old", referenceSystemName, 1);
    target.assign(source);
    EXPECT_TRUE(equals(target, source));
    target.bodies[0]->mappings[1].clearTerms();
    target.sysVars[0]->description = "changed";
    include(target).bodyNameSuffix = "_changed";
    LqProblemDefData expected;
    fill(expected);
    EXPECT_TRUE(equals(source, expected));
    EXPECT_TRUE(include(source).fileName == "arm.prb");
}

TEST(LqProblemDefDataAssignment, LeavesGlobalDirectionMarkersOutAndStaysEqual) {
    LqProblemDefData source;
    fill(source);
    source.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(9, 1.0F, "Hips"));
    LqProblemDefData target;
    target.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(3, 1.0F, "Hand"));
    target.assign(source);
    EXPECT_EQ(target.globalDirectionMarkers.count(), 0);
    EXPECT_TRUE(equals(target, source));
    const LqProblemDefData copy(source);
    EXPECT_EQ(copy.globalDirectionMarkers.count(), 0);
    target.setGlobalDirectionMarkers(source.globalDirectionMarkers);
    EXPECT_EQ(idsOf(target.globalDirectionMarkers), std::vector<int>{9});
}

TEST(LqProblemDefDataAssignment, ToItselfDoesNothing) {
    LqProblemDefData data;
    fill(data);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(9, 1.0F, "Hips"));
    const LqPDDBodyMap* const hips = data.bodies[0];
    const LqProblemDefData& same = data;
    data = same;
    EXPECT_EQ(data.bodies[0], hips);
    EXPECT_EQ(data.globalDirectionMarkers.count(), 1);
}

} // namespace
} // namespace quillon::test
