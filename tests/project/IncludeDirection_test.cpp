// Holds the include lines of the library against the order of its folders.

#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

const fs::path sourceDirectory = QUILLON_SOURCE_DIR;

// Each folder, and the folders that it may include from beside itself.
const std::map<std::string, std::set<std::string>> allowedFolders = {
    {"tool", {"scale", "limits", "model", "problem", "geometry", "files", "core"}},
    {"scale", {"model", "problem", "geometry", "files", "core"}},
    {"model", {"problem", "geometry", "files", "core"}},
    {"limits", {"problem", "files", "core"}},
    {"problem", {"files", "core"}},
    {"files", {"core"}},
    {"geometry", {"core"}},
    {"core", {}},
};

// Headers of the system that the library may use; it uses nothing else from outside the standard library.
const std::regex systemHeader("(sys/)?[a-z0-9_]+\\.h");
const std::regex standardHeader("[a-z0-9_]+");

/// The included names of a source text, each with its quotes or angle brackets.
std::vector<std::string> includesOf(const std::string& text) {
    static const std::regex includeLine("\\s*#\\s*include\\s*([\"<][^\">]*[\">]).*");
    std::vector<std::string> includes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (std::smatch match; std::regex_match(line, match, includeLine)) {
            includes.push_back(match[1]);
        }
    }
    return includes;
}

/// What is wrong with an include in a file of `folder`; empty when nothing is.
std::string complaint(const std::string& folder, const std::string& include) {
    const std::string name = include.substr(1, include.size() - 2);
    if (include.front() == '<') {
        const bool fine = std::regex_match(name, standardHeader) || std::regex_match(name, systemHeader);
        return fine ? "" : "is from outside the standard library";
    }
    static const std::regex ownHeader("quillon/([a-z]+)/[A-Za-z0-9_]+\\.h");
    std::smatch match;
    if (!std::regex_match(name, match, ownHeader)) {
        return "is not spelt as \"quillon/<folder>/<Name>.h\"";
    }
    const std::string target = match[1];
    if (target != folder && allowedFolders.at(folder).count(target) == 0) {
        return "points back up";
    }
    return "";
}

std::vector<fs::path> sourcesOf(const std::string& folder) {
    std::vector<fs::path> sources;
    const fs::path directory = sourceDirectory / "quillon" / folder;
    if (fs::exists(directory)) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory)) {
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
                sources.push_back(entry.path());
            }
        }
    }
    std::sort(sources.begin(), sources.end());
    return sources;
}

TEST(IncludeDirection, NoArrowRunsBackUp) {
    std::vector<std::string> complaints;
    for (const auto& [folder, targets] : allowedFolders) {
        for (const fs::path& source : sourcesOf(folder)) {
            for (const std::string& include : includesOf(support::readBytes(source))) {
                const std::string wrong = complaint(folder, include);
                if (!wrong.empty()) {
                    complaints.push_back(source.string() + ": " + include + " " + wrong + ".");
                }
            }
        }
    }
    EXPECT_THAT(complaints, IsEmpty());
}

TEST(IncludeDirection, EveryFolderHasItsPlaceInTheOrder) {
    for (const fs::directory_entry& entry : fs::directory_iterator(sourceDirectory / "quillon")) {
        EXPECT_TRUE(entry.is_directory()) << entry.path() << " lies beside the folders.";
        EXPECT_EQ(allowedFolders.count(entry.path().filename().string()), 1u) << entry.path();
    }
}

TEST(IncludeDirection, TheOrderHasNoCircle) {
    for (const auto& [folder, targets] : allowedFolders) {
        for (const std::string& target : targets) {
            EXPECT_EQ(allowedFolders.at(target).count(folder), 0u) << folder << " and " << target;
        }
    }
}

TEST(IncludeDirection, TheCheckSeesWhatIsWrong) {
    EXPECT_EQ(includesOf("#include <a>\n  #  include \"b/c.h\" // why\nint x;\n"),
              (std::vector<std::string>{"<a>", "\"b/c.h\""}));
    EXPECT_EQ(complaint("files", "\"quillon/core/Fatal.h\""), "");
    EXPECT_EQ(complaint("core", "<vector>"), "");
    EXPECT_EQ(complaint("core", "<sys/stat.h>"), "");
    EXPECT_EQ(complaint("core", "\"quillon/files/LmCompIFStream.h\""), "points back up");
    EXPECT_EQ(complaint("limits", "\"quillon/model/LqBodyDefData.h\""), "points back up");
    EXPECT_EQ(complaint("core", "\"Fatal.h\""), "is not spelt as \"quillon/<folder>/<Name>.h\"");
    EXPECT_EQ(complaint("core", "<boost/any.hpp>"), "is from outside the standard library");
}

} // namespace
} // namespace quillon
