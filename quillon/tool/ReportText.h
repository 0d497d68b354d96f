#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace quillon {

/// Gathers the text of a report and hands it to a stream in large pieces, the last one on destruction.
/// Numbers come out as a stream with default flags prints them.
class ReportText {
public:
    explicit ReportText(std::ostream& output);
    ReportText(const ReportText&) = delete;
    ReportText& operator=(const ReportText&) = delete;
    ~ReportText();

    ReportText& operator<<(std::string_view text);
    ReportText& operator<<(const char* text) { return *this << std::string_view(text); }
    /// A null string ends the process by a memory fault.
    ReportText& operator<<(const LmStr& text);
    ReportText& operator<<(std::int32_t number);
    /// A 32-bit real with 6 significant digits.
    ReportText& operator<<(float number);

private:
    void flushWhenFull();
    void flush();

    std::ostream& output;
    std::string gathered;
};

} // namespace quillon
