#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <array>
#include <cstdint>

namespace quillon {

// The outside tools behind the compressed streams. Only for use inside this folder and in tests.

/// A command line in which "%s" stands for the names, and the program that it starts.
struct CompressionCommand {
    const char* line;    ///< with "%s" for the names
    const char* program; ///< what must be on the path
};

/// A kind of compressed file.
struct CompressionKind {
    const char* extension;         ///< with its dot
    const char* key;               ///< the extension without the dot
    int shortestName;              ///< the length below which a name is no compressed name
    CompressionCommand decompress; ///< takes the compressed file and the pipe
    CompressionCommand compress;   ///< takes the pipe and the compressed file
};

/// All kinds, in the order in which a name is tested for them.
inline constexpr std::array<CompressionKind, 3> compressionKinds = {{
    {".Z", "Z", 3, {"uncompress -c %s >%s &", "uncompress"}, {"compress <%s >%s &", "compress"}},
    {".gz", "gz", 4, {"gunzip -c %s >%s &", "gunzip"}, {"gzip -9 <%s >%s &", "gzip"}},
    {".jpeg", "jpeg", 6, {"djpeg -gsi %s >%s &", "djpeg"}, {"cjpeg -gsi <%s >%s &", "cjpeg"}},
}};

/// Starts the tool that reads the compressed `file` and fills `pipe`, in the background. False when that
/// cannot be done, with the cause in `status`; what the tool itself does is not watched.
bool startDecompression(const LmStr& key, const LmStr& file, const LmStr& pipe, LmStatus& status);

/// Starts the tool that reads `pipe` and fills the compressed `file`.
bool startCompression(const LmStr& key, const LmStr& pipe, const LmStr& file, LmStatus& status);

/// The next number for a stream of this process, counted from 0. Safe to call from several threads.
std::int32_t nextPipeNumber();

/// Makes a named pipe in `tempDir()` that only the user can open, called after the kind of stream, its number
/// and the process. `pipeName` receives its path. On failure errors go to `status`, and `pipeName` stays.
void createPipe(const char* streamKind, std::int32_t number, LmStr& pipeName, LmStatus& status);

/// Removes the pipe, if there is one, and empties `pipeName`.
void removePipe(LmStr& pipeName);

} // namespace quillon
