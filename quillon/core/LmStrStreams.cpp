#include "quillon/core/CharClass.h"
#include "quillon/core/LmStr.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/core/WaitingLine.h"

#include <algorithm>
#include <istream>
#include <memory>
#include <optional>
#include <string>

namespace quillon {

namespace {

constexpr int eof = std::char_traits<char>::eof();

/// Takes the characters up to white space, which stays, or to the end of the input. The end fails the stream
/// only when there was no character.
std::string takeWord(std::istream& input) {
    std::string word;
    int c = input.peek();
    for (; c != eof && !isSpace(static_cast<char>(c)); c = input.peek()) {
        word += static_cast<char>(c);
        input.ignore();
    }
    if (c == eof && word.empty()) {
        input.setstate(std::ios::eofbit | std::ios::failbit);
    } else if (c == eof) {
        input.clear();
    }
    return word;
}

} // namespace

void LmStr::readWord(std::istream& input) {
    if (const std::string_view word = takeWaitingWord(input); !word.empty()) {
        *this = LmStr(word);
        return;
    }
    const std::istream::sentry leadingSpaceSkipped(input);
    if (leadingSpaceSkipped && input.good()) {
        *this = LmStr(std::string_view(takeWord(input)));
    }
}

std::istream& operator>>(std::istream& input, LmStr& text) {
    text.readWord(input);
    return input;
}

namespace {

/// The whole of a line that waits in the stream's buffer and fits into one chunk, or false.
bool takeWaitingLine(std::istream& input, LmStr& line) {
    const std::optional<WaitingLine> waiting = findWaitingLine(waitingChars(input));
    if (waiting.has_value()) {
        line = LmStr(waiting->text);
        takeWaiting(input, waiting->taken);
    }
    return waiting.has_value();
}

/// Takes the line end that follows a chunk; false when the line goes on.
bool takeLineEnd(std::istream& input) {
    const int c = input.peek();
    if (c == '\n' || c == '\r') {
        input.get();
        return true;
    }
    if (c == eof) {
        input.clear();
        return true;
    }
    return false;
}

} // namespace

void LmStr::readLine(std::istream& input) {
    if (takeWaitingLine(input, *this)) {
        return;
    }
    std::string line;
    do {
        char chunk[lineChunkLength + 1];
        input.get(chunk, sizeof chunk);
        const auto count = static_cast<std::size_t>(input.gcount());
        // What cannot be read has ended, too: a failure of the device would come again for ever.
        if ((input.eof() || input.bad()) && count == 0 && line.empty()) {
            reset();
            return;
        }
        if (input.fail()) {
            input.clear();
        }
        line.append(lineChunkText({chunk, count}));
    } while (!takeLineEnd(input));
    *this = LmStr(std::string_view(line));
}

void LmStr::readUntil(std::istream& input, int max, char delimiter) {
    const auto block = std::make_unique<char[]>(static_cast<std::size_t>(max) + 1);
    input.get(block.get(), max + 1, delimiter);
    *this = LmStr(std::string_view(block.get(), static_cast<std::size_t>(input.gcount())));
}

} // namespace quillon
