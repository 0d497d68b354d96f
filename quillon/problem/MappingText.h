#pragma once

#include "quillon/problem/LqBasicVarMapping.h"

#include <cstdint>
#include <iosfwd>

namespace quillon {

// The text form of a mapping in a problem definition file. The scale definition has one of its own.

/// Reads one mapping and the rest of its last line. `highestSysVar` is the highest id that it may refer to.
/// Reports on the current status and returns whether no error stands afterwards; after a failure the mapping
/// is partly filled. Never returns when the last line has no newline: a well-formed file ends every line.
bool readMapping(LqBasicVarMapping<float>& mapping, std::istream& input, std::int32_t highestSysVar);

/// Reads one term of a linear combination, with the same reports and result as `readMapping`.
bool readLinearTerm(LqLinearTerm<float>& term, std::istream& input, std::int32_t highestSysVar);

/// Writes the mapping without the newline behind it. Reals take the float format that the stream has.
void writeMapping(const LqBasicVarMapping<float>& mapping, std::ostream& output);

} // namespace quillon
