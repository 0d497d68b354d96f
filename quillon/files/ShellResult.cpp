#include "quillon/files/ShellResult.h"

#include <sys/wait.h>

namespace quillon {

namespace {

constexpr int exitCodeOfNoShell = 127;

} // namespace

bool shellCouldBeRun(int result) {
    // What runs in the background has no say in the result, so that 127 is the C library's: it says so when
    // no process could be started, too.
    return result != -1 && !(WIFEXITED(result) && WEXITSTATUS(result) == exitCodeOfNoShell);
}

} // namespace quillon
