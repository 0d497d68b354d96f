#pragma once

#include "quillon/problem/LqProblemDefData.h"

#include <string>
#include <utility>
#include <vector>

namespace quillon::test {

/// The pointers as an array, as the setters take it. Owns nothing.
template <class Record>
LmDArray<Record*> arrayOf(const std::vector<Record*>& records) {
    LmDArray<Record*> array;
    for (Record* record : records) {
        array.append(record);
    }
    return array;
}

inline LmDArray<int> arrayOf(const std::vector<int>& values) {
    LmDArray<int> array;
    for (const int value : values) {
        array.append(value);
    }
    return array;
}

inline LmDArray<LmStr> arrayOf(const std::vector<std::string>& texts) {
    LmDArray<LmStr> array;
    for (const std::string& text : texts) {
        array.append(LmStr(text.c_str()));
    }
    return array;
}

inline std::vector<int> valuesOf(const LmArray<int>& values) {
    return {values.begin(), values.end()};
}

inline std::vector<std::string> textsOf(const LmArray<LmStr>& texts) {
    std::vector<std::string> result;
    for (const LmStr& text : texts) {
        result.emplace_back(text.c_str());
    }
    return result;
}

/// The ids of an array of records, in order; null slots are left out.
template <class Record>
std::vector<int> idsOf(const LmDArray<Record*>& records) {
    std::vector<int> ids;
    for (const Record* record : records) {
        if (record != nullptr) {
            ids.push_back(record->id);
        }
    }
    return ids;
}

/// The names of the bodies, in order; null slots are left out.
inline std::vector<std::string> namesOf(const LmDArray<LqPDDBodyMap*>& bodies) {
    std::vector<std::string> names;
    for (const LqPDDBodyMap* body : bodies) {
        if (body != nullptr) {
            names.emplace_back(body->name.c_str());
        }
    }
    return names;
}

inline std::vector<std::pair<int, int>> pairIdsOf(const LqProblemDefData& data) {
    std::vector<std::pair<int, int>> ids;
    for (const LqPDDArtificialMarker* pair : data.artificialMarkers) {
        if (pair != nullptr) {
            ids.emplace_back(pair->id, pair->otherId);
        }
    }
    return ids;
}

inline void addSysVar(LqProblemDefData& data, int id, const char* description) {
    LqPDDSysVar sysVar(id, description);
    data.appendSysVars(arrayOf<LqPDDSysVar>({&sysVar}));
}

inline void addFixMarker(LqProblemDefData& data, const LqPDDFixMarker& marker) {
    data.fixMarkers.append(new LqPDDFixMarker(marker));
}

inline void addDoubleMarker(LqProblemDefData& data, const LqPDDDoubleMarker& marker) {
    data.doubleMarkers.append(new LqPDDDoubleMarker(marker));
}

/// A null slot at the end of each array.
inline void appendNullSlots(LqProblemDefData& data) {
    data.sysVars.append(nullptr);
    data.bodies.append(nullptr);
    data.fixMarkers.append(nullptr);
    data.realMarkers.append(nullptr);
    data.globalDirectionMarkers.append(nullptr);
    data.doubleMarkers.append(nullptr);
    data.artificialMarkers.append(nullptr);
}

inline LqBasicVarMapping<float> constantMapping(float constant) {
    LqBasicVarMapping<float> mapping(-1);
    mapping.constant = constant;
    return mapping;
}

inline LqBasicVarMapping<float> combination(float constant, const std::vector<std::pair<int, float>>& terms) {
    LqBasicVarMapping<float> mapping = constantMapping(constant);
    for (const auto& [sysVar, coefficient] : terms) {
        mapping.appendTerm(sysVar, coefficient);
    }
    return mapping;
}

inline std::vector<std::pair<int, float>> termsOf(const LqBasicVarMapping<float>& mapping) {
    std::vector<std::pair<int, float>> terms;
    for (const LqLinearTerm<float>* term : mapping.termList()) {
        terms.emplace_back(term->sysVar, term->coefficient);
    }
    return terms;
}

} // namespace quillon::test
