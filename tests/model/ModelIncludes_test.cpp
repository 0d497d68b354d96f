#include "quillon/model/LqBodyDefData.h"

#include "tests/model/ModelText.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

using test::CleanStatus;
using test::error;
using test::linesOf;
using test::StatusChain;
using test::StatusLine;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

/// A body without vectors, a real marker with one line for the camera, and a pair.
const std::string sections = "Kym Model File\nv1.00\n1    ; # of cameras\n1    ; # of bodies\n Arm\n"
                             "  1.000000    0.000000    0.000000\n"
                             "  0.000000    1.000000    0.000000\n"
                             "  0.000000    0.000000    1.000000\n"
                             "  0.000000    0.000000    0.000000\n"
                             "1    ; # of real points\n  1   1   2   3\n"
                             "       1         30      15.0\n"
                             "0    ; # of fixed points \n0    ; # of double points\n"
                             "1    ; # of artificial pairs\n  2   0   0   1\n  3   0   0   2\n";
const StatusLine sectionUnreadable = error("Unable to read INCLUDE section.");

std::string includeBlock(const std::string& lines) {
    return "INCLUDE {\n" + lines + "}\n";
}

class ModelIncludes : public testing::Test {
protected:
    ModelIncludes() { test::addBodies(definition, {{"Arm", 0}}); }

    StatusChain chainAfterReading(const std::string& section) {
        std::istringstream input(sections + section);
        const bool whole = model.readModelStream(input, definition, false);
        EXPECT_EQ(whole, !errorStands()) << section;
        return takeChain();
    }

    /// Expects the model to hold what stands in front of the section, and these includes.
    void expectIncludes(const std::vector<std::string>& includes) const {
        std::vector<std::string> lines = {
            "cameras 1", "body Arm [1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1] length 0 direction 0 0 0",
            "real 1: 1 2 3", "artificial 2: 0 0 1", "artificial 3: 0 0 2"};
        lines.insert(lines.end(), includes.begin(), includes.end());
        EXPECT_EQ(linesOf(model), lines);
    }

    CleanStatus clean;
    LqProblemDefData definition;
    LqBodyDefData model;
};

TEST_F(ModelIncludes, AFileWithoutBlocksHasNone) {
    for (const char* section : {"", "\n \n", "# none\n"}) {
        EXPECT_EQ(chainAfterReading(section), StatusChain{}) << section;
        expectIncludes({});
    }
}

TEST_F(ModelIncludes, AreKeptInFileOrderWithTheirSuffixes) {
    const test::EnvironmentValue directory("QUILLON_TEST_DIRECTORY", "/data/");
    EXPECT_EQ(chainAfterReading(includeBlock("FILE_NAME: arm.model\n") +
                                "Include { # the left one\n  body_name_suffix: _l\n"
                                "  file_name: $QUILLON_TEST_DIRECTORY/arm.model\n}\n"),
              StatusChain{});
    expectIncludes({"include arm.model suffix ", "include /data/arm.model suffix _l"});
}

TEST_F(ModelIncludes, ReportWhatIsWrongAndLeaveWhatStandsInFrontOfTheSection) {
    const std::pair<std::string, StatusChain> cases[] = {
        {includeBlock("BODY_NAME_SUFFIX: _l\n"), {sectionUnreadable, error("No FILE_NAME specified.")}},
        {includeBlock("FILE_NAME: a\nBODY_ID_OFFSET: 1\n"),
         {sectionUnreadable, error("Unexpected key word \"BODY_ID_OFFSET\".")}},
        {includeBlock("FILE_NAME: a\nsys_var_id_offset: 1\n"),
         {sectionUnreadable, error("Unexpected key word \"sys_var_id_offset\".")}},
        {"include {\n}\n", {error("Unable to read include section."), error("No FILE_NAME specified.")}},
        {"EXCLUDE {\n}\n", {error("Unexpected key word \"EXCLUDE\".")}},
        {"4   0   0   3\n", {error("No ':' or '{' following tag '4   0   0   3'.")}},
        {"INCLUDE {\n", {error("Hit end of file without reading '}' for tag INCLUDE")}},
    };
    for (const auto& [section, chain] : cases) {
        EXPECT_EQ(chainAfterReading(section), chain) << section;
        expectIncludes({});
        EXPECT_EQ(chainAfterReading(includeBlock("FILE_NAME: a\n") + section), chain) << section;
        expectIncludes({});
    }
}

TEST_F(ModelIncludes, AFailureLeavesThoseThatTheModelHad) {
    model.includes.append(new LqBDInclude{"earlier.model", "_e"});
    std::istringstream bad(includeBlock("FILE_NAME: a\n") + includeBlock(""));
    EXPECT_FALSE(model.readModelIncludes(bad));
    EXPECT_EQ(takeChain(), (StatusChain{sectionUnreadable, error("No FILE_NAME specified.")}));
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 0", "include earlier.model suffix _e"));
    std::istringstream good(includeBlock("FILE_NAME: a\n"));
    EXPECT_TRUE(model.readModelIncludes(good));
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 0", "include a suffix "));
    std::istringstream none("");
    EXPECT_TRUE(model.readModelIncludes(none));
    EXPECT_TRUE(model.isBlank());
}

TEST_F(ModelIncludes, ABadSectionIsReportedUnderItsFile) {
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "arm.model";
    support::writeBytes(path, sections + includeBlock(""));
    EXPECT_FALSE(model.readModelFile(path.c_str(), definition, true));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read '" + path + "'."), sectionUnreadable,
                                        error("No FILE_NAME specified.")}));
}

TEST_F(ModelIncludes, AreNotMergedWithoutBeingAskedAndWriteTheirBlocksAgain) {
    const test::EnvironmentValue directory("DRENK_DATA_DIR", "/data");
    const std::string section = "INCLUDE {\n"
                                "  FILE_NAME: $DRENK_DATA_DIR/subject/arm.model\n"
                                "  BODY_NAME_SUFFIX: _left\n"
                                "}\n"
                                "INCLUDE {\n"
                                "  FILE_NAME: leg.model\n"
                                "}\n";
    EXPECT_EQ(chainAfterReading(section), StatusChain{});
    expectIncludes({"include /data/subject/arm.model suffix _left", "include leg.model suffix "});
    std::ostringstream output;
    model.writeModelIncludes(output);
    EXPECT_EQ(output.str(), section);
    std::ostringstream whole;
    model.writeModelStream(whole, definition);
    EXPECT_EQ(whole.str(), sections + section);
}

} // namespace
} // namespace quillon
