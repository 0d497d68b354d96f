#include "quillon/scale/ScaleTokens.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/core/StreamTokens.h"

#include <istream>
#include <limits>
#include <string>

namespace quillon::scaleDef {

namespace {

constexpr int endOfInput = std::char_traits<char>::eof();

/// Takes a comment up to its line end, which stays. A comment at the very end of the input ends there.
bool skipComment(std::istream& input) {
    int next = peekChar(input);
    while (next != '\n' && next != endOfInput) {
        skipChars(input, 1);
        next = peekChar(input);
    }
    return next != endOfInput;
}

} // namespace

bool skipBlanks(std::istream& input) {
    for (;;) {
        const int next = peekChar(input);
        if (next == endOfInput) {
            return false;
        }
        if (next == '#') {
            return skipComment(input);
        }
        if (next == '\n' || !isSpace(static_cast<char>(next))) {
            return true;
        }
        skipChars(input, 1);
    }
}

bool skipWhite(std::istream& input) {
    return skipStreamSpace(input);
}

void skipLine(std::istream& input) {
    skipRestOfLine(input, std::numeric_limits<int>::max());
}

void checkRead(std::istream& input, const char* what) {
    checkStream(input, what);
}

float readFloatValue(std::istream& input, const char* what) {
    return readStreamFloat(input, what);
}

LmVec3 readVectorValue(std::istream& input, const char* what) {
    return readStreamVector(input, what);
}

std::int32_t readIntValue(std::istream& input, const char* what) {
    return readStreamInt(input, what);
}

LmStr readNameValue(std::istream& input, const char* what) {
    const LmStr name = readStreamString(input, what);
    return name.isNull() ? LmStr("") : name;
}

} // namespace quillon::scaleDef
