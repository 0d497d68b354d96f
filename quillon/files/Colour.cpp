#include "quillon/files/Colour.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/LmStatus.h"

#include <cstdlib>

namespace quillon {

namespace {

constexpr int digitsOfHexForm = 6;

constexpr bool isHexDigit(char c) {
    return isDigit(c) || (upperOf(c) >= 'A' && upperOf(c) <= 'F');
}

constexpr unsigned component(std::uint32_t colour, int shift) {
    return (colour >> shift) & 0xFFU;
}

} // namespace

LmStr colourToString(std::uint32_t colour) {
    LmStr text;
    text.format("#%02x%02x%02x", component(colour, 16), component(colour, 8), component(colour, 0));
    return text;
}

bool parseColourPrefix(std::uint32_t& colourOut, int& startOut, int& endOut, const LmStr& text) {
    const char* const begin = text.c_str();
    const char* start = begin;
    while (isSpace(*start)) {
        ++start;
    }
    if (*start == '\0') {
        return false;
    }
    startOut = static_cast<int>(start - begin);
    const bool isHexForm = *start == '#';
    if (!isHexForm && !(start[0] == '0' && start[1] == 'x')) {
        return false;
    }
    const char* const digits = start + (isHexForm ? 1 : 2);
    const char* end = digits;
    while (isHexDigit(*end)) {
        ++end;
    }
    endOut = static_cast<int>(end - begin);
    const auto count = end - digits;
    if ((isHexForm ? count != digitsOfHexForm : count == 0) || !(*end == '\0' || isSpace(*end))) {
        return false;
    }
    colourOut = static_cast<std::uint32_t>(std::strtoul(digits, nullptr, 16));
    return true;
}

bool parseColour(std::uint32_t& colourOut, const LmStr& text) {
    std::uint32_t colour = 0;
    int start = 0;
    int end = 0;
    if (!parseColourPrefix(colour, start, end, text) || end - start != text.length()) {
        return false;
    }
    colourOut = colour;
    return true;
}

bool readColor(LmStr& text, std::uint32_t& out) {
    text.trimLeft();
    int start = 0;
    int end = 0;
    if (!parseColourPrefix(out, start, end, text)) {
        pushErrorf("Invalid color value.");
        return false;
    }
    text.remove(0, end);
    return true;
}

} // namespace quillon
