// The start and the sequence of marker ids, for every choice of kinds that are there.

#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::test {
namespace {

constexpr int lowestId = std::numeric_limits<int>::min();
constexpr int highestId = std::numeric_limits<int>::max();

/// The kinds of markers in the order of their numbering; two markers of a kind take two ids, as a pair does.
constexpr int kindCount = 5;
constexpr int directionKind = 1;
constexpr int pairKind = 4;

void addTwoIds(LqProblemDefData& data, int kind, int firstId) {
    for (const int id : {firstId, firstId + 1}) {
        switch (kind) {
        case 0:
            data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "Hips"));
            break;
        case directionKind:
            data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(id, 1.0F, "Hips"));
            break;
        case 2:
            addFixMarker(data, LqPDDFixMarker(id, 1.0F, "Hips"));
            break;
        case 3:
            addDoubleMarker(data, LqPDDDoubleMarker(id, 0, 1.0F, "Hips"));
            break;
        default:
            data.addArtificialMarker(LqPDDArtificialMarker(id, id + 1, 1.0F, "Hips", "Hips"));
            return;
        }
    }
}

bool holds(unsigned kinds, int kind) {
    return (kinds >> kind & 1U) != 0;
}

TEST(ProblemDefMarkerIds, InOneRunOverAllKindsPassUnlessFixOrDoubleOnesStandBehindGlobalDirections) {
    for (unsigned kinds = 0; kinds != 1U << kindCount; ++kinds) {
        LqProblemDefData data;
        int nextId = 1;
        for (int kind = 0; kind != kindCount; ++kind) {
            if (holds(kinds, kind)) {
                addTwoIds(data, kind, nextId);
                nextId += 2;
            }
        }
        const bool mustFail = holds(kinds, directionKind) && (holds(kinds, 2) || holds(kinds, 3));
        EXPECT_TRUE(data.hasValidMarkerIdStart()) << kinds;
        EXPECT_EQ(data.hasConsecutiveMarkerIds(), !mustFail) << kinds;
    }
}

TEST(ProblemDefMarkerIds, ThatStartAtAnyOtherNumberFailBothTests) {
    for (const int start : {2, 0, -1, lowestId, highestId - 10}) {
        for (unsigned kinds = 1; kinds != 1U << kindCount; ++kinds) {
            LqProblemDefData data;
            int nextId = start;
            for (int kind = 0; kind != kindCount; ++kind) {
                if (holds(kinds, kind)) {
                    addTwoIds(data, kind, nextId);
                    nextId += 2;
                }
            }
            EXPECT_FALSE(data.hasValidMarkerIdStart()) << start << " " << kinds;
            EXPECT_FALSE(data.hasConsecutiveMarkerIds()) << start << " " << kinds;
        }
    }
}

/// Ids with which the kinds pass: fix and double markers go on behind the real ones, past the global
/// directions, and pairs behind the last kind in front of them. `gapBefore` moves one kind up by 1.
void addPassing(LqProblemDefData& data, unsigned kinds, int gapBefore) {
    int nextId = 1;
    int nextBehindDirections = 1;
    for (int kind = 0; kind != kindCount; ++kind) {
        if (!holds(kinds, kind)) {
            continue;
        }
        const bool behindDirections = kind == pairKind && !holds(kinds, 2) && !holds(kinds, 3);
        int id = behindDirections ? nextBehindDirections : nextId;
        id += kind == gapBefore ? 1 : 0;
        addTwoIds(data, kind, id);
        nextBehindDirections = id + 2;
        nextId = kind == directionKind ? nextId : id + 2;
    }
}

TEST(ProblemDefMarkerIds, FixAndDoubleOnesGoOnBehindTheRealOnes) {
    for (unsigned kinds = 0; kinds != 1U << kindCount; ++kinds) {
        LqProblemDefData data;
        addPassing(data, kinds, -1);
        EXPECT_TRUE(data.hasConsecutiveMarkerIds()) << kinds;
    }
}

TEST(ProblemDefMarkerIds, WithAGapBeforeAnyKindFail) {
    for (unsigned kinds = 1; kinds != 1U << kindCount; ++kinds) {
        for (int kind = 0; kind != kindCount; ++kind) {
            if (holds(kinds, kind)) {
                LqProblemDefData data;
                addPassing(data, kinds, kind);
                EXPECT_FALSE(data.hasConsecutiveMarkerIds()) << kinds << " " << kind;
            }
        }
    }
}

TEST(ProblemDefMarkerIds, WithinAKindAreInArrayOrder) {
    for (int kind = 0; kind != pairKind; ++kind) {
        for (const int second : {1, 3, 0, -1}) {
            LqProblemDefData data;
            addTwoIds(data, kind, 1);
            (kind == 0               ? data.realMarkers[1]->id
             : kind == directionKind ? data.globalDirectionMarkers[1]->id
             : kind == 2             ? data.fixMarkers[1]->id
                                     : data.doubleMarkers[1]->id) = second;
            EXPECT_TRUE(data.hasValidMarkerIdStart());
            EXPECT_FALSE(data.hasConsecutiveMarkerIds()) << kind << " " << second;
        }
    }
}

TEST(ProblemDefMarkerIds, OfTheFirstKindThatIsThereDecideTheStart) {
    LqProblemDefData data;
    data.addArtificialMarker(LqPDDArtificialMarker(2, 1, 1.0F, "Hips", "Hips"));
    EXPECT_TRUE(data.hasValidMarkerIdStart());
    addDoubleMarker(data, LqPDDDoubleMarker(5, 0, 1.0F, "Hips"));
    EXPECT_FALSE(data.hasValidMarkerIdStart());
    addFixMarker(data, LqPDDFixMarker(1, 1.0F, "Hips"));
    EXPECT_TRUE(data.hasValidMarkerIdStart());
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(5, 1.0F, "Hips"));
    EXPECT_FALSE(data.hasValidMarkerIdStart());
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    EXPECT_TRUE(data.hasValidMarkerIdStart());
}

TEST(ProblemDefMarkerIds, OfPairs) {
    struct Case {
        std::vector<std::pair<int, int>> pairs;
        bool validStart;
        bool consecutive;
    };
    const Case cases[] = {
        {{{1, 2}}, true, true},
        {{{2, 1}}, true, true},
        {{{2, 3}, {1, 4}}, true, true},
        {{{2, 3}, {4, 1}}, true, true},
        {{{4, 2}, {3, 1}}, true, true},
        {{{1, 3}, {2, 4}}, true, true},
        {{{1, 1}}, true, false},
        {{{1, 3}}, true, false},
        {{{1, 2}, {2, 3}}, true, false},
        {{{2, 3}}, false, false},
        {{{0, 1}}, false, false},
        {{{1, 0}}, false, false},
        {{{1, lowestId}}, false, false},
        {{{2, 0}, {1, 3}}, false, false},
        {{{2, 3}, {0, 1}}, false, false},
        // The pair that has the 1 ends the walk.
        {{{1, 2}, {0, -5}}, true, false},
        {{{highestId, 1}, {2, 3}}, true, false},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        for (const auto& [id, otherId] : each.pairs) {
            data.addArtificialMarker(LqPDDArtificialMarker(id, otherId, 1.0F, "Hips", "Hips"));
        }
        EXPECT_EQ(data.hasValidMarkerIdStart(), each.validStart) << each.pairs[0].first;
        EXPECT_EQ(data.hasConsecutiveMarkerIds(), each.consecutive) << each.pairs[0].first;
    }
}

} // namespace
} // namespace quillon::test
