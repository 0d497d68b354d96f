#include "quillon/files/LmCompOFStream.h"

#include "quillon/files/CompressedNames.h"
#include "quillon/files/CompressionTools.h"
#include "quillon/files/FileAccess.h"

namespace quillon {

LmCompOFStream::LmCompOFStream() : pipeNumber(nextPipeNumber()) {}

LmCompOFStream::~LmCompOFStream() {
    // Not by `close`: setting the fail bit may throw in a stream that was told to.
    rdbuf()->close();
    removePipe(pipeName);
}

void LmCompOFStream::open(const LmStr& name, LmStatus& status, std::ios::openmode mode) {
    if (!checkFileWritable(name, status)) {
        setstate(std::ios::failbit);
        return;
    }
    LmStr key;
    if (hasCompressedExtension(name, &key)) {
        openCompressed(name, key, status, mode);
    } else {
        LmOFStream::open(name, mode);
    }
}

void LmCompOFStream::openCompressed(const LmStr& name, const LmStr& key, LmStatus& status,
                                    std::ios::openmode mode) {
    createPipe("compofstream", pipeNumber, pipeName, status);
    if (status.errorStands() || !startCompression(key, pipeName, name, status)) {
        setstate(std::ios::failbit);
        return;
    }
    LmOFStream::open(pipeName, mode);
}

void LmCompOFStream::close() {
    LmOFStream::close();
    removePipe(pipeName);
}

} // namespace quillon
