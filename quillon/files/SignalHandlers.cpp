#include "quillon/files/SignalHandlers.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace quillon {

namespace {

struct HandledSignal {
    int number;
    bool isFatal;
    const char* text; ///< empty when nothing is told beyond that there was a signal
};

constexpr std::array<HandledSignal, 20> handledSignals = {{
    {SIGHUP, false, "hangup\n"},
    {SIGINT, false, "interrupt (rubout)\n"},
    {SIGQUIT, true, "quit (ASCII FS)\n"},
    {SIGILL, true, "illegal instruction\n"},
    {SIGABRT, true, "Abort\n"},
    {SIGBUS, true, ""},
    {SIGFPE, true, "Arithmetic Exception\n"},
    {SIGKILL, true, "Killed\n"},
    {SIGUSR1, false, "User Signal 1\n"},
    {SIGSEGV, true, "Segmentation Fault\n"},
    {SIGUSR2, false, "User Signal 2\n"},
    {SIGPIPE, false, "Broken Pipe\n"},
    {SIGALRM, false, "Alarm Clock\n"},
    {SIGTERM, false, "Terminated\n"},
    {SIGCHLD, false, "Child Status Changed\n"},
    {SIGCONT, false, "Continued\n"},
    {SIGSTOP, false, "Stopped\n"},
    {SIGTSTP, false, "Stopped\n"},
    {SIGTTIN, false, "Stopped\n"},
    {SIGTTOU, false, "Stopped\n"},
}};

/// Writes without the library's buffers, which a signal may have found half changed.
void writeToError(const char* text) {
    std::size_t rest = std::strlen(text);
    while (rest > 0) {
        const ssize_t written = write(STDERR_FILENO, text, rest);
        if (written <= 0) {
            return;
        }
        text += written;
        rest -= static_cast<std::size_t>(written);
    }
}

[[noreturn]] void tellAndAbort(int number) {
    writeToError("signal caught: \n");
    for (const HandledSignal& handled : handledSignals) {
        if (handled.number == number) {
            writeToError(handled.text);
        }
    }
    // The abort is itself one of the signals, and would come back here.
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
}

} // namespace

void installSignalHandlers(bool fatalOnly) {
    struct sigaction action = {};
    action.sa_handler = tellAndAbort;
    sigfillset(&action.sa_mask);
    for (const HandledSignal& handled : handledSignals) {
        if (handled.isFatal || !fatalOnly) {
            // The system refuses this for SIGKILL and SIGSTOP, which nobody can handle.
            sigaction(handled.number, &action, nullptr);
        }
    }
}

} // namespace quillon
