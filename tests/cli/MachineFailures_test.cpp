// Runs the program where the machine around it fails. What is wrong with the files themselves is tested by
// the folders beside this file.

#include "tests/cli/WalkerRuns.h"
#include "tests/support/AddressCheck.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace quillon::test {
namespace {

namespace fs = std::filesystem;
using support::ChildOptions;
using support::ChildResult;
using support::writeBytes;

constexpr const char* unwritten = "Unable to write the report.\n";

class MachineFailures : public WalkerRuns {};

// --- Outputs -------------------------------------------------------------------------------------

TEST_F(MachineFailures, ReportThatFindsNoRoomIsAnError) {
    expectRun(infoAfter([] { replaceDescriptor(STDOUT_FILENO, "/dev/full"); }), "1", "",
              std::string(allRead) + unwritten);
}

TEST_F(MachineFailures, ReportWithoutStandardOutputIsAnError) {
    expectRun(infoAfter([] { close(STDOUT_FILENO); }), "1", "", std::string(allRead) + unwritten);
    expectRun(infoAfter([] {
                  close(STDOUT_FILENO);
                  close(STDIN_FILENO);
              }),
              "1", "", std::string(allRead) + unwritten);
}

TEST_F(MachineFailures, MessagesThatFindNoRoomAreLostAndTheReportIsWhole) {
    const std::string report = info().out;
    ASSERT_NE(report, "");
    expectRun(infoAfter([] { replaceDescriptor(STDERR_FILENO, "/dev/full"); }), "0", report, "");
    expectRun(infoAfter([] { close(STDERR_FILENO); }), "0", report, "");
    shell("gzip walker.zvx walker.probdef");
    expectRun(infoAfter([] { close(STDERR_FILENO); }), "0", report, "");
}

TEST_F(MachineFailures, ErrorThatNobodyHearsStillEndsInExitCodeOne) {
    expectRun(infoAfter([] { close(STDERR_FILENO); }, "none.zvx"), "1", "", "");
    expectRun(infoAfter([] {
                  close(STDERR_FILENO);
                  close(STDOUT_FILENO);
              }),
              "1", "", "");
}

TEST_F(MachineFailures, VersionThatFindsNoRoomIsAnError) {
    const auto version = [](const std::function<void()>& prepare) {
        return support::runFunction([&] {
            prepare();
            becomeTool({"-v"});
        });
    };
    expectRun(version([] { replaceDescriptor(STDOUT_FILENO, "/dev/full"); }), "1", "",
              "Unable to write the version.\n");
    expectRun(version([] { close(STDOUT_FILENO); }), "1", "", "Unable to write the version.\n");
}

void closeStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        close(descriptor);
    }
}

// The files of the family then get the numbers of the outputs.
TEST_F(MachineFailures, ProgramWithoutStandardStreamsWritesIntoNoFile) {
    expectRun(infoAfter(closeStandardStreams), "1", "", "");
    expectRun(infoAfter(closeStandardStreams, "none.zvx"), "1", "", "");
    shell("gzip walker.zvx walker.probdef");
    expectRun(infoAfter(closeStandardStreams), "1", "", "");
    shell("gunzip walker.zvx walker.probdef");
    for (const fs::directory_entry& entry : fs::directory_iterator(scratch.path())) {
        EXPECT_EQ(support::readBytes(entry.path()), support::readBytes(walker / entry.path().filename()));
    }
}

TEST_F(MachineFailures, ReportIntoAFileThatMayNotGrow) {
    if (countsLines) {
        GTEST_SKIP() << "the counts would find no room either, and say so";
    }
    const std::string report = info().out;
    const auto limited = [this](bool ignoresSignal) {
        return infoAfter([ignoresSignal] {
            std::signal(SIGXFSZ, ignoresSignal ? SIG_IGN : SIG_DFL);
            const int file = open("report", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
            dup2(file, STDOUT_FILENO);
            const rlimit limit = {1000, 1000};
            setrlimit(RLIMIT_FSIZE, &limit);
        });
    };
    expectRun(limited(true), "1", "", std::string(allRead) + unwritten);
    EXPECT_EQ(support::readBytes(scratch / "report"), report.substr(0, 1000));
    expectRun(limited(false), "SIGXFSZ", "", allRead);
}

/// Makes a pipe that nobody reads any more the standard output.
void writeIntoBrokenPipe() {
    int ends[2] = {};
    if (pipe2(ends, O_CLOEXEC) == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
    }
}

TEST_F(MachineFailures, ReaderThatHasGoneEndsTheProgramQuietly) {
    expectRun(infoAfter(writeIntoBrokenPipe), "SIGPIPE", "", allRead);
}

TEST_F(MachineFailures, ReaderThatHasGoneIsAnErrorWhereTheSignalIsIgnored) {
    expectRun(infoAfter([] {
                  std::signal(SIGPIPE, SIG_IGN);
                  writeIntoBrokenPipe();
              }),
              "1", "", std::string(allRead) + unwritten);
}

TEST_F(MachineFailures, ReaderOfTheFirstLineGetsIt) {
    // Much more than a pipe holds.
    std::string problem = "Kym Problem Definition File\nv1.00\n20000\n";
    for (int id = 1; id <= 20000; ++id) {
        problem += std::to_string(id) + " variable number " + std::to_string(id) + "\n";
    }
    writeBytes(scratch / "many.probdef", problem + "0\n0\n0\n0\n0\n");
    writeBytes(scratch / "many.limits", "Kym System Variable Limits File\nv2.00\n");
    writeBytes(scratch / "many.scaledef", "Kym Scale Definition File\nv1.00\nREAL_COUNT: 0\n"
                                          "DEFAULT_REAL_WEIGHT: 0\nLIMIT_ADJUSTMENTS {\n# none\n}\n"
                                          "GLOBAL_CONSTRAINTS {\n}\nTEMPS {\n}\n");
    writeBytes(scratch / "many.zvx", "Kym Problem Specification File\nv1.00\nPROBDEF: many.probdef\n"
                                     "Match: BodyID\nLIMITS: many.limits\nSCALEDEF: many.scaledef\n");
    const std::string line =
        std::string("{ ") + QUILLON_TOOL + " info many.zvx; echo $? >code; } | head -n 1";
    expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), "0",
              "sys_var v1 description=\"variable number 1\"\n",
              "Read many.zvx\nRead many.probdef\nRead many.limits\nRead many.scaledef\n");
    EXPECT_EQ(support::readBytes(scratch / "code"), std::to_string(128 + SIGPIPE) + "\n");
}

// --- What the program is started with ------------------------------------------------------------

TEST_F(MachineFailures, NothingIsNeededOfTheEnvironment) {
    ChildOptions options = inScratch();
    options.environment.emplace();
    expectRun(support::runProgram({QUILLON_TOOL, "info", "walker.zvx"}, options), "0", info().out, allRead);
}

TEST_F(MachineFailures, WorkingDirectoryThatIsGoneHoldsNoFile) {
    const ChildResult result = infoAfter([] {
        fs::create_directory("gone");
        fs::current_path("gone");
        fs::remove("../gone");
    });
    expectRun(result, "1", "", "\n\nERROR: Unable to open \"walker.zvx\".\n       File does not exist.\n\n");
}

TEST_F(MachineFailures, OneFreeDescriptorIsEnough) {
    const ChildResult result = infoAfter([] {
        // Whoever runs the tests may have handed on descriptors beside the three.
        const int lowestFree = dup(STDERR_FILENO);
        close(lowestFree);
        const auto count = static_cast<rlim_t>(lowestFree) + 1;
        const rlimit limit = {count, count};
        setrlimit(RLIMIT_NOFILE, &limit);
    });
    expectRun(result, "0", info().out, allRead);
}

TEST_F(MachineFailures, ProgramThatIsStoppedForAWhileGoesOn) {
    const std::string report = info().out;
    shell("mv walker.zvx kept && mkfifo walker.zvx");
    const std::string line = "(sleep 0.1; kill -STOP $$; sleep 0.1; kill -CONT $$; cat kept >walker.zvx) & "
                             "exec " QUILLON_TOOL " info walker.zvx";
    expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), "0", report, allRead);
}

TEST_F(MachineFailures, WithoutMemoryTheProgramAborts) {
    if (support::checksAddresses) {
        GTEST_SKIP() << "a limit of the address space leaves no room for the checks themselves";
    }
    writeBytes(scratch / "line.limits",
               "Kym System Variable Limits File\nv2.00\n" + std::string(40'000'000, 'x'));
    writeBytes(scratch / "line.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: line.limits\n");
    const ChildResult result = infoAfter(
        [] {
            const rlimit limit = {64'000'000, 64'000'000};
            setrlimit(RLIMIT_AS, &limit);
        },
        "line.zvx");
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.out, "");
    // The words are those of the C++ library.
    EXPECT_TRUE(result.err.starts_with("Read line.zvx\nterminate called")) << result.err;
}

// --- Sizes ---------------------------------------------------------------------------------------

/// What is told about a file of a long name that does not exist: the line that names it is cut at 1023
/// characters, and breaks at its last blank.
std::string messagesOnLongPath(const std::string& path) {
    const std::string line = ("Unable to open \"" + path).substr(0, 1023);
    return "\n\nERROR: Unable to open\n       " + line.substr(15) + "\n       File does not exist.\n\n";
}

TEST_F(MachineFailures, PathOfTenThousandCharactersDoesNotExist) {
    const std::string path(10000, 'p');
    expectRun(info(path), "1", "", messagesOnLongPath(path));
    const std::string deep = "./" + std::string(9998, '/');
    expectRun(info(deep), "1", "", messagesOnLongPath(deep));
    writeBytes(scratch / "long.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: " + path + "\n");
    expectRun(info("long.zvx"), "1", "", "Read long.zvx\n" + messagesOnLongPath(path));
}

TEST_F(MachineFailures, LineOfAHundredMegabytesIsToldByItsStart) {
    const std::size_t length = support::checksAddresses ? 10'000'000 : 100'000'000;
    const std::string line(length, 'x');
    writeBytes(scratch / "line.zvx", line);
    expectRun(
        info("line.zvx"), "1", "",
        "\n\nERROR: File is not a valid problem specification file.\n       Unable to read from file.\n\n");
    writeBytes(scratch / "line.limits", "Kym System Variable Limits File\nv2.00\n" + line);
    writeBytes(scratch / "lines.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: line.limits\n");
    const ChildResult result = info("lines.zvx");
    const std::string told = ("No ':' or '{' following tag '" + line).substr(0, 1023);
    expectRun(result, "1", "",
              "Read lines.zvx\n\n\nERROR: Unable to read limit data file \"line.limits\".\n"
              "       No ':' or '{' following tag\n       " +
                  told.substr(28) + "\n\n");
    if (!support::checksAddresses) {
        EXPECT_LT(result.peakMemory * 1024, static_cast<long>(5 * length));
    }
}

} // namespace
} // namespace quillon::test
