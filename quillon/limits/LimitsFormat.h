#pragma once

#include "quillon/limits/LqLimitsData.h"

#include <array>
#include <cstdint>

/// The words of the limits file, which its readers and writers share.
namespace quillon::limitsFormat {

// Compared without regard to case when read.
inline constexpr const char* variableKey = "VARIABLE";
inline constexpr const char* idKey = "ID";
inline constexpr const char* lowerKey = "LOWER";
inline constexpr const char* upperKey = "UPPER";
inline constexpr const char* valueKey = "VALUE";
inline constexpr const char* weightKey = "WEIGHT";
inline constexpr const char* idOffsetKey = "SYSTEM_VARIABLE_ID_OFFSET";

// Compared exactly when read. Deliberately unlike the others: in small letters the first is an unexpected key
// word and the second is skipped.
inline constexpr const char* guideWeightScaleKey = "GUIDE_WEIGHT_SCALE";
inline constexpr const char* guideKey = "GUIDE";
inline constexpr const char* linearScale = "linear";
inline constexpr const char* quadraticScale = "quadratic";

/// The first line of the older form. Only its number has to be there when it is read, and nothing uses it.
inline constexpr const char* olderFirstLine = "            1               Field Number";

/// The number of a limit mode in the older form, where the sign tells a lower limit from an upper one.
struct OlderMode {
    std::int32_t number; ///< in the file
    LqLimitMode mode;    ///< in memory
};
/// All modes of the older form.
inline constexpr std::array<OlderMode, 4> olderModes = {
    {{0, LimitNone}, {1, LimitUpper}, {-1, LimitLower}, {2, LimitBoth}}};

} // namespace quillon::limitsFormat
