#pragma once

#include "tests/support/ChildProcess.h"

#include <string>
#include <vector>

namespace quillon::support {

/// The outcome when the system lets no process watch another.
inline constexpr const char* cannotWatch = "126";

/// As `runProgram`, and removes the file at `path` at the moment when the program is about to open it for the
/// `opening`-th time, counted from 1. `path` is spelt as the program spells it.
ChildResult runWhileFileVanishes(const std::vector<std::string>& arguments, const std::string& path,
                                 int opening, const ChildOptions& options);

} // namespace quillon::support
