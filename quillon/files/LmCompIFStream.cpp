#include "quillon/files/LmCompIFStream.h"

#include "quillon/files/CompressedNames.h"
#include "quillon/files/CompressionTools.h"
#include "quillon/files/FileAccess.h"

#include <locale>

namespace quillon {

namespace {

/// As much as a pipe holds, and few system calls for a large file.
constexpr std::size_t readBufferSize = 65536;

} // namespace

LmCompIFStream::LmCompIFStream() : pipeNumber(nextPipeNumber()) {
    imbue(std::locale::classic());
}

LmCompIFStream::~LmCompIFStream() {
    // Not by `close`: setting the fail bit may throw in a stream that was told to.
    rdbuf()->close();
    removePipe(pipeName);
}

void LmCompIFStream::open(const LmStr& name, LmStatus& status, std::ios::openmode mode) {
    LmStr path = name;
    if (!hasCompressedExtension(path)) {
        path = findCompressedVariant(name);
    }
    LmStr key;
    isCompressed = hasCompressedExtension(path, &key);
    if (isCompressed && fileExists(path)) {
        openCompressed(path, key, status, mode);
    } else if (checkFileReadable(name, status)) {
        openPlain(path, mode);
    } else {
        setstate(std::ios::failbit);
    }
}

void LmCompIFStream::openCompressed(const LmStr& path, const LmStr& key, LmStatus& status,
                                    std::ios::openmode mode) {
    if (!checkFileReadable(path, status)) {
        setstate(std::ios::failbit);
        return;
    }
    createPipe("compifstream", pipeNumber, pipeName, status);
    if (status.errorStands() || !startDecompression(key, path, pipeName, status)) {
        setstate(std::ios::failbit);
        return;
    }
    openPlain(pipeName, mode);
}

void LmCompIFStream::openPlain(const LmStr& path, std::ios::openmode mode) {
    if (readBuffer == nullptr) {
        readBuffer = std::make_unique_for_overwrite<char[]>(readBufferSize);
        rdbuf()->pubsetbuf(readBuffer.get(), readBufferSize);
    }
    std::ifstream::open(path.c_str(), mode | std::ios::in);
}

void LmCompIFStream::close() {
    std::ifstream::close();
    removePipe(pipeName);
}

} // namespace quillon
