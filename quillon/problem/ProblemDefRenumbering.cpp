// New ids for the markers and system variables of a problem definition.

#include "quillon/problem/LqProblemDefData.h"
#include "quillon/problem/RecordArrays.h"

#include <algorithm>

namespace quillon {

namespace {

/// The id by the table; an id that the table does not cover stays.
void applyTable(std::int32_t& id, const LmArray<int>& table) {
    if (id >= 1 && id <= table.count()) {
        id = table[id - 1];
    }
}

template <class Marker>
void applyTableToIds(const LmDArray<Marker*>& markers, const LmArray<int>& table) {
    for (Marker* const marker : markers) {
        if (marker != nullptr) {
            applyTable(marker->id, table);
        }
    }
}

/// Gives out the ids from 1 upward, and notes them in a table under the old ones.
class MarkerNumbering {
public:
    explicit MarkerNumbering(LmDArray<int>& newIds) : table(newIds) {}

    void number(std::int32_t oldId) {
        if (oldId >= 1) {
            table[oldId - 1] = ++lastId;
        }
    }

    template <class Marker>
    void numberAll(const LmDArray<Marker*>& markers) {
        for (const Marker* marker : markers) {
            if (marker != nullptr) {
                number(marker->id);
            }
        }
    }

private:
    LmDArray<int>& table;
    int lastId = 0;
};

} // namespace

void LqProblemDefData::shiftArtificialIds(std::int32_t offset) {
    dropRepeatedSlots();
    for (LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair != nullptr) {
            shiftId(pair->id, offset);
            shiftId(pair->otherId, offset);
        }
    }
}

LmDArray<int> LqProblemDefData::compactMarkerIds() {
    dropRepeatedSlots();
    LmDArray<int> table;
    table.setLengthZeroed(std::max(highestMarkerId(), 0));
    MarkerNumbering numbering(table);
    numbering.numberAll(realMarkers);
    numbering.numberAll(globalDirectionMarkers);
    numbering.numberAll(fixMarkers);
    numbering.numberAll(doubleMarkers);
    for (const LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair != nullptr) {
            numbering.number(pair->id);
            numbering.number(pair->otherId);
        }
    }
    applyMarkerIdTable(table);
    return table;
}

void LqProblemDefData::applyMarkerIdTable(const LmArray<int>& table) {
    dropRepeatedSlots();
    applyTableToIds(realMarkers, table);
    applyTableToIds(globalDirectionMarkers, table);
    applyTableToIds(fixMarkers, table);
    applyTableToIds(doubleMarkers, table);
    applyTableToIds(artificialMarkers, table);
    for (LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair != nullptr) {
            applyTable(pair->otherId, table);
        }
    }
}

void LqProblemDefData::compactSysVarIds() {
    LmDArray<int> table;
    table.setLengthZeroed(std::max(highestSysVarId(), 0));
    for (int i = 0; i < sysVars.count(); ++i) {
        if (sysVars[i] != nullptr && sysVars[i]->id >= 1) {
            table[sysVars[i]->id - 1] = i + 1;
        }
    }
    applySysVarIdTable(table);
}

void LqProblemDefData::applySysVarIdTable(const LmArray<int>& table) {
    dropRepeatedSlots();
    for (LqPDDBodyMap* body : bodies) {
        if (body == nullptr) {
            continue;
        }
        for (LqBasicVarMapping<float>& mapping : body->mappings) {
            applyTable(mapping.id, table);
            for (LqLinearTerm<float>* term : mapping.termList()) {
                applyTable(term->sysVar, table);
            }
        }
        applyTable(body->typeOneVar, table);
        applyTable(body->typeTwoVar, table);
    }
}

} // namespace quillon
