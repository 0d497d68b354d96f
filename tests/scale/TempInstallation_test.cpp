#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using scaleDef::ScaleFloat;
using scaleDef::TempData_t;
using test::error;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

ScaleFloat literal(float value) {
    return {value, 0, 0};
}

std::string placeText(const LqBDMarker& marker) {
    return std::to_string(marker.id) + ":" + std::to_string(static_cast<int>(marker.position[0])) + "," +
           std::to_string(static_cast<int>(marker.position[1])) + "," +
           std::to_string(static_cast<int>(marker.position[2]));
}

std::vector<std::string> placesOf(const LmDArray<LqBDMarker*>& markers) {
    std::vector<std::string> places;
    for (const LqBDMarker* marker : markers) {
        places.push_back(placeText(*marker));
    }
    return places;
}

template <class Marker>
std::vector<int> idsOf(const LmDArray<Marker*>& markers) {
    std::vector<int> ids;
    for (const Marker* marker : markers) {
        ids.push_back(marker->id);
    }
    return ids;
}

/// Pelvis, thigh and shank, one below the other, with the real markers 1 to 3, one global direction marker,
/// one fix and one double marker and an artificial pair. Every place of a marker is its id in all three axes.
class InstallTemps : public testing::Test {
protected:
    InstallTemps() {
        problemDef.addBody("pelvis", referenceSystemName, 1);
        problemDef.addBody("thigh", "pelvis", 2);
        problemDef.addBody("shank", "thigh", 3);
        addModelBody("pelvis", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1});
        addModelBody("thigh", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1});
        // Turns x to y.
        addModelBody("shank", {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 5, 0, 1});
    }

    void addModelBody(const char* name, const LmMat4& transform) {
        LqBDBody body;
        body.name = name;
        body.baseTransform = transform;
        model.addBody(body);
    }

    void addReals(int count) {
        for (int id = 1; id <= count; ++id) {
            problemDef.addRealMarker(LqPDDRealMarker(id, 1, 0.5F, "pelvis"));
            model.realMarkers.append(place(id));
        }
    }

    /// Markers of the other kinds with consecutive ids.
    void addOthers(int firstId) {
        problemDef.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(firstId, 1, "pelvis"));
        problemDef.fixMarkers.append(new LqPDDFixMarker(firstId + 1, 1, "pelvis"));
        problemDef.doubleMarkers.append(new LqPDDDoubleMarker(firstId + 2, 1, 1, "pelvis"));
        problemDef.addArtificialMarker(LqPDDArtificialMarker(firstId + 3, firstId + 4, 1, "pelvis", "thigh"));
        model.globalDirectionMarkers.append(place(firstId));
        model.fixMarkers.append(place(firstId + 1));
        model.doubleMarkers.append(place(firstId + 2));
        model.artificialMarkers.append(place(firstId + 4));
        model.artificialMarkers.append(place(firstId + 3));
    }

    static LqBDMarker* place(int id) {
        const auto coordinate = static_cast<float>(id);
        return new LqBDMarker{id, {coordinate, coordinate, coordinate}};
    }

    void addTemp(int id, const char* attachedBody, const char* relativeBody, ScaleFloat x) {
        TempData_t temp;
        temp.id = id;
        temp.position = {x, literal(20), literal(30)};
        temp.attachedBody = attachedBody;
        temp.relativeBody = relativeBody;
        temp.weight = 0.25F;
        definition.temps.append(temp);
    }

    void install() { definition.installTemps(problemDef, model, &measured); }

    test::CleanStatus cleanStatus;
    LqMeasuredData measured{0};
    LqProblemDefData problemDef;
    LqBodyDefData model;
    LqScaleDefData definition;
};

TEST_F(InstallTemps, PutsTempsBetweenTheRealMarkersAndTheOthers) {
    addReals(3);
    addOthers(4);
    definition.realCount = 3;
    addTemp(4, "thigh", "thigh", literal(10));
    addTemp(5, "shank", "shank", literal(11));
    install();
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(idsOf(problemDef.globalDirectionMarkers), ElementsAre(6));
    EXPECT_THAT(idsOf(problemDef.fixMarkers), ElementsAre(7));
    EXPECT_THAT(idsOf(problemDef.doubleMarkers), ElementsAre(8));
    EXPECT_THAT(idsOf(problemDef.artificialMarkers), ElementsAre(9));
    EXPECT_EQ(problemDef.artificialMarkers[0]->otherId, 10);
    EXPECT_THAT(placesOf(model.realMarkers),
                ElementsAre("1:1,1,1", "2:2,2,2", "3:3,3,3", "4:10,20,30", "5:11,20,30"));
    EXPECT_THAT(placesOf(model.globalDirectionMarkers), ElementsAre("6:4,4,4"));
    EXPECT_THAT(placesOf(model.fixMarkers), ElementsAre("7:5,5,5"));
    EXPECT_THAT(placesOf(model.doubleMarkers), ElementsAre("8:6,6,6"));
    EXPECT_THAT(placesOf(model.artificialMarkers), ElementsAre("9:7,7,7", "10:8,8,8"));
}

TEST_F(InstallTemps, GivesEveryTempTheSameWeight) {
    addTemp(1, "thigh", "shank", literal(0));
    install();
    ASSERT_EQ(problemDef.realMarkers.count(), 1);
    const LqPDDRealMarker& marker = *problemDef.realMarkers[0];
    EXPECT_EQ(marker.weight, 2.0F);
    EXPECT_EQ(marker.predictionType, 0);
    EXPECT_EQ(marker.bodyName, "thigh");
}

TEST_F(InstallTemps, DropsTheRealMarkersThatTakeNoPart) {
    addReals(3);
    addOthers(4);
    definition.realCount = 1;
    addTemp(2, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:10,20,30"));
    // Each id rises by the number of temps alone: the ids of the dropped markers stay free.
    EXPECT_THAT(idsOf(problemDef.fixMarkers), ElementsAre(6));
    EXPECT_THAT(placesOf(model.fixMarkers), ElementsAre("6:5,5,5"));
}

TEST_F(InstallTemps, LeavesRoomForRealMarkersThatAreMissing) {
    addReals(2);
    addOthers(3);
    definition.realCount = 5;
    addTemp(6, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2, 6));
    EXPECT_THAT(idsOf(problemDef.globalDirectionMarkers), ElementsAre(7));
    EXPECT_THAT(idsOf(problemDef.fixMarkers), ElementsAre(8));
}

TEST_F(InstallTemps, NumbersFromOneWithoutRealMarkers) {
    addOthers(1);
    addTemp(1, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1));
    EXPECT_THAT(idsOf(problemDef.globalDirectionMarkers), ElementsAre(2));
    EXPECT_THAT(idsOf(problemDef.artificialMarkers), ElementsAre(5));
}

TEST_F(InstallTemps, WithoutTempsOnlyDropsRealMarkers) {
    addReals(2);
    definition.realCount = -1;
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), IsEmpty());
    EXPECT_THAT(placesOf(model.realMarkers), IsEmpty());
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(InstallTemps, AddsTheOffsetOfABodyBelowTheOneOfTheMarker) {
    addTemp(1, "thigh", "shank", literal(10));
    addTemp(2, "pelvis", "shank", literal(10));
    install();
    // The shank lies at 0 5 0 in the thigh, and at 10 5 0 in the pelvis. The turn of the shank does not
    // count.
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:10,25,30", "2:20,25,30"));
}

TEST_F(InstallTemps, AddsTheOffsetOfABodyAboveTheOneOfTheMarker) {
    addTemp(1, "shank", "pelvis", literal(10));
    install();
    // A point at 10 5 0 in the pelvis is the origin of the shank, whose y axis points along -x of the pelvis:
    // the origin of the pelvis lies at -5 10 0 in the shank.
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:5,30,30"));
}

TEST_F(InstallTemps, EvaluatesMeasuredPositions) {
    measured.append(3);
    addTemp(1, "thigh", "thigh", {0, 4, 1});
    install();
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:7,20,30"));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(InstallTemps, StopsAtAReferenceThatCannotBeEvaluated) {
    measured.append(3);
    addTemp(1, "thigh", "thigh", literal(10));
    addTemp(2, "shank", "shank", {0, 4, 2});
    addTemp(3, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(takeChain(),
                ElementsAre(error("Invalid measured id 2.  There are only 1 measured constants in "
                                  "the measured data.")));
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:10,20,30"));
}

TEST_F(InstallTemps, StopsAtTheFirstCoordinateThatCannotBeEvaluated) {
    measured.append(3);
    const struct {
        std::array<ScaleFloat, 3> position;
        int id;
    } cases[] = {
        {{ScaleFloat{0, 0, 5}, ScaleFloat{0, 0, 6}, ScaleFloat{0, 0, 7}}, 5},
        {{ScaleFloat{0, 0, 1}, ScaleFloat{2, 0, 6}, ScaleFloat{0, 0, 7}}, 6},
        {{literal(0), ScaleFloat{0, 4, 1}, ScaleFloat{0, 0, 7}}, 7},
    };
    for (const auto& [position, id] : cases) {
        definition.temps = {};
        addTemp(1, "thigh", "thigh", literal(10));
        definition.temps[0].position = position;
        addTemp(2, "thigh", "thigh", literal(10));
        install();
        EXPECT_THAT(takeChain(), ElementsAre(error("Invalid measured id " + std::to_string(id) +
                                                   ".  There are only 1 measured constants in the measured "
                                                   "data.")));
        EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1)) << "the marker is there before its place";
        EXPECT_THAT(placesOf(model.realMarkers), IsEmpty());
        problemDef.removeLastRealMarker();
    }
}

TEST_F(InstallTemps, StopsAtAReferenceWithoutMeasuredDataAndKeepsWhatItChanged) {
    addReals(3);
    addOthers(4);
    definition.realCount = 2;
    addTemp(3, "thigh", "thigh", literal(10));
    addTemp(4, "thigh", "thigh", {0, 0, 1});
    definition.installTemps(problemDef, model, nullptr);
    EXPECT_THAT(takeChain(), ElementsAre(error("No measured data has been specified, but the scaling "
                                               "definition references measured constants.")));
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:2,2,2", "3:10,20,30"));
    EXPECT_THAT(idsOf(problemDef.fixMarkers), ElementsAre(7));
    EXPECT_THAT(placesOf(model.fixMarkers), ElementsAre("7:5,5,5"));
}

TEST_F(InstallTemps, MovesIdsDownWhenTheRealCountLiesBelowTheLastRealMarker) {
    // No real marker is left to drop, so that the ids behind them move by the count, which is negative, and
    // the temps.
    addOthers(4);
    definition.realCount = -3;
    addTemp(9, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(9));
    EXPECT_THAT(idsOf(problemDef.globalDirectionMarkers), ElementsAre(2));
    EXPECT_THAT(idsOf(problemDef.fixMarkers), ElementsAre(3));
    EXPECT_THAT(idsOf(problemDef.doubleMarkers), ElementsAre(4));
    EXPECT_THAT(idsOf(problemDef.artificialMarkers), ElementsAre(5));
    EXPECT_EQ(problemDef.artificialMarkers[0]->otherId, 6);
    EXPECT_THAT(placesOf(model.globalDirectionMarkers), ElementsAre("2:4,4,4"));
    EXPECT_THAT(placesOf(model.fixMarkers), ElementsAre("3:5,5,5"));
    EXPECT_THAT(placesOf(model.doubleMarkers), ElementsAre("4:6,6,6"));
    EXPECT_THAT(placesOf(model.artificialMarkers), ElementsAre("5:7,7,7", "6:8,8,8"));
}

TEST_F(InstallTemps, SortsEachListOfTheModelByItsNewIds) {
    for (const int id : {2, 1}) {
        model.realMarkers.append(place(id));
        model.globalDirectionMarkers.append(place(2 + id));
        model.fixMarkers.append(place(4 + id));
        model.doubleMarkers.append(place(6 + id));
        model.artificialMarkers.append(place(8 + id));
    }
    for (int id = 1; id <= 2; ++id) {
        problemDef.addRealMarker(LqPDDRealMarker(id, 1, 1, "pelvis"));
    }
    problemDef.addArtificialMarker(LqPDDArtificialMarker(10, 9, 1, "pelvis", "thigh"));
    definition.realCount = 2;
    addTemp(3, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:2,2,2", "3:10,20,30"));
    EXPECT_THAT(placesOf(model.globalDirectionMarkers), ElementsAre("4:3,3,3", "5:4,4,4"));
    EXPECT_THAT(placesOf(model.fixMarkers), ElementsAre("6:5,5,5", "7:6,6,6"));
    EXPECT_THAT(placesOf(model.doubleMarkers), ElementsAre("8:7,7,7", "9:8,8,8"));
    EXPECT_THAT(placesOf(model.artificialMarkers), ElementsAre("10:9,9,9", "11:10,10,10"));
    EXPECT_EQ(problemDef.artificialMarkers[0]->id, 11);
    EXPECT_EQ(problemDef.artificialMarkers[0]->otherId, 10);
}

TEST_F(InstallTemps, DropsTheLastMarkerOfTheModelForEachRealMarkerWhateverItsId) {
    addReals(2);
    // The model has one marker more, which is what goes first.
    model.realMarkers.append(place(7));
    definition.realCount = 1;
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:2,2,2"));
}

TEST_F(InstallTemps, TakesTheIdOfTheMarkerThatIsThenLast) {
    // Ids with gaps: 8 and 5 go, 2 stays, and what lay behind 2 moves by 4 - 2 and the temp.
    for (const int id : {1, 2, 5, 8}) {
        problemDef.addRealMarker(LqPDDRealMarker(id, 1, 1, "pelvis"));
        model.realMarkers.append(place(id));
    }
    addOthers(9);
    definition.realCount = 4;
    addTemp(5, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2, 5));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:2,2,2", "5:10,20,30"));
    EXPECT_THAT(idsOf(problemDef.globalDirectionMarkers), ElementsAre(12));
    EXPECT_THAT(idsOf(problemDef.artificialMarkers), ElementsAre(15));
}

TEST_F(InstallTemps, DoesNotAskThatTheIdsOfTempsFollowTheRealMarkers) {
    addReals(1);
    definition.realCount = 1;
    for (const int id : {9, 1, -4}) {
        addTemp(id, "thigh", "thigh", literal(10));
    }
    EXPECT_FALSE(definition.tempsFollowReals());
    install();
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 9, 1, -4));
    EXPECT_THAT(placesOf(model.realMarkers),
                ElementsAre("1:1,1,1", "9:10,20,30", "1:10,20,30", "-4:10,20,30"));
}

TEST_F(InstallTemps, TakesTheGlobalFrameForEitherBody) {
    addTemp(1, referenceSystemName, "thigh", literal(10));
    addTemp(2, "thigh", referenceSystemName, literal(10));
    install();
    // The thigh lies at 11 2 3 in the global frame.
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:21,22,33", "2:-1,18,27"));
}

TEST_F(InstallTemps, PassesOverTheSlotsOfMarkersThatWentWithTheirBody) {
    problemDef.addBody("hat", "pelvis", 4);
    for (const auto& [id, body] : {std::pair(1, "pelvis"), std::pair(2, "thigh"), std::pair(3, "hat")}) {
        problemDef.addRealMarker(LqPDDRealMarker(id, 1, 1, body));
        model.realMarkers.append(place(id));
    }
    problemDef.removeBody("hat");
    model.removeLastRealMarker();
    definition.realCount = 1;
    addTemp(2, "thigh", "thigh", literal(10));
    install();
    EXPECT_THAT(idsOf(problemDef.realMarkers), ElementsAre(1, 2));
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:1,1,1", "2:10,20,30"));
}

TEST_F(InstallTemps, LeavesTheDefinitionAsItIs) {
    addReals(3);
    definition.realCount = 1;
    addTemp(2, "thigh", "shank", literal(10));
    const LqScaleDefData before = definition;
    install();
    EXPECT_TRUE(definition == before);
}

TEST_F(InstallTemps, NeedsNoMeasuredDataWithoutReferences) {
    addTemp(1, "thigh", "thigh", literal(10));
    definition.installTemps(problemDef, model, nullptr);
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(placesOf(model.realMarkers), ElementsAre("1:10,20,30"));
}

TEST_F(InstallTemps, EndsTheProcessAtAnUnknownBody) {
    addTemp(1, "thigh", "tail", literal(10));
    const support::ChildResult result = support::runFunction([this] { install(); });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "Body tail is not in the problem definition.\n");
}

} // namespace
} // namespace quillon
