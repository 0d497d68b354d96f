#include "quillon/core/CString.h"

#include "quillon/core/CharClass.h"

#include <cstdlib>
#include <cstring>

namespace quillon {

char* strAppendRealloc(char* text, const char* more) {
    const std::size_t oldLength = std::strlen(text);
    const std::size_t addedSize = std::strlen(more) + 1;
    char* const grown = static_cast<char*>(std::realloc(text, oldLength + addedSize));
    if (grown == nullptr) {
        std::abort();
    }
    std::memcpy(grown + oldLength, more, addedSize);
    return grown;
}

const char* strFindLast(const char* text, char c) {
    return *text == '\0' ? nullptr : std::strrchr(text, c);
}

char* strDuplicate(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    char* const copy = static_cast<char*>(std::malloc(size));
    if (copy == nullptr) {
        std::abort();
    }
    std::memcpy(copy, text, size);
    return copy;
}

char* strTrimRight(char* text) {
    char* end = text + std::strlen(text);
    while (end != text && isSpace(end[-1])) {
        --end;
    }
    *end = '\0';
    return text;
}

char* strTrimLeft(char* text) {
    const char* begin = text;
    while (isSpace(*begin)) {
        ++begin;
    }
    std::memmove(text, begin, std::strlen(begin) + 1);
    return text;
}

char* strTrim(char* text) {
    return strTrimLeft(strTrimRight(text));
}

int strCompareNoCase(const char* a, const char* b) {
    while (*a != '\0' && upperOf(*a) == upperOf(*b)) {
        ++a;
        ++b;
    }
    return upperOf(*a) == upperOf(*b) ? 0 : *b - *a;
}

int strCompareNoCaseN(const char* a, const char* b, int n) {
    if (n < 0) {
        return *b - *a;
    }
    for (int i = 0; i < n; ++i, ++a, ++b) {
        if (upperOf(*a) != upperOf(*b)) {
            return *b - *a;
        }
        if (*a == '\0') {
            return 0;
        }
    }
    return 0;
}

} // namespace quillon
