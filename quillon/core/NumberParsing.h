#pragma once

#include <cstdint>

namespace quillon {

/// `strtod` in the classic locale, whatever the locale of the process: a decimal comma never counts.
double parseDouble(const char* text, char** end);

/// Reads a decimal integer of up to nine digits at `at` that ends before `end`. Returns where it ends, or null
/// when the characters are no such integer; `out` is then untouched.
const char* scanInt(const char* at, const char* end, std::int32_t& out);

/// Reads a decimal real at `at` that ends before `end`, correctly rounded. Returns where it ends, or null
/// when it does not end there, is none, or needs the care that `strtod` takes of overflow and underflow.
const char* scanDouble(const char* at, const char* end, double& out);

} // namespace quillon
