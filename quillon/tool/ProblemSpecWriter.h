#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemSpec;

/// Writes a problem specification file; what is wrong is reported into `status`. What happens to the stream
/// while writing is not looked at.
void writeProblemSpec(const LqProblemSpec& source, const LmStr& path, LmStatus& status);

/// Writes id, version and content. `model` must be present; the other paths are left out when null. Paths in
/// the data directory are written with the name of its variable. A user value with an empty value is dropped.
void writeProblemSpecStream(const LqProblemSpec& source, std::ostream& output);

} // namespace quillon
