// The values that the records of all formats hold, as JSON.
#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/geometry/EulerAngles.h"
#include "quillon/problem/LqBasicVarMapping.h"
#include "quillon/scale/ScaleFloat.h"
#include "quillon/tool/ReportAttributes.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <type_traits>
#include <vector>

/// Keeps its keys in order, and reals as singles, which are written with the digits that give them back: as
/// doubles they would have nine more.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, std::int64_t,
                                  std::uint64_t, float>;

namespace quillon::scaleDef {

/// A number, or the measured constant that it follows from.
inline void to_json(Json& out, const ScaleFloat& number) {
    if (number.measuredId == 0) {
        out = number.value;
    } else if (number.value != 0) {
        out = {{"measured", number.measuredId}, {"factor", number.value}};
    } else {
        out = {{"measured", number.measuredId}, {"offset", number.offset}};
    }
}

} // namespace quillon::scaleDef

namespace quillon {

inline void to_json(Json& out, const LmStr& text) {
    out = std::string(text.view());
}

/// A constant and terms, whatever the form of the mapping.
template <class Number>
void to_json(Json& out, const LqBasicVarMapping<Number>& mapping) {
    constexpr const char* variable = std::is_same_v<Number, float> ? "sys_var" : "scaling_var";
    Json terms = Json::array();
    if (mapping.id > 0) {
        terms.push_back({{variable, mapping.id}, {"factor", 1.0F}});
    }
    for (const LqLinearTerm<Number>* term : mapping.termList()) {
        terms.push_back({{variable, term->sysVar}, {"factor", term->coefficient}});
    }
    out = {{"constant", mapping.id < 0 ? mapping.constant : Number{}}, {"terms", terms}};
}

/// What drives the transformations, in their order; those that nothing drives are left out.
template <class Number>
Json transformsJson(const LmArray<int>& order, const LmArray<LqBasicVarMapping<Number>>& mappings) {
    Json out = Json::array();
    for (int k = 0; k < mappings.count(); ++k) {
        if (mappings[k].id != 0) {
            out.push_back({{"transform", transformLabel(order[k])}});
            out.back().update(Json(mappings[k]));
        }
    }
    return out;
}

/// A translation, and the angles of a rotation in radians. The sum makes 0 of the angle -0.
inline Json baseTransformJson(const LmVec3& translation, const LmMat3& rotation) {
    LmVec3 angles{};
    matrixToEuler(angles, {1, 2, 3}, rotation);
    return {{"tx", translation[0]},   {"ty", translation[1]},   {"tz", translation[2]},
            {"rx", angles[0] + 0.0F}, {"ry", angles[1] + 0.0F}, {"rz", angles[2] + 0.0F}};
}

} // namespace quillon
