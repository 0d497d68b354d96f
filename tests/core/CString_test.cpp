#include "quillon/core/CString.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace quillon {
namespace {

TEST(CString, AppendingGrowsTheHeapBlock) {
    char* text = strDuplicate("ab");
    text = strAppendRealloc(text, "cd");
    EXPECT_STREQ(text, "abcd");
    text = strAppendRealloc(text, "");
    EXPECT_STREQ(text, "abcd");
    const std::string longText(5000, 'x');
    text = strAppendRealloc(text, longText.c_str());
    EXPECT_EQ(text, "abcd" + longText);
    std::free(text);
}

TEST(CString, DuplicatesAreOnTheHeap) {
    const char* const source = "some text";
    char* const copy = strDuplicate(source);
    EXPECT_NE(copy, source);
    EXPECT_STREQ(copy, source);
    std::free(copy);
    char* const empty = strDuplicate("");
    EXPECT_STREQ(empty, "");
    std::free(empty);
}

TEST(CString, FindsTheLastOccurrence) {
    const char* const text = "abcab\xE9";
    EXPECT_EQ(strFindLast(text, 'a'), text + 3);
    EXPECT_EQ(strFindLast(text, 'c'), text + 2);
    EXPECT_EQ(strFindLast(text, '\xE9'), text + 5);
    EXPECT_EQ(strFindLast(text, 'x'), nullptr);
    EXPECT_EQ(strFindLast("", 'x'), nullptr);
}

TEST(CString, WhiteSpaceIsTrimmedInPlace) {
    const struct {
        const char* source;
        const char* left;
        const char* right;
        const char* both;
    } cases[] = {{" \t\n\v\f\ra b \t\n\v\f\r", "a b \t\n\v\f\r", " \t\n\v\f\ra b", "a b"},
                 {"ab", "ab", "ab", "ab"},
                 {"", "", "", ""},
                 {"   ", "", "", ""},
                 {" x", "x", " x", "x"},
                 {"x ", "x ", "x", "x"},
                 {"\xA0 x \x85", "\xA0 x \x85", "\xA0 x \x85", "\xA0 x \x85"}};
    for (const auto& each : cases) {
        char text[32];
        std::strcpy(text, each.source);
        EXPECT_EQ(strTrimLeft(text), text) << "the rest moves forward";
        EXPECT_STREQ(text, each.left);
        std::strcpy(text, each.source);
        EXPECT_EQ(strTrimRight(text), text);
        EXPECT_STREQ(text, each.right);
        std::strcpy(text, each.source);
        EXPECT_EQ(strTrim(text), text);
        EXPECT_STREQ(text, each.both);
    }
}

TEST(CString, ComparingWithoutRegardToCaseHasTheReverseSign) {
    const struct {
        const char* a;
        const char* b;
        int result;
    } cases[] = {
        {"abc", "abc", 0},
        {"abc", "ABC", 0},
        {"", "", 0},
        {"abc", "abd", 'd' - 'c'},
        {"abd", "abc", 'c' - 'd'},
        // The difference is that of the characters as they stand, not of their upper-case forms.
        {"ABC", "abd", 'd' - 'C'},
        {"abd", "ABC", 'C' - 'd'},
        {"z", "_", '_' - 'z'},
        {"Z", "_", '_' - 'Z'},
        {"ab", "abc", 'c'},
        {"AB", "abC", 'C'},
        {"abc", "ab", -'c'},
        {"abC", "AB", -'C'},
        {"", "x", 'x'},
        {"x", "", -'x'},
        {"\xE9", "\xE9", 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(strCompareNoCase(each.a, each.b), each.result) << each.a << ", " << each.b;
        EXPECT_EQ(strCompareNoCaseN(each.a, each.b, 100), each.result) << each.a << ", " << each.b;
    }
}

TEST(CString, ComparingOverACount) {
    const struct {
        const char* a;
        const char* b;
        int n;
        int result;
    } cases[] = {
        {"abc", "ABX", 2, 0},      {"abc", "ABX", 3, 'X' - 'c'},
        {"abc", "xyz", 0, 0},      {"", "", 3, 0},
        {"ab", "abc", 2, 0},       {"ab", "abc", 3, 'c'},
        {"abc", "ab", 2, 0},       {"abc", "ab", 3, -'c'},
        {"a", "B", -1, 'B' - 'a'}, {"a", "A", -1, 'A' - 'a'},
        {"abc", "axx", -5, 0},     {"", "x", -1, 'x'},
        {"x", "", -1, -'x'},       {"", "x", 0, 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(strCompareNoCaseN(each.a, each.b, each.n), each.result)
            << each.a << ", " << each.b << ", " << each.n;
    }
}

} // namespace
} // namespace quillon
