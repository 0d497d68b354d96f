#pragma once

#include <memory>
#include <streambuf>

namespace quillon {

/// Writes to a file descriptor, which it does not own, in pieces of 64 KB. A failed write shows in the state
/// of the stream above it.
class DescriptorBuf : public std::streambuf {
public:
    explicit DescriptorBuf(int descriptor); ///< to an open file
    ~DescriptorBuf() override;
    DescriptorBuf(const DescriptorBuf&) = delete;
    DescriptorBuf& operator=(const DescriptorBuf&) = delete;

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    bool writeAll(const char* text, std::size_t count) const;

    int descriptor;
    std::unique_ptr<char[]> block;
};

} // namespace quillon
