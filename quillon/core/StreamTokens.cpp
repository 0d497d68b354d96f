#include "quillon/core/StreamTokens.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"

#include <algorithm>
#include <istream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

namespace {

constexpr int eof = std::char_traits<char>::eof();

} // namespace

bool skipStreamComments(std::istream& input) {
    for (;;) {
        const int c = peekChar(input);
        if (c == eof) {
            return false;
        }
        if (c == '#') {
            skipRestOfLine(input, std::numeric_limits<int>::max());
        } else if (c != '\n' && isSpace(static_cast<char>(c))) {
            takeChar(input);
        } else {
            return true;
        }
    }
}

bool skipStreamSpace(std::istream& input) {
    int c = peekBehindSpaces(input);
    while (c == '#') {
        skipRestOfLine(input, std::numeric_limits<int>::max());
        c = peekBehindSpaces(input);
    }
    return c != eof;
}

void checkStream(std::istream& input, const char* what) {
    if (input.fail()) {
        pushErrorf("Error reading %s.", what);
    }
}

float readStreamFloat(std::istream& input, const char* what) {
    skipStreamSpace(input);
    double value = 0.0;
    extractDouble(input, value);
    checkStream(input, what);
    return narrowed(value);
}

std::array<float, 3> readStreamVector(std::istream& input, const char* what) {
    std::array<float, 3> vector{};
    for (float& component : vector) {
        component = readStreamFloat(input, what);
        if (errorStands()) {
            break;
        }
    }
    return vector;
}

std::int32_t readStreamInt(std::istream& input, const char* what) {
    skipStreamSpace(input);
    std::int32_t value = 0;
    extractInt(input, value);
    checkStream(input, what);
    return value;
}

namespace {

/// Behind an opening quote: takes the text and the closing quote, if both wait on this line.
std::optional<LmStr> takeWaitingQuoted(std::istream& input) {
    const std::string_view waiting = waitingChars(input);
    const auto* const end =
        std::find_if(waiting.begin(), waiting.end(), [](char c) { return c == '"' || c == '\n'; });
    if (end == waiting.end() || *end == '\n') {
        return std::nullopt;
    }
    const LmStr text(std::string_view(waiting.begin(), end));
    takeWaiting(input, static_cast<std::size_t>(end - waiting.begin()) + 1);
    return text;
}

} // namespace

LmStr readStreamString(std::istream& input, const char* what) {
    skipStreamSpace(input);
    if (peekChar(input) != '"') {
        LmStr word;
        word.readWord(input);
        checkStream(input, what);
        return word;
    }
    takeChar(input);
    if (const std::optional<LmStr> waiting = takeWaitingQuoted(input)) {
        return *waiting;
    }
    std::string text;
    for (int c = takeChar(input); c != '"'; c = takeChar(input)) {
        if (c == '\n' || c == eof) {
            pushErrorf("Hit end of line in string reading %s", what);
            return {};
        }
        text += static_cast<char>(c);
    }
    return LmStr(std::string_view(text));
}

void expectedButFound(const LmStr& found, const char* what) {
    if (found == what) {
        return;
    }
    if (found.isNull()) {
        pushErrorf("Expecting %s in scale definition file, but found end of file.", what);
    } else {
        pushErrorf("Expecting %s in scale definition file, but found %s.", what, found.c_str());
    }
}

} // namespace quillon
