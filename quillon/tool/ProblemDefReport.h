#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/problem/LqBasicVarMapping.h"
#include "quillon/tool/ReportText.h"

#include <iosfwd>

namespace quillon {

struct LqProblemBundle;

/// The first half of the report: system variables, bodies, real markers and artificial pairs, in this order
/// and each in the order of its array.
void writeProblemDefSection(ReportText& out, std::ostream& messages, const LqProblemBundle& bundle);

/// The text of what drives a transformation: "v" and the number of a variable, or the constant and the terms
/// of a combination; null for a transformation that is not driven.
LmStr mappingText(const LqBasicVarMapping<float>& mapping);

} // namespace quillon
