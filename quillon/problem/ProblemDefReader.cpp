#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/CancelPoll.h"
#include "quillon/core/CharClass.h"
#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/NameIndex.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/files/LmCompIFStream.h"
#include "quillon/problem/MappingText.h"
#include "quillon/problem/ProblemDefFormat.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {

namespace {

/// The text without white space at its ends, up to its first NUL: strings hold none.
LmStr trimmed(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return LmStr(text);
}

bool fail(const char* message) {
    pushError(message);
    return false;
}

/// Reports an error made of texts that may be of any length.
bool fail(const char* before, std::string_view name, const char* behind) {
    LmStr message(before);
    message.append(name);
    message.append(behind);
    pushError(message);
    return false;
}

// --- Names ---------------------------------------------------------------------------------------

/// Appends characters up to one of two that end a name, which is taken and given back; at most `atMost`.
/// Gives NUL when the characters or the stream end before.
char appendUpTo(std::istream& input, char end, char otherEnd, std::size_t atMost, std::string& name) {
    const auto isEnd = [end, otherEnd](char c) { return c == end || c == otherEnd; };
    ReadArea area(*input.rdbuf());
    while (atMost > 0) {
        const auto waiting = static_cast<std::size_t>(area.end() - area.begin());
        if (input.good() && waiting > 1) {
            // The last character of what waits is left to the extraction, which sees to the stream's state.
            const char* const searchEnd = area.begin() + std::min(waiting - 1, atMost);
            const char* const found = std::find_if(area.begin(), searchEnd, isEnd);
            const auto count = static_cast<std::size_t>(found - area.begin());
            name.append(area.begin(), count);
            area.take(count);
            atMost -= count;
            if (atMost == 0) {
                break;
            }
        }
        char c = '\0';
        if (!extractChar(input, c)) {
            break;
        }
        if (isEnd(c)) {
            return c;
        }
        name.push_back(c);
        --atMost;
    }
    return '\0';
}

/// Strings hold no NUL.
void cutAtNul(std::string& name) {
    name.resize(std::strlen(name.c_str()));
}

bool readQuotedName(std::istream& input, std::string& name) {
    if (appendUpTo(input, nameQuote, '\n', std::string::npos, name) != nameQuote) {
        return fail("Name has an opening quote but no closing quote.");
    }
    cutAtNul(name);
    char behind = '\0';
    if (!extractChar(input, behind) || behind != blankBehindQuote) {
        return fail("No space after closing quote around body name ", name, ".\n");
    }
    return true;
}

/// Reads a name field with its padding, cut at a NUL. False when it is empty.
bool readName(std::istream& input, std::string& name) {
    name.clear();
    char first = '\0';
    if (!extractChar(input, first)) {
        return false;
    }
    if (first == nameQuote) {
        if (!readQuotedName(input, name)) {
            name.clear();
        }
    } else {
        // A newline in the first column is a character like any other.
        name.push_back(first);
        appendUpTo(input, '\n', '\n', nameColumns - 1, name);
    }
    cutAtNul(name);
    return !name.empty();
}

} // namespace

LmStr LqProblemDefData::readNameField(std::istream& input) {
    std::string name;
    readName(input, name);
    return LmStr(std::string_view(name));
}

// --- Sections ------------------------------------------------------------------------------------

namespace {

/// Fills one section: an array of records, as many as its count line says.
///
/// `read` makes a record of the next row, or reports what is wrong and gives null. The array then keeps the
/// records in front of that one. False, too, when the user has cancelled.
template <class Record, class ReadRow>
bool readRows(LmDArray<Record*>& records, int count, const ReadRow& read) {
    records.setLengthZeroed(count);
    CancelPoll poll(recordsBeforeCancelPoll);
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<Record> record = read();
        if (record == nullptr) {
            records.setLength(i);
            return false;
        }
        records[i] = record.release();
        if (poll.canceledAfterRecord()) {
            records.setLength(i + 1);
            return false;
        }
    }
    return !errorStands();
}

bool readCount(std::istream& input, int& count, const char* failure) {
    if (!extractInt(input, count)) {
        return fail(failure);
    }
    skipRestOfLine(input);
    return true;
}

std::unique_ptr<LqPDDSysVar> readSysVar(std::istream& input, std::string& line) {
    std::int32_t id = 0;
    if (!extractInt(input, id)) {
        pushError("Unable to read system variable id.");
        return nullptr;
    }
    if (!extractLine(input, line, descriptionBufferSize)) {
        pushError("Unable to read system variable description.");
        return nullptr;
    }
    return std::make_unique<LqPDDSysVar>(id, trimmed(line));
}

} // namespace

bool LqProblemDefData::readSysVars(std::istream& input) {
    int count = 0;
    if (!readCount(input, count, "Unable to read number of system variables.")) {
        return false;
    }
    setSysVars({});
    std::string line;
    return readRows(sysVars, count, [&] { return readSysVar(input, line); });
}

// --- Bodies --------------------------------------------------------------------------------------

namespace {

/// Reads bodies one by one, and knows the names of those before.
class BodyReader {
public:
    BodyReader(std::istream& stream, int sysVarCount, int bodyCount)
        : input(stream), highestSysVar(sysVarCount) {
        // The count may lie far above what the file holds, or below 0.
        constexpr int roomAtMost = 1 << 16;
        knownNames.reserve(static_cast<std::size_t>(std::clamp(bodyCount, 0, roomAtMost)));
    }

    /// Reads one body. Null after an error.
    std::unique_ptr<LqPDDBodyMap> read() {
        auto body = std::make_unique<LqPDDBodyMap>(LmStr(), LmStr());
        const bool good = readHead(*body) && readOrder(*body) && readMappings(*body) && readTypeVars(*body) &&
                          takeNames(*body);
        return good ? std::move(body) : nullptr;
    }

private:
    bool readHead(LqPDDBodyMap& body) {
        skipChars(input, blanksBeforeBodyName);
        if (!readName(input, name)) {
            return fail("Unable to read body name.");
        }
        if (!readName(input, parentName)) {
            return fail("Unable to read parent name.");
        }
        if (!extractInt(input, body.graphicsNumber) || !extractInt(input, body.type)) {
            return fail("Unable to read body id and type number for body ", name, "\n.");
        }
        skipRestOfLine(input);
        return true;
    }

    bool readOrder(LqPDDBodyMap& body) {
        for (int& entry : body.transformOrder) {
            // What cannot be parsed is a 0.
            entry = 0;
            extractInt(input, entry);
            if (entry < 1 || entry > transformCount) {
                pushErrorf("Invalid transformation %d specified in transformation order.", entry);
                return fail("Unable to read transformation order for body ", name, ".");
            }
        }
        if (input.fail()) {
            return fail("Unable to read transformation order.");
        }
        skipRestOfLine(input);
        return true;
    }

    bool readMappings(LqPDDBodyMap& body) {
        for (int k = 0; k < body.mappings.count(); ++k) {
            if (!readMapping(body.mappings[k], input, highestSysVar)) {
                const std::string number = std::to_string(k + 1);
                return fail(("Unable to read transformation " + number + " for body ").c_str(), name, ".");
            }
        }
        return true;
    }

    bool readTypeVars(LqPDDBodyMap& body) {
        return ((body.type & bodyTypeOne) == 0 ||
                readTypeVar(body.typeOneVar, "Unable to read type one variable")) &&
               ((body.type & bodyTypeTwo) == 0 ||
                readTypeVar(body.typeTwoVar, "Unable to read type two variable"));
    }

    bool readTypeVar(std::int32_t& typeVar, const char* failure) {
        if (!extractInt(input, typeVar)) {
            return fail(failure);
        }
        skipRestOfLine(input);
        return true;
    }

    bool takeNames(LqPDDBodyMap& body) {
        body.name = trimmed(name);
        if (body.name.length() == 0) {
            pushErrorf("Body with ID %d has no name.", body.graphicsNumber);
            return false;
        }
        // The index refers to the names in the stored records.
        if (!knownNames.add(body.name.view(), 0)) {
            pushErrorf("Multiple bodies are named \"%s\".", body.name.c_str());
            return false;
        }
        body.parentName = trimmed(parentName);
        if (body.parentName.length() == 0) {
            pushErrorf("Body with ID %d has no parent name.", body.graphicsNumber);
            return false;
        }
        return true;
    }

    std::istream& input;
    int highestSysVar;
    std::string name;       // the field as read, with its padding
    std::string parentName; // the same
    NameIndex knownNames;
};

} // namespace

bool LqProblemDefData::readBodies(std::istream& input) {
    int count = 0;
    if (!readCount(input, count, "Unable to read number of bodies.")) {
        return false;
    }
    setBodies({});
    BodyReader reader(input, sysVars.count(), count);
    return readRows(bodies, count, [&reader] { return reader.read(); });
}

// --- Markers -------------------------------------------------------------------------------------

namespace {

/// What the reader of a marker section says.
struct MarkerMessages {
    const char* countFailed;
    const char* countIsNegative;
    const char* tokensFailed;
    const char* bodyNameIsEmpty;
    const char* otherBodyNameIsEmpty = nullptr;
};

constexpr MarkerMessages realMarkerMessages = {
    "Unable to read number of Real markers.",
    "The number of Real markers must be specified by a positive integer.",
    "Unable to read Real marker ID, prediction type and weight.",
    "Unable to read Real marker body name.",
};
constexpr MarkerMessages fixMarkerMessages = {
    "Unable to read number of Fix markers.",
    "The number of Fix markers must be specified by a positive integer.",
    "Unable to read Fix marker ID and weight.",
    "Unable to read Fix marker body name.",
};
constexpr MarkerMessages doubleMarkerMessages = {
    "Unable to read number of Double markers.",
    "The number of Double markers must be specified by a positive integer.",
    "Unable to read Double marker ID, double ID and weight.",
    "Unable to read Double marker body name.",
};
constexpr MarkerMessages artificialMarkerMessages = {
    "Unable to read number of artificial markers.",
    "The number of Artificial markers must be specified by a positive integer.",
    "Unable to read Artificial marker IDs and weight.",
    "Unable to read Artificial marker body name.",
    "Unable to read Artificial marker other body name.",
};

bool readMarkerCount(std::istream& input, int& count, const MarkerMessages& messages) {
    if (!readCount(input, count, messages.countFailed)) {
        return false;
    }
    return count >= 0 || fail(messages.countIsNegative);
}

/// Skips the blanks in front of a body name and reads it with its padding.
bool readBodyName(std::istream& input, int blanks, std::string& field, const char* failure) {
    skipChars(input, blanks);
    return readName(input, field) || fail(failure);
}

std::unique_ptr<LqPDDRealMarker> readRealMarker(std::istream& input, std::string& field) {
    const MarkerMessages& messages = realMarkerMessages;
    std::int32_t id = 0;
    std::int32_t predictionType = 0;
    float weight = 0.0F;
    if (!extractInt(input, id) || !extractInt(input, predictionType) || !extractFloat(input, weight)) {
        pushError(messages.tokensFailed);
        return nullptr;
    }
    if (!readBodyName(input, blanksBeforeRealBodyName, field, messages.bodyNameIsEmpty)) {
        return nullptr;
    }
    return std::make_unique<LqPDDRealMarker>(id, predictionType, weight, trimmed(field));
}

std::unique_ptr<LqPDDFixMarker> readFixMarker(std::istream& input, std::string& field) {
    const MarkerMessages& messages = fixMarkerMessages;
    std::int32_t id = 0;
    float weight = 0.0F;
    if (!extractInt(input, id) || !extractFloat(input, weight)) {
        pushError(messages.tokensFailed);
        return nullptr;
    }
    if (!readBodyName(input, blanksBeforeFixBodyName, field, messages.bodyNameIsEmpty)) {
        return nullptr;
    }
    skipRestOfLine(input);
    return std::make_unique<LqPDDFixMarker>(id, weight, trimmed(field));
}

std::unique_ptr<LqPDDDoubleMarker> readDoubleMarker(std::istream& input, std::string& field) {
    const MarkerMessages& messages = doubleMarkerMessages;
    std::int32_t id = 0;
    std::int32_t doubleId = 0;
    float weight = 0.0F;
    if (!extractInt(input, id) || !extractInt(input, doubleId) || !extractFloat(input, weight)) {
        pushError(messages.tokensFailed);
        return nullptr;
    }
    if (!readBodyName(input, blanksBeforeDoubleBodyName, field, messages.bodyNameIsEmpty)) {
        return nullptr;
    }
    skipRestOfLine(input);
    return std::make_unique<LqPDDDoubleMarker>(id, doubleId, weight, trimmed(field));
}

std::unique_ptr<LqPDDArtificialMarker> readArtificialMarker(std::istream& input, std::string& field) {
    const MarkerMessages& messages = artificialMarkerMessages;
    std::int32_t id = 0;
    std::int32_t otherId = 0;
    float weight = 0.0F;
    if (!extractInt(input, id) || !extractInt(input, otherId) || !extractFloat(input, weight)) {
        pushError(messages.tokensFailed);
        return nullptr;
    }
    if (!readBodyName(input, blanksBeforeArtificialBodyName, field, messages.bodyNameIsEmpty)) {
        return nullptr;
    }
    LmStr bodyName = trimmed(field);
    if (!readBodyName(input, blanksBeforeOtherBodyName, field, messages.otherBodyNameIsEmpty)) {
        return nullptr;
    }
    return std::make_unique<LqPDDArtificialMarker>(id, otherId, weight, std::move(bodyName), trimmed(field));
}

} // namespace

bool LqProblemDefData::readRealMarkers(std::istream& input) {
    int count = 0;
    if (!readMarkerCount(input, count, realMarkerMessages)) {
        return false;
    }
    setRealMarkers({});
    std::string field;
    return readRows(realMarkers, count, [&] { return readRealMarker(input, field); });
}

bool LqProblemDefData::readFixMarkers(std::istream& input) {
    int count = 0;
    if (!readMarkerCount(input, count, fixMarkerMessages)) {
        return false;
    }
    setFixMarkers({});
    std::string field;
    return readRows(fixMarkers, count, [&] { return readFixMarker(input, field); });
}

bool LqProblemDefData::readDoubleMarkers(std::istream& input) {
    int count = 0;
    if (!readMarkerCount(input, count, doubleMarkerMessages)) {
        return false;
    }
    setDoubleMarkers({});
    std::string field;
    return readRows(doubleMarkers, count, [&] { return readDoubleMarker(input, field); });
}

bool LqProblemDefData::readArtificialMarkers(std::istream& input) {
    int count = 0;
    if (!readMarkerCount(input, count, artificialMarkerMessages)) {
        return false;
    }
    setArtificialMarkers({});
    std::string field;
    return readRows(artificialMarkers, count, [&] { return readArtificialMarker(input, field); });
}

bool LqProblemDefData::readMarkers(std::istream& input) {
    return readRealMarkers(input) && readFixMarkers(input) && readDoubleMarkers(input) &&
           readArtificialMarkers(input);
}

// --- The whole file ------------------------------------------------------------------------------

namespace {

/// Reads all sections and merges nothing.
bool readSections(LqProblemDefData& target, std::istream& input) {
    target.clear();
    return LqProblemDefData::readProblemDefHeader(input) && target.readSysVars(input) &&
           target.readBodies(input) && target.readMarkers(input) && target.readIncludes(input);
}

/// Merges the includes of a definition that was read from this file.
bool mergeIncludesOf(LqProblemDefData& target, const LmStr& path) {
    if (target.includes.count() == 0) {
        return true;
    }
    const FileBeingRead reading(path);
    return target.mergeIncludes();
}

} // namespace

bool LqProblemDefData::readProblemDefHeader(std::istream& input) {
    readFormatHeader(input, DataFileFormat::ProblemDef);
    return !errorStands();
}

bool LqProblemDefData::readProblemDefStream(std::istream& input, bool withIncludes) {
    return readSections(*this, input) && (!withIncludes || mergeIncludes());
}

namespace {

enum class FileReading { NotOpened, Failed, Whole };

FileReading readSectionsOfFile(LqProblemDefData& target, const LmStr& path) {
    LmCompIFStream input;
    input.open(path);
    if (errorStands()) {
        return FileReading::NotOpened;
    }
    if (!input.good()) {
        pushErrorf("Unable to open '%s'.", path.c_str());
        return FileReading::NotOpened;
    }
    return readSections(target, input) ? FileReading::Whole : FileReading::Failed;
}

} // namespace

bool LqProblemDefData::readProblemDefFile(const LmStr& path, bool withIncludes) {
    // Files may include each other to any depth, so none stays open while those below it are read.
    const FileReading reading = readSectionsOfFile(*this, path);
    if (reading == FileReading::NotOpened) {
        return false;
    }
    if (reading == FileReading::Failed || (withIncludes && !mergeIncludesOf(*this, path))) {
        pushErrorf("Unable to read '%s'.", path.c_str());
        return false;
    }
    return true;
}

} // namespace quillon
