#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <sys/types.h>

#include <utility>

namespace quillon {

/// Marks a file as being read for as long as the object lives. Readers that merge included files hold one
/// while they do, so that a file which is reached again through its own includes is refused instead of read
/// for ever.
class FileBeingRead {
public:
    explicit FileBeingRead(const LmStr& path); ///< marks the file, unless it is marked already
    ~FileBeingRead();
    FileBeingRead(const FileBeingRead&) = delete;
    FileBeingRead& operator=(const FileBeingRead&) = delete;

private:
    std::pair<dev_t, ino_t> file_;
    bool isMarked_; ///< false when the file could not be found or was marked already
};

/// Whether the file, under this name or another, is being read already; then reports the error
/// "\"%s\" includes itself." with the path as it is given.
bool refuseOwnInclude(const LmStr& path, LmStatus& status = currentStatus());

} // namespace quillon
