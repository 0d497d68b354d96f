#include "quillon/core/LmStr.h"

#include "tests/core/StrForms.h"
#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;
using test::forEachForm;
using test::textOf;

constexpr int unwritten = -77;

std::uintptr_t addressOf(const LmStr& text) {
    return reinterpret_cast<std::uintptr_t>(text.c_str());
}

// --- Construction, assignment, access ------------------------------------------------------------

TEST(LmStrConstruction, NullIsNotEmpty) {
    const LmStr null;
    const LmStr fromNull(static_cast<const char*>(nullptr));
    const LmStr countedFromNull(nullptr, 3);
    const LmStr empty("");
    EXPECT_TRUE(null.isNull());
    EXPECT_TRUE(fromNull.isNull());
    EXPECT_TRUE(countedFromNull.isNull());
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(empty.length(), 0);
    EXPECT_FALSE(null == empty);
    EXPECT_TRUE(null == fromNull);
}

TEST(LmStrConstruction, CopiesTheText) {
    char source[] = "abc";
    const LmStr text(source);
    source[0] = 'X';
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_EQ(text.length(), 3);
    EXPECT_NE(text.c_str(), source);
}

TEST(LmStrConstruction, TakesExactlyTheCount) {
    const LmStr text("abcdef", 3);
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_EQ(text.length(), 3);
    const LmStr none("abc", 0);
    EXPECT_FALSE(none.isNull());
    EXPECT_STREQ(none.c_str(), "");
    const char unterminated[] = {'x', 'y'};
    EXPECT_STREQ(LmStr(unterminated, 2).c_str(), "xy");
    const LmStr beyondTheEnd("ab", 5);
    EXPECT_STREQ(beyondTheEnd.c_str(), "ab");
    EXPECT_EQ(beyondTheEnd.length(), 5);
    EXPECT_EQ(beyondTheEnd.view(), std::string_view("ab\0\0\0", 5));
}

TEST(LmStrConstruction, AViewIsNeverNull) {
    EXPECT_FALSE(LmStr(std::string_view()).isNull());
    EXPECT_STREQ(LmStr(std::string_view("abcdef").substr(2, 3)).c_str(), "cde");
}

TEST(LmStrConstruction, ACopySharesTheText) {
    const LmStr text("shared text");
    const LmStr copy(text);
    LmStr assigned("other");
    assigned = text;
    EXPECT_EQ(copy.c_str(), text.c_str());
    EXPECT_EQ(assigned.c_str(), text.c_str());
}

TEST(LmStrConstruction, ACopyOutlivesItsSource) {
    LmStr copy;
    {
        const LmStr text("some text");
        copy = text;
    }
    EXPECT_STREQ(copy.c_str(), "some text");
}

TEST(LmStrConstruction, MovingLeavesTheTextWhereItIs) {
    LmStr text("text");
    const char* const place = text.c_str();
    LmStr moved(std::move(text));
    EXPECT_EQ(moved.c_str(), place);
    LmStr target("old");
    target = std::move(moved);
    EXPECT_EQ(target.c_str(), place);
}

TEST(LmStrAssignment, SelfAssignmentIsNoOperation) {
    LmStr text("abc");
    const char* const place = text.c_str();
    LmStr& same = text;
    text = same;
    EXPECT_EQ(text.c_str(), place);
    EXPECT_STREQ(text.c_str(), "abc");
    LmStr null;
    LmStr& sameNull = null;
    null = sameNull;
    EXPECT_TRUE(null.isNull());
}

TEST(LmStrAssignment, OfANullPointerGivesTheNullString) {
    LmStr text("abc");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.isNull());
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.isNull());
    text = "again";
    EXPECT_STREQ(text.c_str(), "again");
    text = LmStr();
    EXPECT_TRUE(text.isNull());
}

TEST(LmStrAssignment, OfTheOwnTailOnlyMovesTheOffset) {
    LmStr text("hello world");
    const char* const place = text.c_str();
    text = text.c_str() + 6;
    EXPECT_EQ(text.c_str(), place + 6);
    EXPECT_STREQ(text.c_str(), "world");
    text = text.c_str() + 2;
    EXPECT_EQ(text.c_str(), place + 8);
    EXPECT_EQ(text.length(), 3);
}

TEST(LmStrAssignment, OfTheOwnTailDoesNotUnshare) {
    LmStr text("hello world");
    const LmStr copy(text);
    text = text.c_str() + 6;
    EXPECT_EQ(text.c_str(), copy.c_str() + 6);
    EXPECT_STREQ(copy.c_str(), "hello world");
}

TEST(LmStrAssignment, OfTheWholeOwnTextChangesNothing) {
    LmStr text("hello");
    const char* const place = text.c_str();
    text = text.c_str();
    EXPECT_EQ(text.c_str(), place);
    EXPECT_STREQ(text.c_str(), "hello");
}

TEST(LmStrAssignment, OfTheOwnTerminatorGivesTheEmptyString) {
    LmStr text("hello");
    text = text.c_str() + 5;
    EXPECT_FALSE(text.isNull());
    EXPECT_STREQ(text.c_str(), "");
}

TEST(LmStrAssignment, OfCharactersInFrontOfTheOffsetBringsThemBack) {
    LmStr text("hello wide world");
    text.remove(0, 2);
    text = text.c_str() - 2;
    EXPECT_STREQ(text.c_str(), "hello wide world");
    EXPECT_EQ(text.length(), 16);
}

TEST(LmStrAssignment, OfAnotherStringsTextCopies) {
    const LmStr source("abc");
    LmStr text("xyz");
    text = source.c_str();
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_NE(text.c_str(), source.c_str());
}

TEST(LmStrAccess, ResetMakesNullAndLeavesCopies) {
    LmStr text("abc");
    const LmStr copy(text);
    text.reset();
    EXPECT_TRUE(text.isNull());
    EXPECT_STREQ(copy.c_str(), "abc");
    text.reset();
    EXPECT_TRUE(text.isNull());
}

TEST(LmStrAccess, LengthCountsBytesBehindTheOffset) {
    forEachForm("", [](LmStr& text) { EXPECT_EQ(text.length(), 0); });
    forEachForm("abc", [](LmStr& text) { EXPECT_EQ(text.length(), 3); });
    forEachForm("\xC3\xA9", [](LmStr& text) { EXPECT_EQ(text.length(), 2); });
}

TEST(LmStrAccess, DuplicateIsTheCallersOwn) {
    forEachForm("some text", [](LmStr& text) {
        char* const copy = text.duplicate();
        EXPECT_STREQ(copy, "some text");
        copy[0] = 'X';
        EXPECT_STREQ(text.c_str(), "some text");
        std::free(copy);
    });
}

TEST(LmStrAccess, WritingAddsNoBlanksAndNoQuotes) {
    forEachForm(" a \"b\"\n", [](LmStr& text) {
        std::ostringstream output;
        output << '[' << text << text << ']';
        EXPECT_EQ(output.str(), "[ a \"b\"\n a \"b\"\n]");
    });
}

TEST(LmStrAccess, ValidIndicesRunFromZeroToTheLastCharacter) {
    forEachForm("abc", [](LmStr& text) {
        EXPECT_FALSE(text.isValidIndex(-1));
        EXPECT_TRUE(text.isValidIndex(0));
        EXPECT_TRUE(text.isValidIndex(2));
        EXPECT_FALSE(text.isValidIndex(3));
        EXPECT_FALSE(text.isValidIndex(2147483647));
    });
    forEachForm("", [](LmStr& text) { EXPECT_FALSE(text.isValidIndex(0)); });
}

TEST(LmStrAccess, CheckTerminatorAcceptsSoundStringsAndNull) {
    LmStr().checkTerminator();
    forEachForm("", [](LmStr& text) { text.checkTerminator(); });
    forEachForm("abc", [](LmStr& text) { text.checkTerminator(); });
}

TEST(LmStrAccess, CheckTerminatorAbortsOnANulInside) {
    const ChildResult byConstruction = runFunction([] { LmStr("a\0b", 3).checkTerminator(); });
    EXPECT_EQ(byConstruction.outcome, "SIGABRT");
    const ChildResult bySetChar = runFunction([] {
        LmStr text("abcdef");
        text.remove(0, 1);
        text.setChar(2, '\0');
        text.checkTerminator();
    });
    EXPECT_EQ(bySetChar.outcome, "SIGABRT");
    const ChildResult inFrontOfTheOffset = runFunction([] {
        LmStr text("abcdefgh");
        text.setChar(0, '\0');
        text.remove(0, 1);
        text.checkTerminator();
    });
    EXPECT_EQ(inFrontOfTheOffset.outcome, "0");
}

// --- Finding -------------------------------------------------------------------------------------

TEST(LmStrFinding, FindsTheFirstOccurrenceOfAText) {
    forEachForm("abcabc", [](LmStr& text) {
        int found = unwritten;
        EXPECT_TRUE(text.find("bc", &found));
        EXPECT_EQ(found, 1);
        EXPECT_TRUE(text.find(LmStr("ca"), &found));
        EXPECT_EQ(found, 2);
        EXPECT_TRUE(text.find("abcabc", &found));
        EXPECT_EQ(found, 0);
        EXPECT_TRUE(text.find("c"));
        EXPECT_FALSE(text.find("cb"));
        EXPECT_FALSE(text.find("abcabca"));
        EXPECT_FALSE(text.find("B"));
    });
}

TEST(LmStrFinding, IndicesAreRelativeToTheStringNotToTheSharedText) {
    const LmStr whole("xx-yy-zz");
    const LmStr tail = whole.skip(3);
    int found = unwritten;
    EXPECT_TRUE(tail.find("-", &found));
    EXPECT_EQ(found, 2);
    EXPECT_FALSE(tail.find('x'));
    EXPECT_EQ(tail.lastIndexOf('-'), 2);
    EXPECT_EQ(tail.count('-'), 1);
}

TEST(LmStrFinding, FindsCharacters) {
    forEachForm("abcabc", [](LmStr& text) {
        int found = unwritten;
        EXPECT_TRUE(text.find('c', &found));
        EXPECT_EQ(found, 2);
        EXPECT_TRUE(text.findLast('a', &found));
        EXPECT_EQ(found, 3);
        EXPECT_TRUE(text.findLast('a'));
        EXPECT_FALSE(text.find('x'));
        EXPECT_FALSE(text.findLast('x'));
        EXPECT_EQ(text.lastIndexOf('b'), 4);
        EXPECT_EQ(text.lastIndexOf('x'), 2147483647);
        EXPECT_EQ(text.count('a'), 2);
        EXPECT_EQ(text.count('x'), 0);
    });
    forEachForm("", [](LmStr& text) {
        EXPECT_FALSE(text.find('c'));
        EXPECT_FALSE(text.findLast('c'));
        EXPECT_EQ(text.lastIndexOf('c'), 2147483647);
        EXPECT_EQ(text.count('c'), 0);
    });
    forEachForm("a\xE9z\xE9", [](LmStr& text) {
        int found = unwritten;
        EXPECT_TRUE(text.find('\xE9', &found));
        EXPECT_EQ(found, 1);
        EXPECT_EQ(text.lastIndexOf('\xE9'), 3);
        EXPECT_EQ(text.count('\xE9'), 2);
    });
}

TEST(LmStrFinding, TheNthOccurrenceIsCountedFromOne) {
    forEachForm("a.b.c", [](LmStr& text) {
        int found = unwritten;
        EXPECT_TRUE(text.findNth('.', 0, &found));
        EXPECT_EQ(found, unwritten);
        EXPECT_TRUE(text.findNth('x', 0, &found));
        EXPECT_EQ(found, unwritten);
        EXPECT_TRUE(text.findNth('.', 1, &found));
        EXPECT_EQ(found, 1);
        EXPECT_TRUE(text.findNth('.', 2, &found));
        EXPECT_EQ(found, 3);
        EXPECT_TRUE(text.findNth('.', 2));
        EXPECT_FALSE(text.findNth('.', 3));
        EXPECT_TRUE(text.findNth('a', 1, &found));
        EXPECT_EQ(found, 0);
    });
}

TEST(LmStrFinding, TheFirstDigitIsZeroToNine) {
    const struct {
        const char* text;
        int index;
    } cases[] = {{"0", 0},
                 {"9", 0},
                 {"ab12", 2},
                 {"x/:9", 3},
                 {"\xB2\xB3"
                  "7",
                  2}};
    for (const auto& [source, index] : cases) {
        forEachForm(source, [index = index](LmStr& text) {
            int found = unwritten;
            EXPECT_TRUE(text.firstDigit(&found));
            EXPECT_EQ(found, index);
            EXPECT_TRUE(text.firstDigit());
        });
    }
    forEachForm("abc/:", [](LmStr& text) { EXPECT_FALSE(text.firstDigit()); });
    forEachForm("", [](LmStr& text) { EXPECT_FALSE(text.firstDigit()); });
}

// --- Substrings ----------------------------------------------------------------------------------

TEST(LmStrSubstrings, RightSharesTheText) {
    const LmStr text("hello world");
    EXPECT_EQ(text.right(5).c_str(), text.c_str() + 6);
    EXPECT_EQ(text.right(11).c_str(), text.c_str());
    EXPECT_EQ(text.right(5).right(2).c_str(), text.c_str() + 9);
    EXPECT_EQ(text.skip(4).c_str(), text.c_str() + 4);
    EXPECT_EQ(text.skip(0).c_str(), text.c_str());
}

TEST(LmStrSubstrings, RightOfNothingIsEmptyAndNotNull) {
    for (const int n : {0, -1, -2147483647 - 1}) {
        forEachForm("abc", [n](LmStr& text) {
            const LmStr right = text.right(n);
            EXPECT_FALSE(right.isNull());
            EXPECT_STREQ(right.c_str(), "");
        });
    }
    forEachForm("abc", [](LmStr& text) {
        EXPECT_STREQ(text.skip(3).c_str(), "");
        EXPECT_STREQ(text.skip(4).c_str(), "");
    });
    forEachForm("", [](LmStr& text) { EXPECT_STREQ(text.right(0).c_str(), ""); });
}

TEST(LmStrSubstrings, CutAndPad) {
    const struct {
        const char* source;
        LmStr (*cut)(const LmStr&);
        const char* result;
    } cases[] = {
        {"abcdef", [](const LmStr& s) { return s.right(2); }, "ef"},
        {"abcdef", [](const LmStr& s) { return s.skip(2); }, "cdef"},
        {"abcdef", [](const LmStr& s) { return s.left(2); }, "ab"},
        {"abcdef", [](const LmStr& s) { return s.left(6); }, "abcdef"},
        {"abcdef", [](const LmStr& s) { return s.left(0); }, ""},
        {"ab", [](const LmStr& s) { return s.left(5); }, "ab   "},
        {"", [](const LmStr& s) { return s.left(2); }, "  "},
        {"abcdef", [](const LmStr& s) { return s.dropRight(2); }, "abcd"},
        {"abcdef", [](const LmStr& s) { return s.dropRight(6); }, ""},
        {"abcdef", [](const LmStr& s) { return s.dropRight(0); }, "abcdef"},
        {"ab", [](const LmStr& s) { return s.dropRight(-2); }, "ab  "},
        {"abcdef", [](const LmStr& s) { return s.mid(1, 3); }, "bcd"},
        {"abcdef", [](const LmStr& s) { return s.mid(0, 6); }, "abcdef"},
        {"abc", [](const LmStr& s) { return s.mid(1, 10); }, "bc        "},
        {"abc", [](const LmStr& s) { return s.mid(1, 0); }, "abc"},
        {"abc", [](const LmStr& s) { return s.mid(99, 0); }, "abc"},
        {"abc", [](const LmStr& s) { return s.mid(-99, -1); }, "abc"},
        {"abc", [](const LmStr& s) { return s.mid(3, 2); }, "  "},
        {"abc", [](const LmStr& s) { return s.mid(7, 2); }, "  "},
        {"abc", [](const LmStr& s) { return s.midClipped(1, 10); }, "bc"},
        {"abc", [](const LmStr& s) { return s.midClipped(0, 10); }, "abc"},
        {"abc", [](const LmStr& s) { return s.midClipped(1, 1); }, "b"},
        {"abc", [](const LmStr& s) { return s.midClipped(1, 0); }, ""},
        {"abc", [](const LmStr& s) { return s.midClipped(3, 5); }, ""},
        {"abc", [](const LmStr& s) { return s.midClipped(0, 2147483647); }, "abc"},
        {"abc", [](const LmStr& s) { return s.midClipped(2, 2147483647); }, "c"},
        {"", [](const LmStr& s) { return s.midClipped(0, 1); }, ""},
        {"abcdef", [](const LmStr& s) { return s.without(0, 2); }, "cdef"},
        {"abcdef", [](const LmStr& s) { return s.without(2, 2); }, "abef"},
        {"abcdef", [](const LmStr& s) { return s.without(4, 2); }, "abcd"},
        {"abcdef", [](const LmStr& s) { return s.without(0, 6); }, ""},
        {"abcdef", [](const LmStr& s) { return s.without(3, 0); }, "abcdef"},
    };
    int number = 0;
    for (const auto& [source, cut, result] : cases) {
        SCOPED_TRACE(number++);
        forEachForm(source, [cut = cut, source = source, result = result](LmStr& text) {
            const LmStr piece = cut(text);
            EXPECT_FALSE(piece.isNull());
            EXPECT_EQ(textOf(piece), result);
            piece.checkTerminator();
            EXPECT_EQ(textOf(text), source) << "the source has changed";
        });
    }
}

TEST(LmStrSubstrings, AViewStaysWhenItsSourceChanges) {
    LmStr text("hello world");
    const LmStr view = text.right(5);
    text.setChar(6, 'W');
    text.toUpper();
    EXPECT_STREQ(view.c_str(), "world");
    EXPECT_STREQ(text.c_str(), "HELLO WORLD");
    LmStr changedView = text.right(5);
    changedView.setChar(0, '_');
    EXPECT_STREQ(changedView.c_str(), "_ORLD");
    EXPECT_STREQ(text.c_str(), "HELLO WORLD");
}

// --- Removing at the front -----------------------------------------------------------------------

struct FrontRemoval {
    int length;
    int count;
    bool onlyMovesTheOffset;
};

TEST(LmStrRemoval, AtTheFrontCompactsOnceHalfOfTheBlockLiesInFront) {
    const FrontRemoval cases[] = {{9, 3, true},     {9, 5, false},   {9, 4, false},   {9, 9, false},
                                  {8, 3, true},     {8, 4, false},   {10, 4, true},   {10, 5, false},
                                  {2, 1, false},    {3, 1, false},   {4, 1, true},    {100, 49, true},
                                  {100, 50, false}, {101, 49, true}, {101, 50, false}};
    for (const auto& [length, count, onlyMovesTheOffset] : cases) {
        SCOPED_TRACE(testing::Message() << count << " of " << length);
        std::string expected;
        for (int i = 0; i < length; ++i) {
            expected += static_cast<char>('!' + i % 90);
        }
        LmStr text(expected.c_str());
        const std::uintptr_t place = addressOf(text);
        text.remove(0, count);
        EXPECT_EQ(addressOf(text) == place + static_cast<std::uintptr_t>(count), onlyMovesTheOffset);
        EXPECT_EQ(textOf(text), expected.substr(static_cast<std::size_t>(count)));
        text.checkTerminator();
    }
}

TEST(LmStrRemoval, TheOffsetsOfRepeatedRemovalsAddUp) {
    LmStr text("0123456789");
    const std::uintptr_t place = addressOf(text);
    for (const std::uintptr_t eaten : {1U, 2U, 3U, 4U}) {
        text.removeAt(0);
        EXPECT_EQ(addressOf(text), place + eaten);
    }
    text.removeAt(0);
    EXPECT_NE(addressOf(text), place + 5) << "half of the block lies in front";
    EXPECT_STREQ(text.c_str(), "56789");
    text.remove(0, 5);
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_FALSE(text.isNull());
}

TEST(LmStrRemoval, AtTheFrontOfASharedTextNeverMovesCharacters) {
    LmStr text("012345678");
    const LmStr copy(text);
    text.remove(0, 8);
    EXPECT_EQ(text.c_str(), copy.c_str() + 8);
    text.remove(0, 1);
    EXPECT_EQ(text.c_str(), copy.c_str() + 9);
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_STREQ(copy.c_str(), "012345678");
}

TEST(LmStrRemoval, BehindTheFrontUnsharesFirst) {
    LmStr text("012345678");
    const LmStr copy(text);
    text.remove(1, 2);
    EXPECT_STREQ(text.c_str(), "0345678");
    EXPECT_STREQ(copy.c_str(), "012345678");
    EXPECT_FALSE(text.c_str() >= copy.c_str() && text.c_str() <= copy.c_str() + 9);
}

TEST(LmStrRemoval, ALongTextIsEatenToItsEnd) {
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        expected += static_cast<char>('!' + i % 90);
    }
    LmStr text(expected.c_str());
    for (; !expected.empty(); expected.erase(0, 1)) {
        ASSERT_EQ(text.c_str(), expected);
        text.remove(0, 1);
    }
    EXPECT_STREQ(text.c_str(), "");
}

} // namespace
} // namespace quillon
