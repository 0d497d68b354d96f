#pragma once

#include <iosfwd>

namespace quillon {

class LqProblemDefData;

// The last section of the problem definition file: the INCLUDE blocks, which name other definitions.

/// Reads the section, which goes on to the end of the input, in place of what the definition's `includes`
/// held. Reports on the current status; after a failure, with the result false, `includes` stays as it was.
bool readIncludes(LqProblemDefData& target, std::istream& input);

/// Writes a block for each include. The stream's format is put back at the end.
void writeIncludes(const LqProblemDefData& source, std::ostream& output);

} // namespace quillon
