#include "quillon/limits/LqLimitsData.h"

#include "quillon/core/LmListView.h"

#include <algorithm>
#include <set>

namespace quillon {

namespace {

LqVarLimits& varAt(const LmDLListNode& node) {
    return *static_cast<LqVarLimits*>(node.data);
}

void freeVars(LmDoubleLinkedList& vars) {
    while (vars.count() != 0) {
        delete static_cast<LqVarLimits*>(vars.removeNode(vars.lastLive()));
    }
}

void freeIncludes(LmDoubleLinkedList& includes) {
    while (includes.count() != 0) {
        delete static_cast<LqLimitsInclude*>(includes.removeNode(includes.lastLive()));
    }
}

void removeVarsOf(LmDoubleLinkedList& vars, const std::set<int>& ids) {
    LmDLListNode* node = vars.firstLive();
    while (node != nullptr) {
        LmDLListNode* const following = nextLive(node);
        if (ids.count(varAt(*node).id) != 0) {
            delete static_cast<LqVarLimits*>(vars.removeNode(node));
        }
        node = following;
    }
}

/// A guide value without a weight draws the variable nowhere, so it does not count as an effect.
bool hasEffect(const LqVarLimits& record) {
    return record.mode != LimitNone || record.guideWeight != 0.0F;
}

const LmDLListNode* fromEffective(const LmDLListNode* node) {
    while (node != nullptr && !hasEffect(varAt(*node))) {
        node = nextLive(node);
    }
    return node;
}

bool equalWeights(const LqLimitWeight& a, const LqLimitWeight& b) {
    return a.notSet == b.notSet && (a.notSet || a.value == b.value);
}

bool equalLimits(const LqVarLimits& a, const LqVarLimits& b) {
    return a.mode == b.mode && (!a.hasUpperLimit() || a.upperValue == b.upperValue) &&
           (!a.hasLowerLimit() || a.lowerValue == b.lowerValue) &&
           equalWeights(a.upperWeight, b.upperWeight) && equalWeights(a.lowerWeight, b.lowerWeight);
}

bool equalRecords(const LqVarLimits& a, const LqVarLimits& b) {
    return a.id == b.id && equalLimits(a, b) && a.guideValue == b.guideValue &&
           a.guideWeight == b.guideWeight;
}

} // namespace

// --- LqVarLimits ---------------------------------------------------------------------------------

bool LqVarLimits::hasUpperLimit() const {
    return (static_cast<std::uint32_t>(mode) & ~std::uint32_t{2}) == 1;
}

bool LqVarLimits::hasLowerLimit() const {
    return static_cast<std::uint32_t>(mode) - 2 < 2;
}

void LqVarLimits::switchUpperLimit(bool on) {
    if (mode == (on ? LimitNone : LimitUpper)) {
        mode = on ? LimitUpper : LimitNone;
    } else if (mode == (on ? LimitLower : LimitBoth)) {
        mode = on ? LimitBoth : LimitLower;
    }
}

void LqVarLimits::switchLowerLimit(bool on) {
    if (mode == (on ? LimitNone : LimitLower)) {
        mode = on ? LimitLower : LimitNone;
    } else if (mode == (on ? LimitUpper : LimitBoth)) {
        mode = on ? LimitBoth : LimitUpper;
    }
}

// --- Life ----------------------------------------------------------------------------------------

LqLimitsData::LqLimitsData(const LqLimitsData& other) {
    copyFrom(other);
}

LqLimitsData& LqLimitsData::operator=(const LqLimitsData& other) {
    if (this != &other) {
        clear();
        copyFrom(other);
    }
    return *this;
}

LqLimitsData::~LqLimitsData() {
    clear();
}

void LqLimitsData::copyFrom(const LqLimitsData& other) {
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(other.vars)) {
        vars.append(new LqVarLimits(*record));
    }
    for (const LqLimitsInclude* include : LmListView<const LqLimitsInclude>(other.includes)) {
        includes.append(new LqLimitsInclude(*include));
    }
}

void LqLimitsData::clear() {
    freeVars(vars);
    freeVars(unlinkedVars);
    clearIncludes();
}

void LqLimitsData::clearIncludes() {
    freeIncludes(includes);
}

void LqLimitsData::replaceAll(LmDoubleLinkedList& newVars, LmDoubleLinkedList& newIncludes) {
    unlinkedVars.appendAll(vars);
    while (vars.count() != 0) {
        vars.removeNode(vars.lastLive());
    }
    clearIncludes();
    vars.swap(newVars);
    includes.swap(newIncludes);
}

// --- Look-ups ------------------------------------------------------------------------------------

const LqVarLimits* LqLimitsData::findVar(std::int32_t id) const {
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(vars)) {
        if (record->id == id) {
            return record;
        }
    }
    return nullptr;
}

LqVarLimits* LqLimitsData::findVar(std::int32_t id) {
    for (LqVarLimits* record : LmListView<LqVarLimits>(vars)) {
        if (record->id == id) {
            return record;
        }
    }
    return nullptr;
}

float LqLimitsData::guideValue(std::int32_t id) const {
    const LqVarLimits* const record = findVar(id);
    return record == nullptr ? 0.0F : record->guideValue;
}

float LqLimitsData::guideWeight(std::int32_t id) const {
    const LqVarLimits* const record = findVar(id);
    return record == nullptr ? 0.0F : record->guideWeight;
}

std::int32_t LqLimitsData::lastVarId() const {
    std::int32_t last = 0;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(vars)) {
        last = std::max(last, record->id);
    }
    return last;
}

bool LqLimitsData::equalEffective(const LqLimitsData& other) const {
    const LmDLListNode* mine = fromEffective(vars.firstLive());
    const LmDLListNode* theirs = fromEffective(other.vars.firstLive());
    while (mine != nullptr && theirs != nullptr) {
        if (!equalRecords(varAt(*mine), varAt(*theirs))) {
            return false;
        }
        mine = fromEffective(nextLive(mine));
        theirs = fromEffective(nextLive(theirs));
    }
    return mine == nullptr && theirs == nullptr;
}

// --- Editing -------------------------------------------------------------------------------------

LqVarLimits* LqLimitsData::insertVar(const LqVarLimits& record) {
    auto* const copy = new LqVarLimits(record);
    const LmDLListNode* const last = vars.lastLive();
    if (last == nullptr || copy->id > varAt(*last).id) {
        vars.append(copy);
        return copy;
    }
    // The last record is not below the new id, so the walk ends at a record.
    LmDLListCursor cursor(vars);
    while (static_cast<const LqVarLimits*>(cursor.data())->id < copy->id) {
        cursor.next();
    }
    cursor.insertBefore(copy);
    return copy;
}

LqVarLimits* LqLimitsData::varForEdit(std::int32_t id) {
    LqVarLimits* const present = findVar(id);
    return present != nullptr ? present : insertVar(LqVarLimits(id));
}

void LqLimitsData::setUpperLimit(std::int32_t id, float value) {
    LqVarLimits& record = *varForEdit(id);
    record.upperValue = value;
    record.switchUpperLimit(true);
}

void LqLimitsData::setLowerLimit(std::int32_t id, float value) {
    LqVarLimits& record = *varForEdit(id);
    record.lowerValue = value;
    record.switchLowerLimit(true);
}

void LqLimitsData::setUpperWeight(std::int32_t id, float weight) {
    varForEdit(id)->upperWeight.set(weight);
}

void LqLimitsData::setLowerWeight(std::int32_t id, float weight) {
    varForEdit(id)->lowerWeight.set(weight);
}

void LqLimitsData::setGuideValue(std::int32_t id, float value) {
    varForEdit(id)->guideValue = value;
}

void LqLimitsData::setGuideWeight(std::int32_t id, float weight) {
    varForEdit(id)->guideWeight = weight;
}

void LqLimitsData::removeVar(std::int32_t id) {
    removeVarsOf(vars, {id});
}

void LqLimitsData::removeVars(const LmArray<int>& ids) {
    removeVarsOf(vars, std::set<int>(ids.begin(), ids.end()));
}

void LqLimitsData::renumberVars(const LmArray<int>& table) {
    for (LqVarLimits* record : LmListView<LqVarLimits>(vars)) {
        if (record->id >= 1 && record->id <= table.count()) {
            record->id = table[record->id - 1];
        }
    }
}

void LqLimitsData::addInclude(const LmStr& fileName, std::int32_t idOffset) {
    includes.append(new LqLimitsInclude{fileName, idOffset});
}

} // namespace quillon
