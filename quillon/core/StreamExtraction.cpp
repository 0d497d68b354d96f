#include "quillon/core/StreamExtraction.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/NumberParsing.h"

#include <algorithm>
#include <cstring>
#include <locale>
#include <memory>

namespace quillon {

// --- The waiting characters ----------------------------------------------------------------------

namespace {

/// Whether the buffer may be looked into: a stream that is good has one, and nothing is to be flushed first.
bool isReady(const std::ios& input) {
    return input.good() && input.tie() == nullptr;
}

/// What is known of a stream's locale, kept in the stream itself: asking for the locale costs more than
/// reading a number.
enum LocaleKnowledge : long { unknown = 0, classic = 1, other = 2 };

void forgetLocale(std::ios_base::event event, std::ios_base& stream, int index) {
    if (event != std::ios_base::erase_event) {
        stream.iword(index) = unknown;
    }
}

[[gnu::cold]] long learnLocale(std::ios_base& stream, int index) {
    if (stream.pword(index) == nullptr) {
        stream.register_callback(forgetLocale, index);
        stream.pword(index) = &stream;
    }
    return stream.iword(index) = stream.getloc() == std::locale::classic() ? classic : other;
}

inline bool hasClassicLocale(std::ios_base& stream) {
    static const int index = std::ios_base::xalloc();
    const long known = stream.iword(index);
    return (known == unknown ? learnLocale(stream, index) : known) == classic;
}

/// Whether the buffer may be looked into for a number or a word as the classic locale has them.
inline bool isReadyAndPlain(std::ios& input) {
    return isReady(input) && input.flags() == (std::ios_base::skipws | std::ios_base::dec) &&
           hasClassicLocale(input);
}

const char* skipSpaces(const char* at, const char* end) {
    // Nearly all white space in front of numbers is blanks, and nothing above a blank is white space.
    while (at != end && *at == ' ') {
        ++at;
    }
    while (at != end && *at <= ' ' && isSpace(*at)) {
        ++at;
    }
    return at;
}

/// The index of the first newline among `count` characters, or `count`.
std::size_t findNewline(const char* at, std::size_t count) {
    const void* const found = count == 0 ? nullptr : std::memchr(at, '\n', count);
    return found == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(found) - at);
}

std::size_t waitingCount(const ReadArea& area) {
    return static_cast<std::size_t>(area.end() - area.begin());
}

} // namespace

// --- Numbers -------------------------------------------------------------------------------------

namespace {

/// Apart, so that the usual way through an extraction is short.
template <class Number>
[[gnu::noinline]] bool extractByStandard(std::istream& input, Number& value) {
    input >> value;
    return !input.fail();
}

} // namespace

bool extractInt(std::istream& input, std::int32_t& value) {
    std::ios& state = input; // looked for once: it is a virtual base
    if (isReadyAndPlain(state)) {
        ReadArea area(*state.rdbuf());
        if (const char* const end = scanInt(skipSpaces(area.begin(), area.end()), area.end(), value)) {
            area.take(static_cast<std::size_t>(end - area.begin()));
            return true;
        }
    }
    return extractByStandard(input, value);
}

bool extractDouble(std::istream& input, double& value) {
    std::ios& state = input; // looked for once: it is a virtual base
    if (isReadyAndPlain(state)) {
        ReadArea area(*state.rdbuf());
        if (const char* const end = scanDouble(skipSpaces(area.begin(), area.end()), area.end(), value)) {
            area.take(static_cast<std::size_t>(end - area.begin()));
            return true;
        }
    }
    return extractByStandard(input, value);
}

bool extractFloat(std::istream& input, float& value) {
    double wide = 0.0;
    if (!extractDouble(input, wide)) {
        return false;
    }
    value = narrowed(wide);
    return true;
}

float narrowed(double value) {
    return static_cast<float>(value);
}

// --- Characters and lines ------------------------------------------------------------------------

bool skipWhiteSpace(std::istream& input) {
    if (isReadyAndPlain(input)) {
        ReadArea area(*input.rdbuf());
        const char* const end = skipSpaces(area.begin(), area.end());
        if (end != area.end()) {
            area.take(static_cast<std::size_t>(end - area.begin()));
            return true;
        }
    }
    input >> std::ws;
    return !input.fail();
}

int peekChar(std::istream& input) {
    if (isReady(input)) {
        const ReadArea area(*input.rdbuf());
        if (area.begin() != area.end()) {
            return std::char_traits<char>::to_int_type(*area.begin());
        }
    }
    return input.peek();
}

int peekBehindSpaces(std::istream& input) {
    if (isReady(input)) {
        ReadArea area(*input.rdbuf());
        const char* const end = skipSpaces(area.begin(), area.end());
        area.take(static_cast<std::size_t>(end - area.begin()));
        if (end != area.end()) {
            return std::char_traits<char>::to_int_type(*end);
        }
    }
    int next = input.peek();
    while (next != std::char_traits<char>::eof() && isSpace(std::char_traits<char>::to_char_type(next))) {
        input.get();
        next = input.peek();
    }
    return next;
}

int takeChar(std::istream& input) {
    if (isReady(input)) {
        ReadArea area(*input.rdbuf());
        if (area.begin() != area.end()) {
            const int next = std::char_traits<char>::to_int_type(*area.begin());
            area.take(1);
            return next;
        }
    }
    return input.get();
}

std::string_view waitingChars(std::istream& input) {
    if (!isReady(input)) {
        return {};
    }
    const ReadArea area(*input.rdbuf());
    return {area.begin(), area.end()};
}

void takeWaiting(std::istream& input, std::size_t count) {
    ReadArea(*input.rdbuf()).take(count);
}

std::string_view takeWaitingWord(std::istream& input) {
    if (!isReadyAndPlain(input)) {
        return {};
    }
    ReadArea area(*input.rdbuf());
    const char* const begin = skipSpaces(area.begin(), area.end());
    const char* const end = std::find_if(begin, area.end(), isSpace);
    if (end == area.end()) {
        return {};
    }
    area.take(static_cast<std::size_t>(end - area.begin()));
    return {begin, end};
}

bool extractChar(std::istream& input, char& c) {
    const int next = takeChar(input);
    if (next == std::char_traits<char>::eof()) {
        return false;
    }
    c = std::char_traits<char>::to_char_type(next);
    return true;
}

bool skipChars(std::istream& input, int count) {
    if (count > 0 && isReady(input)) {
        ReadArea area(*input.rdbuf());
        if (waitingCount(area) >= static_cast<std::size_t>(count)) {
            area.take(static_cast<std::size_t>(count));
            return true;
        }
    }
    input.ignore(count);
    return !input.fail();
}

bool skipRestOfLine(std::istream& input, int atMost) {
    if (atMost > 0 && isReady(input)) {
        ReadArea area(*input.rdbuf());
        const std::size_t waiting = waitingCount(area);
        const auto limit = static_cast<std::size_t>(atMost);
        const std::size_t newline = findNewline(area.begin(), std::min(waiting, limit));
        if (newline < std::min(waiting, limit)) {
            area.take(newline + 1);
            return true;
        }
        if (waiting > limit) {
            area.take(limit);
            return true;
        }
    }
    input.ignore(atMost, '\n');
    return !input.fail();
}

bool extractLine(std::istream& input, std::string& line, int bufferSize) {
    const auto limit = static_cast<std::size_t>(bufferSize);
    if (isReady(input)) {
        ReadArea area(*input.rdbuf());
        const std::size_t searched = std::min(waitingCount(area), limit);
        const std::size_t newline = findNewline(area.begin(), searched);
        if (newline < searched) {
            line.assign(area.begin(), newline);
            area.take(newline + 1);
            return true;
        }
    }
    const auto block = std::make_unique<char[]>(limit);
    input.getline(block.get(), bufferSize);
    const auto taken = static_cast<std::size_t>(input.gcount());
    line.assign(block.get(), input.good() ? taken - 1 : taken);
    return !input.fail();
}

bool extractPartOfLine(std::istream& input, std::string& line, int bufferSize) {
    const auto limit = static_cast<std::size_t>(bufferSize - 1);
    if (isReady(input)) {
        ReadArea area(*input.rdbuf());
        const std::size_t newline = findNewline(area.begin(), std::min(waitingCount(area), limit));
        if (newline > 0 && waitingCount(area) > limit) {
            line.assign(area.begin(), newline);
            area.take(newline);
            return true;
        }
    }
    const auto block = std::make_unique<char[]>(limit + 1);
    input.get(block.get(), bufferSize);
    line.assign(block.get(), static_cast<std::size_t>(input.gcount()));
    return !input.fail();
}

} // namespace quillon
