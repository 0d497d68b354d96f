#include "quillon/core/LmStr.h"

#include "quillon/core/Fatal.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <utility>

namespace quillon {

namespace {

std::uint64_t blockSize(std::uint64_t size) {
    return (size + 3) / 4 * 4;
}

LmStrRep* newRep(std::uint64_t length) {
    void* const block = ::operator new(sizeof(LmStrRep) + blockSize(length + 1));
    auto* const rep = new (block) LmStrRep{static_cast<char*>(block) + sizeof(LmStrRep), length + 1, 1};
    rep->text[length] = '\0';
    return rep;
}

std::uint64_t lengthOf(const char* text) {
    if (text == nullptr) {
        endByMemoryFault();
    }
    return std::strlen(text);
}

} // namespace

// --- Lifetime ------------------------------------------------------------------------------------

LmStr::LmStr(const char* text) {
    if (text != nullptr) {
        assignCopy(text, std::strlen(text));
    }
}

LmStr::LmStr(const char* text, int count) {
    if (text != nullptr) {
        const auto wanted = static_cast<std::size_t>(count);
        const std::size_t there = strnlen(text, wanted);
        assignCopy(text, there);
        if (there < wanted) {
            resizeRep(wanted + 1);
            std::memset(rep->text + there, '\0', wanted + 1 - there);
        }
    }
}

LmStr::LmStr(std::string_view text) {
    assignCopy(text.data(), std::min(text.find('\0'), text.size()));
}

LmStr& LmStr::operator=(const char* text) {
    if (text == nullptr) {
        reset();
        return *this;
    }
    if (rep != nullptr && text >= c_str() && text <= c_str() + length()) {
        // A pointer into the own text is the tail that begins there, since both end at the same NUL.
        offset = static_cast<std::uint64_t>(text - rep->text);
        return *this;
    }
    return *this = LmStr(text);
}

void LmStr::freeRep() noexcept {
    ::operator delete(rep);
}

// --- The shared text -----------------------------------------------------------------------------

void LmStr::assignCopy(const char* text, std::uint64_t count) {
    rep = newRep(count);
    if (count > 0) {
        std::memcpy(rep->text, text, count);
    }
    offset = 0;
}

void LmStr::unshare() {
    if (existingRep().refCount > 1) {
        --rep->refCount;
        assignCopy(text(), static_cast<std::uint64_t>(length()));
    }
}

void LmStr::resizeRep(std::uint64_t size) {
    if (blockSize(size) != blockSize(rep->size)) {
        LmStrRep* const moved = newRep(size - 1);
        std::memcpy(moved->text, rep->text, std::min(size, rep->size));
        freeRep();
        rep = moved;
    }
    rep->size = size;
}

void LmStr::openGap(std::uint64_t start, std::uint64_t oldCount, std::uint64_t newCount) {
    const std::uint64_t tailCount = static_cast<std::uint64_t>(length()) - start - oldCount + 1;
    const std::uint64_t newSize = rep->size - oldCount + newCount;
    if (newCount > oldCount) {
        resizeRep(newSize);
    }
    std::memmove(text() + start + newCount, text() + start + oldCount, tailCount);
    if (newCount < oldCount) {
        resizeRep(newSize);
    }
}

// --- Access --------------------------------------------------------------------------------------

char* LmStr::duplicate() const {
    const std::size_t size = static_cast<std::size_t>(length()) + 1;
    char* const copy = static_cast<char*>(std::malloc(size));
    if (copy == nullptr) {
        std::abort();
    }
    std::memcpy(copy, text(), size);
    return copy;
}

bool LmStr::isValidIndex(int i) const {
    return i >= 0 && i < length();
}

void LmStr::checkTerminator() const {
    if (!isNull() && std::memchr(text(), '\0', static_cast<std::size_t>(length()) + 1) != text() + length()) {
        std::abort();
    }
}

std::ostream& operator<<(std::ostream& output, const LmStr& text) {
    return output.write(text.c_str(), text.length());
}

// --- Inserting and appending ---------------------------------------------------------------------

void LmStr::insertForeign(std::uint64_t i, const char* inserted, std::uint64_t n) {
    unshare();
    openGap(i, 0, n);
    if (n > 0) {
        std::memcpy(text() + i, inserted, n);
    }
}

void LmStr::insert(int i, const char* inserted, int n) {
    const LmStrRep& own = existingRep();
    const auto count = static_cast<std::uint64_t>(n);
    if (inserted >= own.text && inserted < own.text + own.size) {
        const LmStr copy(inserted, n);
        insertForeign(static_cast<std::uint64_t>(i), copy.c_str(), count);
    } else {
        insertForeign(static_cast<std::uint64_t>(i), inserted, count);
    }
}

void LmStr::insert(int i, const char* inserted) {
    insert(i, inserted, static_cast<int>(lengthOf(inserted)));
}

void LmStr::insert(int i, char c) {
    insert(i, &c, 1);
}

void LmStr::append(const char* appended) {
    insert(length(), appended);
}

void LmStr::append(const LmStr& appended) {
    insert(length(), appended.c_str(), appended.length());
}

void LmStr::append(std::string_view appended) {
    insert(length(), appended.data(), static_cast<int>(appended.size()));
}

LmStr& LmStr::operator+=(const char* appended) {
    append(appended);
    return *this;
}

LmStr& LmStr::operator+=(const LmStr& appended) {
    append(appended);
    return *this;
}

LmStr& LmStr::operator+=(char c) {
    insert(length(), c);
    return *this;
}

void LmStr::appendPadded(const char* appended, int width) {
    const int taken = std::min(static_cast<int>(lengthOf(appended)), width);
    insert(length(), appended, taken);
    appendFill(width - taken, ' ');
}

namespace {

/// A formatted text lives in a block of this size, so that it is cut at one character less.
constexpr std::size_t formatBlockSize = 1024;

} // namespace

void LmStr::appendFormat(const char* format, ...) {
    char block[formatBlockSize];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(block, sizeof block, format, arguments);
    va_end(arguments);
    append(block);
}

void LmStr::format(const char* format, ...) {
    char block[formatBlockSize];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(block, sizeof block, format, arguments);
    va_end(arguments);
    *this = LmStr(block);
}

LmStr operator+(const LmStr& left, const char* right) {
    LmStr sum(left);
    sum.append(right);
    return sum;
}

LmStr operator+(const LmStr& left, const LmStr& right) {
    LmStr sum(left);
    sum.append(right);
    return sum;
}

LmStr operator+(const char* left, const LmStr& right) {
    LmStr sum(left);
    sum.append(right);
    return sum;
}

} // namespace quillon
