#include "quillon/core/LmSStream.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <locale>

namespace quillon {

namespace {

constexpr std::int32_t growthStep = 1024;

[[noreturn, gnu::cold]] void abortWith(const char* message) {
    std::cerr << message;
    std::cerr.flush();
    std::abort();
}

} // namespace

LmSStreamBuf::LmSStreamBuf() : buffer(static_cast<char*>(std::malloc(growthStep))) {
    if (buffer != nullptr) {
        size_ = growthStep;
        setp(buffer, buffer + size_);
    }
}

LmSStreamBuf::LmSStreamBuf(const char* text, std::size_t length) {
    // The standard buffer wants a pointer to changeable characters; nothing here ever writes through it.
    char* const begin = const_cast<char*>(text); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    setg(begin, begin, begin + length);
}

LmSStreamBuf::~LmSStreamBuf() {
    std::free(buffer);
}

std::size_t LmSStreamBuf::writtenCount() const {
    return buffer == nullptr ? 0 : static_cast<std::size_t>(pptr() - buffer);
}

LmSStreamBuf::int_type LmSStreamBuf::overflow(int_type c) {
    if (buffer == nullptr) {
        if (abortOnFailure) {
            abortWith("\nUnable to allocate stream buffer, aborting.\n");
        }
        return traits_type::eof();
    }
    if (pptr() != epptr()) {
        return 0;
    }
    return grow(c) ? c : traits_type::eof();
}

bool LmSStreamBuf::grow(int_type c) {
    const std::int32_t oldSize = size_;
    char* const grown =
        static_cast<char*>(std::realloc(buffer, static_cast<std::size_t>(oldSize) + growthStep));
    if (grown == nullptr) {
        if (abortOnFailure) {
            abortWith("\nUnable to increase stream buffer size, aborting.\n");
        }
        return false;
    }
    buffer = grown;
    size_ = oldSize + growthStep;
    char* position = buffer + oldSize;
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        *position++ = traits_type::to_char_type(c);
    }
    // The write area starts anew behind the text so far, which is why text is taken from `buffer`.
    setp(position, buffer + size_);
    return true;
}

const char* LmSStreamBuf::str() {
    if (buffer == nullptr) {
        return nullptr;
    }
    if (pptr() == epptr() && !grow(traits_type::eof())) {
        return nullptr;
    }
    *pptr() = '\0';
    return buffer;
}

void LmSStreamBuf::presetText(const char* text) {
    if (buffer == nullptr) {
        return;
    }
    const auto length = static_cast<std::int32_t>(std::strlen(text));
    if (size_ < length) {
        char* const grown = static_cast<char*>(std::realloc(buffer, static_cast<std::size_t>(length)));
        if (grown == nullptr) {
            abortWith("\nUnable to increase stream buffer size, aborting.\n");
        }
        buffer = grown;
        size_ = length;
    }
    std::memcpy(buffer, text, static_cast<std::size_t>(length));
    setp(buffer + length, buffer + size_);
}

void LmSStreamBuf::dumpBuffer() const {
    std::cerr << "Buffer is '";
    std::cerr.write(pbase(), pptr() - pbase());
    std::cerr << "'\n";
}

LmOSStream::LmOSStream() : std::ostream(&streamBuffer) {
    imbue(std::locale::classic());
}

LmISStream::LmISStream(const char* text) : LmISStream(text, std::strlen(text)) {}

LmISStream::LmISStream(const char* text, std::size_t length)
    : LmSStreamBase(text, length), std::istream(&streamBuffer) {
    imbue(std::locale::classic());
}

} // namespace quillon
