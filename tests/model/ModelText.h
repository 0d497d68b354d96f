#pragma once

#include "quillon/core/LmListView.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quillon::test {

/// Bodies of these names and types, each a child of the global frame.
inline void addBodies(LqProblemDefData& definition, const std::vector<std::pair<std::string, int>>& bodies) {
    for (const auto& [name, type] : bodies) {
        definition.addBody(name.c_str(), "ReferenceSystemZero", definition.bodies.count() + 1).type = type;
    }
}

/// All fields of a body on one line: "Arm [1 0 0 0 ...] length 2 direction 0 0 1", with nine significant
/// digits, so that equal texts mean equal floats.
inline std::string textOf(const LqBDBody& body) {
    std::ostringstream text;
    text.precision(9);
    text << body.name << " [";
    for (std::size_t i = 0; i < body.baseTransform.size(); ++i) {
        text << (i == 0 ? "" : " ") << body.baseTransform[i];
    }
    text << "] length " << body.vectorLength << " direction " << body.vectorDirection[0] << " "
         << body.vectorDirection[1] << " " << body.vectorDirection[2];
    return text.str();
}

/// "3: 1 2.5 -4".
inline std::string textOf(const LqBDMarker& marker) {
    std::ostringstream text;
    text.precision(9);
    text << marker.id << ": " << marker.position[0] << " " << marker.position[1] << " " << marker.position[2];
    return text.str();
}

inline std::vector<int> idsOf(const LmArray<LqBDMarker*>& markers) {
    std::vector<int> ids;
    for (const LqBDMarker* marker : markers) {
        ids.push_back(marker->id);
    }
    return ids;
}

inline std::vector<std::string> bodyNamesOf(const LqBodyDefData& model) {
    std::vector<std::string> names;
    for (const LqBDBody* body : model.storedBodies()) {
        names.emplace_back(body->name.view());
    }
    return names;
}

/// Everything that a model holds, one line for each record.
inline std::vector<std::string> linesOf(const LqBodyDefData& model) {
    std::vector<std::string> lines = {"cameras " + std::to_string(model.cameraCount)};
    for (const LqBDBody* body : model.storedBodies()) {
        lines.push_back("body " + textOf(*body));
    }
    const std::pair<const char*, const LmDArray<LqBDMarker*>*> arrays[] = {
        {"real ", &model.realMarkers},
        {"global ", &model.globalDirectionMarkers},
        {"fix ", &model.fixMarkers},
        {"double ", &model.doubleMarkers},
        {"artificial ", &model.artificialMarkers}};
    for (const auto& [kind, markers] : arrays) {
        for (const LqBDMarker* marker : *markers) {
            lines.push_back(kind + textOf(*marker));
        }
    }
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(model.includes)) {
        lines.push_back("include " + std::string(include->fileName.view()) + " suffix " +
                        std::string(include->bodyNameSuffix.view()));
    }
    return lines;
}

} // namespace quillon::test
