#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// Starts a command in a new terminal window, which stays open after it until the user presses Enter. The
/// window gets the title and the name that are given; null means not given. False, with an error on the
/// current status, when there is no terminal program or the shell cannot be run. The texts reach the shell
/// as they stand: the caller sees to it that they hold no quotes.
bool runInTerminal(const LmStr& command, const LmStr& title = {}, const LmStr& name = {});

} // namespace quillon
