#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// One way to run a program: what, and where its standard output goes.
struct Command {
    std::vector<std::string> arguments;
    std::string output = "/dev/null";
};

/// The cost of one run. `processorMicroseconds` is the processor's time for the process, its start included;
/// other work on the machine disturbs it less than the time on the clock.
struct Run {
    double microseconds;
    double processorMicroseconds;
    double peakMegabytes;
};

/// Many runs of one command: times on the clock, and the least time of the processor.
struct Summary {
    double best;
    double median;
    double processor;
    double peakMegabytes;
};

/// Says why on standard error and ends the program.
[[noreturn]] void fail(const std::string& why);

/// Runs a command; one that does not end with exit code 0 ends this program.
Run runOnce(Command command);

/// Runs the commands in turn, so that other work on the machine meets all of them alike, for about a second
/// each, but at least five times and at most 400 times.
std::vector<Summary> measureInTurn(const std::vector<Command>& commands);
Summary measure(const Command& command);

/// The size of all files in a directory.
double megabytesIn(const std::filesystem::path& directory);

/// The directory that everything is generated in; removed at the end.
class WorkDirectory {
public:
    WorkDirectory();
    WorkDirectory(const WorkDirectory&) = delete;
    WorkDirectory& operator=(const WorkDirectory&) = delete;
    ~WorkDirectory();

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace bench
