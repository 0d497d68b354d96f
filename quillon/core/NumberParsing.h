#pragma once

#include "quillon/core/CharClass.h"

#include <cstddef>
#include <cstdint>

namespace quillon {

/// `strtod` in the classic locale, whatever the locale of the process: a decimal comma never counts.
double parseDouble(const char* text, char** end);

/// Takes a sign, if there is one, and returns where it ends.
inline const char* scanSign(const char* at, const char* end, bool& negative) {
    negative = at != end && *at == '-';
    return negative || (at != end && *at == '+') ? at + 1 : at;
}

/// Reads a decimal integer of up to nine digits at `at` that ends before `end`. Returns where it ends, or
/// null when the characters are no such integer; `out` is then untouched. A call would cost as much as the
/// digits.
inline const char* scanInt(const char* at, const char* end, std::int32_t& out) {
    constexpr std::ptrdiff_t safeDigitCount = 9; // whatever they are, they fit into 32 bits with a sign
    bool negative = false;
    const char* const digits = scanSign(at, end, negative);
    std::uint32_t magnitude = 0;
    for (at = digits; at != end && isDigit(*at); ++at) {
        magnitude = magnitude * 10 + static_cast<std::uint32_t>(*at - '0');
    }
    if (at == digits || at == end || at - digits > safeDigitCount) {
        return nullptr;
    }
    out = negative ? -static_cast<std::int32_t>(magnitude) : static_cast<std::int32_t>(magnitude);
    return at;
}

/// Reads a decimal real at `at` that ends before `end`, correctly rounded. Returns where it ends, or null
/// when it does not end there, is none, or needs the care that `strtod` takes of overflow and underflow.
const char* scanDouble(const char* at, const char* end, double& out);

} // namespace quillon
