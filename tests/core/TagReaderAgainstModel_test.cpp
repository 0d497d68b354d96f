#include "quillon/core/TagReader.h"

#include "quillon/core/LmSStream.h"
#include "tests/core/PiecewiseBuf.h"
#include "tests/core/TagReading.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

// Random nested texts, read by `readTag` and by a plain second reader that works on the whole text by index.
// And `findBlockEnd` against both: it accepts the same blocks, and its range holds the same items.

namespace quillon {
namespace {

using test::error;
using test::isLast;
using test::PiecewiseBuf;
using test::readOne;
using test::StatusChain;
using test::takeChain;
using test::takeOne;
using Item = test::TagReading;

constexpr unsigned seed = 92;
constexpr int texts = 15000;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string trimmed(const std::string& text) {
    static constexpr const char* space = " \t\n\v\f\r";
    const std::size_t begin = text.find_first_not_of(space);
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(space) - begin + 1);
}

std::string frontTrimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t\n\v\f\r");
    return begin == std::string::npos ? "" : text.substr(begin);
}

/// The second reader.
class ModelReader {
public:
    explicit ModelReader(std::string_view source, std::size_t start = 0) : text(source), at(start) {}

    Item next() {
        Item item;
        std::optional<std::string> line;
        do {
            line = takeLine();
            if (!line) {
                return item;
            }
            *line = frontTrimmed(*line);
        } while (line->empty() || line->front() == '#');
        if (line->find(':') != std::string::npos) {
            return simpleItem(*line);
        }
        if (line->find('{') != std::string::npos) {
            return blockItem(*line);
        }
        return failed(item, "No ':' or '{' following tag '" + *line + "'.");
    }

    /// Reads a block from behind the line of its opening brace.
    Item block(const std::string& tag) {
        Item item;
        item.tag = tag;
        std::string stored;
        for (int depth = 1;;) {
            while (isBlank(look())) {
                ++at;
            }
            if (ended()) {
                return failed(item, "Hit end of file without reading '}' for tag " + tag);
            }
            if (look() == '#') {
                skipToNewline();
            } else if (look() == '}') {
                closingBrace = at++;
                while (isBlank(look())) {
                    ++at;
                }
                if (look() == '#') {
                    skipToNewline();
                }
                if (!atLineEnd()) {
                    return failed(item, std::string("Invalid character ('") + look() +
                                            "') trailing '}' for '" + tag + "'.");
                }
                if (--depth == 0) {
                    item.value = stored;
                    return item;
                }
                stored += '}';
            }
            depth += storeRestOfLine(stored) ? 1 : 0;
        }
    }

    std::size_t closingBrace = 0;

private:
    std::string_view text;
    std::size_t at;

    bool ended() const { return at == text.size(); }
    char look() const { return ended() ? '\0' : text[at]; }
    bool atLineEnd() const { return ended() || look() == '\n' || look() == '\r'; }

    void skipToNewline() { at = std::min(text.find('\n', at), text.size()); }

    static Item failed(Item item, const std::string& message) {
        item = Item();
        item.result = false;
        item.chain = {error(message)};
        return item;
    }

    std::optional<std::string> takeLine() {
        if (ended()) {
            return std::nullopt;
        }
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line(text.substr(at, end - at));
        at = std::min(end + 1, text.size());
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        return line;
    }

    Item simpleItem(const std::string& line) {
        Item item;
        const std::size_t colon = line.find(':');
        std::string value = line.substr(colon + 1);
        while (!value.empty() && value.back() == '\\') {
            value.back() = '\n';
            value += takeLine().value_or("");
        }
        item.tag = trimmed(line.substr(0, colon));
        item.value = trimmed(value);
        item.simple = true;
        return item;
    }

    Item blockItem(const std::string& line) {
        const std::size_t brace = line.find('{');
        const std::string tag = trimmed(line.substr(0, brace));
        const std::string behind = trimmed(line.substr(brace + 1));
        if (!behind.empty() && behind.front() != '#') {
            return failed(Item(), "Invalid characters trailing '{' for '" + tag + "'.");
        }
        return block(tag);
    }

    /// Stores the rest of a line with its newline, and says whether it opens a block.
    bool storeRestOfLine(std::string& stored) {
        while (!ended()) {
            const char c = text[at++];
            if (c == '\r') {
                return false;
            }
            stored += c;
            if (c == '\n') {
                return false;
            }
            if (c == '\\' && !ended() && look() == '\n') {
                storeWholeLines(stored);
                return false;
            }
            if (c == '{') {
                storeBlanksAndComment(stored);
                if (atLineEnd()) {
                    storeRestOfLine(stored);
                    return true;
                }
            }
        }
        return false;
    }

    void storeBlanksAndComment(std::string& stored) {
        while (isBlank(look())) {
            stored += text[at++];
        }
        if (look() == '#') {
            while (!atLineEnd()) {
                stored += text[at++];
            }
        }
    }

    /// Stores the newline behind a backslash and the lines that it protects.
    void storeWholeLines(std::string& stored) {
        bool goesOn = true;
        for (char last = '\\'; goesOn && !ended();) {
            const char c = text[at++];
            stored += c;
            if (c == '\n') {
                // The first newline belongs to the line before.
                goesOn = last == '\\';
            }
            last = c;
        }
    }
};

/// Nested texts, well-formed or nearly so.
class NestedTexts {
public:
    explicit NestedTexts(unsigned randomSeed) : random(randomSeed) {}

    /// Whether the last text is free of stray braces and comment signs, so that all levels see the same
    /// blocks.
    bool isWellFormed() const { return wellFormed; }

    std::string next(bool withReturns) {
        lineEnd = withReturns && oneIn(2) ? "\r\n" : "\n";
        loneReturns = withReturns && oneIn(4);
        // What a carriage return behind a backslash means is left open, so the two do not meet.
        backslashes = lineEnd == "\n" && !loneReturns;
        wellFormed = !backslashes || !oneIn(3);
        std::string text;
        addItems(text, 0);
        if (oneIn(4)) {
            text.resize(text.size() - random() % (text.size() + 1));
        }
        if (!wellFormed && oneIn(2) && !text.empty()) {
            static constexpr std::string_view noise = "{}#: \n\tx\\";
            text.insert(random() % text.size(), 1, noise[random() % (noise.size() - (backslashes ? 0 : 1))]);
        }
        return text;
    }

private:
    std::mt19937 random;
    std::string lineEnd = "\n";
    bool wellFormed = true;
    bool loneReturns = false;
    bool backslashes = true;

    bool oneIn(unsigned chances) { return random() % chances == 0; }

    const char* blanks() {
        static constexpr std::array choices{"", "", " ", "  ", "\t", " \t "};
        return choices[random() % choices.size()];
    }

    std::string word() {
        static constexpr std::string_view letters = "abc{}#\\ _\xE9";
        std::string text;
        for (auto count = random() % 6; count > 0; --count) {
            text += wellFormed ? static_cast<char>('a' + random() % 26) : letters[random() % letters.size()];
        }
        if (oneIn(40)) {
            text += std::string(60 + random() % 40, 'w');
        }
        return text;
    }

    /// A word that may hold a carriage return of its own.
    std::string torn() { return word() + (loneReturns && oneIn(4) ? "\r" + (blanks() + word()) : ""); }

    std::string comment() { return oneIn(3) ? "# " + word() + (oneIn(4) ? ": {" : "") : ""; }

    void addItems(std::string& text, int depth) {
        for (auto count = random() % 4 + (depth == 0 ? 1 : 0); count > 0; --count) {
            text += blanks();
            switch (random() % 7) {
            case 0:
                text += comment();
                break;
            case 1:
            case 2:
                addBlock(text, depth);
                break;
            case 3:
                text += wellFormed ? "" : word();
                break;
            case 4:
                text += "T" + torn() + blanks() + ":" + blanks() + torn() + blanks();
                break;
            default:
                addContinued(text);
                break;
            }
            text += lineEnd;
        }
    }

    void addContinued(std::string& text) {
        text += "C: " + torn();
        while (backslashes && oneIn(3)) {
            text += "\\\n";
            text += blanks() + word() + (oneIn(4) ? "}" : "") + (oneIn(4) ? "# {" : "");
        }
    }

    void addBlock(std::string& text, int depth) {
        text += "B" + word() + blanks() + "{" + blanks() + (oneIn(3) ? "# c" + word() : "") + lineEnd;
        if (depth < 4) {
            addItems(text, depth + 1);
        }
        text += std::string(blanks()) + "}" + blanks() + comment();
    }
};

/// Whether the reading ended at an error, or at the line of a brace without a block.
bool isStray(const Item& item) {
    return !item.result || (item.tag && item.tag->starts_with('}'));
}

/// Reads two texts side by side, and the blocks in them, and says whether they hold the same items.
bool holdTheSameItems(std::istream& a, std::istream& b, int depth = 0) {
    for (;;) {
        const Item one = readOne(a);
        const Item other = readOne(b);
        if (isStray(one) && isStray(other)) {
            // The same brace that closes nothing, but what stands behind it does not reach a value.
            return true;
        }
        if (one != other) {
            ADD_FAILURE() << one << "\nand not\n" << other;
            return false;
        }
        if (isLast(one)) {
            return true;
        }
        if (!one.simple && depth < 10) {
            LmISStream innerOfOne(one.value->c_str());
            LmISStream innerOfOther(other.value->c_str());
            if (!holdTheSameItems(innerOfOne, innerOfOther, depth + 1)) {
                return false;
            }
        }
    }
}

bool readsLikeTheModel(const std::string& text, std::size_t areaSize) {
    LmISStream memory(text.c_str());
    PiecewiseBuf pieces;
    pieces.start(text, areaSize);
    std::istream piecewise(&pieces);
    LmStatus status;
    TaggedItems items(text, status);
    ModelReader model(text);
    for (;;) {
        const Item expected = model.next();
        const Item fromMemory = readOne(memory);
        const Item fromPieces = readOne(piecewise);
        const Item fromItems = takeOne(items, status);
        if (fromMemory != expected || fromPieces != expected || fromItems != expected) {
            ADD_FAILURE() << "of " << testing::PrintToString(text) << "\n"
                          << fromMemory << "\nin pieces of " << areaSize << ": " << fromPieces
                          << "\nas items: " << fromItems << "\nand not\n"
                          << expected;
            return false;
        }
        if (isLast(expected)) {
            return true;
        }
        if (!expected.simple && !readsLikeTheModel(*expected.value, areaSize)) {
            return false;
        }
    }
}

TEST(TagReaderAgainstModel, ReadsTheSameItems) {
    NestedTexts random(seed);
    for (int i = 0; i < texts; ++i) {
        const std::size_t areaSize = 1 + static_cast<std::size_t>(i) % 90;
        if (!readsLikeTheModel(random.next(true), areaSize)) {
            return;
        }
    }
}

TEST(TagReaderAgainstModel, FindsTheSameBlocks) {
    NestedTexts random(seed + 1);
    for (int i = 0; i < texts; ++i) {
        const std::string inner = random.next(false) + (i % 3 == 0 ? "" : "}\nbehind: it\n");
        const std::string whole = "TAG {\n" + inner;
        LmISStream input(whole.c_str());
        const Item item = readOne(input);
        LmStatus status;
        const BlockRange range = findBlockEnd(inner.c_str(), "TAG", status);
        ModelReader model(inner);
        const Item expected = model.block("TAG");
        ASSERT_EQ(item, expected) << testing::PrintToString(whole);
        ASSERT_EQ(takeChain(status), expected.chain) << testing::PrintToString(whole);
        ASSERT_EQ(range.begin, inner.c_str());
        ASSERT_EQ(range.end - range.begin,
                  expected.result ? static_cast<std::ptrdiff_t>(model.closingBrace) : 0)
            << testing::PrintToString(whole);
        if (expected.result && random.isWellFormed()) {
            LmISStream inRange(range.begin, static_cast<std::size_t>(range.end - range.begin));
            LmISStream inValue(expected.value->c_str());
            ASSERT_TRUE(holdTheSameItems(inRange, inValue)) << testing::PrintToString(whole);
        }
    }
}

} // namespace
} // namespace quillon
