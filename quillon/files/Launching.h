#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// The directory that holds the program `name`: the layout's `binDir`, that of the running program, or the
/// first of PATH; its empty entries are passed over. When none does the result is empty, and standard error
/// tells where it was looked for.
LmStr findApplication(const LmStr& name);

/// `findApplication` joined with the name, empty when there is none.
LmStr applicationPath(const LmStr& name);

/// Starts a program in the background through the system's shell; its name is the first word of the line.
/// False when that cannot be done, which standard error then tells. The line and the program's directory
/// reach the shell as they stand, without quoting.
bool launchApplication(const LmStr& commandLine);

} // namespace quillon
