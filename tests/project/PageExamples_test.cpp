// What the documentation shows is what there is: files, programs and what they print, and links.

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/tool/Version.h"
#include "tests/project/Pages.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace quillon::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

const fs::path root = QUILLON_SOURCE_DIR;

TEST(PageExamples, AreTheFilesThatTheyName) {
    std::set<std::string> pagesWithExamples;
    for (const Page& page : allPages()) {
        for (const PageNote& note : page.notes) {
            if (note.kind == "example" || note.kind == "program") {
                EXPECT_EQ(note.block, support::readBytes(root / note.content))
                    << page.path << ": " << note.content;
                pagesWithExamples.insert(page.path.filename().string());
            }
        }
    }
    for (const auto& entry : fs::directory_iterator(root / "docs" / "formats")) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(name == "common.md" || pagesWithExamples.contains(name)) << name << " has no example.";
    }
}

TEST(PageExamples, EveryProgramBesideThePagesIsShown) {
    std::set<std::string> shown;
    for (const Page& page : allPages()) {
        for (const PageNote& note : page.notes) {
            shown.insert(note.content);
        }
    }
    for (const auto& entry : fs::directory_iterator(root / "docs" / "programs")) {
        const std::string path = "docs/programs/" + entry.path().filename().string();
        EXPECT_TRUE(shown.contains(path)) << path;
    }
}

// The program that `quillon info` reads of the pendulum's files is run in tests/cli/pendulum_example.
TEST(PageExamples, OfTheFilesThatInfoDoesNotReadCanBeRead) {
    const CleanStatus clean;
    const std::string folder = (root / "examples" / "pendulum").string();
    LqLimitsData limits;
    LqLimitsData older;
    LqMeasuredData measured;
    readLimitsFile(limits, (folder + "/pendulum.limits").c_str(), true);
    readLimitsFile(older, (folder + "/pendulum.older_limits").c_str(), true);
    measured.readFile((folder + "/pendulum.measured").c_str());
    EXPECT_THAT(chainOf(), IsEmpty());
    EXPECT_EQ(measured.count(), 2);

    // The page says that both hold the same limits, but for the weight and the guide.
    for (LqLimitsData* data : {&limits, &older}) {
        data->setLowerWeight(1, 0);
        data->setGuideWeight(2, 0);
    }
    EXPECT_TRUE(limits.equalEffective(older));
}

TEST(PageExamples, ProgramsPrintWhatThePageShows) {
    const support::ScratchDirectory scratch;
    for (const fs::path& folder : {root / "examples" / "pendulum", root / "docs" / "programs"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            fs::copy(entry.path(), scratch / entry.path().filename().string());
        }
    }
    int count = 0;
    for (const Page& page : allPages()) {
        for (const PageNote& note : page.notes) {
            if (note.kind == "output") {
                std::vector<std::string> arguments = wordsOf(note.content);
                arguments.front() = std::string(QUILLON_GUIDE_PROGRAMS) + "/guide_" + arguments.front();
                const support::ChildResult run =
                    support::runProgram(arguments, {.directory = scratch.path()});
                EXPECT_EQ(run.out + run.err, note.block) << note.content;
                ++count;
            }
        }
    }
    EXPECT_GE(count, 5);
}

TEST(Version, StandsInOnePlaceAndAtTheTopOfTheChanges) {
    const std::string changes = support::readBytes(root / "CHANGELOG.md");
    const std::size_t newest = changes.find("\n## ") + 4;
    EXPECT_EQ(changes.substr(newest, changes.find('\n', newest) - newest), version);

    for (const char* folder : {"cmake", "docs", "quillon", "scripts", "bench", ".ci"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            if (entry.is_regular_file() && entry.path().filename() != "Version.h") {
                EXPECT_EQ(support::readBytes(entry.path()).find(version), std::string::npos) << entry.path();
            }
        }
    }
}

TEST(PageLinks, LeadToFilesThatAreThere) {
    static const std::regex link("\\]\\(([^)#]+)(?:#[^)]*)?\\)");
    std::vector<Page> pages = allPages();
    for (const char* name : {"README.md", "CONTRIBUTING.md", "CHANGELOG.md"}) {
        pages.push_back(pageAt(root / name));
    }
    for (const Page& page : pages) {
        for (std::sregex_iterator match(page.text.begin(), page.text.end(), link), end; match != end;
             ++match) {
            EXPECT_TRUE(fs::exists(page.path.parent_path() / (*match)[1].str()))
                << page.path << ": " << (*match)[1];
        }
    }
}

TEST(PageLinks, TheIndexNamesEveryPage) {
    const std::string index = support::readBytes(root / "docs" / "README.md");
    for (const Page& page : allPages()) {
        const std::string name = fs::relative(page.path, root / "docs").string();
        EXPECT_TRUE(name == "README.md" || index.find("](" + name + ")") != std::string::npos) << name;
    }
}

} // namespace
} // namespace quillon::test
