#include "quillon/core/NumberPrinting.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <ostream>

namespace quillon {

char* formatReal(char* text, float value) {
    // A stream prints the sign of a NaN, and so does to_chars; only its payload is never shown.
    constexpr int defaultPrecision = 6;
    const auto wide = static_cast<double>(value);
    return std::to_chars(text, text + numberTextSize, wide, std::chars_format::general, defaultPrecision).ptr;
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
