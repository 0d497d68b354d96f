#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/geometry/Vec3.h"

#include <cstdint>
#include <iosfwd>

namespace quillon::scaleDef {

// The tokens of scale definition and measured data files, of the text of a block as well as of a whole file.
// `what` names the value in messages. All report on the current status.

/// Takes white space up to a line end, which stays, or a comment up to its line end. False at the end of the
/// input.
bool skipBlanks(std::istream& input);
/// Takes white space, line ends and comments. False at the end of the input.
bool skipWhite(std::istream& input);
/// Takes the characters up to and including the next line end, or all that are left.
void skipLine(std::istream& input);
/// Reports "Error reading ", the name and "." when the stream has failed.
void checkRead(std::istream& input, const char* what);
/// A real; 0, or the nearest real that there is, after a failure.
float readFloatValue(std::istream& input, const char* what);
/// Three reals in the order x, y, z; once an error stands, the rest stays 0.
LmVec3 readVectorValue(std::istream& input, const char* what);
std::int32_t readIntValue(std::istream& input, const char* what); ///< an integer, in decimal
/// A word, or a text in double quotes on one line, of any length and without escapes. Empty, never null,
/// after a failure.
LmStr readNameValue(std::istream& input, const char* what);

} // namespace quillon::scaleDef
