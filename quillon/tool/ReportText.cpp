#include "quillon/tool/ReportText.h"

#include "quillon/core/NumberPrinting.h"

#include <ostream>

namespace quillon {

namespace {

constexpr std::size_t pieceSize = 1 << 16;

} // namespace

ReportText::ReportText(std::ostream& output) : output(output) {}

ReportText::~ReportText() {
    flush();
}

ReportText& ReportText::operator<<(std::string_view text) {
    gathered += text;
    flushWhenFull();
    return *this;
}

ReportText& ReportText::operator<<(const LmStr& text) {
    return *this << std::string_view(text.c_str(), static_cast<std::size_t>(text.length()));
}

ReportText& ReportText::operator<<(std::int32_t number) {
    char text[numberTextSize];
    return *this << std::string_view(text, formatInt(text, number));
}

ReportText& ReportText::operator<<(float number) {
    char text[numberTextSize];
    return *this << std::string_view(text, formatReal(text, number));
}

void ReportText::flushWhenFull() {
    if (gathered.size() >= pieceSize) {
        flush();
    }
}

void ReportText::flush() {
    output.write(gathered.data(), static_cast<std::streamsize>(gathered.size()));
    gathered.clear();
}

} // namespace quillon
