#pragma once

#include "quillon/core/Fatal.h"
#include "quillon/core/LmArray.h"

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <utility>

namespace quillon {

/// The text that one or more `LmStr` values share.
struct LmStrRep {
    char* text;            ///< the characters and a NUL, in a heap block rounded up to a multiple of 4
    std::uint64_t size;    ///< characters of the whole text plus 1 for the NUL
    std::int32_t refCount; ///< how many `LmStr` values use this rep
};

/// Counted, shared text with an offset, copied on write.
///
/// Copying shares the text, and dropping characters at the front moves the offset; parsers eat a string from
/// the left at no cost. The null string stands for "absent" and is distinct from the empty string. Operations
/// that are not marked null-safe end the process by a memory fault on the null string. Lengths and indices
/// count bytes, and no index is checked. A string and its copies belong to one thread.
class LmStr {
public:
    /// The null string.
    LmStr() noexcept = default;
    /// A copy of a NUL-terminated text; a null pointer gives the null string.
    LmStr(const char* text);
    /// A text of exactly `count` characters: those at `text`, and NULs behind its end should it be shorter. A
    /// null pointer gives the null string.
    LmStr(const char* text, int count);
    /// A copy of the viewed characters up to the first NUL, since strings hold none. Never null.
    explicit LmStr(std::string_view text);
    LmStr(const LmStr& other) noexcept : rep(other.rep), offset(other.offset) {
        if (rep != nullptr) {
            ++rep->refCount;
        }
    }
    LmStr(LmStr&& other) noexcept
        : rep(std::exchange(other.rep, nullptr)), offset(std::exchange(other.offset, 0)) {}
    ~LmStr() { release(); }

    LmStr& operator=(const LmStr& other) noexcept {
        LmStr copy(other);
        return *this = std::move(copy);
    }
    LmStr& operator=(LmStr&& other) noexcept {
        std::swap(rep, other.rep);
        std::swap(offset, other.offset);
        return *this;
    }
    /// Assigns a copy of `text`, null for a null pointer. A text that is the tail of this very string only
    /// moves the offset.
    LmStr& operator=(const char* text);

    // --- Access ----------------------------------------------------------------------------------

    /// Makes the string null. Null-safe, as are construction, assignment and destruction.
    void reset() {
        release();
        rep = nullptr;
        offset = 0;
    }
    /// True for the null string. Null-safe.
    bool isNull() const { return rep == nullptr; }
    /// The number of characters.
    int length() const { return static_cast<int>(existingRep().size - offset - 1); }
    /// The text, NUL-terminated; valid until the string is changed.
    const char* c_str() const { return text(); }
    /// The text as a view; valid until the string is changed. Null-safe: empty for the null string.
    std::string_view view() const {
        return isNull() ? std::string_view() : std::string_view(text(), static_cast<std::size_t>(length()));
    }
    /// A copy of the text that the caller frees with `free`.
    char* duplicate() const;
    /// True for 0 up to length minus 1.
    bool isValidIndex(int i) const;
    /// Aborts the process unless the first NUL stands exactly at the end. Null-safe.
    void checkTerminator() const;

    // --- Finding. `found` receives the index unless it is null -----------------------------------

    /// Whether the text or character occurs, and the index of the first occurrence.
    bool find(const char* text, int* found = nullptr) const;
    bool find(const LmStr& text, int* found = nullptr) const;
    bool find(char c, int* found = nullptr) const;
    /// The n-th occurrence, counted from 1. With n = 0 true, and `found` is not written.
    bool findNth(char c, int n, int* found = nullptr) const;
    bool findLast(char c, int* found = nullptr) const; ///< the index of the last occurrence
    /// The index of the last occurrence, 2147483647 when there is none.
    int lastIndexOf(char c) const;
    /// The number of occurrences.
    int count(char c) const;
    /// The index of the first character from '0' to '9'.
    bool firstDigit(int* found = nullptr) const;

    // --- Substrings: new values ------------------------------------------------------------------

    /// The last n characters, sharing the text; a new empty string for n of 0 or less.
    LmStr right(int n) const;
    /// Everything behind the first n characters.
    LmStr skip(int n) const;
    /// The first n characters, padded with blanks beyond the length.
    LmStr left(int n) const;
    /// Everything but the last n characters.
    LmStr dropRight(int n) const;
    /// `count` characters from `start` on, padded with blanks beyond the end. A count below 1 gives the whole
    /// string whatever `start` says; callers depend on it.
    LmStr mid(int start, int count) const;
    /// As `mid`, with the count first clipped to what lies behind `start`; a clipped count of 0 is empty.
    LmStr midClipped(int start, int count) const;
    /// A copy without that range.
    LmStr without(int start, int count) const;

    // --- Changing in place -----------------------------------------------------------------------

    void toUpper(); ///< letters of ASCII only
    void toLower(); ///< letters of ASCII only
    /// Cuts, or appends blanks, to n characters.
    void setLength(int n);
    /// Appends n copies of c; does nothing for n below 1.
    void appendFill(int n, char c);
    /// Puts n copies of c in front; does nothing for n below 1.
    void prependFill(int n, char c);
    void setChar(int i, char c); ///< puts c at index i
    /// Removes a range. At the front of a text that is shared, or of which more than half remains, only the
    /// offset moves.
    void remove(int start, int count);
    void removeAt(int i); ///< removes one character
    /// Removes the characters from index `from` up to, not including, `to`.
    void removeRange(int from, int to);
    /// Removes the first occurrence of the text, if there is one.
    void removeFirst(const char* text);
    /// Puts the text in place of a range.
    void replaceRange(int start, int count, const char* text);
    /// Replaces the first occurrence, if there is one.
    void replaceFirst(const char* target, const char* replacement);
    /// Replaces every occurrence; replacement text is not searched again.
    void replaceAll(const char* target, const char* replacement);
    /// Inserts the first n characters of the text in front of index i. The text may lie in this string.
    void insert(int i, const char* text, int n);
    void insert(int i, const char* text);
    void insert(int i, char c);
    /// Appends a copy.
    void append(const char* text);
    void append(const LmStr& text);
    void append(std::string_view text);
    LmStr& operator+=(const char* text); ///< appends a copy
    LmStr& operator+=(const LmStr& text);
    LmStr& operator+=(char c);
    /// Appends the text cut or blank-padded to exactly `width` characters.
    void appendPadded(const char* text, int width);
    /// Appends `printf` output, cut at 1023 characters.
    void appendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Replaces the string by `printf` output, cut at 1023 characters. Null-safe.
    void format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Removes leading white space; with the flag the removal stops at the first LF or CR.
    void trimLeft(bool stopAtNewline = false);
    void trimRight(); ///< removes white space at the end
    /// `trimLeft` and `trimRight`.
    void trim();
    /// Removes every run of white space, wherever it stands.
    void removeWhitespace();
    /// Removes the indentation that all lines with text have in common. Empty lines at the top vanish.
    void removeCommonIndent();

    // --- Comparing -------------------------------------------------------------------------------

    /// `strcmp` of the texts.
    int compare(const char* text) const;
    /// `strncmp` of the texts over at most n characters.
    int compare(const char* text, int n) const;
    /// `strncmp` over the length of `text`: 0 on a match, as `strncmp` gives, and not a truth value.
    int startsWith(const char* text) const;
    bool endsWith(const LmStr& text) const; ///< whether the end is that text
    /// Compares at most n characters without regard to case: -1, 0 or 1; 0 for n below 1.
    int compareNoCase(const char* text, int n) const;
    /// `compareNoCase` over the length of `text`.
    int compareNoCasePrefix(const char* text) const;
    /// `compareNoCase` over the greater of the two lengths.
    int compareNoCaseWhole(const char* text) const;

    // --- Numbers: true when the whole string was taken -------------------------------------------

    /// `strtod`. Infinite and NaN results fail unless the flag is set. `out` is written in all cases.
    bool toDouble(double& out, bool allowNonFinite = false) const;
    /// `toDouble`, cut to 32 bits. `out` may be null.
    bool toFloat(float* out, bool allowNonFinite = false) const;
    /// `strtol` with base 10, into 64 and 32 bits.
    bool toLong(std::int64_t& out) const;
    bool toInt(std::int32_t& out) const; ///< into 32 bits
    /// `strtol` with base 16, into 32 bits.
    bool toHex(std::int32_t& out) const;
    /// "1", "TRUE", "ON", "YES" and "0", "FALSE", "OFF", "NO", words in any case; else fails, writes nothing.
    bool toBool(bool& out) const;
    /// `strtol` with base 10 on the start of the string; `consumed` is the number of characters taken. Fails
    /// only if `errno` then holds ERANGE, and does not clear it first: callers see an earlier range error.
    bool parseIntPrefix(std::int64_t& out, int& consumed) const;

    // --- Tokens and lines ------------------------------------------------------------------------

    /// The first run of characters that are no delimiters; null when there is none. Null-safe.
    LmStr firstToken(const char* delimiters) const;
    /// As `firstToken`; the token and one delimiter behind it leave this string, which becomes null when the
    /// token reaches its end or there is none. Null-safe.
    LmStr popToken(const char* delimiters);
    /// The text before the first LF, which leaves this string with the LF; without LF the whole text, and
    /// this string becomes null. Null-safe.
    LmStr popLine();
    /// The pieces between occurrences of c.
    LmDArray<LmStr> split(char c) const;
    /// `split` at LF.
    LmDArray<LmStr> lines() const;
    /// The length of the identifier at the front: a letter or '_', then letters, digits and '_'; 0 if none.
    int identifierLength() const;

    // --- Stream input ----------------------------------------------------------------------------

    /// Takes the next word from the stream, as text extraction does. A stream that is not good after leading
    /// white space leaves the string as it is; the last word of a file does not count as a failure.
    void readWord(std::istream& input);
    /// Takes one line of any length, without its LF, CR LF or CR; null at the end of the input.
    void readLine(std::istream& input);
    /// Takes at most `max` characters up to the delimiter, which stays in the stream.
    void readUntil(std::istream& input, int max, char delimiter);

    // --- Names and layout ------------------------------------------------------------------------

    /// How many '/' characters end the string.
    int trailingSlashCount() const;
    /// A new string with LF in place of the blanks at which lines of more than `width` columns break.
    LmStr wordWrap(int width, int tabWidth) const;

private:
    LmStrRep* rep = nullptr;
    std::uint64_t offset = 0;

    LmStrRep& existingRep() const {
        if (rep == nullptr) [[unlikely]] {
            endByMemoryFault();
        }
        return *rep;
    }
    char* text() const { return existingRep().text + offset; }
    void release() noexcept {
        if (rep != nullptr && --rep->refCount == 0) {
            freeRep();
        }
    }
    void freeRep() noexcept;
    void unshare();
    void resizeRep(std::uint64_t size);
    void assignCopy(const char* text, std::uint64_t count);
    void insertForeign(std::uint64_t i, const char* text, std::uint64_t n);
    void openGap(std::uint64_t start, std::uint64_t oldCount, std::uint64_t newCount);
};

template <>
struct MovesByBytes<LmStr> : std::true_type {};

/// Writes the text with no blanks added and no quoting.
std::ostream& operator<<(std::ostream& output, const LmStr& text);
/// `LmStr::readWord`.
std::istream& operator>>(std::istream& input, LmStr& text);
/// Each gives a new string: both texts, one behind the other. None may be null.
LmStr operator+(const LmStr& left, const char* right);
LmStr operator+(const LmStr& left, const LmStr& right);
LmStr operator+(const char* left, const LmStr& right);

/// Equality of the texts. Null-safe: two nulls are equal, and null is unequal to anything else.
bool operator==(const LmStr& left, const LmStr& right);
bool operator==(const LmStr& left, const char* right);
/// The order of `strcmp`, byte by byte. Not null-safe.
std::strong_ordering operator<=>(const LmStr& left, const LmStr& right);
std::strong_ordering operator<=>(const LmStr& left, const char* right);

/// Compares names with numbers in them, so that "Arm2" comes before "Arm10". Equality is null-safe.
int compareNatural(const LmStr& a, const LmStr& b);

/// Splits off the digits at the end: `stem` is the text before them and `number` their value, or the whole
/// of `source` and 1 when there are none.
void splitTrailingNumber(LmStr& stem, std::int64_t& number, const LmStr& source);
/// The next name of a numbered series: "Arm" gives "Arm2", "Arm2" gives "Arm3", "A09" gives "A10".
LmStr nextNumbered(const LmStr& source);

/// Formats a text that was never meant to be a format, reading no argument: "%%" gives "%", every other
/// conversion is filled as from a zero or an empty text. Cut at 1023 characters.
LmStr formatWithoutArguments(const char* format);

} // namespace quillon
