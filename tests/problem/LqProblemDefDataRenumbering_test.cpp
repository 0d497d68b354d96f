#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::test {
namespace {

using Ids = std::vector<int>;
using PairIds = std::vector<std::pair<int, int>>;

TEST(LqProblemDefDataRenumbering, ShiftsBothIdsOfEveryPair) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(2, 3, 1.0F, "Hips", "Hand"));
    data.addArtificialMarker(LqPDDArtificialMarker(5, 4, 1.0F, "Hips", "Hand"));
    data.shiftArtificialIds(10);
    EXPECT_EQ(pairIdsOf(data), (PairIds{{12, 13}, {15, 14}}));
    data.shiftArtificialIds(-12);
    EXPECT_EQ(pairIdsOf(data), (PairIds{{0, 1}, {3, 2}}));
    EXPECT_EQ(idsOf(data.realMarkers), Ids{1});
}

TEST(LqProblemDefDataRenumbering, NumbersAllMarkersInOneRun) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(9, 0, 1.0F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hips"));
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(12, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(4, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(1, 9, 1.0F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(14, 6, 1.0F, "Hips", "Hand"));
    EXPECT_EQ(valuesOf(data.compactMarkerIds()), (Ids{5, 2, 0, 4, 0, 7, 0, 0, 1, 0, 0, 3, 0, 6}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 2}));
    EXPECT_EQ(idsOf(data.globalDirectionMarkers), Ids{3});
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{4});
    EXPECT_EQ(idsOf(data.doubleMarkers), Ids{5});
    EXPECT_EQ(data.doubleMarkers[0]->doubleId, 9);
    EXPECT_EQ(pairIdsOf(data), (PairIds{{6, 7}}));
}

TEST(LqProblemDefDataRenumbering, GivesMarkersThatShareAnIdTheLastOfTheirNumbers) {
    LqProblemDefData data;
    for (const int id : {2, 2, 3}) {
        data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
    }
    data.addArtificialMarker(LqPDDArtificialMarker(5, 3, 1.0F, "Hips", "Hand"));
    EXPECT_EQ(valuesOf(data.compactMarkerIds()), (Ids{0, 2, 5, 0, 4}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{2, 2, 5}));
    EXPECT_EQ(pairIdsOf(data), (PairIds{{4, 5}}));
}

TEST(LqProblemDefDataRenumbering, TakesWhateverATableHolds) {
    LqProblemDefData data;
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(2, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(3, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(2, 1, 1.0F, "Hips"));
    data.applyMarkerIdTable(arrayOf(Ids{0, 7, -7}));
    EXPECT_EQ(idsOf(data.realMarkers), Ids{0});
    EXPECT_EQ(idsOf(data.globalDirectionMarkers), Ids{7});
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{-7});
    EXPECT_EQ(idsOf(data.doubleMarkers), Ids{7});
    EXPECT_EQ(data.doubleMarkers[0]->doubleId, 1);
}

TEST(LqProblemDefDataRenumbering, GivesIdsBelowOneNoNumber) {
    LqProblemDefData data;
    for (const int id : {-1, 5, 0, 3, std::numeric_limits<int>::min()}) {
        data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
    }
    EXPECT_EQ(valuesOf(data.compactMarkerIds()), (Ids{0, 0, 2, 0, 1}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{-1, 1, 0, 2, std::numeric_limits<int>::min()}));
}

TEST(LqProblemDefDataRenumbering, OfADefinitionWithoutUsableIdsGivesAnEmptyTable) {
    LqProblemDefData data;
    EXPECT_EQ(data.compactMarkerIds().count(), 0);
    data.addRealMarker(LqPDDRealMarker());
    EXPECT_EQ(data.compactMarkerIds().count(), 0);
    EXPECT_EQ(idsOf(data.realMarkers), Ids{-1});
    addSysVar(data, -3, "x");
    data.compactSysVarIds();
    EXPECT_EQ(idsOf(data.sysVars), Ids{-3});
}

TEST(LqProblemDefDataRenumbering, KeepsMarkerIdsThatATableDoesNotCover) {
    LqProblemDefData data;
    for (const int id : {-1, 0, 1, 2, 3, std::numeric_limits<int>::max()}) {
        data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
    }
    data.addArtificialMarker(LqPDDArtificialMarker(2, 3, 1.0F, "Hips", "Hand"));
    data.addArtificialMarker(LqPDDArtificialMarker(-2, 1, 1.0F, "Hips", "Hand"));
    data.applyMarkerIdTable(arrayOf(Ids{20, 10}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{-1, 0, 20, 10, 3, std::numeric_limits<int>::max()}));
    EXPECT_EQ(pairIdsOf(data), (PairIds{{10, 3}, {-2, 20}}));
}

TEST(LqProblemDefDataRenumbering, MakesBodiesReferToVariablesByPosition) {
    LqProblemDefData data;
    for (const int id : {4, 1, 9}) {
        addSysVar(data, id, "x");
    }
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.typeOneVar = 9;
    body.typeTwoVar = 0;
    body.setMapping(0, 4);
    body.setMapping(1, 0);
    body.setMapping(2, combination(0.5F, {{1, 1.0F}, {9, 2.0F}, {4, 3.0F}}));
    body.setMapping(3, constantMapping(0.25F));
    body.setMapping(4, 2);
    body.setMapping(5, 10);
    data.compactSysVarIds();
    EXPECT_EQ(idsOf(data.sysVars), (Ids{4, 1, 9}));
    EXPECT_EQ(body.mappings[0].id, 1);
    EXPECT_EQ(body.mappings[1].id, 0);
    EXPECT_TRUE(equals(body.mappings[2], combination(0.5F, {{2, 1.0F}, {3, 2.0F}, {1, 3.0F}})));
    EXPECT_TRUE(equals(body.mappings[3], constantMapping(0.25F)));
    // A variable that is not there has no position, and a mapping without a variable is not driven.
    EXPECT_EQ(body.mappings[4].id, 0);
    EXPECT_EQ(body.mappings[5].id, 10);
    EXPECT_EQ(body.typeOneVar, 3);
    EXPECT_EQ(body.typeTwoVar, 0);
}

TEST(LqProblemDefDataRenumbering, KeepsVariableIdsThatATableDoesNotCover) {
    LqProblemDefData data;
    LqPDDBodyMap& body = data.addBody("Hips", referenceSystemName, 1);
    body.typeOneVar = -4;
    body.typeTwoVar = 3;
    body.setMapping(0, std::numeric_limits<int>::max());
    body.setMapping(1, combination(0.5F, {{-1, 1.0F}, {0, 1.0F}, {1, 1.0F}, {2, 1.0F}, {3, 1.0F}}));
    data.applySysVarIdTable(arrayOf(Ids{7, 8}));
    EXPECT_EQ(body.typeOneVar, -4);
    EXPECT_EQ(body.typeTwoVar, 3);
    EXPECT_EQ(body.mappings[0].id, std::numeric_limits<int>::max());
    EXPECT_TRUE(equals(body.mappings[1],
                       combination(0.5F, {{-1, 1.0F}, {0, 1.0F}, {7, 1.0F}, {8, 1.0F}, {3, 1.0F}})));
}

TEST(LqProblemDefDataRenumbering, NumbersEachMarkerOnceAfterARemoval) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    data.addBody("Hand", "Hips", 2);
    for (const char* name : {"Hand", "Hips", "Hand", "Hips"}) {
        data.addRealMarker(LqPDDRealMarker(data.realMarkers.count() + 1, 0, 1.0F, name));
    }
    data.removeBody("Hand");
    EXPECT_EQ(valuesOf(data.compactMarkerIds()), (Ids{0, 1, 0, 2}));
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 2}));
}

} // namespace
} // namespace quillon::test
