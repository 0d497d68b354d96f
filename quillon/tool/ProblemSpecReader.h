#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemSpec;

/// Opens and reads a problem specification file, which may lie compressed. What is wrong is reported into
/// `status` and ends the reading; the fields that were read before it stay.
void readProblemSpec(LqProblemSpec& target, const LmStr& path, LmStatus& status);

/// Reads an open stream. Paths and times are cleared first; user values and `matchBy` are not, so that user
/// values add up over reads into one object. An entry that stands in `status` already makes the file invalid.
void readProblemSpecStream(LqProblemSpec& target, std::istream& input, LmStatus& status);

} // namespace quillon
