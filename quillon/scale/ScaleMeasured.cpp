// The test of a scale definition against measured data.

#include "quillon/core/LmStatus.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"

namespace quillon {

namespace {

/// Whether the references of a mapping's constant and factors can be evaluated.
bool validateMapping(const scaleDef::ScaleMapping& mapping, const LqMeasuredData* measured) {
    if (mapping.id >= 0) {
        return true;
    }
    if (!LqScaleDefData::validateMeasuredRef(mapping.constant, measured)) {
        return false;
    }
    for (const LqLinearTerm<scaleDef::ScaleFloat>* term : mapping.termList()) {
        if (!LqScaleDefData::validateMeasuredRef(term->coefficient, measured)) {
            return false;
        }
    }
    return true;
}

bool validateLimits(const scaleDef::LimitOverride_t& limits, const LqMeasuredData* measured) {
    if (!LqScaleDefData::validateMeasuredRef(limits.upper, measured) ||
        !LqScaleDefData::validateMeasuredRef(limits.lower, measured)) {
        return false;
    }
    // Without measured data there are only literals, which need none.
    const LqMeasuredData none;
    const LqMeasuredData& constants = measured == nullptr ? none : *measured;
    if (limits.lower.evaluate(constants) > limits.upper.evaluate(constants)) {
        pushErrorf("Invalid limits for variable %d.", limits.sysVarId);
        return false;
    }
    return true;
}

} // namespace

void LqScaleDefData::validateMeasured(const LqMeasuredData* measured) const {
    for (const LimitOverride_t& limits : limitOverrides) {
        if (!validateLimits(limits, measured)) {
            return;
        }
    }
    for (const ScaleVar& scaleVar : scaleVars) {
        if (!validateMeasuredRef(scaleVar.lower, measured) ||
            !validateMeasuredRef(scaleVar.upper, measured)) {
            return;
        }
    }
    for (const BodyParams_t& body : bodyParams) {
        for (const scaleDef::ScaleMapping& mapping : body.scale) {
            if (!validateMapping(mapping, measured)) {
                return;
            }
        }
    }
}

} // namespace quillon
