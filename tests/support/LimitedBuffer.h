#pragma once

#include <streambuf>

namespace quillon::test {

/// A stream buffer that takes so many characters and then fails, as a file does on a disk that is full.
class LimitedBuffer : public std::streambuf {
public:
    explicit LimitedBuffer(int characters) : left(characters) {}

protected:
    int_type overflow(int_type c) override {
        return left-- > 0 ? traits_type::not_eof(c) : traits_type::eof();
    }

private:
    int left;
};

} // namespace quillon::test
