#include "quillon/core/CharClass.h"
#include "quillon/core/LmStr.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quillon {

int LmStr::trailingSlashCount() const {
    const std::size_t last = std::string_view(c_str()).find_last_not_of('/');
    return length() - static_cast<int>(last == std::string_view::npos ? 0 : last + 1);
}

LmStr LmStr::wordWrap(int width, int tabWidth) const {
    const std::string_view source(c_str());
    std::string result;
    std::size_t lineStart = 0;
    std::size_t lastBreak = 0;
    int column = 0;
    for (std::size_t i = 0; i < source.size();) {
        const char c = source[i];
        if (c == ' ' || c == '\t' || c == '\n') {
            lastBreak = i;
        }
        column = c == '\t' ? (column / tabWidth + 1) * tabWidth : column + 1;
        if ((c != '\n' && column <= width) || lastBreak == lineStart) {
            ++i;
            continue;
        }
        result.append(source, lineStart, lastBreak - lineStart) += '\n';
        lastBreak = std::min(source.find_first_not_of(" \t", lastBreak), source.size());
        if (lastBreak < source.size() && source[lastBreak] == '\n') {
            ++lastBreak;
        }
        i = lineStart = lastBreak;
        column = 0;
    }
    result.append(source, lineStart);
    return LmStr(std::string_view(result));
}

namespace {

std::size_t countLeading(std::string_view line, char c) {
    return std::min(line.find_first_not_of(c), line.size());
}

/// The greatest run of one white-space character that all lines with text begin with; 0 when there is none.
std::size_t commonRun(const std::vector<std::string_view>& lines) {
    char chosen = '\0';
    std::size_t smallest = std::string_view::npos;
    for (const std::string_view line : lines) {
        if (line.empty()) {
            continue;
        }
        if (chosen == '\0' && isSpace(line.front())) {
            chosen = line.front();
        }
        smallest = std::min(smallest, chosen == '\0' ? 0 : countLeading(line, chosen));
    }
    return smallest == std::string_view::npos ? 0 : smallest;
}

} // namespace

void LmStr::removeCommonIndent() {
    const LmStr source(c_str());
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start <= source.view().size();) {
        const std::size_t end = std::min(source.view().find('\n', start), source.view().size());
        lines.push_back(source.view().substr(start, end - start));
        start = end + 1;
    }
    for (std::size_t run = commonRun(lines); run != 0; run = commonRun(lines)) {
        for (std::string_view& line : lines) {
            line.remove_prefix(std::min(run, line.size()));
        }
    }
    std::string result;
    for (const std::string_view line : lines) {
        if (!result.empty()) {
            result += '\n';
        }
        result += line;
    }
    *this = LmStr(std::string_view(result));
}

} // namespace quillon
