#include "bench/ProcessTiming.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double microsecondsOf(const timeval& time) {
    return 1e6 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec);
}

Summary summaryOf(const std::vector<Run>& runs) {
    std::vector<double> times;
    Summary summary{0.0, 0.0, runs.front().processorMicroseconds, 0.0};
    for (const Run& run : runs) {
        times.push_back(run.microseconds);
        summary.processor = std::min(summary.processor, run.processorMicroseconds);
        summary.peakMegabytes = std::max(summary.peakMegabytes, run.peakMegabytes);
    }
    std::sort(times.begin(), times.end());
    summary.best = times.front();
    summary.median = times[times.size() / 2];
    return summary;
}

} // namespace

void fail(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    std::exit(1);
}

Run runOnce(Command command) {
    std::vector<char*> arguments;
    for (std::string& argument : command.arguments) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, command.output.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const Clock::time_point start = Clock::now();
    pid_t child = 0;
    int status = 0;
    rusage usage{};
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        fail("a run of " + command.arguments[0] + " failed.");
    }
    const std::chrono::duration<double, std::micro> time = Clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    return {time.count(), microsecondsOf(usage.ru_utime) + microsecondsOf(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024.0};
}

std::vector<Summary> measureInTurn(const std::vector<Command>& commands) {
    std::vector<std::vector<Run>> runs(commands.size());
    const Clock::time_point end = Clock::now() + std::chrono::seconds(commands.size());
    for (std::size_t round = 0; round < 5 || (round < 400 && Clock::now() < end); ++round) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            runs[i].push_back(runOnce(commands[i]));
        }
    }
    std::vector<Summary> summaries;
    for (const std::vector<Run>& runsOfOne : runs) {
        summaries.push_back(summaryOf(runsOfOne));
    }
    return summaries;
}

Summary measure(const Command& command) {
    return measureInTurn({command}).front();
}

double megabytesIn(const fs::path& directory) {
    double sum = 0.0;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        sum += static_cast<double>(entry.file_size());
    }
    return sum / 1e6;
}

WorkDirectory::WorkDirectory() {
    std::string name = (fs::temp_directory_path() / "quillon-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        fail("There is no directory for the generated files.");
    }
    path_ = name;
}

WorkDirectory::~WorkDirectory() {
    fs::current_path("/");
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace bench
