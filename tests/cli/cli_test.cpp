// Runs the built program over the folders beside this file, one test for each folder; README.md tells the
// format.

#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using support::ChildOptions;
using support::ChildResult;
using support::readBytes;
using support::ScratchDirectory;

const fs::path sourceDirectory = QUILLON_SOURCE_DIR;
const fs::path runsDirectory = sourceDirectory / "tests" / "cli";

// Files of a folder that steer its run and are not input for it.
const std::vector<std::string> requiredFiles = {"args", "stdout", "stderr", "exit_code"};
const std::vector<std::string> optionalFiles = {"env", "setup", "timeout"};

// How the run-time checkers of a build are told what to do; harmless where there are none.
const std::vector<std::string> checkerVariables = {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"};

bool isIn(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::istringstream text(readBytes(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string firstWordOf(const fs::path& file) {
    std::istringstream text(readBytes(file));
    std::string word;
    text >> word;
    return word;
}

/// Adds NAME=VALUE in the place of an entry of that name, or at the end.
void setVariable(std::vector<std::string>& environment, const std::string& entry) {
    const std::string prefix = entry.substr(0, entry.find('=') + 1);
    std::erase_if(environment, [&](const std::string& other) { return other.starts_with(prefix); });
    environment.push_back(entry);
}

void setFromCaller(std::vector<std::string>& environment, const std::string& name, const char* otherwise) {
    const char* value = std::getenv(name.c_str());
    if (value != nullptr || otherwise != nullptr) {
        setVariable(environment, name + "=" + (value != nullptr ? value : otherwise));
    }
}

/// The environment that every run starts from.
std::vector<std::string> cleanEnvironment() {
    std::vector<std::string> environment;
    setFromCaller(environment, "PATH", "/usr/local/bin:/usr/bin:/bin");
    setFromCaller(environment, "HOME", "/");
    setFromCaller(environment, "TMPDIR", "/tmp");
    for (const std::string& name : checkerVariables) {
        setFromCaller(environment, name, nullptr);
    }
    return environment;
}

/// One folder under tests/cli.
struct WholeRun {
    std::string name;

    fs::path folder() const { return runsDirectory / name; }
    bool has(const char* file) const { return fs::exists(folder() / file); }
};

void PrintTo(const WholeRun& run, std::ostream* out) {
    *out << run.name;
}

std::vector<WholeRun> allRuns() {
    std::vector<WholeRun> runs;
    for (const fs::directory_entry& entry : fs::directory_iterator(runsDirectory)) {
        if (entry.is_directory()) {
            runs.push_back({entry.path().filename().string()});
        }
    }
    std::sort(runs.begin(), runs.end(), [](const WholeRun& a, const WholeRun& b) { return a.name < b.name; });
    return runs;
}

class CommandLine : public ::testing::TestWithParam<WholeRun> {
protected:
    void requireFiles() const {
        for (const std::string& file : requiredFiles) {
            ASSERT_TRUE(fs::is_regular_file(run_.folder() / file)) << run_.name << " lacks the file " << file;
        }
    }

    void copyInput() const {
        for (const fs::directory_entry& entry : fs::directory_iterator(run_.folder())) {
            const std::string name = entry.path().filename().string();
            if (!isIn(requiredFiles, name) && !isIn(optionalFiles, name)) {
                fs::copy(entry.path(), scratch_.path() / name,
                         fs::copy_options::recursive | fs::copy_options::copy_symlinks);
            }
        }
    }

    void setUp() const {
        if (!run_.has("setup")) {
            return;
        }
        ChildOptions options;
        options.directory = scratch_.path();
        options.environment = cleanEnvironment();
        setVariable(*options.environment, "QUILLON_SOURCE_DIR=" + sourceDirectory.string());
        const ChildResult result = runProgram({"/bin/sh", (run_.folder() / "setup").string()}, options);
        ASSERT_EQ(result.outcome, "0") << "The setup failed.\n" << result.out << result.err;
    }

    ChildResult runTool() const {
        ChildOptions options;
        options.directory = scratch_.path();
        options.environment = cleanEnvironment();
        if (run_.has("env")) {
            for (const std::string& entry : linesOf(run_.folder() / "env")) {
                setVariable(*options.environment, entry);
            }
        }
        if (run_.has("timeout")) {
            const double seconds = std::stod(firstWordOf(run_.folder() / "timeout"));
            options.timeLimit = std::chrono::milliseconds(static_cast<long>(seconds * 1000));
        }
        std::vector<std::string> arguments = linesOf(run_.folder() / "args");
        arguments.insert(arguments.begin(), QUILLON_TOOL);
        return runProgram(arguments, options);
    }

    const WholeRun run_ = GetParam();
    const ScratchDirectory scratch_;
};

TEST_P(CommandLine, GivesTheStoredOutputs) {
    ASSERT_NO_FATAL_FAILURE(requireFiles());
    copyInput();
    ASSERT_NO_FATAL_FAILURE(setUp());
    const ChildResult result = runTool();
    EXPECT_EQ(result.out, readBytes(run_.folder() / "stdout")) << "Standard output differs.";
    EXPECT_EQ(result.err, readBytes(run_.folder() / "stderr")) << "Standard error differs.";
    EXPECT_EQ(result.outcome, firstWordOf(run_.folder() / "exit_code"));
    EXPECT_FALSE(result.leftProcesses) << "Processes that the program started ran on after its end.";
}

std::string testName(const ::testing::TestParamInfo<WholeRun>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CommandLine);
INSTANTIATE_TEST_SUITE_P(Runs, CommandLine, ::testing::ValuesIn(allRuns()), testName);

} // namespace
} // namespace quillon
