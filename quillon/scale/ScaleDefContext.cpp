#include "quillon/scale/ScaleDefContext.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/ScaleTokens.h"

#include <istream>
#include <optional>

namespace quillon::scaleDef {

ScaleDefContext::ScaleDefContext(LqScaleDefData& target, const LqProblemDefData& problem, bool lenientReading)
    : problemDef(problem), definition(target), lenient(lenientReading), poses(target.poses),
      bodyParams(target.bodyParams), positionConstraints(target.positionConstraints),
      sysVarGuideOverrides(target.sysVarGuideOverrides), scaleVars(target.scaleVars), sysVarNames(problem) {
    bodyNames.reserve(static_cast<std::size_t>(problem.bodies.count()));
    for (const LqPDDBodyMap* body : problem.bodies) {
        if (body != nullptr) {
            bodyNames.add(body->name.view(), 0);
        }
    }
    sysVarIds.reserve(static_cast<std::size_t>(problem.sysVars.count()));
    for (const LqPDDSysVar* sysVar : problem.sysVars) {
        if (sysVar != nullptr) {
            sysVarIds.add(sysVar->description.view(), sysVar->id);
        }
    }
    std::int32_t id = 0;
    for (const ScaleVar& scaleVar : target.scaleVars) {
        ++id;
        addScaleVarName(scaleVar.name, id);
    }
}

// --- References to the problem definition --------------------------------------------------------

bool ScaleDefContext::hasBody(const LmStr& name) const {
    return bodyNames.contains(name.view());
}

LmStr ScaleDefContext::sysVarName(std::int32_t id) const {
    return LmStr(sysVarNames.nameOf(id));
}

std::int32_t ScaleDefContext::readSysVarId(std::istream& input, const char* what) const {
    skipWhite(input);
    if (isDigit(static_cast<char>(peekChar(input)))) {
        return readIntValue(input, what);
    }
    const LmStr name = readNameValue(input, what);
    if (errorStands()) {
        return 0;
    }
    if (const std::optional<std::int32_t> id = sysVarIds.find(name.view())) {
        return *id;
    }
    pushErrorf("Variable '%s' is not in the problem definition.", name.c_str());
    return 0;
}

bool ScaleDefContext::reportUnresolved(const LmStr& message) const {
    if (lenient) {
        pushWarning(message);
    } else {
        pushError(message);
    }
    return lenient;
}

// --- Scaling variables and mappings --------------------------------------------------------------

std::int32_t ScaleDefContext::scaleVarId(const LmStr& name) const {
    return scaleVarIds.find(name.view()).value_or(0);
}

void ScaleDefContext::addScaleVarName(const LmStr& name, std::int32_t id) {
    scaleVarNames.push_back(name);
    scaleVarIds.add(scaleVarNames.back().view(), id);
}

void ScaleDefContext::nameScaleVar(ScaleVar& last, const LmStr& name) {
    last.name = name;
    addScaleVarName(name, scaleVars.count());
}

std::int32_t ScaleDefContext::readScaleVarId(std::istream& input, const char* what) const {
    const LmStr token = readNameValue(input, what);
    if (errorStands()) {
        return 0;
    }
    // A positive number is no id but a name: that is how a variable is reached that is named by its number.
    std::int32_t number = 0;
    if (token.toInt(number) && number < 1) {
        return number;
    }
    const std::int32_t id = scaleVarId(token);
    if (id == 0) {
        pushErrorf("Invalid scaling variable '%s' used for %s.", token.c_str(), what);
    }
    return id;
}

ScaleMapping ScaleDefContext::readScaleMapping(std::istream& input, const char* what) const {
    ScaleMapping mapping;
    const std::int32_t id = readScaleVarId(input, what);
    if (errorStands()) {
        return mapping;
    }
    mapping.id = id;
    if (id >= 0) {
        return mapping;
    }
    mapping.constant = LqScaleDefData::readScaleFloat(input, what, 0.0F);
    return errorStands() || readTerms(input, what, mapping) ? mapping : ScaleMapping();
}

/// Reads the terms that the `id` announces. False when the mapping is to be given up as a whole; other errors
/// leave it partly filled.
bool ScaleDefContext::readTerms(std::istream& input, const char* what, ScaleMapping& mapping) const {
    const std::int64_t termCount = -std::int64_t{mapping.id} - 1;
    for (std::int64_t k = 0; k < termCount; ++k) {
        const std::int32_t id = readScaleVarId(input, what);
        if (errorStands()) {
            return false;
        }
        if (id < 1 || id > scaleVarCount()) {
            pushErrorf("Invalid scaling variable (%d) used for %s.", id, what);
            return true;
        }
        const ScaleFloat factor = LqScaleDefData::readScaleFloat(input, what, 0.0F);
        if (errorStands()) {
            return true;
        }
        mapping.terms.append(new LqLinearTerm<ScaleFloat>{id, factor});
    }
    return true;
}

} // namespace quillon::scaleDef
