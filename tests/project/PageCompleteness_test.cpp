// What the sources say to their users stands in the documentation.

#include "tests/project/Pages.h"
#include "tests/project/SourceTexts.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace quillon::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

/// Texts with a blank between words are messages, pieces of one, or the names of places in one.
bool readsAsMessage(const std::string& literal) {
    static const std::regex form(R"(.*[A-Za-z%'"] +[A-Za-z%'"(:].*)");
    static const std::regex comment(R"( *;? *#.*|   .*)");
    return std::regex_match(literal, form) && !std::regex_match(literal, comment);
}

/// Whether a text of the sources stands in the page: as a message, or as a piece of one.
bool standsIn(const Page& page, const std::string& literal) {
    const TextPattern format = formatPattern(literal);
    return std::any_of(page.codeSpans.begin(), page.codeSpans.end(), [&](const std::string& span) {
        const TextPattern pattern = pagePattern(span);
        const std::string sample = sampleOf(pattern);
        return fits(format, sample) || fits(pattern, sampleOf(format)) ||
               std::all_of(format.pieces.begin(), format.pieces.end(),
                           [&](const std::string& piece) { return sample.find(piece) != std::string::npos; });
    });
}

TEST(PageCompleteness, EveryMessageOfTheSourcesOfAPageStandsInIt) {
    for (const Page& page : allPages()) {
        std::vector<std::string> missing;
        for (const std::string& literal : literalsNamedBy(page, "messages")) {
            if (readsAsMessage(literal) && !standsIn(page, literal)) {
                missing.push_back(literal);
            }
        }
        EXPECT_THAT(missing, IsEmpty()) << page.path;
    }
}

TEST(PageCompleteness, EveryWordOfTheFormatsOfAPageStandsInIt) {
    static const std::regex word("[A-Za-z_]{3,}");
    for (const Page& page : allPages()) {
        std::vector<std::string> missing;
        for (const std::string& literal : literalsNamedBy(page, "words")) {
            for (std::sregex_iterator match(literal.begin(), literal.end(), word), end; match != end;
                 ++match) {
                if (page.text.find(match->str()) == std::string::npos) {
                    missing.push_back(match->str());
                }
            }
        }
        EXPECT_THAT(missing, IsEmpty()) << page.path;
    }
}

TEST(PageCompleteness, EverySourceThatReportsIsNamedByAPage) {
    static const std::regex report("push(Error|Warning)f?\\(|std::cerr <<|, stderr\\)");
    std::set<std::string> named;
    for (const Page& page : allPages()) {
        for (const PageNote& note : page.notes) {
            if (note.kind == "messages" || note.kind == "excerpts") {
                const std::vector<std::string> files = wordsOf(note.content);
                named.insert(files.begin(), files.end());
            }
        }
    }
    const fs::path root = QUILLON_SOURCE_DIR;
    for (const auto& entry : fs::recursive_directory_iterator(root / "quillon")) {
        const std::string name = fs::relative(entry.path(), root).string();
        if (entry.path().extension() == ".cpp" &&
            std::regex_search(support::readBytes(entry.path()), report)) {
            EXPECT_TRUE(named.contains(name)) << name;
        }
    }
}

TEST(PageCompleteness, TheCheckSeesWhatIsWrong) {
    const Page page{"", "", {}, {"Unable to read '<path>' twice.", "Body <name> is \"x\"."}, {}};
    EXPECT_TRUE(standsIn(page, "Unable to read '%s' twice."));
    EXPECT_TRUE(standsIn(page, " is \"x\"."));
    EXPECT_FALSE(standsIn(page, "Unable to write '%s' twice."));
    EXPECT_TRUE(readsAsMessage("Unable to"));
    EXPECT_FALSE(readsAsMessage("    # of bodies, body names"));
    EXPECT_FALSE(readsAsMessage("GUIDE"));
}

} // namespace
} // namespace quillon::test
