#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

/// Reads the family of files that a problem specification names, in the order specification, problem
/// definition, model, limits, scale definition, and writes the report on `out` when no error stands. "Read"
/// lines and remarks on missing data go to `messages`; what was achieved stands in the current status. A
/// specification without a limits file or a scale definition ends the process by a memory fault: a problem for
/// this tool must name both.
void runInfo(const LmStr& path, std::ostream& out, std::ostream& messages);

} // namespace quillon
