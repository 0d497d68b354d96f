#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/LmListView.h"
#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::test {
namespace {

TEST(LqProblemDefDataLookups, FindNothingInAnEmptyDefinition) {
    const LqProblemDefData data;
    EXPECT_EQ(data.findBody("Hips"), nullptr);
    EXPECT_FALSE(data.hasBody("Hips"));
    EXPECT_EQ(data.bodyIndex("Hips"), std::nullopt);
    EXPECT_EQ(data.findBodyByNumber(1), nullptr);
    EXPECT_EQ(data.findSysVar("x"), nullptr);
    EXPECT_EQ(data.findSysVarById(1), nullptr);
    EXPECT_EQ(data.findRealMarker(1), nullptr);
    EXPECT_EQ(data.realMarkerIndex(1), -1);
    EXPECT_EQ(data.findArtificialMarker(1), nullptr);
    EXPECT_EQ(data.artificialMarkerIndex(1), -1);
    EXPECT_FALSE(data.hasRealMarker(1));
    EXPECT_FALSE(data.hasFixMarker(1));
    EXPECT_FALSE(data.hasDoubleMarker(1));
}

TEST(LqProblemDefDataLookups, FindBodiesByExactNameAndByNumber) {
    LqProblemDefData data;
    LqPDDBodyMap* const hips = &data.addBody("Hips", referenceSystemName, 3);
    LqPDDBodyMap* const lowerCase = &data.addBody("hips", "Hips", 4);
    data.addBody("Hips", "hips", 3);
    EXPECT_EQ(data.findBody("Hips"), hips);
    EXPECT_EQ(data.findBody("hips"), lowerCase);
    EXPECT_EQ(data.findBody("Hip"), nullptr);
    EXPECT_EQ(data.findBody("Hips "), nullptr);
    EXPECT_EQ(data.bodyIndex("hips"), std::optional<int>(1));
    EXPECT_TRUE(data.hasBody("hips"));
    EXPECT_FALSE(data.hasBody("HIPS"));
    EXPECT_EQ(data.findBodyByNumber(3), hips);
    EXPECT_EQ(data.findBodyByNumber(4), lowerCase);
    EXPECT_EQ(data.findBodyByNumber(5), nullptr);
}

TEST(LqProblemDefDataLookups, FindNoBodyForTheReferenceSystem) {
    LqProblemDefData data;
    data.addBody("Hips", "ReferenceSystemZero", 1);
    EXPECT_EQ(data.findBody("ReferenceSystemZero"), nullptr);
}

TEST(LqProblemDefDataLookups, PassOverNullSlots) {
    LqProblemDefData data;
    data.bodies.append(nullptr);
    data.sysVars.append(nullptr);
    data.realMarkers.append(nullptr);
    data.fixMarkers.append(nullptr);
    data.artificialMarkers.append(nullptr);
    LqPDDBodyMap* const hips = &data.addBody("Hips", referenceSystemName, 3);
    addSysVar(data, 2, "x");
    data.addRealMarker(LqPDDRealMarker(6, 0, 1.0F, "Hips"));
    EXPECT_EQ(data.findBody("Hips"), hips);
    EXPECT_EQ(data.bodyIndex("Hips"), std::optional<int>(1));
    EXPECT_EQ(data.findBodyByNumber(3), hips);
    EXPECT_EQ(data.findSysVarById(2), data.sysVars[1]);
    EXPECT_EQ(data.highestSysVarId(), 2);
    EXPECT_EQ(data.highestMarkerId(), 6);
    EXPECT_EQ(data.highestBodyNumber(), 3);
    EXPECT_EQ(textsOf(data.duplicateBodyNames()), std::vector<std::string>{});
    EXPECT_EQ(valuesOf(data.unusedSysVars()), (std::vector<int>{1, 2}));
    EXPECT_FALSE(data.hasLinearCombinations());
    EXPECT_FALSE(data.anyBodyUsesSysVar(2));
    const LqProblemDefData copy(data);
    EXPECT_EQ(copy.bodies[0], nullptr);
    EXPECT_TRUE(equals(copy, data));
}

TEST(LqProblemDefDataLookups, FindSystemVariables) {
    LqProblemDefData data;
    addSysVar(data, 1, "Hips X");
    addSysVar(data, 2, "Hips Y");
    addSysVar(data, 2, "Hips X");
    EXPECT_EQ(data.findSysVar("Hips Y"), data.sysVars[1]);
    EXPECT_EQ(data.findSysVar("Hips X"), data.sysVars[0]);
    EXPECT_EQ(data.findSysVar("hips x"), nullptr);
    EXPECT_EQ(data.findSysVarById(2), data.sysVars[1]);
    EXPECT_EQ(data.findSysVarById(3), nullptr);
}

TEST(LqProblemDefDataLookups, FindMarkersOfEachKindByTheirOwnId) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(3, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(4, 9, 1.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(5, 6, 1.0F, "Hips", "Hand"));
    EXPECT_EQ(data.findRealMarker(2), data.realMarkers[1]);
    EXPECT_EQ(data.realMarkerIndex(2), 1);
    EXPECT_EQ(data.realMarkerIndex(3), -1);
    EXPECT_EQ(data.findArtificialMarker(5), data.artificialMarkers[0]);
    EXPECT_EQ(data.artificialMarkerIndex(5), 0);
    EXPECT_EQ(data.findArtificialMarker(6), nullptr);
    EXPECT_EQ(data.artificialMarkerIndex(6), -1);
    EXPECT_TRUE(data.hasRealMarker(1));
    EXPECT_FALSE(data.hasRealMarker(3));
    EXPECT_TRUE(data.hasFixMarker(3));
    EXPECT_FALSE(data.hasFixMarker(1));
    EXPECT_TRUE(data.hasDoubleMarker(4));
    EXPECT_FALSE(data.hasDoubleMarker(9));
}

TEST(LqProblemDefDataLookups, FindTheFirstMarkerOfAnId) {
    LqProblemDefData data;
    for (const int id : {3, 5, 5}) {
        data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
        data.addArtificialMarker(LqPDDArtificialMarker(id, 9, 1.0F, "Hips", "Hips"));
    }
    EXPECT_EQ(data.findRealMarker(5), data.realMarkers[1]);
    EXPECT_EQ(data.realMarkerIndex(5), 1);
    EXPECT_EQ(data.findArtificialMarker(5), data.artificialMarkers[1]);
    EXPECT_EQ(data.artificialMarkerIndex(5), 1);
}

TEST(LqProblemDefDataSummaries, AreZeroForAnEmptyDefinition) {
    const LqProblemDefData data;
    EXPECT_TRUE(data.isEmpty());
    EXPECT_TRUE(data.isBlank());
    EXPECT_FALSE(data.isIncludesOnly());
    EXPECT_EQ(data.highestSysVarId(), 0);
    EXPECT_EQ(data.highestMarkerId(), 0);
    EXPECT_EQ(data.highestBodyNumber(), 0);
    EXPECT_EQ(data.markerCount(), 0);
    EXPECT_FALSE(data.hasLinearCombinations());
    EXPECT_EQ(valuesOf(data.unusedSysVars()), std::vector<int>{});
    EXPECT_FALSE(data.hasUnusedSysVars());
    EXPECT_FALSE(data.anyBodyUsesSysVar(1));
}

TEST(LqProblemDefDataSummaries, AnIncludeAloneLeavesADefinitionEmptyButNotBlank) {
    LqProblemDefData data;
    data.addInclude(LqPDDInclude("arm.prb"));
    EXPECT_TRUE(data.isEmpty());
    EXPECT_FALSE(data.isBlank());
    EXPECT_TRUE(data.isIncludesOnly());
}

TEST(LqProblemDefDataSummaries, ARecordInAnyOfTheSevenArraysEndsEmptiness) {
    LqProblemDefData withSysVar;
    addSysVar(withSysVar, 1, "x");
    LqProblemDefData withBody;
    withBody.addBody("Hips", referenceSystemName, 1);
    LqProblemDefData withFix;
    addFixMarker(withFix, LqPDDFixMarker());
    LqProblemDefData withReal;
    withReal.addRealMarker(LqPDDRealMarker());
    LqProblemDefData withDirection;
    withDirection.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker());
    LqProblemDefData withDouble;
    addDoubleMarker(withDouble, LqPDDDoubleMarker());
    LqProblemDefData withPair;
    withPair.addArtificialMarker(LqPDDArtificialMarker());
    for (LqProblemDefData* data :
         {&withSysVar, &withBody, &withFix, &withReal, &withDirection, &withDouble, &withPair}) {
        EXPECT_FALSE(data->isEmpty());
        EXPECT_FALSE(data->isBlank());
        data->addInclude(LqPDDInclude());
        EXPECT_FALSE(data->isIncludesOnly());
        data->clear();
        EXPECT_TRUE(data->isBlank());
    }
}

TEST(LqProblemDefDataSummaries, HighestMarkerIdSeesBothIdsOfAPair) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(4, 0, 1.0F, "Hips"));
    EXPECT_EQ(data.highestMarkerId(), 4);
    data.addArtificialMarker(LqPDDArtificialMarker(5, 9, 1.0F, "Hips", "Hand"));
    EXPECT_EQ(data.highestMarkerId(), 9);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(12, 1.0F, "Hips"));
    EXPECT_EQ(data.highestMarkerId(), 12);
    addFixMarker(data, LqPDDFixMarker(20, 1.0F, "Hips"));
    EXPECT_EQ(data.highestMarkerId(), 20);
    addDoubleMarker(data, LqPDDDoubleMarker(21, 99, 1.0F, "Hips"));
    EXPECT_EQ(data.highestMarkerId(), 21);
}

TEST(LqProblemDefDataSummaries, HighestBodyNumberIsNeverNegative) {
    LqProblemDefData data;
    data.addBody("a", referenceSystemName, -7);
    EXPECT_EQ(data.highestBodyNumber(), 0);
    data.addBody("b", referenceSystemName, 3);
    data.addBody("c", referenceSystemName, 2);
    EXPECT_EQ(data.highestBodyNumber(), 3);
}

TEST(LqProblemDefDataSummaries, AnArtificialPairCountsTwice) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(2, 3, 1.0F, "Hips", "Hand"));
    EXPECT_EQ(data.markerCount(), 3);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker());
    addFixMarker(data, LqPDDFixMarker());
    addDoubleMarker(data, LqPDDDoubleMarker());
    EXPECT_EQ(data.markerCount(), 6);
}

TEST(LqProblemDefDataSummaries, AConstantIsALinearCombinationToo) {
    LqProblemDefData data;
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.setMapping(0, 3);
    EXPECT_FALSE(data.hasLinearCombinations());
    body.setMapping(5, constantMapping(0.0F));
    EXPECT_TRUE(data.hasLinearCombinations());
}

TEST(LqProblemDefDataSummaries, AppendTheRealMarkersOfABodyToAList) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hand"));
    data.addRealMarker(LqPDDRealMarker(3, 0, 1.0F, "Hips"));
    LmDoubleLinkedList markers;
    data.realMarkersOnBody("Hand", markers);
    data.realMarkersOnBody("Hips", markers);
    data.realMarkersOnBody("hips", markers);
    std::vector<int> ids;
    for (const LqPDDRealMarker* marker : LmListView<LqPDDRealMarker>(markers)) {
        ids.push_back(marker->id);
    }
    EXPECT_EQ(ids, (std::vector<int>{2, 1, 3}));
}

TEST(LqProblemDefDataSummaries, AppendOneIdPerPairOnABody) {
    LqProblemDefData data;
    data.addArtificialMarker(LqPDDArtificialMarker(1, 2, 1.0F, "Hips", "Hand"));
    data.addArtificialMarker(LqPDDArtificialMarker(3, 4, 1.0F, "Hand", "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(5, 6, 1.0F, "Hips", "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(7, 8, 1.0F, "Hand", "Hand"));
    LmDArray<int> ids = arrayOf(std::vector<int>{99});
    data.artificialIdsOnBody("Hips", ids);
    EXPECT_EQ(valuesOf(ids), (std::vector<int>{99, 1, 4, 5}));
}

TEST(LqProblemDefDataSummaries, ANameThatOccursThreeTimesIsADuplicateTwice) {
    LqProblemDefData data;
    for (const char* name : {"a", "b", "a", "c", "b", "a", "A"}) {
        data.addBody(name, referenceSystemName, 1);
    }
    EXPECT_EQ(textsOf(data.duplicateBodyNames()), (std::vector<std::string>{"a", "b", "a"}));
}

TEST(LqProblemDefDataSummaries, ATypeVariableIsUsedOnlyWhenTheTypeSaysSo) {
    LqProblemDefData data;
    addSysVar(data, 1, "one");
    addSysVar(data, 8, "eight");
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.setMapping(0, 2);
    body.setMapping(1, combination(0.0F, {{3, 1.0F}, {4, 1.0F}}));
    body.typeOneVar = 5;
    body.typeTwoVar = 6;
    const std::pair<int, std::vector<int>> unusedByType[] = {
        {0, {1, 5, 6, 7, 8}}, {1, {1, 6, 7, 8}}, {2, {1, 5, 7, 8}}, {3, {1, 7, 8}}, {4, {1, 5, 6, 7, 8}}};
    for (const auto& [type, unused] : unusedByType) {
        body.type = type;
        EXPECT_EQ(valuesOf(data.unusedSysVars()), unused) << type;
        EXPECT_TRUE(data.hasUnusedSysVars()) << type;
    }
}

TEST(LqProblemDefDataSummaries, NothingIsUnusedWhenEachIdIsUsedOnce) {
    LqProblemDefData data;
    addSysVar(data, 2, "two");
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.setMapping(0, 2);
    body.setMapping(1, 1);
    body.setMapping(2, 1);
    EXPECT_FALSE(data.hasUnusedSysVars());
    EXPECT_EQ(valuesOf(data.unusedSysVars()), std::vector<int>{});
}

TEST(LqProblemDefDataSummaries, IdsOfNoVariableAreNoUse) {
    LqProblemDefData data;
    addSysVar(data, 2, "two");
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.type = 3;
    body.typeOneVar = -5;
    body.typeTwoVar = std::numeric_limits<int>::max();
    body.setMapping(0, 3);
    body.setMapping(1, combination(0.0F, {{-1, 1.0F}, {0, 1.0F}, {1000000, 1.0F}}));
    EXPECT_EQ(valuesOf(data.unusedSysVars()), (std::vector<int>{1, 2}));
}

TEST(LqProblemDefDataSummaries, OfNegativeIdsNoneAreUnused) {
    LqProblemDefData data;
    addSysVar(data, -4, "minus four");
    data.addRealMarker(LqPDDRealMarker(-2, 0, 1.0F, "Hips"));
    EXPECT_EQ(data.highestSysVarId(), -4);
    EXPECT_EQ(data.highestMarkerId(), -2);
    EXPECT_FALSE(data.hasUnusedSysVars());
    EXPECT_EQ(valuesOf(data.unusedSysVars()), std::vector<int>{});
}

TEST(LqProblemDefDataSummaries, SomeBodyUsesAVariable) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    LqPDDBodyMap& hand = data.addBody("Hand", "Hips", 2);
    hand.typeTwoVar = 3;
    hand.setMapping(4, 6);
    EXPECT_TRUE(data.anyBodyUsesSysVar(3));
    EXPECT_TRUE(data.anyBodyUsesSysVar(6));
    EXPECT_FALSE(data.anyBodyUsesSysVar(4));
}

} // namespace
} // namespace quillon::test
