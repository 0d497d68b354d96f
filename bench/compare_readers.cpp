// Measures whole runs of programs side by side on inputs of equal body count, and prints a table for each
// size:
//
//     compare_readers BUILD_DIRECTORY [BODIES...]
//
// The programs are quillon and its yardstick, of which the build directory has both, and of other formats'
// readers those that are installed. Runs of all programs take turns. Times are those of the processor, at
// best.

#include "bench/ProcessTiming.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using bench::Command;
using bench::Summary;

/// A program to measure: its name in the table, and a run on the inputs in the working directory.
struct Contestant {
    std::string name;
    Command command;
};

std::string findProgram(const char* name) {
    for (const char* directory : {"/usr/bin", "/usr/local/bin"}) {
        const fs::path path = fs::path(directory) / name;
        if (fs::exists(path)) {
            return path.string();
        }
    }
    return {};
}

std::string lineCountOf(const std::string& path) {
    std::ifstream file(path);
    return std::to_string(std::count(std::istreambuf_iterator<char>(file), {}, '\n'));
}

/// Generates the inputs of one size and tells the runs on them.
std::vector<Contestant> prepare(const fs::path& build, const std::string& bodies, const std::string& shape) {
    const std::string tool = (build / "quillon").string();
    const fs::path bench = build / "bench";
    bench::runOnce({{(bench / "generate_family").string(), bodies, ".", shape}});
    const std::vector<std::string> family = {"family.zvx", "family.probdef", "family.model", "family.limits",
                                             "family.scaledef"};
    bench::runOnce({{tool, "info", family.front()}, "report"});
    std::vector<std::string> yardstick = {(bench / "yardstick").string(), lineCountOf("report")};
    yardstick.insert(yardstick.end(), family.begin(), family.end());
    std::vector<Contestant> contestants = {{"yardstick", {yardstick}},
                                           {"quillon", {{tool, "info", family.front()}}}};
    if (const std::string checker = findProgram("check_urdf"); !checker.empty()) {
        bench::runOnce({{(bench / "generate_urdf").string(), bodies}, "family.urdf"});
        contestants.push_back({"check_urdf", {{checker, "family.urdf"}}});
    }
    // The importer takes minutes for more bodies: its time grows with their square.
    constexpr double mostBodiesToImport = 10000;
    const std::string importer = findProgram("assimp");
    if (!importer.empty() && std::atof(bodies.c_str()) <= mostBodiesToImport) {
        bench::runOnce({{(bench / "generate_bvh").string(), bodies}, "family.bvh"});
        contestants.push_back({"assimp info", {{importer, "info", "family.bvh"}}});
    }
    return contestants;
}

void compare(const fs::path& build, const std::string& bodies, const std::string& shape) {
    const bench::WorkDirectory work;
    fs::current_path(work.path());
    const std::vector<Contestant> contestants = prepare(build, bodies, shape);
    std::vector<Command> commands;
    for (const Contestant& contestant : contestants) {
        commands.push_back(contestant.command);
    }
    const std::vector<Summary> summaries = bench::measureInTurn(commands);
    const double yardstick = summaries.front().processor;
    for (std::size_t i = 0; i < contestants.size(); ++i) {
        const Summary& summary = summaries[i];
        std::printf("| %s | %s | %s | %.0f | %.2f | %.2f | %.1f |\n", bodies.c_str(), shape.c_str(),
                    contestants[i].name.c_str(), summary.best, summary.processor / std::atof(bodies.c_str()),
                    summary.processor / yardstick, summary.peakMegabytes);
    }
    std::fflush(stdout);
}

} // namespace

int main(int argumentCount, char** argumentTexts) {
    if (argumentCount < 2) {
        std::fputs("Usage: compare_readers BUILD_DIRECTORY [BODIES...]\n", stderr);
        return 1;
    }
    const fs::path build = fs::absolute(argumentTexts[1]);
    std::vector<std::string> sizes(argumentTexts + 2, argumentTexts + argumentCount);
    if (sizes.empty()) {
        sizes = {"50", "1000", "10000", "100000"};
    }
    std::puts("| bodies | shape | program | best us | us/body | of the yardstick | peak MB |");
    std::puts("|---:|---|---|---:|---:|---:|---:|");
    for (const char* shape : {"chain", "tree"}) {
        for (const std::string& bodies : sizes) {
            compare(build, bodies, shape);
        }
    }
}
