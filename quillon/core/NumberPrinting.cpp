#include "quillon/core/NumberPrinting.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <locale>
#include <ostream>

namespace quillon {

namespace {

constexpr int significantDigits = 6;

/// The powers of ten from 10^0 to 10^9.
constexpr std::uint64_t integerPowers[] = {1,      10,      100,      1000,      10000,
                                           100000, 1000000, 10000000, 100000000, 1000000000};

/// The powers of ten from 10^-4 to 10^6. No 32-bit real lies between a power of ten and the double next to
/// it, so comparing with these is exact.
constexpr int lowestPower = -4;
constexpr double realPowers[] = {1e-4, 1e-3, 1e-2, 1e-1, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

/// The exponent of ten of the first digit of a value from 1e-4 to below 1e6.
int decimalExponent(float magnitude) {
    const int binaryExponent = static_cast<int>(std::bit_cast<std::uint32_t>(magnitude) >> 23) - 127;
    // 1233 / 4096 is near enough to the logarithm of 2 that the power of 2 below the value gets its own
    // exponent of ten; the value's is that or the next.
    const int exponent = (binaryExponent * 1233) >> 12;
    return static_cast<double>(magnitude) >= realPowers[exponent + 1 - lowestPower] ? exponent + 1 : exponent;
}

/// The first six digits of a value from 1e-4 to below 1e6 as an integer, rounded half to even. Exact: the 24
/// bits of the mantissa times at most 10^9 fit into 64 bits.
std::uint64_t roundedDigits(float magnitude, int exponent) {
    const auto bits = std::bit_cast<std::uint32_t>(magnitude);
    const std::uint64_t mantissa = (bits & 0x7FFFFFU) | 0x800000U;
    const int shift = 150 - static_cast<int>(bits >> 23);
    const std::uint64_t scaled = mantissa * integerPowers[significantDigits - 1 - exponent];
    const std::uint64_t digits = scaled >> shift;
    const std::uint64_t rest = scaled & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    return digits + (rest > half || (rest == half && (digits & 1) != 0) ? 1 : 0);
}

/// "00", "01" up to "99".
constexpr std::array<char, 200> digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Writes six digits with the point behind the digit of the exponent, without the zeros that end a fraction.
/// Copies are of a fixed size, beyond what counts, since that is the fastest; `numberTextSize` leaves the
/// room.
char* writeFixed(char* text, std::uint64_t sixDigits, int exponent) {
    constexpr std::size_t copySize = 8;
    char digits[2 * copySize] = {};
    auto rest = static_cast<std::uint32_t>(sixDigits);
    for (int i = significantDigits - 2; i >= 0; i -= 2) {
        std::memcpy(digits + i, digitPairs.data() + 2 * (rest % 100), 2);
        rest /= 100;
    }
    const int integerCount = exponent + 1;
    int count = significantDigits;
    while (count > integerCount && count > 1 && digits[count - 1] == '0') {
        --count;
    }
    if (integerCount <= 0) {
        std::memcpy(text, "0.000000", copySize);
        std::memcpy(text + 2 - integerCount, digits, copySize);
        return text + 2 - integerCount + count;
    }
    std::memcpy(text, digits, copySize);
    if (count == integerCount) {
        return text + integerCount;
    }
    text[integerCount] = '.';
    std::memcpy(text + integerCount + 1, digits + integerCount, copySize);
    return text + count + 1;
}

} // namespace

char* formatReal(char* text, float value) {
    const float magnitude = std::fabs(value);
    if (value == 0.0F) {
        if (std::signbit(value)) {
            *text++ = '-';
        }
        *text++ = '0';
        return text;
    }
    const auto wide = static_cast<double>(value);
    if (std::fabs(wide) >= 1e-4 && magnitude < 999999.5F) {
        int exponent = decimalExponent(magnitude);
        std::uint64_t digits = roundedDigits(magnitude, exponent);
        if (digits == integerPowers[significantDigits]) {
            digits = integerPowers[significantDigits - 1];
            ++exponent;
        }
        if (value < 0.0F) {
            *text++ = '-';
        }
        return writeFixed(text, digits, exponent);
    }
    return std::to_chars(text, text + numberTextSize, wide, std::chars_format::general, significantDigits)
        .ptr;
}

char* formatInt(char* text, std::int64_t value) {
    return std::to_chars(text, text + numberTextSize, value).ptr;
}

namespace {

bool hasPlainFormat(const std::ostream& output) {
    return output.flags() == (std::ios_base::skipws | std::ios_base::dec) && output.precision() == 6 &&
           output.width() == 0 && output.getloc() == std::locale::classic();
}

} // namespace

void printReal(std::ostream& output, float value) {
    if (!hasPlainFormat(output)) {
        output << static_cast<double>(value);
        return;
    }
    char text[numberTextSize];
    output.write(text, formatReal(text, value) - text);
}

void printInt(std::ostream& output, std::int64_t value) {
    if (!hasPlainFormat(output)) {
        output << value;
        return;
    }
    char text[numberTextSize];
    output.write(text, formatInt(text, value) - text);
}

FormatGuard::FormatGuard(std::ostream& output)
    : output(output), flags(output.flags()), precision(output.precision()), width(output.width()),
      fill(output.fill()) {}

FormatGuard::~FormatGuard() {
    output.flags(flags);
    output.precision(precision);
    output.width(width);
    output.fill(fill);
}

} // namespace quillon
