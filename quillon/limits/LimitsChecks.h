#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LqLimitsData.h"
#include "quillon/problem/LqProblemDefData.h"

namespace quillon {

/// Whether the problem definition reaches as far as the limits: the greatest id that has limits is not above
/// the greatest id of a system variable. Otherwise an error is put on `status`. A gap in the ids of the
/// problem definition is not seen.
bool checkLimits(const LqLimitsData& limits, const LqProblemDefData& problemDef,
                 LmStatus& status = currentStatus());

} // namespace quillon
