#include "quillon/core/CharClass.h"
#include "quillon/core/Fatal.h"
#include "quillon/core/LmStr.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace quillon {

// --- Length and filling --------------------------------------------------------------------------

void LmStr::setLength(int n) {
    const int oldLength = length();
    if (n > oldLength) {
        appendFill(n - oldLength, ' ');
    } else if (n < oldLength) {
        const int kept = std::max(n, 0);
        unshare();
        openGap(static_cast<std::uint64_t>(kept), static_cast<std::uint64_t>(oldLength - kept), 0);
    }
}

void LmStr::appendFill(int n, char c) {
    if (n < 1) {
        return;
    }
    const int oldLength = length();
    unshare();
    openGap(static_cast<std::uint64_t>(oldLength), 0, static_cast<std::uint64_t>(n));
    std::memset(text() + oldLength, c, static_cast<std::size_t>(n));
}

void LmStr::prependFill(int n, char c) {
    if (n < 1) {
        return;
    }
    unshare();
    openGap(0, 0, static_cast<std::uint64_t>(n));
    std::memset(text(), c, static_cast<std::size_t>(n));
}

// --- Single characters ---------------------------------------------------------------------------

void LmStr::setChar(int i, char c) {
    unshare();
    text()[i] = c;
}

void LmStr::toUpper() {
    unshare();
    std::transform(text(), text() + length(), text(), upperOf);
}

void LmStr::toLower() {
    unshare();
    std::transform(text(), text() + length(), text(), lowerOf);
}

// --- Removing ------------------------------------------------------------------------------------

void LmStr::remove(int start, int count) {
    const bool shared = existingRep().refCount > 1;
    if (start == 0) {
        const std::uint64_t newOffset = offset + static_cast<std::uint64_t>(count);
        if (shared || (rep->size - 1) / 2 > newOffset) {
            offset = newOffset;
            return;
        }
        // To the front of the block and not to the old offset, so that eating a long text takes linear time.
        const std::uint64_t keptSize = rep->size - newOffset;
        std::memmove(rep->text, rep->text + newOffset, keptSize);
        offset = 0;
        resizeRep(keptSize);
        return;
    }
    unshare();
    openGap(static_cast<std::uint64_t>(start), static_cast<std::uint64_t>(count), 0);
}

void LmStr::removeAt(int i) {
    remove(i, 1);
}

void LmStr::removeRange(int from, int to) {
    remove(from, to - from);
}

void LmStr::removeFirst(const char* removed) {
    unshare();
    int start = 0;
    if (find(removed, &start)) {
        remove(start, static_cast<int>(std::strlen(removed)));
    }
}

void LmStr::trimLeft(bool stopAtNewline) {
    const char* const begin = c_str();
    const char* end = begin;
    while (isSpace(*end) && !(stopAtNewline && (*end == '\n' || *end == '\r'))) {
        ++end;
    }
    if (end != begin) {
        remove(0, static_cast<int>(end - begin));
    }
}

void LmStr::trimRight() {
    int kept = length();
    while (kept > 0 && isSpace(text()[kept - 1])) {
        --kept;
    }
    setLength(kept);
}

void LmStr::trim() {
    trimLeft();
    trimRight();
}

void LmStr::removeWhitespace() {
    unshare();
    const char* const end = std::remove_if(text(), text() + length(), isSpace);
    setLength(static_cast<int>(end - text()));
}

// --- Replacing -----------------------------------------------------------------------------------

void LmStr::replaceRange(int start, int count, const char* replacement) {
    const LmStr kept(replacement);
    unshare();
    const auto newCount = static_cast<std::uint64_t>(kept.length());
    openGap(static_cast<std::uint64_t>(start), static_cast<std::uint64_t>(count), newCount);
    std::memcpy(text() + start, kept.c_str(), newCount);
}

void LmStr::replaceFirst(const char* target, const char* replacement) {
    unshare();
    int start = 0;
    if (find(target, &start)) {
        replaceRange(start, static_cast<int>(std::strlen(target)), replacement);
    }
}

void LmStr::replaceAll(const char* target, const char* replacement) {
    unshare();
    const std::string_view sought(target);
    if (sought.empty()) {
        return;
    }
    const std::string_view source = view();
    std::string result;
    std::size_t start = 0;
    for (std::size_t found = source.find(sought); found != std::string_view::npos;
         found = source.find(sought, start)) {
        result.append(source, start, found - start).append(replacement);
        start = found + sought.size();
    }
    if (start != 0) {
        result.append(source, start);
        *this = LmStr(std::string_view(result));
    }
}

} // namespace quillon
