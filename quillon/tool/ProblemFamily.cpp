#include "quillon/tool/ProblemFamily.h"

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

namespace quillon {

bool readProblemFamily(LqProblemSpec& spec, LqProblemBundle& family, const LmStr& path) {
    readProblemSpec(spec, path, currentStatus());
    return !errorStands() &&
           (spec.problemDefinition.isNull() ||
            family.problemDef.readProblemDefFile(spec.problemDefinition, true)) &&
           (spec.unscaledBodyDef.isNull() ||
            family.model.readModelFile(spec.unscaledBodyDef, family.problemDef, true)) &&
           (spec.limits.isNull() || readLimitsFile(family.limits, spec.limits, true)) &&
           (spec.scaleDefinition.isNull() ||
            family.scaleDef.readFile(spec.scaleDefinition, family.problemDef, false));
}

} // namespace quillon
