// The examples are what users start from: the files that a specification names must lie where it says.

#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

namespace fs = std::filesystem;

const fs::path examples = fs::path(QUILLON_SOURCE_DIR) / "examples";

/// The path behind each keyword of a specification that names a file; comments and other tags give none.
/// The walker's scale definition is not drawn up yet, so its keyword is left out.
std::vector<std::string> namedFiles(const fs::path& specification) {
    static const std::set<std::string> keywords = {
        "MODEL:", "PROBDEF:", "UNSCALEDBODYDEF:", "LIMITS:", "SEARCHPARAMETERS:"};
    std::istringstream lines(support::readBytes(specification));
    std::vector<std::string> names;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string keyword;
        std::string name;
        if (words >> keyword >> name && keywords.count(keyword) == 1) {
            names.push_back(name);
        }
    }
    return names;
}

bool isThere(const fs::path& file) {
    return fs::is_regular_file(file) || fs::is_regular_file(file.string() + ".gz");
}

TEST(ExampleFiles, TheWalkerAndItsCompressedTwinAreThere) {
    for (const char* name :
         {"walker/walker.zvx", "walker/walker_data_dir.zvx", "walker/walker.probdef", "walker/walker.model",
          "walker/walker.limits", "walker_compressed/walker.zvx.gz", "walker_compressed/walker.probdef.gz",
          "walker_compressed/walker.model", "walker_compressed/walker.limits"}) {
        EXPECT_TRUE(fs::is_regular_file(examples / name)) << name;
    }
}

TEST(ExampleFiles, WhatASpecificationNamesLiesBesideIt) {
    const std::string variable = "$DRENK_DATA_DIR/";
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(examples)) {
        if (entry.path().extension() != ".zvx") {
            continue;
        }
        const std::vector<std::string> names = namedFiles(entry.path());
        EXPECT_GE(names.size(), 3u) << entry.path();
        for (const std::string& name : names) {
            const bool throughVariable = name.rfind(variable, 0) == 0;
            const fs::path file =
                entry.path().parent_path() / (throughVariable ? name.substr(variable.size()) : name);
            EXPECT_TRUE(isThere(file)) << entry.path() << " names " << name;
        }
    }
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::istringstream text(support::readBytes(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(Readme, ShowsLinesThatTheExampleReallyPrints) {
    const fs::path source = QUILLON_SOURCE_DIR;
    const std::vector<std::string> printed = linesOf(source / "tests" / "cli" / "walker_example" / "stdout");
    const std::set<std::string> kinds = {"sys_var", "body", "real_marker", "artificial_pair"};
    const std::string indent = "    ";
    std::set<std::string> shown;
    for (const std::string& line : linesOf(source / "README.md")) {
        const std::string text = line.rfind(indent, 0) == 0 ? line.substr(indent.size()) : "";
        const std::string kind = text.substr(0, text.find(' '));
        if (kinds.count(kind) == 1) {
            shown.insert(kind);
            EXPECT_THAT(printed, ::testing::Contains(text));
        }
    }
    EXPECT_EQ(shown, kinds);
}

} // namespace
} // namespace quillon
