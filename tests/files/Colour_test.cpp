#include "quillon/files/Colour.h"

#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using test::error;
using test::StatusChain;

constexpr std::uint32_t untouched = 0x12345678;

TEST(ColourToString, PrintsSixSmallDigitsOfTheLowTwentyFourBits) {
    EXPECT_EQ(colourToString(0xFF0080), "#ff0080");
    EXPECT_EQ(colourToString(0), "#000000");
    EXPECT_EQ(colourToString(0xA), "#00000a");
    EXPECT_EQ(colourToString(0x01020304), "#020304");
    EXPECT_EQ(colourToString(0xFFFFFFFF), "#ffffff");
}

struct Parsed {
    const char* text;
    std::uint32_t colour;
    int start;
    int end;
};

const std::vector<Parsed> colours = {
    // "#" and six digits.
    {"#ff0080", 0xFF0080, 0, 7},
    {"#FF0080", 0xFF0080, 0, 7},
    {"#aBcDeF", 0xABCDEF, 0, 7},
    {"#000000", 0, 0, 7},
    {"#012345 ", 0x012345, 0, 7},
    {"#ff0080 x", 0xFF0080, 0, 7},
    {"#ff0080\n#112233", 0xFF0080, 0, 7},
    {" \t\n\v\f\r#ff0080", 0xFF0080, 6, 13},
    // "0x" and any number of digits.
    {"0x1", 1, 0, 3},
    {"0xff0080", 0xFF0080, 0, 8},
    {"0xFF0080\t", 0xFF0080, 0, 8},
    {"  0xabc 0x1", 0xABC, 2, 7},
    {"0x0", 0, 0, 3},
    {"0x00000000000000000000000000000001", 1, 0, 34},
    // Beyond 24 bits, cut to 32, and beyond what can be read at all.
    {"0xABCDEF12", 0xABCDEF12, 0, 10},
    {"0xFFFFFFFF", 0xFFFFFFFF, 0, 10},
    {"0x100000001", 1, 0, 11},
    {"0x1FFFFFFFF00000002", 0xFFFFFFFF, 0, 19},
};

TEST(ParseColourPrefix, ReadsAColourAndTellsWhereItStands) {
    for (const Parsed& expected : colours) {
        SCOPED_TRACE(expected.text);
        std::uint32_t colour = untouched;
        int start = -1;
        int end = -1;
        EXPECT_TRUE(parseColourPrefix(colour, start, end, expected.text));
        EXPECT_EQ(colour, expected.colour);
        EXPECT_EQ(start, expected.start);
        EXPECT_EQ(end, expected.end);
    }
}

const std::vector<const char*> noColours = {
    // Nothing there.
    "",
    " ",
    " \t\n\v\f\r",
    // Another number of digits than six.
    "#",
    "# ",
    "#f",
    "#ff008",
    "#ff008 0",
    "#ff00800",
    "#ff0080ff",
    // What are no digits.
    "#gg0080",
    "#ff008g",
    "#ff00-1",
    "#+f0080",
    "#-f0080",
    "# ff0080",
    "#ff 0080",
    "#0x1234",
    "##ff0080",
    "#\xEF\xBC\x91"
    "00000",
    // Something right behind.
    "#ff0080x",
    "#ff0080#",
    "#ff0080,",
    "#ff0080\x80",
    "#ff0080\xA0",
    "0x1g",
    "0x1.5",
    "0x1#",
    "0x1x",
    "0x0x1",
    // "0x" that is none, or has no digit.
    "0",
    "0 ",
    "00x1",
    "0 x1",
    "0X1",
    "0y1",
    "0x",
    "0x ",
    "0xg",
    "0x-1",
    "0x+1",
    "0x 1",
    "-0x1",
    "+0x1",
    // Neither.
    "ff0080",
    "x1",
    "1",
    "red",
    "\"#ff0080\"",
    "\x80#ff0080",
};

TEST(ParseColourPrefix, RefusesAllElse) {
    for (const char* const text : noColours) {
        SCOPED_TRACE(text);
        std::uint32_t colour = untouched;
        int start = -1;
        int end = -1;
        EXPECT_FALSE(parseColourPrefix(colour, start, end, text));
        EXPECT_EQ(colour, untouched);
    }
}

TEST(ParseColour, WantsTheColourAlone) {
    const std::vector<std::pair<const char*, bool>> texts = {
        {"#ff0080", true},    {"0x1", true},        {" #ff0080", false}, {"#ff0080 ", false},
        {"#ff0080\n", false}, {" #ff0080 ", false}, {"0x1 0x2", false},  {"", false},
    };
    for (const auto& [text, isColour] : texts) {
        std::uint32_t colour = untouched;
        EXPECT_EQ(parseColour(colour, text), isColour) << text;
        EXPECT_EQ(colour == untouched, !isColour) << text;
    }
    for (const char* const text : noColours) {
        std::uint32_t colour = untouched;
        EXPECT_FALSE(parseColour(colour, text)) << text;
        EXPECT_EQ(colour, untouched) << text;
    }
}

TEST(ParseColour, ReadsWhatColourToStringWrites) {
    for (const std::uint32_t colour : {0x0U, 0x1U, 0xA0B0CU, 0x7F8081U, 0xFFFFFFU}) {
        std::uint32_t readBack = untouched;
        EXPECT_TRUE(parseColour(readBack, colourToString(colour)));
        EXPECT_EQ(readBack, colour);
    }
}

TEST(ReadColor, TakesOneColourOffTheText) {
    const test::CleanStatus clean;
    LmStr text = " \n#ff0080 0x10\tred";
    std::uint32_t colour = 0;
    EXPECT_TRUE(readColor(text, colour));
    EXPECT_EQ(colour, 0xFF0080U);
    EXPECT_EQ(text, " 0x10\tred");
    EXPECT_TRUE(readColor(text, colour));
    EXPECT_EQ(colour, 0x10U);
    EXPECT_EQ(text, "\tred");
    EXPECT_EQ(test::chainOf(), StatusChain{});
}

TEST(ReadColor, OfTheLastColourLeavesAnEmptyText) {
    LmStr text = "0x1";
    std::uint32_t colour = 0;
    EXPECT_TRUE(readColor(text, colour));
    EXPECT_EQ(text, "");
}

TEST(ReadColor, ReportsWhatIsNoneAndTakesTheWhiteSpaceAlone) {
    for (const char* const word : noColours) {
        const test::CleanStatus clean;
        LmStr expectedRest = word;
        expectedRest.trimLeft();
        LmStr text = LmStr(" \t") + word;
        std::uint32_t colour = untouched;
        EXPECT_FALSE(readColor(text, colour)) << word;
        EXPECT_EQ(colour, untouched) << word;
        EXPECT_EQ(text, expectedRest) << word;
        EXPECT_EQ(test::chainOf(), (StatusChain{error("Invalid color value.")})) << word;
    }
}

} // namespace
} // namespace quillon
