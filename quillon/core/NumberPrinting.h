#pragma once

#include <cstddef>
#include <cstdint>
#include <ios>
#include <iosfwd>

namespace quillon {

// All printing of numbers goes through these functions. The bytes are those that a standard stream in the
// classic locale prints.

/// Room for any number that `formatReal` or `formatInt` writes.
inline constexpr std::size_t numberTextSize = 32;

/// Writes what a stream with default flags prints for the 32-bit real, widened to 64 bits: general form with
/// 6 significant digits. Returns the end of the text, which is not NUL-terminated.
char* formatReal(char* text, float value);
/// Writes the number in plain decimal and returns the end of the text.
char* formatInt(char* text, std::int64_t value);

/// `output << value` for a 32-bit real, widened to 64 bits, in whatever format the stream has.
void printReal(std::ostream& output, float value);
/// `output << value` for an integer, in whatever format and width the stream has.
void printInt(std::ostream& output, std::int64_t value);

/// Saves a stream's flags, precision, width and fill and puts them back at the end of the scope.
class FormatGuard {
public:
    explicit FormatGuard(std::ostream& output); ///< saves the format of the stream
    FormatGuard(const FormatGuard&) = delete;
    FormatGuard& operator=(const FormatGuard&) = delete;
    ~FormatGuard();

private:
    std::ostream& output;
    std::ios_base::fmtflags flags;
    std::streamsize precision;
    std::streamsize width;
    char fill;
};

} // namespace quillon
