#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

/// The time of the last change in seconds since 1970, 0 when the file cannot be opened for reading. With
/// `orCompressed` that of `findCompressedVariant(path)`.
std::int64_t fileModifiedTime(const LmStr& path, bool orCompressed = false);

/// Sets the time of the last change to now and keeps the time of the last access. True on success.
bool touchFile(const LmStr& path);

/// Remembers when a file was last seen to change.
struct LmFileStamp {
    LmStr path = "";       ///< of the file
    std::int64_t time = 0; ///< as `fileModifiedTime` gives it

    /// Stores the file's present time.
    void stamp();
    /// Whether the file's time differs from the stored one; false for an empty path.
    bool changedSinceStamp() const;
};

} // namespace quillon
