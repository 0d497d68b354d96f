// The messages that the documentation tells are texts of the sources.

#include "tests/project/Pages.h"
#include "tests/project/SourceTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Whether a text of the sources is the whole message.
bool isTextOf(const std::string& message, const std::vector<std::string>& literals) {
    const TextPattern pattern = pagePattern(message);
    return std::any_of(literals.begin(), literals.end(), [&](const std::string& literal) {
        const TextPattern format = formatPattern(literal);
        return fits(format, sampleOf(pattern)) || fits(pattern, sampleOf(format));
    });
}

/// Whether the piece of a message stands in one text of the sources, or runs from one over into another.
bool isInTexts(const std::string& piece, const std::vector<std::string>& literals) {
    const auto holds = [&](const auto& test) { return std::any_of(literals.begin(), literals.end(), test); };
    if (holds([&](const std::string& literal) { return literal.find(piece) != std::string::npos; })) {
        return true;
    }
    for (std::size_t split = 1; split < piece.size(); ++split) {
        const std::string_view left(piece.data(), split);
        const std::string_view right(piece.data() + split, piece.size() - split);
        if (holds([&](const std::string& literal) { return literal.ends_with(left); }) &&
            holds([&](const std::string& literal) { return literal.starts_with(right); })) {
            return true;
        }
    }
    return false;
}

/// Whether the message can be put together from texts of the sources.
bool isMadeOf(const std::string& message, const std::vector<std::string>& literals) {
    const std::vector<std::string> pieces = pagePattern(message).pieces;
    return std::all_of(pieces.begin(), pieces.end(),
                       [&](const std::string& piece) { return isInTexts(piece, literals); });
}

TEST(PageMessages, AreTextsOfTheSourcesThatThePageNames) {
    int count = 0;
    for (const Page& page : allPages()) {
        std::vector<std::string> literals = literalsNamedBy(page, "messages");
        const std::vector<std::string> others = literalsNamedBy(page, "excerpts");
        literals.insert(literals.end(), others.begin(), others.end());
        std::vector<std::string> strange;
        for (const std::string& message : page.messages) {
            ++count;
            if (!isTextOf(message, literals) && !isMadeOf(message, literals)) {
                strange.push_back(message);
            }
        }
        EXPECT_THAT(strange, IsEmpty()) << page.path;
    }
    EXPECT_GT(count, 250);
}

TEST(PageMessages, StandOnceOnTheirPage) {
    for (const Page& page : allPages()) {
        std::vector<std::string> messages = page.messages;
        std::sort(messages.begin(), messages.end());
        EXPECT_EQ(std::adjacent_find(messages.begin(), messages.end()), messages.end()) << page.path;
    }
}

TEST(PageMessages, TheCheckSeesWhatIsWrong) {
    const std::vector<std::string> literals = stringLiterals(
        "#include \"a b.h\"\n"
        "f(\"Unable to read '%s' \" // why\n \"twice.\\n\"); g('\"', \"Body \", \" is \\\"x\\\".\");\n");
    EXPECT_THAT(literals, ElementsAre("Unable to read '%s' twice. ", "Body ", " is \"x\"."));
    EXPECT_TRUE(isTextOf("Unable to read '<path>' twice.", literals));
    EXPECT_FALSE(isTextOf("Unable to read '<path>'.", literals));
    EXPECT_TRUE(isMadeOf("Body <name> is \"x\".", literals));
    EXPECT_FALSE(isMadeOf("Body <name> was \"x\".", literals));
    EXPECT_TRUE(isMadeOf("<path> is \"x\".Body <name>", literals));
    EXPECT_FALSE(isMadeOf("<path> is \"x\". Body <name>", literals));
}

TEST(PageMessages, TheTablesOfAPageAreSeen) {
    const std::string text =
        "<!-- messages: a.cpp\n     b.cpp -->\n\n| Message | What to do |\n|---|---|\n| `One.` | x |\n\n"
        "| Other | y |\n|---|---|\n| `Two.` | `Three` |\n\n<!-- example: f -->\n```\nab\n```\n";
    EXPECT_THAT(messagesOf(text), ElementsAre("One."));
    EXPECT_THAT(codeSpansOf(text), ElementsAre("One.", "Two.", "Three"));
    const std::vector<PageNote> notes = notesOf(text);
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_EQ(notes[0].content, "a.cpp b.cpp");
    EXPECT_EQ(notes[1].content, "f");
    EXPECT_EQ(notes[1].block, "ab\n");
}

} // namespace
} // namespace quillon::test
