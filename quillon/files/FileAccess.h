#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

/// Whether `path` can be opened for reading. A pipe is not opened but asked for its permissions, so that its
/// writer waits for the reader that is to come.
bool opensForReading(const LmStr& path);

/// Whether `path` can be opened for reading and is no directory; runs before every read of a data file. What
/// is wrong is reported into `status`. A null path ends the process by a memory fault.
bool checkFileReadable(const LmStr& path, LmStatus& status = currentStatus());

/// Whether `path` can be written or, when there is no such file, can be created in its directory; runs before
/// every write. Creates nothing. What is wrong is reported into `status`.
bool checkFileWritable(const LmStr& path, LmStatus& status = currentStatus());

// Tests of what a path leads to, links followed. False when the path cannot be examined.

/// Each asks one of: whether there is anything at the path, whether the process may read it, write it,
/// execute it. With `orCompressed` the question is about `findCompressedVariant(path)`.
bool fileExists(const LmStr& path, bool orCompressed = false);
bool fileReadable(const LmStr& path, bool orCompressed = false);
bool fileWritable(const LmStr& path, bool orCompressed = false);
bool fileExecutable(const LmStr& path);

/// Whether the bit 0x4000 of the mode is set. The bit and not the type is asked for, so that block devices
/// and sockets, which no stream can read either, are refused with the directories. Without `followLinks` a
/// link itself is tested.
bool isDirectory(const LmStr& path, bool followLinks = true);
/// Whether one of the bits 0x8000 and 0x4000 of the mode is set.
bool isFileLike(const LmStr& path);
/// Whether the bit 0x1000 of the mode is set.
bool isPipeLike(const LmStr& path);
/// Whether the path itself is a symbolic link.
bool isSymLink(const LmStr& path);
/// Whether it is a regular file that its owner may execute.
bool isExecutableFile(const LmStr& path);

/// The size in bytes, 0 when there is no such file.
std::int64_t fileSize(const LmStr& path);

} // namespace quillon
