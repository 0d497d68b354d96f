#pragma once

#include <ios>
#include <streambuf>
#include <string>
#include <utility>

namespace quillon::test {

/// Gives a text and then fails as a file does on a device that cannot be read: with an exception.
class FailingDevice : public std::streambuf {
public:
    explicit FailingDevice(std::string content) : text(std::move(content)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::ios_base::failure("the device cannot be read"); }

private:
    std::string text;
};

} // namespace quillon::test
