#pragma once

#include <iosfwd>
#include <span>

namespace quillon {

/// Runs the program with its arguments, without the program's own name, and returns the exit code. The report
/// and the version go to `out`, all else to `messages`. A report that `out` could not take whole is a
/// failure.
int runCommandLine(std::span<const char* const> arguments, std::ostream& out, std::ostream& messages);

} // namespace quillon
