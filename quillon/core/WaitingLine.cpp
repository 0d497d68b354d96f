#include "quillon/core/WaitingLine.h"

namespace quillon {

std::string_view lineChunkText(std::string_view chunk) {
    const std::string_view text = chunk.substr(0, chunk.find('\0'));
    return text.ends_with('\r') ? text.substr(0, text.size() - 1) : text;
}

std::optional<WaitingLine> findWaitingLine(std::string_view waiting) {
    const std::size_t newline = waiting.substr(0, lineChunkLength + 1).find('\n');
    if (newline == std::string_view::npos) {
        return std::nullopt;
    }
    return WaitingLine{lineChunkText(waiting.substr(0, newline)), newline + 1};
}

} // namespace quillon
