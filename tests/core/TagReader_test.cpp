#include "quillon/core/TagReader.h"

#include "quillon/core/LmSStream.h"
#include "tests/core/StrForms.h"
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
using test::error;
using test::StatusChain;
using test::takeChain;
using test::textOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// An item, as tests compare it.
struct Item {
    std::string tag;
    std::string value;
    bool simple;

    friend bool operator==(const Item&, const Item&) = default;
    friend std::ostream& operator<<(std::ostream& output, const Item& item) {
        return output << item.tag << (item.simple ? ": " : " { ") << testing::PrintToString(item.value);
    }
};

/// All items of a text, and what was reported in the end.
struct Items {
    std::vector<Item> items;
    StatusChain chain;

    friend bool operator==(const Items&, const Items&) = default;
    friend std::ostream& operator<<(std::ostream& output, const Items& all) {
        return output << testing::PrintToString(all.items) << ", " << testing::PrintToString(all.chain);
    }
};

Items itemsOf(std::istream& input) {
    Items all;
    LmStatus status;
    for (;;) {
        LmStr tag;
        LmStr value;
        int isSimple = -77;
        if (!readTag(input, tag, value, &isSimple, status)) {
            EXPECT_TRUE(status.errorStands());
            break;
        }
        EXPECT_FALSE(status.hasEntries());
        if (tag.isNull()) {
            break;
        }
        EXPECT_TRUE(isSimple == 0 || isSimple == 1);
        all.items.push_back({textOf(tag), textOf(value), isSimple == 1});
    }
    all.chain = takeChain(status);
    EXPECT_FALSE(currentStatus().hasEntries());
    return all;
}

Items itemsOf(const std::string& text) {
    LmISStream memory(text.c_str());
    const Items all = itemsOf(memory);
    std::istringstream standard(text);
    EXPECT_EQ(itemsOf(standard), all) << "on a string stream";
    return all;
}

Items failure(const std::string& message) {
    return {{}, {error(message)}};
}

Item simple(const std::string& tag, const std::string& value) {
    return {tag, value, true};
}

Item block(const std::string& tag, const std::string& value) {
    return {tag, value, false};
}

struct ItemCase {
    std::string text;
    Items all;
};

void checkItems(const std::vector<ItemCase>& cases) {
    for (const ItemCase& each : cases) {
        EXPECT_EQ(itemsOf(each.text), each.all) << testing::PrintToString(each.text);
    }
}

TEST(ReadTag, LeavesTheArgumentsAtTheEndOfTheInput) {
    for (const char* text : {"", "\n", " \t\n\r\n", "# only\n  # comments", "#"}) {
        LmISStream input(text);
        LmStr tag("old tag");
        LmStr value("old value");
        LmStatus status;
        EXPECT_TRUE(readTag(input, tag, value, nullptr, status)) << text;
        EXPECT_STREQ(tag.c_str(), "old tag");
        EXPECT_STREQ(value.c_str(), "old value");
        EXPECT_FALSE(status.hasEntries());
    }
}

TEST(ReadTag, SimpleItemsAreDividedAtTheFirstColon) {
    checkItems({
        {"FOO: a:b\n", {{simple("FOO", "a:b")}, {}}},
        {"FOO:a", {{simple("FOO", "a")}, {}}},
        {"  FOO bar \t:  a b \t\r\n", {{simple("FOO bar", "a b")}, {}}},
        {"FOO:", {{simple("FOO", "")}, {}}},
        {"FOO:\nBAR: x\n", {{simple("FOO", ""), simple("BAR", "x")}, {}}},
        {": x", {{simple("", "x")}, {}}},
        {":", {{simple("", "")}, {}}},
        {"FOO { # x: y", {{simple("FOO { # x", "y")}, {}}},
        {"FOO: {\n", {{simple("FOO", "{")}, {}}},
        {"FOO: a # b\n", {{simple("FOO", "a # b")}, {}}},
        {"} x: y\n", {{simple("} x", "y")}, {}}},
        {"\n # c: d\n\n\tFOO: a\n#x\nBAR: b", {{simple("FOO", "a"), simple("BAR", "b")}, {}}},
    });
}

TEST(ReadTag, ABackslashAtTheEndOfAValueContinuesIt) {
    checkItems({
        {"FOO: a\\\nb\nBAR: c", {{simple("FOO", "a\nb"), simple("BAR", "c")}, {}}},
        {"FOO: a\\\n  b \\\n  c  \n", {{simple("FOO", "a\n  b \n  c")}, {}}},
        {"FOO: a\\\n# b\n", {{simple("FOO", "a\n# b")}, {}}},
        {"FOO: a\\\nBAR: b\n", {{simple("FOO", "a\nBAR: b")}, {}}},
        {"FOO: a\\", {{simple("FOO", "a")}, {}}},
        {"FOO: a\\\n", {{simple("FOO", "a")}, {}}},
        {"FOO: a\\\n\nBAR: b\n", {{simple("FOO", "a"), simple("BAR", "b")}, {}}},
        {"FOO: a\\\\\nb\n", {{simple("FOO", "a\\\nb")}, {}}},
        {"FOO:\\\n b\n", {{simple("FOO", "b")}, {}}},
        {"FOO: a\\\r\nb\r\n", {{simple("FOO", "a\nb")}, {}}},
        // A blank behind the backslash makes it plain text.
        {"FOO: a\\ \nBAR: b\n", {{simple("FOO", "a\\"), simple("BAR", "b")}, {}}},
    });
}

TEST(ReadTag, BlocksGiveTheirTextWithoutIndentationAndComments) {
    checkItems({
        {"BODY {\n  NAME: Pelvis\n  # a remark\n  MAP {\n    A: 1\n  }\n}",
         {{block("BODY", "NAME: Pelvis\n\nMAP {\nA: 1\n}\n")}, {}}},
        {"FOO {\n}\n", {{block("FOO", "")}, {}}},
        {"FOO{\n}", {{block("FOO", "")}, {}}},
        {"{\n}", {{block("", "")}, {}}},
        {" \tFOO bar\t{ \t\n}", {{block("FOO bar", "")}, {}}},
        {"FOO { # opens\n  a\n} # closes\nBAR: b\n", {{block("FOO", "a\n"), simple("BAR", "b")}, {}}},
        {"FOO {\n a  \n\t b\t\n} \t\nBAR {\n}", {{block("FOO", "a  \nb\t\n"), block("BAR", "")}, {}}},
        {"FOO {\n\n  \n # x\n}\n", {{block("FOO", "\n\n\n")}, {}}},
        {"FOO {\r\n  a\r\n  # c\r\n  B {\r\n  }\r\n}\r\nBAR: b\r\n",
         {{block("FOO", "a\n\nB {\n}\n"), simple("BAR", "b")}, {}}},
        {"FOO {\na # b\n}", {{block("FOO", "a # b\n")}, {}}},
        {"FOO {\n}#c\nBAR: b", {{block("FOO", ""), simple("BAR", "b")}, {}}},
        {"FOO {\na\rb\n  c\n}", {{block("FOO", "ab\nc\n")}, {}}},
    });
}

TEST(ReadTag, OnlyABraceAtTheEndOfALineOpensANestedBlock) {
    checkItems({
        {"A {\n B {\n }\n}\n", {{block("A", "B {\n}\n")}, {}}},
        {"A {\n B { x\n}\n", {{block("A", "B { x\n")}, {}}},
        {"A {\n B { \t\n }\n}\n", {{block("A", "B { \t\n}\n")}, {}}},
        {"A {\n B { # c\n }\n}\n", {{block("A", "B { # c\n}\n")}, {}}},
        {"A {\n B {# c {\n }\n}\n", {{block("A", "B {# c {\n}\n")}, {}}},
        {"A {\n {{\n }\n}\n", {{block("A", "{{\n}\n")}, {}}},
        {"A {\n { { # c\n }\n}\n", {{block("A", "{ { # c\n}\n")}, {}}},
        {"A {\n {\n {\n }\n }\n}\n", {{block("A", "{\n{\n}\n}\n")}, {}}},
        {"A {\n x: y {\n }\n}\n", {{block("A", "x: y {\n}\n")}, {}}},
    });
}

TEST(ReadTag, OnlyABraceAtTheStartOfALineCloses) {
    checkItems({
        {"A {\n x }\n}\n", {{block("A", "x }\n")}, {}}},
        {"A {\n B {\n } # c\n C\n}\n", {{block("A", "B {\n}\nC\n")}, {}}},
        {"A {\n B {\n } \t\n}\n", {{block("A", "B {\n}\n")}, {}}},
        {"A {\n {}\n}\n", {{block("A", "{}\n")}, {}}},
    });
}

TEST(ReadTag, AfterABackslashAtItsEndALineOfABlockIsStoredWhole) {
    checkItems({
        {"A {\n x\\\n   }\n y\n}\n", {{block("A", "x\\\n   }\ny\n")}, {}}},
        {"A {\n x\\\n  # c {\n}\n", {{block("A", "x\\\n  # c {\n")}, {}}},
        {"A {\n x\\\n  y\\\n  }\n}\n", {{block("A", "x\\\n  y\\\n  }\n")}, {}}},
        {"A {\n x\\\n\n y\n}\n", {{block("A", "x\\\n\ny\n")}, {}}},
        {"A {\n \\\n }\n}\n", {{block("A", "\\\n }\n")}, {}}},
        // Within a line a backslash protects nothing.
        {"A {\n x \\{\n }\n}\n", {{block("A", "x \\{\n}\n")}, {}}},
        {"A {\n x\\ \n}\n", {{block("A", "x\\ \n")}, {}}},
        {"A {\n \\}\n}\n", {{block("A", "\\}\n")}, {}}},
        // Two of them: the second one is at the end.
        {"A {\n x\\\\\n }\n}\n", {{block("A", "x\\\\\n }\n")}, {}}},
        // A comment line is dropped with its backslash.
        {"A {\n # c\\\n}\n", {{block("A", "\n")}, {}}},
    });
}

TEST(ReadTag, ALineWithoutColonOrBraceIsAnError) {
    checkItems({
        {"FOO", failure("No ':' or '{' following tag 'FOO'.")},
        {"  FOO bar \nX: y", failure("No ':' or '{' following tag 'FOO bar '.")},
        {"}", failure("No ':' or '{' following tag '}'.")},
        {"A: b\nFOO\n", {{simple("A", "b")}, {error("No ':' or '{' following tag 'FOO'.")}}},
    });
}

TEST(ReadTag, ALineInAnErrorIsAFormatWithoutArguments) {
    checkItems({
        {"50%% of %d", failure("No ':' or '{' following tag '50% of 0'.")},
        {"a%sb%5sc", failure("No ':' or '{' following tag 'ab     c'.")},
        {"%n%n%n%n", failure("No ':' or '{' following tag ''.")},
        {"%5d|%-5d|%05d|%x|%u|%i|%o|%X|",
         failure("No ':' or '{' following tag '    0|0    |00000|0|0|0|0|0|'.")},
        {"%f|%.2f|%8.3f|%e|%g|",
         failure("No ':' or '{' following tag '0.000000|0.00|   0.000|0.000000e+00|0|'.")},
        {"%ld|%lld|%hd|%zu|%Lf|", failure("No ':' or '{' following tag '0|0|0|0|0.000000|'.")},
    });
    const Items longLine = itemsOf(std::string(2000, 'x'));
    EXPECT_EQ(longLine, failure("No ':' or '{' following tag '" + std::string(1023 - 29, 'x')));
}

TEST(ReadTag, StrangeConversionsInAnErrorDoNoHarm) {
    for (const char* line :
         {"100%", "%",  "%%%",       "% ",   "%-", "%5",          "%.",           "%.*d",
          "%*d",  "%l", "%1$s %2$n", "%hhn", "%m", "%999999999d", "%.999999999f", "%99999999999999999999d",
          "%S",   "%C", "%c",        "%p",   "%a", "%v"}) {
        const Items all = itemsOf(line);
        EXPECT_TRUE(all.items.empty()) << line;
        ASSERT_EQ(all.chain.size(), 1U) << line;
        EXPECT_TRUE(all.chain[0].text.starts_with("No ':' or '{' following tag '")) << line;
    }
}

TEST(ReadTag, NothingButACommentFollowsTheOpeningBrace) {
    checkItems({
        {"FOO { x\n}", failure("Invalid characters trailing '{' for 'FOO'.")},
        {" FOO bar {{\n}", failure("Invalid characters trailing '{' for 'FOO bar'.")},
        {"FOO {}", failure("Invalid characters trailing '{' for 'FOO'.")},
        {"50%d { x", failure("Invalid characters trailing '{' for '50%d'.")},
    });
}

TEST(ReadTag, NothingButACommentFollowsTheClosingBrace) {
    checkItems({
        {"A {\n} x\n", failure("Invalid character ('x') trailing '}' for 'A'.")},
        {"A {\n}}\n", failure("Invalid character ('}') trailing '}' for 'A'.")},
        {"A {\n B {\n }  : y\n}\n", failure("Invalid character (':') trailing '}' for 'A'.")},
        {"A {\n B {\n }{\n}\n", failure("Invalid character ('{') trailing '}' for 'A'.")},
        {"50%d {\n}\\\n", failure("Invalid character ('\\') trailing '}' for '50%d'.")},
        {"A {\n}\xE9", failure("Invalid character ('\xE9') trailing '}' for 'A'.")},
    });
}

TEST(ReadTag, ABlockThatIsNeverClosedNamesItsTag) {
    const Items atTheEnd = failure("Hit end of file without reading '}' for tag FOO");
    checkItems({
        {"FOO {", atTheEnd},
        {"FOO {\n", atTheEnd},
        {"FOO {\n  ", atTheEnd},
        {"FOO {\n a", atTheEnd},
        {"FOO {\n a\n", atTheEnd},
        {"FOO {\n # c", atTheEnd},
        {"FOO {\n B {\n }", atTheEnd},
        {"FOO {\n B {\n } # c", atTheEnd},
        {"FOO {\n B {", atTheEnd},
        {"FOO {\n B { # c", atTheEnd},
        {"FOO {\n a\\", atTheEnd},
        {"FOO {\n a\\\n", atTheEnd},
        {"FOO {\n a\\\n}", atTheEnd},
        {"A: 1\nFOO {\n BAR {\n }\n", {{simple("A", "1")}, atTheEnd.chain}},
        // The tag is pushed as it stands: neither a format nor cut.
        {"50%d%n {", failure("Hit end of file without reading '}' for tag 50%d%n")},
        {std::string(3000, 'x') + " {",
         failure("Hit end of file without reading '}' for tag " + std::string(3000, 'x'))},
    });
}

TEST(ReadTag, LinesOfEveryLengthComeWhole) {
    for (const std::size_t length :
         {76U, 77U, 78U, 79U, 80U, 81U, 157U, 158U, 159U, 237U, 1023U, 1024U, 1025U, 5000U}) {
        const std::string line(length, 'x');
        checkItems({
            {"A {\n" + line + "\n}\nB: c", {{block("A", line + "\n"), simple("B", "c")}, {}}},
            {"A {\n  " + line + "\r\n}\r\nB: c", {{block("A", line + "\n"), simple("B", "c")}, {}}},
            {"A {\n" + line + "{\n}\n}\n", {{block("A", line + "{\n}\n")}, {}}},
            {"A {\n" + line + "\\\n  }\n}\n", {{block("A", line + "\\\n  }\n")}, {}}},
            {"A {\nx{ # " + line + "\n}\n}\n", {{block("A", "x{ # " + line + "\n}\n")}, {}}},
            {"A {\n# " + line + "\n} # " + line + "\nB: c", {{block("A", "\n"), simple("B", "c")}, {}}},
            {"A {\n" + std::string(length, ' ') + "}\nB: c", {{block("A", ""), simple("B", "c")}, {}}},
            {"A {\n}" + std::string(length, ' ') + "\nB: c", {{block("A", ""), simple("B", "c")}, {}}},
            {"A {\ny\\\n" + line + "}\n}\n", {{block("A", "y\\\n" + line + "}\n")}, {}}},
            {"A {\n" + line + " } {\n}\n}\n", {{block("A", line + " } {\n}\n")}, {}}},
            {"A: " + line + "\nB: c", {{simple("A", line), simple("B", "c")}, {}}},
        });
    }
}

TEST(ReadTag, ReportsOnTheGivenStatusOrTheCurrentOne) {
    const CleanStatus clean;
    LmISStream first("FOO\n");
    LmStr tag;
    LmStr value;
    LmStatus own;
    EXPECT_FALSE(readTag(first, tag, value, nullptr, own));
    EXPECT_FALSE(currentStatus().hasEntries());
    LmISStream second("FOO\n");
    EXPECT_FALSE(readTag(second, tag, value));
    EXPECT_THAT(takeChain(), ElementsAre(error("No ':' or '{' following tag 'FOO'.")));
}

TEST(TaggedItems, GoThroughAStreamOrABlock) {
    const CleanStatus clean;
    LmISStream input("NAME: Pelvis\nmap {\n A: 1\n B: 2\n}\n");
    TaggedItems items(input);
    ASSERT_TRUE(items.next());
    EXPECT_TRUE(items.isSimple());
    EXPECT_TRUE(items.tagIs("name"));
    EXPECT_FALSE(items.tagIs("nam"));
    EXPECT_FALSE(items.tagIs("names"));
    EXPECT_TRUE(items.tagIsExactly("NAME"));
    EXPECT_FALSE(items.tagIsExactly("name"));
    EXPECT_STREQ(items.value().c_str(), "Pelvis");
    ASSERT_TRUE(items.next());
    EXPECT_FALSE(items.isSimple());
    EXPECT_STREQ(items.tag().c_str(), "map");
    TaggedItems inner(items.value());
    ASSERT_TRUE(inner.next());
    EXPECT_STREQ(inner.tag().c_str(), "A");
    EXPECT_STREQ(inner.value().c_str(), "1");
    ASSERT_TRUE(inner.next());
    EXPECT_STREQ(inner.tag().c_str(), "B");
    EXPECT_FALSE(inner.next());
    EXPECT_FALSE(inner.failed());
    EXPECT_FALSE(items.next());
    EXPECT_FALSE(items.failed());
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST(TaggedItems, StopAtAnError) {
    LmISStream input("A: b\nFOO\nC: d\n");
    LmStatus status;
    TaggedItems items(input, status);
    EXPECT_TRUE(items.next());
    EXPECT_FALSE(items.next());
    EXPECT_TRUE(items.failed());
    EXPECT_THAT(takeChain(status), ElementsAre(error("No ':' or '{' following tag 'FOO'.")));
}

// --- In memory ----------------------------------------------------------------------------------------

TEST(FindBlockEnd, GivesTheTextUpToTheClosingBrace) {
    const struct {
        const char* text;
        std::size_t end;
    } cases[] = {{"}", 0},          {"  }", 2},       {" a\n }\nnext", 4},   {"# }\n}", 4},
                 {"a }\n} # c", 4}, {"{\n}\n}\n", 4}, {"a\\\n}\n  }\n}", 7}, {"\r\n}\r\n", 2}};
    for (const auto& each : cases) {
        LmStatus status;
        const BlockRange range = findBlockEnd(each.text, "A", status);
        EXPECT_FALSE(status.hasEntries()) << each.text;
        EXPECT_EQ(range.begin, each.text);
        EXPECT_EQ(range.end, each.text + each.end) << each.text;
    }
}

TEST(FindBlockEnd, ReportsTheSameErrorsAndGivesAnEmptyRange) {
    const CleanStatus clean;
    const struct {
        const char* text;
        const char* message;
    } cases[] = {{"", "Hit end of file without reading '}' for tag 50%d"},
                 {"a\n{\n}\n", "Hit end of file without reading '}' for tag 50%d"},
                 {"a\\\n}", "Hit end of file without reading '}' for tag 50%d"},
                 {"a\n} x", "Invalid character ('x') trailing '}' for '50%d'."},
                 {"{\n}}\n}", "Invalid character ('}') trailing '}' for '50%d'."}};
    for (const auto& each : cases) {
        LmStatus status;
        const BlockRange range = findBlockEnd(each.text, "50%d", status);
        EXPECT_EQ(range.begin, each.text);
        EXPECT_EQ(range.end, each.text);
        EXPECT_THAT(takeChain(status), ElementsAre(error(each.message))) << each.text;
    }
    findBlockEnd("", "A");
    EXPECT_THAT(takeChain(), ElementsAre(error("Hit end of file without reading '}' for tag A")));
}

TEST(Options, BeginWithAMinusAndAreNoNumbers) {
    for (const char* text :
         {"-", "-x", "-v", "--1", "-changes", "-5x", "- 5", "-inf", "-nan", "-1e999", "-."}) {
        EXPECT_TRUE(looksLikeOption(text)) << text;
    }
    for (const char* text : {"", "x", "5", "-5", "-.5", "-1e3", "-0x10", " -x", "+x"}) {
        EXPECT_FALSE(looksLikeOption(text)) << text;
    }
}

} // namespace
} // namespace quillon
