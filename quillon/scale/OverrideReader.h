#pragma once

#include "quillon/scale/GuideOverrideFiller.h"
#include "quillon/scale/ScaleRecords.h"

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

// The limits and guides of a definition and those of a pose have one form. All reports go to the current
// status; each function returns whether no error stands afterwards.

/// Reads the text of a LIMIT_ADJUSTMENTS block, a row per line, in the place of what the target holds. A
/// lenient reading drops rows with an unknown variable and keeps those that repeat one, each with a warning.
bool readLimitOverrides(std::string_view blockText, const ScaleDefContext& context,
                        LmDArray<LimitOverride_t>& target);

/// Reads the text of a SYS_VAR_GUIDE_OVERRIDE block and adds its record. Deliberately adds nothing, without a
/// message, when the target has a guide for the variable: the first one wins.
bool readGuideOverride(std::string_view blockText, const ScaleDefContext& context,
                       GuideOverrideFiller& target);

} // namespace quillon::scaleDef
