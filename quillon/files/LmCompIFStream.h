#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <cstdint>
#include <fstream>
#include <memory>

namespace quillon {

/// An input file stream that also reads compressed files, without its reader noticing.
///
/// A file "a.gz" or "a.Z" stands in for a missing "a". A compressed file is read through a named pipe in
/// `tempDir()`, which an outside tool in the background fills. The pipe exists from `open` until `close` or
/// destruction, also when `open` failed. Reads in the classic locale. Opened once. Belongs to one thread.
class LmCompIFStream : public std::ifstream {
public:
    /// Draws the number of the stream, the next one of the process.
    LmCompIFStream();
    ~LmCompIFStream() override;

    /// Opens the file or its compressed variant. On failure the fail bit is set, and what is known about the
    /// cause is reported into `status`. Blocks until the tool has opened its end of the pipe; a tool that
    /// dies before that is not noticed.
    void open(const LmStr& name, LmStatus& status = currentStatus(), std::ios::openmode mode = std::ios::in);

    /// Closes the file and removes the pipe. Sets the fail bit when closing fails. The tool is not waited
    /// for.
    void close();

    std::int32_t pipeNumber;   ///< drawn at construction
    LmStr pipeName = "";       ///< path of the named pipe; empty when there is none
    bool isCompressed = false; ///< whether the name that `open` settled on is that of a compressed file

private:
    void openPlain(const LmStr& path, std::ios::openmode mode);
    void openCompressed(const LmStr& path, const LmStr& key, LmStatus& status, std::ios::openmode mode);

    std::unique_ptr<char[]> readBuffer;
};

} // namespace quillon
