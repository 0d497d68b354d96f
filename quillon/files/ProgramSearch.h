#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// The first path that exists among the directories of PATH, joined with `name`; empty when there is none.
LmStr findOnPath(const LmStr& name);

/// Whether a directory of PATH holds something executable called `name`; the first one's path goes to
/// `fullPathOut` unless that is null. Empty entries of PATH are passed over.
bool findOnPathEnv(const LmStr& name, LmStr* fullPathOut = nullptr);

/// The path of the running program; empty, with a line on standard error, when the system does not tell.
LmStr executablePath();

} // namespace quillon
