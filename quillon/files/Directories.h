#pragma once

#include "quillon/core/LmStr.h"

#include <utility>

namespace quillon {

/// Makes `path` the working directory. True on success.
bool changeDir(const LmStr& path);

/// Creates one directory, with permissions 0777 before the process's mask. The code is 0 when it is done, 1
/// when the path exists already, 2 when permission is denied, and 3 for any other failure, whose system text
/// is then the string; it is empty otherwise.
std::pair<int, LmStr> makeDir(const LmStr& path);

/// Removes an empty directory. True on success.
bool removeDir(const LmStr& path);

/// Creates a directory with all its parents. True when it is there at the end; otherwise `messageOut`, which
/// may be null, tells what was in the way.
bool makeDirPath(const LmStr& path, LmStr* messageOut = nullptr);

/// Where temporary files go: "/var/tmp", whatever the environment says.
LmStr tempDir();

} // namespace quillon
