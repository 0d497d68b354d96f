#pragma once

#include "quillon/scale/ScaleRecords.h"
#include "quillon/scale/SysVarNames.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace quillon {

class LqProblemDefData;
class LqScaleDefData;

// The records of a scale definition file that stand in more than one of its sections. Numbers take the format
// that the stream has; `writeScaleDefBody` gives it the default one.

/// Writes "0", the name of a scaling variable of `source`, or -(n + 1), the constant, and n times a name and
/// a factor. Names are bare: one with a blank in it does not read back. In the place of a variable that
/// `source` does not have stands its number, which readers refuse.
void writeScaleMapping(const LqScaleDefData& source, std::ostream& output,
                       const scaleDef::ScaleMapping& mapping);

/// Writes a POSITION_CONSTRAINT block, its lines behind two blanks for each level of indentation. Mappings
/// name the scaling variables of `source`.
void writePositionConstraint(const LqScaleDefData& source, std::ostream& output,
                             const scaleDef::PositionConst_t& record, int indentLevel);

/// Writes a SYS_VAR_GUIDE_OVERRIDE block for each record, its lines behind the indentation. A record on a
/// variable that the problem definition does not have is left out and told on standard error.
void writeGuideOverrides(std::ostream& output, const LmDArray<scaleDef::SysVarGuideOverride>& records,
                         const LqProblemDefData& problemDef, std::string_view indent);

namespace scaleDef {

/// The same for callers that write several arrays.
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
