#include "quillon/core/CharClass.h"
#include "quillon/core/Fatal.h"
#include "quillon/core/LmStr.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace quillon {

namespace {

bool report(std::size_t index, int* found) {
    if (index == std::string_view::npos) {
        return false;
    }
    if (found != nullptr) {
        *found = static_cast<int>(index);
    }
    return true;
}

std::string_view viewOf(const LmStr& text) {
    return {text.c_str(), static_cast<std::size_t>(text.length())};
}

std::string_view viewOf(const char* text) {
    if (text == nullptr) {
        endByMemoryFault();
    }
    return text;
}

} // namespace

// --- Finding -------------------------------------------------------------------------------------

bool LmStr::find(const char* sought, int* found) const {
    return report(viewOf(*this).find(viewOf(sought)), found);
}

bool LmStr::find(const LmStr& sought, int* found) const {
    return report(viewOf(*this).find(viewOf(sought)), found);
}

bool LmStr::find(char c, int* found) const {
    return report(viewOf(*this).find(c), found);
}

bool LmStr::findNth(char c, int n, int* found) const {
    const std::string_view source = viewOf(*this);
    if (n == 0) {
        return true;
    }
    std::size_t index = source.find(c);
    for (int k = 1; k < n && index != std::string_view::npos; ++k) {
        index = source.find(c, index + 1);
    }
    return n > 0 && report(index, found);
}

bool LmStr::findLast(char c, int* found) const {
    return report(viewOf(*this).rfind(c), found);
}

int LmStr::lastIndexOf(char c) const {
    int index = std::numeric_limits<int>::max();
    findLast(c, &index);
    return index;
}

int LmStr::count(char c) const {
    const std::string_view source = viewOf(*this);
    return static_cast<int>(std::count(source.begin(), source.end(), c));
}

bool LmStr::firstDigit(int* found) const {
    return report(viewOf(*this).find_first_of("0123456789"), found);
}

// --- Substrings ----------------------------------------------------------------------------------

LmStr LmStr::right(int n) const {
    if (n <= 0) {
        return LmStr("");
    }
    LmStr result(*this);
    result.offset += static_cast<std::uint64_t>(length() - n);
    return result;
}

LmStr LmStr::skip(int n) const {
    return right(length() - n);
}

LmStr LmStr::left(int n) const {
    LmStr result(viewOf(*this).substr(0, static_cast<std::size_t>(std::clamp(n, 0, length()))));
    result.setLength(n);
    return result;
}

LmStr LmStr::dropRight(int n) const {
    return left(length() - n);
}

LmStr LmStr::mid(int start, int count) const {
    if (count < 1) {
        return *this;
    }
    LmStr result(right(length() - start));
    result.setLength(count);
    return result;
}

LmStr LmStr::midClipped(int start, int count) const {
    const int clipped = std::min(count, std::max(length() - start, 0));
    return clipped == 0 ? LmStr("") : mid(start, clipped);
}

LmStr LmStr::without(int start, int count) const {
    LmStr result(*this);
    result.remove(start, count);
    return result;
}

// --- Comparing -----------------------------------------------------------------------------------

int LmStr::compare(const char* other) const {
    return std::strcmp(c_str(), viewOf(other).data());
}

int LmStr::compare(const char* other, int n) const {
    return std::strncmp(c_str(), viewOf(other).data(), static_cast<std::size_t>(n));
}

int LmStr::startsWith(const char* other) const {
    return std::strncmp(c_str(), other, viewOf(other).size());
}

bool LmStr::endsWith(const LmStr& other) const {
    return viewOf(*this).ends_with(viewOf(other));
}

int LmStr::compareNoCase(const char* other, int n) const {
    const char* a = c_str();
    const char* b = viewOf(other).data();
    for (int i = 0; i < n; ++i, ++a, ++b) {
        if (*a == '\0') {
            return *b == '\0' ? 0 : -1;
        }
        const auto upperA = static_cast<unsigned char>(upperOf(*a));
        const auto upperB = static_cast<unsigned char>(upperOf(*b));
        if (upperA != upperB) {
            return upperA > upperB ? 1 : -1;
        }
    }
    return 0;
}

int LmStr::compareNoCasePrefix(const char* other) const {
    return compareNoCase(other, static_cast<int>(viewOf(other).size()));
}

int LmStr::compareNoCaseWhole(const char* other) const {
    return compareNoCase(other, std::max(length(), static_cast<int>(viewOf(other).size())));
}

bool operator==(const LmStr& left, const LmStr& right) {
    if (left.isNull() || right.isNull()) {
        return left.isNull() && right.isNull();
    }
    return left.view() == right.view();
}

bool operator==(const LmStr& left, const char* right) {
    if (left.isNull() || right == nullptr) {
        return left.isNull() && right == nullptr;
    }
    return left.view() == right;
}

std::strong_ordering operator<=>(const LmStr& left, const LmStr& right) {
    return std::strcmp(left.c_str(), right.c_str()) <=> 0;
}

std::strong_ordering operator<=>(const LmStr& left, const char* right) {
    return left.compare(right) <=> 0;
}

} // namespace quillon
