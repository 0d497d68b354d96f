#pragma once

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

// The items at the top of a scale definition that are about markers. Each function takes the item's text,
// reports on the current status, and returns whether reading goes on. The array that it fills is emptied
// first and keeps the records in front of the one that fails.

/// Reads REAL_COUNT, which is required. A count above that of the problem definition's real markers is kept
/// by a lenient reading.
bool readRealCount(std::string_view text, ScaleDefContext& context);

/// Reads DEFAULT_REAL_WEIGHT, which is required.
bool readDefaultRealWeight(std::string_view text, ScaleDefContext& context);

/// Reads REAL_WEIGHT_OVERRIDES: marker id and weight, any number of times.
bool readRealWeightOverrides(std::string_view text, ScaleDefContext& context);

/// Reads ARTIFICIAL_PAIR_WEIGHT_OVERRIDES: two marker ids and a weight, any number of times.
bool readArtificialWeightOverrides(std::string_view text, ScaleDefContext& context);

} // namespace quillon::scaleDef
