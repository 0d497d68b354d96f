#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace quillon {

/// Reads one tagged item: "TAG: value" on one line, or "TAG {", lines and "}".
///
/// A block's text comes back as the value, without indentation, comments and its closing brace; whoever knows
/// its meaning reads it in turn through a `LmISStream`. `isSimple`, which may be null, receives 1 for a value
/// and 0 for a block. At the end of the input the result is true and `tag` is untouched, so callers pass a
/// null one. Returns false when an error has been reported.
bool readTag(std::istream& input, LmStr& tag, LmStr& value, int* isSimple = nullptr,
             LmStatus& status = currentStatus());

/// One tagged item, with its value as a view of the text that it was taken from or of `gathered`.
struct TaggedItem {
    bool found = false;     ///< false at the end of the input
    bool isSimple = false;  ///< whether it is a value, not a block
    std::string tag;        ///< what stands before the ':' or '{'
    std::string_view value; ///< the value, or the text of the block
    std::string gathered;   ///< room for a value that does not lie in the text as it is
};

/// The tagged items of a file or of a block's text, one after another:
///
///     TaggedItems items(input);
///     while (items.next()) { ... items.tag() ... items.value() ... }
///     if (items.failed()) { return; }
class TaggedItems {
public:
    /// The items of a stream from where it stands.
    explicit TaggedItems(std::istream& input, LmStatus& status = currentStatus());
    /// The items of a block's text, which the caller keeps alive and unchanged.
    explicit TaggedItems(std::string_view blockText, LmStatus& status = currentStatus());
    explicit TaggedItems(const LmStr& blockText, LmStatus& status = currentStatus());

    /// Takes the next item. False at the end of the input, or when an error has been reported, as by
    /// `readTag`.
    bool next();
    /// Whether the last `next` ended by an error rather than by the end of the input.
    bool failed() const { return failed_; }

    /// The tag. Behind a `next` that took nothing it is empty, or the tag of the block that could not be
    /// taken.
    LmStr tag() const { return LmStr(std::string_view(item.tag)); }
    /// The value, which token readers may eat.
    LmStr& value();
    /// The value as a view, for `TaggedItems` of a block; valid until `next`.
    std::string_view valueText() const { return item.value; }
    /// Whether the item is "TAG: value" and not a block.
    bool isSimple() const { return item.isSimple; }
    /// Whether the tag is the keyword, without regard to case over the whole length.
    bool tagIs(std::string_view keyword) const;
    /// Whether the tag is the keyword, case included.
    bool tagIsExactly(std::string_view keyword) const { return item.tag == keyword; }

private:
    std::istream* input = nullptr; // null for a block's text
    std::string_view rest;         // what is left of a block's text
    LmStatus& status;
    TaggedItem item;
    LmStr value_; // null until it is asked for
    bool failed_ = false;
};

/// The part of a text in memory that is the text of a block.
struct BlockRange {
    const char* begin; ///< where the text of the block begins
    const char* end;   ///< the position of the closing brace
};

/// Finds the end of a block by the rules of `readTag`, without copying. `text` begins behind the line of the
/// opening brace. On failure reports the same errors, with `tag` in them, and gives an empty range at `text`.
BlockRange findBlockEnd(const char* text, const LmStr& tag, LmStatus& status = currentStatus());

/// True when the text begins with '-' and is not a number.
bool looksLikeOption(const LmStr& text);

} // namespace quillon
