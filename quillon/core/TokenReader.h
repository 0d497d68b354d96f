#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <array>
#include <cstdint>

namespace quillon {

class LmDoubleLinkedList;

// Values are read by eating a string from the left: each reader skips white space, takes one value from the
// front and leaves the rest. On failure it reports the error, returns false and the string keeps what it had,
// less the white space. A value is not required to end at a delimiter: "12abc" yields 12 and leaves "abc".

/// The letters, digits and '_' at the front; null after "Expecting identifier." or "Invalid identifier.".
LmStr readIdentifier(LmStr& text, LmStatus& status = currentStatus());
/// A decimal integer, cut to 32 bits without a range test: "Invalid integer value.".
bool readInt(LmStr& text, std::int32_t& out, LmStatus& status = currentStatus());
bool readInt(LmStr& text, std::int64_t& out, LmStatus& status = currentStatus());
/// As `readInt`, unsigned and with base 0: "0x10" is hexadecimal and "010" octal. Reports on the current
/// status.
bool readUnsigned(LmStr& text, std::uint32_t& out);
bool readUnsigned(LmStr& text, std::uint64_t& out);
/// The run of letters and digits at the front, as `LmStr::toBool` takes it: "Invalid boolean value.".
bool readBool(LmStr& text, bool& out, LmStatus& status = currentStatus());
/// A real by `strtod`, neither infinite nor NaN: "No value given." for an empty text, otherwise "Invalid
/// floating point value."; silent without `reportErrors`.
bool readDouble(LmStr& text, double& out, bool reportErrors = true, LmStatus& status = currentStatus());
/// `readDouble` cut to 32 bits.
bool readFloat(LmStr& text, float& out, LmStatus& status = currentStatus());
/// Three reals; `out` is written only when all succeed. The error of `readDouble` goes to `status`, and
/// "Invalid X component" (Y, Z) always goes to the current one; callers with their own status depend on it.
bool readVector(LmStr& text, std::array<float, 3>& out, LmStatus& status = currentStatus());
/// Vectors until the text is empty; each is a new `std::array<float, 3>` that the owner of the list frees.
bool readVectorList(LmStr& text, LmDoubleLinkedList& list);
/// `LmStr::popToken`; without a token "Expecting token." and `out` is the empty string.
bool readDelimitedToken(LmStr& text, const char* delimiters, LmStr& out, LmStatus& status = currentStatus());
/// The text before the first c, which stays; "'%c' expected." on the current status without one.
bool readUntilChar(LmStr& text, char c, LmStr& out);
/// Removes the word, which must stand at the front: "'%s' expected.".
bool expect(LmStr& text, const char* word, LmStatus& status = currentStatus());
/// A text in quotes `q`; a backslash protects a quote or a backslash: "No closing '%c' found.".
bool readQuoted(LmStr& text, char q, LmStr& out, LmStatus& status = currentStatus());
/// Removes through the first LF, or all.
void skipLine(LmStr& text);
/// Removes leading white space, with the first flag also lines that begin with '#', with the second only up
/// to a line end.
void skipSpaceAndComments(LmStr& text, bool comments, bool stopAtNewline);

} // namespace quillon
