#include "quillon/core/LmStatus.h"
#include "quillon/tool/Info.h"
#include "tests/examples/ExamplePrograms.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/StatusChain.h"

#include <sstream>

namespace quillon::test {
namespace {

using support::readBytes;
using support::writeBytes;

/// What `quillon info` prints of a family whose specification leads to it from anywhere.
std::string reportOf(const std::string& specification) {
    std::ostringstream report;
    std::ostringstream messages;
    runInfo(specification.c_str(), report, messages);
    EXPECT_EQ(takeChain(), StatusChain{});
    return report.str();
}

class Merge : public testing::Test {
protected:
    ProgramRun merge(const std::string& specification, const std::string& folder) const {
        return runExample({"merge", specification, folder}, scratch);
    }

    /// Expects that nothing is printed but an error, and that no folder "out" is made.
    void expectRefused(const std::string& specification, const std::string& folder,
                       const std::vector<std::string>& chain) const {
        EXPECT_EQ(merge(specification, folder), (ProgramRun{"1", "", printedError(chain)}));
        EXPECT_FALSE(std::filesystem::exists(scratch / "out"));
    }

    /// The same for a run in which the disk is full when the file of this ending is written into "out".
    void expectFullDisk(const std::string& stem, const std::string& ending,
                        const std::vector<std::string>& chain) const {
        const std::string name = stem + "." + ending;
        std::filesystem::create_directory(scratch / "out");
        std::filesystem::create_symlink("/dev/full", scratch / ("out/" + name));
        EXPECT_EQ(merge(stem + ".zvx", "out"), (ProgramRun{"1", "", printedError(chain)}));
        EXPECT_EQ(namesIn(scratch / "out"), std::set<std::string>{name});
        std::filesystem::remove_all(scratch / "out");
    }

    static std::string paths(const std::string& stem) {
        return stem + ".probdef\n" + stem + ".model\n" + stem + ".limits\n" + stem + ".scaledef\n" + stem +
               ".zvx\n";
    }

    support::ScratchDirectory scratch;
    CleanStatus clean;
};

TEST_F(Merge, WritesTheCrowdAsItIsWrittenByHand) {
    const std::string crowd = examplesFolder("crowd");
    const EnvironmentValue directory("DRENK_DATA_DIR", crowd);
    const std::string out = scratch / "out";
    EXPECT_EQ(merge(crowd + "/crowd.zvx", out), (ProgramRun{"0", paths(out + "/crowd"), ""}));
    EXPECT_EQ(readBytes(out + "/crowd.probdef"), readBytes(crowd + "/flat.probdef"));
    EXPECT_EQ(readBytes(out + "/crowd.model"), readBytes(crowd + "/flat.model"));
    EXPECT_EQ(readBytes(out + "/crowd.limits"), readBytes(crowd + "/flat.limits"));
    EXPECT_EQ(readBytes(out + "/crowd.scaledef"), readBytes(crowd + "/crowd.scaledef"));
    EXPECT_EQ(readBytes(out + "/crowd.zvx"),
              "Kym Problem Specification File\nv1.00\nPROBDEF: " + out +
                  "/crowd.probdef\nUNSCALEDBODYDEF: " + out + "/crowd.model\nSCALEDEF: " + out +
                  "/crowd.scaledef\nLIMITS: " + out + "/crowd.limits\nMatch: BodyName\n");
    EXPECT_EQ(reportOf(out + "/crowd.zvx"), reportOf(crowd + "/flat.zvx"));
}

TEST_F(Merge, CopiesWhatIncludesNothing) {
    const std::string walker = examplesFolder("walker");
    const EnvironmentValue directory("DRENK_DATA_DIR", walker);
    const std::string out = scratch / "out";
    EXPECT_EQ(merge(walker + "/walker_data_dir.zvx", out),
              (ProgramRun{"0", paths(out + "/walker_data_dir"), ""}));
    for (const char* ending : {".probdef", ".model", ".limits", ".scaledef"}) {
        EXPECT_EQ(readBytes(out + "/walker_data_dir" + ending), readBytes(walker + "/walker" + ending));
    }
    EXPECT_EQ(reportOf(out + "/walker_data_dir.zvx"), reportOf(walker + "/walker_data_dir.zvx"));
}

TEST_F(Merge, UnpacksWhatIsCompressed) {
    copyFamily("walker_compressed", scratch);
    EXPECT_EQ(merge("walker.zvx.gz", "out"), (ProgramRun{"0", paths("out/walker"), ""}));
    EXPECT_EQ(readBytes(scratch / "out/walker.probdef"), readBytes(examplesFolder("walker/walker.probdef")));
}

TEST_F(Merge, KeepsTheOtherEntriesOfTheSpecification) {
    copyFamily("pendulum", scratch);
    replaceIn(scratch / "pendulum.zvx", "Match: BodyName\n",
              "MODEL: pendulum.picture\nSEARCHPARAMETERS: search\nMatch: BodyID\n");
    EXPECT_EQ(merge("pendulum.zvx", "deep/out"), (ProgramRun{"0", paths("deep/out/pendulum"), ""}));
    EXPECT_EQ(readBytes(scratch / "deep/out/pendulum.zvx"), "Kym Problem Specification File\n"
                                                            "v1.00\n"
                                                            "MODEL: pendulum.picture\n"
                                                            "PROBDEF: deep/out/pendulum.probdef\n"
                                                            "UNSCALEDBODYDEF: deep/out/pendulum.model\n"
                                                            "SCALEDEF: deep/out/pendulum.scaledef\n"
                                                            "LIMITS: deep/out/pendulum.limits\n"
                                                            "SEARCHPARAMETERS: search\n"
                                                            "Match: BodyID\n"
                                                            "Subject: the pendulum of the laboratory\n");
}

TEST_F(Merge, WritesNoFileThatTheSpecificationDoesNotName) {
    copyFamily("pendulum", scratch);
    writeBytes(scratch / "part", "Kym Problem Specification File\nv1.00\nLIMITS: pendulum.limits\n");
    EXPECT_EQ(merge("part", "out"), (ProgramRun{"0", "out/part.limits\nout/part.zvx\n", ""}));
    EXPECT_EQ(namesIn(scratch / "out"), (std::set<std::string>{"part.limits", "part.zvx"}));
    EXPECT_EQ(readBytes(scratch / "out/part.zvx"),
              "Kym Problem Specification File\nv1.00\nLIMITS: out/part.limits\n");
}

TEST_F(Merge, WarnsOfNumbersThatItsFormatsRound) {
    writeBytes(scratch / "a.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: a.limits\n");
    writeBytes(scratch / "a.limits",
               "Kym System Variable Limits File\nv2.00\nINCLUDE {\n  FILE_NAME: b.limits\n}\n");
    writeBytes(scratch / "b.limits", "Kym System Variable Limits File\nv2.00\n"
                                     "VARIABLE {\n  ID: 1\n  UPPER {\n    VALUE: 0.8727\n  }\n}\n");
    EXPECT_EQ(
        merge("a.zvx", "out"),
        (ProgramRun{"0", "out/a.limits\nout/a.zvx\n",
                    printedWarning({"\"out/a.limits\" holds its numbers less exactly than the original."})}));
    EXPECT_EQ(readBytes(scratch / "out/a.limits"),
              "Kym System Variable Limits File\nv2.00\n"
              "VARIABLE {\n  ID: 1\n  UPPER {\n    VALUE: 0.87\n  }\n}\n");
}

// --- What is refused -----------------------------------------------------------------------------

TEST_F(Merge, TellsItsUse) {
    const ProgramRun usage{"1", "", "Usage: merge PROBLEM.zvx FOLDER\n"};
    EXPECT_EQ(runExample({"merge"}, scratch), usage);
    EXPECT_EQ(runExample({"merge", "a.zvx"}, scratch), usage);
    EXPECT_EQ(runExample({"merge", "a.zvx", "out", "more"}, scratch), usage);
}

TEST_F(Merge, RefusesBadInput) {
    expectRefused("missing.zvx", "out", {"Unable to open \"missing.zvx\".", "File does not exist."});
    writeBytes(scratch / "a.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: a.limits\n");
    writeBytes(scratch / "a.limits",
               "Kym System Variable Limits File\nv2.00\nINCLUDE {\n  FILE_NAME: b.limits\n}\n");
    expectRefused("a.zvx", "out",
                  {"Unable to read limit data file \"a.limits\".", "Unable to include sub-limits.",
                   "Unable to open \"b.limits\".", "File does not exist."});
}

TEST_F(Merge, TouchesNoFileThatIsThere) {
    copyFamily("crowd", scratch);
    const EnvironmentValue directory("DRENK_DATA_DIR", ".");
    EXPECT_EQ(merge("crowd.zvx", "."),
              (ProgramRun{"1", "", printedError({"\"./crowd.probdef\" is there already."})}));

    // An included file may lie where an output would come to lie.
    std::filesystem::rename(scratch / "crowd.zvx", scratch / "walker.zvx");
    EXPECT_EQ(merge("walker.zvx", "."),
              (ProgramRun{"1", "", printedError({"\"./walker.probdef\" is there already."})}));
    std::filesystem::rename(scratch / "walker.zvx", scratch / "crowd.zvx");
    EXPECT_EQ(namesIn(scratch.path().string()), namesIn(examplesFolder("crowd")));
    for (const std::string& name : namesIn(examplesFolder("crowd"))) {
        EXPECT_EQ(readBytes(scratch / name), readBytes(examplesFolder("crowd/") + name)) << name;
    }
}

TEST_F(Merge, NeedsAFolderThatItCanMake) {
    copyFamily("pendulum", scratch);
    expectRefused("pendulum.zvx", "pendulum.limits/out",
                  {"Unable to make the directory \"pendulum.limits/out\"."});
}

TEST_F(Merge, RemovesWhatItHasWrittenWhenACopyCannotBeWritten) {
    copyFamily("pendulum", scratch);
    for (const std::string ending : {"probdef", "model", "limits", "scaledef", "zvx"}) {
        expectFullDisk("pendulum", ending, {"Unable to write \"out/pendulum." + ending + "\"."});
    }
}

TEST_F(Merge, RemovesWhatItHasWrittenWhenAMergedFileCannotBeWritten) {
    copyFamily("crowd", scratch);
    const EnvironmentValue directory("DRENK_DATA_DIR", ".");
    expectFullDisk("crowd", "probdef", {"Unable to write \"out/crowd.probdef\"."});
    expectFullDisk("crowd", "model", {"Unable to write \"out/crowd.model\"."});
    expectFullDisk("crowd", "limits",
                   {"Unable to write \"out/crowd.limits\".", "Unable to write header info.",
                    "Unable to write data file id."});
}

TEST_F(Merge, RemovesWhatDoesNotReadBack) {
    copyFamily("pendulum", scratch);
    // Paths of a specification are trimmed.
    EXPECT_EQ(
        merge("pendulum.zvx", " out"),
        (ProgramRun{"1", "",
                    printedError({"The merged files cannot be read back.",
                                  "Unable to open \"out/pendulum.probdef\".", "File does not exist."})}));
    EXPECT_EQ(namesIn(scratch / " out"), std::set<std::string>{});
}

TEST_F(Merge, FailsWhenThePathsCannotBePrinted) {
    copyFamily("pendulum", scratch);
    EXPECT_EQ(runOnFullOutput({"merge", "pendulum.zvx", "out"}, scratch),
              (ProgramRun{"1", "", "Unable to write the paths of the merged files.\n"}));
}

} // namespace
} // namespace quillon::test
