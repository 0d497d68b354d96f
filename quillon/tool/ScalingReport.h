#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/ReportText.h"

namespace quillon {

/// The second half of the report: scaling variables, weights, limit overrides, body scalings, temporary
/// markers, constraints and poses. Nothing for an empty scale definition. Guide overrides are not printed.
void writeScalingSection(ReportText& out, const LqScaleDefData& scaleDef);

/// The number as `ScaleFloat::print` prints it.
void writeScaleFloatText(ReportText& out, const LqScaleDefData::ScaleFloat& number);

/// Whether a limit is a literal and the greatest or the least 32-bit real: either counts as none for both
/// limits of a scaling variable.
bool isInfiniteLimit(const LqScaleDefData::ScaleFloat& limit);

/// As `writeMappingText`, with scaling variables: "s" and the number of a variable, or the constant and the
/// terms of a combination.
void writeScaleMappingText(ReportText& out, const LqBasicVarMapping<LqScaleDefData::ScaleFloat>& mapping);

// The printers of records that poses hold too. `poseName` stands behind the first word of each line; it is
// null outside of poses.

/// A line for each record. A limit is left out by its value without measured data, deliberately unlike those
/// of scaling variables: a lower limit that is the greatest real is printed.
void writeLimitOverrides(ReportText& out, const LmStr& poseName,
                         const LmArray<LqScaleDefData::LimitOverride_t>& overrides);

/// A line for each record: the directions of its vectors, and the product of their magnitudes as its weight.
/// A zero vector has NaN for its direction.
void writeVectorConstraints(ReportText& out, const LmStr& poseName,
                            const LmArray<LqScaleDefData::GlobalConst_t>& constraints);

/// One line, without what is 0 or the global frame.
void writePositionConstraint(ReportText& out, const LmStr& poseName,
                             const LqScaleDefData::PositionConst_t& constraint);

} // namespace quillon
