// Runs the program where the machine around it fails. What is wrong with the files themselves is tested by
// the folders beside this file.

#include "tests/files/FileTestSupport.h"
#include "tests/support/AddressCheck.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/VanishingFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillon {
namespace {

namespace fs = std::filesystem;
using support::ChildOptions;
using support::ChildResult;
using support::ScratchDirectory;
using support::writeBytes;

/// Whether the program was built to count the lines that it runs.
#ifdef QUILLON_COVERAGE
constexpr bool countsLines = true;
#else
constexpr bool countsLines = false;
#endif
using test::runAsNobody;

constexpr const char* allRead =
    "Read walker.zvx\nRead walker.probdef\nRead walker.model\nRead walker.limits\nRead walker.scaledef\n";
constexpr const char* unwritten = "Unable to write the report.\n";

/// The walker's family in a directory of its own that everybody may look into.
class MachineFailures : public ::testing::Test {
protected:
    void SetUp() override {
        fs::copy(fs::path(QUILLON_SOURCE_DIR) / "examples" / "walker", scratch.path());
        fs::permissions(scratch.path(), fs::perms::others_read | fs::perms::others_exec,
                        fs::perm_options::add);
    }

    /// Runs the program in the directory, once `prepare` has changed what it inherits.
    ChildResult infoAfter(const std::function<void()>& prepare,
                          const std::string& file = "walker.zvx") const {
        return support::runFunction(
            [&] {
                prepare();
                becomeTool({"info", file});
            },
            inScratch());
    }

    ChildResult info(const std::string& file = "walker.zvx") const {
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

    ChildOptions inScratch() const {
        ChildOptions options;
        options.directory = scratch.path();
        return options;
    }

    void shell(const std::string& line) const {
        ASSERT_EQ(support::runProgram({"/bin/sh", "-c", line}, inScratch()).outcome, "0") << line;
    }

    /// Puts a program before those of the search path; each run gets that path by `useStandIns`.
    void writeStandIn(const std::string& name, const std::string& script) const {
        fs::create_directory(scratch / "bin");
        writeBytes(scratch / ("bin/" + name), "#!/bin/sh\n" + script + "\n");
        fs::permissions(scratch / ("bin/" + name), fs::perms::all);
    }

    void useStandIns() const {
        setenv("PATH", (scratch / "bin" + ":/usr/local/bin:/usr/bin:/bin").c_str(), 1);
    }

    const ScratchDirectory scratch;
};

void replaceDescriptor(int descriptor, const char* path) {
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    dup2(file, descriptor);
}

void expectRun(const ChildResult& result, const std::string& outcome, const std::string& out,
               const std::string& err) {
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_TRUE(result.out == out) << "Standard output differs.";
    EXPECT_EQ(result.err, err);
    EXPECT_FALSE(result.leftProcesses);
}

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

TEST_F(MachineFailures, CompressedFilesAreReadWithoutStandardOutput) {
    shell("gzip walker.zvx walker.probdef");
    expectRun(infoAfter([] {
                  close(STDOUT_FILENO);
                  close(STDIN_FILENO);
              }),
              "1", "", std::string(allRead) + unwritten);
    EXPECT_EQ(info().outcome, "0");
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

// --- Files that are there and cannot be read -----------------------------------------------------

/// A file of the family, the "Read" lines that come before it, and what is told when it cannot be opened.
struct FamilyFile {
    std::string name;
    std::string readBefore;
    /// The reader's own line for a file that does not open once it has passed the check.
    std::string unopened;
};

std::vector<FamilyFile> familyFiles() {
    return {
        {"walker.zvx", "", "Unable to open 'walker.zvx'."},
        {"walker.probdef", "Read walker.zvx\n", "Unable to open 'walker.probdef'."},
        {"walker.model", "Read walker.zvx\nRead walker.probdef\n",
         "Unable to open model file 'walker.model'."},
        {"walker.limits", "Read walker.zvx\nRead walker.probdef\nRead walker.model\n",
         "Unable to open limit data file \"walker.limits\"."},
        {"walker.scaledef", "Read walker.zvx\nRead walker.probdef\nRead walker.model\nRead walker.limits\n",
         "Couldn't open \"walker.scaledef\"."},
    };
}

TEST_F(MachineFailures, FileWithoutPermissionIsNamedWithTheCause) {
    if (countsLines) {
        GTEST_SKIP() << "as another user the program may not write its counts, and says so";
    }
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        fs::permissions(scratch / file.name, fs::perms::none);
        const ChildResult result = runAsNobody([this] {
            fs::current_path(scratch.path());
            becomeTool({"info", "walker.zvx"});
        });
        expectRun(result, "1", "",
                  file.readBefore + "\n\nERROR: Unable to read \"" + file.name +
                      "\".\n       Insufficient access to read file.  Check permissions.\n\n");
        fs::permissions(scratch / file.name, fs::perms::all);
    }
}

// Each file is opened twice before it is read: the specification by two checks, every other one for its time
// while the specification is read, and by its own check.
TEST_F(MachineFailures, FileThatVanishesBehindItsCheckIsNotOpened) {
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        const std::string content = support::readBytes(scratch / file.name);
        const ChildResult result =
            support::runWhileFileVanishes({QUILLON_TOOL, "info", "walker.zvx"}, file.name, 3, inScratch());
        if (result.outcome == support::cannotWatch) {
            GTEST_SKIP() << "no process may watch another here";
        }
        EXPECT_FALSE(fs::exists(scratch / file.name));
        expectRun(result, "1", "", file.readBefore + "\n\nERROR: " + file.unopened + "\n\n");
        writeBytes(scratch / file.name, content);
    }
}

TEST_F(MachineFailures, FileThatVanishesBeforeItsLastCheckDoesNotExist) {
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        const std::string content = support::readBytes(scratch / file.name);
        const ChildResult result =
            support::runWhileFileVanishes({QUILLON_TOOL, "info", "walker.zvx"}, file.name, 2, inScratch());
        if (result.outcome == support::cannotWatch) {
            GTEST_SKIP() << "no process may watch another here";
        }
        // The reader of the specification adds its own line to that of the check.
        const std::string first = file.name == "walker.zvx" ? file.unopened + "\n       " : "";
        expectRun(result, "1", "",
                  file.readBefore + "\n\nERROR: " + first + "Unable to open \"" + file.name +
                      "\".\n       File does not exist.\n\n");
        writeBytes(scratch / file.name, content);
    }
}

TEST_F(MachineFailures, PipeWithAWriterIsReadAsAFile) {
    const std::string report = info().out;
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        shell("mv " + file.name + " kept && mkfifo " + file.name);
        const std::string line = "cat kept >" + file.name + " & exec " + QUILLON_TOOL + " info walker.zvx";
        expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), "0", report, allRead);
        shell("mv kept " + file.name);
    }
}

// A script sets a limit of its own.
TEST_F(MachineFailures, PipeThatNobodyWritesToIsWaitedFor) {
    shell("rm walker.limits && mkfifo walker.limits");
    ChildOptions options = inScratch();
    options.timeLimit = std::chrono::milliseconds(support::checksAddresses ? 2000 : 500);
    expectRun(support::runProgram({QUILLON_TOOL, "info", "walker.zvx"}, options), "TIMEOUT", "",
              "Read walker.zvx\nRead walker.probdef\nRead walker.model\n");
}

// --- Compressed files ----------------------------------------------------------------------------

TEST_F(MachineFailures, CompressedFileThatIsCutOffIsReadAsTheShorterText) {
    shell("gzip walker.probdef");
    const std::string whole = support::readBytes(scratch / "walker.probdef.gz");
    // The tool's own complaint goes to the same standard error, in words of its own.
    writeStandIn("gunzip", "PATH=/usr/local/bin:/usr/bin:/bin\nexec gunzip \"$@\" 2>/dev/null");
    for (const std::size_t length : {whole.size() / 2, whole.size() - 9, std::size_t{30}, std::size_t{0}}) {
        SCOPED_TRACE(length);
        writeBytes(scratch / "walker.probdef.gz", whole.substr(0, length));
        const ChildResult cut = infoAfter([this] { useStandIns(); });
        shell("gunzip -c walker.probdef.gz >walker.probdef 2>/dev/null; true");
        const ChildResult shorter = info();
        expectRun(cut, shorter.outcome, shorter.out, shorter.err);
        fs::remove(scratch / "walker.probdef");
    }
    writeBytes(scratch / "walker.probdef.gz", whole.substr(0, whole.size() / 2));
    EXPECT_EQ(infoAfter([this] { useStandIns(); }).outcome, "1");
}

TEST_F(MachineFailures, ToolThatDiesHalfWayLeavesTheShorterText) {
    const std::string problem = support::readBytes(scratch / "walker.probdef");
    writeBytes(scratch / "half", problem.substr(0, problem.size() / 2));
    writeBytes(scratch / "walker.probdef", problem.substr(0, problem.size() / 2));
    const ChildResult shorter = info();
    EXPECT_EQ(shorter.outcome, "1");
    fs::rename(scratch / "walker.probdef", scratch / "walker.probdef.gz");
    for (const char* const end : {"exit 1", "kill -KILL $$"}) {
        SCOPED_TRACE(end);
        writeStandIn("gunzip", std::string("cat half\n") + end);
        expectRun(infoAfter([this] { useStandIns(); }), "1", "", shorter.err);
    }
}

TEST_F(MachineFailures, ToolThatFailsAtItsStartLeavesAnEmptyFile) {
    writeBytes(scratch / "empty.zvx", "");
    writeBytes(scratch / "packed.zvx.gz", "");
    writeStandIn("gunzip", "exit 1");
    expectRun(infoAfter([this] { useStandIns(); }, "packed.zvx"), "1", "", info("empty.zvx").err);
}

TEST_F(MachineFailures, ToolThatNeitherWritesNorEndsIsWaitedFor) {
    shell("gzip walker.zvx");
    writeStandIn("gunzip", "exec sleep 60");
    ChildOptions options = inScratch();
    options.timeLimit = std::chrono::milliseconds(support::checksAddresses ? 2000 : 500);
    const ChildResult result = support::runFunction(
        [this] {
            useStandIns();
            writeBytes(scratch / "process", std::to_string(getpid()));
            becomeTool({"info", "walker.zvx"});
        },
        options);
    EXPECT_EQ(result.outcome, "TIMEOUT");
    EXPECT_EQ(result.out + result.err, "");
    // Such an end leaves the pipe behind.
    EXPECT_TRUE(fs::remove("/var/tmp/compifstream0." + support::readBytes(scratch / "process")));
}

/// What is told when the pipe of the specification cannot be made.
std::string messagesWithoutPipe(const std::string& process, const std::string& cause) {
    return "\n\nERROR: Unable to open 'walker.zvx'.\n       Unable to create named pipe "
           "\"/var/tmp/compifstream0." +
           process + "\".\n       " + cause + "\n\n";
}

TEST_F(MachineFailures, TemporaryDirectoryThatCannotBeWrittenIsNamedWithTheCause) {
    if (countsLines) {
        GTEST_SKIP() << "as another user the program may not write its counts, and says so";
    }
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can put another directory in the place of /var/tmp";
    }
    shell("gzip walker.zvx && mkdir -m 777 notes");
    const ChildResult result = support::runFunction(
        [] {
            const bool isReplaced = unshare(CLONE_NEWNS) == 0 &&
                                    mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                                    mount("none", "/var/tmp", "tmpfs", 0, "mode=0755") == 0;
            if (!isReplaced || setgid(65534) != 0 || setuid(65534) != 0) {
                _exit(77);
            }
            writeBytes("notes/process", std::to_string(getpid()));
            becomeTool({"info", "walker.zvx"});
        },
        inScratch());
    if (result.outcome == "77") {
        GTEST_SKIP() << "no directory can be put in the place of /var/tmp here";
    }
    const std::string process = support::readBytes(scratch / "notes/process");
    expectRun(result, "1", "", messagesWithoutPipe(process, "Permission denied"));
}

TEST_F(MachineFailures, PipeThatIsThereAlreadyIsNamedWithTheCause) {
    shell("gzip walker.zvx");
    const ChildResult result = infoAfter([this] {
        writeBytes(scratch / "process", std::to_string(getpid()));
        writeBytes("/var/tmp/compifstream0." + std::to_string(getpid()), "");
    });
    const std::string process = support::readBytes(scratch / "process");
    expectRun(result, "1", "", messagesWithoutPipe(process, "File exists"));
    EXPECT_TRUE(fs::remove("/var/tmp/compifstream0." + process)) << "Somebody else's file has been removed.";
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
} // namespace quillon
