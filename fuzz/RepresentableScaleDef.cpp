#include "fuzz/Representable.h"

#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

namespace quillon::fuzz {

namespace {

using scaleDef::ScaleMapping;

/// Whether a name stands as a bare word wherever the file has one, and is no number.
bool isBareName(std::string_view name) {
    const auto isLetter = [](char c) { return c == '_' || ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); };
    return !name.empty() && isLetter(name.front()) && std::all_of(name.begin(), name.end(), [&](char c) {
        return isLetter(c) || ('0' <= c && c <= '9');
    });
}

bool isQuotable(std::string_view text) {
    return text.find_first_of("\"\r\n") == std::string_view::npos;
}

bool isValue(const scaleDef::ScaleFloat& value) {
    return std::isfinite(value.value) && std::isfinite(value.offset);
}

template <class Array>
bool allFinite(const Array& reals) {
    return std::all_of(reals.begin(), reals.end(), [](float real) { return std::isfinite(real); });
}

template <class Record, class Check>
bool all(const LmArray<Record>& records, Check check) {
    return std::all_of(records.begin(), records.end(), check);
}

class ScaleDefCheck {
public:
    ScaleDefCheck(const LqScaleDefData& definition, const LqProblemDefData& problemDefinition)
        : data(definition), problemDef(problemDefinition) {
        for (const LqPDDSysVar* sysVar : problemDef.sysVars) {
            sysVars.insert(sysVar->id);
        }
    }

    bool holds() const {
        return namesItsVariables() && data.limitOverrides.count() > 0 && hasWeights() && hasScaling() &&
               hasConstraints(data.globalConstraints, data.positionConstraints) &&
               hasOverrides(data.limitOverrides, data.sysVarGuideOverrides) && hasTemps() && hasPoses();
    }

private:
    /// Whether each variable has a name of its own.
    bool namesItsVariables() const {
        std::set<std::string> names;
        return static_cast<int>(sysVars.size()) == problemDef.sysVars.count() &&
               all(problemDef.sysVars, [&](const LqPDDSysVar* sysVar) {
                   const std::string name(sysVar->description.view());
                   return !name.empty() && isQuotable(name) && names.insert(name).second;
               });
    }

    bool hasWeights() const {
        const int realCount = data.realCount;
        return std::isfinite(data.defaultRealWeight) && realCount >= 0 &&
               all(data.realWeightOverrides,
                   [&](const scaleDef::RealWeightOverride_t& record) {
                       return record.markerId <= realCount && std::isfinite(record.weight);
                   }) &&
               all(data.artificialWeightOverrides, [&](const scaleDef::ArtificialWeightOverride_t& record) {
                   return std::min(record.firstMarkerId, record.secondMarkerId) > realCount &&
                          std::isfinite(record.weight);
               });
    }

    bool hasScaling() const {
        return all(data.scaleVars,
                   [](const scaleDef::ScaleVar& scaleVar) {
                       return isBareName(scaleVar.name.view()) && isQuotable(scaleVar.description.view()) &&
                              isValue(scaleVar.lower) && isValue(scaleVar.upper);
                   }) &&
               all(data.bodyParams, [&](const scaleDef::BodyParams_t& body) {
                   return isBareName(body.bodyName.view()) && allFinite(body.firstAxis) &&
                          allFinite(body.secondAxis) && hasMappings(body.scale);
               });
    }

    template <class Mappings>
    bool hasMappings(const Mappings& mappings) const {
        return std::all_of(mappings.begin(), mappings.end(),
                           [&](const ScaleMapping& mapping) { return isMapping(mapping); });
    }

    bool isMapping(const ScaleMapping& mapping) const {
        if (mapping.id >= 0) {
            return mapping.id <= data.scaleVars.count();
        }
        bool good = isValue(mapping.constant);
        for (const LqLinearTerm<scaleDef::ScaleFloat>* term : mapping.termList()) {
            good = good && isValue(term->coefficient) && 0 < term->sysVar &&
                   term->sysVar <= data.scaleVars.count();
        }
        return good;
    }

    bool hasConstraints(const LmArray<scaleDef::GlobalConst_t>& global,
                        const LmArray<scaleDef::PositionConst_t>& positions) const {
        return all(global,
                   [](const scaleDef::GlobalConst_t& record) {
                       return isBareName(record.bodyName.view()) && allFinite(record.local) &&
                              allFinite(record.global);
                   }) &&
               all(positions, [&](const scaleDef::PositionConst_t& record) {
                   return isBareName(record.body.view()) && isBareName(record.parent.view()) &&
                          std::isfinite(record.weight) && allFinite(record.localPosition) &&
                          allFinite(record.baseTranslation) && allFinite(record.baseRotation) &&
                          hasMappings(record.mapping);
               });
    }

    bool hasOverrides(const LmArray<scaleDef::LimitOverride_t>& limits,
                      const LmArray<scaleDef::SysVarGuideOverride>& guides) const {
        return all(limits,
                   [&](const scaleDef::LimitOverride_t& record) {
                       return sysVars.contains(record.sysVarId) && isValue(record.lower) &&
                              isValue(record.upper);
                   }) &&
               all(guides, [&](const scaleDef::SysVarGuideOverride& record) {
                   return sysVars.contains(record.sysVarId) && std::isfinite(record.value) &&
                          std::isfinite(record.weight);
               });
    }

    bool hasTemps() const {
        return all(data.temps, [](const scaleDef::TempData_t& temp) {
            return isBareName(temp.attachedBody.view()) && isBareName(temp.relativeBody.view()) &&
                   std::isfinite(temp.weight) &&
                   std::all_of(temp.position.begin(), temp.position.end(), isValue);
        });
    }

    bool hasPoses() const {
        return all(data.poses, [&](const scaleDef::Pose_t* pose) {
            return isBareName(pose->name.view()) &&
                   hasConstraints(pose->globalConstraints, pose->positionConstraints) &&
                   hasOverrides(pose->limitOverrides, pose->sysVarGuideOverrides);
        });
    }

    const LqScaleDefData& data;
    const LqProblemDefData& problemDef;
    std::set<int> sysVars;
};

/// Whether two words are equal, or reals that are nearly so.
bool isNearly(const std::string& one, const std::string& other) {
    double a = 0;
    double b = 0;
    const auto aEnd = std::from_chars(one.data(), one.data() + one.size(), a);
    const auto bEnd = std::from_chars(other.data(), other.data() + other.size(), b);
    if (aEnd.ptr != one.data() + one.size() || bEnd.ptr != other.data() + other.size()) {
        return one == other;
    }
    return std::fabs(a - b) <= 1e-4 * std::max(std::fabs(a), std::fabs(b)) + 1e-5;
}

/// A line of words with the brackets of references apart. The angles of a rotation are left out: near a
/// gimbal limit they jump.
std::vector<std::string> wordsOf(const std::string& line) {
    if (line.find("BASE_ROTATION") != std::string::npos) {
        return {};
    }
    std::string apart = line;
    std::replace_if(
        apart.begin(), apart.end(), [](char c) { return c == '[' || c == ']'; }, ' ');
    std::istringstream text(apart);
    return {std::istream_iterator<std::string>(text), std::istream_iterator<std::string>()};
}

} // namespace

bool isRepresentable(const LqScaleDefData& definition, const LqProblemDefData& problemDef) {
    return ScaleDefCheck(definition, problemDef).holds();
}

bool isNearlySameText(const std::string& one, const std::string& other) {
    std::istringstream lines(one);
    std::istringstream otherLines(other);
    std::string line;
    std::string otherLine;
    while (std::getline(lines, line)) {
        if (!std::getline(otherLines, otherLine)) {
            return false;
        }
        const std::vector<std::string> words = wordsOf(line);
        const std::vector<std::string> otherWords = wordsOf(otherLine);
        if (!std::equal(words.begin(), words.end(), otherWords.begin(), otherWords.end(), isNearly)) {
            return false;
        }
    }
    return !std::getline(otherLines, otherLine);
}

} // namespace quillon::fuzz
