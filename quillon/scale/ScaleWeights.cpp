#include "quillon/core/LmStatus.h"
#include "quillon/problem/RecordArrays.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleArrays.h"

// Real markers, their weights, and the weights of artificial pairs.

namespace quillon {

using scaleDef::elementAt;
using scaleDef::indexWhere;
using scaleDef::removeAt;

namespace {

using Overrides = LmArray<scaleDef::RealWeightOverride_t>;
using Pairs = LmArray<scaleDef::ArtificialWeightOverride_t>;

int overrideIndex(const Overrides& overrides, std::int32_t markerId) {
    return indexWhere(overrides, [markerId](const auto& record) { return record.markerId == markerId; });
}

int pairIndex(const Pairs& pairs, std::int32_t markerId) {
    return indexWhere(pairs, [markerId](const auto& record) {
        return record.firstMarkerId == markerId || record.secondMarkerId == markerId;
    });
}

/// Moves what lies above the real markers: all temps and all artificial pairs.
void shiftIdsAboveReals(LqScaleDefData& definition, std::int32_t offset) {
    for (scaleDef::TempData_t& temp : definition.temps) {
        shiftId(temp.id, offset);
    }
    for (scaleDef::ArtificialWeightOverride_t& pair : definition.artificialWeightOverrides) {
        shiftId(pair.firstMarkerId, offset);
        shiftId(pair.secondMarkerId, offset);
    }
}

} // namespace

// --- Real markers -----------------------------------------------------------------------------------------

void LqScaleDefData::setRealCount(std::int32_t count) {
    realCount = count;
}

void LqScaleDefData::insertRealMarker(std::int32_t id) {
    if (id <= std::int64_t{realCount} + 1) {
        shiftId(realCount, 1);
    }
    for (RealWeightOverride_t& record : realWeightOverrides) {
        if (record.markerId >= id) {
            shiftId(record.markerId, 1);
        }
    }
    shiftIdsAboveReals(*this, 1);
}

void LqScaleDefData::removeRealMarker(std::int32_t id) {
    if (id > realCount) {
        return;
    }
    shiftId(realCount, -1);
    removeRealWeightOverride(id);
    for (RealWeightOverride_t& record : realWeightOverrides) {
        if (record.markerId > id) {
            shiftId(record.markerId, -1);
        }
    }
    shiftIdsAboveReals(*this, -1);
}

int LqScaleDefData::realWeightOverrideCount() const {
    return realWeightOverrides.count();
}

bool LqScaleDefData::hasRealWeightOverride(std::int32_t markerId) const {
    return findRealWeightOverride(markerId) != nullptr;
}

LqScaleDefData::RealWeightOverride_t* LqScaleDefData::findRealWeightOverride(std::int32_t markerId) {
    return elementAt(realWeightOverrides, overrideIndex(realWeightOverrides, markerId));
}

const LqScaleDefData::RealWeightOverride_t*
LqScaleDefData::findRealWeightOverride(std::int32_t markerId) const {
    return elementAt(realWeightOverrides, overrideIndex(realWeightOverrides, markerId));
}

void LqScaleDefData::setRealWeight(std::int32_t markerId, float weight) {
    if (RealWeightOverride_t* const present = findRealWeightOverride(markerId)) {
        present->weight = weight;
    }
}

void LqScaleDefData::setRealWeight(const RealWeightOverride_t& record) {
    setRealWeight(record.markerId, record.weight);
}

void LqScaleDefData::addRealWeightOverride(std::int32_t markerId, float weight) {
    addRealWeightOverride({markerId, weight});
}

void LqScaleDefData::addRealWeightOverride(const RealWeightOverride_t& record) {
    if (hasRealWeightOverride(record.markerId)) {
        pushErrorf("Duplicate entry.");
        return;
    }
    realWeightOverrides.append(record);
}

void LqScaleDefData::removeRealWeightOverride(std::int32_t markerId) {
    const int index = overrideIndex(realWeightOverrides, markerId);
    if (index >= 0) {
        removeAt(realWeightOverrides, index);
    }
}

// --- Artificial pairs -------------------------------------------------------------------------------------

bool LqScaleDefData::hasArtificialWeightOverride(std::int32_t markerId) const {
    return pairIndex(artificialWeightOverrides, markerId) >= 0;
}

void LqScaleDefData::setArtificialWeight(std::int32_t markerId, float weight) {
    const int index = pairIndex(artificialWeightOverrides, markerId);
    if (index >= 0) {
        artificialWeightOverrides[index].weight = weight;
    }
}

LqScaleDefData::ArtificialWeightOverride_t LqScaleDefData::findArtificialPair(std::int32_t markerId) const {
    const int index = pairIndex(artificialWeightOverrides, markerId);
    return index >= 0 ? artificialWeightOverrides[index] : ArtificialWeightOverride_t{-1, -1, 0.0F};
}

void LqScaleDefData::addArtificialWeightOverride(const ArtificialWeightOverride_t& record) {
    if (hasArtificialWeightOverride(record.firstMarkerId)) {
        pushErrorf("Duplicate entry.");
        return;
    }
    artificialWeightOverrides.append(record);
}

void LqScaleDefData::removeArtificialWeightOverride(std::int32_t markerId) {
    const int index = pairIndex(artificialWeightOverrides, markerId);
    if (index >= 0) {
        removeAt(artificialWeightOverrides, index);
    }
}

} // namespace quillon
