#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

// A colour is an integer, 0xRRGGBB in its low 24 bits.

/// "#rrggbb" with two small hexadecimal digits for each of red, green and blue.
LmStr colourToString(std::uint32_t colour);

/// Reads a colour behind leading white space: "#rrggbb", or "0x" and any number of hexadecimal digits, whose
/// value may exceed 24 bits and is cut to 32. White space or the end of the text must follow. `startOut` and
/// `endOut` receive the indices where the colour starts and ends. On failure `colourOut` is untouched.
bool parseColourPrefix(std::uint32_t& colourOut, int& startOut, int& endOut, const LmStr& text);

/// `parseColourPrefix` on a text that holds the colour and nothing else, not even white space.
bool parseColour(std::uint32_t& colourOut, const LmStr& text);

/// Eats white space and a colour from the front of the text: "Invalid color value." on the current status.
bool readColor(LmStr& text, std::uint32_t& out);

} // namespace quillon
