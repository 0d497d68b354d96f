#include "quillon/tool/ProblemSpecReader.h"

#include "quillon/tool/LqProblemSpec.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;
using test::chainOf;
using test::CleanStatus;
using test::error;
using test::StatusChain;
using test::warning;
using testing::ElementsAre;

constexpr const char* header = "Kym Problem Specification File\nv1.00\n";

StatusChain chainAfterReading(const std::string& text, LqProblemSpec& spec) {
    std::istringstream input(text);
    LmStatus status;
    readProblemSpecStream(spec, input, status);
    return chainOf(status);
}

TEST(ProblemSpecReader, ReadsEveryEntry) {
    LqProblemSpec spec;
    const std::string text = std::string(header) + "MODEL: a/model\n"
                                                   "PROBDEF: b c\n"
                                                   "UNSCALEDBODYDEF: /d\n"
                                                   "SCALEDEF: e\n"
                                                   "LIMITS: f\n"
                                                   "SEARCHPARAMETERS: g\n"
                                                   "Match: BodyName\n"
                                                   "Comment: yes: no\n";
    EXPECT_THAT(chainAfterReading(text, spec), ElementsAre());
    EXPECT_EQ(spec.model, "a/model");
    EXPECT_EQ(spec.problemDefinition, "b c");
    EXPECT_EQ(spec.unscaledBodyDef, "/d");
    EXPECT_EQ(spec.scaleDefinition, "e");
    EXPECT_EQ(spec.limits, "f");
    EXPECT_EQ(spec.searchParameters, "g");
    EXPECT_EQ(spec.matchBy(), LqMatchBy::BodyName);
    EXPECT_EQ(spec.userValues, (std::map<LmStr, LmStr>{{"Comment", "yes: no"}}));
}

TEST(ProblemSpecReader, ClearsPathsAndTimesButAddsUserValuesUp) {
    LqProblemSpec spec;
    spec.model = "old";
    spec.modelTime = 5;
    spec.limitsTime = 6;
    spec.setMatchBy(LqMatchBy::BodyName);
    spec.userValues = {{"kept", "1"}, {"replaced", "2"}};
    EXPECT_THAT(chainAfterReading(std::string(header) + "replaced: 3\n", spec), ElementsAre());
    EXPECT_TRUE(spec.isBlank());
    EXPECT_EQ(spec.modelTime, 0);
    EXPECT_EQ(spec.limitsTime, 0);
    EXPECT_EQ(spec.matchBy(), LqMatchBy::BodyName);
    EXPECT_EQ(spec.userValues, (std::map<LmStr, LmStr>{{"kept", "1"}, {"replaced", "3"}}));
}

TEST(ProblemSpecReader, RefusesAGoodFileWhenAnythingStandsInTheStatus) {
    for (const bool isWarning : {true, false}) {
        std::istringstream input(std::string(header) + "a: b\n");
        LmStatus status;
        if (isWarning) {
            status.pushWarning("before");
        } else {
            status.pushError("before");
        }
        LqProblemSpec spec;
        readProblemSpecStream(spec, input, status);
        EXPECT_THAT(chainOf(status), ElementsAre(error("File is not a valid problem specification file."),
                                                 isWarning ? warning("before") : error("before")));
        EXPECT_TRUE(spec.userValues.empty());
    }
}

TEST(ProblemSpecReader, KeepsWhatWasReadBeforeAFailure) {
    LqProblemSpec spec;
    const std::string text = std::string(header) + "MODEL: m\nx: 1\nMODEL: n\ny: 2\n";
    EXPECT_THAT(chainAfterReading(text, spec), ElementsAre(error("There can only be one MODEL.")));
    EXPECT_EQ(spec.model, "m");
    EXPECT_EQ(spec.userValues, (std::map<LmStr, LmStr>{{"x", "1"}}));
}

TEST(ProblemSpecReader, PutsItsSentenceOnEveryFailureOfTheHeader) {
    struct Case {
        const char* text;
        const char* cause;
    };
    const Case cases[] = {
        {"", "Unable to read from file."},
        {"Kym Problem Specification File and a remark that makes the line eighty characters\na: b\n",
         "Unable to read from file."},
        {"Kym Model File\nv1.00\na: b\n", "Invalid datafile type."},
        {"Kym Problem Specification\nv1.00\n", "Invalid datafile type."},
        {"Kym Problem Specification File\n", "Unable to read version identifier."},
        {"Kym Problem Specification File\nx1.00\na: b\n", "Version identifier not found."},
        {"Kym Problem Specification File\nv\n", "Unable to read datafile version number."},
        {"Kym Problem Specification File\nv1.50\na: b\n",
         "Unsupported datafile version 1.50.  Application supports version 1.00."},
    };
    for (const Case& c : cases) {
        LqProblemSpec spec;
        EXPECT_THAT(chainAfterReading(c.text, spec),
                    ElementsAre(error("File is not a valid problem specification file."), error(c.cause)))
            << c.text;
        EXPECT_TRUE(spec.userValues.empty()) << c.text;
    }
}

TEST(ProblemSpecReader, ReportsABadItemAlone) {
    struct Case {
        const char* lines;
        const char* message;
    };
    const Case cases[] = {
        {"LIMITS\n", "No ':' or '{' following tag 'LIMITS'."},
        {"notes {\n", "Hit end of file without reading '}' for tag notes"},
        {"notes { x\n}\n", "Invalid characters trailing '{' for 'notes'."},
        {"notes {\n} x\n", "Invalid character ('x') trailing '}' for 'notes'."},
        {"notes {\n}\n", "Multi-line user values are not supported."},
        {"LIMITS {\n}\n", "Multi-line user values are not supported."},
        {"Match: Body\n", "Invalid identifier after Match: encountered."},
        {"Match: bodyID\n", "Invalid identifier after Match: encountered."},
        {"Match:\n", "Invalid identifier after Match: encountered."},
        {"Match: BodyID\n",
         "There MUST be a problem definition in order for there to be a Match: identifier."},
    };
    for (const Case& c : cases) {
        LqProblemSpec spec;
        spec.setMatchBy(LqMatchBy::BodyName);
        EXPECT_THAT(chainAfterReading(std::string(header) + c.lines, spec), ElementsAre(error(c.message)))
            << c.lines;
        EXPECT_TRUE(spec.isBlank()) << c.lines;
    }
}

TEST(ProblemSpecReader, ReadsAllPathsBeforeItMissesTheMatch) {
    LqProblemSpec spec;
    EXPECT_THAT(chainAfterReading(std::string(header) + "PROBDEF: p\nLIMITS: l\nx: y\n", spec),
                ElementsAre(error("There MUST ba a Match: identifier if there is a problem definition.")));
    EXPECT_EQ(spec.problemDefinition, "p");
    EXPECT_EQ(spec.limits, "l");
    EXPECT_EQ(spec.userValues.size(), 1U);
}

TEST(ProblemSpecReader, TakesAnEntryWithoutAPathForAnEmptyPath) {
    LqProblemSpec spec;
    EXPECT_THAT(chainAfterReading(std::string(header) + "PROBDEF:\nMatch: BodyID\n", spec), ElementsAre());
    EXPECT_EQ(spec.problemDefinition, "");
    EXPECT_THAT(chainAfterReading(std::string(header) + "LIMITS:\nLIMITS: a\n", spec),
                ElementsAre(error("There can only be one LIMITS.")));
}

TEST(ProblemSpecReader, KeepsWhatIsNoKeywordAsAUserValue) {
    LqProblemSpec spec;
    const std::string text = std::string(header) + "MODELS: a\nmodel: b\n MATCH : BodyID\r\n: no key\n"
                                                   "two: lines\\\n  of it\nlatin: \xE9 # no comment\n";
    EXPECT_THAT(chainAfterReading(text, spec), ElementsAre());
    EXPECT_TRUE(spec.isBlank());
    EXPECT_EQ(spec.userValues, (std::map<LmStr, LmStr>{{"MODELS", "a"},
                                                       {"model", "b"},
                                                       {"MATCH", "BodyID"},
                                                       {"", "no key"},
                                                       {"two", "lines\n  of it"},
                                                       {"latin", "\xE9 # no comment"}}));
}

TEST(ProblemSpecReader, NamesEachEntryThatIsGivenTwice) {
    struct Case {
        const char* lines;
        const char* message;
    };
    const Case cases[] = {
        {"MODEL: a\nMODEL: a\n", "There can only be one MODEL."},
        {"PROBDEF: a\nPROBDEF: b\n", "There can only be one PROBDEF."},
        {"UNSCALEDBODYDEF: a\nUNSCALEDBODYDEF: b\n", "There can only be one UNSCALEDBODYDEF."},
        {"UNSCALEDMODELS: a\nUNSCALEDBODYDEF: b\n", "There can only be one UNSCALEDBODYDEF."},
        {"UNSCALEDBODYDEF: a\nUNSCALEDMODELS: b\n", "There can only be one UNSCALEDBODYDEF."},
        {"SCALEDEF: a\nSCALEDEF: b\n", "There can only be one SCALEDEF."},
        {"LIMITS: a\nLIMITS: b\n", "There can only be one LIMITS."},
        {"SEARCHPARAMETERS: a\nSEARCHPARAMETERS: b\n", "There can only be one SEARCHPARAMETERS."},
        {"Match: BodyID\nMatch: BodyID\n", "Match: identifier found twice."},
    };
    for (const Case& c : cases) {
        LqProblemSpec spec;
        EXPECT_THAT(chainAfterReading(std::string(header) + c.lines, spec), ElementsAre(error(c.message)))
            << c.lines;
    }
}

TEST(ProblemSpecReader, DoesNotLookAtTheWordOfASecondMatch) {
    LqProblemSpec spec;
    EXPECT_THAT(chainAfterReading(std::string(header) + "Match: BodyName\nMatch: nonsense\n", spec),
                ElementsAre(error("Match: identifier found twice.")));
    EXPECT_EQ(spec.matchBy(), LqMatchBy::BodyName);
}

TEST(ProblemSpecReader, ExpandsVariablesInPathsAlone) {
    const test::EnvironmentValue value("QUILLON_TEST_DIR", "BodyID");
    LqProblemSpec spec;
    EXPECT_THAT(chainAfterReading(std::string(header) + "operator: $QUILLON_TEST_DIR\n", spec),
                ElementsAre());
    EXPECT_EQ(spec.userValues, (std::map<LmStr, LmStr>{{"operator", "$QUILLON_TEST_DIR"}}));
    EXPECT_THAT(chainAfterReading(std::string(header) + "Match: $QUILLON_TEST_DIR\n", spec),
                ElementsAre(error("Invalid identifier after Match: encountered.")));
}

TEST(ProblemSpecReader, ReadsTheWordsOfMatchByTheirBeginning) {
    struct Case {
        const char* word;
        LqMatchBy matchBy;
    };
    for (const Case& c :
         {Case{"BodyID", LqMatchBy::BodyID}, Case{"BodyIDs", LqMatchBy::BodyID},
          Case{"BodyName", LqMatchBy::BodyName}, Case{"BodyNames of old", LqMatchBy::BodyName}}) {
        LqProblemSpec spec;
        const std::string text = std::string(header) + "PROBDEF: p\nMatch: " + c.word + "\n";
        EXPECT_THAT(chainAfterReading(text, spec), ElementsAre()) << c.word;
        EXPECT_EQ(spec.matchBy(), c.matchBy) << c.word;
    }
}

TEST(ProblemSpecReader, StoresTheTimesOfTheFilesThatExist) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "limits", "");
    writeBytes(scratch / "model.gz", "");
    writeBytes(scratch / "scale.gz", "");
    LqProblemSpec spec;
    const std::string text = std::string(header) + "LIMITS: " + (scratch / "limits") +
                             "\nMODEL: " + (scratch / "model") + "\nSCALEDEF: " + (scratch / "scale") + "\n";
    EXPECT_THAT(chainAfterReading(text, spec), ElementsAre());
    EXPECT_GT(spec.limitsTime, 0);
    EXPECT_GT(spec.modelTime, 0) << "a compressed model is found under its plain name";
    EXPECT_EQ(spec.scaleDefinitionTime, 0);
}

TEST(ProblemSpecReader, ExpandsVariablesAndDropsTheSlashesAtTheEndsOfTheirValues) {
    ASSERT_EQ(setenv("QUILLON_TEST_DIR", "/data//", 1), 0);
    LqProblemSpec spec;
    EXPECT_THAT(chainAfterReading(std::string(header) + "LIMITS: $QUILLON_TEST_DIR/$NO_SUCH_NAME/l\n", spec),
                ElementsAre());
    EXPECT_EQ(spec.limits, "/data/$NO_SUCH_NAME/l");
    unsetenv("QUILLON_TEST_DIR");
}

TEST(ProblemSpecReader, ReportsAFileThatIsNotThereIntoTheGivenStatus) {
    const CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = scratch / "none.zvx";
    LqProblemSpec spec;
    LmStatus status;
    readProblemSpec(spec, path.c_str(), status);
    EXPECT_THAT(chainOf(status),
                ElementsAre(error("Unable to open \"" + path + "\"."), error("File does not exist.")));
    EXPECT_THAT(chainOf(), ElementsAre());
}

TEST(ProblemSpecReader, ReportsAFileThatPassesTheCheckAndDoesNotOpen) {
    const CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    writeBytes(path, header);
    LqProblemSpec spec;
    LmStatus status;
    {
        const test::NoFreeDescriptors none;
        readProblemSpec(spec, path.c_str(), status);
    }
    EXPECT_THAT(chainOf(status), ElementsAre(error("Unable to open '" + path + "'.")));
}

TEST(ProblemSpecReader, ReportsADirectoryUnderItsNameAlone) {
    const ScratchDirectory scratch;
    LqProblemSpec spec;
    LmStatus status;
    readProblemSpec(spec, scratch.path().c_str(), status);
    EXPECT_THAT(chainOf(status), ElementsAre(error(scratch.path().string() + " is a directory.")));
}

TEST(ProblemSpecReader, ReportsACompressedFileWhoseToolIsMissing) {
    const CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    writeBytes(path + ".gz", "");
    const std::string searchPath = getenv("PATH");
    ASSERT_EQ(setenv("PATH", scratch.path().c_str(), 1), 0);
    LqProblemSpec spec;
    LmStatus status;
    readProblemSpec(spec, path.c_str(), status);
    setenv("PATH", searchPath.c_str(), 1);
    EXPECT_THAT(chainOf(status), ElementsAre(error("Unable to open '" + path + "'."),
                                             error("Cannot find command 'gunzip' to uncompress\n'" + path +
                                                   ".gz'.\nThis command needs to be in your path.")));
}

} // namespace
} // namespace quillon
