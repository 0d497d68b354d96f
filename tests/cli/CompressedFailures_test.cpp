// Runs the program on a family with compressed files, where a tool, its pipe or its file fails.

#include "tests/cli/WalkerRuns.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace quillon::test {
namespace {

namespace fs = std::filesystem;
using support::ChildOptions;
using support::ChildResult;
using support::writeBytes;

class CompressedFailures : public WalkerRuns {};

/// How a file is compressed, and the tool that is looked for to read it.
struct Compression {
    const char* extension;
    const char* command;
    const char* tool;
};

constexpr Compression compressions[] = {{".gz", "gzip", "gunzip"}, {".Z", "compress -f", "uncompress"}};

TEST_F(CompressedFailures, FilesAreReadWithoutStandardOutput) {
    shell("gzip walker.zvx walker.probdef");
    expectRun(infoAfter([] {
                  close(STDOUT_FILENO);
                  close(STDIN_FILENO);
              }),
              "1", "", std::string(allRead) + "Unable to write the report.\n");
    EXPECT_EQ(info().outcome, "0");
}

TEST_F(CompressedFailures, FilesAreReadWhereTheEndOfChildrenIsIgnored) {
    const std::string report = info().out;
    shell("gzip walker.zvx walker.probdef");
    expectRun(infoAfter([] { std::signal(SIGCHLD, SIG_IGN); }), "0", report, allRead);
}

TEST_F(CompressedFailures, NameThatTheShellRefusesLeavesThePipeWithoutAWriter) {
    shell("gzip walker.zvx && mv walker.zvx.gz \"it's.zvx.gz\"");
    ChildOptions options = inScratch();
    options.timeLimit = timeToHang;
    const ChildResult result = support::runFunction(
        [] {
            writeBytes("process", std::to_string(getpid()));
            replaceDescriptor(STDERR_FILENO, "/dev/null"); // for the shell's own words
            becomeTool({"info", "it's.zvx"});
        },
        options);
    expectRun(result, "TIMEOUT", "", "");
    EXPECT_TRUE(fs::remove("/var/tmp/compifstream0." + support::readBytes(scratch / "process")));
}

TEST_F(CompressedFailures, WordsOfTheToolStandAmongTheMessages) {
    const std::string report = info().out;
    shell("gzip walker.zvx");
    writeStandIn("gunzip",
                 "PATH=/usr/local/bin:/usr/bin:/bin\necho 'gunzip: a remark' >&2\nexec gunzip \"$@\"");
    expectRun(infoAfter([this] { useStandIns(); }), "0", report, "gunzip: a remark\n" + std::string(allRead));
}

TEST_F(CompressedFailures, FileThatOnlyItsNameCallsCompressedIsReadAsAnEmptyOne) {
    writeBytes(scratch / "empty.zvx", "");
    const std::string told = info("empty.zvx").err;
    for (const Compression& compression : compressions) {
        const std::string file = std::string("a.zvx") + compression.extension;
        writeBytes(scratch / file, "no compressed text");
        writeSilencedTool(compression.tool);
        expectRun(infoAfter([this] { useStandIns(); }, file), "1", "", told);
    }
}

TEST_F(CompressedFailures, FileThatIsCutOffIsReadAsTheShorterText) {
    for (const auto& [extension, command, tool] : compressions) {
        shell(std::string(command) + " walker.probdef");
        const std::string name = std::string("walker.probdef") + extension;
        const std::string whole = support::readBytes(scratch / name);
        writeSilencedTool(tool);
        for (const std::size_t length :
             {whole.size() / 2, whole.size() - 9, std::size_t{30}, std::size_t{2}, std::size_t{0}}) {
            SCOPED_TRACE(name + " of " + std::to_string(length) + " bytes");
            writeBytes(scratch / name, whole.substr(0, length));
            const ChildResult cut = infoAfter([this] { useStandIns(); });
            shell(std::string(tool) + " -c " + name + " >walker.probdef 2>/dev/null; true");
            const ChildResult shorter = info();
            expectRun(cut, shorter.outcome, shorter.out, shorter.err);
            fs::remove(scratch / "walker.probdef");
        }
        writeBytes(scratch / name, whole.substr(0, whole.size() / 2));
        EXPECT_EQ(infoAfter([this] { useStandIns(); }).outcome, "1");
        fs::remove(scratch / name);
        fs::copy(walker / "walker.probdef", scratch.path());
    }
}

TEST_F(CompressedFailures, ToolThatDiesHalfWayLeavesTheShorterText) {
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

TEST_F(CompressedFailures, ToolThatFailsAtItsStartLeavesAnEmptyFile) {
    writeBytes(scratch / "empty.zvx", "");
    writeBytes(scratch / "packed.zvx.gz", "");
    writeStandIn("gunzip", "exit 1");
    expectRun(infoAfter([this] { useStandIns(); }, "packed.zvx"), "1", "", info("empty.zvx").err);
}

TEST_F(CompressedFailures, ToolThatNeitherWritesNorEndsIsWaitedFor) {
    shell("gzip walker.zvx");
    writeStandIn("gunzip", "exec sleep 60");
    ChildOptions options = inScratch();
    options.timeLimit = timeToHang;
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

TEST_F(CompressedFailures, TemporaryDirectoryThatCannotBeWrittenIsNamedWithTheCause) {
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

TEST_F(CompressedFailures, PipeThatIsThereAlreadyIsNamedWithTheCause) {
    shell("gzip walker.zvx");
    const ChildResult result = infoAfter([this] {
        writeBytes(scratch / "process", std::to_string(getpid()));
        writeBytes("/var/tmp/compifstream0." + std::to_string(getpid()), "");
    });
    const std::string process = support::readBytes(scratch / "process");
    expectRun(result, "1", "", messagesWithoutPipe(process, "File exists"));
    EXPECT_TRUE(fs::remove("/var/tmp/compifstream0." + process)) << "Somebody else's file has been removed.";
}

} // namespace
} // namespace quillon::test
