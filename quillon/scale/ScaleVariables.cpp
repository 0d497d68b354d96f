#include "quillon/core/LmStatus.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleArrays.h"

#include <algorithm>
#include <string>

// The scaling variables, and the mappings that refer to them by id.

namespace quillon {

namespace {

using Term = LqLinearTerm<scaleDef::ScaleFloat>;

/// Closes the gap that a removed id leaves. A reference to the id itself deliberately stays.
void closeIdGap(std::int32_t& id, std::int32_t removedId) {
    if (id > removedId) {
        --id;
    }
}

void closeIdGap(scaleDef::ScaleMapping& mapping, std::int32_t removedId) {
    closeIdGap(mapping.id, removedId);
    for (Term* const term : mapping.termList()) {
        closeIdGap(term->sysVar, removedId);
    }
}

bool usesVariable(const scaleDef::ScaleMapping& mapping, std::int32_t id) {
    if (mapping.id == id) {
        return true;
    }
    const LmListView<Term> terms = mapping.termList();
    for (const Term* const term : terms) {
        if (term->sysVar == id) {
            return true;
        }
    }
    return false;
}

/// Calls `visit` with every mapping of a definition, const or not.
template <class Definition, class Visit>
void forEachMapping(Definition& definition, const Visit& visit) {
    const auto visitConstraints = [&visit](auto& constraints) {
        for (auto& constraint : constraints) {
            std::for_each(constraint.mapping.begin(), constraint.mapping.end(), visit);
        }
    };
    for (auto& body : definition.bodyParams) {
        std::for_each(body.scale.begin(), body.scale.end(), visit);
    }
    visitConstraints(definition.positionConstraints);
    for (scaleDef::Pose_t* const pose : definition.poses) {
        if (pose != nullptr) {
            visitConstraints(pose->positionConstraints);
        }
    }
}

} // namespace

int LqScaleDefData::scaleVarCount() const {
    return scaleVars.count();
}

void LqScaleDefData::setScaleVar(std::int32_t id, const ScaleVar& record) {
    ScaleVar& variable = scaleVars[id - 1];
    variable = record;
    if (variable.name.view().empty()) {
        variable.name = std::to_string(id).c_str();
    }
}

void LqScaleDefData::insertScaleVar(std::int32_t id, const ScaleVar& record) {
    if (id < 1) {
        pushErrorf("The id must be greater than zero.");
        return;
    }
    const int highestId = scaleVars.count() + 1;
    if (id > highestId) {
        pushErrorf("The highest valid id is %i.", highestId);
        return;
    }
    scaleVars.insert(id - 1, 1, record);
    setScaleVar(id, scaleVars[id - 1]); // names it, when it has no name
}

void LqScaleDefData::removeScaleVar(std::int32_t id) {
    scaleDef::removeAt(scaleVars, id - 1);
    forEachMapping(*this, [id](scaleDef::ScaleMapping& mapping) { closeIdGap(mapping, id); });
}

bool LqScaleDefData::isScaleVarUsed(std::int32_t id) const {
    bool used = false;
    forEachMapping(*this, [id, &used](const scaleDef::ScaleMapping& mapping) {
        used = used || usesVariable(mapping, id);
    });
    return used;
}

LmStr LqScaleDefData::scaleVarLabel(const ScaleVar& record) {
    return record.description.view().empty() ? "Scale Var " + record.name : record.description;
}

} // namespace quillon
