#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"
#include "quillon/files/LmOFStream.h"

#include <cstdint>

namespace quillon {

/// An output file stream that compresses when the name of the file has a compressed extension.
///
/// The text goes through a named pipe in `tempDir()` to an outside tool in the background. The pipe exists
/// from `open` until `close` or destruction, also when `open` failed. The tool is not waited for: the
/// compressed file may still be growing when the stream is gone. Opened once. Belongs to one thread.
class LmCompOFStream : public LmOFStream {
public:
    /// Draws the number of the stream, the next one of the process.
    LmCompOFStream();
    ~LmCompOFStream() override;

    /// Opens the file. On failure the fail bit is set, and what is known about the cause is reported into
    /// `status`. Blocks until the tool has opened its end of the pipe.
    void open(const LmStr& name, LmStatus& status = currentStatus(), std::ios::openmode mode = std::ios::out);

    /// Closes the file and removes the pipe. Sets the fail bit when closing fails.
    void close();

    std::int32_t pipeNumber; ///< drawn at construction
    LmStr pipeName = "";     ///< path of the named pipe; empty when there is none

private:
    void openCompressed(const LmStr& name, const LmStr& key, LmStatus& status, std::ios::openmode mode);
};

} // namespace quillon
