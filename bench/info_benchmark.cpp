// Measures whole runs of a program over families of growing size:
//
//     info_benchmark TOOL HELLO GENERATE_FAMILY [CHECK_URDF GENERATE_URDF]
//
// TOOL is run as `TOOL info family.zvx`; HELLO is the yard-stick for a start. All outputs go to /dev/null.
// "us" is the time on the clock. "cpu us" is the processor's time for the process, its start included, at
// best; it is what the figures per body and the ratios are made of, since other work on the machine disturbs
// it less.

#include "bench/ProcessTiming.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using bench::measure;
using bench::runOnce;
using bench::Summary;

struct Row {
    int bodies;
    Summary summary;

    double timePerBody() const { return summary.processor / bodies; }
    double memoryPerBody() const { return 1024.0 * summary.peakMegabytes / bodies; }
};

std::vector<Row> measureFamilies(const std::string& tool, const std::string& generator,
                                 const std::string& shape, const fs::path& work) {
    std::printf("\n%-6s %7s %9s %9s %9s %9s %9s %7s %8s %9s\n", shape.c_str(), "bodies", "input MB",
                "best us", "median us", "cpu us", "us/body", "MB/s", "peak MB", "KiB/body");
    std::vector<Row> rows;
    for (const int bodies : {50, 1000, 10000, 100000}) {
        const fs::path directory = work / (shape + std::to_string(bodies));
        runOnce({{generator, std::to_string(bodies), directory.string(), shape}});
        const double input = bench::megabytesIn(directory);
        fs::current_path(directory);
        const Row row{bodies, measure({{tool, "info", "family.zvx"}})};
        std::printf("%-6s %7d %9.3f %9.0f %9.0f %9.0f %9.3f %7.1f %8.2f %9.2f\n", "", bodies, input,
                    row.summary.best, row.summary.median, row.summary.processor, row.timePerBody(),
                    input * 1e6 / row.summary.processor, row.summary.peakMegabytes, row.memoryPerBody());
        std::fflush(stdout);
        rows.push_back(row);
        fs::current_path("/");
        fs::remove_all(directory);
    }
    return rows;
}

void compareWithUrdf(const std::string& checker, const std::string& generator, const std::vector<Row>& rows,
                     const fs::path& work) {
    std::printf("\n%-10s %7s %9s %9s %9s %9s\n", "check_urdf", "links", "best us", "median us", "cpu us",
                "us/link");
    for (const Row& row : rows) {
        const std::string file = (work / "family.urdf").string();
        runOnce({{generator, std::to_string(row.bodies)}, file});
        const Summary summary = measure({{checker, file}});
        const double perLink = summary.processor / row.bodies;
        std::printf("%-10s %7d %9.0f %9.0f %9.0f %9.3f   %.1f times quillon's time for a body\n", "",
                    row.bodies, summary.best, summary.median, summary.processor, perLink,
                    perLink / row.timePerBody());
        std::fflush(stdout);
    }
}

} // namespace

int main(int argumentCount, char** argumentTexts) {
    // The runs have working directories of their own.
    std::vector<std::string> arguments;
    arguments.reserve(static_cast<std::size_t>(argumentCount));
    for (int i = 0; i < argumentCount; ++i) {
        arguments.push_back(fs::absolute(argumentTexts[i]).string());
    }
    if (arguments.size() != 4 && arguments.size() != 6) {
        std::fputs("Usage: info_benchmark TOOL HELLO GENERATE_FAMILY [CHECK_URDF GENERATE_URDF]\n", stderr);
        return 1;
    }
    const bench::WorkDirectory work;
    const Summary hello = measure({{arguments[2]}});
    std::printf("One line through an ostream: best %.0f us, median %.0f us, cpu %.0f us, peak %.2f MB\n",
                hello.best, hello.median, hello.processor, hello.peakMegabytes);
    std::vector<Row> rows;
    for (const char* shape : {"chain", "tree"}) {
        rows = measureFamilies(arguments[1], arguments[3], shape, work.path());
        const Row& person = rows[0];
        const Row& thousand = rows[1];
        const Row& crowd = rows[3];
        std::printf("A person takes %.2f times as long as one line (by the clock: best %.2f, median %.2f).\n",
                    person.summary.processor / hello.processor, person.summary.best / hello.best,
                    person.summary.median / hello.median);
        std::printf(
            "A body of 100 000 takes %.2f times the time and %.2f times the memory of one of 1 000.\n",
            crowd.timePerBody() / thousand.timePerBody(), crowd.memoryPerBody() / thousand.memoryPerBody());
    }
    if (arguments.size() == 6) {
        compareWithUrdf(arguments[4], arguments[5], rows, work.path());
    }
}
