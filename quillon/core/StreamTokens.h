#pragma once

#include "quillon/core/LmStr.h"

#include <array>
#include <cstdint>
#include <iosfwd>

namespace quillon {

// Values are read from a stream with a name for the message that says what is being read. All report on the
// current status.

/// Skips white space and '#' comments on the current line. False at the end of the input, true at an LF,
/// which stays, or at any other character.
bool skipStreamComments(std::istream& input);
/// Skips white space, line ends and comments; false at the end of the input.
bool skipStreamSpace(std::istream& input);
/// Reports "Error reading ", the name and "." when the stream has failed.
void checkStream(std::istream& input, const char* what);
/// A real, parsed at double precision and cut to 32 bits.
float readStreamFloat(std::istream& input, const char* what);
/// Three reals; the rest stays 0 once an error stands.
std::array<float, 3> readStreamVector(std::istream& input, const char* what);
std::int32_t readStreamInt(std::istream& input, const char* what); ///< an integer, in decimal
/// A word, or a text in double quotes that ends on its own line; null after "Hit end of line in string
/// reading " and the name.
LmStr readStreamString(std::istream& input, const char* what);
/// Reports what was found (null for the end of the file) where `what` was expected.
void expectedButFound(const LmStr& found, const char* what);

} // namespace quillon
