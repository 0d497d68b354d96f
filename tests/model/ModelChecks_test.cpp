#include "quillon/model/ModelChecks.h"

#include "quillon/model/LqBodyDefData.h"
#include "tests/model/ModelText.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace quillon::test {
namespace {

constexpr int lowestId = std::numeric_limits<int>::min();
constexpr int highestId = std::numeric_limits<int>::max();

using Ids = std::vector<int>;

void addNamedBodies(LqBodyDefData& model, const std::vector<const char*>& names) {
    for (const char* name : names) {
        LqBDBody body;
        body.name = name;
        model.addBody(body);
    }
}

void addNamedBodies(LqProblemDefData& definition, const std::vector<const char*>& names) {
    for (const char* name : names) {
        definition.addBody(name, referenceSystemName, definition.bodies.count() + 1);
    }
}

void appendMarkers(LmDArray<LqBDMarker*>& markers, const Ids& ids) {
    for (const int id : ids) {
        markers.append(new LqBDMarker{id, {}});
    }
}

/// So many real, fix and double markers and artificial pairs, all of id -1.
void addMarkers(LqProblemDefData& definition, int real, int fix, int doubled, int pairs) {
    for (int i = 0; i < real; ++i) {
        definition.realMarkers.append(new LqPDDRealMarker);
    }
    for (int i = 0; i < fix; ++i) {
        definition.fixMarkers.append(new LqPDDFixMarker);
    }
    for (int i = 0; i < doubled; ++i) {
        definition.doubleMarkers.append(new LqPDDDoubleMarker);
    }
    for (int i = 0; i < pairs; ++i) {
        definition.artificialMarkers.append(new LqPDDArtificialMarker);
    }
}

void addMarkers(LqBodyDefData& model, int real, int fix, int doubled, int points) {
    appendMarkers(model.realMarkers, Ids(static_cast<std::size_t>(real), -1));
    appendMarkers(model.fixMarkers, Ids(static_cast<std::size_t>(fix), -1));
    appendMarkers(model.doubleMarkers, Ids(static_cast<std::size_t>(doubled), -1));
    appendMarkers(model.artificialMarkers, Ids(static_cast<std::size_t>(points), -1));
}

// --- The number of bodies ------------------------------------------------------------------------

TEST(ModelBodyCount, ThatDiffersGivesTwoErrorsOrTwoWarnings) {
    const CleanStatus clean;
    LqProblemDefData definition;
    addNamedBodies(definition, {"a", "b"});
    const std::string differs[] = {
        "The body def does not match the previously loaded problem def.",
        "The number of bodies in this body def (3) does not match the number of bodies in the given problem "
        "def (2)."};
    LqBodyDefData model; // what the model itself holds makes no difference
    model.checkBodyCount(2, definition);
    EXPECT_EQ(takeChain(), StatusChain{});
    model.checkBodyCount(3, definition);
    EXPECT_EQ(takeChain(), (StatusChain{error(differs[0]), error(differs[1])}));
    model.strictMatch = false;
    model.checkBodyCount(3, definition);
    EXPECT_EQ(takeChain(), (StatusChain{warning(differs[0]), warning(differs[1])}));
    model.checkBodyCount(2, definition);
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST(ModelBodyCount, OfNoBodiesDiffersFromOne) {
    const CleanStatus clean;
    LqProblemDefData definition;
    const LqBodyDefData model;
    model.checkBodyCount(0, definition);
    EXPECT_EQ(takeChain(), StatusChain{});
    addNamedBodies(definition, {"a"});
    model.checkBodyCount(0, definition);
    EXPECT_EQ(takeChain(),
              (StatusChain{error("The body def does not match the previously loaded problem def."),
                           error("The number of bodies in this body def (0) does not match the number of "
                                 "bodies in the given problem def (1).")}));
}

const std::string header = "Kym Model File\nv1.00\n0    ; # of cameras\n";
const std::string noMarkers = "0\n0\n0\n0\n";

std::string plainBody(const std::string& name) {
    return " " + name + "\n1 0 0\n0 1 0\n0 0 1\n0 0 0\n";
}

/// What the reading of a stream leaves behind.
struct ReadResult {
    bool whole;
    StatusChain chain;
};

ReadResult readStream(LqBodyDefData& model, const std::string& text, const LqProblemDefData& definition,
                      bool withIncludes = false) {
    std::istringstream input(text);
    const bool whole = model.readModelStream(input, definition, withIncludes);
    return {whole, takeChain()};
}

TEST(ModelStream, IsHeldAgainstTheNumberOfBodiesAtItsEnd) {
    const CleanStatus clean;
    LqProblemDefData definition;
    addNamedBodies(definition, {"a", "b"});
    const std::string both = header + "2\n" + plainBody("a") + plainBody("b") + noMarkers;
    const std::string one = header + "1\n" + plainBody("b") + noMarkers;
    const char* const general = "The body def does not match the previously loaded problem def.";
    const char* const counts =
        "The number of bodies in this body def (1) does not match the number of bodies "
        "in the given problem def (2).";
    for (const bool withIncludes : {false, true}) {
        LqBodyDefData model;
        const ReadResult good = readStream(model, both, definition, withIncludes);
        EXPECT_TRUE(good.whole);
        EXPECT_EQ(good.chain, StatusChain{});
        const ReadResult strict = readStream(model, one, definition, withIncludes);
        EXPECT_FALSE(strict.whole);
        EXPECT_EQ(strict.chain, (StatusChain{error(general), error(counts)}));
        model.strictMatch = false;
        const ReadResult lenient = readStream(model, one, definition, withIncludes);
        EXPECT_TRUE(lenient.whole);
        EXPECT_EQ(lenient.chain, (StatusChain{warning(general), warning(counts)}));
        EXPECT_EQ(bodyNamesOf(model), std::vector<std::string>{"b"});
    }
}

TEST(ModelStream, OfNoBodiesReadsAgainstADefinitionWithBodiesAndIsFoundOutThen) {
    const CleanStatus clean;
    LqProblemDefData definition;
    addNamedBodies(definition, {"a"});
    LqBodyDefData model;
    const ReadResult result = readStream(model, header + "0\n" + noMarkers, definition);
    EXPECT_FALSE(result.whole);
    EXPECT_EQ(result.chain,
              (StatusChain{error("The body def does not match the previously loaded problem def."),
                           error("The number of bodies in this body def (0) does not match the number of "
                                 "bodies in the given problem def (1).")}));
}

TEST(ModelStream, ThatFailsIsNotHeldAgainstTheNumberOfBodies) {
    const CleanStatus clean;
    LqProblemDefData definition;
    addNamedBodies(definition, {"a"});
    LqBodyDefData model;
    // A warning on top would hide the error.
    model.strictMatch = false;
    const ReadResult result = readStream(model, header + "none\n", definition);
    EXPECT_FALSE(result.whole);
    EXPECT_EQ(result.chain, StatusChain{error("Unable to read number of bodies.")});
    const CancelAtAsking cancel(1);
    addNamedBodies(definition, {"b", "c", "d", "e"});
    const ReadResult canceled =
        readStream(model, header + "5\n" + plainBody("a") + plainBody("b") + plainBody("c") + plainBody("d"),
                   definition);
    EXPECT_FALSE(canceled.whole);
    EXPECT_EQ(canceled.chain, (StatusChain{warning("Read aborted."), error("Canceled.")}));
}

// --- The model by itself -------------------------------------------------------------------------

/// A model without a fault, and the definition that it is checked against.
struct Checked {
    Checked() {
        addNamedBodies(definition, {"a", "b"});
        addMarkers(definition, 2, 1, 1, 1);
        addNamedBodies(model, {"b", "a"});
        appendMarkers(model.realMarkers, {1, 2});
        appendMarkers(model.fixMarkers, {3});
        appendMarkers(model.doubleMarkers, {4});
        appendMarkers(model.artificialMarkers, {5, 6});
        model.problemDef = &definition;
    }

    StatusChain check() const {
        model.checkModel();
        return takeChain();
    }

    CleanStatus clean;
    LqProblemDefData definition;
    LqBodyDefData model;
};

struct Fault {
    const char* message;
    void (*make)(LqBodyDefData& model);
};

/// In the order in which they are looked for.
const Fault faults[] = {
    {"There are duplicate body names in the bodydef.",
     [](LqBodyDefData& model) { model.bodies[0]->name = "a"; }},
    {"The number of bodies in the bodydef does not match the problem definition.",
     [](LqBodyDefData& model) { addNamedBodies(model, {"c"}); }},
    {"The marker ids do not start at 1 in the bodydef.",
     [](LqBodyDefData& model) { model.realMarkers[0]->id = 2; }},
    {"The markers are not consecutively numbered in the bodydef.",
     [](LqBodyDefData& model) { model.doubleMarkers[0]->id = 5; }},
    {"The number of markers in the bodydef does not match the problem definition.",
     [](LqBodyDefData& model) { appendMarkers(model.artificialMarkers, {7}); }},
};

TEST(ModelCheck, PassesAModelWithoutAFaultAndAnEmptyOne) {
    Checked checked;
    EXPECT_EQ(checked.check(), StatusChain{});
    const std::vector<std::string> lines = linesOf(checked.model);
    EXPECT_EQ(checked.check(), StatusChain{});
    EXPECT_EQ(linesOf(checked.model), lines);
    checked.definition.clear();
    checked.model.clear();
    EXPECT_EQ(checked.check(), StatusChain{});
}

TEST(ModelCheck, ReportsEachFaultAlone) {
    for (const Fault& fault : faults) {
        Checked checked;
        fault.make(checked.model);
        EXPECT_EQ(checked.check(), StatusChain{error(fault.message)});
    }
}

TEST(ModelCheck, ReportsTheFirstOfSeveralFaults) {
    for (std::size_t first = 0; first != std::size(faults); ++first) {
        Checked checked;
        for (std::size_t later = first; later != std::size(faults); ++later) {
            faults[later].make(checked.model);
        }
        EXPECT_EQ(checked.check(), StatusChain{error(faults[first].message)});
    }
}

TEST(ModelCheck, GoesOnWithAnErrorThatStands) {
    Checked checked;
    faults[3].make(checked.model);
    pushError("older");
    EXPECT_EQ(checked.check(), (StatusChain{error(faults[3].message), error("older")}));
}

TEST(ModelCheck, IsStrictWhateverTheModelSaysOfItsBodyCount) {
    Checked checked;
    checked.model.strictMatch = false;
    addNamedBodies(checked.definition, {"c"});
    EXPECT_EQ(checked.check(), StatusChain{error(faults[1].message)});
}

TEST(ModelCheck, NamesThatDifferInCaseAreNoDuplicatesAndNeedNotBeTheDefinitions) {
    Checked checked;
    checked.model.bodies[0]->name = "A";
    EXPECT_EQ(checked.check(), StatusChain{});
}

TEST(ModelCheck, HoldsTheSlotsThatAReadLeftEmptyForBodies) {
    Checked checked;
    checked.model.bodies.append(nullptr);
    EXPECT_EQ(checked.check(), StatusChain{error(faults[1].message)});
    addNamedBodies(checked.definition, {"c"});
    EXPECT_EQ(checked.check(), StatusChain{});
}

TEST(ModelCheck, OfManyBodiesOfOneNameIsQuick) {
    const CleanStatus clean;
    LqBodyDefData model;
    model.bodies.setLengthZeroed(100000);
    for (LqBDBody*& body : model.bodies) {
        body = new LqBDBody;
    }
    model.checkModel();
    EXPECT_EQ(takeChain(), StatusChain{error(faults[0].message)});
}

TEST(ModelCheck, EndsTheProcessWithoutADefinitionToCountAgainst) {
    EXPECT_EQ(support::runFunction([] { LqBodyDefData().checkModel(); }).outcome, "SIGSEGV");
}

TEST(ModelCheck, MarkersAreNumberedFromOneThroughTheFourArraysInArrayOrder) {
    constexpr const char* badStart = "The marker ids do not start at 1 in the bodydef.";
    constexpr const char* badSequence = "The markers are not consecutively numbered in the bodydef.";
    struct Case {
        Ids real;
        Ids fix;
        Ids doubled;
        Ids artificial;
        const char* message;
    };
    const Case cases[] = {
        {{1, 2}, {}, {}, {}, nullptr},
        {{}, {1, 2}, {}, {}, nullptr},
        {{}, {}, {1, 2}, {}, nullptr},
        {{}, {}, {}, {1, 2}, nullptr},
        {{1}, {2}, {}, {}, nullptr},
        {{1}, {}, {2}, {}, nullptr},
        {{1, 2}, {}, {}, {3, 4}, nullptr},
        {{}, {1}, {2}, {}, nullptr},
        {{}, {1, 2}, {}, {3, 4}, nullptr},
        {{}, {}, {1, 2}, {3, 4}, nullptr},
        {{1}, {2}, {3, 4}, {}, nullptr},
        {{1}, {2}, {}, {3, 4}, nullptr},
        {{1}, {}, {2}, {3, 4}, nullptr},
        {{}, {1}, {2}, {3, 4}, nullptr},
        {{0, 1}, {}, {}, {}, badStart},
        {{2}, {1}, {}, {}, badStart},
        {{}, {2}, {}, {}, badStart},
        {{}, {}, {2}, {}, badStart},
        {{}, {}, {}, {2, 1}, badStart},
        {{-1}, {1}, {}, {}, badStart},
        {{highestId, lowestId}, {}, {}, {}, badStart},
        {{1, 3}, {}, {}, {}, badSequence},
        {{1, 1}, {}, {}, {}, badSequence},
        {{1, 2, 1}, {}, {}, {}, badSequence},
        {{1, highestId, lowestId}, {}, {}, {}, badSequence},
        {{1}, {1}, {}, {}, badSequence},
        {{1}, {3}, {}, {}, badSequence},
        {{1}, {2, 4}, {}, {}, badSequence},
        {{1}, {}, {3}, {}, badSequence},
        {{1}, {2}, {2}, {}, badSequence},
        {{1}, {2}, {3, 3}, {}, badSequence},
        {{1, 2}, {}, {}, {4, 3}, badSequence},
        {{1, 2}, {}, {}, {3, 5}, badSequence},
        {{}, {1}, {}, {3, 4}, badSequence},
        {{}, {}, {1}, {1, 2}, badSequence},
        {{}, {}, {}, {1, 3, 2, 4}, badSequence}, // the pairs (1, 3) and (2, 4): points are not sorted
    };
    int number = 0;
    for (const Case& each : cases) {
        SCOPED_TRACE(number++);
        const CleanStatus clean;
        LqBodyDefData model;
        appendMarkers(model.realMarkers, each.real);
        appendMarkers(model.fixMarkers, each.fix);
        appendMarkers(model.doubleMarkers, each.doubled);
        appendMarkers(model.artificialMarkers, each.artificial);
        appendMarkers(model.globalDirectionMarkers, {77});
        LqProblemDefData definition;
        addMarkers(definition, model.markerCount(), 0, 0, 0);
        model.problemDef = &definition;
        model.checkModel();
        EXPECT_EQ(takeChain(), each.message == nullptr ? StatusChain{} : StatusChain{error(each.message)});
    }
}

TEST(ModelCheck, CountsMarkersOfAllKindsTogether) {
    Checked checked;
    checked.definition.clear();
    addNamedBodies(checked.definition, {"a", "b"});
    addMarkers(checked.definition, 6, 0, 0, 0);
    EXPECT_EQ(checked.check(), StatusChain{});
    addMarkers(checked.definition, 0, 0, 0, 1);
    EXPECT_EQ(checked.check(), StatusChain{error(faults[4].message)});
}

// --- The model and the definition ----------------------------------------------------------------

struct Counts {
    int real;
    int fix;
    int doubled;
    int artificial; // pairs in the definition, points in the model
};

struct MatchCase {
    Counts definition;
    Counts model;
    StatusChain chain;
};

StatusLine countsDiffer(const std::string& kind) {
    return error("The number of " + kind +
                 " markers in the problem definition and body definition do not match.");
}

TEST(ModelMatch, ComparesTheNumbersOfMarkersKindByKind) {
    const CleanStatus clean;
    const MatchCase cases[] = {
        {{0, 0, 0, 0}, {0, 0, 0, 0}, {}},
        {{3, 2, 1, 2}, {3, 2, 1, 4}, {}},
        {{3, 0, 0, 0},
         {4, 0, 0, 0},
         {countsDiffer("real"),
          error("The problem definition has 3 real markers, but the body definition has 4.")}},
        {{1, 9, 9, 9},
         {0, 0, 0, 0},
         {countsDiffer("real"),
          error("The problem definition has 1 real markers, but the body definition has 0.")}},
        {{1, 2, 0, 0}, {1, 1, 0, 0}, {countsDiffer("fix")}},
        {{1, 2, 5, 5}, {1, 3, 0, 0}, {countsDiffer("fix")}},
        {{1, 2, 5, 5}, {1, 2, 4, 0}, {countsDiffer("double")}},
        {{0, 0, 0, 0}, {0, 0, 1, 0}, {countsDiffer("double")}},
        {{0, 0, 0, 2}, {0, 0, 0, 2}, {countsDiffer("artificial")}},
        {{0, 0, 0, 2}, {0, 0, 0, 3}, {countsDiffer("artificial")}},
        {{0, 0, 0, 0}, {0, 0, 0, 2}, {countsDiffer("artificial")}},
    };
    for (const MatchCase& each : cases) {
        LqProblemDefData definition;
        addMarkers(definition, each.definition.real, each.definition.fix, each.definition.doubled,
                   each.definition.artificial);
        LqBodyDefData model;
        addMarkers(model, each.model.real, each.model.fix, each.model.doubled, each.model.artificial);
        LmStatus status;
        EXPECT_EQ(matchProblemDef(definition, model, status), each.chain.empty());
        EXPECT_EQ(chainOf(status), each.chain);
        // A missing body is looked for behind the numbers.
        addNamedBodies(definition, {"a"});
        LmStatus withBody;
        EXPECT_FALSE(matchProblemDef(definition, model, withBody));
        const StatusChain missing = {
            error("Body \"a\" is in the problem definition but not in the body definition.")};
        EXPECT_EQ(chainOf(withBody), each.chain.empty() ? missing : each.chain);
    }
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST(ModelMatch, LooksForEachBodyOfTheDefinitionByItsExactName) {
    struct Case {
        std::vector<const char*> defined;
        std::vector<const char*> modelled;
        const char* missing;
    };
    const Case cases[] = {
        {{"a", "b"}, {"b", "a"}, nullptr},
        {{"a"}, {"b", "a", "c"}, nullptr}, // a body that only the model has is not looked for
        {{}, {"a"}, nullptr},
        {{"a", "a"}, {"a"}, nullptr},
        {{"Arm"}, {"arm"}, "Arm"},
        {{"Arm"}, {"Arm "}, "Arm"},
        {{"a", "c", "b"}, {"a"}, "c"},
        {{"%s"}, {}, "%s"},
        {{""}, {"a"}, ""},
    };
    for (const Case& each : cases) {
        LqProblemDefData definition;
        definition.bodies.append(nullptr);
        addNamedBodies(definition, each.defined);
        definition.bodies.append(nullptr);
        LqBodyDefData model;
        addNamedBodies(model, each.modelled);
        model.bodies.append(nullptr);
        LmStatus status;
        EXPECT_EQ(matchProblemDef(definition, model, status), each.missing == nullptr);
        EXPECT_EQ(
            chainOf(status),
            each.missing == nullptr
                ? StatusChain{}
                : StatusChain{error("Body \"" + std::string(each.missing) +
                                    "\" is in the problem definition but not in the body definition.")});
    }
}

TEST(ModelMatch, AsksNeitherForIdsNorForOlderEntriesNorForTheModelsOwnDefinition) {
    const CleanStatus clean;
    LqProblemDefData definition;
    addMarkers(definition, 1, 1, 1, 1);
    definition.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker());
    LqBodyDefData model;
    appendMarkers(model.realMarkers, {9});
    appendMarkers(model.fixMarkers, {9});
    appendMarkers(model.doubleMarkers, {lowestId});
    appendMarkers(model.artificialMarkers, {7, 7});
    LmStatus status;
    status.pushError("older");
    EXPECT_TRUE(matchProblemDef(definition, model, status));
    EXPECT_EQ(chainOf(status), StatusChain{error("older")});
    EXPECT_EQ(takeChain(), StatusChain{});
}

} // namespace
} // namespace quillon::test
