#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <span>
#include <string_view>

namespace quillon {

// What the formats with INCLUDE sections have in common. A section is a block that names another file of the
// same format and says what becomes of its content. Keywords are read without regard to case.

inline constexpr const char* includeKeyword = "INCLUDE";
inline constexpr const char* includeFileNameKey = "FILE_NAME";
inline constexpr const char* includeSuffixKey = "BODY_NAME_SUFFIX";

/// A key of an INCLUDE block, and the one place that its value goes to.
struct IncludeKey {
    /// A key whose value is a text.
    IncludeKey(const char* word, LmStr& place) : keyword(word), text(&place) {}
    /// A key whose value is an integer.
    IncludeKey(const char* word, std::int32_t& place) : keyword(word), number(&place) {}

    const char* keyword;            ///< compared without regard to case
    LmStr* text = nullptr;          ///< takes the value as it is
    std::int32_t* number = nullptr; ///< takes the integer at the front of the value
};

/// Reads the text of one INCLUDE block: the name of the file, with `$` references expanded, and the keys that
/// the format has beside it. A key given twice counts with its last value. Returns false when an error
/// stands.
bool readIncludeBlock(std::string_view blockText, LmStr& fileName, std::span<const IncludeKey> furtherKeys,
                      LmStatus& status = currentStatus());

/// Reads INCLUDE sections up to the end of the input, each by `readBlock` from the block's text, which
/// answers whether that went well. Reports on the current status and returns whether no error stands.
bool readIncludeSections(std::istream& input, const std::function<bool(std::string_view)>& readBlock);

/// Writes the head of an INCLUDE block with the name of the file; a path inside the data directory is written
/// as a `$` reference to it. The lines of further keys and `endIncludeBlock` follow.
void beginIncludeBlock(std::ostream& output, const LmStr& fileName);
/// Writes the line of a text; nothing for an empty one.
void writeIncludeText(std::ostream& output, const char* key, const LmStr& text);
/// Writes the line of a number in the stream's format of integers.
void writeIncludeNumber(std::ostream& output, const char* key, std::int32_t number);
void endIncludeBlock(std::ostream& output); ///< writes the line of the closing brace

} // namespace quillon
