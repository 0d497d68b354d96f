#include "quillon/core/TokenReader.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/LmDoubleLinkedList.h"
#include "quillon/core/NumberParsing.h"

#include <cmath>
#include <cstdlib>
#include <memory>

namespace quillon {

LmStr readIdentifier(LmStr& text, LmStatus& status) {
    text.trimLeft();
    const int length = text.identifierLength();
    if (length == 0) {
        status.pushErrorf(text.length() == 0 ? "Expecting identifier." : "Invalid identifier.");
        return {};
    }
    LmStr identifier = text.left(length);
    text.remove(0, length);
    return identifier;
}

// --- Numbers -------------------------------------------------------------------------------------

namespace {

/// Removes the number that begins the text and ends at `end`; reports when there is none.
bool eatNumber(LmStr& text, const char* end, const char* error, LmStatus& status) {
    const auto length = static_cast<int>(end - text.c_str());
    if (length == 0) {
        status.pushErrorf("%s", error);
        return false;
    }
    text.remove(0, length);
    return true;
}

constexpr const char* invalidInteger = "Invalid integer value.";

} // namespace

bool readInt(LmStr& text, std::int64_t& out, LmStatus& status) {
    text.trimLeft();
    char* end = nullptr;
    const std::int64_t value = std::strtol(text.c_str(), &end, 10);
    if (!eatNumber(text, end, invalidInteger, status)) {
        return false;
    }
    out = value;
    return true;
}

bool readInt(LmStr& text, std::int32_t& out, LmStatus& status) {
    std::int64_t value = 0;
    if (!readInt(text, value, status)) {
        return false;
    }
    out = static_cast<std::int32_t>(value);
    return true;
}

bool readUnsigned(LmStr& text, std::uint64_t& out) {
    text.trimLeft();
    char* end = nullptr;
    const std::uint64_t value = std::strtoul(text.c_str(), &end, 0);
    if (!eatNumber(text, end, invalidInteger, currentStatus())) {
        return false;
    }
    out = value;
    return true;
}

bool readUnsigned(LmStr& text, std::uint32_t& out) {
    std::uint64_t value = 0;
    if (!readUnsigned(text, value)) {
        return false;
    }
    out = static_cast<std::uint32_t>(value);
    return true;
}

bool readBool(LmStr& text, bool& out, LmStatus& status) {
    text.trimLeft();
    const char* end = text.c_str();
    while (isLetter(*end) || isDigit(*end)) {
        ++end;
    }
    const auto length = static_cast<int>(end - text.c_str());
    if (!LmStr(text.c_str(), length).toBool(out)) {
        status.pushErrorf("Invalid boolean value.");
        return false;
    }
    text.remove(0, length);
    return true;
}

bool readDouble(LmStr& text, double& out, bool reportErrors, LmStatus& status) {
    text.trimLeft();
    char* end = nullptr;
    const double value = parseDouble(text.c_str(), &end);
    if (end == text.c_str() || !std::isfinite(value)) {
        if (reportErrors) {
            status.pushErrorf(text.length() == 0 ? "No value given." : "Invalid floating point value.");
        }
        return false;
    }
    text.remove(0, static_cast<int>(end - text.c_str()));
    out = value;
    return true;
}

bool readFloat(LmStr& text, float& out, LmStatus& status) {
    double value = 0.0;
    if (!readDouble(text, value, true, status)) {
        return false;
    }
    out = static_cast<float>(value);
    return true;
}

bool readVector(LmStr& text, std::array<float, 3>& out, LmStatus& status) {
    std::array<float, 3> vector{};
    for (std::size_t axis = 0; axis < vector.size(); ++axis) {
        if (!readFloat(text, vector[axis], status)) {
            pushErrorf("Invalid %c component", "XYZ"[axis]);
            return false;
        }
    }
    out = vector;
    return true;
}

bool readVectorList(LmStr& text, LmDoubleLinkedList& list) {
    for (text.trimLeft(); text.length() > 0; text.trimLeft()) {
        auto vector = std::make_unique<std::array<float, 3>>();
        if (!readVector(text, *vector)) {
            return false;
        }
        list.append(vector.release());
    }
    return true;
}

// --- Words ---------------------------------------------------------------------------------------

bool readDelimitedToken(LmStr& text, const char* delimiters, LmStr& out, LmStatus& status) {
    // A text that earlier calls have eaten up is null.
    if (!text.isNull()) {
        text.trimLeft();
    }
    out = text.popToken(delimiters);
    if (out.isNull()) {
        out = "";
        status.pushErrorf("Expecting token.");
        return false;
    }
    return true;
}

bool readUntilChar(LmStr& text, char c, LmStr& out) {
    text.trimLeft();
    int length = 0;
    if (!text.find(c, &length)) {
        pushErrorf("'%c' expected.", c);
        return false;
    }
    out = text.left(length);
    text.remove(0, length);
    return true;
}

bool expect(LmStr& text, const char* word, LmStatus& status) {
    text.trimLeft();
    if (text.startsWith(word) != 0) {
        status.pushErrorf("'%s' expected.", word);
        return false;
    }
    text.remove(0, LmStr(word).length());
    return true;
}

bool readQuoted(LmStr& text, char q, LmStr& out, LmStatus& status) {
    const char quote[] = {q, '\0'};
    if (!expect(text, quote, status)) {
        return false;
    }
    const int length = text.length();
    int end = 0;
    while (end < length && text.c_str()[end] != q) {
        end += text.c_str()[end] == '\\' ? 2 : 1;
    }
    if (end >= length) {
        status.pushErrorf("No closing '%c' found.", q);
        return false;
    }
    out = text.left(end);
    text.remove(0, end);
    const char escapedQuote[] = {'\\', q, '\0'};
    out.replaceAll(escapedQuote, quote);
    out.replaceAll("\\\\", "\\");
    return expect(text, quote, status);
}

// --- Skipping ------------------------------------------------------------------------------------

void skipLine(LmStr& text) {
    int newline = 0;
    if (text.find('\n', &newline)) {
        text.remove(0, newline + 1);
    } else {
        text = "";
    }
}

void skipSpaceAndComments(LmStr& text, bool comments, bool stopAtNewline) {
    text.trimLeft(stopAtNewline);
    while (comments && *text.c_str() == '#') {
        skipLine(text);
        text.trimLeft(stopAtNewline);
    }
}

} // namespace quillon
