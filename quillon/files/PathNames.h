#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

namespace quillon {

// Operations on the text of path names. Only `currentDir` and what falls back on it ask the file system.
// '/' separates, and in a name without '/' a backslash does.

/// The part before the last separator, once one trailing separator is cut: "a" of "a/b/", "/" of "/a". Empty
/// for a name without separator, for "/" itself, and for an empty or null name.
LmStr dirName(const LmStr& path);

/// The part behind the last separator, once one trailing separator is cut: "b" of "a/b/". A name without
/// another separator comes back whole, "a/" as "a/"; an empty or null name gives an empty string.
LmStr baseName(const LmStr& path);

/// Splits into `dirName`, and what follows at its last dot: "/d/a.b.c" gives "/d", "a.b" and "c". Each output
/// may be null; an absent part is an empty string.
void splitPath(const LmStr& path, LmStr* dirOut, LmStr* stemOut, LmStr* extensionOut);

/// Both with one '/' between, which is left out when `dir` ends in '/'. An empty `dir` is the root.
LmStr joinPath(const LmStr& dir, const LmStr& name);

/// `joinPath` of `dir` and the name made of `stem`, a dot and `extension`.
LmStr joinPathExt(const LmStr& dir, const LmStr& stem, const LmStr& extension);

/// Whether the first character is '/'.
bool isAbsolutePath(const LmStr& path);

/// The working directory. When it cannot be told, prints so on standard error and ends the process with 1.
LmStr currentDir();
/// The working directory; empty, with an error in `status`, when it cannot be told.
LmStr currentDir(LmStatus& status);

/// The path from the root, with "." and ".." resolved in the text alone: links are not followed, and a ".."
/// that leads above the root gives an empty string. A relative path starts at `base`, or at the working
/// directory when `base` is empty or not given; a relative `base` itself starts at the working directory.
/// Empty when an error stands on `status` at the end; without `status` see `currentDir`.
LmStr absolutePath(const LmStr& path);
LmStr absolutePath(const LmStr& path, const LmStr& base);
LmStr absolutePath(const LmStr& path, LmStatus& status);
LmStr absolutePath(const LmStr& path, const LmStr& base, LmStatus& status);

} // namespace quillon
