#include "quillon/tool/DescriptorBuf.h"

#include <cerrno>
#include <unistd.h>

namespace quillon {

namespace {

constexpr std::size_t blockSize = 1 << 16;

} // namespace

DescriptorBuf::DescriptorBuf(int descriptor)
    : descriptor(descriptor), block(std::make_unique_for_overwrite<char[]>(blockSize)) {
    setp(block.get(), block.get() + blockSize);
}

DescriptorBuf::~DescriptorBuf() {
    DescriptorBuf::sync();
}

bool DescriptorBuf::writeAll(const char* text, std::size_t count) const {
    while (count > 0) {
        const ssize_t written = ::write(descriptor, text, count);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        text += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

int DescriptorBuf::sync() {
    const bool written = writeAll(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(block.get(), block.get() + blockSize);
    return written ? 0 : -1;
}

DescriptorBuf::int_type DescriptorBuf::overflow(int_type c) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        sputc(traits_type::to_char_type(c));
    }
    return traits_type::not_eof(c);
}

std::streamsize DescriptorBuf::xsputn(const char* text, std::streamsize count) {
    if (count < epptr() - pptr()) {
        traits_type::copy(pptr(), text, static_cast<std::size_t>(count));
        pbump(static_cast<int>(count));
        return count;
    }
    return sync() == 0 && writeAll(text, static_cast<std::size_t>(count)) ? count : 0;
}

} // namespace quillon
