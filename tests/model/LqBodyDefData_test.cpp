#include "quillon/model/LqBodyDefData.h"

#include "tests/model/ModelText.h"
#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

using test::bodyNamesOf;
using test::idsOf;
using test::linesOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

template <class T>
LmDArray<T> arrayOf(const std::vector<T>& elements) {
    LmDArray<T> array;
    for (const T& element : elements) {
        array.append(element);
    }
    return array;
}

LqBDBody body(const char* name) {
    LqBDBody made;
    made.name = name;
    return made;
}

LqBDMarker marker(int id, float x = 0) {
    return {id, {x, 0, 0}};
}

void appendTo(LmDArray<LqBDMarker*>& markers, const std::vector<int>& ids) {
    for (const int id : ids) {
        markers.append(new LqBDMarker(marker(id)));
    }
}

void addInclude(LqBodyDefData& model, const char* fileName, const char* suffix) {
    model.includes.append(new LqBDInclude{fileName, suffix});
}

/// Real markers 1 and 2, global direction 3, fix 4, double 5, one pair 6 and 7; bodies A and B; one include.
void fill(LqBodyDefData& model) {
    model.addBody(body("A"));
    model.addBody(body("B"));
    appendTo(model.realMarkers, {1, 2});
    appendTo(model.globalDirectionMarkers, {3});
    appendTo(model.fixMarkers, {4});
    appendTo(model.doubleMarkers, {5});
    model.addArtificialPair(marker(6), marker(7));
    addInclude(model, "hand.model", "_l");
}

/// The ids of all five marker arrays, in the order real, global direction, fix, double, artificial.
std::vector<std::vector<int>> allIdsOf(const LqBodyDefData& model) {
    return {idsOf(model.realMarkers), idsOf(model.globalDirectionMarkers), idsOf(model.fixMarkers),
            idsOf(model.doubleMarkers), idsOf(model.artificialMarkers)};
}

// --- Life ----------------------------------------------------------------------------------------

TEST(LqBDBody, ANewRecordHasTheIdentityAndNoVector) {
    const LqBDBody made;
    EXPECT_EQ(test::textOf(made), " [1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1] length 0 direction 0 0 0");
    EXPECT_EQ(made.reserved, 1.0F);
}

TEST(LqBodyDefData, ANewObjectIsBlankAndStrict) {
    const LqBodyDefData model;
    EXPECT_EQ(model.problemDef, nullptr);
    EXPECT_EQ(model.cameraCount, 0);
    EXPECT_TRUE(model.strictMatch);
    EXPECT_TRUE(model.isEmpty());
    EXPECT_TRUE(model.isBlank());
    EXPECT_EQ(model.highestMarkerId(), 0);
    EXPECT_EQ(model.lastRealMarkerId(), 0);
    EXPECT_EQ(model.markerCount(), 0);
}

TEST(LqBodyDefData, ACopyIsDeepAndSharesTheDefinition) {
    const LqProblemDefData definition;
    LqBodyDefData model;
    fill(model);
    model.problemDef = &definition;
    model.cameraCount = 3;
    model.strictMatch = false;
    const LqBodyDefData copy(model);
    LqBodyDefData assigned;
    fill(assigned);
    assigned = model;
    const std::vector<std::string> lines = linesOf(model);
    model.realMarkers[0]->id = 99;
    model.bodies[0]->name = "changed";
    model.clearIncludes();
    const LqBodyDefData* const others[] = {&copy, &assigned};
    for (const LqBodyDefData* other : others) {
        EXPECT_EQ(linesOf(*other), lines);
        EXPECT_EQ(other->problemDef, &definition);
        EXPECT_FALSE(other->strictMatch);
    }
}

TEST(LqBodyDefData, AssigningToItselfDoesNothing) {
    LqBodyDefData model;
    fill(model);
    const LqBDBody* const first = model.bodies[0];
    const std::vector<std::string> lines = linesOf(model);
    const LqBodyDefData& same = model;
    model = same;
    EXPECT_EQ(linesOf(model), lines);
    EXPECT_EQ(model.bodies[0], first);
}

TEST(LqBodyDefData, ClearKeepsTheCameraCountAndTheDefinition) {
    const LqProblemDefData definition;
    LqBodyDefData model;
    fill(model);
    model.problemDef = &definition;
    model.cameraCount = 3;
    model.clear();
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 3"));
    EXPECT_EQ(model.problemDef, &definition);
    EXPECT_TRUE(model.isBlank());
}

TEST(LqBodyDefData, AnyRecordMakesItNotEmptyAndAnIncludeNotBlank) {
    using Change = void (*)(LqBodyDefData&);
    const Change changes[] = {
        [](LqBodyDefData& m) { m.addBody(body("A")); },
        [](LqBodyDefData& m) { appendTo(m.realMarkers, {1}); },
        [](LqBodyDefData& m) { appendTo(m.globalDirectionMarkers, {1}); },
        [](LqBodyDefData& m) { appendTo(m.fixMarkers, {1}); },
        [](LqBodyDefData& m) { appendTo(m.doubleMarkers, {1}); },
        [](LqBodyDefData& m) { appendTo(m.artificialMarkers, {1}); },
    };
    for (const Change change : changes) {
        LqBodyDefData model;
        change(model);
        EXPECT_FALSE(model.isEmpty());
        EXPECT_FALSE(model.isBlank());
    }
    LqBodyDefData model;
    addInclude(model, "hand.model", "");
    EXPECT_TRUE(model.isEmpty());
    EXPECT_FALSE(model.isBlank());
    model.clearIncludes();
    EXPECT_TRUE(model.isBlank());
}

// --- Look-ups ------------------------------------------------------------------------------------

TEST(LqBodyDefData, FindsTheFirstBodyOfExactlyTheName) {
    LqBodyDefData model;
    for (const char* name : {"arm", "Arm", "Arm"}) {
        model.addBody(body(name));
    }
    EXPECT_EQ(model.findBody("Arm"), model.bodies[1]);
    EXPECT_EQ(model.findBody("arm"), model.bodies[0]);
    EXPECT_EQ(model.findBody("ARM"), nullptr);
    EXPECT_EQ(model.findBody(""), nullptr);
}

TEST(LqBodyDefData, NullSlotsBehindTheBodiesArePassedOver) {
    LqBodyDefData model;
    model.bodies.setLengthZeroed(5);
    model.bodies[0] = new LqBDBody(body("A"));
    model.bodies[1] = new LqBDBody(body("B"));
    EXPECT_EQ(model.storedBodies().size(), 2U);
    EXPECT_EQ(model.findBody("C"), nullptr);
    EXPECT_THAT(model.duplicateBodies(), IsEmpty());
    const LqBodyDefData copy(model);
    EXPECT_EQ(copy.bodies.count(), 5);
    EXPECT_THAT(bodyNamesOf(copy), ElementsAre("A", "B"));
    EXPECT_TRUE(copy.equals(model));
    model.addBody(body("C"));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("A", "B", "C"));
    EXPECT_EQ(model.bodies.count(), 3);
    EXPECT_FALSE(copy.equals(model));
}

TEST(LqBodyDefData, LooksForMarkersAmongRealFixDoubleAndArtificialOnesInThatOrder) {
    LqBodyDefData model;
    fill(model);
    EXPECT_EQ(model.findMarker(2), model.realMarkers[1]);
    EXPECT_EQ(model.findMarker(3), nullptr);
    EXPECT_EQ(model.findMarker(4), model.fixMarkers[0]);
    EXPECT_EQ(model.findMarker(5), model.doubleMarkers[0]);
    EXPECT_EQ(model.findMarker(6), model.artificialMarkers[0]);
    EXPECT_EQ(model.findMarker(7), model.artificialMarkers[1]);
    EXPECT_EQ(model.findMarker(8), nullptr);
    model.artificialMarkers[0]->id = 5;
    EXPECT_EQ(model.findMarker(5), model.doubleMarkers[0]);
    model.fixMarkers[0]->id = 5;
    EXPECT_EQ(model.findMarker(5), model.fixMarkers[0]);
    model.realMarkers[1]->id = 5;
    EXPECT_EQ(model.findMarker(5), model.realMarkers[1]);
}

TEST(LqBodyDefData, CountsAndHighestIdLeaveOutGlobalDirectionMarkers) {
    LqBodyDefData model;
    fill(model);
    EXPECT_EQ(model.markerCount(), 6);
    EXPECT_EQ(model.highestMarkerId(), 7);
    EXPECT_EQ(model.lastRealMarkerId(), 2);
    model.globalDirectionMarkers[0]->id = 50;
    EXPECT_EQ(model.highestMarkerId(), 7);
    model.fixMarkers[0]->id = 40;
    EXPECT_EQ(model.highestMarkerId(), 40);
}

TEST(LqBodyDefData, TheHighestOfNegativeIdsIsNegative) {
    LqBodyDefData model;
    appendTo(model.fixMarkers, {-9, -4});
    EXPECT_EQ(model.highestMarkerId(), -4);
    EXPECT_EQ(model.lastRealMarkerId(), 0);
}

TEST(LqBodyDefData, ComparesItsCountsWithThoseOfADefinition) {
    LqProblemDefData definition;
    test::addBodies(definition, {{"A", 0}});
    definition.addArtificialMarker(LqPDDArtificialMarker());
    LqBodyDefData model;
    EXPECT_EQ(model.compareBodyCount(definition), -1);
    EXPECT_EQ(model.compareMarkerCount(definition), -1);
    model.addBody(body("Z"));
    model.addArtificialPair(marker(1), marker(2));
    EXPECT_EQ(model.compareBodyCount(definition), 0);
    EXPECT_EQ(model.compareMarkerCount(definition), 0);
    model.addBody(body("Z"));
    model.addRealMarker(marker(3));
    EXPECT_EQ(model.compareBodyCount(definition), 1);
    EXPECT_EQ(model.compareMarkerCount(definition), 1);
    model.problemDef = &definition;
    EXPECT_EQ(model.compareBodyCount(), 1);
    EXPECT_EQ(model.compareMarkerCount(), 1);
}

TEST(LqBodyDefData, GlobalDirectionMarkersCountInADefinitionAlone) {
    LqProblemDefData definition;
    definition.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker());
    LqBodyDefData model;
    model.addGlobalDirectionMarker(marker(1));
    EXPECT_EQ(model.compareMarkerCount(definition), -1);
    model.addRealMarker(marker(1));
    EXPECT_EQ(model.compareMarkerCount(definition), 0);
}

TEST(LqBodyDefData, ComparingWithNoDefinitionEndsTheProcess) {
    EXPECT_EQ(support::runFunction([] { LqBodyDefData().compareBodyCount(); }).outcome, "SIGSEGV");
    EXPECT_EQ(support::runFunction([] { LqBodyDefData().compareMarkerCount(); }).outcome, "SIGSEGV");
}

TEST(LqBodyDefData, ListsDuplicateBodiesOnceForEachEarlierBodyOfTheName) {
    struct Case {
        std::vector<const char*> names;
        std::vector<int> indices;
    };
    const Case cases[] = {
        {{}, {}},
        {{"A", "B"}, {}},
        {{"A", "a"}, {}},
        {{"A", "B", "A"}, {0, 2}},
        {{"A", "B", "A", "B"}, {0, 2, 1, 3}},
        {{"A", "A", "A"}, {0, 1, 2, 1, 2}},
    };
    for (const Case& c : cases) {
        LqBodyDefData model;
        for (const char* name : c.names) {
            model.addBody(body(name));
        }
        std::vector<const LqBDBody*> expected;
        for (const int index : c.indices) {
            expected.push_back(model.bodies[index]);
        }
        EXPECT_EQ(model.duplicateBodies(), expected);
    }
}

// --- Equality ------------------------------------------------------------------------------------

TEST(LqBodyDefData, EqualModelsHaveEqualRecords) {
    LqBodyDefData a;
    LqBodyDefData b;
    EXPECT_TRUE(a.equals(b));
    fill(a);
    EXPECT_FALSE(a.equals(b));
    fill(b);
    EXPECT_TRUE(a.equals(b));
    a.bodies[0]->baseTransform[5] = notANumber;
    EXPECT_TRUE(a.equals(a));
}

TEST(LqBodyDefData, AnyDifferenceThatFilesKeepMakesModelsUnequal) {
    using Change = void (*)(LqBodyDefData&);
    const Change changes[] = {
        [](LqBodyDefData& m) { m.bodies[1]->name = "b"; },
        [](LqBodyDefData& m) { m.bodies[0]->baseTransform[1] = 0.0005F; },
        [](LqBodyDefData& m) { m.bodies[0]->baseTransform[15] = 2; },
        [](LqBodyDefData& m) { m.bodies[0]->baseTransform[1] = notANumber; },
        [](LqBodyDefData& m) { m.bodies[0]->vectorLength = 1e-9F; },
        [](LqBodyDefData& m) { m.bodies[0]->vectorDirection[2] = 1e-9F; },
        [](LqBodyDefData& m) { m.addBody(body("C")); },
        [](LqBodyDefData& m) { m.realMarkers[0]->id = 9; },
        [](LqBodyDefData& m) { m.realMarkers[0]->position[0] = 1e-9F; },
        [](LqBodyDefData& m) { m.realMarkers[0]->position[1] = 1e-9F; },
        [](LqBodyDefData& m) { m.realMarkers[0]->position[2] = notANumber; },
        [](LqBodyDefData& m) { m.addRealMarker(marker(8)); },
        [](LqBodyDefData& m) { m.fixMarkers[0]->id = 9; },
        [](LqBodyDefData& m) { m.doubleMarkers[0]->id = 9; },
        [](LqBodyDefData& m) { m.artificialMarkers[1]->id = 9; },
        [](LqBodyDefData& m) { m.clearIncludes(); },
        [](LqBodyDefData& m) { addInclude(m, "foot.model", ""); },
        [](LqBodyDefData& m) { m.appendToIncludeSuffixes("x"); },
        [](LqBodyDefData& m) {
            m.clearIncludes();
            addInclude(m, "foot.model", "_l");
        },
    };
    LqBodyDefData model;
    fill(model);
    int number = 0;
    for (const Change change : changes) {
        SCOPED_TRACE(number++);
        LqBodyDefData other;
        fill(other);
        change(other);
        EXPECT_FALSE(model.equals(other));
        EXPECT_FALSE(other.equals(model));
    }
}

TEST(LqBodyDefData, WhatFilesDoNotKeepIsNotCompared) {
    const LqProblemDefData definition;
    LqBodyDefData a;
    LqBodyDefData b;
    fill(a);
    fill(b);
    b.cameraCount = 7;
    b.strictMatch = false;
    b.problemDef = &definition;
    b.addGlobalDirectionMarker(marker(9));
    b.bodies[0]->reserved = 5;
    EXPECT_TRUE(a.equals(b));
    b.bodies[0]->baseTransform[1] = 0.0004F;
    EXPECT_TRUE(a.equals(b));
}

// --- Editing -------------------------------------------------------------------------------------

TEST(LqBodyDefData, AppendsCopies) {
    LqBodyDefData model;
    const LqBDMarker source = marker(4, 1.5F);
    model.addRealMarker(source);
    model.addGlobalDirectionMarker(source);
    model.addArtificialPair(source, marker(5));
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 0", "real 4: 1.5 0 0", "global 4: 1.5 0 0",
                                            "artificial 4: 1.5 0 0", "artificial 5: 0 0 0"));
}

TEST(LqBodyDefData, InsertingARealMarkerMovesAllIdsBehindItUp) {
    struct Case {
        int id;
        std::vector<int> real;
    };
    const Case cases[] = {
        {2, {1, 2, 3, 4, 6}}, {3, {1, 2, 3, 4, 6}}, {1, {1, 2, 3, 4, 6}},
        {4, {1, 2, 3, 4, 6}}, {5, {1, 2, 3, 5, 6}}, {6, {1, 2, 3, 5, 6}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.id);
        LqBodyDefData model;
        appendTo(model.realMarkers, {1, 2, 3, 5});
        appendTo(model.globalDirectionMarkers, {20});
        appendTo(model.fixMarkers, {30});
        appendTo(model.doubleMarkers, {40, 41});
        appendTo(model.artificialMarkers, {50, 51});
        model.insertRealMarker(marker(c.id, 7));
        EXPECT_EQ(allIdsOf(model), (std::vector<std::vector<int>>{c.real, {20}, {31}, {41, 42}, {51, 52}}));
        EXPECT_EQ(model.findMarker(c.id)->position[0], 7.0F);
    }
}

TEST(LqBodyDefData, InsertsACopyOfAMarkerOfItsOwn) {
    LqBodyDefData model;
    appendTo(model.realMarkers, {1, 2});
    model.insertRealMarker(*model.realMarkers[0]);
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1, 2, 3));
}

TEST(LqBodyDefData, RemovesRealMarkers) {
    LqBodyDefData model;
    appendTo(model.realMarkers, {1, 2, 3, 2});
    model.removeRealMarker(2);
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1, 3, 2));
    model.removeRealMarker(9);
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1, 3, 2));
    model.removeLastRealMarker();
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1, 3));
    model.removeLastRealMarker();
    model.removeLastRealMarker();
    model.removeLastRealMarker();
    EXPECT_THAT(idsOf(model.realMarkers), IsEmpty());
}

TEST(LqBodyDefData, RemovesMarkersFromAllFiveArrays) {
    LqBodyDefData model;
    fill(model);
    model.removeMarkers(arrayOf<int>({1, 3, 4, 5, 6, 99}));
    EXPECT_EQ(allIdsOf(model), (std::vector<std::vector<int>>{{2}, {}, {}, {}, {7}}));
}

TEST(LqBodyDefData, RemovesBodiesByName) {
    LqBodyDefData model;
    for (const char* name : {"A", "B", "a", "A"}) {
        model.addBody(body(name));
    }
    model.removeBodies(arrayOf<LmStr>({"A", "Z"}));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("B", "a"));
    EXPECT_EQ(model.bodies.count(), 2);
}

TEST(LqBodyDefData, SetsArraysToDeepCopies) {
    LqBodyDefData source;
    fill(source);
    LqBodyDefData model;
    fill(model);
    model.setBodies(source.bodies);
    model.setRealMarkers(source.artificialMarkers);
    model.setGlobalDirectionMarkers(source.fixMarkers);
    model.setFixMarkers(source.doubleMarkers);
    model.setDoubleMarkers(source.realMarkers);
    model.setArtificialMarkers(source.globalDirectionMarkers);
    source.clear();
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("A", "B"));
    EXPECT_EQ(allIdsOf(model), (std::vector<std::vector<int>>{{6, 7}, {4}, {5}, {1, 2}, {3}}));
    model.setRealMarkers(model.realMarkers);
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(6, 7));
    model.setRealMarkers({});
    EXPECT_THAT(idsOf(model.realMarkers), IsEmpty());
}

TEST(LqBodyDefData, SetsAnArrayToItsOwnRecordsInAnotherOrder) {
    LqBodyDefData model;
    fill(model);
    const LmDArray<LqBDBody*> bodies = arrayOf<LqBDBody*>({model.bodies[1], model.bodies[0]});
    const LmDArray<LqBDMarker*> markers = arrayOf<LqBDMarker*>({model.realMarkers[1], model.realMarkers[1]});
    model.setBodies(bodies);
    model.setRealMarkers(markers);
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("B", "A"));
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(2, 2));
    EXPECT_NE(model.realMarkers[0], model.realMarkers[1]);
}

TEST(LqBodyDefData, AnIdTableRenumbersAndSortsEveryMarkerArray) {
    LqBodyDefData model;
    fill(model);
    model.applyMarkerIdTable(arrayOf<int>({70, 60, 50, 40, 30, 20, 10}));
    EXPECT_EQ(allIdsOf(model), (std::vector<std::vector<int>>{{60, 70}, {50}, {40}, {30}, {10, 20}}));
}

TEST(LqBodyDefData, TheTableOfADefinitionTakesItsModelAlong) {
    LqProblemDefData definition;
    for (const int id : {9, 4}) {
        definition.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, "A"));
    }
    definition.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(20, 1.0F, "A"));
    definition.fixMarkers.append(new LqPDDFixMarker(2, 1.0F, "A"));
    definition.addArtificialMarker(LqPDDArtificialMarker(7, 3, 1.0F, "A", "A"));
    LqBodyDefData model;
    for (const int id : {4, 9}) {
        model.addRealMarker(marker(id, static_cast<float>(id)));
    }
    model.fixMarkers.append(new LqBDMarker(marker(2, 2)));
    model.addArtificialPair(marker(3, 3), marker(7, 7));
    model.applyMarkerIdTable(definition.compactMarkerIds());
    EXPECT_EQ(definition.artificialMarkers[0]->id, 5);
    EXPECT_EQ(definition.artificialMarkers[0]->otherId, 6);
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 0", "real 1: 9 0 0", "real 2: 4 0 0", "fix 4: 2 0 0",
                                            "artificial 5: 7 0 0", "artificial 6: 3 0 0"));
}

TEST(LqBodyDefData, IdsThatTheTableDoesNotReachStay) {
    LqBodyDefData model;
    appendTo(model.realMarkers, {3, 2, 1, 0, -1});
    model.applyMarkerIdTable(arrayOf<int>({10, 20}));
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(-1, 0, 3, 10, 20));
}

TEST(LqBodyDefData, AppendsToTheSuffixOfEveryInclude) {
    LqBodyDefData model;
    addInclude(model, "a.model", "_l");
    addInclude(model, "b.model", "");
    model.appendToIncludeSuffixes("_x");
    EXPECT_THAT(linesOf(model),
                ElementsAre("cameras 0", "include a.model suffix _l_x", "include b.model suffix _x"));
}

} // namespace
} // namespace quillon
