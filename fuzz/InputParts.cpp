#include "fuzz/InputParts.h"

namespace quillon::fuzz {

std::vector<std::string> partsOf(std::string_view input, std::size_t count) {
    std::vector<std::string> parts;
    while (parts.size() + 1 < count) {
        const std::size_t end = input.find(partSeparator);
        parts.push_back(lineEnded(input.substr(0, end)));
        input = end == std::string_view::npos ? std::string_view() : input.substr(end + partSeparator.size());
    }
    parts.push_back(lineEnded(input));
    return parts;
}

std::string lineEnded(std::string_view text) {
    std::string ended(text);
    if (ended.empty() || ended.back() != '\n') {
        ended += '\n';
    }
    return ended;
}

} // namespace quillon::fuzz
