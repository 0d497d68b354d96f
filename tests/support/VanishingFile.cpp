#include "tests/support/VanishingFile.h"

#include <csignal>
#include <cstdlib>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon::support {
namespace {

constexpr int exitCodeOfRefusal = 126;
constexpr int stopAtSystemCall = SIGTRAP | 0x80;

[[noreturn]] void becomeWatchedProgram(std::vector<std::string> arguments) {
    // The search for leaks would itself have to watch the process.
    const char* const checks = std::getenv("ASAN_OPTIONS");
    setenv("ASAN_OPTIONS", (std::string(checks == nullptr ? "" : checks) + ":detect_leaks=0").c_str(), 1);
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == -1) {
        _exit(exitCodeOfRefusal);
    }
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(exitCodeOfRefusal);
}

/// Watches the system calls of a program from its first instruction to its end.
class Watch {
public:
    Watch(pid_t program, const std::string& path, int opening)
        : program_(program), path_(path), openingsLeft_(opening) {}

    /// Returns how the program has ended, as `waitpid` tells it.
    int waitForEnd() {
        int status = 0;
        waitpid(program_, &status, 0);
        if (WIFSTOPPED(status)) {
            const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
            ptrace(PTRACE_SETOPTIONS, program_, nullptr, options);
        }
        while (WIFSTOPPED(status)) {
            const int reason = WSTOPSIG(status);
            if (reason == stopAtSystemCall) {
                lookAtSystemCall();
            }
            const long signalToPass = reason == stopAtSystemCall || reason == SIGTRAP ? 0 : reason;
            ptrace(PTRACE_SYSCALL, program_, nullptr, signalToPass);
            waitpid(program_, &status, 0);
        }
        return status;
    }

private:
    void lookAtSystemCall() {
        __ptrace_syscall_info call = {};
        ptrace(PTRACE_GET_SYSCALL_INFO, program_, sizeof call, &call);
        if (call.op != PTRACE_SYSCALL_INFO_ENTRY) {
            return;
        }
        if (call.entry.nr == SYS_openat && isPath(call.entry.args[1])) {
            countOpening();
        }
#ifdef SYS_open
        if (call.entry.nr == SYS_open && isPath(call.entry.args[0])) {
            countOpening();
        }
#endif
    }

    void countOpening() {
        if (--openingsLeft_ == 0) {
            unlink(path_.c_str());
        }
    }

    /// Whether the path stands, NUL-terminated, at an address of the program.
    bool isPath(std::uint64_t address) const {
        std::string text(path_.size() + 1, '?');
        iovec here = {text.data(), text.size()};
        iovec there = {reinterpret_cast<void*>(address), text.size()};
        process_vm_readv(program_, &here, 1, &there, 1, 0);
        return text == path_ + '\0';
    }

    pid_t program_;
    const std::string& path_;
    int openingsLeft_;
};

[[noreturn]] void endAs(int status) {
    if (WIFSIGNALED(status)) {
        signal(WTERMSIG(status), SIG_DFL);
        raise(WTERMSIG(status));
    }
    _exit(WEXITSTATUS(status));
}

} // namespace

ChildResult runWhileFileVanishes(const std::vector<std::string>& arguments, const std::string& path,
                                 int opening, const ChildOptions& options) {
    return runFunction(
        [&] {
            const pid_t program = fork();
            if (program == 0) {
                becomeWatchedProgram(arguments);
            }
            endAs(Watch(program, path, opening).waitForEnd());
        },
        options);
}

} // namespace quillon::support
