#include "quillon/problem/ProblemDefMerge.h"

#include "quillon/problem/LqProblemDefData.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/problem/ProblemDefText.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <filesystem>

namespace quillon::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

// --- Two definitions -----------------------------------------------------------------------------

/// Two variables, two bodies with mappings of all forms and both type variables, and a marker of each kind,
/// with ids that no order explains.
void fillArm(LqProblemDefData& data) {
    addSysVar(data, 1, "Swing");
    addSysVar(data, 2, "Bend");
    LqPDDBodyMap& upper = data.addBody("Upper", "ReferenceSystemZero", 1);
    upper.setMapping(0, 1);
    upper.setMapping(1, constantMapping(0.5F));
    upper.setMapping(2, combination(0.25F, {{2, 2.0F}, {1, -1.0F}}));
    LqPDDBodyMap& lower = data.addBody("Lower", "Upper", 2);
    lower.type = 3;
    lower.typeOneVar = 2;
    lower.typeTwoVar = 1;
    data.addRealMarker(LqPDDRealMarker(7, 3, 0.5F, "Upper"));
    data.addRealMarker(LqPDDRealMarker(9, 0, 1.0F, "ReferenceSystemZero"));
    addFixMarker(data, LqPDDFixMarker(4, 2.0F, "Lower"));
    addDoubleMarker(data, LqPDDDoubleMarker(2, 7, 3.0F, "Lower"));
    data.addArtificialMarker(LqPDDArtificialMarker(12, 11, 4.0F, "Upper", "Lower"));
}

/// One variable, one body and one fix marker.
void fillStage(LqProblemDefData& data) {
    addSysVar(data, 1, "Lift");
    data.addBody("Stage", "ReferenceSystemZero", 5).setMapping(2, 1);
    addFixMarker(data, LqPDDFixMarker(1, 1.5F, "Stage"));
}

const std::string order = ", order 1 2 3 6 5 4, mappings ";

TEST(MergeDefinitions, PutsTheSecondBehindTheFirstWithItsSuffixAndOffsets) {
    LqProblemDefData stage;
    fillStage(stage);
    LqProblemDefData arm;
    fillArm(arm);
    LqProblemDefData result;
    mergeDefinitions(result, stage, arm, "_a", "_b", 100, -1);
    EXPECT_EQ(linesOf(result),
              (Lines{"variable 1 Lift_a", "variable 2 Swing_b", "variable 3 Bend_b",
                     "body Stage_a < ReferenceSystemZero, number 5, type 0, type variables 0 0" + order +
                         "0 0 1 0 0 0",
                     "body Upper_b < ReferenceSystemZero, number 101, type 0, type variables 0 0" + order +
                         "2 -1(0.5) -3(0.25 + 2 x3 + -1 x2) 0 0 0",
                     "body Lower_b < Upper_b, number 102, type 3, type variables 3 2" + order + "0 0 0 0 0 0",
                     "real 1 weight 0.5 on Upper_b, prediction 3",
                     "real 2 weight 1 on ReferenceSystemZero_b, prediction 0", "fix 3 weight 1.5 on Stage_a",
                     "fix 4 weight 2 on Lower_b", "double 5 weight 3 on Lower_b, second id 7",
                     "pair 6 weight 4 on Upper_b, 7 on Lower_b"}));
}

TEST(MergeDefinitions, AddsAnOffsetThatIsGivenAlsoWhereIdsCollide) {
    LqProblemDefData arm;
    fillArm(arm);
    LqProblemDefData result;
    mergeDefinitions(result, arm, arm, "", "", -1, 0);
    EXPECT_EQ(idsOf(result.sysVars), (std::vector<int>{1, 2, 1, 2}));
    EXPECT_EQ(result.bodies[2]->graphicsNumber, 0);
    EXPECT_EQ(textOf(result.bodies[2]->mappings[2]), "-3(0.25 + 2 x2 + -1 x1)");
    EXPECT_EQ(namesOf(result.bodies), (Lines{"Upper", "Lower", "Upper", "Lower"}));
    mergeDefinitions(result, arm, arm, "", "", 0, 1000);
    EXPECT_EQ(idsOf(result.sysVars), (std::vector<int>{1, 2, 1001, 1002}));
    EXPECT_EQ(textOf(result.bodies[2]->mappings[2]), "-3(0.25 + 2 x1002 + -1 x1001)");
    EXPECT_EQ(textOf(result.bodies[2]->mappings[1]), "-1(0.5)");
    EXPECT_EQ(textOf(result.bodies[2]->mappings[3]), "0");
    EXPECT_EQ(result.bodies[3]->typeOneVar, 1002);
    EXPECT_EQ(result.bodies[2]->typeOneVar, 0);
    mergeDefinitions(result, arm, arm, "", "", 0, -77);
    EXPECT_EQ(idsOf(result.sysVars), (std::vector<int>{1, 2, 3, 4}));
}

TEST(MergeDefinitions, CountsTheVariablesOfTheFirstAndNotTheirIds) {
    LqProblemDefData first;
    addSysVar(first, 50, "Lift");
    LqProblemDefData second;
    addSysVar(second, 1, "Bend");
    LqProblemDefData result;
    mergeDefinitions(result, first, second, "", "", 0, -1);
    EXPECT_EQ(idsOf(result.sysVars), (std::vector<int>{50, 2}));
}

TEST(MergeDefinitions, KeepsTypeAndOrderOfBodiesAndLeavesTheSourcesAsTheyAre) {
    LqProblemDefData first;
    fillArm(first);
    first.addInclude(LqPDDInclude("leg.prb"));
    const int newOrder[] = {6, 6, 4, 1, 2, 3};
    std::copy(std::begin(newOrder), std::end(newOrder), first.bodies[1]->transformOrder.begin());
    const Lines before = linesOf(first);
    LqProblemDefData result;
    mergeDefinitions(result, first, first, "_1", "_2", 0, -1);
    EXPECT_EQ(textOf(*result.bodies[3]), "Lower_2 < Upper_2, number 2, type 3, type variables 4 3, "
                                         "order 6 6 4 1 2 3, mappings 0 0 0 0 0 0");
    EXPECT_EQ(linesOf(first), before);
    EXPECT_EQ(result.includes.count(), 0);
}

TEST(MergeDefinitions, TheResultMayBeOneOfTheTwo) {
    LqProblemDefData stage;
    fillStage(stage);
    LqProblemDefData arm;
    fillArm(arm);
    LqProblemDefData expected;
    mergeDefinitions(expected, stage, arm, "_a", "_b", 1, -1);
    LqProblemDefData target(stage);
    target.addInclude(LqPDDInclude("arm.prb", "_b"));
    const LqPDDInclude& include = *static_cast<LqPDDInclude*>(target.includes[0]);
    mergeDefinitions(target, target, arm, "_a", include.bodyNameSuffix, 1, -1);
    EXPECT_EQ(linesOf(target), linesOf(expected));
    target = arm;
    mergeDefinitions(target, stage, target, "_a", "_b", 1, -1);
    EXPECT_EQ(linesOf(target), linesOf(expected));
    mergeDefinitions(target, arm, LqProblemDefData(), "", "", 0, -1);
    mergeDefinitions(target, target, target, "", "", 0, -1);
    EXPECT_EQ(namesOf(target.bodies), (Lines{"Upper", "Lower", "Upper", "Lower"}));
}

TEST(MergeDefinitions, MarkersOnTheGlobalFrameAreRefusedOnceTheyHaveASuffix) {
    LqProblemDefData figure;
    figure.addBody("Hips", "ReferenceSystemZero", 1);
    figure.addRealMarker(LqPDDRealMarker(1, 0, 1.0F, "ReferenceSystemZero"));
    figure.addArtificialMarker(LqPDDArtificialMarker(2, 3, 1.0F, "Hips", "ReferenceSystemZero"));
    const auto checkedBehindMerge = [&figure](const char* suffix) {
        LqProblemDefData result;
        mergeDefinitions(result, LqProblemDefData(), figure, "", suffix, 0, -1);
        LmStatus status;
        result.checkProblemDef(status);
        return chainOf(status);
    };
    EXPECT_EQ(checkedBehindMerge(""), StatusChain{});
    EXPECT_EQ(
        checkedBehindMerge("_b"),
        (StatusChain{error("Real marker 1 references a body (ReferenceSystemZero_b) that does not exist "
                           "in the problem definition.")}));
    figure.removeRealMarker(1);
    EXPECT_EQ(
        checkedBehindMerge("_b"),
        (StatusChain{error("Artificial marker (1) references a body (Hips_b,ReferenceSystemZero_b) that "
                           "does not exist in the problem definition.")}));
}

TEST(MergeDefinitions, NumbersGlobalDirectionMarkersBehindTheRealOnes) {
    LqProblemDefData first;
    fillArm(first);
    first.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(10, 5.0F, "Upper"));
    LqProblemDefData second;
    fillStage(second);
    second.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(1, 6.0F, "Stage"));
    LqProblemDefData result;
    mergeDefinitions(result, first, second, "_a", "_b", 0, -1);
    Lines markers = linesOf(result);
    markers.erase(markers.begin(), markers.begin() + 6);
    EXPECT_EQ(
        markers,
        (Lines{"real 1 weight 0.5 on Upper_a, prediction 3",
               "real 2 weight 1 on ReferenceSystemZero_a, prediction 0", "global 3 weight 5 on Upper_a",
               "global 4 weight 6 on Stage_b", "fix 5 weight 2 on Lower_a", "fix 6 weight 1.5 on Stage_b",
               "double 7 weight 3 on Lower_a, second id 7", "pair 8 weight 4 on Upper_a, 9 on Lower_a"}));
}

TEST(MergeDefinitions, TakesEachRecordOnceBehindTheRemovalOfABody) {
    LqProblemDefData first;
    fillArm(first);
    first.addBody("Loose", "ReferenceSystemZero", 3);
    addFixMarker(first, LqPDDFixMarker(5, 1.0F, "Loose"));
    first.removeBody("Upper");
    EXPECT_EQ(first.bodies.count(), 3);
    LqProblemDefData result;
    mergeDefinitions(result, first, first, "_1", "_2", 0, -1);
    EXPECT_EQ(namesOf(result.bodies), (Lines{"Loose_1", "Loose_2"}));
    EXPECT_EQ(result.bodies.count(), 2);
    EXPECT_EQ(idsOf(result.realMarkers), (std::vector<int>{1, 2}));
    EXPECT_EQ(idsOf(result.fixMarkers), (std::vector<int>{3, 4}));
}

TEST(MergeDefinitions, IdsThatLeaveTheirRangeWrapAround) {
    LqProblemDefData second;
    addSysVar(second, 2147483647, "Last");
    second.addBody("Body", "ReferenceSystemZero", 2147483647).setMapping(0, 2147483647);
    LqProblemDefData result;
    mergeDefinitions(result, LqProblemDefData(), second, "", "", 1, 1);
    EXPECT_EQ(result.sysVars[0]->id, -2147483648);
    EXPECT_EQ(result.bodies[0]->graphicsNumber, -2147483648);
    EXPECT_EQ(result.bodies[0]->mappings[0].id, -2147483648);
}

// --- Included files ------------------------------------------------------------------------------

const StatusLine notIncluded = error("Unable to include sub-problem definition data.");

StatusLine notRead(const std::string& path) {
    return error("Unable to read '" + path + "'.");
}

StatusLine includesItself(const std::string& path) {
    return error("\"" + path + "\" includes itself.");
}

class MergeIncludes : public testing::Test {
protected:
    std::string path(const std::string& name) const { return scratch / name; }

    std::string block(const std::string& name, const std::string& lines = "") const {
        return "INCLUDE {\nFILE_NAME: " + path(name) + "\n" + lines + "}\n";
    }

    /// Writes a definition of one variable, one body and one marker, all of this name, and the given section.
    void write(const std::string& name, const std::string& section = "") const {
        support::writeBytes(path(name), "Kym Problem Definition File\nv1.00\n1\n1 " + name + "\n1\n " + name +
                                            "\n ReferenceSystemZero\n1 0\n1 2 3 4 5 6\n1\n0\n0\n0\n0\n0\n" +
                                            "1\n5 0 1    " + name + "\n0\n0\n0\n" + section);
    }

    /// Reads the file with its includes merged and gives the chain.
    StatusChain chainAfterReading(const std::string& name) {
        const bool whole = data.readProblemDefFile(path(name).c_str(), true);
        EXPECT_EQ(whole, !errorStands());
        return takeChain();
    }

    Lines namesAfterReading(const std::string& name) {
        EXPECT_EQ(chainAfterReading(name), StatusChain{});
        return namesOf(data.bodies);
    }

    /// Expects a merge of `data` to fail with this chain, and to leave everything as it was.
    void expectFailure(const StatusChain& chain) {
        const Lines before = linesOf(data);
        EXPECT_FALSE(data.mergeIncludes());
        EXPECT_EQ(takeChain(), chain);
        EXPECT_EQ(linesOf(data), before);
    }

    CleanStatus clean;
    support::ScratchDirectory scratch;
    LqProblemDefData data;
};

TEST_F(MergeIncludes, DoesNothingWithoutIncludes) {
    fillArm(data);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(10, 5.0F, "Upper"));
    const Lines before = linesOf(data);
    EXPECT_TRUE(data.mergeIncludes());
    pushError("earlier");
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_EQ(takeChain(), StatusChain{error("earlier")});
    EXPECT_EQ(linesOf(data), before);
}

TEST_F(MergeIncludes, EachFollowsTheVariablesOfAllInFrontOfIt) {
    write("Arm");
    write("Leg");
    write("Figure", block("Arm", "BODY_NAME_SUFFIX: _l\nBODY_ID_OFFSET: 10\n") + block("Leg") +
                        block("Arm", "BODY_NAME_SUFFIX: _r\nBODY_ID_OFFSET: 20\nSYS_VAR_ID_OFFSET: 0\n") +
                        block("Leg", "BODY_NAME_SUFFIX: 2\nSYS_VAR_ID_OFFSET: -2\n"));
    EXPECT_EQ(chainAfterReading("Figure"), StatusChain{});
    const std::string end = ", type 0, type variables 0 0, order 1 2 3 4 5 6, mappings ";
    EXPECT_EQ(linesOf(data),
              (Lines{"variable 1 Figure", "variable 2 Arm_l", "variable 3 Leg", "variable 1 Arm_r",
                     "variable 5 Leg2", "body Figure < ReferenceSystemZero, number 1" + end + "1 0 0 0 0 0",
                     "body Arm_l < ReferenceSystemZero, number 11" + end + "2 0 0 0 0 0",
                     "body Leg < ReferenceSystemZero, number 1" + end + "3 0 0 0 0 0",
                     "body Arm_r < ReferenceSystemZero, number 21" + end + "1 0 0 0 0 0",
                     "body Leg2 < ReferenceSystemZero, number 1" + end + "5 0 0 0 0 0",
                     "real 1 weight 1 on Figure, prediction 0", "real 2 weight 1 on Arm_l, prediction 0",
                     "real 3 weight 1 on Leg, prediction 0", "real 4 weight 1 on Arm_r, prediction 0",
                     "real 5 weight 1 on Leg2, prediction 0"}));
}

TEST_F(MergeIncludes, GivesWhatDefinitionsMergedOneByOneWouldGive) {
    write("Stage", block("Leg", "BODY_NAME_SUFFIX: _n\n"));
    write("Leg");
    fillArm(data);
    LqProblemDefData expected(data);
    LqProblemDefData stage;
    LqProblemDefData leg;
    EXPECT_TRUE(stage.readProblemDefFile(path("Stage").c_str(), true));
    EXPECT_TRUE(leg.readProblemDefFile(path("Leg").c_str(), true));
    mergeDefinitions(expected, expected, stage, "", "_1", 4, 6);
    mergeDefinitions(expected, expected, leg, "", "_2", -3, -1);
    data.addInclude(LqPDDInclude(path("Stage").c_str(), "_1", 4, 6));
    data.addInclude(LqPDDInclude(path("Leg").c_str(), "_2", -3, -1));
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_TRUE(equals(data, expected));
    EXPECT_EQ(linesOf(data), linesOf(expected));
}

TEST_F(MergeIncludes, IncludesOfIncludedFilesAreMergedFirstAndGetBothSuffixes) {
    write("Finger");
    write("Hand", block("Finger", "BODY_NAME_SUFFIX: 1\n") + block("Finger", "BODY_NAME_SUFFIX: 2\n"));
    write("Arm", block("Hand", "BODY_NAME_SUFFIX: h\nBODY_ID_OFFSET: 10\n"));
    write("Figure", block("Arm", "BODY_NAME_SUFFIX: _l\nBODY_ID_OFFSET: 100\n") +
                        block("Arm", "BODY_NAME_SUFFIX: _r\nBODY_ID_OFFSET: 200\n"));
    EXPECT_EQ(namesAfterReading("Figure"), (Lines{"Figure", "Arm_l", "Handh_l", "Finger1h_l", "Finger2h_l",
                                                  "Arm_r", "Handh_r", "Finger1h_r", "Finger2h_r"}));
    EXPECT_EQ(idsOf(data.sysVars), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(idsOf(data.realMarkers), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    std::vector<int> numbers;
    std::vector<int> references;
    for (const LqPDDBodyMap* body : data.bodies) {
        numbers.push_back(body->graphicsNumber);
        references.push_back(body->mappings[0].id);
    }
    EXPECT_EQ(numbers, (std::vector<int>{1, 101, 111, 111, 111, 201, 211, 211, 211}));
    EXPECT_EQ(references, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(data.includes.count(), 0);
}

TEST_F(MergeIncludes, AStreamIsMergedWhenThatIsAskedFor) {
    write("Arm");
    for (const bool withIncludes : {false, true}) {
        std::istringstream input("Kym Problem Definition File\nv1.00\n0\n0\n0\n0\n0\n0\n" + block("Arm"));
        EXPECT_TRUE(data.readProblemDefStream(input, withIncludes));
        EXPECT_EQ(data.bodies.count(), withIncludes ? 1 : 0);
        EXPECT_EQ(data.includes.count(), withIncludes ? 0 : 1);
    }
    std::istringstream input("Kym Problem Definition File\nv1.00\n0\n0\n0\n0\n0\n0\n" + block("Leg"));
    EXPECT_FALSE(data.readProblemDefStream(input, true));
    EXPECT_EQ(takeChain(), (StatusChain{notIncluded, error("Unable to open \"" + path("Leg") + "\"."),
                                        error("File does not exist.")}));
    EXPECT_TRUE(data.isIncludesOnly());
}

TEST_F(MergeIncludes, GlobalDirectionMarkersOfTheTargetAreLost) {
    write("Arm");
    fillStage(data);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(1, 5.0F, "Stage"));
    data.addInclude(LqPDDInclude(path("Arm").c_str()));
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_EQ(data.globalDirectionMarkers.count(), 0);
    EXPECT_EQ(idsOf(data.realMarkers), std::vector<int>{1});
    EXPECT_EQ(idsOf(data.fixMarkers), std::vector<int>{2});
}

TEST_F(MergeIncludes, ATargetThatABodyWasRemovedFromGivesItsOtherRecordsOnce) {
    write("Arm");
    fillStage(data);
    data.addBody("Loose", "ReferenceSystemZero", 3);
    addFixMarker(data, LqPDDFixMarker(7, 1.0F, "Loose"));
    data.removeBody("Stage");
    data.addInclude(LqPDDInclude(path("Arm").c_str()));
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_EQ(namesOf(data.bodies), (Lines{"Loose", "Arm"}));
    EXPECT_EQ(data.bodies.count(), 2);
    EXPECT_EQ(idsOf(data.fixMarkers), std::vector<int>{2});
}

TEST_F(MergeIncludes, AnIncludedFileMayLieCompressed) {
    write("Arm");
    write("Figure", block("Arm"));
    const support::ChildResult packed = support::runProgram({"/bin/sh", "-c", "gzip '" + path("Arm") + "'"});
    ASSERT_EQ(packed.outcome, "0") << packed.err;
    EXPECT_EQ(namesAfterReading("Figure"), (Lines{"Figure", "Arm"}));
}

// --- Failures ------------------------------------------------------------------------------------

TEST_F(MergeIncludes, AMissingFileIsReportedAndLeavesTheTargetAsItWas) {
    write("Arm");
    fillArm(data);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(10, 5.0F, "Upper"));
    data.addInclude(LqPDDInclude(path("Arm").c_str(), "_l", 1, 2));
    data.addInclude(LqPDDInclude(path("Leg").c_str(), "_r", 3, 4));
    expectFailure(
        {notIncluded, error("Unable to open \"" + path("Leg") + "\"."), error("File does not exist.")});
    write("Leg");
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_EQ(namesOf(data.bodies), (Lines{"Upper", "Lower", "Arm_l", "Leg_r"}));
}

TEST_F(MergeIncludes, ARelativeNameIsNotLookedForBesideTheFileThatHoldsIt) {
    write("Arm");
    write("Figure", "INCLUDE {\nFILE_NAME: Arm\n}\n");
    EXPECT_EQ(chainAfterReading("Figure"),
              (StatusChain{notRead(path("Figure")), notIncluded, error("Unable to open \"Arm\"."),
                           error("File does not exist.")}));
}

TEST_F(MergeIncludes, EachLevelOfFilesAddsItsLineToTheChain) {
    write("Hand", block("Finger"));
    write("Arm", block("Hand"));
    write("Figure", block("Arm"));
    const StatusChain cause = {notIncluded, error("Unable to open \"" + path("Finger") + "\"."),
                               error("File does not exist.")};
    StatusChain chain = {notRead(path("Figure")), notIncluded, notRead(path("Arm")), notIncluded,
                         notRead(path("Hand"))};
    chain.insert(chain.end(), cause.begin(), cause.end());
    EXPECT_EQ(chainAfterReading("Figure"), chain);
    // The file that the failure reached keeps its own records and its includes.
    EXPECT_EQ(namesOf(data.bodies), Lines{"Figure"});
    EXPECT_EQ(data.includes.count(), 1);
    chain.erase(chain.begin());
    expectFailure(chain);
}

TEST_F(MergeIncludes, AFileThatCannotBeReadIsReportedWithItsCause) {
    data.addInclude(LqPDDInclude(path("Arm").c_str()));
    support::writeBytes(path("Arm"), "Kym Problem Definition File\nv1.00\n0\n");
    expectFailure({notIncluded, notRead(path("Arm")), error("Unable to read number of bodies.")});
    write("Arm", "INCLUDE {\n}\n");
    expectFailure({notIncluded, notRead(path("Arm")), error("Unable to read INCLUDE section."),
                   error("No FILE_NAME specified.")});
    const std::string directory = scratch.path().string();
    data.clearIncludes();
    data.addInclude(LqPDDInclude(directory.c_str()));
    expectFailure({notIncluded, error(directory + " is a directory.")});
}

TEST_F(MergeIncludes, ACancelWhileAFileIsReadLeavesTheTargetAsItWas) {
    write("Arm");
    support::writeBytes(path("Crowd"),
                        "Kym Problem Definition File\nv1.00\n4\n1 a\n2 b\n3 c\n4 d\n0\n0\n0\n0\n0\n");
    fillStage(data);
    data.addInclude(LqPDDInclude(path("Arm").c_str()));
    data.addInclude(LqPDDInclude(path("Crowd").c_str()));
    const CancelAtAsking hook(1);
    expectFailure({notIncluded, notRead(path("Crowd")), warning("Read aborted."), error("Canceled.")});
}

TEST_F(MergeIncludes, NothingIsMergedUnderAnErrorThatStandsAlready) {
    write("Arm");
    data.addInclude(LqPDDInclude(path("Arm").c_str()));
    pushError("earlier");
    expectFailure({notIncluded, error("earlier")});
    pushWarning("earlier");
    EXPECT_TRUE(data.mergeIncludes());
    EXPECT_EQ(takeChain(), StatusChain{warning("earlier")});
}

// --- Files that include themselves ---------------------------------------------------------------

TEST_F(MergeIncludes, AFileThatIncludesItselfIsRefused) {
    write("Arm", block("Arm"));
    EXPECT_EQ(chainAfterReading("Arm"),
              (StatusChain{notRead(path("Arm")), notIncluded, includesItself(path("Arm"))}));
    EXPECT_EQ(namesOf(data.bodies), Lines{"Arm"});
    // A definition in memory has no file, so that the file is met a second time one level further down.
    expectFailure({notIncluded, notRead(path("Arm")), notIncluded, includesItself(path("Arm"))});
    EXPECT_TRUE(data.readProblemDefFile(path("Arm").c_str(), false));
    EXPECT_EQ(data.includes.count(), 1);
}

TEST_F(MergeIncludes, ACircleOfFilesIsRefusedWhereItCloses) {
    write("Arm", block("Leg") + block("Hand"));
    write("Hand", block("Finger"));
    write("Finger", block("Leg") + block("Arm"));
    write("Leg");
    EXPECT_EQ(chainAfterReading("Arm"),
              (StatusChain{notRead(path("Arm")), notIncluded, notRead(path("Hand")), notIncluded,
                           notRead(path("Finger")), notIncluded, includesItself(path("Arm"))}));
    EXPECT_EQ(chainAfterReading("Hand"),
              (StatusChain{notRead(path("Hand")), notIncluded, notRead(path("Finger")), notIncluded,
                           notRead(path("Arm")), notIncluded, includesItself(path("Hand"))}));
    // Nothing of the failed reading stays: once the circle is open, the same files are read.
    write("Finger", block("Leg"));
    EXPECT_EQ(namesAfterReading("Arm"), (Lines{"Arm", "Leg", "Hand", "Finger", "Leg"}));
}

TEST_F(MergeIncludes, ALinkToAFileIsTheFileItself) {
    write("Arm", block("Alias"));
    std::filesystem::create_symlink(path("Arm"), path("Alias"));
    const StatusChain chain = {notRead(path("Arm")), notIncluded, includesItself(path("Alias"))};
    EXPECT_EQ(chainAfterReading("Arm"), chain);
    std::filesystem::remove(path("Alias"));
    std::filesystem::create_hard_link(path("Arm"), path("Alias"));
    EXPECT_EQ(chainAfterReading("Arm"), chain);
}

TEST_F(MergeIncludes, OneFileMayStandBesideItselfAndBelowItsOwnNeighbour) {
    write("Leg");
    write("Arm", block("Leg"));
    write("Figure", block("Leg") + block("Arm") + block("Leg"));
    EXPECT_EQ(namesAfterReading("Figure"), (Lines{"Figure", "Leg", "Arm", "Leg", "Leg"}));
}

// --- Sizes ---------------------------------------------------------------------------------------

TEST_F(MergeIncludes, FilesMayLieDeeperInEachOtherThanFilesMayBeOpen) {
    const int depth = 200;
    for (int level = 0; level < depth; ++level) {
        write("f" + std::to_string(level), block("f" + std::to_string(level + 1), "BODY_NAME_SUFFIX: x\n"));
    }
    write("f" + std::to_string(depth));
    const support::ChildResult result = support::runFunction([this] {
        const rlimit few = {32, 32};
        setrlimit(RLIMIT_NOFILE, &few);
        std::fputs(data.readProblemDefFile(path("f0").c_str(), true) ? "read" : "failed", stdout);
        std::printf(" %d bodies, the last with %d letters", data.bodies.count(),
                    data.bodies[data.bodies.count() - 1]->name.length());
        std::fflush(stdout);
    });
    EXPECT_EQ(result.out, "read 201 bodies, the last with 204 letters");
    EXPECT_EQ(result.outcome, "0");
}

TEST_F(MergeIncludes, AThousandIncludesStandOneBehindTheOther) {
    write("Walker");
    std::string section;
    for (int i = 1; i <= 1000; ++i) {
        section += block("Walker", "BODY_NAME_SUFFIX: " + std::to_string(i) + "\n");
    }
    write("Crowd", section);
    EXPECT_EQ(chainAfterReading("Crowd"), StatusChain{});
    ASSERT_EQ(data.bodies.count(), 1001);
    for (int i = 1; i <= 1000; ++i) {
        const LqPDDBodyMap& body = *data.bodies[i];
        ASSERT_EQ(body.name.view(), "Walker" + std::to_string(i));
        ASSERT_EQ(body.mappings[0].id, i + 1);
        ASSERT_EQ(data.realMarkers[i]->id, i + 1);
        ASSERT_EQ(data.realMarkers[i]->bodyName, body.name);
    }
}

} // namespace
} // namespace quillon::test
