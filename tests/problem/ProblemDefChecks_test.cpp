#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <sstream>

namespace quillon::test {
namespace {

constexpr int lowestId = std::numeric_limits<int>::min();
constexpr int highestId = std::numeric_limits<int>::max();

/// What `checkProblemDef` reports on a status of its own.
StatusChain checked(const LqProblemDefData& data) {
    LmStatus status;
    data.checkProblemDef(status);
    return chainOf(status);
}

StatusChain checkedRealMarkerBodies(const LqProblemDefData& data) {
    LmStatus status;
    data.checkRealMarkerBodies(status);
    return chainOf(status);
}

/// Every kind of record, without a fault. The global direction marker is passed over in the numbering of the
/// markers behind it, so that it has the number of the fix marker.
void fillSound(LqProblemDefData& data) {
    addSysVar(data, 1, "x");
    addSysVar(data, 2, "y");
    addSysVar(data, 3, "z");
    data.addBody("Hips", referenceSystemName, 1);
    data.addBody("Arm", "Hips", 2);
    data.addBody("Spare", "Arm", 3);
    data.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, referenceSystemName));
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(3, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(3, 1.0F, "Arm"));
    addDoubleMarker(data, LqPDDDoubleMarker(4, 1, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(5, 2, 1.0F, "Arm"));
    data.addArtificialMarker(LqPDDArtificialMarker(6, 7, 1.0F, "Arm", referenceSystemName));
}

/// The fault that each step of the check finds, in the order of the steps.
struct Fault {
    const char* message;
    void (*make)(LqProblemDefData& data);
};

const Fault faults[] = {
    {"The parent (nobody) of body 'Arm' does not exist.",
     [](LqProblemDefData& data) { data.bodies[1]->parentName = "nobody"; }},
    {"The system variables do not start at 1 in the problem definition.",
     [](LqProblemDefData& data) { data.sysVars[0]->id = 0; }},
    {"The system variables are not consecutively numbered in the problem definition.",
     [](LqProblemDefData& data) { data.sysVars[2]->id = 4; }},
    {"The system variables do not have unique names in the problem definition.",
     [](LqProblemDefData& data) { data.sysVars[2]->description = "x"; }},
    {"Body Arm occurs more than once in the problem definition.",
     [](LqProblemDefData& data) { data.bodies[2]->name = "Arm"; }},
    {"The marker ids do not start at 1 in the problem definition.",
     [](LqProblemDefData& data) { data.realMarkers[0]->id = 2; }},
    {"The markers do not have consecutive ids in the problem definition.",
     [](LqProblemDefData& data) { data.doubleMarkers[1]->id = 6; }},
    {"Fix marker (3) references a body (nobody) that does not exist in the problem definition.",
     [](LqProblemDefData& data) { data.fixMarkers[0]->bodyName = "nobody"; }},
    {"Real marker 2 references a body (nobody) that does not exist in the problem definition.",
     [](LqProblemDefData& data) { data.realMarkers[1]->bodyName = "nobody"; }},
    {"Bad global direction marker body names.",
     [](LqProblemDefData& data) { data.globalDirectionMarkers[0]->bodyName = "nobody"; }},
    {"Double marker 5 references a body that does not exist in the problem definition.",
     [](LqProblemDefData& data) { data.doubleMarkers[1]->bodyName = "nobody"; }},
    {"Artificial marker (6) references a body (Arm,nobody) that does not exist in the problem definition.",
     [](LqProblemDefData& data) { data.artificialMarkers[0]->otherBodyName = "nobody"; }},
};

// --- The whole check -----------------------------------------------------------------------------

TEST(ProblemDefChecks, AnEmptyDefinitionPasses) {
    const LqProblemDefData data;
    EXPECT_TRUE(data.hasValidMarkerIdStart());
    EXPECT_TRUE(data.hasConsecutiveMarkerIds());
    EXPECT_EQ(checked(data), StatusChain{});
    EXPECT_EQ(checkedRealMarkerBodies(data), StatusChain{});
}

TEST(ProblemDefChecks, ASoundDefinitionPasses) {
    LqProblemDefData data;
    fillSound(data);
    EXPECT_EQ(checked(data), StatusChain{});
    EXPECT_EQ(checkedRealMarkerBodies(data), StatusChain{});
}

TEST(ProblemDefChecks, EachFaultAloneIsReported) {
    for (const Fault& fault : faults) {
        LqProblemDefData data;
        fillSound(data);
        fault.make(data);
        EXPECT_EQ(checked(data), StatusChain{error(fault.message)});
    }
}

TEST(ProblemDefChecks, OfManyFaultsOnlyTheFirstInTheOrderOfTheStepsIsReported) {
    for (std::size_t first = 0; first != std::size(faults); ++first) {
        LqProblemDefData data;
        fillSound(data);
        for (std::size_t later = first; later != std::size(faults); ++later) {
            faults[later].make(data);
        }
        EXPECT_EQ(checked(data), StatusChain{error(faults[first].message)});
    }
}

TEST(ProblemDefChecks, AreNotRunByTheReader) {
    const CleanStatus clean;
    struct Case {
        const char* sections;
        const char* message;
    };
    const Case cases[] = {
        {"0\n1\n Arm\n nobody\n1 0\n1 2 3 4 5 6\n0\n0\n0\n0\n0\n0\n0\n0\n0\n0\n",
         "The parent (nobody) of body 'Arm' does not exist."},
        {"1\n3 x\n0\n0\n0\n0\n0\n", "The system variables do not start at 1 in the problem definition."},
        {"0\n0\n1\n1 0 1    nobody\n0\n0\n0\n",
         "Real marker 1 references a body (nobody) that does not exist in the problem definition."},
        // A name of blanks alone, which the reader trims.
        {"0\n0\n1\n1 0 1      \n0\n0\n0\n",
         "Real marker 1 references a body () that does not exist in the problem definition."},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        std::istringstream input(std::string("Kym Problem Definition File\nv1.00\n") + each.sections);
        EXPECT_TRUE(data.readProblemDefStream(input, true)) << each.message;
        EXPECT_EQ(takeChain(), StatusChain{});
        EXPECT_EQ(checked(data), StatusChain{error(each.message)});
    }
}

TEST(ProblemDefChecks, ChangesNothingInTheDefinition) {
    for (const Fault& fault : faults) {
        LqProblemDefData data;
        fillSound(data);
        fault.make(data);
        const LqProblemDefData before(data);
        const std::vector<const LqPDDBodyMap*> bodies(data.bodies.begin(), data.bodies.end());
        const LqPDDGlobalDirectionMarker direction(*data.globalDirectionMarkers[0]);
        checked(data);
        checkedRealMarkerBodies(data);
        EXPECT_TRUE(equals(data, before)) << fault.message;
        EXPECT_TRUE(std::equal(bodies.begin(), bodies.end(), data.bodies.begin(), data.bodies.end()));
        EXPECT_EQ(idsOf(data.globalDirectionMarkers), std::vector<int>{direction.id});
        EXPECT_EQ(data.globalDirectionMarkers[0]->bodyName, direction.bodyName);
    }
}

TEST(ProblemDefChecks, NullSlotsArePassedOver) {
    LqProblemDefData data;
    appendNullSlots(data);
    EXPECT_EQ(checked(data), StatusChain{});
    fillSound(data);
    appendNullSlots(data);
    addSysVar(data, 4, "w");
    data.addBody("Hand", "Arm", 4);
    data.addRealMarker(LqPDDRealMarker(4, 0, 1.0F, "Hand"));
    EXPECT_EQ(checked(data),
              StatusChain{error("The markers do not have consecutive ids in the problem definition.")});
    data.removeLastRealMarker();
    EXPECT_EQ(checked(data), StatusChain{});
    EXPECT_EQ(checkedRealMarkerBodies(data), StatusChain{});
}

TEST(ProblemDefChecks, ASlotThatARemovalLeftCountsAsABodyOfItsOwn) {
    LqProblemDefData data;
    data.addBody("a", referenceSystemName, 1);
    data.addBody("b", referenceSystemName, 2);
    data.removeBody("a");
    EXPECT_EQ(checked(data), StatusChain{error("Body b occurs more than once in the problem definition.")});
    data.removeBodies({});
    EXPECT_EQ(checked(data), StatusChain{});
}

TEST(ProblemDefChecks, ALongListOfMarkersIsReportedWhole) {
    LqProblemDefData data;
    std::string ids;
    std::string names;
    for (int id = 1; id <= 2000; ++id) {
        const std::string name = "body %d of " + std::to_string(id);
        addFixMarker(data, LqPDDFixMarker(id, 1.0F, name.c_str()));
        ids += (id == 1 ? "" : ",") + std::to_string(id);
        names += (id == 1 ? "" : ",") + name;
    }
    EXPECT_EQ(checked(data), StatusChain{error("Fix markers (" + ids + ") reference bodies (" + names +
                                               ") that does not exist in the problem definition.")});
}

// --- The status ----------------------------------------------------------------------------------

TEST(ProblemDefChecks, ReportsOnTheGivenStatusAlone) {
    const CleanStatus clean;
    LqProblemDefData data;
    fillSound(data);
    data.realMarkers[1]->bodyName = "nobody";
    EXPECT_NE(checked(data), StatusChain{});
    EXPECT_NE(checkedRealMarkerBodies(data), StatusChain{});
    EXPECT_EQ(takeChain(), StatusChain{});
    pushError("of another matter");
    EXPECT_EQ(checked(data), StatusChain{error(faults[8].message)});
    EXPECT_EQ(takeChain(), StatusChain{error("of another matter")});
    data.checkProblemDef(currentStatus());
    EXPECT_EQ(takeChain(), StatusChain{error(faults[8].message)});
}

TEST(ProblemDefChecks, AnOlderErrorEndsTheCheckBehindTheParents) {
    LqProblemDefData data;
    fillSound(data);
    LmStatus status;
    status.pushError("older");
    data.checkProblemDef(status);
    EXPECT_EQ(chainOf(status), StatusChain{error("older")});
    for (std::size_t later = 1; later != std::size(faults); ++later) {
        faults[later].make(data);
        data.checkProblemDef(status);
        EXPECT_EQ(chainOf(status), StatusChain{error("older")});
    }
    faults[0].make(data);
    data.checkProblemDef(status);
    EXPECT_EQ(chainOf(status), (StatusChain{error(faults[0].message), error("older")}));
}

TEST(ProblemDefChecks, AnOlderWarningEndsNothing) {
    for (const Fault& fault : faults) {
        LqProblemDefData data;
        fillSound(data);
        fault.make(data);
        LmStatus status;
        status.pushError("oldest");
        status.pushWarning("older");
        data.checkProblemDef(status);
        EXPECT_EQ(chainOf(status), (StatusChain{error(fault.message), warning("older"), error("oldest")}));
    }
}

// --- Bodies --------------------------------------------------------------------------------------

TEST(ProblemDefChecks, AParentIsABodyOfExactlyThatNameOrTheGlobalFrame) {
    const std::pair<const char*, bool> parents[] = {
        {"Hips", true},
        {"Arm", true}, // the body itself: its name exists
        {"ReferenceSystemZero", true},
        {"hips", false},
        {"Hip", false},
        {"Hips ", false},
        {"referencesystemzero", false},
        {"ReferenceSystemZero ", false},
        {"", false},
    };
    for (const auto& [parent, exists] : parents) {
        LqProblemDefData data;
        data.addBody("Hips", referenceSystemName, 1);
        data.addBody("Arm", parent, 2);
        const StatusChain missing = {
            error("The parent (" + std::string(parent) + ") of body 'Arm' does not exist.")};
        EXPECT_EQ(checked(data), exists ? StatusChain{} : missing);
    }
}

TEST(ProblemDefChecks, TheFirstBodyInTheArrayWithoutAParentIsReported) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    data.addBody("Leg", "nowhere", 2);
    data.addBody("Arm", "nobody", 3);
    EXPECT_EQ(checked(data), StatusChain{error("The parent (nowhere) of body 'Leg' does not exist.")});
}

TEST(ProblemDefChecks, AParentMayStandBehindItsChildAndOccurTwice) {
    LqProblemDefData data;
    data.addBody("Arm", "Hips", 1);
    data.addBody("Hips", referenceSystemName, 2);
    EXPECT_EQ(checked(data), StatusChain{});
    data.addBody("Hips", referenceSystemName, 3);
    EXPECT_EQ(checked(data),
              StatusChain{error("Body Hips occurs more than once in the problem definition.")});
}

TEST(ProblemDefChecks, OfRepeatedBodyNamesTheFirstInTheOrderOfBytesIsReported) {
    struct Case {
        std::vector<const char*> names;
        const char* reported;
    };
    const Case cases[] = {
        {{"b", "a", "b", "a"}, "a"},
        {{"a", "Z", "a", "Z"}, "Z"},
        {{"\xC3\xA9", "z", "\xC3\xA9", "z"}, "z"},
        {{"Arm10", "Arm2", "Arm10", "Arm2"}, "Arm10"},
        {{"Arm", "Ar", "Arm", "Ar"}, "Ar"},
        {{"", "a", "", "a"}, ""},
        {{"%s", "%s", "%s"}, "%s"},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        for (const char* name : each.names) {
            data.addBody(name, referenceSystemName, 1);
        }
        EXPECT_EQ(checked(data), StatusChain{error("Body " + std::string(each.reported) +
                                                   " occurs more than once in the problem definition.")});
    }
}

TEST(ProblemDefChecks, BodiesWhoseNamesDifferInCaseAreTwoBodies) {
    LqProblemDefData data;
    data.addBody("Arm", referenceSystemName, 1);
    data.addBody("arm", referenceSystemName, 2);
    EXPECT_EQ(checked(data), StatusChain{});
}

// --- System variables ----------------------------------------------------------------------------

TEST(ProblemDefChecks, SystemVariablesAreNumberedFromOneInTheirOrder) {
    constexpr const char* badStart = "The system variables do not start at 1 in the problem definition.";
    constexpr const char* badSequence =
        "The system variables are not consecutively numbered in the problem definition.";
    struct Case {
        std::vector<int> ids;
        const char* message;
    };
    const Case cases[] = {
        {{1}, nullptr},
        {{1, 2, 3, 4}, nullptr},
        {{0}, badStart},
        {{2}, badStart},
        {{-1}, badStart},
        {{0, 1, 2}, badStart},
        {{2, 1}, badStart},
        {{highestId, lowestId}, badStart},
        {{1, 3}, badSequence},
        {{1, 1}, badSequence},
        {{1, 0}, badSequence},
        {{1, 2, 4, 3}, badSequence},
        {{1, 2, highestId, lowestId}, badSequence},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        for (const int id : each.ids) {
            addSysVar(data, id, ("variable " + std::to_string(data.sysVars.count())).c_str());
        }
        EXPECT_EQ(checked(data), each.message == nullptr ? StatusChain{} : StatusChain{error(each.message)});
    }
}

TEST(ProblemDefChecks, SystemVariableNamesAreUniqueAndMayBeEmptyOnce) {
    struct Case {
        std::vector<const char*> descriptions;
        bool areUnique;
    };
    const Case cases[] = {
        {{"x", "y", "z"}, true}, {{"x", "X"}, true},       {{"x", "x "}, true},         {{"", "x"}, true},
        {{"x", "x"}, false},     {{"x", "y", "x"}, false}, {{"b", "x", "", ""}, false},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        for (const char* description : each.descriptions) {
            addSysVar(data, data.sysVars.count() + 1, description);
        }
        const StatusChain repeated = {
            error("The system variables do not have unique names in the problem definition.")};
        EXPECT_EQ(checked(data), each.areUnique ? StatusChain{} : repeated);
    }
}

// --- The bodies of markers -----------------------------------------------------------------------

using NameSetter = void (*)(LqProblemDefData& data, const char* name);

TEST(ProblemDefChecks, OnlyRealAndArtificialMarkersMayBeOnTheGlobalFrame) {
    struct Case {
        NameSetter put;
        bool mayBeGlobal;
    };
    const Case cases[] = {
        {[](LqProblemDefData& data, const char* name) { data.realMarkers[0]->bodyName = name; }, true},
        {[](LqProblemDefData& data, const char* name) { data.artificialMarkers[0]->bodyName = name; }, true},
        {[](LqProblemDefData& data, const char* name) { data.artificialMarkers[0]->otherBodyName = name; },
         true},
        {[](LqProblemDefData& data, const char* name) { data.fixMarkers[0]->bodyName = name; }, false},
        {[](LqProblemDefData& data, const char* name) { data.doubleMarkers[0]->bodyName = name; }, false},
        {[](LqProblemDefData& data, const char* name) { data.globalDirectionMarkers[0]->bodyName = name; },
         false},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        fillSound(data);
        each.put(data, "Spare");
        EXPECT_EQ(checked(data), StatusChain{});
        each.put(data, "ReferenceSystemZero");
        EXPECT_EQ(checked(data).empty(), each.mayBeGlobal);
        for (const char* name : {"spare", "Spare ", "Spar", "referenceSystemZero", "nobody", ""}) {
            each.put(data, name);
            EXPECT_EQ(checked(data).size(), 1U) << name;
        }
    }
}

/// Markers 1, 2, 3 of one kind on the bodies, and the artificial pairs (1, 2), (3, 4), (5, 6).
void addMarkersOn(LqProblemDefData& data, const std::string& kind, const std::vector<const char*>& bodies) {
    for (const char* body : bodies) {
        if (kind == "fix") {
            addFixMarker(data, LqPDDFixMarker(data.fixMarkers.count() + 1, 1.0F, body));
        } else if (kind == "real") {
            data.addRealMarker(LqPDDRealMarker(data.realMarkers.count() + 1, 0, 1.0F, body));
        } else if (kind == "double") {
            addDoubleMarker(data, LqPDDDoubleMarker(data.doubleMarkers.count() + 1, 77, 1.0F, body));
        } else if (kind == "direction") {
            data.addGlobalDirectionMarker(
                LqPDDGlobalDirectionMarker(data.globalDirectionMarkers.count() + 1, 1.0F, body));
        } else {
            const int id = 2 * data.artificialMarkers.count() + 1;
            data.addArtificialMarker(LqPDDArtificialMarker(id, id + 1, 1.0F, body, "Hips"));
        }
    }
}

TEST(ProblemDefChecks, MarkersOnMissingBodiesAreListedInTheWordsOfTheirKind) {
    struct Case {
        const char* kind;
        std::vector<const char*> bodies;
        const char* message;
    };
    const Case cases[] = {
        {"fix", {"a"}, "Fix marker (1) references a body (a) that does not exist in the problem definition."},
        {"fix",
         {"Hips", "b", "a"},
         "Fix markers (2,3) reference bodies (b,a) that does not exist in the problem definition."},
        {"fix",
         {"a", "Hips", "ReferenceSystemZero"},
         "Fix markers (1,3) reference bodies (a,ReferenceSystemZero) that does not exist in the problem "
         "definition."},
        {"fix", {""}, "Fix marker (1) references a body () that does not exist in the problem definition."},
        {"real",
         {"ReferenceSystemZero", "a b%d"},
         "Real marker 2 references a body (a b%d) that does not exist in the problem definition."},
        {"real",
         {"a", "Hips", "c"},
         "Real markers 1, 3 reference bodies that does not exist in the problem definition."},
        {"real",
         {"a", "b", "c"},
         "Real markers 1, 2, 3 reference bodies that does not exist in the problem definition."},
        {"direction", {"a"}, "Bad global direction marker body names."},
        {"direction", {"Hips", "a", "b"}, "Bad global direction marker body names."},
        {"double",
         {"Hips", "a"},
         "Double marker 2 references a body that does not exist in the problem definition."},
        {"double",
         {"ReferenceSystemZero", "Hips", "c"},
         "Double markers 1, 3 reference bodies that does not exist in the problem definition."},
        {"artificial",
         {"ReferenceSystemZero", "a"},
         "Artificial marker (3) references a body (a,Hips) that does not exist in the problem definition."},
        {"artificial",
         {"a", "b"},
         "Artificial markers (1,3) reference bodies (a,Hips),(b,Hips) that does not exist in the problem "
         "definition."},
        {"artificial",
         {"a", "ReferenceSystemZero", ""},
         "Artificial markers (1,5) reference bodies (a,Hips),(,Hips) that does not exist in the problem "
         "definition."},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        data.addBody("Hips", referenceSystemName, 1);
        addMarkersOn(data, each.kind, each.bodies);
        EXPECT_EQ(checked(data), StatusChain{error(each.message)});
    }
}

TEST(ProblemDefChecks, TwoFixMarkersBehindTwoRealOnesAreListedByTheirIds) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    addMarkersOn(data, "real", {"Hips", "Hips"});
    addFixMarker(data, LqPDDFixMarker(3, 1.0F, "a"));
    EXPECT_EQ(checked(data), StatusChain{error("Fix marker (3) references a body (a) that does not exist in "
                                               "the problem definition.")});
    addFixMarker(data, LqPDDFixMarker(4, 1.0F, "b"));
    EXPECT_EQ(checked(data), StatusChain{error("Fix markers (3,4) reference bodies (a,b) that does not exist "
                                               "in the problem definition.")});
}

TEST(ProblemDefChecks, APairIsListedByItsFirstIdIfEitherOfItsBodiesIsMissing) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    data.addArtificialMarker(LqPDDArtificialMarker(2, 1, 1.0F, "Hips", "b"));
    EXPECT_EQ(checked(data),
              StatusChain{error("Artificial marker (2) references a body (Hips,b) that does not exist in the "
                                "problem definition.")});
    data.addArtificialMarker(LqPDDArtificialMarker(4, 3, 1.0F, "Hips", "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(5, 6, 1.0F, "c", "d"));
    EXPECT_EQ(
        checked(data),
        StatusChain{error("Artificial markers (2,5) reference bodies (Hips,b),(c,d) that does not exist "
                          "in the problem definition.")});
}

// --- Marker ids ----------------------------------------------------------------------------------

TEST(ProblemDefChecks, IdsOfPairsBehindOtherMarkersMayCross) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    addMarkersOn(data, "real", {"Hips", "Hips"});
    for (const int id : {3, 4}) {
        addFixMarker(data, LqPDDFixMarker(id, 1.0F, "Hips"));
    }
    for (const int id : {5, 6}) {
        addDoubleMarker(data, LqPDDDoubleMarker(id, 1, 1.0F, "Hips"));
    }
    data.addArtificialMarker(LqPDDArtificialMarker(7, 9, 1.0F, "Hips", "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(8, 10, 1.0F, "Hips", "Hips"));
    EXPECT_EQ(checked(data), StatusChain{});
}

TEST(ProblemDefChecks, OfPairsAloneAnyMayHoldTheOne) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    data.addArtificialMarker(LqPDDArtificialMarker(2, 3, 1.0F, "Hips", "Hips"));
    EXPECT_EQ(checked(data),
              StatusChain{error("The marker ids do not start at 1 in the problem definition.")});
    data.addArtificialMarker(LqPDDArtificialMarker(1, 4, 1.0F, "Hips", "Hips"));
    EXPECT_EQ(checked(data), StatusChain{});
}

TEST(ProblemDefChecks, AGapBetweenRealAndFixMarkersIsReported) {
    LqProblemDefData data;
    data.addBody("Hips", referenceSystemName, 1);
    addMarkersOn(data, "real", {"Hips", "Hips"});
    for (const int id : {4, 5}) {
        addFixMarker(data, LqPDDFixMarker(id, 1.0F, "Hips"));
    }
    EXPECT_EQ(checked(data),
              StatusChain{error("The markers do not have consecutive ids in the problem definition.")});
}

// --- The separate check of real markers ----------------------------------------------------------

TEST(RealMarkerBodies, TheFirstFaultInArrayOrderIsReported) {
    struct Case {
        std::vector<std::pair<int, const char*>> markers;
        StatusChain chain;
    };
    const Case cases[] = {
        {{{1, "Hips"}, {2, "ReferenceSystemZero"}, {7, "Hips"}, {1, "Hips"}, {highestId, "Hips"}}, {}},
        {{{3, "hips"}}, {error("Marker 3 is on body hips which does not exist.")}},
        {{{4, ""}}, {error("Marker 4 is on body  which does not exist.")}},
        {{{5, "%d %s"}}, {error("Marker 5 is on body %d %s which does not exist.")}},
        {{{1, "Hips"}, {0, "Hips"}, {2, "nobody"}}, {error("Invalid marker ID: 0")}},
        {{{lowestId, "ReferenceSystemZero"}}, {error("Invalid marker ID: -2147483648")}},
        {{{1, "Hips"}, {2, "nobody"}, {0, "Hips"}},
         {error("Marker 2 is on body nobody which does not exist.")}},
        {{{-1, "nobody"}}, {error("Marker -1 is on body nobody which does not exist.")}},
    };
    for (const Case& each : cases) {
        LqProblemDefData data;
        data.addBody("Hips", referenceSystemName, 1);
        for (const auto& [id, body] : each.markers) {
            data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, body));
        }
        EXPECT_EQ(checkedRealMarkerBodies(data), each.chain);
    }
}

TEST(RealMarkerBodies, OtherKindsAndOlderEntriesMakeNoDifference) {
    LqProblemDefData data;
    fillSound(data);
    data.fixMarkers[0]->bodyName = "nobody";
    data.doubleMarkers[0]->id = 0;
    data.artificialMarkers[0]->bodyName = "nobody";
    LmStatus status;
    status.pushError("older");
    data.checkRealMarkerBodies(status);
    EXPECT_EQ(chainOf(status), StatusChain{error("older")});
    data.realMarkers[1]->bodyName = "nobody";
    data.checkRealMarkerBodies(status);
    EXPECT_EQ(chainOf(status),
              (StatusChain{error("Marker 2 is on body nobody which does not exist."), error("older")}));
}

} // namespace
} // namespace quillon::test
