#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

namespace quillon::test {

/// Hands out a text in get areas of a fixed size, so that numbers straddle their ends.
class PiecewiseBuf : public std::streambuf {
public:
    void start(const std::string& text, std::size_t areaSize) {
        source = &text;
        handedOut = 0;
        size = areaSize;
        setg(nullptr, nullptr, nullptr);
    }

    /// What has not been read.
    std::string_view rest() const {
        return std::string_view(*source).substr(handedOut - static_cast<std::size_t>(egptr() - gptr()));
    }

protected:
    int_type underflow() override {
        const std::size_t count = std::min(size, source->size() - handedOut);
        if (count == 0) {
            return traits_type::eof();
        }
        // A copy of its own, so that reading past the area is seen by an address sanitizer.
        area.reset(new char[count]);
        std::memcpy(area.get(), source->data() + handedOut, count);
        handedOut += count;
        setg(area.get(), area.get(), area.get() + count);
        return traits_type::to_int_type(*gptr());
    }

private:
    const std::string* source = nullptr;
    std::unique_ptr<char[]> area;
    std::size_t handedOut = 0;
    std::size_t size = 1;
};

} // namespace quillon::test
