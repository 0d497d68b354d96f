// Adding, renaming and removing the parts of a problem definition.

#include "quillon/core/LmListView.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/problem/RecordArrays.h"

#include <iterator>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillon {

// --- Bodies --------------------------------------------------------------------------------------

LqPDDBodyMap& LqProblemDefData::addBody(const LmStr& name, const LmStr& parentName,
                                        std::int32_t graphicsNumber) {
    constexpr int usualOrder[transformCount] = {1, 2, 3, 6, 5, 4};
    dropRepeatedSlots();
    auto* const body = new LqPDDBodyMap(name, parentName);
    body->graphicsNumber = graphicsNumber;
    std::copy(std::begin(usualOrder), std::end(usualOrder), body->transformOrder.begin());
    bodies.append(body);
    return *body;
}

void LqProblemDefData::renameBody(const LmStr& oldName, const LmStr& newName) {
    LqPDDBodyMap* const renamed = findBody(oldName);
    if (renamed == nullptr) {
        return;
    }
    // The names may be fields of this definition's own records.
    const LmStr from = oldName;
    const LmStr to = newName;
    renamed->name = to;
    for (LqPDDBodyMap* body : bodies) {
        if (body != nullptr && body->parentName == from) {
            body->parentName = to;
        }
    }
    renameBodyInMarkers(from, to);
}

void LqProblemDefData::renameBodyInMarkers(const LmStr& oldName, const LmStr& newName) {
    const LmStr from = oldName;
    const LmStr to = newName;
    const auto rename = [&from, &to](LmStr& name) {
        if (name == from) {
            name = to;
        }
    };
    for (LqPDDRealMarker* marker : realMarkers) {
        if (marker != nullptr) {
            rename(marker->bodyName);
        }
    }
    for (LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair != nullptr) {
            rename(pair->bodyName);
            rename(pair->otherBodyName);
        }
    }
}

namespace {

using RecordSet = std::unordered_set<const void*>;

/// The body and all bodies below it. A body that is its own ancestor is found once.
std::vector<const LqPDDBodyMap*> bodyWithDescendants(const LmDArray<LqPDDBodyMap*>& bodies,
                                                     const LqPDDBodyMap& root) {
    std::unordered_multimap<std::string_view, const LqPDDBodyMap*> childrenOf;
    for (const LqPDDBodyMap* body : bodies) {
        if (body != nullptr) {
            childrenOf.emplace(body->parentName.view(), body);
        }
    }
    std::vector<const LqPDDBodyMap*> found{&root};
    RecordSet known{&root};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto children = childrenOf.equal_range(found[i]->name.view());
        for (auto child = children.first; child != children.second; ++child) {
            if (known.insert(child->second).second) {
                found.push_back(child->second);
            }
        }
    }
    return found;
}

/// Frees the records for which the condition holds, once each, and leaves null in all their slots.
template <class Record, class Condition>
void freeWhere(LmDArray<Record*>& records, const Condition& condition) {
    RecordSet freed;
    for (Record*& record : records) {
        if (record == nullptr) {
            continue;
        }
        if (freed.contains(record)) {
            record = nullptr;
        } else if (condition(*record)) {
            freed.insert(record);
            delete record;
            record = nullptr;
        }
    }
}

} // namespace

void LqProblemDefData::removeBody(const LmStr& name) {
    if (const LqPDDBodyMap* const root = findBody(name)) {
        const std::vector<const LqPDDBodyMap*> removed = bodyWithDescendants(bodies, *root);
        const RecordSet removedBodies(removed.begin(), removed.end());
        std::unordered_set<std::string_view> removedNames;
        for (const LqPDDBodyMap* body : removed) {
            removedNames.insert(body->name.view());
        }
        const auto isOnRemovedBody = [&removedNames](const LqPDDFixMarker& marker) {
            return removedNames.contains(marker.bodyName.view());
        };
        freeWhere(realMarkers, isOnRemovedBody);
        freeWhere(fixMarkers, isOnRemovedBody);
        freeWhere(doubleMarkers, isOnRemovedBody);
        freeWhere(artificialMarkers, [&](const LqPDDArtificialMarker& pair) {
            return isOnRemovedBody(pair) || removedNames.contains(pair.otherBodyName.view());
        });
        // The bodies go last: the names that the markers are compared with are theirs.
        freeWhere(bodies, [&](const LqPDDBodyMap& body) { return removedBodies.contains(&body); });
    }
    const auto closeGapsIn = [this](auto& records) {
        if (closeGaps(records) != records.count()) {
            slotsMayRepeat = true;
        }
    };
    closeGapsIn(bodies);
    closeGapsIn(realMarkers);
    closeGapsIn(fixMarkers);
    closeGapsIn(doubleMarkers);
    closeGapsIn(artificialMarkers);
}

void LqProblemDefData::removeBodies(const LmArray<LmStr>& names) {
    dropRepeatedSlots();
    // A name may be that of a body which is freed before the last comparison.
    const LmArray<LmStr> keptNames(names);
    std::unordered_set<std::string_view> removed;
    for (const LmStr& name : keptNames) {
        removed.insert(name.view());
    }
    removeRecordsIf(bodies,
                    [&removed](const LqPDDBodyMap& body) { return removed.contains(body.name.view()); });
}

void LqProblemDefData::setBodies(const LmDArray<LqPDDBodyMap*>& newBodies) {
    dropRepeatedSlots();
    replaceRecords(bodies, newBodies);
}

// --- Markers -------------------------------------------------------------------------------------

void LqProblemDefData::addRealMarker(const LqPDDRealMarker& marker) {
    dropRepeatedSlots();
    realMarkers.append(new LqPDDRealMarker(marker));
}

void LqProblemDefData::insertRealMarker(const LqPDDRealMarker& marker) {
    dropRepeatedSlots();
    int place = 0;
    while (place < realMarkers.count() && realMarkers[place]->id < marker.id) {
        ++place;
    }
    realMarkers.insert(place, 1, new LqPDDRealMarker(marker));
    for (int i = place + 1; i < realMarkers.count(); ++i) {
        shiftId(realMarkers[i]->id, 1);
    }
    for (LqPDDFixMarker* fixMarker : fixMarkers) {
        shiftId(fixMarker->id, 1);
    }
    for (LqPDDDoubleMarker* doubleMarker : doubleMarkers) {
        shiftId(doubleMarker->id, 1);
    }
    shiftArtificialIds(1);
}

void LqProblemDefData::removeRealMarker(std::int32_t id) {
    dropRepeatedSlots();
    const LqPDDRealMarker* const removed = findRealMarker(id);
    removeRecordsIf(realMarkers, [removed](const LqPDDRealMarker& marker) { return &marker == removed; });
}

void LqProblemDefData::removeLastRealMarker() {
    dropRepeatedSlots();
    if (realMarkers.count() == 0) {
        return;
    }
    const int last = realMarkers.count() - 1;
    delete realMarkers[last];
    realMarkers.setLength(last);
}

void LqProblemDefData::removeMarkers(const LmArray<int>& ids) {
    dropRepeatedSlots();
    const std::unordered_set<int> removed(ids.begin(), ids.end());
    const auto isRemoved = [&removed](const auto& marker) { return removed.contains(marker.id); };
    removeRecordsIf(realMarkers, isRemoved);
    removeRecordsIf(fixMarkers, isRemoved);
    removeRecordsIf(doubleMarkers, isRemoved);
    removeRecordsIf(globalDirectionMarkers, isRemoved);
    removeRecordsIf(artificialMarkers, isRemoved);
}

void LqProblemDefData::addArtificialMarker(const LqPDDArtificialMarker& marker) {
    dropRepeatedSlots();
    artificialMarkers.append(new LqPDDArtificialMarker(marker));
}

void LqProblemDefData::addGlobalDirectionMarker(const LqPDDGlobalDirectionMarker& marker) {
    globalDirectionMarkers.append(new LqPDDGlobalDirectionMarker(marker));
}

void LqProblemDefData::setFixMarkers(const LmDArray<LqPDDFixMarker*>& markers) {
    dropRepeatedSlots();
    replaceRecords(fixMarkers, markers);
}

void LqProblemDefData::setRealMarkers(const LmDArray<LqPDDRealMarker*>& markers) {
    dropRepeatedSlots();
    replaceRecords(realMarkers, markers);
}

void LqProblemDefData::setGlobalDirectionMarkers(const LmDArray<LqPDDGlobalDirectionMarker*>& markers) {
    replaceRecords(globalDirectionMarkers, markers);
}

void LqProblemDefData::setDoubleMarkers(const LmDArray<LqPDDDoubleMarker*>& markers) {
    dropRepeatedSlots();
    replaceRecords(doubleMarkers, markers);
}

void LqProblemDefData::setArtificialMarkers(const LmDArray<LqPDDArtificialMarker*>& markers) {
    dropRepeatedSlots();
    replaceRecords(artificialMarkers, markers);
}

// --- System variables ----------------------------------------------------------------------------

void LqProblemDefData::setSysVars(const LmDArray<LqPDDSysVar*>& newSysVars) {
    replaceRecords(sysVars, newSysVars);
}

void LqProblemDefData::appendSysVars(const LmDArray<LqPDDSysVar*>& moreSysVars) {
    LmDArray<LqPDDSysVar*> copies;
    copyRecords(copies, moreSysVars);
    const int oldCount = sysVars.count();
    sysVars.setLength(std::int64_t{oldCount} + copies.count());
    std::copy(copies.begin(), copies.end(), sysVars.begin() + oldCount);
}

namespace {

void removeSysVarsFrom(LqBasicVarMapping<float>& mapping, const std::set<std::int32_t>& ids) {
    if (mapping.id < 0) {
        mapping.removeTerms(ids);
    } else if (mapping.id > 0 && ids.contains(mapping.id)) {
        mapping.id = 0;
    }
}

} // namespace

void LqProblemDefData::removeSysVars(const LmArray<int>& ids) {
    dropRepeatedSlots();
    const std::set<std::int32_t> removed(ids.begin(), ids.end());
    removeRecordsIf(sysVars, [&removed](const LqPDDSysVar& sysVar) { return removed.contains(sysVar.id); });
    for (LqPDDBodyMap* body : bodies) {
        if (body == nullptr) {
            continue;
        }
        for (LqBasicVarMapping<float>& mapping : body->mappings) {
            removeSysVarsFrom(mapping, removed);
        }
    }
}

} // namespace quillon
