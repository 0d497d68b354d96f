#pragma once

#include <streambuf>
#include <string>

namespace quillon::test {

/// Gathers what a stream writes, with a '|' for each flush.
class FlushMarks : public std::streambuf {
public:
    const std::string& text() const { return text_; }

protected:
    int_type overflow(int_type c) override {
        text_ += traits_type::to_char_type(c);
        return traits_type::not_eof(c);
    }
    int sync() override {
        text_ += '|';
        return 0;
    }

private:
    std::string text_;
};

} // namespace quillon::test
