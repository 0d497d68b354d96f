#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillon {

/// Lines are taken from a stream in chunks of at most this many characters.
inline constexpr std::size_t lineChunkLength = 255;

/// The text of a chunk of a line: up to a NUL, if there is one, and without a CR at its end.
std::string_view lineChunkText(std::string_view chunk);

/// A line among characters that wait to be read: its text, and how many characters it takes with its newline.
struct WaitingLine {
    std::string_view text; ///< without its newline
    std::size_t taken;     ///< the characters of the line with its newline
};

/// The line at the start of `waiting`, if it is one chunk and its newline waits too.
std::optional<WaitingLine> findWaitingLine(std::string_view waiting);

} // namespace quillon
