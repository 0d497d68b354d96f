#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/problem/MappingText.h"
#include "quillon/problem/ProblemDefFormat.h"

#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>

namespace quillon {

namespace {

// The columns that only the writer counts.
constexpr int sysVarIdWidth = 3;
constexpr int graphicsNumberWidth = 8;
constexpr int typeWidth = 4;
constexpr int typeVarWidth = 3;
constexpr int markerIdWidth = 3;
constexpr int weightWidth = 7;
constexpr int mappingDecimals = 6;
constexpr int weightDecimals = 3;

void writeText(std::ostream& output, std::string_view text) {
    output.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void writeBlanks(std::ostream& output, int count) {
    for (int i = 0; i < count; ++i) {
        output.put(' ');
    }
}

void writeInt(std::ostream& output, std::int32_t value, int width = 0) {
    output.width(width);
    printInt(output, value);
}

/// The text form of one section. Puts the stream's format back at the end of its scope.
class SectionFormat {
public:
    SectionFormat(std::ostream& output, int decimals) : restored(output) {
        output.flags(std::ios_base::fixed | std::ios_base::dec);
        output.precision(decimals);
        output.width(0);
        output.fill(' ');
    }

private:
    FormatGuard restored;
};

template <class Record>
void writeCount(std::ostream& output, const LmDArray<Record*>& records, std::string_view comment) {
    int count = 0;
    for (const Record* record : records) {
        count += record == nullptr ? 0 : 1;
    }
    writeBlanks(output, 2);
    writeInt(output, count);
    writeText(output, comment);
    output.put('\n');
}

void writeMarkerId(std::ostream& output, std::int32_t id, int blanks) {
    writeBlanks(output, blanks);
    writeInt(output, id, markerIdWidth);
}

void writeWeight(std::ostream& output, float weight) {
    output.put(' ');
    output.width(weightWidth);
    printReal(output, weight);
}

void writeBodyName(std::ostream& output, const LmStr& name, int blanks) {
    writeBlanks(output, blanks);
    LqProblemDefData::writeNameField(output, name);
}

} // namespace

void LqProblemDefData::writeNameField(std::ostream& output, const LmStr& name) {
    const std::string_view text = name.view();
    if (text.size() <= nameColumns) {
        writeText(output, text);
        writeBlanks(output, nameColumns - static_cast<int>(text.size()));
        return;
    }
    output.put(nameQuote);
    writeText(output, text);
    output.put(nameQuote);
    output.put(blankBehindQuote);
}

// --- Sections ------------------------------------------------------------------------------------

void LqProblemDefData::writeSysVars(std::ostream& output) const {
    const SectionFormat format(output, mappingDecimals);
    writeCount(output, sysVars, "    # of variables -- var num, description");
    for (const LqPDDSysVar* sysVar : sysVars) {
        if (sysVar == nullptr) {
            continue;
        }
        writeBlanks(output, 2);
        writeInt(output, sysVar->id, sysVarIdWidth);
        writeBlanks(output, 4);
        writeText(output, sysVar->description.view());
        output.put('\n');
    }
}

namespace {

void writeBody(const LqPDDBodyMap& body, std::ostream& output) {
    writeBodyName(output, body.name, blanksBeforeBodyName);
    LqProblemDefData::writeNameField(output, body.parentName);
    writeInt(output, body.graphicsNumber, graphicsNumberWidth);
    writeInt(output, body.type, typeWidth);
    output.put('\n');
    int blanks = 4;
    for (const int entry : body.transformOrder) {
        writeBlanks(output, blanks);
        writeInt(output, entry);
        blanks = 3;
    }
    output.put('\n');
    for (const LqBasicVarMapping<float>& mapping : body.mappings) {
        writeMapping(mapping, output);
        output.put('\n');
    }
    // Deliberately no test of the bit: a body of both types loses the line, which readers then miss.
    if (body.type == bodyTypeOne) {
        output.put(' ');
        writeInt(output, body.typeOneVar, typeVarWidth);
        output.put('\n');
    }
}

} // namespace

void LqProblemDefData::writeBodies(std::ostream& output) const {
    const SectionFormat format(output, mappingDecimals);
    writeCount(output, bodies, "    # of bodies, body names, parent names, graphics #, type");
    for (const LqPDDBodyMap* body : bodies) {
        if (body != nullptr) {
            writeBody(*body, output);
        }
    }
}

void LqProblemDefData::writeRealMarkers(std::ostream& output) const {
    const SectionFormat format(output, weightDecimals);
    writeCount(output, realMarkers, "    # real markers, marker#, pred type #, weight, body name");
    for (const LqPDDRealMarker* marker : realMarkers) {
        if (marker == nullptr) {
            continue;
        }
        writeMarkerId(output, marker->id, 2);
        writeBlanks(output, 3);
        writeInt(output, marker->predictionType);
        writeWeight(output, marker->weight);
        writeBodyName(output, marker->bodyName, blanksBeforeRealBodyName);
        output.put('\n');
    }
}

void LqProblemDefData::writeFixMarkers(std::ostream& output) const {
    const SectionFormat format(output, weightDecimals);
    writeCount(output, fixMarkers, "    # fix markers, ID, weight, body name");
    for (const LqPDDFixMarker* marker : fixMarkers) {
        if (marker == nullptr) {
            continue;
        }
        writeMarkerId(output, marker->id, 2);
        writeWeight(output, marker->weight);
        writeBodyName(output, marker->bodyName, blanksBeforeFixBodyName);
        output.put('\n');
    }
}

void LqProblemDefData::writeDoubleMarkers(std::ostream& output) const {
    const SectionFormat format(output, weightDecimals);
    writeCount(output, doubleMarkers, "    # double markers, ID, double ID, weight, body name");
    for (const LqPDDDoubleMarker* marker : doubleMarkers) {
        if (marker == nullptr) {
            continue;
        }
        writeMarkerId(output, marker->id, 2);
        writeMarkerId(output, marker->doubleId, 1);
        writeWeight(output, marker->weight);
        writeBodyName(output, marker->bodyName, blanksBeforeDoubleBodyName);
        output.put('\n');
    }
}

void LqProblemDefData::writeArtificialMarkers(std::ostream& output) const {
    const SectionFormat format(output, weightDecimals);
    writeCount(output, artificialMarkers,
               "    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name");
    for (const LqPDDArtificialMarker* pair : artificialMarkers) {
        if (pair == nullptr) {
            continue;
        }
        writeMarkerId(output, pair->id, 2);
        writeMarkerId(output, pair->otherId, 1);
        writeWeight(output, pair->weight);
        writeBodyName(output, pair->bodyName, blanksBeforeArtificialBodyName);
        writeBodyName(output, pair->otherBodyName, blanksBeforeOtherBodyName);
        output.put('\n');
    }
}

// --- The whole file ------------------------------------------------------------------------------

void LqProblemDefData::writeProblemDefSections(std::ostream& output) const {
    writeSysVars(output);
    writeBodies(output);
    writeRealMarkers(output);
    writeFixMarkers(output);
    writeDoubleMarkers(output);
    writeArtificialMarkers(output);
    writeIncludes(output);
}

void LqProblemDefData::writeProblemDefStream(std::ostream& output) const {
    writeDataHeader(output, problemDefFileId, problemDefFileVersion);
    writeProblemDefSections(output);
}

bool LqProblemDefData::writeProblemDefFile(const LmStr& path) const {
    if (!checkFileWritable(path)) {
        return false;
    }
    LmOFStream output(path);
    if (!output.good()) {
        pushErrorf("Couldn't create file \"%s\".", path.c_str());
        return false;
    }
    // A mapping ends its lines with a flush. Composed in memory first, the file takes them all in one go.
    std::ostringstream text;
    text.imbue(std::locale::classic());
    writeProblemDefStream(text);
    writeText(output, text.view());
    output.close();
    return output.good();
}

} // namespace quillon
