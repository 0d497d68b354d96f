#pragma once

#include <cstdint>
#include <istream>
#include <ostream>
#include <streambuf>

namespace quillon {

/// The memory buffer behind `LmOSStream` and `LmISStream`.
///
/// Written text lies at `buffer`, in a heap block that grows by steps of 1024 bytes; the start of the write
/// area loses the first part of the text after a growth, so text is always taken from `buffer`. A buffer that
/// reads works on the caller's characters and allocates nothing.
class LmSStreamBuf : public std::streambuf {
public:
    /// A buffer to write to, with a block of 1024 bytes.
    LmSStreamBuf();
    /// A buffer to read the `length` characters at `text`, which the caller keeps alive and unchanged.
    LmSStreamBuf(const char* text, std::size_t length);
    LmSStreamBuf(const LmSStreamBuf&) = delete;
    LmSStreamBuf& operator=(const LmSStreamBuf&) = delete;
    ~LmSStreamBuf() override;

    /// The written text, made NUL-terminated without moving the write position; owned by this buffer. Null
    /// when there is no block.
    const char* str();
    /// The number of characters written.
    std::size_t writtenCount() const;
    /// Puts `text` in the place of what was written; nothing happens without a block.
    void presetText(const char* text);
    /// A debugging aid: what the write area holds, on standard error.
    void dumpBuffer() const;
    /// Whether a failure to grow ends the process, as it does at first, or is an end of file to the writer.
    void setAbortOnFailure(bool abort) { abortOnFailure = abort; }
    /// The size of the block in bytes.
    std::int32_t size() const { return size_; }

protected:
    int sync() override { return 0; }
    int_type underflow() override { return traits_type::eof(); }
    int_type overflow(int_type c) override;

private:
    bool grow(int_type c);

    char* buffer = nullptr;
    std::int32_t size_ = 0;
    bool abortOnFailure = true;
};

/// Joins the memory buffer to the standard stream classes; the buffer is constructed before them.
class LmSStreamBase : public virtual std::ios {
public:
    LmSStreamBuf* rdbuf() { return &streamBuffer; } ///< the memory buffer

protected:
    LmSStreamBase() { init(&streamBuffer); }
    LmSStreamBase(const char* text, std::size_t length) : streamBuffer(text, length) { init(&streamBuffer); }

    LmSStreamBuf streamBuffer;
};

/// Composes text in memory by stream insertion, in the classic locale: numbers have a point.
class LmOSStream : public LmSStreamBase, public std::ostream {
public:
    LmOSStream();

    /// The text so far, NUL-terminated, owned by the stream; writing goes on behind it.
    const char* str() { return streamBuffer.str(); }
    /// Puts a text in the place of what was written.
    void presetText(const char* text) { streamBuffer.presetText(text); }
    using LmSStreamBase::rdbuf;
};

/// Reads a text in memory by stream extraction in the classic locale, without copying it: the caller keeps
/// the text alive and unchanged as long as the stream lives.
class LmISStream : public LmSStreamBase, public std::istream {
public:
    explicit LmISStream(const char* text);            ///< reads up to the NUL
    LmISStream(const char* text, std::size_t length); ///< reads `length` characters
    using LmSStreamBase::rdbuf;
};

} // namespace quillon
