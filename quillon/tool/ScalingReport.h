#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/ReportText.h"

namespace quillon {

/// The second half of the report: scaling variables, weights, limit overrides, body scalings, temporary
/// markers, constraints and poses. Nothing for an empty scale definition. Guide overrides are not printed.
void writeScalingSection(ReportText& out, const LqScaleDefData& scaleDef);

/// The number as `ScaleFloat::print` prints it.
LmStr scaleFloatText(const LqScaleDefData::ScaleFloat& number);

/// Whether a limit is a literal and the greatest or the least 32-bit real: either counts as none for both
/// limits of a scaling variable.
bool isInfiniteLimit(const LqScaleDefData::ScaleFloat& limit);

/// As `mappingText`, with scaling variables: "s" and the number of a variable, or the constant and the terms
/// of a combination; null for a mapping of id 0.
LmStr scaleMappingText(const LqBasicVarMapping<LqScaleDefData::ScaleFloat>& mapping);

} // namespace quillon
