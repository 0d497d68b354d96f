// Making one model of several.

#include "quillon/model/ModelMerge.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/model/DefinedBodyIndex.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/model/ModelFormat.h"
#include "quillon/problem/RecordArrays.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace quillon {

namespace {

using modelFormat::MarkerSection;
using modelFormat::markerSections;

/// The models of a merge in their order; the first is the one that the others stand behind.
using Models = std::vector<LqBodyDefData*>;

void appendToNames(LqBodyDefData& model, const LmStr& suffix) {
    if (suffix.length() == 0) {
        return;
    }
    for (LqBDBody* body : model.storedBodies()) {
        body->name += suffix;
    }
}

// --- Marker ids ----------------------------------------------------------------------------------

void shiftIds(const LmDArray<LqBDMarker*>& markers, std::int64_t offset) {
    for (LqBDMarker* marker : markers) {
        shiftId(marker->id, static_cast<std::int32_t>(offset));
    }
}

/// Raises the ids of all models to one numbering.
void joinNumberings(const Models& models) {
    // Walked kind by kind: the markers of the kinds in front, in all models and in each of them.
    std::int64_t inFront = 0;
    std::vector<std::int64_t> ownInFront(models.size(), 0);
    for (const MarkerSection& section : markerSections) {
        std::int64_t ofKind = 0;
        for (std::size_t i = 0; i < models.size(); ++i) {
            const LmDArray<LqBDMarker*>& markers = models[i]->*section.markers;
            shiftIds(markers, inFront - ownInFront[i] + ofKind);
            ofKind += markers.count();
            ownInFront[i] += markers.count();
        }
        inFront += ofKind;
    }
}

// --- Joining -------------------------------------------------------------------------------------

/// Moves one array of the other models behind the first one's, which grows once.
template <class Record>
void moveRecords(const Models& models, LmDArray<Record*> LqBodyDefData::*member) {
    LmDArray<Record*>& records = models.front()->*member;
    int filled = records.count();
    std::int64_t count = 0;
    for (const LqBodyDefData* model : models) {
        count += (model->*member).count();
    }
    records.setLength(count);
    for (LqBodyDefData* const model : models) {
        if (model == models.front()) {
            continue;
        }
        LmDArray<Record*>& moved = model->*member;
        std::copy(moved.begin(), moved.end(), records.begin() + filled);
        filled += moved.count();
        moved.setLength(0);
    }
}

/// The reading of a model that failed leaves null slots behind its bodies.
void dropNullSlots(LqBodyDefData& model) {
    model.bodies.setLength(static_cast<std::int64_t>(model.storedBodies().size()));
}

/// Moves the records of all models, whose names are ready, into the first.
void joinModels(const Models& models) {
    joinNumberings(models);
    for (LqBodyDefData* const model : models) {
        dropNullSlots(*model);
    }
    moveRecords(models, &LqBodyDefData::bodies);
    for (const MarkerSection& section : markerSections) {
        moveRecords(models, section.markers);
    }
    models.front()->setGlobalDirectionMarkers({});
    models.front()->clearIncludes();
}

// --- Includes ------------------------------------------------------------------------------------

using LoadedModels = std::vector<std::unique_ptr<LqBodyDefData>>;

/// Reads the included files with their own includes merged. False when an error stands.
bool loadModels(const LmDoubleLinkedList& includes, const DefinedBodyIndex& definedBodies,
                LoadedModels& loaded) {
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(includes)) {
        loaded.push_back(std::make_unique<LqBodyDefData>());
        if (refuseOwnInclude(include->fileName) ||
            !loaded.back()->readModelFileWithSuffix(include->fileName, definedBodies, include->bodyNameSuffix,
                                                    true)) {
            pushError("Unable to include sub-body def data.");
            return false;
        }
    }
    return true;
}

} // namespace

void mergeModels(LqBodyDefData& result, const LqBodyDefData& first, const LqBodyDefData& second,
                 const LmStr& firstSuffix, const LmStr& secondSuffix) {
    LqBodyDefData merged(first);
    LqBodyDefData added(second);
    appendToNames(merged, firstSuffix);
    appendToNames(added, secondSuffix);
    result.clear();
    joinModels({&result, &merged, &added});
}

bool LqBodyDefData::mergeModelIncludes(const LqProblemDefData& definition) {
    return includes.count() == 0 || mergeModelIncludes(DefinedBodyIndex(definition));
}

bool LqBodyDefData::mergeModelIncludes(const DefinedBodyIndex& definedBodies) {
    LoadedModels loaded;
    if (!loadModels(includes, definedBodies, loaded)) {
        return false;
    }
    if (loaded.empty()) {
        return true;
    }
    // Nothing fails from here on. The records move into this model once, instead of being copied for each
    // include, so that a crowd of any number of files takes linear time.
    Models models = {this};
    auto next = loaded.begin();
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(includes)) {
        appendToNames(**next, include->bodyNameSuffix);
        models.push_back(next->get());
        ++next;
    }
    joinModels(models);
    // A merged model starts like a new one in all but its records and its definition.
    const LqBodyDefData fresh;
    cameraCount = fresh.cameraCount;
    strictMatch = fresh.strictMatch;
    return true;
}

} // namespace quillon
