#pragma once

#include "quillon/core/LmListView.h"
#include "quillon/problem/LqProblemDefData.h"

#include <sstream>
#include <string>
#include <vector>

namespace quillon::test {

/// "0", "3", "-1(0.5)" or "-3(0.25 + 2 x1 + -1 x2)", where "2 x1" is the coefficient 2 on the variable 1.
inline std::string textOf(const LqBasicVarMapping<float>& mapping) {
    std::ostringstream text;
    text.precision(9);
    text << mapping.id;
    if (mapping.id < 0) {
        text << "(" << mapping.constant;
        for (const LqLinearTerm<float>* term : mapping.termList()) {
            text << " + " << term->coefficient << " x" << term->sysVar;
        }
        text << ")";
    }
    return text.str();
}

/// "Hand < Hips, number 2, type 1, type variables 5 0, order 1 2 3 6 5 4, mappings 0 1 -1(0.5) 0 0 0".
inline std::string textOf(const LqPDDBodyMap& body) {
    std::ostringstream text;
    text << body.name << " < " << body.parentName << ", number " << body.graphicsNumber << ", type "
         << body.type << ", type variables " << body.typeOneVar << " " << body.typeTwoVar << ", order";
    for (const int entry : body.transformOrder) {
        text << " " << entry;
    }
    text << ", mappings";
    for (const LqBasicVarMapping<float>& mapping : body.mappings) {
        text << " " << textOf(mapping);
    }
    return text.str();
}

/// "3 weight 0.5 on Hips".
template <class Marker>
std::string markerText(const Marker& marker) {
    std::ostringstream text;
    text.precision(9);
    text << marker.id << " weight " << marker.weight << " on " << marker.bodyName;
    return text.str();
}

/// Everything that a definition holds, one line for each record; null slots are left out.
inline std::vector<std::string> linesOf(const LqProblemDefData& data) {
    std::vector<std::string> lines;
    const auto add = [&lines](const auto& records, const char* kind, const auto& toText) {
        for (const auto* record : records) {
            if (record != nullptr) {
                lines.push_back(kind + toText(*record));
            }
        }
    };
    add(data.sysVars, "variable ", [](const LqPDDSysVar& sysVar) {
        return std::to_string(sysVar.id) + " " + std::string(sysVar.description.view());
    });
    add(data.bodies, "body ", [](const LqPDDBodyMap& body) { return textOf(body); });
    add(data.realMarkers, "real ", [](const LqPDDRealMarker& marker) {
        return markerText(marker) + ", prediction " + std::to_string(marker.predictionType);
    });
    add(data.globalDirectionMarkers, "global ", [](const auto& marker) { return markerText(marker); });
    add(data.fixMarkers, "fix ", [](const LqPDDFixMarker& marker) { return markerText(marker); });
    add(data.doubleMarkers, "double ", [](const LqPDDDoubleMarker& marker) {
        return markerText(marker) + ", second id " + std::to_string(marker.doubleId);
    });
    add(data.artificialMarkers, "pair ", [](const LqPDDArtificialMarker& pair) {
        return markerText(pair) + ", " + std::to_string(pair.otherId) + " on " +
               std::string(pair.otherBodyName.view());
    });
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(data.includes)) {
        lines.push_back("include " + std::string(include->fileName.view()) + " suffix \"" +
                        std::string(include->bodyNameSuffix.view()) + "\" offsets " +
                        std::to_string(include->bodyIdOffset) + " " +
                        std::to_string(include->sysVarIdOffset));
    }
    return lines;
}

} // namespace quillon::test
