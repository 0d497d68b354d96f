#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

namespace quillon {

/// Copies the bytes of `source` into `target`, which is created with permissions 0644 or emptied first. True
/// when everything was copied; failures are reported into `status`, and after one the rest is still tried.
bool copyFile(const LmStr& source, const LmStr& target, LmStatus& status = currentStatus());

/// Removes a file; a link is removed itself. True on success.
bool removeFile(const LmStr& path);

/// Makes the symbolic link `to`, which leads to `from`. True on success.
bool makeSymLink(const LmStr& from, const LmStr& to);

/// Takes the mode bits off the file's permissions. A failure is told on standard error and gives false.
bool removeFilePermission(const LmStr& path, unsigned bits);
bool removeOwnerRead(const LmStr& path);  ///< `removeFilePermission` with 0400
bool removeOwnerWrite(const LmStr& path); ///< `removeFilePermission` with 0200

} // namespace quillon
