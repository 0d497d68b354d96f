#include "fuzz/Representable.h"

#include "quillon/core/LmListView.h"
#include "quillon/limits/LqLimitsData.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/tool/LqProblemSpec.h"
#include "tests/support/RandomProblemDef.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

namespace quillon::fuzz {

namespace {

/// Whether a line of tagged text gives back this value: without references to variables, line ends, and what
/// opens a block or goes on behind the line.
bool isPlainValue(std::string_view text) {
    return text.find_first_of("\r\n$\x7f{") == std::string_view::npos && !text.ends_with('\\');
}

template <class Record, class Check>
bool all(const LmArray<Record*>& records, Check check) {
    return std::all_of(records.begin(), records.end(), [&](const Record* record) { return check(*record); });
}

template <class Record, class Check>
bool allInList(const LmDoubleLinkedList& list, Check check) {
    for (const Record* record : LmListView<const Record>(list)) {
        if (!check(*record)) {
            return false;
        }
    }
    return true;
}

// --- Problem specifications ----------------------------------------------------------------------

bool isUserValue(std::string_view key, std::string_view value) {
    return key.find_first_of("\r\n") == std::string_view::npos && !value.empty() &&
           value.find_first_of("\r\n") == std::string_view::npos && !value.ends_with('\\');
}

} // namespace

bool isRepresentable(const LqProblemSpec& spec) {
    return !spec.model.isNull() &&
           std::all_of(std::begin(specPaths), std::end(specPaths),
                       [&](const LqSpecPath& entry) {
                           const LmStr& path = spec.*entry.path;
                           return path.isNull() || isPlainValue(path.view());
                       }) &&
           std::all_of(spec.userValues.begin(), spec.userValues.end(), [](const auto& entry) {
               return isUserValue(entry.first.view(), entry.second.view());
           });
}

// --- Problem definitions -------------------------------------------------------------------------

namespace {

constexpr std::size_t nameColumns = 20;
constexpr std::size_t longestDescription = 75;
constexpr int widestType = 999; // a wider one touches the number in front of it

bool isFieldName(std::string_view name) {
    return name.find('\n') == std::string_view::npos &&
           (name.size() > nameColumns ? name.find('"') == std::string_view::npos : !name.starts_with('"'));
}

bool isMapping(const LqBasicVarMapping<float>& mapping) {
    return mapping.id >= 0 ||
           (std::isfinite(mapping.constant) &&
            allInList<LqLinearTerm<float>>(mapping.terms, [](const LqLinearTerm<float>& term) {
                return std::isfinite(term.coefficient);
            }));
}

bool isBody(const LqPDDBodyMap& body) {
    const bool typeHasItsLines = (body.type & 3) == 0 || body.type == bodyTypeOne;
    return isFieldName(body.name.view()) && isFieldName(body.parentName.view()) && typeHasItsLines &&
           body.type <= widestType && std::all_of(body.mappings.begin(), body.mappings.end(), isMapping);
}

bool isMarker(const LqPDDFixMarker& marker) {
    return std::isfinite(marker.weight) && isFieldName(marker.bodyName.view());
}

} // namespace

bool isRepresentable(const LqProblemDefData& definition) {
    return all(definition.sysVars,
               [](const LqPDDSysVar& sysVar) {
                   return static_cast<std::size_t>(sysVar.description.length()) <= longestDescription;
               }) &&
           all(definition.bodies, isBody) && all(definition.realMarkers, isMarker) &&
           all(definition.fixMarkers, isMarker) && all(definition.doubleMarkers, isMarker) &&
           all(definition.artificialMarkers,
               [](const LqPDDArtificialMarker& pair) {
                   return isMarker(pair) && isFieldName(pair.otherBodyName.view());
               }) &&
           allInList<LqPDDInclude>(definition.includes, [](const LqPDDInclude& include) {
               return isPlainValue(include.fileName.view()) && isPlainValue(include.bodyNameSuffix.view());
           });
}

// --- Models --------------------------------------------------------------------------------------

namespace {

constexpr int mostCameraLines = 10000; // longer files say nothing new

template <class Array>
bool allFinite(const Array& reals) {
    return std::all_of(reals.begin(), reals.end(), [](float real) { return std::isfinite(real); });
}

/// The types of a definition's bodies, as the writer and as the reader of a model find them.
class BodyTypes {
public:
    explicit BodyTypes(const LqProblemDefData& definition) {
        for (const LqPDDBodyMap* body : definition.bodies) {
            byName.try_emplace(std::string(body->name.view()), body->type & 3);
            byUpperCase.try_emplace(test::inUpperCase(body->name.view()), body->type & 3);
        }
    }

    bool isBody(const LqBDBody& body) const {
        const int type = byName.at(body.name.c_str());
        return type == byUpperCase.at(test::inUpperCase(body.name.view())) &&
               body.name.view().find('\r') == std::string_view::npos && allFinite(body.baseTransform) &&
               allFinite(body.vectorDirection) && std::isfinite(body.vectorLength) &&
               ((type & bodyTypeOne) == 0 || body.vectorLength != 0);
    }

private:
    std::map<std::string, int> byName;
    std::map<std::string, int> byUpperCase;
};

bool isPoint(const LqBDMarker& marker) {
    return allFinite(marker.position);
}

} // namespace

bool isRepresentable(const LqBodyDefData& model, const LqProblemDefData& definition) {
    const BodyTypes types(definition);
    const bool hasFewCameraLines =
        model.cameraCount <= 0 || model.realMarkers.count() <= mostCameraLines / model.cameraCount;
    return hasFewCameraLines && all(model.bodies, [&](const LqBDBody& body) { return types.isBody(body); }) &&
           all(model.realMarkers, isPoint) && all(model.fixMarkers, isPoint) &&
           all(model.doubleMarkers, isPoint) && all(model.artificialMarkers, isPoint) &&
           allInList<LqBDInclude>(model.includes, [](const LqBDInclude& include) {
               return isPlainValue(include.fileName.view()) && isPlainValue(include.bodyNameSuffix.view());
           });
}

// --- Limits --------------------------------------------------------------------------------------

namespace {

bool hasFiniteLimits(const LqVarLimits& record) {
    return std::isfinite(record.lowerValue) && std::isfinite(record.upperValue);
}

/// Whether two decimals keep a real apart from 0.
bool staysAsGuide(float real) {
    return std::isfinite(real) && (real == 0 || std::fabs(real) > 0.006F);
}

bool isRecord(const LqVarLimits& record) {
    const bool hasEffect = record.mode != LimitNone || record.guideValue != 0 || record.guideWeight != 0;
    return hasFiniteLimits(record) && std::isfinite(record.lowerWeight.value) &&
           std::isfinite(record.upperWeight.value) && staysAsGuide(record.guideValue) &&
           staysAsGuide(record.guideWeight) && hasEffect;
}

} // namespace

bool isRepresentable(const LqLimitsData& limits) {
    return allInList<LqVarLimits>(limits.vars, isRecord) &&
           allInList<LqLimitsInclude>(limits.includes, [](const LqLimitsInclude& include) {
               return isPlainValue(include.fileName.view());
           });
}

bool isRepresentableInOlderForm(const LqLimitsData& limits) {
    return allInList<LqVarLimits>(limits.vars, hasFiniteLimits);
}

} // namespace quillon::fuzz
