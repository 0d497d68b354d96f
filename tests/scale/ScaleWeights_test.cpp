#include "quillon/scale/LqScaleDefData.h"

#include "tests/scale/ScaleSamples.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace quillon {
namespace {

using test::error;
using test::idsOf;
using test::Scale;
using test::StatusChain;
using test::temp;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class ScaleWeights : public testing::Test {
protected:
    /// Three real markers with overrides for 1 and 3, temps 4 and 5, the pairs 8, 9 and 10, 11.
    ScaleWeights() {
        definition.realCount = 3;
        definition.realWeightOverrides.append({1, 0.1F});
        definition.realWeightOverrides.append({3, 0.3F});
        definition.temps.append(temp(4));
        definition.temps.append(temp(5));
        definition.artificialWeightOverrides.append({8, 9, 0.8F});
        definition.artificialWeightOverrides.append({10, 11, 0.9F});
    }

    std::vector<std::pair<int, float>> weights() const {
        std::vector<std::pair<int, float>> pairs;
        for (const Scale::RealWeightOverride_t& record : definition.realWeightOverrides) {
            pairs.emplace_back(record.markerId, record.weight);
        }
        return pairs;
    }

    std::vector<std::pair<int, int>> pairs() const {
        std::vector<std::pair<int, int>> ids;
        for (const Scale::ArtificialWeightOverride_t& record : definition.artificialWeightOverrides) {
            ids.emplace_back(record.firstMarkerId, record.secondMarkerId);
        }
        return ids;
    }

    Scale definition;

private:
    test::CleanStatus cleanStatus;
};

TEST_F(ScaleWeights, TheNumberOfRealsIsSetAlone) {
    definition.setRealCount(7);
    EXPECT_EQ(definition.realCount, 7);
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(4, 5));
}

TEST_F(ScaleWeights, InsertingARealMovesOverridesFromItsIdOnAndAllThatLiesAbove) {
    definition.insertRealMarker(3);
    EXPECT_EQ(definition.realCount, 4);
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 0.1F), Pair(4, 0.3F)));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(5, 6));
    EXPECT_THAT(pairs(), ElementsAre(Pair(9, 10), Pair(11, 12)));
}

TEST_F(ScaleWeights, ARealMayBeInsertedBehindTheLast) {
    definition.insertRealMarker(4);
    EXPECT_EQ(definition.realCount, 4);
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 0.1F), Pair(3, 0.3F)));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(5, 6));
}

TEST_F(ScaleWeights, ARealInsertedTooFarBehindIsNotCountedButMovesTheTempsAndPairs) {
    definition.insertRealMarker(5);
    EXPECT_EQ(definition.realCount, 3);
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 0.1F), Pair(3, 0.3F)));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(5, 6));
    EXPECT_THAT(pairs(), ElementsAre(Pair(9, 10), Pair(11, 12)));
}

TEST_F(ScaleWeights, ARealInsertedTooFarBehindMovesTheOverridesFromItsIdOn) {
    for (const int id : {4, 5, 6}) {
        definition.addRealWeightOverride(id, 0.5F);
    }
    definition.insertRealMarker(5);
    EXPECT_EQ(definition.realCount, 3);
    EXPECT_THAT(weights(),
                ElementsAre(Pair(1, 0.1F), Pair(3, 0.3F), Pair(4, 0.5F), Pair(6, 0.5F), Pair(7, 0.5F)));
}

TEST_F(ScaleWeights, InsertingRaisesBothIdsOfAPairWhateverTheId) {
    for (const int id : {1, 9, 100}) {
        const int before = definition.artificialWeightOverrides[0].firstMarkerId;
        definition.insertRealMarker(id);
        EXPECT_EQ(definition.artificialWeightOverrides[0].firstMarkerId, before + 1) << id;
        EXPECT_EQ(definition.artificialWeightOverrides[0].secondMarkerId, before + 2) << id;
    }
}

TEST_F(ScaleWeights, RemovingARealDropsItsOverrideAndMovesTheRestDown) {
    definition.removeRealMarker(1);
    EXPECT_EQ(definition.realCount, 2);
    EXPECT_THAT(weights(), ElementsAre(Pair(2, 0.3F)));
    EXPECT_THAT(idsOf(definition.temps), ElementsAre(3, 4));
    EXPECT_THAT(pairs(), ElementsAre(Pair(7, 8), Pair(9, 10)));
}

TEST_F(ScaleWeights, RemovingARealWithoutAnOverrideKeepsThoseBelowIt) {
    definition.removeRealMarker(2);
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 0.1F), Pair(2, 0.3F)));
}

TEST_F(ScaleWeights, RemovingAboveTheRealsDoesNothing) {
    const Scale before(definition);
    definition.removeRealMarker(4);
    EXPECT_EQ(definition, before);
}

TEST_F(ScaleWeights, RemovingUndoesInserting) {
    const Scale before(definition);
    for (const int id : {1, 2, 3, 4}) {
        definition.insertRealMarker(id);
        definition.removeRealMarker(id);
        EXPECT_EQ(definition, before) << id;
    }
}

TEST_F(ScaleWeights, IdsAtTheEndOfTheirRangeWrapAround) {
    definition.realCount = 2147483647;
    definition.temps[0].id = 2147483647;
    definition.insertRealMarker(1);
    EXPECT_EQ(definition.temps[0].id, -2147483647 - 1);
}

TEST_F(ScaleWeights, OfRealsAreFoundById) {
    EXPECT_EQ(definition.realWeightOverrideCount(), 2);
    EXPECT_TRUE(definition.hasRealWeightOverride(3));
    EXPECT_FALSE(definition.hasRealWeightOverride(2));
    EXPECT_EQ(definition.findRealWeightOverride(3), &definition.realWeightOverrides[1]);
    EXPECT_EQ(definition.findRealWeightOverride(2), nullptr);
    EXPECT_EQ(std::as_const(definition).findRealWeightOverride(1), &definition.realWeightOverrides[0]);
    EXPECT_EQ(Scale().findRealWeightOverride(1), nullptr);
}

TEST_F(ScaleWeights, OfRealsAreSetOnlyWhereThereIsOne) {
    definition.setRealWeight(3, 5);
    definition.setRealWeight({1, 6});
    definition.setRealWeight(2, 7);
    definition.setRealWeight({9, 7});
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 6.0F), Pair(3, 5.0F)));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleWeights, OfRealsAreAddedOnce) {
    definition.addRealWeightOverride(2, 5);
    definition.addRealWeightOverride({4, 6});
    EXPECT_EQ(test::takeChain(), StatusChain{});
    definition.addRealWeightOverride(2, 7);
    EXPECT_EQ(test::takeChain(), StatusChain{error("Duplicate entry.")});
    definition.addRealWeightOverride({1, 7});
    EXPECT_EQ(test::takeChain(), StatusChain{error("Duplicate entry.")});
    EXPECT_THAT(weights(), ElementsAre(Pair(1, 0.1F), Pair(3, 0.3F), Pair(2, 5.0F), Pair(4, 6.0F)));
}

TEST_F(ScaleWeights, OfRealsAreRemovedWithoutAGap) {
    definition.removeRealWeightOverride(1);
    EXPECT_THAT(weights(), ElementsAre(Pair(3, 0.3F)));
    definition.removeRealWeightOverride(1);
    definition.removeRealWeightOverride(3);
    EXPECT_THAT(weights(), IsEmpty());
}

TEST_F(ScaleWeights, OfPairsAreFoundByEitherId) {
    for (const int id : {8, 9, 10, 11}) {
        EXPECT_TRUE(definition.hasArtificialWeightOverride(id)) << id;
    }
    EXPECT_FALSE(definition.hasArtificialWeightOverride(12));
    EXPECT_EQ(definition.findArtificialPair(9), (Scale::ArtificialWeightOverride_t{8, 9, 0.8F}));
    EXPECT_EQ(definition.findArtificialPair(10), (Scale::ArtificialWeightOverride_t{10, 11, 0.9F}));
    EXPECT_EQ(definition.findArtificialPair(12), (Scale::ArtificialWeightOverride_t{-1, -1, 0}));
}

TEST_F(ScaleWeights, OfPairsAreSetInTheFirstPairThatHoldsTheId) {
    definition.artificialWeightOverrides.append({12, 9, 0.7F});
    definition.setArtificialWeight(9, 5);
    definition.setArtificialWeight(20, 6);
    EXPECT_EQ(definition.artificialWeightOverrides[0].weight, 5.0F);
    EXPECT_EQ(definition.artificialWeightOverrides[1].weight, 0.9F);
    EXPECT_EQ(definition.artificialWeightOverrides[2].weight, 0.7F);
}

TEST_F(ScaleWeights, OfPairsAreAddedUnlessTheFirstIdIsInAPair) {
    for (const int first : {8, 9}) {
        definition.addArtificialWeightOverride({first, 20, 1});
        EXPECT_EQ(test::takeChain(), StatusChain{error("Duplicate entry.")}) << first;
    }
    EXPECT_EQ(definition.artificialWeightOverrides.count(), 2);
    definition.addArtificialWeightOverride({20, 8, 1});
    EXPECT_EQ(test::takeChain(), StatusChain{}) << "the second id is not tested";
    EXPECT_THAT(pairs(), ElementsAre(Pair(8, 9), Pair(10, 11), Pair(20, 8)));
}

TEST_F(ScaleWeights, OfTwoPairsWithOneIdTheFirstIsFoundAndRemoved) {
    definition.artificialWeightOverrides.append({12, 9, 0.7F});
    definition.artificialWeightOverrides.append({9, 13, 0.6F});
    EXPECT_EQ(definition.findArtificialPair(9), (Scale::ArtificialWeightOverride_t{8, 9, 0.8F}));
    definition.removeArtificialWeightOverride(9);
    EXPECT_THAT(pairs(), ElementsAre(Pair(10, 11), Pair(12, 9), Pair(9, 13)));
    EXPECT_EQ(definition.findArtificialPair(9), (Scale::ArtificialWeightOverride_t{12, 9, 0.7F}));
    definition.removeArtificialWeightOverride(9);
    EXPECT_EQ(definition.findArtificialPair(9), (Scale::ArtificialWeightOverride_t{9, 13, 0.6F}));
    definition.removeArtificialWeightOverride(9);
    EXPECT_THAT(pairs(), ElementsAre(Pair(10, 11)));
}

TEST_F(ScaleWeights, OfPairsAreRemovedByEitherId) {
    definition.removeArtificialWeightOverride(9);
    EXPECT_THAT(pairs(), ElementsAre(Pair(10, 11)));
    definition.removeArtificialWeightOverride(9);
    EXPECT_THAT(pairs(), ElementsAre(Pair(10, 11)));
    definition.removeArtificialWeightOverride(10);
    EXPECT_THAT(pairs(), IsEmpty());
}

} // namespace
} // namespace quillon
