#pragma once

#include "quillon/scale/ScaleRecords.h"
#include "quillon/scale/SysVarNames.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace quillon {

// The records of a scale definition file that stand in more than one of its sections. Numbers take the format
// that the stream has; `LqScaleDefData::writeBody` gives it the default one.

namespace scaleDef {

/// As `LqScaleDefData::writeGuideOverrides`, for callers that write several arrays.
void writeGuideOverrides(std::ostream& output, const LmDArray<SysVarGuideOverride>& records,
                         const SysVarNames& names, std::string_view indent);

/// Writes a LIMIT_ADJUSTMENTS block, its lines behind the indentation. A variable that the problem definition
/// does not have gets an empty name.
void writeLimitAdjustments(std::ostream& output, const LmDArray<LimitOverride_t>& records,
                           const SysVarNames& names, std::string_view indent);

/// Writes a GLOBAL_CONSTRAINTS block, its lines behind the indentation.
void writeGlobalConstraints(std::ostream& output, const LmDArray<GlobalConst_t>& records,
                            std::string_view indent);

/// Writes x, y and z with a blank between.
void writeVector(std::ostream& output, const LmVec3& vector);

/// Writes a text with blanks behind it up to the width; a longer text stands whole.
void writeField(std::ostream& output, std::string_view text, std::size_t width);

} // namespace scaleDef
} // namespace quillon
