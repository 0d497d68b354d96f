#pragma once

namespace quillon {

// What the reader and the writer of the problem definition file share. The file is read by columns in its
// names, and by tokens elsewhere.

/// A name of at most this many characters fills exactly as many columns; a longer one is quoted.
inline constexpr int nameColumns = 20;
inline constexpr char nameQuote = '"';        ///< around a longer name
inline constexpr char blankBehindQuote = ' '; ///< behind the closing quote

/// Room for the rest of a system variable's line, with one place for the end of the text.
inline constexpr int descriptionBufferSize = 80;

/// How many blanks stand in front of each name field; the reader skips that many characters, whatever they
/// are.
inline constexpr int blanksBeforeBodyName = 1;
inline constexpr int blanksBeforeRealBodyName = 4;
inline constexpr int blanksBeforeFixBodyName = 2;
inline constexpr int blanksBeforeDoubleBodyName = 4;
inline constexpr int blanksBeforeArtificialBodyName = 4;
inline constexpr int blanksBeforeOtherBodyName = 4;

} // namespace quillon
