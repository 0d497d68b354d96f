#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefText.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace quillon::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string noSections = "Kym Problem Definition File\nv1.00\n0\n0\n0\n0\n0\n0\n";
const StatusLine sectionUnreadable = error("Unable to read INCLUDE section.");

std::string includeBlock(const std::string& lines) {
    return "INCLUDE {\n" + lines + "}\n";
}

StatusChain chainAfterReading(LqProblemDefData& data, const std::string& section) {
    const CleanStatus clean;
    std::istringstream input(noSections + section);
    const bool whole = data.readProblemDefStream(input, false);
    EXPECT_EQ(whole, !errorStands()) << section;
    return takeChain();
}

TEST(ProblemDefIncludes, AFileWithoutBlocksHasNone) {
    for (const char* section : {"", "\n\n", "# none\n   \t\n"}) {
        LqProblemDefData data;
        data.addInclude(LqPDDInclude("earlier.prb"));
        EXPECT_EQ(chainAfterReading(data, section), StatusChain{}) << section;
        EXPECT_TRUE(data.isBlank()) << section;
    }
}

TEST(ProblemDefIncludes, AreKeptInFileOrderWithTheirValuesOrDefaults) {
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, includeBlock("FILE_NAME: arm.prb\n") +
                                          includeBlock("  SYS_VAR_ID_OFFSET: 0\n  BODY_ID_OFFSET: 100\n"
                                                       "  BODY_NAME_SUFFIX: _left\n  FILE_NAME: leg.prb\n") +
                                          "include { # the last one\n"
                                          "file_name: head.prb\nbody_id_offset: -5\n"
                                          "sys_var_id_offset: -9\nbody_name_suffix: 2\n}\n"),
              StatusChain{});
    EXPECT_THAT(linesOf(data), ElementsAre("include arm.prb suffix \"\" offsets 0 -1",
                                           "include leg.prb suffix \"_left\" offsets 100 0",
                                           "include head.prb suffix \"2\" offsets -5 -9"));
}

TEST(ProblemDefIncludes, FileNamesAreExpanded) {
    const EnvironmentValue directory("QUILLON_TEST_DIRECTORY", "/data/");
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, includeBlock("FILE_NAME: $QUILLON_TEST_DIRECTORY/dof/arm.prb\n"
                                                   "BODY_NAME_SUFFIX: $QUILLON_TEST_DIRECTORY\n")),
              StatusChain{});
    EXPECT_THAT(linesOf(data),
                ElementsAre("include /data/dof/arm.prb suffix \"$QUILLON_TEST_DIRECTORY\" offsets 0 -1"));
}

TEST(ProblemDefIncludes, ReportWhatIsWrong) {
    const StatusLine noInteger = error("Invalid integer value.");
    const std::pair<std::string, StatusChain> cases[] = {
        {includeBlock(""), {sectionUnreadable, error("No FILE_NAME specified.")}},
        {includeBlock("BODY_NAME_SUFFIX: _l\n"), {sectionUnreadable, error("No FILE_NAME specified.")}},
        {includeBlock("FILE_NAME: a\nBODY_ID_OFFSET: many\n"),
         {sectionUnreadable, error("Invalid value for BODY_ID_OFFSET."), noInteger}},
        {includeBlock("FILE_NAME: a\nsys_var_id_offset: x1\n"),
         {sectionUnreadable, error("Invalid value for sys_var_id_offset."), noInteger}},
        {includeBlock("FILE_NAME: a\nSUFFIX: _l\n"),
         {sectionUnreadable, error("Unexpected key word \"SUFFIX\".")}},
        {"include {\n}\n", {error("Unable to read include section."), error("No FILE_NAME specified.")}},
        {"EXCLUDE {\n}\n", {error("Unexpected key word \"EXCLUDE\".")}},
        {"FILE_NAME: a\n", {error("Unexpected key word \"FILE_NAME\".")}},
        {"INCLUDE {\n", {error("Hit end of file without reading '}' for tag INCLUDE")}},
        {includeBlock("BODY_NAME_SUFFIX {\n"),
         {error("Hit end of file without reading '}' for tag INCLUDE")}},
        {"more text\n", {error("No ':' or '{' following tag 'more text'.")}},
    };
    for (const auto& [section, chain] : cases) {
        LqProblemDefData data;
        EXPECT_EQ(chainAfterReading(data, section), chain) << section;
        EXPECT_TRUE(data.isBlank()) << section;
        // A good block in front of the bad one does not change that.
        EXPECT_EQ(chainAfterReading(data, includeBlock("FILE_NAME: a\n") + section), chain) << section;
        EXPECT_TRUE(data.isBlank()) << section;
    }
}

TEST(ProblemDefIncludes, AFailureLeavesThoseThatTheDefinitionHad) {
    const CleanStatus clean;
    LqProblemDefData data;
    data.addInclude(LqPDDInclude("earlier.prb", "_e", 1, 2));
    std::istringstream bad(includeBlock("FILE_NAME: a\n") + includeBlock(""));
    EXPECT_FALSE(data.readIncludes(bad));
    EXPECT_EQ(takeChain(), (StatusChain{sectionUnreadable, error("No FILE_NAME specified.")}));
    EXPECT_THAT(linesOf(data), ElementsAre("include earlier.prb suffix \"_e\" offsets 1 2"));
    std::istringstream good(includeBlock("FILE_NAME: a\n"));
    EXPECT_TRUE(data.readIncludes(good));
    EXPECT_THAT(linesOf(data), ElementsAre("include a suffix \"\" offsets 0 -1"));
    std::istringstream none("");
    EXPECT_TRUE(data.readIncludes(none));
    EXPECT_TRUE(data.isBlank());
}

TEST(ProblemDefIncludes, ABadSectionIsReportedUnderItsFile) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "figure.prb";
    support::writeBytes(path, noSections + includeBlock(""));
    LqProblemDefData data;
    EXPECT_FALSE(data.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read '" + path + "'."), sectionUnreadable,
                                        error("No FILE_NAME specified.")}));
}

TEST(ProblemDefIncludes, AreNotMergedWithoutBeingAskedAndWriteTheirBlocksAgain) {
    const CleanStatus clean;
    const EnvironmentValue directory("DRENK_DATA_DIR", "/data");
    const std::string section = "INCLUDE {\n"
                                "  FILE_NAME: $DRENK_DATA_DIR/dof/arm.prb\n"
                                "  BODY_NAME_SUFFIX: _left\n"
                                "  BODY_ID_OFFSET: 100\n"
                                "  SYS_VAR_ID_OFFSET: 0\n"
                                "}\n"
                                "INCLUDE {\n"
                                "  FILE_NAME: leg.prb\n"
                                "  BODY_ID_OFFSET: 0\n"
                                "}\n"
                                "INCLUDE {\n"
                                "  FILE_NAME: /elsewhere/head.prb\n"
                                "  BODY_ID_OFFSET: -3\n"
                                "  SYS_VAR_ID_OFFSET: -2\n"
                                "}\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, section), StatusChain{});
    EXPECT_THAT(linesOf(data), ElementsAre("include /data/dof/arm.prb suffix \"_left\" offsets 100 0",
                                           "include leg.prb suffix \"\" offsets 0 -1",
                                           "include /elsewhere/head.prb suffix \"\" offsets -3 -2"));
    std::ostringstream output;
    data.writeIncludes(output);
    EXPECT_EQ(output.str(), section);
    std::ostringstream sections;
    data.writeProblemDefSections(sections);
    EXPECT_EQ(sections.str(), "  0    # of variables -- var num, description\n"
                              "  0    # of bodies, body names, parent names, graphics #, type\n"
                              "  0    # real markers, marker#, pred type #, weight, body name\n"
                              "  0    # fix markers, ID, weight, body name\n"
                              "  0    # double markers, ID, double ID, weight, body name\n"
                              "  0    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name\n" +
                                  section);
}

TEST(ProblemDefIncludes, AreWrittenInPlainDecimalWhateverFormatTheStreamHas) {
    LqProblemDefData data;
    data.addInclude(LqPDDInclude("arm.prb", "_l", 26, 27));
    std::ostringstream output;
    output << std::hex << std::showbase << std::showpos << std::left;
    output.fill('*');
    output.width(30);
    data.writeIncludes(output);
    EXPECT_EQ(output.str(), "INCLUDE {\n"
                            "  FILE_NAME: arm.prb\n"
                            "  BODY_NAME_SUFFIX: _l\n"
                            "  BODY_ID_OFFSET: 26\n"
                            "  SYS_VAR_ID_OFFSET: 27\n"
                            "}\n");
    EXPECT_EQ(output.flags(),
              std::ios::hex | std::ios::showbase | std::ios::showpos | std::ios::left | std::ios::skipws);
    EXPECT_EQ(output.fill(), '*');
    EXPECT_EQ(output.width(), 30);
}

} // namespace
} // namespace quillon::test
