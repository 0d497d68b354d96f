#include "quillon/core/DataHeader.h"

#include "quillon/core/NumberPrinting.h"
#include "quillon/core/StreamExtraction.h"

#include <charconv>
#include <cmath>
#include <istream>
#include <ostream>
#include <string>

namespace quillon {

const LmStr problemSpecFileId("Kym Problem Specification File");
const LmStr problemDefFileId("Kym Problem Definition File");
const LmStr modelFileId("Kym Model File");
const LmStr limitsFileId("Kym System Variable Limits File");
const LmStr scaleDefFileId("Kym Scale Definition File");
const LmStr measuredFileId("Kym Measured File");

namespace {

// --- The formats' own steps and words ------------------------------------------------------------

enum class IdLine {
    Part79,  ///< at most 79 characters; what is behind them is skipped
    Whole79, ///< a line of at most 79 characters
    Whole80, ///< a line of at most 80 characters
};

enum class Letter {
    Any,     ///< behind white space, one character of any kind
    AnyNext, ///< the very next character
    V,       ///< behind white space, a "v"
};

/// How a format reads its header. The formats grew one by one, and users know the words of each.
struct HeaderWords {
    IdLine idLine;
    const char* idUnreadable;
    const char* idDiffers;
    const char* notA; ///< begins the sentence over a bad id, or null
    Letter letter;
    const char* letterUnreadable;
    const char* numberUnreadable;
    bool exactVersion;    ///< takes no other version with the same whole part
    bool singlePrecision; ///< shows the number cut to 32 bits
    bool skipsRestOfVersionLine;
    const char* refused; ///< a format of two texts
};

constexpr HeaderWords genericWords = {
    .idLine = IdLine::Part79,
    .idUnreadable = "Unable to read data file header.",
    .idDiffers = "Invalid datafile header id.",
    .notA = "File is not a ",
    .letter = Letter::Any,
    .letterUnreadable = "Unable to read data file version.",
    .numberUnreadable = "Unable to read data file version.",
    .exactVersion = false,
    .singlePrecision = false,
    .skipsRestOfVersionLine = true,
    .refused = "Unsupported datafile version %s. Application uses version %s.",
};

constexpr HeaderWords problemSpecWords = {
    .idLine = IdLine::Whole79,
    .idUnreadable = "Unable to read from file.",
    .idDiffers = "Invalid datafile type.",
    .notA = nullptr,
    .letter = Letter::V,
    .letterUnreadable = "Unable to read version identifier.",
    .numberUnreadable = "Unable to read datafile version number.",
    .exactVersion = true,
    .singlePrecision = false,
    .skipsRestOfVersionLine = true,
    .refused = "Unsupported datafile version %s.  Application supports version %s.",
};

constexpr HeaderWords modelWords = {
    .idLine = IdLine::Part79,
    .idUnreadable = "Unable to read Header Identification.",
    .idDiffers = "Invalid datafile header id.",
    .notA = nullptr,
    .letter = Letter::Any,
    .letterUnreadable = "Unable to read version number.",
    .numberUnreadable = "Unable to read version number.",
    .exactVersion = false,
    .singlePrecision = true,
    .skipsRestOfVersionLine = true,
    .refused = "Unsupported datafile version %s. Application uses version %s.",
};

constexpr HeaderWords taggedWords = {
    .idLine = IdLine::Whole80,
    .idUnreadable = "Error reading file.",
    .idDiffers = "Invalid datafile header id.",
    .notA = nullptr,
    .letter = Letter::AnyNext,
    .letterUnreadable = "Unable to read datafile version number.",
    .numberUnreadable = "Unable to read datafile version number.",
    .exactVersion = false,
    .singlePrecision = false,
    .skipsRestOfVersionLine = false,
    .refused = "Unsupported datafile version %s.  Application uses version %s.",
};

struct FormatRow {
    const LmStr& id;
    float version;
    const HeaderWords& words;
};

/// The formats in the order of `DataFileFormat`.
const FormatRow formats[] = {
    {problemSpecFileId, problemSpecFileVersion, problemSpecWords},
    {problemDefFileId, problemDefFileVersion, genericWords},
    {modelFileId, modelFileVersion, modelWords},
    {limitsFileId, limitsFileVersion, taggedWords},
    {scaleDefFileId, scaleDefFileVersion, taggedWords},
    {measuredFileId, measuredFileVersion, taggedWords},
};

// --- Reading -------------------------------------------------------------------------------------

/// The number with two decimals, whatever the locale of the process.
std::string twoDecimals(double number) {
    char text[400];
    const std::to_chars_result result =
        std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 2);
    return {text, result.ptr};
}

/// The steps of reading one header, in their order.
class HeaderReader {
public:
    HeaderReader(std::istream& input, const LmStr& id, float version, const HeaderWords& words,
                 LmStatus& status)
        : input(input), id(id), version(version), words(words), status(status) {}

    bool read() { return readId() && readLetter() && readNumber() && testVersion(); }
    bool hasNumber() const { return numberTaken; }
    double number() const { return versionRead; }

private:
    bool fail(const char* message) {
        status.pushErrorf("%s", message);
        return false;
    }

    bool failId(const char* message) {
        fail(message);
        if (words.notA != nullptr) {
            status.pushError(LmStr(words.notA) + id);
        }
        return false;
    }

    bool readIdLine(std::string& line) {
        switch (words.idLine) {
        case IdLine::Whole79:
            return extractLine(input, line, 80);
        case IdLine::Whole80:
            return extractLine(input, line, 81);
        case IdLine::Part79:
            break;
        }
        const bool taken = extractPartOfLine(input, line, 80);
        if (taken) {
            skipRestOfLine(input);
        }
        return taken;
    }

    bool readId() {
        std::string line;
        if (!readIdLine(line)) {
            return failId(words.idUnreadable);
        }
        return line.starts_with(id.view()) || failId(words.idDiffers);
    }

    bool readLetter() {
        char letter = '\0';
        if (words.letter != Letter::AnyNext) {
            skipWhiteSpace(input);
        }
        if (!extractChar(input, letter)) {
            return fail(words.letterUnreadable);
        }
        return words.letter != Letter::V || letter == 'v' || fail("Version identifier not found.");
    }

    bool readNumber() {
        numberTaken = extractDouble(input, versionRead);
        if (!numberTaken) {
            fail(words.numberUnreadable);
        }
        if (words.skipsRestOfVersionLine) {
            skipRestOfLine(input);
        }
        return numberTaken;
    }

    bool testVersion() {
        const double wanted = static_cast<double>(version);
        const bool taken =
            words.exactVersion ? versionRead == wanted : std::floor(versionRead) == std::floor(wanted);
        if (!taken) {
            const double shown =
                words.singlePrecision ? static_cast<double>(narrowed(versionRead)) : versionRead;
            LmStr message(words.refused);
            message.replaceFirst("%s", twoDecimals(shown).c_str());
            message.replaceFirst("%s", twoDecimals(wanted).c_str());
            status.pushError(message);
        }
        return taken;
    }

    std::istream& input;
    const LmStr& id;
    float version;
    const HeaderWords& words;
    LmStatus& status;
    double versionRead = 0.0;
    bool numberTaken = false;
};

} // namespace

bool readDataHeader(std::istream& input, const LmStr& id, LmStatus& status, float version) {
    return HeaderReader(input, id, version, genericWords, status).read();
}

bool readFormatHeader(std::istream& input, DataFileFormat format, LmStatus& status, float* versionRead) {
    const FormatRow& row = formats[static_cast<std::size_t>(format)];
    HeaderReader reader(input, row.id, row.version, row.words, status);
    const bool good = reader.read();
    if (versionRead != nullptr && reader.hasNumber()) {
        *versionRead = narrowed(reader.number());
    }
    return good;
}

// --- Writing -------------------------------------------------------------------------------------

namespace {

void setVersionFormat(std::ostream& output) {
    output << std::fixed << std::left;
    output.precision(2);
}

} // namespace

void writeDataHeader(std::ostream& output, const LmStr& id, float version) {
    const FormatGuard restored(output);
    output << id << "\nv";
    setVersionFormat(output);
    printReal(output, version);
    output << "\n";
}

bool writeCheckedDataHeader(std::ostream& output, const LmStr& id, float version) {
    output << id << std::endl;
    if (output.fail()) {
        pushErrorf("Unable to write data file id.");
        return false;
    }
    output << "v";
    setVersionFormat(output);
    printReal(output, version);
    output << std::endl;
    if (output.fail()) {
        pushErrorf("Unable to write data file version.");
        return false;
    }
    return true;
}

} // namespace quillon
