#include "quillon/problem/LqPDDRecords.h"

#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <memory>

namespace quillon::test {
namespace {

TEST(LqPDDSysVar, IsNumberZeroWithoutANameWhenNew) {
    const LqPDDSysVar sysVar;
    EXPECT_EQ(sysVar.stamp, 553482U);
    EXPECT_EQ(sysVar.id, 0);
    EXPECT_TRUE(sysVar.description == "");
}

TEST(LqPDDSysVar, CopiesIdAndDescription) {
    const LqPDDSysVar source(3, "Pelvis X");
    const LqPDDSysVar copy(source);
    LqPDDSysVar assigned;
    assigned = source;
    for (const LqPDDSysVar* each : std::initializer_list<const LqPDDSysVar*>{&copy, &assigned}) {
        EXPECT_EQ(each->stamp, 553482U);
        EXPECT_EQ(each->id, 3);
        EXPECT_TRUE(each->description == "Pelvis X");
    }
}

TEST(LqPDDBodyMap, HasNoNumberNoOrderAndNoMappingsWhenNew) {
    const LqPDDBodyMap body;
    EXPECT_EQ(body.stamp, 0xFF0082U);
    EXPECT_TRUE(body.name == "");
    EXPECT_TRUE(body.parentName == "");
    EXPECT_EQ(body.graphicsNumber, -1);
    EXPECT_EQ(body.type, 0);
    EXPECT_EQ(valuesOf(body.transformOrder), (std::vector<int>{0, 0, 0, 0, 0, 0}));
    ASSERT_EQ(body.mappings.count(), 6);
    for (const LqBasicVarMapping<float>& mapping : body.mappings) {
        EXPECT_TRUE(equals(mapping, LqBasicVarMapping<float>()));
    }
    EXPECT_EQ(body.typeOneVar, 0);
    EXPECT_EQ(body.typeTwoVar, 0);
}

LqPDDBodyMap sampleBody() {
    LqPDDBodyMap body("Thigh", "Pelvis");
    body.graphicsNumber = 4;
    body.type = 3;
    for (int k = 0; k < 6; ++k) {
        body.transformOrder[k] = 6 - k;
    }
    body.mappings[2] = combination(0.5F, {{1, 2.0F}});
    body.typeOneVar = 7;
    body.typeTwoVar = 8;
    return body;
}

TEST(LqPDDBodyMap, CopiesAllFieldsDeeply) {
    const LqPDDBodyMap source = sampleBody();
    LqPDDBodyMap assigned;
    assigned = source;
    assigned = static_cast<const LqPDDBodyMap&>(assigned);
    EXPECT_TRUE(equals(assigned, source));
    EXPECT_EQ(assigned.typeTwoVar, 8);
    assigned.mappings[2].clearTerms();
    assigned.transformOrder[0] = 1;
    EXPECT_TRUE(equals(source, sampleBody()));
}

TEST(LqPDDBodyMap, AssignsAMappingByIndexByPositionOrByABareId) {
    LqPDDBodyMap body;
    body.setMapping(0, constantMapping(1.0F));
    body.setMapping(TransformPosition{2}, combination(2.0F, {{3, 4.0F}}));
    body.setMapping(1, combination(2.5F, {{3, 4.0F}}));
    body.setMapping(TransformPosition{6}, constantMapping(6.0F));
    body.setMapping(2, combination(9.0F, {{1, 1.0F}}));
    body.setMapping(2, 5);
    EXPECT_TRUE(equals(body.mappings[0], constantMapping(1.0F)));
    EXPECT_TRUE(equals(body.mappings[1], combination(2.5F, {{3, 4.0F}})));
    EXPECT_EQ(body.mappings[2].id, 5);
    EXPECT_EQ(body.mappings[2].constant, 0.0F);
    EXPECT_EQ(body.mappings[2].terms.count(), 0);
    EXPECT_TRUE(equals(body.mappings[5], constantMapping(6.0F)));
}

TEST(LqPDDBodyMap, AssignsNothingWhereItHasNoMapping) {
    LqPDDBodyMap body;
    body.setMapping(-1, 5);
    body.setMapping(6, 5);
    body.setMapping(TransformPosition{0}, constantMapping(1.0F));
    body.setMapping(TransformPosition{7}, constantMapping(1.0F));
    body.setMapping(TransformPosition{std::numeric_limits<int>::min()}, constantMapping(1.0F));
    EXPECT_TRUE(equals(body, LqPDDBodyMap()));
}

TEST(LqPDDBodyMap, UsesTheVariablesOfItsMappingsAndItsTypeVariablesWhateverItsType) {
    LqPDDBodyMap body;
    body.mappings[0] = LqBasicVarMapping<float>(9);
    body.mappings[1] = combination(0.0F, {{4, 1.0F}, {2, 1.0F}, {9, 1.0F}});
    body.mappings[2] = constantMapping(3.0F);
    body.typeOneVar = 5;
    body.typeTwoVar = 0;
    EXPECT_EQ(bodySysVars(body), (std::set<int>{2, 4, 5, 9}));
    body.typeTwoVar = -3;
    EXPECT_EQ(bodySysVars(body), (std::set<int>{2, 4, 5, 9}));
    body.typeTwoVar = 1;
    EXPECT_EQ(bodySysVars(body), (std::set<int>{1, 2, 4, 5, 9}));
    for (const int used : {1, 2, 4, 5, 9}) {
        EXPECT_TRUE(bodyUsesSysVar(body, used)) << used;
    }
    for (const int unused : {-2, -1, 0, 3, 6}) {
        EXPECT_FALSE(bodyUsesSysVar(body, unused)) << unused;
    }
}

/// The answers of a marker to its four questions, one letter for each yes.
std::string kindsOf(const LqPDDMarker& marker) {
    return std::string(marker.isFixMarker() ? "F" : "") + (marker.isRealMarker() ? "R" : "") +
           (marker.isDoubleMarker() ? "D" : "") + (marker.isArtificialMarker() ? "A" : "");
}

TEST(LqPDDMarkers, KnowTheirKindThroughTheirBase) {
    EXPECT_EQ(kindsOf(LqPDDFixMarker()), "F");
    EXPECT_EQ(kindsOf(LqPDDRealMarker()), "R");
    EXPECT_EQ(kindsOf(LqPDDDoubleMarker()), "D");
    EXPECT_EQ(kindsOf(LqPDDArtificialMarker()), "A");
}

TEST(LqPDDMarkers, FreeTheirNamesThroughTheirBase) {
    std::unique_ptr<LqPDDMarker> marker =
        std::make_unique<LqPDDArtificialMarker>(1, 2, 0.5F, "Left Hand", "Right Hand");
    marker = std::make_unique<LqPDDRealMarker>(1, 2, 0.5F, "Left Hand");
    EXPECT_TRUE(marker->isRealMarker());
}

TEST(LqPDDMarkers, AreNumberedMinusOneWithoutWeightOrBodyWhenNew) {
    const LqPDDFixMarker fix;
    const LqPDDRealMarker real;
    const LqPDDDoubleMarker twofold;
    const LqPDDArtificialMarker pair;
    for (const LqPDDFixMarker* marker :
         std::initializer_list<const LqPDDFixMarker*>{&fix, &real, &twofold, &pair}) {
        EXPECT_EQ(marker->id, -1);
        EXPECT_EQ(marker->weight, 0.0F);
        EXPECT_TRUE(marker->bodyName == "");
    }
    EXPECT_EQ(pair.otherId, -1);
    EXPECT_TRUE(pair.otherBodyName == "");
    const LqPDDGlobalDirectionMarker direction;
    EXPECT_EQ(direction.id, -1);
    EXPECT_EQ(direction.weight, 0.0F);
    EXPECT_TRUE(direction.bodyName == "");
}

TEST(LqPDDInclude, HasNoOffsetsWhenNew) {
    const LqPDDInclude include;
    EXPECT_TRUE(include.fileName == "");
    EXPECT_TRUE(include.bodyNameSuffix == "");
    EXPECT_EQ(include.bodyIdOffset, 0);
    EXPECT_EQ(include.sysVarIdOffset, -1);
}

} // namespace
} // namespace quillon::test
