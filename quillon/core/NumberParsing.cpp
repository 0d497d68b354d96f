#include "quillon/core/NumberParsing.h"

#include "quillon/core/CharClass.h"

#include <bit>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <locale.h>

namespace quillon {

namespace {

/// So many decimal digits fit into 64 bits, whatever they are.
constexpr std::ptrdiff_t safeDigitCount = 18;

/// Takes decimal digits into `value`, which overflows beyond `safeDigitCount` of them, and returns their end.
inline const char* scanDigits(const char* at, const char* end, std::uint64_t& value) {
    for (; at != end && isDigit(*at); ++at) {
        value = value * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

constexpr std::uint64_t powersOfTenTo8[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

/// The value of eight digits, each a byte below 10, the first one lowest: pairs, then fours, then all.
inline std::uint64_t valueOfEightDigits(std::uint64_t digits) {
    constexpr std::uint64_t everySecondPair = 0x000000FF000000FF;
    const std::uint64_t pairs = digits * 10 + (digits >> 8);
    return ((pairs & everySecondPair) * ((std::uint64_t{1000000} << 32) + 100) +
            ((pairs >> 16) & everySecondPair) * ((std::uint64_t{10000} << 32) + 1)) >>
           32;
}

/// Does what `scanDigits` does, eight characters at a time as long as so many are left. Worth it for
/// fractions, whose digits are many.
inline const char* scanManyDigits(const char* at, const char* end, std::uint64_t& value) {
    constexpr std::uint64_t zeros = 0x3030303030303030;
    constexpr std::uint64_t upToHighBit = 0x7676767676767676; // a byte above 9 reaches the high bit with it
    constexpr std::uint64_t highBits = 0x8080808080808080;
    while (std::endian::native == std::endian::little && end - at >= 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
        bytes ^= zeros;
        const std::uint64_t others = ((bytes + upToHighBit) | bytes) & highBits;
        if (others == 0) {
            value = value * powersOfTenTo8[8] + valueOfEightDigits(bytes);
            at += 8;
            continue;
        }
        const int count = std::countr_zero(others) / 8;
        // The digits move up, behind leading zeros; in two steps, since all eight may go.
        value = value * powersOfTenTo8[count] + valueOfEightDigits(bytes << (56 - 8 * count) << 8);
        return at + count;
    }
    return scanDigits(at, end, value);
}

/// Reads digits with a sign. Null when there are none, too many, or when they end at `end`.
inline const char* scanSigned(const char* at, const char* end, std::int64_t& value) {
    bool negative = false;
    const char* const digits = scanSign(at, end, negative);
    std::uint64_t magnitude = 0;
    const char* const digitsEnd = scanDigits(digits, end, magnitude);
    if (digitsEnd == digits || digitsEnd == end || digitsEnd - digits > safeDigitCount) {
        return nullptr;
    }
    value = negative ? -static_cast<std::int64_t>(magnitude) : static_cast<std::int64_t>(magnitude);
    return digitsEnd;
}

constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::int64_t greatestExactPower = 22;

} // namespace

const char* scanDouble(const char* at, const char* end, double& out) {
    bool negative = false;
    const char* const digits = scanSign(at, end, negative);
    std::uint64_t mantissa = 0;
    std::int64_t exponent = 0;
    at = scanDigits(digits, end, mantissa);
    std::ptrdiff_t digitCount = at - digits;
    if (at != end && *at == '.') {
        const char* const fraction = at + 1;
        at = scanManyDigits(fraction, end, mantissa);
        digitCount += at - fraction;
        exponent = fraction - at;
    }
    if (digitCount == 0 || at == end) {
        return nullptr;
    }
    if (*at == 'e' || *at == 'E') {
        std::int64_t written = 0;
        at = scanSigned(at + 1, end, written);
        if (at == nullptr) {
            return nullptr;
        }
        exponent += written;
    }
    // A mantissa up to 2^53 and a power of ten up to 10^22 are exact doubles, so that one rounding is left.
    if (digitCount <= safeDigitCount && mantissa <= (std::uint64_t{1} << 53) &&
        exponent <= greatestExactPower && exponent >= -greatestExactPower) {
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

double parseDouble(const char* text, char** end) {
    double value = 0.0;
    const char* const scanned = scanDouble(text, text + std::strlen(text) + 1, value);
    // What looks like a zero in front of an 'x' is the start of a hexadecimal number.
    if (scanned != nullptr && *scanned != 'x' && *scanned != 'X') {
        *end = const_cast<char*>(scanned); // NOLINT(cppcoreguidelines-pro-type-const-cast): as `strtod` does
        return value;
    }
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, end, classic);
}

} // namespace quillon
