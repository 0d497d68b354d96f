#include "quillon/model/ModelMerge.h"

#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/model/ModelText.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <filesystem>
#include <sstream>

namespace quillon {
namespace {

using test::bodyNamesOf;
using test::CleanStatus;
using test::error;
using test::idsOf;
using test::linesOf;
using test::StatusChain;
using test::StatusLine;
using test::takeChain;
using testing::ElementsAre;

using Lines = std::vector<std::string>;

// --- Two models ----------------------------------------------------------------------------------

/// Bodies of these names, and markers of these ids with the id as their x coordinate.
struct ModelRecords {
    Lines bodies;
    std::vector<int> real = {};
    std::vector<int> fix = {};
    std::vector<int> doubles = {};
    std::vector<int> artificial = {};
};

void append(LmDArray<LqBDMarker*>& markers, const std::vector<int>& ids) {
    for (const int id : ids) {
        markers.append(new LqBDMarker{id, {static_cast<float>(id), 0, 0}});
    }
}

void fill(LqBodyDefData& model, const ModelRecords& records) {
    for (const std::string& name : records.bodies) {
        LqBDBody body;
        body.name = name.c_str();
        body.baseTransform[12] = static_cast<float>(name.size());
        body.vectorLength = 0.5F;
        body.vectorDirection = {0, 0, -1};
        model.addBody(body);
    }
    append(model.realMarkers, records.real);
    append(model.fixMarkers, records.fix);
    append(model.doubleMarkers, records.doubles);
    append(model.artificialMarkers, records.artificial);
}

const ModelRecords firstRecords = {{"Hips", "Leg"}, {10}, {20, 21}, {30}, {40, 41}};
const ModelRecords secondRecords = {{"Arm"}, {1, 2}, {3}, {4, 5}, {6, 7, 8, 9}};

// Each id rises by the other side's markers of the kinds in front of its own, and in the second model by the
// first's of its own kind too: the second fix marker's 3 by one real and two fix markers to 6.
const Lines mergedLines = {
    "cameras 0",
    "body Hips_a [1 0 0 0 0 1 0 0 0 0 1 0 4 0 0 1] length 0.5 direction 0 0 -1",
    "body Leg_a [1 0 0 0 0 1 0 0 0 0 1 0 3 0 0 1] length 0.5 direction 0 0 -1",
    "body Arm_b [1 0 0 0 0 1 0 0 0 0 1 0 3 0 0 1] length 0.5 direction 0 0 -1",
    "real 10: 10 0 0",
    "real 2: 1 0 0",
    "real 3: 2 0 0",
    "fix 22: 20 0 0",
    "fix 23: 21 0 0",
    "fix 6: 3 0 0",
    "double 33: 30 0 0",
    "double 8: 4 0 0",
    "double 9: 5 0 0",
    "artificial 45: 40 0 0",
    "artificial 46: 41 0 0",
    "artificial 12: 6 0 0",
    "artificial 13: 7 0 0",
    "artificial 14: 8 0 0",
    "artificial 15: 9 0 0",
};

TEST(MergeModels, PutsTheSecondBehindTheFirstInOneNumbering) {
    LqBodyDefData first;
    fill(first, firstRecords);
    LqBodyDefData second;
    fill(second, secondRecords);
    const Lines firstLines = linesOf(first);
    const Lines secondLines = linesOf(second);
    LqBodyDefData result;
    mergeModels(result, first, second, "_a", "_b");
    EXPECT_EQ(linesOf(result), mergedLines);
    EXPECT_EQ(linesOf(first), firstLines);
    EXPECT_EQ(linesOf(second), secondLines);
}

TEST(MergeModels, TheResultMayBeOneOfTheTwo) {
    LqBodyDefData first;
    fill(first, firstRecords);
    first.includes.append(new LqBDInclude{"x.model", "_b"});
    LqBodyDefData second;
    fill(second, secondRecords);
    LqBodyDefData target(first);
    mergeModels(target, target, second, "_a", static_cast<LqBDInclude*>(target.includes[0])->bodyNameSuffix);
    EXPECT_EQ(linesOf(target), mergedLines);
    target = second;
    mergeModels(target, first, target, "_a", "_b");
    EXPECT_EQ(linesOf(target), mergedLines);
    mergeModels(second, second, second, "", "");
    EXPECT_EQ(idsOf(second.realMarkers), (std::vector<int>{1, 2, 3, 4}));
}

TEST(MergeModels, ReplacesTheRecordsOfTheResultAndNothingElse) {
    LqProblemDefData definition;
    LqBodyDefData first;
    fill(first, {{"Hips"}});
    first.cameraCount = 2;
    first.addGlobalDirectionMarker({5, {}});
    first.includes.append(new LqBDInclude{"x.model", ""});
    LqBodyDefData result;
    fill(result, secondRecords);
    result.addGlobalDirectionMarker({6, {}});
    result.includes.append(new LqBDInclude{"y.model", ""});
    result.problemDef = &definition;
    result.cameraCount = 3;
    result.strictMatch = false;
    mergeModels(result, first, first, "", "_2");
    EXPECT_EQ(linesOf(result),
              (Lines{"cameras 3", "body Hips [1 0 0 0 0 1 0 0 0 0 1 0 4 0 0 1] length 0.5 direction 0 0 -1",
                     "body Hips_2 [1 0 0 0 0 1 0 0 0 0 1 0 4 0 0 1] length 0.5 direction 0 0 -1"}));
    EXPECT_EQ(result.problemDef, &definition);
    EXPECT_FALSE(result.strictMatch);
    LqBodyDefData fresh;
    mergeModels(fresh, first, first, "", "");
    EXPECT_EQ(fresh.cameraCount, 0);
}

TEST(MergeModels, LeavesOutTheEmptySlotsOfAReadingThatFailed) {
    LqBodyDefData first;
    fill(first, {{"Hips"}});
    first.bodies.append(nullptr);
    LqBodyDefData result;
    mergeModels(result, first, first, "", "_2");
    EXPECT_EQ(bodyNamesOf(result), (Lines{"Hips", "Hips_2"}));
    EXPECT_EQ(result.bodies.count(), 2);
}

// --- Included files ------------------------------------------------------------------------------

const StatusLine notIncluded = error("Unable to include sub-body def data.");

StatusLine includesItself(const std::string& path) {
    return error("\"" + path + "\" includes itself.");
}

StatusLine noSuchBody(const std::string& name) {
    return error("The base matrix for body '" + name +
                 "' is given, but there is no such body in the problem definition.");
}

class MergeModelIncludes : public testing::Test {
protected:
    std::string path(const std::string& name) const { return scratch / name; }

    std::string block(const std::string& name, const std::string& suffix = "") const {
        return "INCLUDE {\nFILE_NAME: " + path(name) + "\nBODY_NAME_SUFFIX: " + suffix + "\n}\n";
    }

    /// Writes a model of one body of this name and of one marker of each kind, numbered from 1, with the
    /// length of the name as x coordinate.
    void write(const std::string& name, const std::string& section = "") const {
        const std::string position = " " + std::to_string(name.size()) + " 0 0\n";
        support::writeBytes(path(name), "Kym Model File\nv1.00\n0\n1\n " + name +
                                            "\n1 0 0\n0 1 0\n0 0 1\n0 0 0\n1\n1" + position + "1\n2" +
                                            position + "1\n3" + position + "1\n4" + position + "5" +
                                            position + section);
    }

    void define(const Lines& names) {
        for (const std::string& name : names) {
            test::addBodies(definition, {{name, 0}});
        }
    }

    StatusChain chainAfterReading(const std::string& name) {
        const bool whole = model.readModelFile(path(name).c_str(), definition, true);
        EXPECT_EQ(whole, !errorStands());
        return takeChain();
    }

    Lines namesAfterReading(const std::string& name) {
        EXPECT_EQ(chainAfterReading(name), StatusChain{});
        return bodyNamesOf(model);
    }

    void addInclude(const std::string& name, const char* suffix = "") {
        model.includes.append(new LqBDInclude{path(name).c_str(), suffix});
    }

    /// Expects a merge of `model` to fail with this chain, and to leave everything as it was.
    void expectFailure(const StatusChain& chain) {
        const Lines before = linesOf(model);
        EXPECT_FALSE(model.mergeModelIncludes(definition));
        EXPECT_EQ(takeChain(), chain);
        EXPECT_EQ(linesOf(model), before);
    }

    StatusChain missing(const std::string& name) const {
        return {error("Unable to open \"" + path(name) + "\"."), error("File does not exist.")};
    }

    CleanStatus clean;
    support::ScratchDirectory scratch;
    LqProblemDefData definition;
    LqBodyDefData model;
};

TEST_F(MergeModelIncludes, DoesNothingWithoutIncludes) {
    fill(model, firstRecords);
    model.addGlobalDirectionMarker({1, {}});
    model.cameraCount = 2;
    model.strictMatch = false;
    const Lines before = linesOf(model);
    EXPECT_TRUE(model.mergeModelIncludes(definition));
    EXPECT_EQ(linesOf(model), before);
    EXPECT_FALSE(model.strictMatch);
}

TEST_F(MergeModelIncludes, EachStandsBehindThoseInFrontOfItInOneNumbering) {
    write("Arm");
    write("Leg");
    write("Figure", block("Arm", "_l") + block("Leg"));
    define({"Figure", "Arm_l", "Leg"});
    EXPECT_EQ(chainAfterReading("Figure"), StatusChain{});
    const std::string end = " [1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1] length 0 direction 0 0 0";
    EXPECT_EQ(linesOf(model),
              (Lines{"cameras 0", "body Figure" + end, "body Arm_l" + end, "body Leg" + end, "real 1: 6 0 0",
                     "real 2: 3 0 0", "real 3: 3 0 0", "fix 4: 6 0 0", "fix 5: 3 0 0", "fix 6: 3 0 0",
                     "double 7: 6 0 0", "double 8: 3 0 0", "double 9: 3 0 0", "artificial 10: 6 0 0",
                     "artificial 11: 6 0 0", "artificial 12: 3 0 0", "artificial 13: 3 0 0",
                     "artificial 14: 3 0 0", "artificial 15: 3 0 0"}));
}

TEST_F(MergeModelIncludes, GivesWhatModelsMergedOneByOneWouldGive) {
    write("Arm");
    write("Leg");
    define({"Arm_1", "Leg_2", "Arm", "Leg"});
    fill(model, firstRecords);
    LqBodyDefData expected(model);
    for (const auto& [name, suffix] :
         {std::pair("Arm", "_1"), std::pair("Leg", "_2"), std::pair("Arm", "")}) {
        LqBodyDefData part;
        EXPECT_TRUE(part.readModelFile(path(name).c_str(), definition, true));
        mergeModels(expected, expected, part, "", suffix);
        addInclude(name, suffix);
    }
    EXPECT_TRUE(model.mergeModelIncludes(definition));
    EXPECT_TRUE(model.equals(expected));
    EXPECT_EQ(linesOf(model), linesOf(expected));
}

TEST_F(MergeModelIncludes, LeavesTheCamerasAndTheStrictnessOfANewModelAndTheDefinition) {
    write("Arm");
    define({"Arm"});
    LqProblemDefData other;
    model.problemDef = &other;
    model.cameraCount = 2;
    model.strictMatch = false;
    model.addGlobalDirectionMarker({1, {}});
    addInclude("Arm");
    EXPECT_TRUE(model.mergeModelIncludes(definition));
    EXPECT_EQ(model.cameraCount, 0);
    EXPECT_TRUE(model.strictMatch);
    EXPECT_EQ(model.problemDef, &other);
    EXPECT_EQ(model.globalDirectionMarkers.count(), 0);
    EXPECT_EQ(model.includes.count(), 0);
}

TEST_F(MergeModelIncludes, ABodyIsLookedUpWithTheSuffixOfItsOwnInclude) {
    write("Finger");
    write("Hand", block("Finger", "1"));
    write("Figure", block("Hand", "_l"));
    // The finger is looked up as "Finger1", and its name then gets the suffix of the hand as well.
    define({"Figure", "Hand_l", "Finger1"});
    EXPECT_EQ(namesAfterReading("Figure"), (Lines{"Figure", "Hand_l", "Finger1_l"}));
    definition.renameBody("Finger1", "Finger1_l");
    EXPECT_EQ(chainAfterReading("Figure"),
              (StatusChain{notIncluded, notIncluded, error("Unable to read '" + path("Finger") + "'."),
                           noSuchBody("Finger1")}));
}

TEST_F(MergeModelIncludes, AStreamIsMergedWhenThatIsAskedFor) {
    write("Arm");
    const std::string text = "Kym Model File\nv1.00\n0\n0\n0\n0\n0\n0\n" + block("Arm");
    std::istringstream input(text);
    EXPECT_TRUE(model.readModelStream(input, definition, false));
    EXPECT_EQ(bodyNamesOf(model), Lines{});
    EXPECT_EQ(model.includes.count(), 1);
    define({"Arm"});
    std::istringstream again(text);
    EXPECT_TRUE(model.readModelStream(again, definition, true));
    EXPECT_EQ(bodyNamesOf(model), Lines{"Arm"});
    EXPECT_EQ(model.includes.count(), 0);
}

TEST_F(MergeModelIncludes, TheModelsOwnDefinitionServesWithoutAnother) {
    write("Arm");
    write("Figure", block("Arm"));
    define({"Figure", "Arm"});
    model.problemDef = &definition;
    EXPECT_TRUE(model.readModelFile(path("Figure").c_str(), true));
    EXPECT_EQ(bodyNamesOf(model), (Lines{"Figure", "Arm"}));
    EXPECT_EQ(model.problemDef, &definition);
}

// --- Failures ------------------------------------------------------------------------------------

TEST_F(MergeModelIncludes, AMissingFileIsReportedAndLeavesTheTargetAsItWas) {
    write("Arm");
    define({"Arm_l", "Leg_r"});
    fill(model, firstRecords);
    model.cameraCount = 2;
    model.addGlobalDirectionMarker({1, {}});
    addInclude("Arm", "_l");
    addInclude("Leg", "_r");
    StatusChain chain = missing("Leg");
    chain.insert(chain.begin(), notIncluded);
    expectFailure(chain);
    write("Leg");
    EXPECT_TRUE(model.mergeModelIncludes(definition));
    EXPECT_EQ(bodyNamesOf(model), (Lines{"Hips", "Leg", "Arm_l", "Leg_r"}));
}

TEST_F(MergeModelIncludes, EachLevelOfFilesAddsItsLineToTheChain) {
    write("Hand", block("Finger"));
    write("Arm", block("Hand"));
    write("Figure", block("Arm"));
    define({"Figure", "Arm", "Hand", "Finger"});
    StatusChain chain = missing("Finger");
    chain.insert(chain.begin(), {notIncluded, notIncluded, notIncluded});
    // The files themselves were read before their includes, so no line says that they were not.
    EXPECT_EQ(chainAfterReading("Figure"), chain);
    EXPECT_EQ(bodyNamesOf(model), Lines{"Figure"});
    EXPECT_EQ(model.includes.count(), 1);
    expectFailure(chain);
}

TEST_F(MergeModelIncludes, AFileThatCannotBeReadIsReportedWithItsCause) {
    define({"Arm"});
    addInclude("Arm", "_l");
    const StatusLine notRead = error("Unable to read '" + path("Arm") + "'.");
    support::writeBytes(path("Arm"), "Kym Model File\nv1.00\n0\nmany\n");
    expectFailure({notIncluded, notRead, error("Unable to read number of bodies.")});
    write("Arm");
    expectFailure({notIncluded, notRead, noSuchBody("Arm_l")});
    define({"Arm_l"});
    write("Arm", "INCLUDE {\nBODY_ID_OFFSET: 1\n}\n");
    expectFailure({notIncluded, notRead, error("Unable to read INCLUDE section."),
                   error("Unexpected key word \"BODY_ID_OFFSET\".")});
}

TEST_F(MergeModelIncludes, ACancelWhileAFileIsReadLeavesTheTargetAsItWas) {
    write("Arm");
    define({"Arm"});
    support::writeBytes(path("Crowd"), "Kym Model File\nv1.00\n0\n0\n4\n1 0 0 0\n2 0 0 0\n3 0 0 0\n4 0 0 0\n"
                                       "0\n0\n0\n");
    fill(model, firstRecords);
    addInclude("Arm");
    addInclude("Crowd");
    const test::CancelAtAsking hook(1);
    expectFailure({notIncluded, error("Unable to read '" + path("Crowd") + "'."),
                   test::warning("Read aborted."), error("Canceled.")});
}

TEST_F(MergeModelIncludes, NothingIsMergedUnderAnErrorThatStandsAlready) {
    write("Arm");
    define({"Arm"});
    addInclude("Arm");
    pushError("earlier");
    expectFailure({notIncluded, error("Unable to read '" + path("Arm") + "'."), error("earlier")});
    pushWarning("earlier");
    EXPECT_TRUE(model.mergeModelIncludes(definition));
    EXPECT_EQ(takeChain(), StatusChain{test::warning("earlier")});
    EXPECT_EQ(bodyNamesOf(model), Lines{"Arm"});
}

// --- Files that include themselves ---------------------------------------------------------------

TEST_F(MergeModelIncludes, AFileThatIncludesItselfIsRefused) {
    write("Arm", block("Arm"));
    define({"Arm"});
    EXPECT_EQ(chainAfterReading("Arm"), (StatusChain{notIncluded, includesItself(path("Arm"))}));
    EXPECT_EQ(bodyNamesOf(model), Lines{"Arm"});
    // A model in memory has no file, so that the file is met a second time one level further down.
    expectFailure({notIncluded, notIncluded, includesItself(path("Arm"))});
}

TEST_F(MergeModelIncludes, ACircleOfFilesIsRefusedWhereItCloses) {
    write("Arm", block("Leg") + block("Hand"));
    write("Hand", block("Leg") + block("Arm"));
    write("Leg");
    define({"Arm", "Hand", "Leg"});
    EXPECT_EQ(chainAfterReading("Arm"), (StatusChain{notIncluded, notIncluded, includesItself(path("Arm"))}));
    // Nothing of the failed reading stays: once the circle is open, the same files are read.
    write("Hand", block("Leg"));
    EXPECT_EQ(namesAfterReading("Arm"), (Lines{"Arm", "Leg", "Hand", "Leg"}));
}

TEST_F(MergeModelIncludes, ALinkToAFileIsTheFileItself) {
    write("Arm", block("Alias"));
    define({"Arm"});
    std::filesystem::create_symlink(path("Arm"), path("Alias"));
    EXPECT_EQ(chainAfterReading("Arm"), (StatusChain{notIncluded, includesItself(path("Alias"))}));
}

// --- Sizes ---------------------------------------------------------------------------------------

TEST_F(MergeModelIncludes, FilesMayLieDeeperInEachOtherThanFilesMayBeOpen) {
    const int depth = 200;
    for (int level = 0; level < depth; ++level) {
        write("f" + std::to_string(level), block("f" + std::to_string(level + 1)));
        define({"f" + std::to_string(level)});
    }
    write("f200");
    define({"f200"});
    const support::ChildResult result = support::runFunction([this] {
        const rlimit few = {32, 32};
        setrlimit(RLIMIT_NOFILE, &few);
        std::fputs(model.readModelFile(path("f0").c_str(), definition, true) ? "read" : "failed", stdout);
        std::printf(" %d bodies, the last marker %d", model.bodies.count(),
                    model.artificialMarkers[model.artificialMarkers.count() - 1]->id);
        std::fflush(stdout);
    });
    EXPECT_EQ(result.out, "read 201 bodies, the last marker 1005");
    EXPECT_EQ(result.outcome, "0");
}

TEST_F(MergeModelIncludes, AThousandIncludesStandOneBehindTheOther) {
    write("Walker");
    std::string section;
    for (int i = 1; i <= 1000; ++i) {
        section += block("Walker", std::to_string(i));
        define({"Walker" + std::to_string(i)});
    }
    define({"Crowd"});
    write("Crowd", section);
    EXPECT_EQ(chainAfterReading("Crowd"), StatusChain{});
    ASSERT_EQ(model.bodies.count(), 1001);
    for (int i = 1; i <= 1000; ++i) {
        ASSERT_EQ(model.bodies[i]->name.view(), "Walker" + std::to_string(i));
        ASSERT_EQ(model.realMarkers[i]->id, 1 + i);
        ASSERT_EQ(model.fixMarkers[i]->id, 1002 + i);
        ASSERT_EQ(model.doubleMarkers[i]->id, 2003 + i);
        ASSERT_EQ(model.artificialMarkers[2 * i]->id, 3004 + 2 * i);
        ASSERT_EQ(model.artificialMarkers[2 * i + 1]->id, 3005 + 2 * i);
    }
}

} // namespace
} // namespace quillon
