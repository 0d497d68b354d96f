#include "quillon/model/LqBodyDefData.h"

#include "quillon/core/CancelPoll.h"
#include "quillon/core/DataHeader.h"
#include "quillon/core/Fatal.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/files/LmIFStream.h"
#include "quillon/model/DefinedBodyIndex.h"
#include "quillon/model/ModelFormat.h"
#include "quillon/problem/LqPDDBodyMap.h"

#include <memory>
#include <string>
#include <string_view>

namespace quillon {

namespace {

namespace format = modelFormat;

/// How the reading of a section ended.
enum class Ending {
    Complete,
    Unreadable, // a number or a name could not be read: nothing of the model is kept
    Refused,    // a body does not fit the definition, or an include cannot be read: all in front of it stays
    Canceled    // by the user; the records read so far stay, and the error is hidden below a warning
};

/// Reads what stands behind the header into a model without records.
class ModelSectionsReader {
public:
    ModelSectionsReader(LqBodyDefData& emptyModel, std::istream& stream, const DefinedBodyIndex& bodyIndex,
                        const LmStr& suffix)
        : model(emptyModel), input(stream), bodyNameSuffix(suffix.view()), definedBodies(bodyIndex) {}

    Ending read();

private:
    Ending readBodies();
    Ending readBody(int number, LqBDBody& body);
    bool readName(int number, LmStr& name);
    bool readTransform(LqBDBody& body);
    const LqPDDBodyMap* definedBody(const LmStr& name);
    Ending readVectors(LqBDBody& body, const LqPDDBodyMap& defined);
    Ending readLength(LqBDBody& body, const LqPDDBodyMap& defined);
    Ending readDirection(LqBDBody& body, const LqPDDBodyMap& defined);
    Ending readMarkers(const format::MarkerSection& section);
    bool readMarker(const format::MarkerSection& section, LqBDMarker& marker);
    void skipCameraLines();

    LqBodyDefData& model;
    std::istream& input;
    const std::string_view bodyNameSuffix;
    const DefinedBodyIndex& definedBodies;
};

Ending ModelSectionsReader::read() {
    Ending ending = readBodies();
    for (const format::MarkerSection& section : format::markerSections) {
        if (ending != Ending::Complete) {
            break;
        }
        ending = readMarkers(section);
    }
    if (ending == Ending::Complete && !model.readModelIncludes(input)) {
        ending = Ending::Refused;
    }
    return ending;
}

Ending ModelSectionsReader::readBodies() {
    extractInt(input, model.cameraCount);
    skipRestOfLine(input);
    std::int32_t count = 0;
    if (!extractInt(input, count)) {
        pushError("Unable to read number of bodies.");
        return Ending::Unreadable;
    }
    skipRestOfLine(input);
    model.bodies.setLengthZeroed(count);
    CancelPoll cancel(recordsBeforeCancelPoll);
    for (int i = 0; i < count; ++i) {
        auto body = std::make_unique<LqBDBody>();
        const Ending ending = readBody(i + 1, *body);
        if (ending != Ending::Complete) {
            return ending;
        }
        model.bodies[i] = body.release();
        if (cancel.canceledAfterRecord()) {
            model.bodies.setLength(std::int64_t{i} + 1);
            return Ending::Canceled;
        }
    }
    return Ending::Complete;
}

Ending ModelSectionsReader::readBody(int number, LqBDBody& body) {
    if (!readName(number, body.name) || !readTransform(body)) {
        return Ending::Unreadable;
    }
    const LqPDDBodyMap* const defined = definedBody(body.name);
    return defined == nullptr ? Ending::Refused : readVectors(body, *defined);
}

bool ModelSectionsReader::readName(int number, LmStr& name) {
    name.readLine(input);
    if (input.fail() || name.isNull()) {
        pushErrorf("Unable to read body name of body #%d.", number);
        return false;
    }
    name.trim();
    return true;
}

bool ModelSectionsReader::readTransform(LqBDBody& body) {
    int rowNumber = 0;
    for (const auto& row : format::transformRows) {
        ++rowNumber;
        for (const std::size_t element : row) {
            if (!extractFloat(input, body.baseTransform[element])) {
                pushErrorf("Unable to read transformation row %d for '%s'.", rowNumber, body.name.c_str());
                return false;
            }
        }
        skipRestOfLine(input);
    }
    return true;
}

/// The definition's body of that name with the suffix. Without one, reports that and gives null.
const LqPDDBodyMap* ModelSectionsReader::definedBody(const LmStr& name) {
    std::string fullName(name.view());
    fullName += bodyNameSuffix;
    const LqPDDBodyMap* const found = definedBodies.find(fullName);
    if (found == nullptr) {
        pushError("The base matrix for body '" + LmStr(fullName.c_str()) +
                  "' is given, but there is no such body in the problem definition.");
    }
    return found;
}

Ending ModelSectionsReader::readVectors(LqBDBody& body, const LqPDDBodyMap& defined) {
    Ending ending = Ending::Complete;
    if ((defined.type & bodyTypeOne) != 0) {
        ending = readLength(body, defined);
    }
    if (ending == Ending::Complete && (defined.type & (bodyTypeOne | bodyTypeTwo)) != 0) {
        ending = readDirection(body, defined);
    }
    return ending;
}

Ending ModelSectionsReader::readLength(LqBDBody& body, const LqPDDBodyMap& defined) {
    double length = 0;
    if (!extractDouble(input, length)) {
        pushErrorf("Unable to read vector length for '%s'.", defined.name.c_str());
        return Ending::Unreadable;
    }
    // Before narrowing: a length too small for 32 bits is one, and is kept as 0.
    if (length == 0.0) {
        pushError("Body '" + body.name + "' has a zero type one vector length.");
        return Ending::Refused;
    }
    body.vectorLength = narrowed(length);
    skipRestOfLine(input);
    return Ending::Complete;
}

Ending ModelSectionsReader::readDirection(LqBDBody& body, const LqPDDBodyMap& defined) {
    for (float& component : body.vectorDirection) {
        if (!extractFloat(input, component)) {
            pushErrorf("Unable to read vector direction for '%s'.", defined.name.c_str());
            return Ending::Unreadable;
        }
    }
    skipRestOfLine(input);
    return Ending::Complete;
}

Ending ModelSectionsReader::readMarkers(const format::MarkerSection& section) {
    std::int32_t count = 0;
    if (!extractInt(input, count)) {
        pushError(section.countUnreadable);
        return Ending::Unreadable;
    }
    skipRestOfLine(input);
    LmDArray<LqBDMarker*>& markers = model.*section.markers;
    markers.setLengthZeroed(std::int64_t{count} * section.recordsPerCount);
    CancelPoll cancel(recordsBeforeCancelPoll);
    for (int i = 0; i < markers.count(); ++i) {
        auto marker = std::make_unique<LqBDMarker>();
        if (!readMarker(section, *marker)) {
            return Ending::Unreadable;
        }
        markers[i] = marker.release();
        if (cancel.canceledAfterRecord()) {
            markers.setLength(std::int64_t{i} + 1);
            return Ending::Canceled;
        }
    }
    return Ending::Complete;
}

bool ModelSectionsReader::readMarker(const format::MarkerSection& section, LqBDMarker& marker) {
    if (!extractInt(input, marker.id)) {
        pushError(section.idUnreadable);
        return false;
    }
    for (float& coordinate : marker.position) {
        if (!extractFloat(input, coordinate)) {
            pushError(section.positionUnreadable);
            return false;
        }
    }
    skipRestOfLine(input);
    if (section.hasCameraLines) {
        skipCameraLines();
    }
    return true;
}

void ModelSectionsReader::skipCameraLines() {
    // At the end of the input the next number fails in any case, so a camera count far above the lines of the
    // file costs nothing.
    for (int i = 0; i < model.cameraCount && input.good(); ++i) {
        skipRestOfLine(input);
    }
}

bool readSections(LqBodyDefData& target, std::istream& input, const DefinedBodyIndex& definedBodies,
                  const LmStr& suffix) {
    target.clear();
    if (!LqBodyDefData::readModelHeader(input)) {
        pushError("Not a valid " + modelFileId + ".");
        return false;
    }
    const Ending ending = ModelSectionsReader(target, input, definedBodies, suffix).read();
    if (ending == Ending::Unreadable) {
        target.clear();
    }
    return ending == Ending::Complete && !errorStands();
}

enum class FileReading { NotOpened, Failed, Whole };

FileReading readSectionsOfFile(LqBodyDefData& target, const LmStr& path,
                               const DefinedBodyIndex& definedBodies, const LmStr& suffix) {
    if (!checkFileReadable(path)) {
        return FileReading::NotOpened;
    }
    LmIFStream input(path);
    if (!input.is_open()) {
        pushErrorf("Unable to open model file '%s'.", path.c_str());
        return FileReading::NotOpened;
    }
    if (!readSections(target, input, definedBodies, suffix)) {
        pushErrorf("Unable to read '%s'.", path.c_str());
        return FileReading::Failed;
    }
    return FileReading::Whole;
}

} // namespace

bool LqBodyDefData::readModelFile(const LmStr& path, const LqProblemDefData& definition, bool withIncludes) {
    return readModelFileWithSuffix(path, definition, "", withIncludes);
}

bool LqBodyDefData::readModelFile(const LmStr& path, bool withIncludes) {
    if (problemDef == nullptr) {
        endByMemoryFault();
    }
    return readModelFile(path, *problemDef, withIncludes);
}

bool LqBodyDefData::readModelFileWithSuffix(const LmStr& path, const LqProblemDefData& definition,
                                            const LmStr& suffix, bool withIncludes) {
    return readModelFileWithSuffix(path, DefinedBodyIndex(definition), suffix, withIncludes);
}

bool LqBodyDefData::readModelFileWithSuffix(const LmStr& path, const DefinedBodyIndex& definedBodies,
                                            const LmStr& suffix, bool withIncludes) {
    // Files may include each other to any depth, so none stays open while those below it are read.
    const FileReading reading = readSectionsOfFile(*this, path, definedBodies, suffix);
    if (reading == FileReading::NotOpened) {
        return false;
    }
    const bool whole = reading == FileReading::Whole;
    if (!withIncludes || includes.count() == 0) {
        return whole;
    }
    // Deliberately also after a failure, when only what was read can be merged.
    const FileBeingRead mark(path);
    return mergeModelIncludes(definedBodies) && whole;
}

bool LqBodyDefData::readModelStream(std::istream& input, const LqProblemDefData& definition,
                                    bool withIncludes) {
    const DefinedBodyIndex definedBodies(definition);
    bool whole = readSections(*this, input, definedBodies, "");
    if (withIncludes) {
        whole = mergeModelIncludes(definedBodies) && whole;
    }
    // A model that was not read whole is short of bodies anyway, and a warning on that would hide the error.
    if (whole && !errorStands()) {
        checkBodyCount(bodies.count(), definition);
    }
    return whole && !errorStands();
}

bool LqBodyDefData::readModelSections(std::istream& input, const LqProblemDefData& definition,
                                      const LmStr& suffix) {
    return readSections(*this, input, DefinedBodyIndex(definition), suffix);
}

bool LqBodyDefData::readModelHeader(std::istream& input) {
    return readFormatHeader(input, DataFileFormat::Model);
}

bool LqBodyDefData::hasModelHeader(const LmStr& path) {
    if (!checkFileReadable(path)) {
        return false;
    }
    LmIFStream input(path);
    if (!input.is_open()) {
        pushErrorf("Unable to open model file '%s'.", path.c_str());
        return false;
    }
    const bool isGood = readModelHeader(input);
    if (errorStands()) {
        pushErrorf("Error reading '%s'.", path.c_str());
        return false;
    }
    return isGood;
}

} // namespace quillon
