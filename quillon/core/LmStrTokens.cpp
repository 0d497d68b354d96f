#include "quillon/core/CharClass.h"
#include "quillon/core/LmStr.h"
#include "quillon/core/NumberParsing.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace quillon {

namespace {

/// Whether a number was taken from `begin` and reaches the end of its text.
bool tookAll(const char* begin, const char* end) {
    return end != begin && *end == '\0';
}

} // namespace

// --- Numbers -------------------------------------------------------------------------------------

bool LmStr::toDouble(double& out, bool allowNonFinite) const {
    char* end = nullptr;
    out = parseDouble(c_str(), &end);
    return tookAll(c_str(), end) && (allowNonFinite || std::isfinite(out));
}

bool LmStr::toFloat(float* out, bool allowNonFinite) const {
    double value = 0.0;
    const bool taken = toDouble(value, allowNonFinite);
    if (out != nullptr) {
        *out = static_cast<float>(value);
    }
    return taken;
}

bool LmStr::toLong(std::int64_t& out) const {
    char* end = nullptr;
    out = std::strtol(c_str(), &end, 10);
    return tookAll(c_str(), end);
}

bool LmStr::toInt(std::int32_t& out) const {
    std::int64_t value = 0;
    const bool taken = toLong(value);
    out = static_cast<std::int32_t>(value);
    return taken;
}

bool LmStr::toHex(std::int32_t& out) const {
    char* end = nullptr;
    out = static_cast<std::int32_t>(std::strtol(c_str(), &end, 16));
    return tookAll(c_str(), end);
}

bool LmStr::toBool(bool& out) const {
    struct Word {
        const char* text;
        bool value;
    };
    static constexpr Word words[] = {{"1", true},  {"TRUE", true},   {"ON", true},   {"YES", true},
                                     {"0", false}, {"FALSE", false}, {"OFF", false}, {"NO", false}};
    for (const Word& word : words) {
        if (compareNoCaseWhole(word.text) == 0) {
            out = word.value;
            return true;
        }
    }
    return false;
}

bool LmStr::parseIntPrefix(std::int64_t& out, int& consumed) const {
    char* end = nullptr;
    out = std::strtol(c_str(), &end, 10);
    consumed = static_cast<int>(end - c_str());
    return errno != ERANGE;
}

// --- Tokens --------------------------------------------------------------------------------------

namespace {

struct TokenRange {
    std::size_t begin;
    std::size_t end;
};

/// The first run of characters of `text` that are no delimiters; empty at the end of the text when there is
/// none.
TokenRange findToken(std::string_view text, const char* delimiters) {
    const std::size_t begin = std::min(text.find_first_not_of(delimiters), text.size());
    return {begin, std::min(text.find_first_of(delimiters, begin), text.size())};
}

} // namespace

LmStr LmStr::firstToken(const char* delimiters) const {
    const TokenRange token = findToken(view(), delimiters);
    return token.begin == token.end ? LmStr() : LmStr(view().substr(token.begin, token.end - token.begin));
}

LmStr LmStr::popToken(const char* delimiters) {
    const TokenRange range = findToken(view(), delimiters);
    const LmStr token = firstToken(delimiters);
    if (range.end == view().size()) {
        reset();
    } else {
        remove(0, static_cast<int>(range.end) + 1);
    }
    return token;
}

LmStr LmStr::popLine() {
    const std::size_t lineEnd = view().find('\n');
    if (lineEnd == std::string_view::npos) {
        LmStr whole(*this);
        reset();
        return whole;
    }
    LmStr line(view().substr(0, lineEnd));
    remove(0, static_cast<int>(lineEnd) + 1);
    return line;
}

LmDArray<LmStr> LmStr::split(char c) const {
    LmDArray<LmStr> pieces;
    pieces.setLength(std::int64_t{count(c)} + 1);
    int start = 0;
    for (LmStr& piece : pieces) {
        const std::size_t end = std::min(view().find(c, static_cast<std::size_t>(start)), view().size());
        const int pieceLength = static_cast<int>(end) - start;
        new (&piece) LmStr(midClipped(start, pieceLength));
        start += pieceLength + 1;
    }
    return pieces;
}

LmDArray<LmStr> LmStr::lines() const {
    return split('\n');
}

int LmStr::identifierLength() const {
    const auto isStart = [](char c) { return isLetter(c) || c == '_'; };
    const char* const begin = c_str();
    const char* end = begin;
    if (isStart(*end)) {
        while (isStart(*end) || isDigit(*end)) {
            ++end;
        }
    }
    return static_cast<int>(end - begin);
}

// --- Names with numbers --------------------------------------------------------------------------

int compareNatural(const LmStr& a, const LmStr& b) {
    if (a == b) {
        return 0;
    }
    LmStr restA(a);
    LmStr restB(b);
    for (;;) {
        int digitA = 0;
        int digitB = 0;
        if (!restA.firstDigit(&digitA) || !restB.firstDigit(&digitB) || digitA != digitB) {
            break;
        }
        const int order = std::strncmp(restA.c_str(), restB.c_str(), static_cast<std::size_t>(digitA));
        if (order != 0) {
            return order;
        }
        restA.remove(0, digitA);
        restB.remove(0, digitB);
        std::int64_t numberA = 0;
        std::int64_t numberB = 0;
        int consumedA = 0;
        int consumedB = 0;
        if (!restA.parseIntPrefix(numberA, consumedA) || !restB.parseIntPrefix(numberB, consumedB)) {
            break;
        }
        if (numberA != numberB) {
            return numberA < numberB ? -1 : 1;
        }
        restA.remove(0, consumedA);
        restB.remove(0, consumedB);
        if (restA.length() == 0 || restB.length() == 0) {
            return (restA.length() == 0 ? 0 : 1) - (restB.length() == 0 ? 0 : 1);
        }
    }
    return restA.compare(restB.c_str());
}

void splitTrailingNumber(LmStr& stem, std::int64_t& number, const LmStr& source) {
    const char* const begin = source.c_str();
    const char* digits = begin + source.length();
    while (digits != begin && isDigit(digits[-1])) {
        --digits;
    }
    number = *digits == '\0' ? 1 : std::strtol(digits, nullptr, 10);
    stem = LmStr(begin, static_cast<int>(digits - begin));
}

LmStr nextNumbered(const LmStr& source) {
    LmStr stem;
    std::int64_t number = 0;
    splitTrailingNumber(stem, number, source);
    // Unsigned, so that the number behind the greatest one is still a number.
    stem.appendFormat("%llu", static_cast<unsigned long long>(number) + 1);
    return stem;
}

} // namespace quillon
