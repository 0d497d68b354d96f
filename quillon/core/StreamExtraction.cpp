#include "quillon/core/StreamExtraction.h"

#include "quillon/core/CharClass.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <locale>
#include <memory>

namespace quillon {

// --- The waiting characters
// ---------------------------------------------------------------------------------

namespace {

/// Names the protected read pointers of a stream buffer. Never constructed.
struct ReadPointers : std::streambuf {
    using std::streambuf::egptr;
    using std::streambuf::gbump;
    using std::streambuf::gptr;
};

} // namespace

const char* ReadArea::begin() const {
    return (buffer.*(&ReadPointers::gptr))();
}

const char* ReadArea::end() const {
    return (buffer.*(&ReadPointers::egptr))();
}

void ReadArea::take(std::size_t count) {
    (buffer.*(&ReadPointers::gbump))(static_cast<int>(count));
}

namespace {

/// Whether the buffer may be looked into: a stream that is good has one, and nothing is to be flushed first.
bool isReady(const std::istream& input) {
    return input.good() && input.tie() == nullptr;
}

bool isReadyAndPlain(const std::istream& input) {
    static const std::locale& classicLocale = std::locale::classic();
    return isReady(input) && input.flags() == (std::ios_base::skipws | std::ios_base::dec) &&
           input.getloc() == classicLocale;
}

const char* skipSpaces(const char* at, const char* end) {
    while (at != end && isSpace(*at)) {
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

// --- Numbers
// ------------------------------------------------------------------------------------------------

/// Takes decimal digits into `value` while they fit into 18 digits, and returns their end.
const char* scanDigits(const char* at, const char* end, std::uint64_t& value, int& digitCount) {
    for (; at != end && isDigit(*at); ++at) {
        if (value != 0 || *at != '0') {
            ++digitCount;
        }
        if (digitCount <= 18) {
            value = value * 10 + static_cast<std::uint64_t>(*at - '0');
        }
    }
    return at;
}

/// Reads an integer that ends before `end`. Null when it does not, or when it is none that fits.
const char* scanInt(const char* at, const char* end, std::int32_t& out) {
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    std::uint64_t magnitude = 0;
    int digitCount = 0;
    const char* const digitsEnd = scanDigits(at, end, magnitude, digitCount);
    if (digitsEnd == at || digitsEnd == end || digitCount > 18) {
        return nullptr;
    }
    const auto value =
        negative ? -static_cast<std::int64_t>(magnitude) : static_cast<std::int64_t>(magnitude);
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        return nullptr;
    }
    out = static_cast<std::int32_t>(value);
    return digitsEnd;
}

/// Reads the digits of an exponent behind its 'e'. Null when there are none, or when they end at `end`.
const char* scanExponent(const char* at, const char* end, int& exponent) {
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    std::uint64_t magnitude = 0;
    int digitCount = 0;
    const char* const digitsEnd = scanDigits(at, end, magnitude, digitCount);
    if (digitsEnd == at || digitsEnd == end || digitCount > 4) {
        return nullptr;
    }
    exponent = negative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
    return digitsEnd;
}

constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int greatestExactPower = 22;

/// Reads a real that ends before `end`, correctly rounded. Null when it does not end there, is none, or needs
/// the care that the standard operation takes of overflow and underflow.
const char* scanDouble(const char* at, const char* end, double& out) {
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    const char* const digits = at;
    std::uint64_t mantissa = 0;
    int digitCount = 0;
    int exponent = 0;
    at = scanDigits(at, end, mantissa, digitCount);
    auto charCount = at - digits;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        at = scanDigits(at, end, mantissa, digitCount);
        charCount += at - fraction;
        exponent = -static_cast<int>(std::min<std::ptrdiff_t>(at - fraction, 100000));
    }
    if (charCount == 0 || at == end) {
        return nullptr;
    }
    if (*at == 'e' || *at == 'E') {
        int written = 0;
        at = scanExponent(at + 1, end, written);
        exponent += written;
    }
    if (at == nullptr) {
        return nullptr;
    }
    // A mantissa below 2^53 and a power of ten up to 10^22 are exact doubles, so that one rounding is left.
    if (digitCount <= 18 && mantissa <= (std::uint64_t{1} << 53) &&
        std::abs(exponent) <= greatestExactPower) {
        const auto exact = static_cast<double>(mantissa);
        const double value = exponent < 0 ? exact / powersOfTen[-exponent] : exact * powersOfTen[exponent];
        out = negative ? -value : value;
        return at;
    }
    double value = 0.0;
    const std::from_chars_result result = std::from_chars(digits, at, value);
    if (result.ec != std::errc() || result.ptr != at) {
        return nullptr;
    }
    out = negative ? -value : value;
    return at;
}

} // namespace

bool extractInt(std::istream& input, std::int32_t& value) {
    if (isReadyAndPlain(input)) {
        ReadArea area(*input.rdbuf());
        if (const char* const end = scanInt(skipSpaces(area.begin(), area.end()), area.end(), value)) {
            area.take(static_cast<std::size_t>(end - area.begin()));
            return true;
        }
    }
    input >> value;
    return !input.fail();
}

bool extractDouble(std::istream& input, double& value) {
    if (isReadyAndPlain(input)) {
        ReadArea area(*input.rdbuf());
        if (const char* const end = scanDouble(skipSpaces(area.begin(), area.end()), area.end(), value)) {
            area.take(static_cast<std::size_t>(end - area.begin()));
            return true;
        }
    }
    input >> value;
    return !input.fail();
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

// --- Characters and lines
// -----------------------------------------------------------------------------------

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

bool extractChar(std::istream& input, char& c) {
    input.get(c);
    return !input.fail();
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
