#include "quillon/core/LmStr.h"

#include "tests/core/StrForms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace quillon {
namespace {

using test::forEachForm;
using test::textOf;

/// A change in place, and what it leaves.
struct Edit {
    std::string before;
    std::function<void(LmStr&)> change;
    std::string after;
};

/// Checks every edit on every form of the string.
void checkEdits(const std::vector<Edit>& edits) {
    int number = 0;
    for (const Edit& edit : edits) {
        SCOPED_TRACE(testing::Message() << "edit " << number++ << " of \"" << edit.before << '"');
        forEachForm(edit.before, [&edit](LmStr& text) {
            edit.change(text);
            EXPECT_EQ(textOf(text), edit.after);
            EXPECT_FALSE(text.isNull());
            text.checkTerminator();
        });
    }
}

std::string repeated(std::size_t count, char c) {
    return std::string(count, c);
}

TEST(LmStrEditing, CaseChangesLettersOnly) {
    checkEdits({
        {"aZz@[`{09", [](LmStr& s) { s.toUpper(); }, "AZZ@[`{09"},
        {"aAZz@[`{09", [](LmStr& s) { s.toLower(); }, "aazz@[`{09"},
        {"\xE9\xC9\xDF", [](LmStr& s) { s.toUpper(); }, "\xE9\xC9\xDF"},
        {"\xE9\xC9\xDF", [](LmStr& s) { s.toLower(); }, "\xE9\xC9\xDF"},
        {"", [](LmStr& s) { s.toUpper(); }, ""},
    });
}

TEST(LmStrEditing, LengthIsSetByCuttingOrByBlanks) {
    checkEdits({
        {"abc", [](LmStr& s) { s.setLength(5); }, "abc  "},
        {"abc", [](LmStr& s) { s.setLength(3); }, "abc"},
        {"abc", [](LmStr& s) { s.setLength(1); }, "a"},
        {"abc", [](LmStr& s) { s.setLength(0); }, ""},
        {"", [](LmStr& s) { s.setLength(2); }, "  "},
        {"abc", [](LmStr& s) { s.setLength(300); }, "abc" + repeated(297, ' ')},
    });
}

TEST(LmStrEditing, FillsAtEitherEnd) {
    checkEdits({
        {"abc", [](LmStr& s) { s.appendFill(2, '-'); }, "abc--"},
        {"abc", [](LmStr& s) { s.appendFill(0, '-'); }, "abc"},
        {"abc", [](LmStr& s) { s.appendFill(-3, '-'); }, "abc"},
        {"", [](LmStr& s) { s.appendFill(3, '-'); }, "---"},
        {"abc", [](LmStr& s) { s.prependFill(2, '-'); }, "--abc"},
        {"abc", [](LmStr& s) { s.prependFill(0, '-'); }, "abc"},
        {"abc", [](LmStr& s) { s.prependFill(-3, '-'); }, "abc"},
        {"", [](LmStr& s) { s.prependFill(3, '-'); }, "---"},
    });
}

TEST(LmStrEditing, RemovesRanges) {
    checkEdits({
        {"abcdefghi", [](LmStr& s) { s.remove(0, 3); }, "defghi"},
        {"abcdefghi", [](LmStr& s) { s.remove(0, 5); }, "fghi"},
        {"abcdefghi", [](LmStr& s) { s.remove(0, 9); }, ""},
        {"abcdefghi", [](LmStr& s) { s.remove(0, 0); }, "abcdefghi"},
        {"abcdefghi", [](LmStr& s) { s.remove(2, 3); }, "abfghi"},
        {"abcdefghi", [](LmStr& s) { s.remove(8, 1); }, "abcdefgh"},
        {"abcdefghi", [](LmStr& s) { s.remove(1, 8); }, "a"},
        {"abcdefghi", [](LmStr& s) { s.remove(4, 0); }, "abcdefghi"},
        {"abcdefghi", [](LmStr& s) { s.removeAt(0); }, "bcdefghi"},
        {"abcdefghi", [](LmStr& s) { s.removeAt(8); }, "abcdefgh"},
        {"abcdefghi", [](LmStr& s) { s.removeRange(2, 4); }, "abefghi"},
        {"abcdefghi", [](LmStr& s) { s.removeRange(0, 4); }, "efghi"},
        {"abcdefghi", [](LmStr& s) { s.removeRange(4, 4); }, "abcdefghi"},
        {"abcabc", [](LmStr& s) { s.removeFirst("bc"); }, "aabc"},
        {"abcabc", [](LmStr& s) { s.removeFirst("abc"); }, "abc"},
        {"abcabc", [](LmStr& s) { s.removeFirst("ca"); }, "abbc"},
        {"abcabc", [](LmStr& s) { s.removeFirst("cb"); }, "abcabc"},
        {"abcabc", [](LmStr& s) { s.removeFirst("abcabc"); }, ""},
        {"", [](LmStr& s) { s.removeFirst("a"); }, ""},
        {"abcabc", [](LmStr& s) { s.removeFirst(s.c_str() + 3); }, "abc"},
    });
}

TEST(LmStrEditing, ReplacesRanges) {
    checkEdits({
        {"abcdef", [](LmStr& s) { s.replaceRange(1, 2, "XYZ"); }, "aXYZdef"},
        {"abcdef", [](LmStr& s) { s.replaceRange(1, 3, "X"); }, "aXef"},
        {"abcdef", [](LmStr& s) { s.replaceRange(1, 2, "XY"); }, "aXYdef"},
        {"abcdef", [](LmStr& s) { s.replaceRange(0, 6, ""); }, ""},
        {"abcdef", [](LmStr& s) { s.replaceRange(0, 2, "XYZ"); }, "XYZcdef"},
        {"abcdef", [](LmStr& s) { s.replaceRange(4, 2, "XYZ"); }, "abcdXYZ"},
        {"abcdef", [](LmStr& s) { s.replaceRange(6, 0, "XYZ"); }, "abcdefXYZ"},
        {"abcdef", [](LmStr& s) { s.replaceRange(3, 0, "XYZ"); }, "abcXYZdef"},
        {"", [](LmStr& s) { s.replaceRange(0, 0, "XYZ"); }, "XYZ"},
    });
}

TEST(LmStrEditing, ReplacesTheFirstOccurrence) {
    checkEdits({
        {"abcabc", [](LmStr& s) { s.replaceFirst("bc", "XY"); }, "aXYabc"},
        {"abcabc", [](LmStr& s) { s.replaceFirst("bc", ""); }, "aabc"},
        {"abcabc", [](LmStr& s) { s.replaceFirst("bc", "bcbc"); }, "abcbcabc"},
        {"abcabc", [](LmStr& s) { s.replaceFirst("a", "long text"); }, "long textbcabc"},
        {"abcabc", [](LmStr& s) { s.replaceFirst("x", "long text"); }, "abcabc"},
        {"abcabc", [](LmStr& s) { s.replaceFirst("abcabc", ""); }, ""},
        {"", [](LmStr& s) { s.replaceFirst("x", "y"); }, ""},
    });
}

TEST(LmStrEditing, ReplacesAllWithoutSearchingTheReplacement) {
    checkEdits({
        {"aaa", [](LmStr& s) { s.replaceAll("a", "aa"); }, "aaaaaa"},
        {"aaaa", [](LmStr& s) { s.replaceAll("aa", "a"); }, "aa"},
        {"aaaaa", [](LmStr& s) { s.replaceAll("aa", "a"); }, "aaa"},
        {"ababab", [](LmStr& s) { s.replaceAll("ab", "ba"); }, "bababa"},
        {"a-b-c", [](LmStr& s) { s.replaceAll("-", ""); }, "abc"},
        {"---", [](LmStr& s) { s.replaceAll("-", ""); }, ""},
        {"a-b-c", [](LmStr& s) { s.replaceAll("-", " and "); }, "a and b and c"},
        {"a-b-c", [](LmStr& s) { s.replaceAll("x", "y"); }, "a-b-c"},
        {"a\nb\n", [](LmStr& s) { s.replaceAll("\n", "\n  "); }, "a\n  b\n  "},
        {"xabyab", [](LmStr& s) { s.replaceAll("ab", "cd"); }, "xcdycd"},
        {"", [](LmStr& s) { s.replaceAll("a", "b"); }, ""},
        // Removing the middle makes a new occurrence, which stands in front of the place to go on from.
        {"aabb", [](LmStr& s) { s.replaceAll("ab", ""); }, "ab"},
    });
}

TEST(LmStrEditing, Inserts) {
    checkEdits({
        {"abc", [](LmStr& s) { s.insert(0, "XYZ", 2); }, "XYabc"},
        {"abc", [](LmStr& s) { s.insert(1, "XYZ", 3); }, "aXYZbc"},
        {"abc", [](LmStr& s) { s.insert(1, "XYZ", 0); }, "abc"},
        {"abc", [](LmStr& s) { s.insert(3, "XYZ"); }, "abcXYZ"},
        {"abc", [](LmStr& s) { s.insert(2, ""); }, "abc"},
        {"", [](LmStr& s) { s.insert(0, "XYZ"); }, "XYZ"},
        {"abc", [](LmStr& s) { s.insert(0, 'X'); }, "Xabc"},
        {"abc", [](LmStr& s) { s.insert(3, 'X'); }, "abcX"},
        {"", [](LmStr& s) { s.insert(0, 'X'); }, "X"},
    });
}

TEST(LmStrEditing, InsertsAndAppendsItsOwnText) {
    checkEdits({
        {"abcdef", [](LmStr& s) { s.insert(2, s.c_str()); }, "ababcdefcdef"},
        {"abcdef", [](LmStr& s) { s.insert(0, s.c_str() + 3); }, "defabcdef"},
        {"abcdef", [](LmStr& s) { s.insert(3, s.c_str() + 1, 4); }, "abcbcdedef"},
        {"abcdef", [](LmStr& s) { s.insert(6, s.c_str() + 5); }, "abcdeff"},
        {"abcdef", [](LmStr& s) { s.append(s.c_str() + 2); }, "abcdefcdef"},
        {"abcdef", [](LmStr& s) { s.append(s); }, "abcdefabcdef"},
        {"abcdef", [](LmStr& s) { s += s; }, "abcdefabcdef"},
        {"abcdef", [](LmStr& s) { s += s.c_str(); }, "abcdefabcdef"},
        {"abcdef", [](LmStr& s) { s.append(s.view().substr(1, 2)); }, "abcdefbc"},
        {"abcdef", [](LmStr& s) { s.append(s.right(3)); }, "abcdefdef"},
        {"abcdef", [](LmStr& s) { s.appendPadded(s.c_str() + 2, 6); }, "abcdefcdef  "},
        {"abcdef", [](LmStr& s) { s.replaceRange(1, 2, s.c_str() + 2); }, "acdefdef"},
        {"abcdef", [](LmStr& s) { s.replaceFirst("b", s.c_str()); }, "aabcdefcdef"},
        {"abcdef", [](LmStr& s) { s.replaceAll("b", s.c_str() + 4); }, "aefcdef"},
        {"abc", [](LmStr& s) { s.format("%s-%s", s.c_str(), s.c_str() + 1); }, "abc-bc"},
        {"abc", [](LmStr& s) { s.appendFormat("<%s>", s.c_str()); }, "abc<abc>"},
    });
}

TEST(LmStrEditing, Appends) {
    checkEdits({
        {"abc", [](LmStr& s) { s.append("de"); }, "abcde"},
        {"abc", [](LmStr& s) { s.append(""); }, "abc"},
        {"", [](LmStr& s) { s.append("de"); }, "de"},
        {"abc", [](LmStr& s) { s.append(LmStr("de")); }, "abcde"},
        {"abc", [](LmStr& s) { s.append(std::string_view("defg", 2)); }, "abcde"},
        {"abc", [](LmStr& s) { (s += "d") += LmStr("e"); }, "abcde"},
        {"abc", [](LmStr& s) { s += 'd'; }, "abcd"},
        {"abc", [](LmStr& s) { s += '\xE9'; }, "abc\xE9"},
        {"abc", [](LmStr& s) { s.appendPadded("de", 4); }, "abcde  "},
        {"abc", [](LmStr& s) { s.appendPadded("defgh", 4); }, "abcdefg"},
        {"abc", [](LmStr& s) { s.appendPadded("defg", 4); }, "abcdefg"},
        {"abc", [](LmStr& s) { s.appendPadded("", 2); }, "abc  "},
        {"abc", [](LmStr& s) { s.appendPadded("de", 0); }, "abc"},
        {"", [](LmStr& s) { s.appendPadded("twenty columns and more", 20); }, "twenty columns and m"},
    });
}

TEST(LmStrEditing, FormatsLikePrintf) {
    checkEdits({
        {"abc", [](LmStr& s) { s.appendFormat("%d|%5.2f|%s", -3, 1.5, "x"); }, "abc-3| 1.50|x"},
        {"abc", [](LmStr& s) { s.format("%d%%", 50); }, "50%"},
        {"abc", [](LmStr& s) { s.format("%s", ""); }, ""},
        {"abc", [](LmStr& s) { s.appendFormat("%s", ""); }, "abc"},
    });
    LmStr text;
    text.format("%s", "from null");
    EXPECT_STREQ(text.c_str(), "from null");
}

TEST(LmStrEditing, FormattedTextIsCutAt1023Characters) {
    const std::string longText = repeated(1022, 'x') + "yz";
    checkEdits({
        {"abc", [&](LmStr& s) { s.format("%s", longText.c_str()); }, repeated(1022, 'x') + "y"},
        {"abc", [&](LmStr& s) { s.appendFormat("%s", longText.c_str()); }, "abc" + repeated(1022, 'x') + "y"},
        {"", [&](LmStr& s) { s.format("%s", longText.c_str() + 1); }, repeated(1021, 'x') + "yz"},
        {"", [&](LmStr& s) { s.format("%5000d", 1); }, repeated(1023, ' ')},
    });
    // What stood before an append is not counted.
    LmStr text(repeated(5000, 'a').c_str());
    text.appendFormat("%s", longText.c_str());
    EXPECT_EQ(text.length(), 6023);
}

TEST(LmStrEditing, WhiteSpaceIsRemoved) {
    checkEdits({
        {" \t\n\v\f\ra b \t\n\v\f\r", [](LmStr& s) { s.trimLeft(); }, "a b \t\n\v\f\r"},
        {" \t\n\v\f\ra b \t\n\v\f\r", [](LmStr& s) { s.trimRight(); }, " \t\n\v\f\ra b"},
        {" \t\n\v\f\ra b \t\n\v\f\r", [](LmStr& s) { s.trim(); }, "a b"},
        {" \t\n\v\f\ra  b \tc\n\v\f\r", [](LmStr& s) { s.removeWhitespace(); }, "abc"},
        {" \t ", [](LmStr& s) { s.trimLeft(); }, ""},
        {" \t ", [](LmStr& s) { s.trimRight(); }, ""},
        {" \t ", [](LmStr& s) { s.trim(); }, ""},
        {" \t ", [](LmStr& s) { s.removeWhitespace(); }, ""},
        {"", [](LmStr& s) { s.trimLeft(); }, ""},
        {"", [](LmStr& s) { s.trimRight(); }, ""},
        {"", [](LmStr& s) { s.removeWhitespace(); }, ""},
        {"abc", [](LmStr& s) { s.trim(); }, "abc"},
        {"abc", [](LmStr& s) { s.removeWhitespace(); }, "abc"},
        {" \t\n  x", [](LmStr& s) { s.trimLeft(true); }, "\n  x"},
        {" \v\f\r\n  x", [](LmStr& s) { s.trimLeft(true); }, "\r\n  x"},
        {"\n x", [](LmStr& s) { s.trimLeft(true); }, "\n x"},
        {"  x\n", [](LmStr& s) { s.trimLeft(true); }, "x\n"},
        {"   ", [](LmStr& s) { s.trimLeft(true); }, ""},
        // No character above 127 is white space.
        {"\xA0\x85 x \x85\xA0", [](LmStr& s) { s.trim(); }, "\xA0\x85 x \x85\xA0"},
        {"\xA0\x85 x \x85\xA0", [](LmStr& s) { s.removeWhitespace(); }, "\xA0\x85x\x85\xA0"},
    });
}

TEST(LmStrEditing, TheCommonIndentIsRemovedInPasses) {
    const auto removeIndent = [](LmStr& s) { s.removeCommonIndent(); };
    checkEdits({
        {"  a\n    b\n  c", removeIndent, "a\n  b\nc"},
        {"a\n  b", removeIndent, "a\n  b"},
        {"\t  a\n\t b", removeIndent, " a\nb"},
        {"\t a\n \tb", removeIndent, "\t a\n \tb"},
        {"  a\n\n  b", removeIndent, "a\n\nb"},
        {"  a\n  b\n", removeIndent, "a\nb\n"},
        {"\n\n  a\n  b", removeIndent, "a\nb"},
        // A line of blanks that comes out empty counts as empty from then on, also at the top.
        {"  \n    a", removeIndent, "a"},
        {"    a\n  \n    b", removeIndent, "a\n\nb"},
        {"    a\n      \n    b", removeIndent, "a\n  \nb"},
        {"   ", removeIndent, ""},
        {"\n\n", removeIndent, ""},
        {"", removeIndent, ""},
        {"  a  b  ", removeIndent, "a  b  "},
        {"  a\r\n\r\n  b", removeIndent, "  a\r\n\r\n  b"},
        {"\xA0x\n\xA0y", removeIndent, "\xA0x\n\xA0y"},
    });
}

TEST(LmStrSharing, TrimmingAtTheFrontKeepsTheSharedText) {
    LmStr text(" \t abc ");
    const LmStr copy(text);
    text.trimLeft();
    EXPECT_EQ(text.c_str(), copy.c_str() + 3);
    text.trimRight();
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_STREQ(copy.c_str(), " \t abc ");
    EXPECT_NE(text.c_str(), copy.c_str() + 3);
}

TEST(LmStrSharing, EqualLengthsAreOverwrittenInPlace) {
    LmStr text("abcabc");
    const char* const place = text.c_str();
    text.replaceFirst("bc", "XY");
    EXPECT_EQ(text.c_str(), place);
    text.setChar(0, '_');
    text.toLower();
    EXPECT_EQ(text.c_str(), place);
    EXPECT_STREQ(text.c_str(), "_xyabc");
}

TEST(LmStrSharing, AStringAloneChangesAtItsOffset) {
    LmStr text("0123456789");
    text.remove(0, 2);
    const char* const place = text.c_str();
    text.setChar(0, 'X');
    text.toLower();
    EXPECT_EQ(text.c_str(), place);
    EXPECT_STREQ(text.c_str(), "x3456789");
}

TEST(LmStrSharing, TheLastUserOfATextChangesItInPlace) {
    LmStr text("abc");
    const char* const place = text.c_str();
    { const LmStr copy(text); }
    text.setChar(1, 'X');
    EXPECT_EQ(text.c_str(), place);
}

TEST(LmStrConcatenation, GivesANewValue) {
    const LmStr left("ab");
    const LmStr right("cd");
    EXPECT_STREQ((left + "cd").c_str(), "abcd");
    EXPECT_STREQ((left + right).c_str(), "abcd");
    EXPECT_STREQ(("ab" + right).c_str(), "abcd");
    EXPECT_STREQ((left + "").c_str(), "ab");
    EXPECT_STREQ(("" + right).c_str(), "cd");
    EXPECT_STREQ((LmStr("") + LmStr("")).c_str(), "");
    EXPECT_STREQ((left + left + "-" + right).c_str(), "abab-cd");
    EXPECT_STREQ((right.skip(1) + left.left(1)).c_str(), "da");
    EXPECT_STREQ(left.c_str(), "ab");
    EXPECT_STREQ(right.c_str(), "cd");
}

TEST(LmStrRemove, EatingALongTextToItsEndLeavesEveryPieceRight) {
    std::string source;
    for (int i = 0; i < 300000; ++i) {
        source += std::to_string(i) + " ";
    }
    LmStr text(source.c_str());
    for (int i = 0; i < 300000; ++i) {
        const std::string expected = std::to_string(i) + " ";
        const int length = static_cast<int>(expected.size());
        ASSERT_EQ(text.startsWith(expected.c_str()), 0) << "piece " << i;
        text.remove(0, length);
    }
    EXPECT_EQ(text, "");
    text.checkTerminator();
}

} // namespace
} // namespace quillon
