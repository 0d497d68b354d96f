// The look-ups and summaries of a problem definition.

#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace quillon {

namespace {

/// The index of the first record for which the condition holds, or -1.
template <class Record, class Condition>
int indexOf(const LmDArray<Record*>& records, const Condition& condition) {
    for (int i = 0; i < records.count(); ++i) {
        if (records[i] != nullptr && condition(*records[i])) {
            return i;
        }
    }
    return -1;
}

template <class Record>
int indexOfId(const LmDArray<Record*>& records, std::int32_t id) {
    return indexOf(records, [id](const Record& record) { return record.id == id; });
}

template <class Record>
Record* at(const LmDArray<Record*>& records, int index) {
    return index < 0 ? nullptr : records[index];
}

int indexOfName(const LmDArray<LqPDDBodyMap*>& bodies, const LmStr& name) {
    return indexOf(bodies, [&name](const LqPDDBodyMap& body) { return body.name == name; });
}

} // namespace

LqPDDBodyMap* LqProblemDefData::findBody(const LmStr& name) const {
    return at(bodies, indexOfName(bodies, name));
}

bool LqProblemDefData::hasBody(const LmStr& name) const {
    return indexOfName(bodies, name) >= 0;
}

std::optional<int> LqProblemDefData::bodyIndex(const LmStr& name) const {
    const int index = indexOfName(bodies, name);
    return index < 0 ? std::nullopt : std::optional<int>(index);
}

LqPDDBodyMap* LqProblemDefData::findBodyByNumber(std::int32_t graphicsNumber) const {
    return at(bodies, indexOf(bodies, [graphicsNumber](const LqPDDBodyMap& body) {
                  return body.graphicsNumber == graphicsNumber;
              }));
}

LqPDDSysVar* LqProblemDefData::findSysVar(const LmStr& description) const {
    return at(sysVars, indexOf(sysVars, [&description](const LqPDDSysVar& sysVar) {
                  return sysVar.description == description;
              }));
}

LqPDDSysVar* LqProblemDefData::findSysVarById(std::int32_t id) const {
    return at(sysVars, indexOfId(sysVars, id));
}

LqPDDRealMarker* LqProblemDefData::findRealMarker(std::int32_t id) const {
    return at(realMarkers, indexOfId(realMarkers, id));
}

int LqProblemDefData::realMarkerIndex(std::int32_t id) const {
    return indexOfId(realMarkers, id);
}

LqPDDArtificialMarker* LqProblemDefData::findArtificialMarker(std::int32_t id) const {
    return at(artificialMarkers, indexOfId(artificialMarkers, id));
}

int LqProblemDefData::artificialMarkerIndex(std::int32_t id) const {
    return indexOfId(artificialMarkers, id);
}

bool LqProblemDefData::hasRealMarker(std::int32_t id) const {
    return indexOfId(realMarkers, id) >= 0;
}

bool LqProblemDefData::hasFixMarker(std::int32_t id) const {
    return indexOfId(fixMarkers, id) >= 0;
}

bool LqProblemDefData::hasDoubleMarker(std::int32_t id) const {
    return indexOfId(doubleMarkers, id) >= 0;
}

namespace {

/// The largest of the ids that it is shown.
class HighestId {
public:
    void see(std::int32_t id) {
        highest = any ? std::max(highest, id) : id;
        any = true;
    }

    template <class Record>
    void seeAll(const LmDArray<Record*>& records) {
        for (const Record* record : records) {
            if (record != nullptr) {
                see(record->id);
            }
        }
    }

    /// 0 when it has seen none.
    std::int32_t value() const { return highest; }

private:
    std::int32_t highest = 0;
    bool any = false;
};

} // namespace

std::int32_t LqProblemDefData::highestSysVarId() const {
    HighestId highest;
    highest.seeAll(sysVars);
    return highest.value();
}

std::int32_t LqProblemDefData::highestMarkerId() const {
    HighestId highest;
    highest.seeAll(realMarkers);
    highest.seeAll(globalDirectionMarkers);
    highest.seeAll(fixMarkers);
    highest.seeAll(doubleMarkers);
    highest.seeAll(artificialMarkers);
    for (const LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair != nullptr) {
            highest.see(pair->otherId);
        }
    }
    return highest.value();
}

std::int32_t LqProblemDefData::highestBodyNumber() const {
    std::int32_t highest = 0;
    for (const LqPDDBodyMap* body : bodies) {
        if (body != nullptr) {
            highest = std::max(highest, body->graphicsNumber);
        }
    }
    return highest;
}

int LqProblemDefData::markerCount() const {
    return realMarkers.count() + globalDirectionMarkers.count() + fixMarkers.count() + doubleMarkers.count() +
           2 * artificialMarkers.count();
}

bool LqProblemDefData::hasLinearCombinations() const {
    return indexOf(bodies, [](const LqPDDBodyMap& body) {
               return std::any_of(body.mappings.begin(), body.mappings.end(),
                                  [](const LqBasicVarMapping<float>& mapping) { return mapping.id < 0; });
           }) >= 0;
}

void LqProblemDefData::realMarkersOnBody(const LmStr& bodyName, LmDoubleLinkedList& markers) const {
    for (LqPDDRealMarker* const marker : realMarkers) {
        if (marker != nullptr && marker->bodyName == bodyName) {
            markers.append(marker);
        }
    }
}

void LqProblemDefData::artificialIdsOnBody(const LmStr& bodyName, LmDArray<int>& ids) const {
    std::vector<int> found;
    for (const LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair == nullptr) {
            continue;
        }
        if (pair->bodyName == bodyName) {
            found.push_back(pair->id);
        } else if (pair->otherBodyName == bodyName) {
            found.push_back(pair->otherId);
        }
    }
    const int oldCount = ids.count();
    ids.setLength(std::int64_t{oldCount} + static_cast<std::int64_t>(found.size()));
    std::copy(found.begin(), found.end(), ids.begin() + oldCount);
}

LmDArray<LmStr> LqProblemDefData::duplicateBodyNames() const {
    std::unordered_set<std::string_view> laterNames;
    laterNames.reserve(static_cast<std::size_t>(bodies.count()));
    std::vector<const LqPDDBodyMap*> found;
    for (int i = bodies.count() - 1; i >= 0; --i) {
        const LqPDDBodyMap* const body = bodies[i];
        if (body != nullptr && !laterNames.insert(body->name.view()).second) {
            found.push_back(body);
        }
    }
    LmDArray<LmStr> names(static_cast<int>(found.size()));
    for (int i = 0; i < names.count(); ++i) {
        names[i] = found[found.size() - 1 - static_cast<std::size_t>(i)]->name;
    }
    return names;
}

namespace {

/// Which of the ids from 1 to the highest one the bodies use. Other ids are passed over.
class UsedSysVars {
public:
    explicit UsedSysVars(std::int32_t highestId)
        : used(highestId < 0 ? 0 : static_cast<std::size_t>(highestId) + 1) {}

    void mark(std::int32_t id) {
        if (id > 0 && static_cast<std::size_t>(id) < used.size() && !used[static_cast<std::size_t>(id)]) {
            used[static_cast<std::size_t>(id)] = true;
            ++usedCount;
        }
    }

    void markBody(const LqPDDBodyMap& body) {
        if ((body.type & bodyTypeOne) != 0) {
            mark(body.typeOneVar);
        }
        if ((body.type & bodyTypeTwo) != 0) {
            mark(body.typeTwoVar);
        }
        for (const LqBasicVarMapping<float>& mapping : body.mappings) {
            if (mapping.id >= 0) {
                mark(mapping.id);
                continue;
            }
            for (const LqLinearTerm<float>* term : mapping.termList()) {
                mark(term->sysVar);
            }
        }
    }

    std::int64_t unusedCount() const {
        return used.empty() ? 0 : static_cast<std::int64_t>(used.size()) - 1 - usedCount;
    }

    /// The unused ids, ascending.
    LmDArray<int> unused() const {
        LmDArray<int> ids;
        ids.setLength(unusedCount());
        int* next = ids.begin();
        for (std::size_t id = 1; id < used.size(); ++id) {
            if (!used[id]) {
                *next++ = static_cast<int>(id);
            }
        }
        return ids;
    }

private:
    std::vector<bool> used;
    std::int64_t usedCount = 0;
};

UsedSysVars usedSysVars(const LqProblemDefData& data) {
    UsedSysVars used(data.highestSysVarId());
    for (const LqPDDBodyMap* body : data.bodies) {
        if (body != nullptr) {
            used.markBody(*body);
        }
    }
    return used;
}

} // namespace

LmDArray<int> LqProblemDefData::unusedSysVars() const {
    return usedSysVars(*this).unused();
}

bool LqProblemDefData::hasUnusedSysVars() const {
    return usedSysVars(*this).unusedCount() > 0;
}

bool LqProblemDefData::anyBodyUsesSysVar(std::int32_t id) const {
    return indexOf(bodies, [id](const LqPDDBodyMap& body) { return bodyUsesSysVar(body, id); }) >= 0;
}

} // namespace quillon
