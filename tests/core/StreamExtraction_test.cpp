#include "quillon/core/StreamExtraction.h"

#include "quillon/core/LmSStream.h"
#include "tests/core/NumberTexts.h"
#include "tests/core/PiecewiseBuf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

// Every extraction is compared with the standard operation that it stands for: on streams that hold the same
// text, in the same state, with the same flags and locale, both must give the same value, the same state and
// the same rest.

namespace quillon {
namespace {

using test::NumberTexts;
using test::PiecewiseBuf;

constexpr std::uint64_t seed = 7041;
constexpr int texts = 200000;
constexpr int mostOperations = 8;

/// Numbers as a country with a decimal comma writes them.
class CommaNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

enum class Operation {
    Int,
    Double,
    Float,
    Word,
    White,
    Peek,
    PeekBehindSpaces,
    Take,
    Char,
    SkipChars,
    RestOfLine,
    Line,
    PartOfLine
};
constexpr std::array operationNames{
    "extractInt",     "extractDouble",    "extractFloat",     "takeWaitingWord", "skipWhiteSpace",
    "peekChar",       "peekBehindSpaces", "takeChar",         "extractChar",     "skipChars",
    "skipRestOfLine", "extractLine",      "extractPartOfLine"};
constexpr int operationCount = operationNames.size();

/// What one extraction gave; the bits of reals, so that signed zeros and NaN compare.
struct Outcome {
    std::int32_t integer = -77;
    std::uint64_t doubleBits = 0;
    std::uint32_t floatBits = 0;
    char character = '~';
    std::string line = "unwritten";
    bool good = false;
    std::ios::iostate state = std::ios::goodbit;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& output, const Outcome& outcome) {
        return output << "int " << outcome.integer << ", double bits " << outcome.doubleBits
                      << ", float bits " << outcome.floatBits << ", char " << int{outcome.character}
                      << ", line \"" << outcome.line << "\", returned " << outcome.good << ", state "
                      << outcome.state;
    }
};

constexpr double unwrittenDouble = -77.5;
constexpr float unwrittenFloat = -77.25F;

template <class Bits, class Real>
Bits bitsOf(Real value) {
    Bits bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

Outcome byOurs(std::istream& input, Operation operation, int count) {
    Outcome outcome;
    double real = unwrittenDouble;
    float narrow = unwrittenFloat;
    switch (operation) {
    case Operation::Int:
        outcome.good = extractInt(input, outcome.integer);
        break;
    case Operation::Double:
        outcome.good = extractDouble(input, real);
        break;
    case Operation::Float:
        outcome.good = extractFloat(input, narrow);
        break;
    case Operation::Word:
        outcome.line = takeWaitingWord(input);
        if (outcome.line.empty()) {
            input >> outcome.line;
        }
        outcome.good = !input.fail();
        break;
    case Operation::White:
        outcome.good = skipWhiteSpace(input);
        break;
    case Operation::Peek:
        outcome.integer = peekChar(input);
        outcome.good = !input.fail();
        break;
    case Operation::PeekBehindSpaces:
        outcome.integer = peekBehindSpaces(input);
        outcome.good = !input.fail();
        break;
    case Operation::Take:
        outcome.integer = takeChar(input);
        outcome.good = !input.fail();
        break;
    case Operation::Char:
        outcome.good = extractChar(input, outcome.character);
        break;
    case Operation::SkipChars:
        outcome.good = skipChars(input, count);
        break;
    case Operation::RestOfLine:
        outcome.good = skipRestOfLine(input, count);
        break;
    case Operation::Line:
        outcome.good = extractLine(input, outcome.line, count);
        break;
    case Operation::PartOfLine:
        outcome.good = extractPartOfLine(input, outcome.line, count);
        break;
    }
    outcome.doubleBits = bitsOf<std::uint64_t>(real);
    outcome.floatBits = bitsOf<std::uint32_t>(narrow);
    outcome.state = input.rdstate();
    return outcome;
}

Outcome byTheStandard(std::istream& input, Operation operation, int count) {
    Outcome outcome;
    double real = unwrittenDouble;
    float narrow = unwrittenFloat;
    std::array<char, 128> block{};
    switch (operation) {
    case Operation::Int:
        input >> outcome.integer;
        break;
    case Operation::Double:
        input >> real;
        break;
    case Operation::Float: {
        double wide = 0;
        if (input >> wide) {
            narrow = static_cast<float>(wide);
        }
        break;
    }
    case Operation::Word:
        outcome.line.clear();
        input >> outcome.line;
        break;
    case Operation::White:
        input >> std::ws;
        break;
    case Operation::Peek:
        outcome.integer = input.peek();
        break;
    case Operation::PeekBehindSpaces:
        for (outcome.integer = input.peek();
             outcome.integer != std::char_traits<char>::eof() &&
             std::string_view(" \t\n\v\f\r").find(static_cast<char>(outcome.integer)) !=
                 std::string_view::npos;
             outcome.integer = input.peek()) {
            input.get();
        }
        break;
    case Operation::Take:
        outcome.integer = input.get();
        break;
    case Operation::Char:
        input.get(outcome.character);
        break;
    case Operation::SkipChars:
        input.ignore(count);
        break;
    case Operation::RestOfLine:
        input.ignore(count, '\n');
        break;
    case Operation::Line: {
        input.getline(block.data(), count);
        const bool tookNewline = !input.eof() && !input.fail();
        outcome.line.assign(block.data(), static_cast<std::size_t>(input.gcount()) - (tookNewline ? 1 : 0));
        break;
    }
    case Operation::PartOfLine:
        input.get(block.data(), count);
        outcome.line.assign(block.data(), static_cast<std::size_t>(input.gcount()));
        break;
    }
    outcome.good = !input.fail();
    outcome.doubleBits = bitsOf<std::uint64_t>(real);
    outcome.floatBits = bitsOf<std::uint32_t>(narrow);
    outcome.state = input.rdstate();
    return outcome;
}

std::string escaped(std::string_view text) {
    return testing::PrintToString(std::string(text));
}

/// Two streams over the same text: one for our operations and one for the standard ones.
class StreamPair {
public:
    explicit StreamPair(const std::locale& locale) {
        ours.imbue(locale);
        standard.imbue(locale);
    }

    void start(const std::string& text, std::size_t areaSize, std::ios::fmtflags flags,
               std::ios::iostate state) {
        ourBuf.start(text, areaSize);
        standardBuf.start(text, areaSize);
        for (std::istream* stream : {&ours, &standard}) {
            stream->flags(flags);
            stream->clear(state);
        }
    }

    void clear() {
        ours.clear();
        standard.clear();
    }

    bool failed() const { return standard.fail(); }

    /// Runs one operation on both streams and compares everything that shows.
    bool agreeOn(Operation operation, int count) {
        const std::string_view before = standardBuf.rest();
        const std::ios::iostate state = standard.rdstate();
        const Outcome expected = byTheStandard(standard, operation, count);
        const Outcome actual = byOurs(ours, operation, count);
        if (actual == expected && ourBuf.rest() == standardBuf.rest()) {
            return true;
        }
        ADD_FAILURE() << operationNames[static_cast<std::size_t>(operation)] << "(" << count << ") of "
                      << escaped(before) << " in state " << state << " with flags " << standard.flags()
                      << "\n  ours:     " << actual << ", leaves " << escaped(ourBuf.rest())
                      << "\n  standard: " << expected << ", leaves " << escaped(standardBuf.rest());
        return false;
    }

private:
    PiecewiseBuf ourBuf;
    PiecewiseBuf standardBuf;
    std::istream ours{&ourBuf};
    std::istream standard{&standardBuf};
};

constexpr std::ios::fmtflags defaultFlags = std::ios::skipws | std::ios::dec;

std::ios::fmtflags anyFlags(NumberTexts& random) {
    static constexpr std::array bases{std::ios::dec, std::ios::hex, std::ios::oct, std::ios::fmtflags{}};
    std::ios::fmtflags flags = bases[random.below(bases.size())];
    if (!random.oneIn(3)) {
        flags |= std::ios::skipws;
    }
    if (random.oneIn(3)) {
        flags |= std::ios::fixed;
    }
    return flags;
}

int anyCount(NumberTexts& random) {
    static constexpr std::array counts{1, 2, 3, 8, 20, 79, 80, 81, 100};
    return counts[random.below(counts.size())];
}

Operation anyOperation(NumberTexts& random) {
    // Numbers come first in the data files and first here.
    return static_cast<Operation>(random.oneIn(2) ? random.below(3) : random.below(operationCount));
}

/// Goes through a text by random operations.
bool agreeThroughText(StreamPair& streams, NumberTexts& random) {
    for (int step = 0; step < mostOperations; ++step) {
        if (!streams.agreeOn(anyOperation(random), anyCount(random))) {
            return false;
        }
        if (streams.failed()) {
            if (random.oneIn(3)) {
                return true;
            }
            streams.clear();
        }
    }
    return true;
}

TEST(StreamExtraction, GivesWhatTheStandardGives) {
    NumberTexts random(seed);
    StreamPair classic(std::locale::classic());
    StreamPair comma(std::locale(std::locale::classic(), new CommaNumbers));
    int failures = 0;
    for (int number = 0; number < texts && failures < 5; ++number) {
        const std::string text = random.next();
        const bool plain = !random.oneIn(4);
        const std::size_t areaSize = random.oneIn(4) ? 1 + random.below(16) : 100000;
        StreamPair& streams = !plain && random.oneIn(2) ? comma : classic;
        const std::ios::fmtflags flags = plain || random.oneIn(3) ? defaultFlags : anyFlags(random);
        streams.start(text, areaSize, flags, std::ios::goodbit);
        failures += agreeThroughText(streams, random) ? 0 : 1;
    }
}

TEST(StreamExtraction, OfOneNumberAtATimeGivesWhatTheStandardGives) {
    NumberTexts random(seed + 1);
    StreamPair streams(std::locale::classic());
    int failures = 0;
    for (int number = 0; number < texts && failures < 5; ++number) {
        const std::string text = random.number();
        for (const Operation operation : {Operation::Int, Operation::Double, Operation::Float}) {
            streams.start(text, 100000, defaultFlags, std::ios::goodbit);
            failures += streams.agreeOn(operation, 1) ? 0 : 1;
        }
    }
}

TEST(StreamExtraction, OfEveryPrefixGivesWhatTheStandardGives) {
    StreamPair streams(std::locale::classic());
    for (const std::string whole :
         {"  -2147483648 ", "+12.5e-10x", "\n\t .5E+3,", "0x1F", "  \n", "1e400 ", "-.e1"}) {
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            const std::string text = whole.substr(0, length);
            for (std::size_t areaSize = 1; areaSize <= length + 1; ++areaSize) {
                for (int operation = 0; operation < operationCount; ++operation) {
                    streams.start(text, areaSize, defaultFlags, std::ios::goodbit);
                    EXPECT_TRUE(streams.agreeOn(static_cast<Operation>(operation), 5));
                    EXPECT_TRUE(streams.agreeOn(static_cast<Operation>(operation), 5));
                }
            }
        }
    }
}

TEST(StreamExtraction, OnAStreamThatIsNotGoodGivesWhatTheStandardGives) {
    StreamPair streams(std::locale::classic());
    for (const std::string text : {"", " ", "12 3", "word\nline"}) {
        for (const std::ios::iostate state :
             {std::ios::eofbit, std::ios::failbit, std::ios::badbit, std::ios::eofbit | std::ios::failbit}) {
            for (int operation = 0; operation < operationCount; ++operation) {
                streams.start(text, 3, defaultFlags, state);
                EXPECT_TRUE(streams.agreeOn(static_cast<Operation>(operation), 5));
            }
        }
    }
}

TEST(StreamExtraction, WithoutABufferFails) {
    for (int operation = 0; operation < operationCount; ++operation) {
        std::istream ours(nullptr);
        std::istream standard(nullptr);
        const Outcome expected = byTheStandard(standard, static_cast<Operation>(operation), 5);
        EXPECT_EQ(byOurs(ours, static_cast<Operation>(operation), 5), expected) << operation;
    }
}

TEST(StreamExtraction, FlushesATiedStreamAsTheStandardDoes) {
    struct CountedFlushes : std::stringbuf {
        int count = 0;
        int sync() override { return ++count, 0; }
    };
    for (int operation = 0; operation < operationCount; ++operation) {
        std::array<int, 2> counts{};
        for (const bool isOurs : {false, true}) {
            CountedFlushes flushes;
            std::ostream prompt(&flushes);
            std::istringstream input("12 3\n");
            input.tie(&prompt);
            (isOurs ? byOurs : byTheStandard)(input, static_cast<Operation>(operation), 3);
            counts[isOurs ? 1 : 0] = flushes.count;
        }
        EXPECT_EQ(counts[1], counts[0]) << operation;
    }
}

TEST(StreamExtraction, OfLinesAtTheLimitGivesWhatTheStandardGives) {
    StreamPair streams(std::locale::classic());
    for (const int count : {1, 2, 5, 80, 81}) {
        for (int length = std::max(0, count - 3); length <= count + 2; ++length) {
            const std::string line(static_cast<std::size_t>(length), 'x');
            for (const std::string& text :
                 {line, line + "\n", line + "\nnext\n", line + "\r\n", "\n" + line}) {
                for (const std::size_t areaSize : {std::size_t{1}, std::size_t{7}, std::size_t{1000}}) {
                    for (const Operation operation : {Operation::Line, Operation::PartOfLine,
                                                      Operation::RestOfLine, Operation::SkipChars}) {
                        streams.start(text, areaSize, defaultFlags, std::ios::goodbit);
                        EXPECT_TRUE(streams.agreeOn(operation, count));
                        EXPECT_TRUE(streams.agreeOn(operation, count));
                    }
                }
            }
        }
    }
}

TEST(StreamExtraction, WorksOnMemoryAndStringStreams) {
    const std::string text = " 12 -3.5 7.25 word\nrest of line\nnext";
    LmISStream memory(text.c_str());
    std::istringstream standard(text);
    for (std::istream* input : {static_cast<std::istream*>(&memory), static_cast<std::istream*>(&standard)}) {
        std::int32_t integer = 0;
        double real = 0;
        float narrow = 0;
        char c = 0;
        std::string line;
        EXPECT_TRUE(extractInt(*input, integer));
        EXPECT_TRUE(extractDouble(*input, real));
        EXPECT_TRUE(extractFloat(*input, narrow));
        EXPECT_TRUE(skipWhiteSpace(*input));
        EXPECT_TRUE(extractChar(*input, c));
        EXPECT_TRUE(skipRestOfLine(*input));
        EXPECT_TRUE(skipChars(*input, 5));
        EXPECT_TRUE(extractPartOfLine(*input, line, 4));
        EXPECT_EQ(line, "of ");
        EXPECT_TRUE(extractLine(*input, line, 80));
        EXPECT_EQ(line, "line");
        EXPECT_EQ(integer, 12);
        EXPECT_EQ(real, -3.5);
        EXPECT_EQ(narrow, 7.25F);
        EXPECT_EQ(c, 'w');
        EXPECT_TRUE(skipRestOfLine(*input)) << "the end of the input is no failure";
        EXPECT_EQ(input->rdstate(), std::ios::eofbit);
        EXPECT_FALSE(extractInt(*input, integer));
    }
}

TEST(StreamExtraction, ShowsWhatWaitsInTheBufferOfAGoodStream) {
    LmISStream input("12 words");
    EXPECT_EQ(waitingChars(input), "12 words");
    takeWaiting(input, 3);
    EXPECT_EQ(waitingChars(input), "words");
    EXPECT_EQ(takeWaitingWord(input), "") << "what ends the word does not wait";
    EXPECT_EQ(waitingChars(input), "words");
    input.setstate(std::ios::eofbit);
    EXPECT_EQ(waitingChars(input), "");
}

TEST(StreamExtraction, ShowsNothingOfAStreamThatHasToBeAsked) {
    std::ostringstream prompt;
    LmISStream input("12 words");
    input.tie(&prompt);
    EXPECT_EQ(waitingChars(input), "");
    EXPECT_EQ(takeWaitingWord(input), "");
}

TEST(StreamExtraction, TheRestOfALineEndsAfterEightyCharacters) {
    const std::string text = std::string(85, 'x') + "\n";
    LmISStream input(text.c_str());
    EXPECT_TRUE(skipRestOfLine(input));
    std::string line;
    EXPECT_TRUE(extractLine(input, line, 80));
    EXPECT_EQ(line, "xxxxx");
}

TEST(Narrowing, GoesToTheNearestFloat) {
    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        double wide;
        float narrow;
    } cases[] = {{0.1, 0.1F},
                 {16777217.0, 16777216.0F},
                 {-0.0, -0.0F},
                 {1e300, infinity},
                 {-1e300, -infinity},
                 {3.4028235677973366e38, infinity},
                 {3.4028235677973362e38, std::numeric_limits<float>::max()},
                 {1e-46, 0.0F},
                 {8e-46, std::numeric_limits<float>::denorm_min()},
                 {std::numeric_limits<double>::infinity(), infinity}};
    for (const auto& each : cases) {
        EXPECT_EQ(bitsOf<std::uint32_t>(narrowed(each.wide)), bitsOf<std::uint32_t>(each.narrow))
            << each.wide;
    }
    EXPECT_TRUE(std::isnan(narrowed(std::numeric_limits<double>::quiet_NaN())));
}

TEST(ReadArea, ShowsWhatWaitsAndTakesIt) {
    LmISStream input("hello world");
    ReadArea area(*input.rdbuf());
    EXPECT_EQ(std::string(area.begin(), area.end()), "hello world");
    area.take(6);
    EXPECT_EQ(std::string(area.begin(), area.end()), "world");
    EXPECT_EQ(input.get(), 'w');
    EXPECT_EQ(std::string(area.begin(), area.end()), "orld");
    area.take(4);
    EXPECT_EQ(area.begin(), area.end());
    EXPECT_EQ(input.get(), std::char_traits<char>::eof());
}

} // namespace
} // namespace quillon
