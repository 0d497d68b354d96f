#include "quillon/core/LmStr.h"

#include "tests/core/StrForms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::forEachForm;
using test::textOf;
using test::textsOf;
using testing::ElementsAre;

/// What a string holds, with the null string apart from the empty one.
using Text = std::optional<std::string>;
constexpr std::nullopt_t null = std::nullopt;

Text held(const LmStr& text) {
    return text.isNull() ? Text() : Text(textOf(text));
}

struct TokenCase {
    const char* source;
    const char* delimiters;
    Text token;
    Text rest;
};

const TokenCase tokenCases[] = {
    {"a,b", ",", "a", "b"},
    {"a", ",", "a", null},
    {"a,", ",", "a", ""},
    {"a,,b", ",", "a", ",b"},
    {",,a", ",", "a", null},
    {",,a,", ",", "a", ""},
    {",a b;c", ", ;", "a", "b;c"},
    {",,", ",", null, null},
    {"", ",", null, null},
    {"  one two ", " ", "one", "two "},
    {"one \t two", " \t", "one", "\t two"},
    {"one two", "", "one two", null},
    {"one\ntwo", " ", "one\ntwo", null},
};

TEST(LmStrTokens, FirstTokenLeavesTheSource) {
    for (const TokenCase& each : tokenCases) {
        forEachForm(each.source, [&each](LmStr& text) {
            EXPECT_EQ(held(text.firstToken(each.delimiters)), each.token);
            EXPECT_EQ(held(text), each.source);
        });
    }
    EXPECT_TRUE(LmStr().firstToken(",").isNull());
}

TEST(LmStrTokens, PopTokenTakesTheTokenAndOneDelimiter) {
    for (const TokenCase& each : tokenCases) {
        forEachForm(each.source, [&each](LmStr& text) {
            EXPECT_EQ(held(text.popToken(each.delimiters)), each.token);
            EXPECT_EQ(held(text), each.rest);
        });
    }
    LmStr text;
    EXPECT_TRUE(text.popToken(",").isNull());
    EXPECT_TRUE(text.isNull());
}

TEST(LmStrTokens, PoppingGoesThroughAText) {
    LmStr text(" one  two three ");
    EXPECT_EQ(held(text.popToken(" ")), "one");
    EXPECT_EQ(held(text.popToken(" ")), "two");
    EXPECT_EQ(held(text.popToken(" ")), "three");
    EXPECT_EQ(held(text), "");
    EXPECT_EQ(held(text.popToken(" ")), null);
    EXPECT_EQ(held(text), null);
}

TEST(LmStrTokens, PopLineDividesAtTheFirstNewline) {
    const struct {
        const char* source;
        Text line;
        Text rest;
    } cases[] = {{"a\nb\nc", "a", "b\nc"}, {"a\n", "a", ""},       {"a", "a", null},
                 {"", "", null},           {"\n", "", ""},         {"\na", "", "a"},
                 {"\n\n", "", "\n"},       {"a\r\nb", "a\r", "b"}, {"a\rb", "a\rb", null},
                 {" a \n b", " a ", " b"}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            EXPECT_EQ(held(text.popLine()), each.line);
            EXPECT_EQ(held(text), each.rest);
        });
    }
    LmStr text;
    EXPECT_TRUE(text.popLine().isNull());
    EXPECT_TRUE(text.isNull());
}

TEST(LmStrTokens, SplitKeepsEmptyPieces) {
    const struct {
        const char* source;
        std::vector<std::string> pieces;
    } cases[] = {{"", {""}},
                 {"abc", {"abc"}},
                 {"a,b,c", {"a", "b", "c"}},
                 {"a,b,", {"a", "b", ""}},
                 {",", {"", ""}},
                 {",a", {"", "a"}},
                 {"a,,b", {"a", "", "b"}},
                 {",,", {"", "", ""}},
                 {" a , b ", {" a ", " b "}}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            const LmDArray<LmStr> pieces = text.split(',');
            EXPECT_EQ(textsOf(pieces), each.pieces);
            for (const LmStr& piece : pieces) {
                EXPECT_FALSE(piece.isNull());
            }
            EXPECT_EQ(held(text), each.source);
        });
    }
    EXPECT_THAT(textsOf(LmStr("a\nb\r\n\nc").lines()), ElementsAre("a", "b\r", "", "c"));
    EXPECT_THAT(textsOf(LmStr("a\n").lines()), ElementsAre("a", ""));
    EXPECT_THAT(textsOf(LmStr("").lines()), ElementsAre(""));
}

TEST(LmStrTokens, IdentifiersBeginWithALetterOrUnderscore) {
    const struct {
        const char* source;
        int length;
    } cases[] = {{"foo_1 bar", 5}, {"_", 1},    {"_9z", 3},       {"1foo", 0},   {"", 0},    {" a", 0},
                 {"a-b", 1},       {"Z9_a", 4}, {"\xE9t\xE9", 0}, {"et\xE9", 2}, {"a.b", 1}, {"-a", 0},
                 {"@", 0},         {"[", 0},    {"a[", 1},        {"z{", 1}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) { EXPECT_EQ(text.identifierLength(), each.length); });
    }
}

TEST(LmStrNames, TrailingNumberIsSplitOff) {
    const struct {
        const char* source;
        const char* stem;
        std::int64_t number;
        const char* next;
    } cases[] = {{"Arm", "Arm", 1, "Arm2"},
                 {"Arm2", "Arm", 2, "Arm3"},
                 {"A09", "A", 9, "A10"},
                 {"A099", "A", 99, "A100"},
                 {"", "", 1, "2"},
                 {"7", "", 7, "8"},
                 {"99", "", 99, "100"},
                 {"a1b", "a1b", 1, "a1b2"},
                 {"a1b23", "a1b", 23, "a1b24"},
                 {"x-5", "x-", 5, "x-6"},
                 {"x 5", "x ", 5, "x 6"},
                 {"A0", "A", 0, "A1"},
                 {"A000", "A", 0, "A1"},
                 {"A\xB2", "A\xB2", 1,
                  "A\xB2"
                  "2"}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& source) {
            LmStr stem("old");
            std::int64_t number = -77;
            splitTrailingNumber(stem, number, source);
            EXPECT_EQ(held(stem), each.stem);
            EXPECT_EQ(number, each.number);
            EXPECT_EQ(held(nextNumbered(source)), each.next);
            EXPECT_EQ(held(source), each.source);
        });
    }
}

TEST(LmStrNames, TheSourceMayBeTheStem) {
    LmStr name("Arm12");
    std::int64_t number = 0;
    splitTrailingNumber(name, number, name);
    EXPECT_EQ(held(name), "Arm");
    EXPECT_EQ(number, 12);
    splitTrailingNumber(name, number, name);
    EXPECT_EQ(held(name), "Arm");
    EXPECT_EQ(number, 1);
}

TEST(LmStrNames, TrailingSlashesAreCounted) {
    const struct {
        const char* source;
        int count;
    } cases[] = {{"", 0}, {"/", 1}, {"//", 2}, {"a/b", 0}, {"a/b/", 1}, {"a//b///", 3}, {"/a", 0}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) { EXPECT_EQ(text.trailingSlashCount(), each.count); });
    }
}

// --- Word wrap -----------------------------------------------------------------------------------

struct WrapCase {
    std::string source;
    int width;
    int tabWidth;
    std::string result;
};

void checkWraps(const std::vector<WrapCase>& cases) {
    for (const WrapCase& each : cases) {
        SCOPED_TRACE(testing::Message() << "width " << each.width << ", tabs of " << each.tabWidth);
        forEachForm(each.source, [&each](LmStr& text) {
            const LmStr wrapped = text.wordWrap(each.width, each.tabWidth);
            EXPECT_FALSE(wrapped.isNull());
            EXPECT_EQ(textOf(wrapped), each.result);
            EXPECT_EQ(textOf(text), each.source);
        });
    }
}

TEST(LmStrWordWrap, BreaksAtTheLastBreakBeforeTheWidth) {
    checkWraps({
        {"", 70, 8, ""},
        {"aaaa bbbb", 5, 8, "aaaa\nbbbb"},
        {"aaaa bbbb", 8, 8, "aaaa\nbbbb"},
        {"aaaa bbbb", 9, 8, "aaaa bbbb"},
        {"aaaaa bbb", 5, 8, "aaaaa\nbbb"},
        {"aa bb cc dd", 5, 8, "aa bb\ncc dd"},
        {"aa bb cc dd", 4, 8, "aa\nbb\ncc\ndd"},
        {"a b c", 1, 8, "a\nb\nc"},
    });
}

TEST(LmStrWordWrap, AWordLongerThanTheWidthStaysWhole) {
    const std::string word(200, 'w');
    checkWraps({
        {word, 70, 8, word},
        {"abcdefgh ij", 5, 8, "abcdefgh\nij"},
        {"ij abcdefgh kl", 5, 8, "ij\nabcdefgh\nkl"},
        {word + " " + word, 70, 8, word + "\n" + word},
    });
}

TEST(LmStrWordWrap, BlanksAtTheBreakVanishWithOneNewline) {
    checkWraps({
        {"aaaaa   ", 5, 8, "aaaaa\n"},
        {"aaaaa    bb", 5, 8, "aaaaa\nbb"},
        {"aaaaa \t bb", 5, 8, "aaaaa\nbb"},
        {"aaaa  \nb", 4, 8, "aaaa\nb"},
        {"aaaa  \n\nb", 4, 8, "aaaa\n\nb"},
        {"aaaa bb  \ncc", 6, 8, "aaaa\nbb  \ncc"},
        {"   abc def", 5, 8, "  \nabc\ndef"},
    });
}

TEST(LmStrWordWrap, NewlinesOfTheTextStay) {
    checkWraps({
        {"ab\ncd", 70, 8, "ab\ncd"},
        {"ab  \n  cd", 70, 8, "ab  \n  cd"},
        {"\nab", 70, 8, "\nab"},
        {"\n\nab", 70, 8, "\n\nab"},
        {"ab\n\ncd", 70, 8, "ab\n\ncd"},
        {"ab\n\n\n\ncd", 70, 8, "ab\n\n\n\ncd"},
        {"ab\n", 70, 8, "ab\n"},
        {"aaa\nbb cc", 5, 8, "aaa\nbb cc"},
    });
}

TEST(LmStrWordWrap, ANewlineAtTheStartOfALineTakesAColumn) {
    checkWraps({
        {"cccc d", 6, 8, "cccc d"},
        {"\ncccc d", 6, 8, "\ncccc\nd"},
        {"ab\n\ncccc d", 6, 8, "ab\n\ncccc\nd"},
        {"ab\ncccc d", 6, 8, "ab\ncccc d"},
    });
}

TEST(LmStrWordWrap, TabsGoToTheNextStop) {
    checkWraps({
        {"a\tb", 9, 8, "a\tb"},
        {"a\tb", 8, 8, "a\nb"},
        {"a\tb", 4, 4, "a\nb"},
        {"a\tb", 5, 4, "a\tb"},
        {"\tabc", 8, 8, "\tabc"},
        {"a\t\tb", 16, 8, "a\t\nb"},
        {"aaaaaaa\tb", 9, 8, "aaaaaaa\tb"},
        {"aaaaaaaa\tb", 9, 8, "aaaaaaaa\nb"},
    });
}

TEST(LmStrWordWrap, OfMessagesIsAtSeventyColumns) {
    const std::string sixtyNine(69, 'x');
    const std::string seventy(70, 'x');
    checkWraps({
        {sixtyNine + " y", 70, 8, sixtyNine + "\ny"},
        {sixtyNine.substr(1) + " y", 70, 8, sixtyNine.substr(1) + " y"},
        {seventy + " y", 70, 8, seventy + "\ny"},
        {seventy, 70, 8, seventy},
        {"a " + seventy, 70, 8, "a\n" + seventy},
    });
}

} // namespace
} // namespace quillon
