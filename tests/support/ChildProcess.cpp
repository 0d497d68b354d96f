#include "tests/support/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#ifdef QUILLON_COVERAGE
extern "C" void __gcov_dump();
#endif

namespace quillon::support {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds pollInterval{10};
constexpr int exitCodeOfFailedStart = 127;

[[noreturn]] void throwSystemError(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// One captured output: the reading end of a pipe and what came out of it.
struct Capture {
    int readEnd = -1;
    int writeEnd = -1;
    std::string text = {};

    void open() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throwSystemError("pipe2");
        }
        readEnd = ends[0];
        writeEnd = ends[1];
    }

    void closeWriteEnd() {
        close(writeEnd);
        writeEnd = -1;
    }

    void readSome() {
        std::array<char, 65536> block{};
        const ssize_t count = read(readEnd, block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            closeReadEnd();
        }
    }

    void closeReadEnd() {
        if (readEnd >= 0) {
            close(readEnd);
        }
        readEnd = -1;
    }
};

/// The arguments or the environment as the system calls take them; points into `texts`.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void resetSignals() {
    for (const int signalNumber : {SIGPIPE, SIGINT, SIGTERM, SIGCHLD}) {
        signal(signalNumber, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Runs between fork and the child's own work.
void prepareChild(const ChildOptions& options, const Capture& out, const Capture& err) {
    setpgid(0, 0);
    resetSignals();
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const bool ready = nothing >= 0 && dup2(nothing, STDIN_FILENO) >= 0 &&
                       dup2(out.writeEnd, STDOUT_FILENO) >= 0 && dup2(err.writeEnd, STDERR_FILENO) >= 0 &&
                       (options.directory.empty() || chdir(options.directory.c_str()) == 0);
    if (!ready) {
        std::perror("preparing a child process");
        _exit(exitCodeOfFailedStart);
    }
}

std::string describe(int status) {
    if (WIFEXITED(status)) {
        return std::to_string(WEXITSTATUS(status));
    }
    const int signalNumber = WTERMSIG(status);
    if (const char* name = sigabbrev_np(signalNumber)) {
        return std::string("SIG") + name;
    }
    return "signal " + std::to_string(signalNumber);
}

/// Watches a child from its start to its end.
class Watch {
public:
    Watch(pid_t child, const ChildOptions& options, Capture& out, Capture& err)
        : child_(child), options_(options), out_(out), err_(err) {}

    ChildResult waitForEnd() {
        const Clock::time_point deadline = Clock::now() + options_.timeLimit;
        while (!ended_ && Clock::now() < deadline) {
            collectOutput(pollInterval);
            reap(WNOHANG);
        }
        if (!ended_) {
            kill(-child_, SIGKILL);
            reap(0);
            result_.outcome = "TIMEOUT";
        }
        collectFromStragglers();
        result_.out = std::move(out_.text);
        result_.err = std::move(err_.text);
        return std::move(result_);
    }

private:
    bool outputsOpen() const { return out_.readEnd >= 0 || err_.readEnd >= 0; }

    /// Reads what there is; waits for it, or for the end of the child once it has closed its outputs.
    void collectOutput(milliseconds patience) {
        if (!outputsOpen()) {
            std::this_thread::sleep_for(milliseconds(1));
            return;
        }
        std::array<pollfd, 2> ends{{{out_.readEnd, POLLIN, 0}, {err_.readEnd, POLLIN, 0}}};
        if (poll(ends.data(), ends.size(), static_cast<int>(patience.count())) <= 0) {
            return;
        }
        if (ends[0].revents != 0) {
            out_.readSome();
        }
        if (ends[1].revents != 0) {
            err_.readSome();
        }
    }

    void reap(int flags) {
        int status = 0;
        rusage usage{};
        pid_t reaped = -1;
        do {
            reaped = wait4(child_, &status, flags, &usage);
        } while (reaped < 0 && errno == EINTR);
        if (reaped == child_) {
            ended_ = true;
            result_.outcome = describe(status);
            result_.peakMemory = usage.ru_maxrss;
        }
    }

    void collectFromStragglers() {
        const Clock::time_point end = Clock::now() + options_.timeForStragglers;
        while (outputsOpen() && Clock::now() < end) {
            collectOutput(pollInterval);
        }
        result_.leftProcesses = outputsOpen();
        kill(-child_, SIGKILL);
        out_.closeReadEnd();
        err_.closeReadEnd();
    }

    pid_t child_;
    const ChildOptions& options_;
    Capture& out_;
    Capture& err_;
    bool ended_ = false;
    ChildResult result_ = {};
};

/// Forks; `body` is what the child does once it is prepared, and does not return.
ChildResult runChild(const ChildOptions& options, const std::function<void()>& body) {
    // The child would write once more what stands in the buffers of its parent.
    std::fflush(nullptr);
    std::cout.flush();
    std::cerr.flush();
    Capture out;
    Capture err;
    out.open();
    err.open();
    const pid_t child = fork();
    if (child < 0) {
        throwSystemError("fork");
    }
    if (child == 0) {
        [&]() noexcept {
            prepareChild(options, out, err);
            body();
        }();
    }
    // Done on both sides, so that the group exists whoever runs first.
    setpgid(child, child);
    out.closeWriteEnd();
    err.closeWriteEnd();
    return Watch(child, options, out, err).waitForEnd();
}

#ifdef QUILLON_COVERAGE
const uid_t firstUser = geteuid();
#endif

[[noreturn]] void endChild() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
#ifdef QUILLON_COVERAGE
    // A child that has become another user may not write the counts, and would complain on standard error.
    if (geteuid() == firstUser) {
        __gcov_dump();
    }
#endif
    _exit(0);
}

} // namespace

ChildResult runProgram(const std::vector<std::string>& arguments, const ChildOptions& options) {
    std::vector<std::string> argumentTexts = arguments;
    std::vector<std::string> environmentTexts = options.environment.value_or(std::vector<std::string>());
    const std::vector<char*> argumentPointers = pointersTo(argumentTexts);
    const std::vector<char*> environmentPointers = pointersTo(environmentTexts);
    char* const* environmentToUse = options.environment ? environmentPointers.data() : environ;
    return runChild(options, [&] {
        execve(argumentPointers[0], argumentPointers.data(), environmentToUse);
        std::perror(argumentPointers[0]);
        _exit(exitCodeOfFailedStart);
    });
}

ChildResult runFunction(const std::function<void()>& body, const ChildOptions& options) {
    return runChild(options, [&] {
        body();
        endChild();
    });
}

} // namespace quillon::support
