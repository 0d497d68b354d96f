#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillon::support {

/// How a child process is run.
struct ChildOptions {
    /// A child that still runs after this time is killed, with its whole process group.
    std::chrono::milliseconds timeLimit = std::chrono::seconds(20);
    /// Background processes that hold the outputs open get this long to end by themselves, once the child
    /// has.
    std::chrono::milliseconds timeForStragglers = std::chrono::seconds(3);
    /// The working directory; empty for that of the caller.
    std::filesystem::path directory = {};
    /// The whole environment as NAME=VALUE; absent for that of the caller. Only `runProgram` looks at it.
    std::optional<std::vector<std::string>> environment = std::nullopt;
};

/// What a child process left.
struct ChildResult {
    /// The exit code in decimal, or "SIGSEGV", "SIGABRT", "signal 9" and so on, or "TIMEOUT".
    std::string outcome;
    /// All bytes that the child, and what it started, wrote to standard output.
    std::string out;
    /// The same for standard error.
    std::string err;
    /// True when processes that the child had started still held its outputs open when their time was over,
    /// too.
    bool leftProcesses = false;
    /// Peak resident memory of the child in KiB.
    long peakMemory = 0;
};

/// Runs the program at the path `arguments[0]` without a shell, its standard input empty, and waits for it.
ChildResult runProgram(const std::vector<std::string>& arguments, const ChildOptions& options = {});

/// Runs `body` in a child process, which exits with 0 when `body` returns; for code that may end the process.
/// What `body` changes in memory is lost; expectations belong to the parent, on the result.
ChildResult runFunction(const std::function<void()>& body, const ChildOptions& options = {});

} // namespace quillon::support
