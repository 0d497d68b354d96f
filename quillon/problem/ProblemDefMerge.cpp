// Making one problem definition of several.

#include "quillon/problem/ProblemDefMerge.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/problem/RecordArrays.h"

#include <memory>
#include <vector>

namespace quillon {

namespace {

// --- Suffixes ------------------------------------------------------------------------------------

template <class Marker>
void appendToBodyNames(const LmDArray<Marker*>& markers, const LmStr& suffix) {
    for (Marker* const marker : markers) {
        if (marker != nullptr) {
            marker->bodyName += suffix;
        }
    }
}

void appendToOtherBodyNames(const LmDArray<LqPDDArtificialMarker*>& pairs, const LmStr& suffix) {
    for (LqPDDArtificialMarker* const pair : pairs) {
        if (pair != nullptr) {
            pair->otherBodyName += suffix;
        }
    }
}

void appendToSysVars(const LmDArray<LqPDDSysVar*>& sysVars, const LmStr& suffix) {
    for (LqPDDSysVar* const sysVar : sysVars) {
        if (sysVar != nullptr) {
            sysVar->description += suffix;
        }
    }
}

void appendToBodies(const LmDArray<LqPDDBodyMap*>& bodies, const LmStr& suffix) {
    for (LqPDDBodyMap* const body : bodies) {
        if (body == nullptr) {
            continue;
        }
        body->name += suffix;
        if (body->parentName != referenceSystemName) {
            body->parentName += suffix;
        }
    }
}

void appendToNames(LqProblemDefData& data, const LmStr& suffix) {
    if (suffix.length() == 0) {
        return;
    }
    appendToSysVars(data.sysVars, suffix);
    appendToBodies(data.bodies, suffix);
    // Deliberately also behind the name of the global frame, unlike a parent's: a marker of a sub-definition
    // that is tied to the frame is refused by the checks of the merged one.
    appendToBodyNames(data.realMarkers, suffix);
    appendToBodyNames(data.globalDirectionMarkers, suffix);
    appendToBodyNames(data.fixMarkers, suffix);
    appendToBodyNames(data.doubleMarkers, suffix);
    appendToBodyNames(data.artificialMarkers, suffix);
    appendToOtherBodyNames(data.artificialMarkers, suffix);
}

// --- Offsets -------------------------------------------------------------------------------------

/// Raises the id of a system variable, unless it is the 0 that stands for none.
void shiftReference(std::int32_t& sysVar, std::int32_t offset) {
    if (sysVar != 0) {
        shiftId(sysVar, offset);
    }
}

void shiftMapping(LqBasicVarMapping<float>& mapping, std::int32_t offset) {
    if (mapping.id > 0) {
        shiftId(mapping.id, offset);
    } else if (mapping.id < 0) {
        for (LqLinearTerm<float>* term : mapping.termList()) {
            shiftId(term->sysVar, offset);
        }
    }
}

void shiftNumbers(LqProblemDefData& data, std::int32_t bodyNumberOffset, std::int32_t sysVarOffset) {
    for (LqPDDSysVar* const sysVar : data.sysVars) {
        if (sysVar != nullptr) {
            shiftId(sysVar->id, sysVarOffset);
        }
    }
    for (LqPDDBodyMap* const body : data.bodies) {
        if (body == nullptr) {
            continue;
        }
        shiftId(body->graphicsNumber, bodyNumberOffset);
        for (LqBasicVarMapping<float>& mapping : body->mappings) {
            shiftMapping(mapping, sysVarOffset);
        }
        shiftReference(body->typeOneVar, sysVarOffset);
        shiftReference(body->typeTwoVar, sysVarOffset);
    }
}

// --- Joining -------------------------------------------------------------------------------------

/// What a merge has loaded, each to stand behind those before it.
using Parts = std::vector<std::unique_ptr<LqProblemDefData>>;

/// Moves one array of all parts behind the target's, which grows once.
template <class Record>
void moveRecords(LqProblemDefData& target, const Parts& parts, LmDArray<Record*> LqProblemDefData::*member) {
    LmDArray<Record*>& records = target.*member;
    std::int64_t count = records.count();
    for (const auto& part : parts) {
        count += ((*part).*member).count();
    }
    int filled = records.count();
    records.setLength(count);
    for (const auto& part : parts) {
        LmDArray<Record*>& moved = (*part).*member;
        std::copy(moved.begin(), moved.end(), records.begin() + filled);
        filled += moved.count();
        moved.setLength(0);
    }
}

void moveAllRecords(LqProblemDefData& target, const Parts& parts) {
    moveRecords(target, parts, &LqProblemDefData::sysVars);
    moveRecords(target, parts, &LqProblemDefData::bodies);
    moveRecords(target, parts, &LqProblemDefData::realMarkers);
    moveRecords(target, parts, &LqProblemDefData::globalDirectionMarkers);
    moveRecords(target, parts, &LqProblemDefData::fixMarkers);
    moveRecords(target, parts, &LqProblemDefData::doubleMarkers);
    moveRecords(target, parts, &LqProblemDefData::artificialMarkers);
}

template <class Marker>
void numberMarkers(const LmDArray<Marker*>& markers, std::int32_t& lastId) {
    for (Marker* const marker : markers) {
        if (marker != nullptr) {
            marker->id = ++lastId;
        }
    }
}

void numberAllMarkers(LqProblemDefData& data) {
    std::int32_t lastId = 0;
    numberMarkers(data.realMarkers, lastId);
    numberMarkers(data.globalDirectionMarkers, lastId);
    numberMarkers(data.fixMarkers, lastId);
    numberMarkers(data.doubleMarkers, lastId);
    for (LqPDDArtificialMarker* const pair : data.artificialMarkers) {
        if (pair != nullptr) {
            pair->id = ++lastId;
            pair->otherId = ++lastId;
        }
    }
}

/// Gets a part ready to stand behind definitions with so many system variables.
void adapt(LqProblemDefData& part, const LmStr& suffix, std::int32_t bodyNumberOffset,
           std::int32_t sysVarOffset, std::int32_t sysVarsBefore) {
    appendToNames(part, suffix);
    shiftNumbers(part, bodyNumberOffset, sysVarOffset < 0 ? sysVarsBefore : sysVarOffset);
}

// --- Copies --------------------------------------------------------------------------------------

/// Copies each record once, also one that several slots of an array hold behind a removal.
template <class Record>
void copyDistinct(LmDArray<Record*>& target, const LmDArray<Record*>& source) {
    LmDArray<Record*> distinct(source);
    dropRepeats(distinct);
    copyRecords(target, distinct);
}

std::unique_ptr<LqProblemDefData> copyOfRecords(const LqProblemDefData& source) {
    auto copy = std::make_unique<LqProblemDefData>();
    copyDistinct(copy->sysVars, source.sysVars);
    copyDistinct(copy->bodies, source.bodies);
    copyDistinct(copy->realMarkers, source.realMarkers);
    copyDistinct(copy->globalDirectionMarkers, source.globalDirectionMarkers);
    copyDistinct(copy->fixMarkers, source.fixMarkers);
    copyDistinct(copy->doubleMarkers, source.doubleMarkers);
    copyDistinct(copy->artificialMarkers, source.artificialMarkers);
    return copy;
}

// --- Includes ------------------------------------------------------------------------------------

/// Reads the included files with their own includes merged. False when an error stands.
bool loadParts(const LmDoubleLinkedList& includes, Parts& parts) {
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(includes)) {
        parts.push_back(std::make_unique<LqProblemDefData>());
        if (refuseOwnInclude(include->fileName) ||
            !parts.back()->readProblemDefFile(include->fileName, true)) {
            pushError("Unable to include sub-problem definition data.");
            return false;
        }
    }
    return true;
}

} // namespace

void mergeDefinitions(LqProblemDefData& result, const LqProblemDefData& first, const LqProblemDefData& second,
                      const LmStr& firstSuffix, const LmStr& secondSuffix, std::int32_t bodyNumberOffset,
                      std::int32_t sysVarOffset) {
    Parts parts;
    parts.push_back(copyOfRecords(first));
    parts.push_back(copyOfRecords(second));
    appendToNames(*parts[0], firstSuffix);
    adapt(*parts[1], secondSuffix, bodyNumberOffset, sysVarOffset, parts[0]->sysVars.count());
    result.clear();
    moveAllRecords(result, parts);
    numberAllMarkers(result);
}

bool LqProblemDefData::mergeIncludes() {
    if (includes.count() == 0) {
        return true;
    }
    Parts parts;
    if (!loadParts(includes, parts)) {
        return false;
    }
    // Nothing fails from here on. The records move into this definition once, instead of being copied for
    // each include, so that a crowd of any number of files takes linear time.
    dropRepeatedSlots();
    setGlobalDirectionMarkers({}); // in no file, and left out as by an assignment
    std::int32_t sysVarsBefore = sysVars.count();
    auto part = parts.begin();
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(includes)) {
        adapt(**part, include->bodyNameSuffix, include->bodyIdOffset, include->sysVarIdOffset, sysVarsBefore);
        sysVarsBefore += (*part)->sysVars.count();
        ++part;
    }
    moveAllRecords(*this, parts);
    numberAllMarkers(*this);
    clearIncludes();
    return true;
}

} // namespace quillon
