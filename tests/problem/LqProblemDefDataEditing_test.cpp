#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/LmListView.h"
#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::test {
namespace {

using Names = std::vector<std::string>;
using Ids = std::vector<int>;
using PairIds = std::vector<std::pair<int, int>>;

// --- Bodies --------------------------------------------------------------------------------------

TEST(LqProblemDefDataEditing, AddsABodyWithTheUsualOrder) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 4);
    ASSERT_EQ(data.bodies.count(), 1);
    const LqPDDBodyMap& body = *data.bodies[0];
    EXPECT_TRUE(body.name == "Hips");
    EXPECT_TRUE(body.parentName == "ReferenceSystemZero");
    EXPECT_EQ(body.graphicsNumber, 4);
    EXPECT_EQ(body.type, 0);
    EXPECT_EQ(valuesOf(body.transformOrder), (Ids{1, 2, 3, 6, 5, 4}));
    for (const LqBasicVarMapping<float>& mapping : body.mappings) {
        EXPECT_EQ(mapping.id, 0);
    }
}

/// A spine with two arms, and a marker of each kind on each body.
///
///     Spine - Arm - Hand
///           - Head
///     Prop
void fillFigure(LqProblemDefData& data) {
    const std::pair<const char*, const char*> bodies[] = {{"Spine", referenceSystemName},
                                                          {"Arm", "Spine"},
                                                          {"Hand", "Arm"},
                                                          {"Prop", referenceSystemName},
                                                          {"Head", "Spine"}};
    int number = 0;
    for (const auto& [name, parent] : bodies) {
        ++number;
        data.addBody(name, parent, number);
        data.addRealMarker(LqPDDRealMarker(number, 0, 1.0F, name));
        data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(5 + number, 1.0F, name));
        addFixMarker(data, LqPDDFixMarker(10 + number, 1.0F, name));
        addDoubleMarker(data, LqPDDDoubleMarker(15 + number, number, 1.0F, name));
        data.addArtificialMarker(LqPDDArtificialMarker(20 + number, 30 + number, 1.0F, name, "Prop"));
    }
}

TEST(LqProblemDefDataEditing, RenamesABodyWithItsChildrenAndSomeOfItsMarkers) {
    LqProblemDefData data;
    fillFigure(data);
    data.renameBody("Prop", "Spine 2");
    data.renameBody("Spine", "Trunk");
    EXPECT_EQ(namesOf(data.bodies), (Names{"Trunk", "Arm", "Hand", "Spine 2", "Head"}));
    EXPECT_TRUE(data.bodies[1]->parentName == "Trunk");
    EXPECT_TRUE(data.bodies[2]->parentName == "Arm");
    EXPECT_TRUE(data.bodies[4]->parentName == "Trunk");
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Trunk");
    EXPECT_TRUE(data.realMarkers[3]->bodyName == "Spine 2");
    EXPECT_TRUE(data.artificialMarkers[0]->bodyName == "Trunk");
    EXPECT_TRUE(data.artificialMarkers[0]->otherBodyName == "Spine 2");
    EXPECT_TRUE(data.fixMarkers[0]->bodyName == "Spine");
    EXPECT_TRUE(data.doubleMarkers[0]->bodyName == "Spine");
    EXPECT_TRUE(data.globalDirectionMarkers[0]->bodyName == "Spine");
}

TEST(LqProblemDefDataEditing, RenamesByNamesThatAreItsOwnFields) {
    LqProblemDefData data;
    fillFigure(data);
    data.renameBody(data.bodies[1]->parentName, data.bodies[3]->name);
    EXPECT_EQ(namesOf(data.bodies), (Names{"Prop", "Arm", "Hand", "Prop", "Head"}));
    EXPECT_TRUE(data.bodies[4]->parentName == "Prop");
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Prop");
}

TEST(LqProblemDefDataEditing, RenamesABodyThatIsItsOwnParentInBothPlaces) {
    LqProblemDefData data;
    data.addBody("Ball", "Ball", 1);
    data.renameBody("Ball", "Globe");
    EXPECT_TRUE(data.bodies[0]->name == "Globe");
    EXPECT_TRUE(data.bodies[0]->parentName == "Globe");
}

TEST(LqProblemDefDataEditing, RenamesTheFirstBodyOfANameAndTheReferencesToBoth) {
    LqProblemDefData data;
    data.addBody("Ball", referenceSystemName, 1);
    data.addBody("Ball", referenceSystemName, 2);
    data.addBody("Spot", "Ball", 3);
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Ball"));
    data.renameBody("Ball", "Globe");
    EXPECT_EQ(namesOf(data.bodies), (Names{"Globe", "Ball", "Spot"}));
    EXPECT_TRUE(data.bodies[2]->parentName == "Globe");
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Globe");
}

TEST(LqProblemDefDataEditing, RenamesNothingWithoutSuchABody) {
    LqProblemDefData data;
    fillFigure(data);
    const LqProblemDefData before(data);
    data.renameBody("ReferenceSystemZero", "Ground");
    EXPECT_TRUE(equals(data, before));
}

TEST(LqProblemDefDataEditing, RenamesABodyInMarkersAlone) {
    LqProblemDefData data;
    fillFigure(data);
    data.renameBodyInMarkers("Prop", "Ball");
    EXPECT_TRUE(data.bodies[3]->name == "Prop");
    EXPECT_TRUE(data.realMarkers[3]->bodyName == "Ball");
    EXPECT_TRUE(data.artificialMarkers[1]->otherBodyName == "Ball");
    EXPECT_TRUE(data.artificialMarkers[3]->bodyName == "Ball");
    EXPECT_TRUE(data.fixMarkers[3]->bodyName == "Prop");
}

TEST(LqProblemDefDataEditing, RemovesABodyWithAllBelowItAndTheirMarkers) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody("Arm");
    EXPECT_EQ(data.bodies.count(), 5);
    // The next editing operation drops the slots that are left over.
    data.removeBodies({});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Spine", "Prop", "Head"}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 4, 5}));
    EXPECT_EQ(idsOf(data.globalDirectionMarkers), (Ids{6, 7, 8, 9, 10}));
    EXPECT_EQ(idsOf(data.fixMarkers), (Ids{11, 14, 15}));
    EXPECT_EQ(idsOf(data.doubleMarkers), (Ids{16, 19, 20}));
    EXPECT_EQ(pairIdsOf(data), (PairIds{{21, 31}, {24, 34}, {25, 35}}));
}

TEST(LqProblemDefDataEditing, RemovesThePairsThatTouchTheBodyAtEitherEnd) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody("Prop");
    data.removeBodies({});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Spine", "Arm", "Hand", "Head"}));
    EXPECT_EQ(pairIdsOf(data), PairIds{});
}

TEST(LqProblemDefDataEditing, RemovingABodyKeepsTheLengthsAndTheLastSlots) {
    LqProblemDefData data;
    fillFigure(data);
    const LqPDDBodyMap* const prop = data.bodies[3];
    const LqPDDBodyMap* const head = data.bodies[4];
    const LqPDDRealMarker* const lastMarker = data.realMarkers[4];
    data.removeBody("Hand");
    ASSERT_EQ(data.bodies.count(), 5);
    EXPECT_EQ(data.bodies[2], prop);
    EXPECT_EQ(data.bodies[3], head);
    EXPECT_EQ(data.bodies[4], head);
    ASSERT_EQ(data.realMarkers.count(), 5);
    EXPECT_EQ(data.realMarkers[3], lastMarker);
    EXPECT_EQ(data.realMarkers[4], lastMarker);
    EXPECT_EQ(data.fixMarkers.count(), 5);
    EXPECT_EQ(data.doubleMarkers.count(), 5);
    EXPECT_EQ(data.artificialMarkers.count(), 5);
    EXPECT_EQ(data.globalDirectionMarkers.count(), 5);
}

TEST(LqProblemDefDataEditing, RemovingTheLastBodyLeavesANullSlot) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody("Head");
    ASSERT_EQ(data.bodies.count(), 5);
    EXPECT_EQ(data.bodies[4], nullptr);
    EXPECT_FALSE(data.hasBody("Head"));
    EXPECT_FALSE(data.hasRealMarker(5));
}

TEST(LqProblemDefDataEditing, RemovingAnUnknownBodyTakesNeitherItsMarkersNorItsChildrenButClosesGaps) {
    LqProblemDefData data;
    data.bodies.append(nullptr);
    data.bodies.append(new LqPDDBodyMap("Arm", "Ghost"));
    data.realMarkers.append(new LqPDDRealMarker(1, 0, 1.0F, "Ghost"));
    data.artificialMarkers.append(nullptr);
    data.artificialMarkers.append(new LqPDDArtificialMarker(2, 3, 1.0F, "Arm", "Ghost"));
    data.removeBody("Ghost");
    EXPECT_EQ(data.bodies.count(), 2);
    EXPECT_TRUE(data.bodies[0]->name == "Arm");
    EXPECT_EQ(data.bodies[1], data.bodies[0]);
    EXPECT_EQ(idsOf(data.realMarkers), Ids{1});
    EXPECT_EQ(data.artificialMarkers.count(), 2);
    EXPECT_EQ(data.artificialMarkers[1], data.artificialMarkers[0]);
}

TEST(LqProblemDefDataEditing, RemovesBodyAfterBody) {
    for (const Names& order : {Names{"Spine", "Prop"}, Names{"Prop", "Spine"}, Names{"Hand", "Head", "Arm"},
                               Names{"Hand", "Hand", "nobody", "Prop", "Arm"}}) {
        LqProblemDefData data;
        fillFigure(data);
        for (const std::string& name : order) {
            data.removeBody(name.c_str());
            EXPECT_FALSE(data.hasBody(name.c_str()));
            EXPECT_EQ(data.bodies.count(), 5);
            // Every slot is null or leads to a record that is still there.
            for (const LqPDDBodyMap* body : data.bodies) {
                EXPECT_TRUE(body == nullptr || data.hasBody(body->name));
            }
        }
    }
}

TEST(LqProblemDefDataEditing, SlotsLeftByARemovalSurviveEveryOtherOperation) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody("Spine");
    const LqProblemDefData copy(data);
    EXPECT_TRUE(equals(copy, data));
    EXPECT_EQ(data.highestBodyNumber(), 4);
    EXPECT_EQ(data.highestMarkerId(), 24 + 10);
    data.renameBody("Prop", "Ball");
    LqProblemDefData other(data);
    other.insertRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Ball"));
    EXPECT_EQ(idsOf(other.realMarkers), (Ids{1, 5}));
    EXPECT_EQ(idsOf(other.fixMarkers), Ids{15});
    EXPECT_EQ(pairIdsOf(other), (PairIds{{25, 35}}));
    other = data;
    other.addBody("Hat", "Ball", 1);
    EXPECT_EQ(namesOf(other.bodies), (Names{"Ball", "Hat"}));
    other = data;
    other.clear();
    EXPECT_TRUE(other.isBlank());
}

TEST(LqProblemDefDataEditing, RemovesByANameThatIsItsOwnField) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody(data.bodies[0]->name);
    data.removeBodies({});
    EXPECT_EQ(namesOf(data.bodies), Names{"Prop"});
}

TEST(LqProblemDefDataEditing, RemovesBodiesThatAreTheirOwnAncestors) {
    LqProblemDefData data;
    data.addBody("a", "a", 1);
    data.addBody("b", "c", 2);
    data.addBody("c", "b", 3);
    data.addBody("d", "x", 4);
    data.removeBody("a");
    data.removeBody("c");
    data.removeBodies({});
    EXPECT_EQ(namesOf(data.bodies), Names{"d"});
}

TEST(LqProblemDefDataEditing, RemovesALongChainOfBodies) {
    LqProblemDefData data;
    constexpr int length = 20000;
    data.bodies.setLengthZeroed(length);
    for (int i = 0; i < length; ++i) {
        data.bodies[i] =
            new LqPDDBodyMap(LmStr(std::to_string(i).c_str()), LmStr(std::to_string(i - 1).c_str()));
    }
    data.removeBody("1");
    data.removeBodies({});
    EXPECT_EQ(namesOf(data.bodies), Names{"0"});
}

TEST(LqProblemDefDataEditing, RemovesBodiesByAListAndKeepsMarkersAndChildren) {
    LqProblemDefData data;
    fillFigure(data);
    data.removeBodies(arrayOf(Names{"Spine", "Prop", "nobody", "Spine"}));
    EXPECT_EQ(data.bodies.count(), 3);
    EXPECT_EQ(namesOf(data.bodies), (Names{"Arm", "Hand", "Head"}));
    EXPECT_TRUE(data.bodies[0]->parentName == "Spine");
    EXPECT_EQ(data.realMarkers.count(), 5);
}

// --- Markers -------------------------------------------------------------------------------------

TEST(LqProblemDefDataEditing, AppendsCopiesOfMarkers) {
    LqProblemDefData data;
    LqPDDRealMarker real(1, 2, 0.5F, "Hips");
    LqPDDArtificialMarker pair(3, 4, 0.5F, "Hips", "Hand");
    LqPDDGlobalDirectionMarker direction(2, 0.5F, "Hips");
    data.addRealMarker(real);
    data.addArtificialMarker(pair);
    data.addGlobalDirectionMarker(direction);
    real.bodyName = "changed";
    pair.otherBodyName = "changed";
    direction.bodyName = "changed";
    EXPECT_EQ(data.realMarkers[0]->predictionType, 2);
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Hips");
    EXPECT_TRUE(data.artificialMarkers[0]->otherBodyName == "Hand");
    EXPECT_TRUE(data.globalDirectionMarkers[0]->bodyName == "Hips");
}

void fillMarkers(LqProblemDefData& data) {
    for (const int id : {1, 2, 4}) {
        data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
    }
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(5, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(6, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(7, 3, 1.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(8, 9, 1.0F, "Hips", "Hand"));
}

TEST(LqProblemDefDataEditing, InsertsARealMarkerAndRaisesWhatComesBehindIt) {
    const std::pair<int, Ids> realIdsByNewId[] = {{1, {1, 2, 3, 5}}, {2, {1, 2, 3, 5}}, {3, {1, 2, 3, 5}},
                                                  {4, {1, 2, 4, 5}}, {5, {1, 2, 4, 5}}, {-3, {-3, 2, 3, 5}}};
    for (const auto& [newId, realIds] : realIdsByNewId) {
        LqProblemDefData data;
        fillMarkers(data);
        data.insertRealMarker(LqPDDRealMarker(newId, 77, 1.0F, "Hand"));
        EXPECT_EQ(idsOf(data.realMarkers), realIds) << newId;
        EXPECT_EQ(data.findRealMarker(newId)->predictionType, 77) << newId;
        EXPECT_EQ(idsOf(data.globalDirectionMarkers), Ids{5}) << newId;
        EXPECT_EQ(idsOf(data.fixMarkers), Ids{7}) << newId;
        EXPECT_EQ(idsOf(data.doubleMarkers), Ids{8}) << newId;
        EXPECT_EQ(data.doubleMarkers[0]->doubleId, 3) << newId;
        EXPECT_EQ(pairIdsOf(data), (PairIds{{9, 10}})) << newId;
    }
}

TEST(LqProblemDefDataEditing, InsertsACopyOfAMarkerOfItsOwn) {
    LqProblemDefData data;
    fillMarkers(data);
    data.insertRealMarker(*data.realMarkers[1]);
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 2, 3, 5}));
}

TEST(LqProblemDefDataEditing, InsertsIntoADefinitionWithoutMarkers) {
    LqProblemDefData data;
    data.insertRealMarker(LqPDDRealMarker(3, 0, 1.0F, "Hips"));
    EXPECT_EQ(idsOf(data.realMarkers), Ids{3});
}

TEST(LqProblemDefDataEditing, RaisesTheHighestIdOfAllToTheLowest) {
    LqProblemDefData data;
    addFixMarker(data, LqPDDFixMarker(std::numeric_limits<int>::max(), 1.0F, "Hips"));
    data.insertRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{std::numeric_limits<int>::min()});
}

TEST(LqProblemDefDataEditing, RemovesOneRealMarkerById) {
    LqProblemDefData data;
    fillMarkers(data);
    data.removeRealMarker(2);
    EXPECT_EQ(data.realMarkers.count(), 2);
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 4}));
    data.removeRealMarker(6);
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 4}));
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{6});
}

TEST(LqProblemDefDataEditing, RemovesTheFirstOfTwoRealMarkersOfOneId) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hand"));
    data.removeRealMarker(2);
    ASSERT_EQ(idsOf(data.realMarkers), Ids{2});
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Hand");
}

TEST(LqProblemDefDataEditing, RemovesTheLastRealMarkerWhileThereIsOne) {
    LqProblemDefData data;
    fillMarkers(data);
    data.removeLastRealMarker();
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 2}));
    for (int i = 0; i < 3; ++i) {
        data.removeLastRealMarker();
    }
    EXPECT_EQ(data.realMarkers.count(), 0);
}

TEST(LqProblemDefDataEditing, RemovesMarkersOfAllKindsByTheirIds) {
    LqProblemDefData data;
    fillMarkers(data);
    data.addArtificialMarker(LqPDDArtificialMarker(10, 11, 1.0F, "Hips", "Hand"));
    data.removeMarkers(arrayOf(Ids{4, 5, 6, 7, 9, 10, 99, 1}));
    EXPECT_EQ(data.realMarkers.count(), 1);
    EXPECT_EQ(idsOf(data.realMarkers), Ids{2});
    EXPECT_EQ(data.globalDirectionMarkers.count(), 0);
    EXPECT_EQ(data.fixMarkers.count(), 0);
    EXPECT_EQ(data.doubleMarkers.count(), 0);
    EXPECT_EQ(pairIdsOf(data), (PairIds{{8, 9}}));
}

// --- Whole arrays --------------------------------------------------------------------------------

TEST(LqProblemDefDataEditing, SetsWholeArraysByCopying) {
    LqProblemDefData data;
    fillFigure(data);
    addSysVar(data, 9, "old");
    {
        LqPDDSysVar sysVar(1, "x");
        LqPDDBodyMap body("Ball", referenceSystemName);
        LqPDDFixMarker fix(2, 1.0F, "Ball");
        LqPDDRealMarker real(1, 0, 1.0F, "Ball");
        LqPDDGlobalDirectionMarker direction(3, 1.0F, "Ball");
        LqPDDDoubleMarker twofold(4, 0, 1.0F, "Ball");
        LqPDDArtificialMarker pair(5, 6, 1.0F, "Ball", "Ball");
        data.setSysVars(arrayOf<LqPDDSysVar>({&sysVar}));
        data.setBodies(arrayOf<LqPDDBodyMap>({&body}));
        data.setFixMarkers(arrayOf<LqPDDFixMarker>({&fix, &fix}));
        data.setRealMarkers(arrayOf<LqPDDRealMarker>({&real}));
        data.setGlobalDirectionMarkers(arrayOf<LqPDDGlobalDirectionMarker>({&direction}));
        data.setDoubleMarkers(arrayOf<LqPDDDoubleMarker>({&twofold}));
        data.setArtificialMarkers(arrayOf<LqPDDArtificialMarker>({&pair}));
    }
    EXPECT_EQ(idsOf(data.sysVars), Ids{1});
    EXPECT_EQ(namesOf(data.bodies), Names{"Ball"});
    EXPECT_EQ(idsOf(data.fixMarkers), (Ids{2, 2}));
    EXPECT_NE(data.fixMarkers[0], data.fixMarkers[1]);
    EXPECT_EQ(idsOf(data.realMarkers), Ids{1});
    EXPECT_EQ(idsOf(data.globalDirectionMarkers), Ids{3});
    EXPECT_EQ(idsOf(data.doubleMarkers), Ids{4});
    EXPECT_EQ(pairIdsOf(data), (PairIds{{5, 6}}));
}

TEST(LqProblemDefDataEditing, SetsAnArrayToItself) {
    LqProblemDefData data;
    fillFigure(data);
    addSysVar(data, 1, "x");
    const LqProblemDefData before(data);
    data.setBodies(data.bodies);
    data.setRealMarkers(data.realMarkers);
    data.setSysVars(data.sysVars);
    EXPECT_TRUE(equals(data, before));
}

TEST(LqProblemDefDataEditing, SetsAnArrayEmpty) {
    LqProblemDefData data;
    fillFigure(data);
    data.setBodies({});
    EXPECT_EQ(data.bodies.count(), 0);
    EXPECT_EQ(data.realMarkers.count(), 5);
}

// --- System variables ----------------------------------------------------------------------------

TEST(LqProblemDefDataEditing, AppendsSystemVariables) {
    LqProblemDefData data;
    addSysVar(data, 1, "x");
    addSysVar(data, 2, "y");
    data.appendSysVars({});
    EXPECT_EQ(data.sysVars.count(), 2);
    data.appendSysVars(data.sysVars);
    EXPECT_EQ(idsOf(data.sysVars), (Ids{1, 2, 1, 2}));
    EXPECT_NE(data.sysVars[0], data.sysVars[2]);
}

TEST(LqProblemDefDataEditing, RemovesSystemVariablesFromAllMappings) {
    LqProblemDefData data;
    for (const int id : {1, 2, 3, 4}) {
        addSysVar(data, id, "x");
    }
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.typeOneVar = 2;
    body.setMapping(0, 2);
    body.setMapping(1, 3);
    body.setMapping(2, combination(0.5F, {{1, 1.0F}, {2, 2.0F}, {3, 3.0F}}));
    body.setMapping(3, combination(0.25F, {{4, 4.0F}}));
    body.setMapping(4, constantMapping(0.125F));
    data.removeSysVars(arrayOf(Ids{4, 2, 9, 0}));
    EXPECT_EQ(data.sysVars.count(), 2);
    EXPECT_EQ(idsOf(data.sysVars), (Ids{1, 3}));
    EXPECT_EQ(body.typeOneVar, 2);
    EXPECT_TRUE(equals(body.mappings[0], LqBasicVarMapping<float>(0)));
    EXPECT_TRUE(equals(body.mappings[1], LqBasicVarMapping<float>(3)));
    EXPECT_TRUE(equals(body.mappings[2], combination(0.5F, {{1, 1.0F}, {3, 3.0F}})));
    EXPECT_TRUE(equals(body.mappings[3], constantMapping(0.25F)));
    EXPECT_TRUE(equals(body.mappings[4], constantMapping(0.125F)));
    EXPECT_TRUE(equals(body.mappings[5], LqBasicVarMapping<float>(0)));
}

// --- Includes ------------------------------------------------------------------------------------

TEST(LqProblemDefDataEditing, AddsExtendsAndClearsIncludes) {
    LqProblemDefData data;
    data.addInclude(LqPDDInclude("arm.prb", "_left", 10, 20));
    data.addInclude(LqPDDInclude("leg.prb"));
    data.appendToIncludeSuffixes("_1");
    std::vector<std::string> found;
    for (const LqPDDInclude* include : LmListView<LqPDDInclude>(data.includes)) {
        found.push_back(std::string(include->fileName.c_str()) + " " + include->bodyNameSuffix.c_str());
    }
    EXPECT_EQ(found, (Names{"arm.prb _left_1", "leg.prb _1"}));
    data.appendToIncludeSuffixes(static_cast<LqPDDInclude*>(data.includes[1])->bodyNameSuffix);
    EXPECT_TRUE(static_cast<LqPDDInclude*>(data.includes[0])->bodyNameSuffix == "_left_1_1");
    EXPECT_TRUE(static_cast<LqPDDInclude*>(data.includes[1])->bodyNameSuffix == "_1_1");
    data.clearIncludes();
    EXPECT_EQ(data.includes.count(), 0);
}

} // namespace
} // namespace quillon::test
