#pragma once

#include <iosfwd>

namespace quillon {

class LqBodyDefData;

// The last section of the model file: the INCLUDE blocks, which name other models.

/// Reads the section, which goes on to the end of the input, in place of what the model's `includes` held.
/// Reports on the current status; after a failure, with the result false, `includes` stays as it was.
bool readModelIncludes(LqBodyDefData& target, std::istream& input);

/// Writes a block for each include.
void writeModelIncludes(const LqBodyDefData& model, std::ostream& output);

} // namespace quillon
