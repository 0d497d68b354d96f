#include "tests/examples/ExamplePrograms.h"
#include "tests/support/EnvironmentValue.h"

namespace quillon::test {
namespace {

/// The lines of the pendulum's files, which are "ok" unless something else is said of them.
struct Lines {
    std::string definition = "ok";
    std::string model = "ok";
    std::string limits = "ok";
    std::string scaleDef = "ok";
};

std::string linesOf(const Lines& lines) {
    return "pendulum.zvx: ok\npendulum.probdef: " + lines.definition + "\npendulum.model: " + lines.model +
           "\npendulum.limits: " + lines.limits + "\npendulum.scaledef: " + lines.scaleDef + "\n";
}

class Check : public testing::Test {
protected:
    Check() { copyFamily("pendulum", scratch); }

    ProgramRun check(const std::vector<std::string>& arguments) const {
        std::vector<std::string> command = {"check"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return runExample(command, scratch);
    }

    support::ScratchDirectory scratch;
};

TEST_F(Check, PassesTheExamples) {
    EXPECT_EQ(check({"pendulum.zvx"}), (ProgramRun{"0", linesOf({}), ""}));
    copyFamily("crowd", scratch);
    const EnvironmentValue directory("DRENK_DATA_DIR", ".");
    const std::string scaleDef = "./crowd.scaledef: ok\n";
    EXPECT_EQ(
        check({"crowd.zvx"}),
        (ProgramRun{"0",
                    "crowd.zvx: ok\n./crowd.probdef: ok\n./crowd.model: ok\n./crowd.limits: ok\n" + scaleDef,
                    ""}));
    EXPECT_EQ(
        check({"flat.zvx"}),
        (ProgramRun{"0", "flat.zvx: ok\n./flat.probdef: ok\n./flat.model: ok\n./flat.limits: ok\n" + scaleDef,
                    ""}));
}

TEST_F(Check, PassesTheWalkerPlainAndCompressed) {
    for (const char* family : {"walker", "walker_compressed"}) {
        const support::ScratchDirectory folder;
        copyFamily(family, folder);
        EXPECT_EQ(runExample({"check", "walker.zvx", "walker.measured"}, folder),
                  (ProgramRun{"0",
                              "walker.zvx: ok\nwalker.probdef: ok\nwalker.model: ok\nwalker.limits: ok\n"
                              "walker.measured: ok\nwalker.scaledef: ok\n",
                              ""}));
    }
}

TEST_F(Check, TellsItsUse) {
    const ProgramRun usage{"1", "", "Usage: check PROBLEM.zvx [MEASURED]\n"};
    EXPECT_EQ(check({}), usage);
    EXPECT_EQ(check({"a", "b", "c"}), usage);
}

TEST_F(Check, FailsWithoutTheSpecification) {
    EXPECT_EQ(check({"missing.zvx"}),
              (ProgramRun{"1", "missing.zvx: failed\n",
                          printedError({"The check of \"missing.zvx\" failed.",
                                        "Unable to open \"missing.zvx\".", "File does not exist."})}));
}

TEST_F(Check, FailsWhenItsResultsCannotBeWritten) {
    EXPECT_EQ(runOnFullOutput({"check", "pendulum.zvx"}, scratch),
              (ProgramRun{"1", "", "Unable to write the results.\n"}));
}

// --- One defect ----------------------------------------------------------------------------------

struct Defect {
    const char* name;
    const char* file;
    const char* text;
    const char* replacement;
    Lines lines;
    std::vector<std::vector<std::string>> errors; ///< chains, each under the sentence that names the file

    friend std::ostream& operator<<(std::ostream& output, const Defect& defect) {
        return output << defect.name;
    }
};

const std::vector<Defect> defects = {
    {"ParentIsNoBody",
     "probdef",
     " Arm                 ReferenceSystemZero ",
     " Arm                 Nowhere             ",
     {.definition = "failed"},
     {{"The parent (Nowhere) of body 'Arm' does not exist."}}},
    {"MarkerIsOnNoBody",
     "probdef",
     "    1   0   1.000    Arm ",
     "    1   0   1.000    Leg ",
     {.definition = "failed"},
     {{"Real marker 1 references a body (Leg) that does not exist in the", "problem definition."},
      {"Marker 1 is on body Leg which does not exist."}}},
    {"BodyIsAboveItself",
     "probdef",
     " Arm                 ReferenceSystemZero ",
     " Arm                 Bob                 ",
     {.definition = "failed"},
     {{"Body Arm is above itself in the problem definition."}}},
    {"BodyIsItsOwnParent",
     "probdef",
     " Bob                 Arm ",
     " Bob                 Bob ",
     {.definition = "failed"},
     {{"Body Bob is above itself in the problem definition."}}},
    {"MarkersOfTheModelHaveAGap",
     "model",
     "\n  2   0   0   -0.1\n",
     "\n  7   0   0   -0.1\n",
     {.model = "failed"},
     {{"The markers are not consecutively numbered in the bodydef."}}},
    {"MarkerIsMissingInTheModel",
     "model",
     "2    ; # of real points\n  1   0.02   0   -0.75\n  2",
     "1    ; # of real points\n  1",
     {.model = "failed"},
     {{"The markers are not consecutively numbered in the bodydef."},
      {"The number of real markers in the problem definition and body", "definition do not match.",
       "The problem definition has 2 real markers, but the body definition has", "1."}}},
    {"ModelCannotBeRead",
     "model",
     "\n Arm\n",
     "\n Leg\n",
     {.model = "failed"},
     {{"Unable to read 'pendulum.model'.",
       "The base matrix for body 'Leg' is given, but there is no such body in", "the problem definition."}}},
    {"LimitsGoBeyondTheVariables",
     "limits",
     "  ID: 3\n",
     "  ID: 4\n",
     {.limits = "failed"},
     {{"There are limits for sysvar 4, but the last sysvar in the probdef is 3", ""}}},
    {"LimitsCannotBeRead",
     "limits",
     "  ID: 3\n",
     "  ID: three\n",
     {.limits = "failed"},
     {{"Unable to read limit data file \"pendulum.limits\".", "Unable to read limits for variable.",
       "Unable to read value for id.", "Invalid integer value."}}},
    {"LimitsWhileScalingLieTheWrongWayRound",
     "scaledef",
     "  \"Swing\"      -0.1    0.1\n",
     "  \"Swing\"      0.1    -0.1\n",
     {.scaleDef = "failed"},
     {{"Invalid limits for variable 1."}}},
    {"TemporaryMarkerDoesNotFollowTheRealOnes",
     "scaledef",
     "\n  3     0 0 ",
     "\n  4     0 0 ",
     {.scaleDef = "failed"},
     {{"The first temporary marker does not have the id behind REAL_COUNT."}}},
    {"TemporaryMarkersHaveAGap",
     "scaledef",
     "Arm/Bob  0.5\n",
     "Arm/Bob  0.5\n  5 0 0 0 Bob 1\n",
     {.scaleDef = "failed"},
     {{"The temporary markers are not consecutively numbered."}}},
};

class CheckOfADefect : public Check, public testing::WithParamInterface<Defect> {};

TEST_P(CheckOfADefect, FailsThatFileAloneAndSaysWhy) {
    const Defect& defect = GetParam();
    const std::string file = std::string("pendulum.") + defect.file;
    replaceIn(scratch / file, defect.text, defect.replacement);
    std::string errors;
    for (std::vector<std::string> chain : defect.errors) {
        chain.insert(chain.begin(), "The check of \"" + file + "\" failed.");
        errors += printedError(chain);
    }
    EXPECT_EQ(check({"pendulum.zvx"}), (ProgramRun{"1", linesOf(defect.lines), errors}));
}

INSTANTIATE_TEST_SUITE_P(Defects, CheckOfADefect, testing::ValuesIn(defects),
                         [](const auto& defect) { return defect.param.name; });

// --- Several files -------------------------------------------------------------------------------

TEST_F(Check, GoesOnToTheOtherFilesBehindAFailedOne) {
    replaceIn(scratch / "pendulum.probdef", "    3    Twist\n", "    4    Twist\n");
    replaceIn(scratch / "pendulum.model", "\n  3   0   0   0\n", "\n  4   0   0   0\n");
    const std::string errors =
        printedError({"The check of \"pendulum.probdef\" failed.",
                      "The system variables are not consecutively numbered in the problem", "definition."}) +
        printedError({"The check of \"pendulum.model\" failed.",
                      "The markers are not consecutively numbered in the bodydef."});
    EXPECT_EQ(check({"pendulum.zvx"}),
              (ProgramRun{"1", linesOf({.definition = "failed", .model = "failed"}), errors}));
}

TEST_F(Check, LeavesUncheckedWhatNeedsADefinitionThatCannotBeRead) {
    std::filesystem::remove(scratch / "pendulum.probdef");
    const std::string error = printedError({"The check of \"pendulum.probdef\" failed.",
                                            "Unable to open \"pendulum.probdef\".", "File does not exist."});
    EXPECT_EQ(check({"pendulum.zvx"}), (ProgramRun{"1",
                                                   linesOf({.definition = "failed",
                                                            .model = "not checked",
                                                            .limits = "not checked",
                                                            .scaleDef = "not checked"}),
                                                   error}));

    std::filesystem::remove(scratch / "pendulum.limits");
    const std::string limitsError =
        printedError({"The check of \"pendulum.limits\" failed.", "Unable to open \"pendulum.limits\".",
                      "File does not exist."});
    EXPECT_EQ(check({"pendulum.zvx"}), (ProgramRun{"1",
                                                   linesOf({.definition = "failed",
                                                            .model = "not checked",
                                                            .limits = "failed",
                                                            .scaleDef = "not checked"}),
                                                   error + limitsError}));
}

TEST_F(Check, SaysWhatTheSpecificationDoesNotName) {
    support::writeBytes(scratch / "part.zvx",
                        "Kym Problem Specification File\nv1.00\nPROBDEF: pendulum.probdef\nMatch: BodyID\n");
    EXPECT_EQ(check({"part.zvx"}),
              (ProgramRun{"0",
                          "part.zvx: ok\npendulum.probdef: ok\nUNSCALEDBODYDEF: not named\n"
                          "LIMITS: not named\nSCALEDEF: not named\n",
                          ""}));
    support::writeBytes(scratch / "part.zvx",
                        "Kym Problem Specification File\nv1.00\nUNSCALEDBODYDEF: pendulum.model\n");
    EXPECT_EQ(check({"part.zvx"}), (ProgramRun{"1",
                                               "part.zvx: ok\nPROBDEF: not named\n"
                                               "pendulum.model: not checked\nLIMITS: not named\n"
                                               "SCALEDEF: not named\n",
                                               ""}));
}

TEST_F(Check, PassesAFileWithAWarning) {
    replaceIn(scratch / "pendulum.scaledef", "    BODY: Bob\n", "    BODY: Nobody\n");
    EXPECT_EQ(
        check({"pendulum.zvx"}),
        (ProgramRun{"0", linesOf({.scaleDef = "ok, with warnings"}),
                    printedWarning({"The check of \"pendulum.scaledef\" gave a warning.",
                                    "Body 'Nobody' has a POSITION_CONSTRAINT in the scaling definition, but",
                                    "that body is not in the problem definition.  This constraint will be",
                                    "ignored."})}));
}

// --- Measured data -------------------------------------------------------------------------------

class CheckWithMeasuredData : public Check {
protected:
    /// A run with so many constants, which come out as `measured`; `scaleDef` is said of the scale
    /// definition.
    void expect(const std::string& constants, const std::string& outcome, const std::string& measured,
                const std::string& scaleDef, const std::string& errors) {
        support::writeBytes(scratch / "own.measured", "Kym Measured File\nv1.00\n" + constants);
        EXPECT_EQ(check({"pendulum.zvx", "own.measured"}),
                  (ProgramRun{outcome,
                              "pendulum.zvx: ok\npendulum.probdef: ok\npendulum.model: ok\n"
                              "pendulum.limits: ok\nown.measured: " +
                                  measured + "\npendulum.scaledef: " + scaleDef + "\n",
                              errors}));
    }
};

TEST_F(CheckWithMeasuredData, TriesTheReferencesOfTheScaleDefinition) {
    expect("2\n1.46\n0.12\n", "0", "ok", "ok", "");
    expect("0\n", "1", "ok", "failed",
           printedError({"The check of \"pendulum.scaledef\" failed.",
                         "Invalid measured id 1.  There are only 0 measured constants in the",
                         "measured data."}));
}

TEST_F(CheckWithMeasuredData, TriesTheReferencesOfTemporaryMarkers) {
    expect("1\n1.46\n", "1", "ok", "failed",
           printedError({"The check of \"pendulum.scaledef\" failed.",
                         "Invalid measured id 2.  There are only 1 measured constants in the",
                         "measured data."}));
}

TEST_F(CheckWithMeasuredData, EvaluatesTheLimits) {
    replaceIn(scratch / "pendulum.scaledef", "  \"Swing\"      -0.1    0.1\n",
              "  \"Swing\"      [m1 + 1]    2\n"); // from 2.5 with this subject
    expect("2\n1.5\n0.12\n", "1", "ok", "failed",
           printedError({"The check of \"pendulum.scaledef\" failed.", "Invalid limits for variable 1."}));
    EXPECT_EQ(check({"pendulum.zvx"}), (ProgramRun{"0", linesOf({}), ""}));
}

TEST_F(CheckWithMeasuredData, FailsWhenTheyCannotBeRead) {
    EXPECT_EQ(check({"pendulum.zvx", "missing"}),
              (ProgramRun{"1",
                          "pendulum.zvx: ok\npendulum.probdef: ok\npendulum.model: ok\npendulum.limits: ok\n"
                          "missing: failed\npendulum.scaledef: ok\n",
                          printedError({"The check of \"missing\" failed.", "Unable to open \"missing\".",
                                        "File does not exist."})}));
}

} // namespace
} // namespace quillon::test
