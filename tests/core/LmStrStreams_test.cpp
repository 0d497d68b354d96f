#include "quillon/core/LmStr.h"

#include "tests/core/PiecewiseBuf.h"
#include "tests/core/StrForms.h"
#include "tests/support/FailingDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ios>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::textOf;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr std::ios::iostate good = std::ios::goodbit;
constexpr std::ios::iostate endAndFailure = std::ios::eofbit | std::ios::failbit;

std::string repeated(std::size_t count, char c) {
    return std::string(count, c);
}

std::string restOf(std::istream& input) {
    input.clear();
    return std::string(std::istreambuf_iterator<char>(input), {});
}

// --- Words ---------------------------------------------------------------------------------------

TEST(LmStrReadWord, SkipsWhiteSpaceAndPutsBackWhatFollows) {
    std::istringstream input(" \t\n\v\f\r one\ttwo");
    LmStr word("old");
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "one");
    EXPECT_EQ(input.rdstate(), good);
    EXPECT_EQ(input.peek(), '\t');
    input >> word;
    EXPECT_STREQ(word.c_str(), "two");
    EXPECT_EQ(input.rdstate(), good) << "the last word of a file is no failure";
}

TEST(LmStrReadWord, AtTheEndLeavesTheStringAndTheFailure) {
    for (const char* source : {"", "  \n\t "}) {
        std::istringstream input(source);
        LmStr word("old");
        const char* const place = word.c_str();
        word.readWord(input);
        EXPECT_EQ(word.c_str(), place);
        EXPECT_STREQ(word.c_str(), "old");
        EXPECT_EQ(input.rdstate(), endAndFailure);
        LmStr null;
        null.readWord(input);
        EXPECT_TRUE(null.isNull());
        EXPECT_EQ(input.rdstate(), endAndFailure);
    }
}

TEST(LmStrReadWord, AFailedStreamLeavesTheString) {
    std::istringstream input("word");
    input.setstate(std::ios::failbit);
    LmStr word("old");
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "old");
    EXPECT_EQ(input.rdstate(), std::ios::failbit);
    EXPECT_EQ(restOf(input), "word");
}

TEST(LmStrReadWord, OfAnyLength) {
    for (const std::size_t length : {1U, 254U, 255U, 256U, 257U, 509U, 510U, 511U, 5000U}) {
        for (const char* behind : {"", " ", "\nnext"}) {
            SCOPED_TRACE(testing::Message() << length << " characters, then \"" << behind << '"');
            const std::string expected = repeated(length - 1, 'w') + "W";
            std::istringstream input(" " + expected + behind);
            LmStr word;
            word.readWord(input);
            EXPECT_EQ(textOf(word), expected);
            EXPECT_EQ(input.rdstate(), good);
            EXPECT_EQ(restOf(input), behind);
        }
    }
}

TEST(LmStrReadWord, LeavesCopiesOfTheOldText) {
    std::istringstream input("new");
    LmStr word("old");
    const LmStr copy(word);
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "new");
    EXPECT_STREQ(copy.c_str(), "old");
}

TEST(LmStrReadWord, HighBytesBelongToTheWord) {
    std::istringstream input("\xA0\x85\xFF z");
    LmStr word;
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "\xA0\x85\xFF");
}

TEST(LmStrReadWord, WithoutSkippingTheEndIsAFailureTooWhenNothingIsLeft) {
    std::istringstream input("one");
    input >> std::noskipws;
    LmStr word;
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "one");
    EXPECT_EQ(input.rdstate(), good);
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "");
    EXPECT_EQ(input.rdstate(), endAndFailure);
}

TEST(LmStrReadWord, EndsWhereTheDeviceFails) {
    test::FailingDevice device(" half");
    std::istream input(&device);
    LmStr word;
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "half");
    EXPECT_EQ(input.rdstate(), good);
    word = "old";
    word.readWord(input);
    EXPECT_STREQ(word.c_str(), "old");
    EXPECT_TRUE(input.bad());
}

// --- Lines ---------------------------------------------------------------------------------------

/// All lines of a text, up to the null string that shows the end.
std::vector<std::string> linesOf(const std::string& source) {
    std::istringstream input(source);
    std::vector<std::string> lines;
    LmStr line;
    for (line.readLine(input); !line.isNull() && lines.size() < 100; line.readLine(input)) {
        EXPECT_EQ(input.rdstate(), good) << "after line " << lines.size() + 1;
        lines.push_back(textOf(line));
    }
    EXPECT_TRUE(input.eof());
    return lines;
}

TEST(LmStrReadLine, DropsTheLineEnd) {
    EXPECT_THAT(linesOf(""), ElementsAre());
    EXPECT_THAT(linesOf("a\nb\n"), ElementsAre("a", "b"));
    EXPECT_THAT(linesOf("a\nb"), ElementsAre("a", "b"));
    EXPECT_THAT(linesOf("\n"), ElementsAre(""));
    EXPECT_THAT(linesOf("\n\na"), ElementsAre("", "", "a"));
    EXPECT_THAT(linesOf("a\n\n"), ElementsAre("a", ""));
    EXPECT_THAT(linesOf("a\r\nb\r\n"), ElementsAre("a", "b"));
    EXPECT_THAT(linesOf("\r\n\r\n"), ElementsAre("", ""));
    EXPECT_THAT(linesOf("a\r"), ElementsAre("a"));
    EXPECT_THAT(linesOf("\r"), ElementsAre(""));
    EXPECT_THAT(linesOf(" a \t\n"), ElementsAre(" a \t"));
}

TEST(LmStrReadLine, KeepsACarriageReturnWithinTheLine) {
    EXPECT_THAT(linesOf("ab\rcd\n"), ElementsAre("ab\rcd"));
    EXPECT_THAT(linesOf("\r\r\n"), ElementsAre("\r"));
    EXPECT_THAT(linesOf("\rab\n"), ElementsAre("\rab"));
}

TEST(LmStrReadLine, OfAnyLength) {
    for (const std::size_t length : {254U, 255U, 256U, 257U, 509U, 510U, 511U, 765U, 5000U}) {
        const std::string line = repeated(length - 1, 'x') + "y";
        SCOPED_TRACE(length);
        EXPECT_THAT(linesOf(line), ElementsAre(line));
        EXPECT_THAT(linesOf(line + "\n"), ElementsAre(line));
        EXPECT_THAT(linesOf(line + "\nnext\n"), ElementsAre(line, "next"));
        EXPECT_THAT(linesOf(line + "\n\n"), ElementsAre(line, ""));
        if (length % 255 != 0) {
            EXPECT_THAT(linesOf(line + "\r\nnext\n"), ElementsAre(line, "next"));
        }
    }
}

TEST(LmStrReadLine, AReturnRightBehindAFullChunkEndsTheLine) {
    // Lines are taken in chunks of 255 characters, and what follows a chunk ends the line when it is CR or
    // LF.
    for (const std::size_t length : {255U, 510U}) {
        const std::string line = repeated(length, 'x');
        EXPECT_THAT(linesOf(line + "\r\nnext\n"), ElementsAre(line, "", "next"));
        EXPECT_THAT(linesOf(line + "\rnext\n"), ElementsAre(line, "next"));
    }
}

TEST(LmStrReadLine, AReturnAtTheEndOfAFullChunkVanishes) {
    const std::string chunk = repeated(254, 'x');
    EXPECT_THAT(linesOf(chunk + "\rtail\n"), ElementsAre(chunk + "tail"));
    EXPECT_THAT(linesOf(chunk + "\r\nnext"), ElementsAre(chunk, "next"));
    EXPECT_THAT(linesOf(repeated(255, 'y') + chunk + "\rtail\n"),
                ElementsAre(repeated(255, 'y') + chunk + "tail"));
}

TEST(LmStrReadLine, AtTheEndIsNullAndTheStreamStaysAtItsEnd) {
    std::istringstream input("a");
    LmStr line;
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "a");
    line = "old";
    line.readLine(input);
    EXPECT_TRUE(line.isNull());
    line = "old";
    line.readLine(input);
    EXPECT_TRUE(line.isNull());
    EXPECT_EQ(input.rdstate(), endAndFailure);
}

TEST(LmStrReadLine, ClearsAFailureThatIsNotTheEnd) {
    std::istringstream input("abc\ndef\n");
    input.setstate(std::ios::failbit);
    LmStr line;
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "abc");
    EXPECT_EQ(input.rdstate(), good);
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "def");
}

TEST(LmStrReadLine, EndsWhereTheDeviceFails) {
    test::FailingDevice device("first\nhalf");
    std::istream input(&device);
    LmStr line;
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "first");
    line.readLine(input);
    EXPECT_STREQ(line.c_str(), "half");
    line.readLine(input);
    EXPECT_TRUE(line.isNull());
    line.readLine(input);
    EXPECT_TRUE(line.isNull());
    EXPECT_TRUE(input.bad());
}

TEST(LmStrReadLine, EndsAtANulAndGoesOnWithTheNextLine) {
    EXPECT_THAT(linesOf(std::string("ab\0cd\nef\n\0\n", 11)), ElementsAre("ab", "ef", ""));
}

TEST(LmStrReadLine, LeavesCopiesOfTheOldText) {
    std::istringstream input("first\nsecond\n");
    LmStr line;
    line.readLine(input);
    const LmStr copy(line);
    line.readLine(input);
    EXPECT_STREQ(copy.c_str(), "first");
    EXPECT_STREQ(line.c_str(), "second");
}

// --- Up to a delimiter ---------------------------------------------------------------------------

TEST(LmStrReadUntil, StopsAtTheDelimiterOrTheCount) {
    const struct {
        const char* source;
        int max;
        const char* text;
        const char* rest;
    } cases[] = {{"abc;def", 10, "abc", ";def"}, {"abc;def", 3, "abc", ";def"},
                 {"abc;def", 2, "ab", "c;def"},  {"a b\nc;d", 10, "a b\nc", ";d"},
                 {"abc", 10, "abc", ""},         {"abc", 1, "a", "bc"}};
    for (const auto& each : cases) {
        std::istringstream input(each.source);
        LmStr text("old");
        text.readUntil(input, each.max, ';');
        EXPECT_STREQ(text.c_str(), each.text) << each.source << ", " << each.max;
        EXPECT_EQ(restOf(input), each.rest) << each.source << ", " << each.max;
    }
}

// --- Against the standard's own operations ------------------------------------------------------------

using Text = std::optional<std::string>;

/// `readLine` step by step.
void readLineByChunks(std::istream& input, Text& line) {
    for (bool first = true;; first = false) {
        std::array<char, 256> chunk{};
        input.get(chunk.data(), 256);
        std::string text(chunk.data());
        if (input.eof() && text.empty()) {
            line.reset();
            return;
        }
        if (input.fail()) {
            input.clear();
            text.clear();
        }
        if (text.ends_with('\r')) {
            text.pop_back();
        }
        line = first ? text : *line + text;
        const int next = input.peek();
        if (next == '\n' || next == '\r') {
            input.get();
            return;
        }
        if (next == std::char_traits<char>::eof()) {
            input.clear();
            return;
        }
    }
}

/// `readWord` by the standard's extraction of a word.
void readWordByExtraction(std::istream& input, Text& word) {
    std::string text;
    if (input >> text) {
        word = text;
        input.clear();
    }
}

std::string anyLines(std::mt19937& random) {
    static constexpr std::array lengths{0, 1, 5, 79, 254, 255, 256, 300, 509, 510, 511};
    static constexpr std::array ends{"\n", "\n", "\r\n", "\r", " ", "\t\n", ""};
    std::string text;
    for (auto count = random() % 6; count > 0; --count) {
        const int length = lengths[random() % (random() % 3 == 0 ? lengths.size() : 3)];
        text += repeated(static_cast<std::size_t>(length), 'w') + ends[random() % ends.size()];
    }
    return text;
}

TEST(LmStrReading, GivesWhatTheStandardOperationsGive) {
    std::mt19937 random(314);
    for (int number = 0; number < 20000; ++number) {
        const std::string source = anyLines(random);
        test::PiecewiseBuf ourBuf;
        test::PiecewiseBuf standardBuf;
        const std::size_t areaSize = random() % 2 == 0 ? 1 + random() % 300 : 10000;
        ourBuf.start(source, areaSize);
        standardBuf.start(source, areaSize);
        std::istream ours(&ourBuf);
        std::istream standard(&standardBuf);
        LmStr text("old");
        Text expected("old");
        for (int step = 0; step < 8; ++step) {
            if (random() % 2 == 0) {
                text.readLine(ours);
                readLineByChunks(standard, expected);
            } else {
                text.readWord(ours);
                readWordByExtraction(standard, expected);
            }
            ASSERT_EQ(text.isNull(), !expected) << testing::PrintToString(source) << ", " << step;
            ASSERT_EQ(textOf(text), expected.value_or("")) << testing::PrintToString(source) << ", " << step;
            ASSERT_EQ(ours.rdstate(), standard.rdstate()) << testing::PrintToString(source) << ", " << step;
            ASSERT_EQ(ourBuf.rest(), standardBuf.rest()) << testing::PrintToString(source) << ", " << step;
        }
    }
}

TEST(LmStrReadUntil, OfAnyLength) {
    for (const int length : {255, 256, 1024, 4000}) {
        const std::string expected = repeated(static_cast<std::size_t>(length), 'x');
        std::istringstream input(expected + "yyy;");
        LmStr text;
        text.readUntil(input, length, ';');
        EXPECT_EQ(textOf(text), expected);
        text.readUntil(input, 2 * length, ';');
        EXPECT_STREQ(text.c_str(), "yyy");
    }
}

} // namespace
} // namespace quillon
