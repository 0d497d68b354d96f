#pragma once

#include "quillon/core/LmStr.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace quillon {

/// Gathers the text of a report and hands it to a stream in large pieces, the last one on destruction.
/// Numbers come out as a stream with default flags prints them.
class ReportText {
public:
    explicit ReportText(std::ostream& output); ///< for a stream that outlives it
    ReportText(const ReportText&) = delete;
    ReportText& operator=(const ReportText&) = delete;
    ~ReportText();

    /// Texts and numbers as they are, one behind the other.
    ReportText& operator<<(std::string_view text) {
        if (text.size() > pieceSize - used) {
            return appendBeyondPiece(text);
        }
        std::copy(text.begin(), text.end(), piece.get() + used);
        used += text.size();
        return *this;
    }
    ReportText& operator<<(const char* text) { return *this << std::string_view(text); }
    /// A null string ends the process by a memory fault.
    ReportText& operator<<(const LmStr& text) {
        return *this << std::string_view(text.c_str(), static_cast<std::size_t>(text.length()));
    }
    ReportText& operator<<(std::int32_t number);
    /// A 32-bit real with 6 significant digits.
    ReportText& operator<<(float number);

private:
    static constexpr std::size_t pieceSize = 1 << 16;

    ReportText& appendBeyondPiece(std::string_view text);
    /// The end of what is gathered, with room for a number behind it.
    char* roomForNumber();
    void flush();

    std::ostream& output;
    std::unique_ptr<char[]> piece;
    std::size_t used = 0;
};

} // namespace quillon
