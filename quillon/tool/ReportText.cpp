#include "quillon/tool/ReportText.h"

#include "quillon/core/NumberPrinting.h"

#include <ostream>

namespace quillon {

ReportText::ReportText(std::ostream& output)
    : output(output), piece(std::make_unique_for_overwrite<char[]>(pieceSize)) {}

ReportText::~ReportText() {
    flush();
}

ReportText& ReportText::operator<<(std::int32_t number) {
    used = static_cast<std::size_t>(formatInt(roomForNumber(), number) - piece.get());
    return *this;
}

ReportText& ReportText::operator<<(float number) {
    used = static_cast<std::size_t>(formatReal(roomForNumber(), number) - piece.get());
    return *this;
}

char* ReportText::roomForNumber() {
    if (pieceSize - used < numberTextSize) {
        flush();
    }
    return piece.get() + used;
}

ReportText& ReportText::appendBeyondPiece(std::string_view text) {
    flush();
    if (text.size() > pieceSize) {
        output.write(text.data(), static_cast<std::streamsize>(text.size()));
        return *this;
    }
    return *this << text;
}

void ReportText::flush() {
    output.write(piece.get(), static_cast<std::streamsize>(used));
    used = 0;
}

} // namespace quillon
