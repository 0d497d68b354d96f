#pragma once

#include "quillon/problem/LqBasicVarMapping.h"
#include "quillon/tool/ReportText.h"

#include <iosfwd>

namespace quillon {

struct LqProblemBundle;

/// The first half of the report: system variables, bodies, real markers and artificial pairs, in this order
/// and each in the order of its array.
void writeProblemDefSection(ReportText& out, std::ostream& messages, const LqProblemBundle& bundle);

/// What drives a transformation: "v" and the number of a variable, or the constant and the terms of a
/// combination, which may be no text at all; nothing for a transformation that is not driven.
void writeMappingText(ReportText& out, const LqBasicVarMapping<float>& mapping);

} // namespace quillon
