#pragma once

#include "tests/support/AddressCheck.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace quillon::test {

/// Whether the program was built to count the lines that it runs.
#ifdef QUILLON_COVERAGE
inline constexpr bool countsLines = true;
#else
inline constexpr bool countsLines = false;
#endif

/// How long a run is watched that is not expected to end: long enough to come to where it hangs.
inline constexpr std::chrono::milliseconds timeToHang(support::checksAddresses ? 3000 : 1000);

/// What a run that reads all files says.
inline constexpr const char* allRead =
    "Read walker.zvx\nRead walker.probdef\nRead walker.model\nRead walker.limits\nRead walker.scaledef\n";

/// The walker's family in a directory of its own that everybody may look into, and runs of the program there.
class WalkerRuns : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::copy(walker, scratch.path());
        std::filesystem::permissions(
            scratch.path(), std::filesystem::perms::others_read | std::filesystem::perms::others_exec,
            std::filesystem::perm_options::add);
    }

    /// Runs the program in the directory, once `prepare` has changed what it inherits.
    support::ChildResult infoAfter(const std::function<void()>& prepare,
                                   const std::string& file = "walker.zvx") const {
        return support::runFunction(
            [&] {
                prepare();
                becomeTool({"info", file});
            },
            inScratch());
    }

    support::ChildResult info(const std::string& file = "walker.zvx") const {
        return infoAfter([] {}, file);
    }

    static void becomeTool(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), QUILLON_TOOL);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        execv(QUILLON_TOOL, pointers.data());
    }

    support::ChildOptions inScratch() const {
        support::ChildOptions options;
        options.directory = scratch.path();
        options.timeLimit = std::chrono::minutes(1); // for 100 MB on a busy machine
        return options;
    }

    void shell(const std::string& line) const {
        ASSERT_EQ(support::runProgram({"/bin/sh", "-c", line}, inScratch()).outcome, "0") << line;
    }

    /// Puts a program before those of the search path; each run gets that path by `useStandIns`.
    void writeStandIn(const std::string& name, const std::string& script) const {
        std::filesystem::create_directory(scratch / "bin");
        support::writeBytes(scratch / ("bin/" + name), "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(scratch / ("bin/" + name), std::filesystem::perms::all);
    }

    /// A stand-in that runs the tool itself without its complaints, whose words are its own.
    void writeSilencedTool(const std::string& name) const {
        writeStandIn(name, "PATH=/usr/local/bin:/usr/bin:/bin\nexec " + name + " \"$@\" 2>/dev/null");
    }

    void useStandIns() const {
        setenv("PATH", (scratch / "bin" + ":/usr/local/bin:/usr/bin:/bin").c_str(), 1);
    }

    const std::filesystem::path walker = std::filesystem::path(QUILLON_SOURCE_DIR) / "examples" / "walker";
    const support::ScratchDirectory scratch;
};

/// Opens the file for writing in the place of a descriptor.
inline void replaceDescriptor(int descriptor, const char* path) {
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    dup2(file, descriptor);
}

/// Compares the whole of a run, of which nothing may be left.
inline void expectRun(const support::ChildResult& result, const std::string& outcome, const std::string& out,
                      const std::string& err) {
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_TRUE(result.out == out) << "Standard output differs.";
    EXPECT_EQ(result.err, err);
    EXPECT_FALSE(result.leftProcesses);
}

} // namespace quillon::test
