#pragma once

#include "quillon/limits/LqLimitsData.h"

#include <iosfwd>

namespace quillon {

/// Writes the tagged form of the limits file. Failures are reported on the current status; what happens to
/// the stream after the header is not looked at.
void writeLimitsFile(const LqLimitsData& limits, const LmStr& name);

/// As `writeLimitsFile`; reports "Couldn't write file" when the stream has failed by the end.
void writeLimitsFileChecked(const LqLimitsData& limits, const LmStr& name);

/// Writes the tagged form: header, scale, a block for each record that has a limit or a guide, includes.
/// Reals have two decimals, the weights of limits four. The stream's format is left as the header sets it.
void writeTaggedLimits(const LqLimitsData& limits, std::ostream& output);

/// Writes the older form: a line without meaning and a row for each record, limits with four decimals.
/// Weights, guides and INCLUDE sections are lost. The stream's format is the same afterwards; its state is
/// not looked at.
void writeOlderLimits(const LqLimitsData& limits, std::ostream& output);

} // namespace quillon
