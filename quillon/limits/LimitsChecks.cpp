#include "quillon/limits/LimitsChecks.h"

namespace quillon {

bool checkLimits(const LqLimitsData& limits, const LqProblemDefData& problemDef, LmStatus& status) {
    const std::int32_t lastWithLimits = limits.lastVarId();
    const std::int32_t lastOfProblem = problemDef.highestSysVarId();
    if (lastWithLimits <= lastOfProblem) {
        return true;
    }
    // The newline at the end is deliberate: host programs print the message as it is.
    status.pushErrorf("There are limits for sysvar %d, but the last sysvar in the probdef is %d\n",
                      lastWithLimits, lastOfProblem);
    return false;
}

} // namespace quillon
