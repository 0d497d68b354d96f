#include "quillon/files/IncludeSection.h"

#include "tests/support/EnvironmentValue.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::CleanStatus;
using test::EnvironmentValue;
using test::error;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

/// A block of a format that has a text and a number beside the file name.
struct Block {
    LmStr fileName{""};
    LmStr suffix{""};
    std::int32_t offset = -1;

    bool read(const std::string& text, LmStatus& status = currentStatus()) {
        const IncludeKey keys[] = {{includeSuffixKey, suffix}, {"OFFSET", offset}};
        return readIncludeBlock(text, fileName, keys, status);
    }
    std::string asText() const {
        return "\"" + std::string(fileName.view()) + "\" \"" + std::string(suffix.view()) + "\" " +
               std::to_string(offset);
    }
};

TEST(IncludeBlock, TakesItsKeysInAnyOrderAndAnyCase) {
    const CleanStatus clean;
    const std::pair<const char*, const char*> cases[] = {
        {"FILE_NAME: arm.prb\n", "\"arm.prb\" \"\" -1"},
        {"FILE_NAME: arm.prb\nBODY_NAME_SUFFIX: _l\nOFFSET: 7\n", "\"arm.prb\" \"_l\" 7"},
        {"offset: -7\nbody_name_suffix: _l\nFile_Name: arm.prb", "\"arm.prb\" \"_l\" -7"},
        {"\n# a remark\nFILE_NAME :  left arm.prb  \n\n", "\"left arm.prb\" \"\" -1"},
        // The last value of a key counts, also an empty one.
        {"FILE_NAME: arm.prb\nFILE_NAME: leg.prb\nOFFSET: 1\nOFFSET: 2\n", "\"leg.prb\" \"\" 2"},
        {"FILE_NAME: arm.prb\nBODY_NAME_SUFFIX: _l\nBODY_NAME_SUFFIX:\n", "\"arm.prb\" \"\" -1"},
        // What stands behind the integer is not looked at, and the suffix is taken as it is.
        {"FILE_NAME: arm.prb\nOFFSET: 12abc\n", "\"arm.prb\" \"\" 12"},
        {"FILE_NAME: arm.prb\nBODY_NAME_SUFFIX: $HOME # 1\n", "\"arm.prb\" \"$HOME # 1\" -1"},
    };
    for (const auto& [text, expected] : cases) {
        Block block;
        EXPECT_TRUE(block.read(text)) << text;
        EXPECT_EQ(block.asText(), expected) << text;
        EXPECT_THAT(takeChain(), IsEmpty()) << text;
    }
}

TEST(IncludeBlock, ExpandsTheReferencesOfTheFileNameWithoutSlashesAtTheirEnds) {
    const CleanStatus clean;
    const EnvironmentValue directory("QUILLON_TEST_DIRECTORY", "/data//");
    const EnvironmentValue missing("QUILLON_TEST_MISSING", std::nullopt);
    Block block;
    EXPECT_TRUE(block.read("FILE_NAME: $QUILLON_TEST_DIRECTORY/$QUILLON_TEST_MISSING/arm.prb\n"));
    EXPECT_EQ(block.fileName.view(), "/data/$QUILLON_TEST_MISSING/arm.prb");
}

TEST(IncludeBlock, ReportsWhatIsWrong) {
    const CleanStatus clean;
    const EnvironmentValue empty("QUILLON_TEST_EMPTY", "");
    const std::pair<const char*, StatusChain> cases[] = {
        {"", {error("No FILE_NAME specified.")}},
        {"BODY_NAME_SUFFIX: _l\n", {error("No FILE_NAME specified.")}},
        {"FILE_NAME:\n", {error("No FILE_NAME specified.")}},
        {"FILE_NAME: arm.prb\nFILE_NAME: \n", {error("No FILE_NAME specified.")}},
        {"FILE_NAME: $QUILLON_TEST_EMPTY\n", {error("No FILE_NAME specified.")}},
        {"FILE_NAME: arm.prb\nOFFSET: x\n",
         {error("Invalid value for OFFSET."), error("Invalid integer value.")}},
        {"FILE_NAME: arm.prb\nOffset:\nALIEN: 1\n",
         {error("Invalid value for Offset."), error("Invalid integer value.")}},
        {"FILE_NAME: arm.prb\nAlien: 1\nOFFSET: x\n", {error("Unexpected key word \"Alien\".")}},
        {"FILE_NAME: arm.prb\nALIEN {\n}\n", {error("Unexpected key word \"ALIEN\".")}},
        {"FILE_NAMES: arm.prb\n", {error("Unexpected key word \"FILE_NAMES\".")}},
        {": arm.prb\n", {error("Unexpected key word \"\".")}},
        {"arm.prb\n", {error("No ':' or '{' following tag 'arm.prb'.")}},
        {"OFFSET {\n1\n", {error("Hit end of file without reading '}' for tag OFFSET")}},
    };
    for (const auto& [text, chain] : cases) {
        Block block;
        EXPECT_FALSE(block.read(text)) << text;
        EXPECT_EQ(takeChain(), chain) << text;
    }
}

TEST(IncludeBlock, ReportsOnTheStatusThatIsGiven) {
    const CleanStatus clean;
    for (const char* text : {"OFFSET: x\n", "ALIEN: 1\n", "", "alone\n"}) {
        LmStatus status;
        Block block;
        EXPECT_FALSE(block.read(text, status)) << text;
        EXPECT_TRUE(status.errorStands()) << text;
        EXPECT_THAT(takeChain(), IsEmpty()) << text;
    }
}

/// The texts of the blocks, up to the first that holds the word "bad", which is reported.
std::vector<std::string> blocksOf(const std::string& text, bool whole) {
    std::vector<std::string> blocks;
    std::istringstream input(text);
    EXPECT_EQ(readIncludeSections(input,
                                  [&blocks](std::string_view block) {
                                      blocks.emplace_back(block);
                                      if (block.find("bad") == std::string_view::npos) {
                                          return true;
                                      }
                                      pushError("A bad block.");
                                      return false;
                                  }),
              whole)
        << text;
    return blocks;
}

TEST(IncludeSections, GoOnToTheEndOfTheInput) {
    const CleanStatus clean;
    EXPECT_THAT(blocksOf("", true), IsEmpty());
    EXPECT_THAT(blocksOf("\n  \n# nothing\n", true), IsEmpty());
    EXPECT_THAT(blocksOf("INCLUDE {\n  a: 1\n}\n# next\ninclude {\n}\nInclude: b: 2\n", true),
                ElementsAre("a: 1\n", "", "b: 2"));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST(IncludeSections, EndAtTheFirstThatIsWrong) {
    const CleanStatus clean;
    EXPECT_THAT(blocksOf("INCLUDE {\na\n}\nInclude {\nbad\n}\nINCLUDE {\nc\n}\n", false),
                ElementsAre("a\n", "bad\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read Include section."), error("A bad block.")}));
    EXPECT_THAT(blocksOf("INCLUDE {\na\n}\nEXCLUDE {\nb\n}\n", false), ElementsAre("a\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("Unexpected key word \"EXCLUDE\".")});
    EXPECT_THAT(blocksOf("VERSION: 2\n", false), IsEmpty());
    EXPECT_EQ(takeChain(), StatusChain{error("Unexpected key word \"VERSION\".")});
    EXPECT_THAT(blocksOf("INCLUDE {\na\n", false), IsEmpty());
    EXPECT_EQ(takeChain(), StatusChain{error("Hit end of file without reading '}' for tag INCLUDE")});
    EXPECT_THAT(blocksOf("INCLUDE\n{\n}\n", false), IsEmpty());
    EXPECT_EQ(takeChain(), StatusChain{error("No ':' or '{' following tag 'INCLUDE'.")});
    EXPECT_THAT(blocksOf("INCLUDE { a\n}\n", false), IsEmpty());
    EXPECT_EQ(takeChain(), StatusChain{error("Invalid characters trailing '{' for 'INCLUDE'.")});
}

TEST(IncludeSections, SayNothingMoreUnderAnErrorThatStandsAlready) {
    const CleanStatus clean;
    for (const char* text : {"", "INCLUDE {\na\n}\n", "EXCLUDE {\n}\n"}) {
        pushError("earlier");
        EXPECT_THAT(blocksOf(text, false), IsEmpty());
        EXPECT_EQ(takeChain(), StatusChain{error("earlier")}) << text;
    }
    test::StatusChain warned = {test::warning("earlier")};
    pushWarning("earlier");
    EXPECT_THAT(blocksOf("INCLUDE {\na\n}\n", true), ElementsAre("a\n"));
    EXPECT_EQ(takeChain(), warned);
}

TEST(IncludeBlock, IsWrittenLineByLine) {
    const EnvironmentValue directory("DRENK_DATA_DIR", "/data/");
    std::ostringstream output;
    beginIncludeBlock(output, "/data/dof/arm.prb");
    writeIncludeText(output, includeSuffixKey, "_l");
    writeIncludeText(output, "NOTE", "");
    writeIncludeNumber(output, "OFFSET", -12);
    endIncludeBlock(output);
    EXPECT_EQ(output.str(), "INCLUDE {\n"
                            "  FILE_NAME: $DRENK_DATA_DIR/dof/arm.prb\n"
                            "  BODY_NAME_SUFFIX: _l\n"
                            "  OFFSET: -12\n"
                            "}\n");
}

TEST(IncludeBlock, NamesTheFileByTheVariableOfTheDataDirectoryThatIsSet) {
    struct Case {
        std::optional<std::string> drenk;
        std::optional<std::string> kym;
        const char* written;
    };
    const Case cases[] = {
        {"/data", "/data/dof", "$DRENK_DATA_DIR/dof/arm.prb"},
        {std::nullopt, "/data/dof", "$KYM_DATA_DIR/arm.prb"},
        {"/elsewhere", "/data", "/data/dof/arm.prb"},
        {std::nullopt, std::nullopt, "/data/dof/arm.prb"},
    };
    for (const Case& each : cases) {
        const EnvironmentValue drenk("DRENK_DATA_DIR", each.drenk);
        const EnvironmentValue kym("KYM_DATA_DIR", each.kym);
        std::ostringstream output;
        beginIncludeBlock(output, "/data/dof/arm.prb");
        EXPECT_EQ(output.str(), "INCLUDE {\n  FILE_NAME: " + std::string(each.written) + "\n");
    }
}

} // namespace
} // namespace quillon
