// The validity test of a problem definition.

#include "quillon/core/LmStatus.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

namespace {

/// The records of an array in order, without its null slots.
template <class Record>
std::vector<const Record*> recordsIn(const LmDArray<Record*>& slots) {
    std::vector<const Record*> records;
    records.reserve(static_cast<std::size_t>(slots.count()));
    std::copy_if(slots.begin(), slots.end(), std::back_inserter(records),
                 [](const Record* record) { return record != nullptr; });
    return records;
}

/// The first of sorted names that stands there twice.
std::optional<std::string_view> firstRepeated(const std::vector<std::string_view>& sortedNames) {
    const auto repeated = std::adjacent_find(sortedNames.begin(), sortedNames.end());
    return repeated == sortedNames.end() ? std::nullopt : std::optional(*repeated);
}

/// The names that references to bodies may hold.
class BodyNames {
public:
    explicit BodyNames(const LqProblemDefData& definition) {
        for (const LqPDDBodyMap* body : recordsIn(definition.bodies)) {
            sortedBodyNames.push_back(body->name.view());
        }
        std::sort(sortedBodyNames.begin(), sortedBodyNames.end());
    }

    bool hasBody(const LmStr& name) const {
        return std::binary_search(sortedBodyNames.begin(), sortedBodyNames.end(), name.view());
    }

    bool hasBodyOrGlobalFrame(const LmStr& name) const {
        return name == referenceSystemName || hasBody(name);
    }

    /// The first name in the order of bytes that several bodies have.
    std::optional<std::string_view> firstRepeatedName() const { return firstRepeated(sortedBodyNames); }

private:
    std::vector<std::string_view> sortedBodyNames;
};

// --- Messages on markers with a body that does not exist -----------------------------------------

/// The texts around the ids and the names of such a message. Without the last one the names are left out.
struct MarkerMessageForm {
    const char* beforeIds;
    const char* behindIds;
    const char* behindNames;
};

struct MarkerMessage {
    MarkerMessageForm one;
    MarkerMessageForm many;
    const char* idSeparator;
};

/// Deliberately different from kind to kind: programs look for these very texts.
namespace messages {
constexpr MarkerMessage fix = {
    {"Fix marker (", ") references a body (", ") "}, {"Fix markers (", ") reference bodies (", ") "}, ","};
constexpr MarkerMessage real = {
    {"Real marker ", " references a body (", ") "}, {"Real markers ", " reference bodies ", nullptr}, ", "};
constexpr MarkerMessage twofold = {{"Double marker ", " references a body ", nullptr},
                                   {"Double markers ", " reference bodies ", nullptr},
                                   ", "};
constexpr MarkerMessage artificial = {{"Artificial marker (", ") references a body ", " "},
                                      {"Artificial markers (", ") reference bodies ", " "},
                                      ","};
constexpr const char* nameSeparator = ",";
constexpr const char* ending = "that does not exist in the problem definition."; // also behind a plural
} // namespace messages

void appendName(std::string& text, const LqPDDFixMarker& marker) {
    text += marker.bodyName.view();
}

/// Both names, even if one of them is good.
void appendName(std::string& text, const LqPDDArtificialMarker& pair) {
    text += '(';
    text += pair.bodyName.view();
    text += ',';
    text += pair.otherBodyName.view();
    text += ')';
}

template <class Marker>
LmStr messageOn(const std::vector<const Marker*>& markers, const MarkerMessage& message) {
    const MarkerMessageForm& form = markers.size() == 1 ? message.one : message.many;
    std::string text = form.beforeIds;
    for (const Marker* marker : markers) {
        text += marker == markers.front() ? "" : message.idSeparator;
        text += std::to_string(marker->id);
    }
    text += form.behindIds;
    if (form.behindNames != nullptr) {
        for (const Marker* marker : markers) {
            text += marker == markers.front() ? "" : messages::nameSeparator;
            appendName(text, *marker);
        }
        text += form.behindNames;
    }
    text += messages::ending;
    return LmStr(std::string_view(text));
}

// --- The steps of the check ----------------------------------------------------------------------

class ProblemDefCheck {
public:
    ProblemDefCheck(const LqProblemDefData& checked, LmStatus& givenStatus)
        : definition(checked), status(givenStatus), bodyNames(checked) {}

    void run() const;

private:
    void checkParents() const;
    void checkSysVarStart() const;
    void checkSysVarSequence() const;
    void checkSysVarNames() const;
    void checkBodyNames() const;
    void checkMarkerIdStart() const;
    void checkMarkerIdSequence() const;
    void checkFixMarkerBodies() const;
    void checkRealMarkerBodies() const;
    void checkGlobalDirectionMarkerBodies() const;
    void checkDoubleMarkerBodies() const;
    void checkArtificialMarkerBodies() const;

    /// Reports the markers that `isRefused` picks in one error.
    template <class Marker, class Predicate>
    void refuse(const LmDArray<Marker*>& markers, const MarkerMessage& message,
                const Predicate& isRefused) const;

    const LqProblemDefData& definition;
    LmStatus& status;
    const BodyNames bodyNames;
};

void ProblemDefCheck::run() const {
    using Step = void (ProblemDefCheck::*)() const;
    constexpr Step steps[] = {
        &ProblemDefCheck::checkParents,
        &ProblemDefCheck::checkSysVarStart,
        &ProblemDefCheck::checkSysVarSequence,
        &ProblemDefCheck::checkSysVarNames,
        &ProblemDefCheck::checkBodyNames,
        &ProblemDefCheck::checkMarkerIdStart,
        &ProblemDefCheck::checkMarkerIdSequence,
        &ProblemDefCheck::checkFixMarkerBodies,
        &ProblemDefCheck::checkRealMarkerBodies,
        &ProblemDefCheck::checkGlobalDirectionMarkerBodies,
        &ProblemDefCheck::checkDoubleMarkerBodies,
        &ProblemDefCheck::checkArtificialMarkerBodies,
    };
    for (const Step step : steps) {
        (this->*step)();
        // Deliberately asked only behind a step: an older error lets the first one report.
        if (status.errorStands()) {
            return;
        }
    }
}

void ProblemDefCheck::checkParents() const {
    for (const LqPDDBodyMap* body : definition.bodies) {
        if (body != nullptr && !bodyNames.hasBodyOrGlobalFrame(body->parentName)) {
            status.pushError("The parent (" + body->parentName + ") of body '" + body->name +
                             "' does not exist.");
            return;
        }
    }
}

void ProblemDefCheck::checkSysVarStart() const {
    const std::vector<const LqPDDSysVar*> sysVars = recordsIn(definition.sysVars);
    if (!sysVars.empty() && sysVars.front()->id != 1) {
        status.pushError("The system variables do not start at 1 in the problem definition.");
    }
}

void ProblemDefCheck::checkSysVarSequence() const {
    const std::vector<const LqPDDSysVar*> sysVars = recordsIn(definition.sysVars);
    const auto gap = std::adjacent_find(sysVars.begin(), sysVars.end(),
                                        [](const LqPDDSysVar* sysVar, const LqPDDSysVar* next) {
                                            return std::int64_t{sysVar->id} + 1 != next->id;
                                        });
    if (gap != sysVars.end()) {
        status.pushError("The system variables are not consecutively numbered in the problem definition.");
    }
}

void ProblemDefCheck::checkSysVarNames() const {
    std::vector<std::string_view> descriptions;
    for (const LqPDDSysVar* sysVar : recordsIn(definition.sysVars)) {
        descriptions.push_back(sysVar->description.view());
    }
    std::sort(descriptions.begin(), descriptions.end());
    if (firstRepeated(descriptions)) {
        status.pushError("The system variables do not have unique names in the problem definition.");
    }
}

void ProblemDefCheck::checkBodyNames() const {
    if (const std::optional<std::string_view> name = bodyNames.firstRepeatedName()) {
        status.pushError("Body " + LmStr(*name) + " occurs more than once in the problem definition.");
    }
}

void ProblemDefCheck::checkMarkerIdStart() const {
    if (!definition.hasValidMarkerIdStart()) {
        status.pushError("The marker ids do not start at 1 in the problem definition.");
    }
}

void ProblemDefCheck::checkMarkerIdSequence() const {
    if (!definition.hasConsecutiveMarkerIds()) {
        status.pushError("The markers do not have consecutive ids in the problem definition.");
    }
}

template <class Marker, class Predicate>
void ProblemDefCheck::refuse(const LmDArray<Marker*>& markers, const MarkerMessage& message,
                             const Predicate& isRefused) const {
    std::vector<const Marker*> refused;
    for (const Marker* marker : markers) {
        if (marker != nullptr && isRefused(*marker)) {
            refused.push_back(marker);
        }
    }
    if (!refused.empty()) {
        status.pushError(messageOn(refused, message));
    }
}

void ProblemDefCheck::checkFixMarkerBodies() const {
    refuse(definition.fixMarkers, messages::fix,
           [this](const LqPDDFixMarker& marker) { return !bodyNames.hasBody(marker.bodyName); });
}

void ProblemDefCheck::checkRealMarkerBodies() const {
    refuse(definition.realMarkers, messages::real, [this](const LqPDDRealMarker& marker) {
        return !bodyNames.hasBodyOrGlobalFrame(marker.bodyName);
    });
}

void ProblemDefCheck::checkGlobalDirectionMarkerBodies() const {
    for (const LqPDDGlobalDirectionMarker* marker : definition.globalDirectionMarkers) {
        if (marker != nullptr && !bodyNames.hasBody(marker->bodyName)) {
            status.pushError("Bad global direction marker body names.");
            return;
        }
    }
}

void ProblemDefCheck::checkDoubleMarkerBodies() const {
    refuse(definition.doubleMarkers, messages::twofold,
           [this](const LqPDDDoubleMarker& marker) { return !bodyNames.hasBody(marker.bodyName); });
}

void ProblemDefCheck::checkArtificialMarkerBodies() const {
    refuse(definition.artificialMarkers, messages::artificial, [this](const LqPDDArtificialMarker& pair) {
        return !bodyNames.hasBodyOrGlobalFrame(pair.bodyName) ||
               !bodyNames.hasBodyOrGlobalFrame(pair.otherBodyName);
    });
}

} // namespace

void LqProblemDefData::checkProblemDef(LmStatus& status) const {
    ProblemDefCheck(*this, status).run();
}

void LqProblemDefData::checkRealMarkerBodies(LmStatus& status) const {
    const BodyNames bodyNames(*this);
    for (const LqPDDRealMarker* marker : realMarkers) {
        if (marker == nullptr) {
            continue;
        }
        if (!bodyNames.hasBodyOrGlobalFrame(marker->bodyName)) {
            status.pushError(("Marker " + std::to_string(marker->id) + " is on body ").c_str() +
                             marker->bodyName + " which does not exist.");
            return;
        }
        if (marker->id < 1) {
            status.pushErrorf("Invalid marker ID: %d", marker->id);
            return;
        }
    }
}

// --- Marker ids ----------------------------------------------------------------------------------

namespace {

template <class Marker>
std::vector<std::int64_t> idsIn(const LmDArray<Marker*>& markers) {
    std::vector<std::int64_t> ids;
    for (const Marker* marker : recordsIn(markers)) {
        ids.push_back(marker->id);
    }
    return ids;
}

/// Both ids of all pairs in ascending order: those of one pair need not be neighbours.
std::vector<std::int64_t> sortedPairIdsIn(const LmDArray<LqPDDArtificialMarker*>& pairs) {
    std::vector<std::int64_t> ids = idsIn(pairs);
    for (const LqPDDArtificialMarker* pair : recordsIn(pairs)) {
        ids.push_back(pair->otherId);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// The last id, or `otherwise` when there is none.
std::int64_t lastOf(const std::vector<std::int64_t>& ids, std::int64_t otherwise) {
    return ids.empty() ? otherwise : ids.back();
}

bool goOnBehind(std::int64_t lastId, const std::vector<std::int64_t>& ids) {
    return std::all_of(ids.begin(), ids.end(), [&lastId](std::int64_t id) { return id == ++lastId; });
}

bool pairsStartAtOne(const LmDArray<LqPDDArtificialMarker*>& artificialMarkers) {
    const std::vector<const LqPDDArtificialMarker*> pairs = recordsIn(artificialMarkers);
    for (const LqPDDArtificialMarker* pair : pairs) {
        const std::int32_t lowerId = std::min(pair->id, pair->otherId);
        if (lowerId <= 1) {
            return lowerId == 1;
        }
    }
    return pairs.empty();
}

} // namespace

bool LqProblemDefData::hasValidMarkerIdStart() const {
    const std::vector<std::int64_t> idsByKind[] = {idsIn(realMarkers), idsIn(globalDirectionMarkers),
                                                   idsIn(fixMarkers), idsIn(doubleMarkers)};
    for (const std::vector<std::int64_t>& ids : idsByKind) {
        if (!ids.empty()) {
            return ids.front() == 1;
        }
    }
    return pairsStartAtOne(artificialMarkers);
}

bool LqProblemDefData::hasConsecutiveMarkerIds() const {
    const std::vector<std::int64_t> realIds = idsIn(realMarkers);
    const std::vector<std::int64_t> directionIds = idsIn(globalDirectionMarkers);
    const std::vector<std::int64_t> fixIds = idsIn(fixMarkers);
    const std::vector<std::int64_t> doubleIds = idsIn(doubleMarkers);
    const std::int64_t lastReal = lastOf(realIds, 0);
    const std::int64_t lastDirection = lastOf(directionIds, lastReal);
    // Deliberately past the global direction markers: fix markers that are numbered behind those fail.
    const std::int64_t lastFix = lastOf(fixIds, lastReal);
    const std::int64_t beforePairs = lastOf(doubleIds, lastOf(fixIds, lastDirection));
    return goOnBehind(0, realIds) && goOnBehind(lastReal, directionIds) && goOnBehind(lastReal, fixIds) &&
           goOnBehind(lastFix, doubleIds) && goOnBehind(beforePairs, sortedPairIdsIn(artificialMarkers));
}

} // namespace quillon
