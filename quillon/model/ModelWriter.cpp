#include "quillon/model/LqBodyDefData.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/model/ModelFormat.h"
#include "quillon/problem/LqPDDBodyMap.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillon {

namespace {

namespace format = modelFormat;

std::string inUpperCase(std::string_view name) {
    std::string upper(name);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
}

/// The bodies of a definition by name, without regard to case; the first of equal names is found.
class DefinedBodies {
public:
    explicit DefinedBodies(const LqProblemDefData& definition) {
        for (const LqPDDBodyMap* body : definition.bodies) {
            if (body != nullptr) {
                bodies.try_emplace(inUpperCase(body->name.view()), body);
            }
        }
    }

    /// The type of the body, 0 when the definition lacks it.
    std::int32_t typeOf(const LmStr& name) const {
        const auto found = bodies.find(inUpperCase(name.view()));
        return found == bodies.end() ? 0 : found->second->type;
    }

private:
    std::unordered_map<std::string, const LqPDDBodyMap*> bodies;
};

/// Two decimals for the version only, but the precision of 2 deliberately stays: in a model without bodies
/// the markers are written with it.
void writeHeader(std::ostream& output) {
    output << modelFileId << "\nv";
    output.setf(std::ios::dec, std::ios::basefield);
    output.setf(std::ios::fixed, std::ios::floatfield);
    output.setf(std::ios::left, std::ios::adjustfield);
    output.precision(2);
    printReal(output, modelFileVersion);
    output << "\n";
    output.unsetf(std::ios::fixed | std::ios::left);
}

void writeCount(std::ostream& output, std::int64_t count, const char* comment) {
    printInt(output, count);
    output << comment << "\n";
}

/// The same text in front of each number, one line.
void writeReals(std::ostream& output, const LmVec3& numbers, const char* blanks) {
    for (const float number : numbers) {
        output << blanks;
        printReal(output, number);
    }
    output << "\n";
}

/// Fixed-point for the matrix alone; its precision deliberately stays for all that follows.
void writeTransform(std::ostream& output, const LmMat4& transform) {
    output.setf(std::ios::fixed, std::ios::floatfield);
    output.precision(format::transformDecimals);
    for (const auto& row : format::transformRows) {
        output << "  ";
        printReal(output, transform[row[0]]);
        output << "    ";
        printReal(output, transform[row[1]]);
        output << "    ";
        printReal(output, transform[row[2]]);
        output << "\n";
    }
    output.unsetf(std::ios::floatfield);
}

void writeBody(std::ostream& output, const LqBDBody& body, std::int32_t type) {
    output << " " << body.name << "\n";
    writeTransform(output, body.baseTransform);
    if ((type & bodyTypeOne) != 0) {
        output << "  ";
        printReal(output, body.vectorLength);
        output << "\n";
    }
    if ((type & (bodyTypeOne | bodyTypeTwo)) != 0) {
        writeReals(output, body.vectorDirection, "  ");
    }
}

void writeMarkers(std::ostream& output, const LqBodyDefData& model, const format::MarkerSection& section) {
    const LmDArray<LqBDMarker*>& markers = model.*section.markers;
    writeCount(output, markers.count() / section.recordsPerCount, section.countComment);
    for (const LqBDMarker* marker : markers) {
        output << "  ";
        printInt(output, marker->id);
        writeReals(output, marker->position, "   ");
        for (int i = 0; section.hasCameraLines && i < model.cameraCount; ++i) {
            output << format::cameraLine << "\n";
        }
    }
}

} // namespace

void LqBodyDefData::writeModelFile(const LmStr& path, const LqProblemDefData& definition) const {
    if (!checkFileWritable(path)) {
        return;
    }
    LmOFStream output(path);
    if (!output.is_open()) {
        pushErrorf("Couldn't create file \"%s\".", path.c_str());
        return;
    }
    writeModelStream(output, definition);
}

void LqBodyDefData::writeModelStream(std::ostream& output, const LqProblemDefData& definition) const {
    writeHeader(output);
    writeCount(output, cameraCount, format::cameraCountComment);
    const std::span<LqBDBody* const> stored = storedBodies();
    writeCount(output, static_cast<std::int64_t>(stored.size()), format::bodyCountComment);
    const DefinedBodies definedBodies(definition);
    for (const LqBDBody* body : stored) {
        writeBody(output, *body, definedBodies.typeOf(body->name));
    }
    for (const format::MarkerSection& section : format::markerSections) {
        writeMarkers(output, *this, section);
    }
    writeModelIncludes(output);
}

} // namespace quillon
