#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/model/LqBodyDefData.h"

#include <iosfwd>

namespace quillon {

/// Writes a model file; what keeps it from being created is reported on the current status.
void writeModelFile(const LqBodyDefData& model, const LmStr& path, const LqProblemDefData& problemDef);

/// Writes header, bodies, markers and includes. The definition, whose bodies are found without regard to
/// case, says which bodies have a length and a direction. Leaves the stream's real format general, not
/// fixed-point.
void writeModelStream(const LqBodyDefData& model, std::ostream& output, const LqProblemDefData& problemDef);

} // namespace quillon
