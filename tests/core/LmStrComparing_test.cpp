#include "quillon/core/LmStr.h"

#include "tests/core/StrForms.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace quillon {
namespace {

using test::forEachForm;

int signOf(int number) {
    return number < 0 ? -1 : (number > 0 ? 1 : 0);
}

constexpr const char* nullText = nullptr;

TEST(LmStrEquality, IsNullSafeInBothOrders) {
    const LmStr null;
    const LmStr otherNull;
    const LmStr empty("");
    const LmStr text("abc");
    EXPECT_TRUE(null == otherNull);
    EXPECT_TRUE(null == nullText);
    EXPECT_TRUE(nullText == null);
    EXPECT_FALSE(null != otherNull);
    EXPECT_FALSE(null == empty);
    EXPECT_FALSE(empty == null);
    EXPECT_FALSE(null == "");
    EXPECT_FALSE("" == null);
    EXPECT_TRUE(empty != nullText);
    EXPECT_TRUE(nullText != empty);
    EXPECT_TRUE(empty == "");
    EXPECT_TRUE("" == empty);
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE("abc" == text);
    EXPECT_TRUE(text == LmStr("abc"));
    EXPECT_TRUE(text != "abcd");
    EXPECT_TRUE("ab" != text);
    EXPECT_TRUE(text != LmStr("aBc"));
}

TEST(LmStrOrder, IsThatOfStrcmp) {
    const struct {
        const char* a;
        const char* b;
        int sign;
    } cases[] = {{"abc", "abc", 0}, {"abc", "abd", -1}, {"abd", "abc", 1}, {"ab", "abc", -1},
                 {"abc", "ab", 1},  {"", "", 0},        {"", "a", -1},     {"Z", "a", -1},
                 {"a", "\xE9", -1}, {"\xFF", "z", 1}};
    for (const auto& [first, second, sign] : cases) {
        forEachForm(first, [second = second, sign = sign](LmStr& a) {
            const LmStr b(second);
            EXPECT_EQ(a < b, sign < 0);
            EXPECT_EQ(a <= b, sign <= 0);
            EXPECT_EQ(a > b, sign > 0);
            EXPECT_EQ(a >= b, sign >= 0);
            EXPECT_EQ(a < second, sign < 0);
            EXPECT_EQ(a <= second, sign <= 0);
            EXPECT_EQ(a > second, sign > 0);
            EXPECT_EQ(a >= second, sign >= 0);
            EXPECT_EQ(second<a, sign> 0);
            EXPECT_EQ(second <= a, sign >= 0);
            EXPECT_EQ(second > a, sign < 0);
            EXPECT_EQ(second >= a, sign <= 0);
            EXPECT_EQ(signOf(a.compare(second)), sign);
        });
    }
}

TEST(LmStrComparing, OverACount) {
    forEachForm("abcd", [](LmStr& text) {
        EXPECT_EQ(text.compare("abxx", 2), 0);
        EXPECT_LT(text.compare("abxx", 3), 0);
        EXPECT_GT(text.compare("ab", 3), 0);
        EXPECT_EQ(text.compare("abcd", 100), 0);
        EXPECT_EQ(text.compare("x", 0), 0);
    });
}

TEST(LmStrComparing, StartsWithGivesZeroOnAMatch) {
    forEachForm("abcd", [](LmStr& text) {
        EXPECT_EQ(text.startsWith("ab"), 0);
        EXPECT_EQ(text.startsWith(""), 0);
        EXPECT_EQ(text.startsWith("abcd"), 0);
        EXPECT_LT(text.startsWith("abcde"), 0);
        EXPECT_LT(text.startsWith("b"), 0);
        EXPECT_GT(text.startsWith("aa"), 0);
        EXPECT_NE(text.startsWith("AB"), 0);
    });
}

TEST(LmStrComparing, EndsWithIsATruthValue) {
    forEachForm("abcd", [](LmStr& text) {
        EXPECT_TRUE(text.endsWith(LmStr("cd")));
        EXPECT_TRUE(text.endsWith(LmStr("abcd")));
        EXPECT_TRUE(text.endsWith(LmStr("")));
        EXPECT_FALSE(text.endsWith(LmStr("xabcd")));
        EXPECT_FALSE(text.endsWith(LmStr("bc")));
        EXPECT_FALSE(text.endsWith(LmStr("CD")));
    });
    forEachForm("", [](LmStr& text) {
        EXPECT_TRUE(text.endsWith(LmStr("")));
        EXPECT_FALSE(text.endsWith(LmStr("a")));
    });
}

TEST(LmStrComparing, WithoutRegardToCase) {
    const struct {
        const char* a;
        const char* b;
        int n;
        int result;
    } cases[] = {
        {"abc", "ABC", 3, 0},
        {"abc", "ABC", 100, 0},
        {"abc", "abx", 2, 0},
        {"abc", "abx", 3, -1},
        {"ABX", "abc", 3, 1},
        {"abc", "xyz", 0, 0},
        {"abc", "xyz", -1, 0},
        {"", "", 1, 0},
        {"", "abc", 1, -1},
        {"abc", "", 1, 1},
        {"", "abc", 0, 0},
        {"ab", "ABC", 3, -1},
        {"ab", "ABC", 2, 0},
        {"ABC", "ab", 3, 1},
        {"ABC", "ab", 2, 0},
        {"ab", "AB", 3, 0},
        // Letters are compared in upper case, so what lies between the cases comes behind them.
        {"_", "a", 1, 1},
        {"a", "_", 1, -1},
        {"[", "z", 1, 1},
        {"@", "a", 1, -1},
        {"\xE9", "\xE9", 1, 0},
    };
    for (const auto& [first, second, n, result] : cases) {
        SCOPED_TRACE(testing::Message() << second << ", " << n);
        forEachForm(first, [second = second, n = n, result = result](LmStr& text) {
            EXPECT_EQ(text.compareNoCase(second, n), result);
        });
    }
}

TEST(LmStrComparing, PrefixAndWholeWithoutRegardToCase) {
    forEachForm("Body_Name", [](LmStr& text) {
        EXPECT_EQ(text.compareNoCasePrefix("BODY"), 0);
        EXPECT_EQ(text.compareNoCasePrefix("body_name"), 0);
        EXPECT_EQ(text.compareNoCasePrefix("body_names"), -1);
        EXPECT_EQ(text.compareNoCasePrefix(""), 0);
        EXPECT_EQ(text.compareNoCasePrefix("bodx"), 1);
        EXPECT_EQ(text.compareNoCaseWhole("BODY"), 1);
        EXPECT_EQ(text.compareNoCaseWhole("BODY_NAME"), 0);
        EXPECT_EQ(text.compareNoCaseWhole("BODY_NAMES"), -1);
        EXPECT_EQ(text.compareNoCaseWhole(""), 1);
    });
    forEachForm("", [](LmStr& text) {
        EXPECT_EQ(text.compareNoCasePrefix("a"), -1);
        EXPECT_EQ(text.compareNoCaseWhole("a"), -1);
        EXPECT_EQ(text.compareNoCaseWhole(""), 0);
    });
}

TEST(LmStrComparing, NaturallyByTheNumbersInNames) {
    const struct {
        const char* a;
        const char* b;
        int sign;
    } cases[] = {
        {"Arm2", "Arm10", -1}, {"Arm10", "Arm2", 1},   {"Arm2", "Arm2", 0},     {"Arm", "Arm2", -1},
        {"Arm02", "Arm2", 0},  {"Arm02x", "Arm2x", 0}, {"Arm02x", "Arm2y", -1}, {"a1b2", "a1b10", -1},
        {"a1b02c", "a1b2", 1}, {"a1b02", "a1b2c", -1}, {"a10", "b2", -1},       {"b2", "a10", 1},
        {"ab1", "a1", 1},      {"a1", "ab1", -1},      {"Leg", "Arm", 1},       {"", "", 0},
        {"", "a", -1},         {"1", "2", -1},         {"10", "9", 1},          {"x1y", "x1z", -1},
        {"x1y2", "x1yy2", -1}, {"a1-2", "a1-10", -1},  {"a007b9", "a7b10", -1},
    };
    for (const auto& [first, second, sign] : cases) {
        SCOPED_TRACE(testing::Message() << second);
        forEachForm(first, [second = second, sign = sign, first = first](LmStr& a) {
            errno = 0;
            EXPECT_EQ(signOf(compareNatural(a, LmStr(second))), sign);
            EXPECT_STREQ(a.c_str(), first);
        });
    }
    EXPECT_EQ(compareNatural(LmStr(), LmStr()), 0);
    errno = 0;
    EXPECT_EQ(compareNatural(LmStr("Arm2"), LmStr("Arm30")), -1);
    EXPECT_EQ(compareNatural(LmStr("Arm30"), LmStr("Arm2")), 1);
    EXPECT_EQ(compareNatural(LmStr("Arm2"), LmStr("Arm2zzz")), -1);
    EXPECT_EQ(compareNatural(LmStr("Arm2zzz"), LmStr("Arm2")), 1);
}

TEST(LmStrComparing, NaturalOrderOfNumbersOutOfRangeIsThatOfTheirText) {
    errno = 0;
    EXPECT_GT(compareNatural(LmStr("a99999999999999999999"), LmStr("a9")), 0);
    errno = 0;
    EXPECT_LT(compareNatural(LmStr("a100000000000000000000"), LmStr("a2")), 0);
    // A range error that stands from before has the same effect.
    errno = ERANGE;
    EXPECT_GT(compareNatural(LmStr("Arm2"), LmStr("Arm10")), 0);
    errno = 0;
}

// --- Numbers -------------------------------------------------------------------------------------

TEST(LmStrNumbers, ToDoubleTakesTheWholeStringOrFails) {
    const struct {
        const char* text;
        bool taken;
        double value;
    } cases[] = {
        {"1.5", true, 1.5}, {"-2e3", true, -2000.0}, {"  7", true, 7.0},   {"\t\n-.5", true, -0.5},
        {"+5.", true, 5.0}, {"0x10", true, 16.0},    {"1.5x", false, 1.5}, {"1.5 ", false, 1.5},
        {"", false, 0.0},   {"  ", false, 0.0},      {"x", false, 0.0},    {".", false, 0.0},
        {"1e", false, 1.0}, {"1e+", false, 1.0},     {"1,5", false, 1.0},  {"--1", false, 0.0},
    };
    for (const auto& [source, taken, value] : cases) {
        forEachForm(source, [taken = taken, value = value](LmStr& text) {
            double out = -77;
            EXPECT_EQ(text.toDouble(out), taken);
            EXPECT_EQ(out, value) << "written in all cases";
            out = -77;
            EXPECT_EQ(text.toDouble(out, true), taken);
            EXPECT_EQ(out, value);
        });
    }
}

TEST(LmStrNumbers, NonFiniteValuesNeedTheFlag) {
    for (const char* source : {"inf", "-INF", "infinity", "nan", "NaN(1)", "1e999", "-1e999"}) {
        forEachForm(source, [](LmStr& text) {
            double out = 0;
            EXPECT_FALSE(text.toDouble(out));
            EXPECT_FALSE(std::isfinite(out)) << "written in all cases";
            out = 0;
            EXPECT_TRUE(text.toDouble(out, true));
            EXPECT_FALSE(std::isfinite(out));
            float narrow = 0;
            EXPECT_FALSE(text.toFloat(&narrow));
            EXPECT_TRUE(text.toFloat(&narrow, true));
            EXPECT_FALSE(std::isfinite(narrow));
        });
    }
    double out = 0;
    EXPECT_FALSE(LmStr("infx").toDouble(out, true));
    EXPECT_TRUE(std::isinf(out));
}

TEST(LmStrNumbers, ToFloatCutsADouble) {
    float out = 0;
    EXPECT_TRUE(LmStr("0.1").toFloat(&out));
    EXPECT_EQ(out, 0.1F);
    EXPECT_TRUE(LmStr("16777217").toFloat(&out));
    EXPECT_EQ(out, 16777216.0F);
    EXPECT_TRUE(LmStr("1.5").toFloat(nullptr));
    EXPECT_FALSE(LmStr("1.5x").toFloat(nullptr));
    EXPECT_FALSE(LmStr("").toFloat(nullptr));
    // Rounding twice: through double first, then to 32 bits. A direct reading would round up.
    EXPECT_TRUE(LmStr("1.00000005960464477539062501").toFloat(&out));
    EXPECT_EQ(out, 1.0F);
    // A double that is finite passes the test, whatever its 32 bits become.
    EXPECT_TRUE(LmStr("1e300").toFloat(&out));
    EXPECT_EQ(out, std::numeric_limits<float>::infinity());
}

TEST(LmStrNumbers, IntegersAreDecimal) {
    const struct {
        const char* text;
        bool taken;
        std::int64_t value;
    } cases[] = {
        {"0", true, 0},
        {"42", true, 42},
        {"-5", true, -5},
        {"+5", true, 5},
        {"  7", true, 7},
        {"010", true, 10},
        {"-0012", true, -12},
        {"0x10", false, 0},
        {"5 ", false, 0},
        {"", false, 0},
        {" ", false, 0},
        {"1.5", false, 0},
        {"x", false, 0},
        {"- 5", false, 0},
        {"2147483647", true, 2147483647},
        {"-2147483648", true, -2147483648LL},
    };
    for (const auto& [source, taken, value] : cases) {
        forEachForm(source, [taken = taken, value = value](LmStr& text) {
            std::int64_t wide = -77;
            EXPECT_EQ(text.toLong(wide), taken);
            std::int32_t narrow = -77;
            EXPECT_EQ(text.toInt(narrow), taken);
            if (taken) {
                EXPECT_EQ(wide, value);
                EXPECT_EQ(narrow, value);
            }
        });
    }
}

TEST(LmStrNumbers, IntegersHaveNoRangeTest) {
    std::int64_t wide = 0;
    EXPECT_TRUE(LmStr("99999999999999999999").toLong(wide));
    EXPECT_EQ(wide, std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(LmStr("-99999999999999999999").toLong(wide));
    EXPECT_EQ(wide, std::numeric_limits<std::int64_t>::min());
    std::int32_t narrow = 0;
    EXPECT_TRUE(LmStr("4294967297").toInt(narrow));
    EXPECT_EQ(narrow, 1);
    EXPECT_TRUE(LmStr("2147483648").toInt(narrow));
    EXPECT_EQ(narrow, std::numeric_limits<std::int32_t>::min());
    errno = 0;
}

TEST(LmStrNumbers, ToHexIsBaseSixteenIntoThirtyTwoBits) {
    const struct {
        const char* text;
        bool taken;
        std::int32_t value;
    } cases[] = {{"ff", true, 255},
                 {"0xFF", true, 255},
                 {"-1", true, -1},
                 {"10", true, 16},
                 {"ffffffff", true, -1},
                 {"1ffffffff", true, -1},
                 {"80000000", true, std::numeric_limits<int>::min()},
                 {"g", false, 0},
                 {"fg", false, 0},
                 {"", false, 0},
                 {"0x", false, 0}};
    for (const auto& [source, taken, value] : cases) {
        forEachForm(source, [taken = taken, value = value](LmStr& text) {
            std::int32_t out = -77;
            EXPECT_EQ(text.toHex(out), taken);
            if (taken) {
                EXPECT_EQ(out, value);
            }
        });
    }
}

TEST(LmStrNumbers, ToBoolKnowsEightTexts) {
    for (const char* source : {"1", "TRUE", "true", "tRuE", "ON", "on", "YES", "Yes"}) {
        forEachForm(source, [](LmStr& text) {
            bool out = false;
            EXPECT_TRUE(text.toBool(out));
            EXPECT_TRUE(out);
        });
    }
    for (const char* source : {"0", "FALSE", "False", "OFF", "off", "NO", "no", "nO"}) {
        forEachForm(source, [](LmStr& text) {
            bool out = true;
            EXPECT_TRUE(text.toBool(out));
            EXPECT_FALSE(out);
        });
    }
    for (const char* source : {"",  "2", "-1",  "01",    "00",   "10",  "true ", " true", "ONE",  "O", "Y",
                               "N", "T", "tru", "truex", "yess", "NOT", "OF",    "OFFF",  "fals", "1 "}) {
        for (const bool before : {false, true}) {
            forEachForm(source, [before](LmStr& text) {
                bool out = before;
                EXPECT_FALSE(text.toBool(out));
                EXPECT_EQ(out, before) << "nothing is written";
            });
        }
    }
}

TEST(LmStrNumbers, ParseIntPrefixTakesWhatIsThere) {
    const struct {
        const char* text;
        std::int64_t value;
        int consumed;
    } cases[] = {{"12abc", 12, 2},
                 {"  7 ", 7, 3},
                 {"-5-", -5, 2},
                 {"abc", 0, 0},
                 {"", 0, 0},
                 {"007", 7, 3},
                 {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), 19}};
    for (const auto& [source, value, consumed] : cases) {
        forEachForm(source, [value = value, consumed = consumed](LmStr& text) {
            errno = 0;
            std::int64_t out = -77;
            int taken = -77;
            EXPECT_TRUE(text.parseIntPrefix(out, taken));
            EXPECT_EQ(out, value);
            EXPECT_EQ(taken, consumed);
        });
    }
}

TEST(LmStrNumbers, ParseIntPrefixFailsOnARangeErrorEvenOfBefore) {
    std::int64_t out = 0;
    int consumed = 0;
    errno = 0;
    EXPECT_FALSE(LmStr("9223372036854775808").parseIntPrefix(out, consumed));
    EXPECT_EQ(errno, ERANGE);
    EXPECT_FALSE(LmStr("1").parseIntPrefix(out, consumed)) << "errno is not cleared first";
    errno = EINVAL;
    EXPECT_TRUE(LmStr("1").parseIntPrefix(out, consumed));
    errno = 0;
    EXPECT_TRUE(LmStr("1").parseIntPrefix(out, consumed));
}

} // namespace
} // namespace quillon
