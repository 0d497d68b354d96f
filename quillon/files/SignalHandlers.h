#pragma once

namespace quillon {

/// From now on a fatal signal, and without `fatalOnly` also any other of the usual signals, is told on
/// standard error before it ends the process by an abort. That holds even for those that do nothing or only
/// stop a process otherwise: without `fatalOnly` the end of a child process aborts its parent.
void installSignalHandlers(bool fatalOnly);

} // namespace quillon
