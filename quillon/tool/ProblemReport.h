#pragma once

#include <iosfwd>

namespace quillon {

struct LqProblemBundle;

/// Prints the whole problem on `out`, one line for each object: system variables with their limits, bodies
/// with base transforms (lengths as in the model, radians) and mappings, real markers, artificial pairs.
/// Model data that is missing is left out and, for bodies and real markers, remarked on `messages`. Reports
/// nothing on a status; whether the text could be written shows in the state of `out`.
void writeProblemReport(std::ostream& out, std::ostream& messages, const LqProblemBundle& bundle);

} // namespace quillon
