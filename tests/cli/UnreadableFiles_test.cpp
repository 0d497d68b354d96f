// Runs the program on a family of which a file is there and cannot be read, or is no file.

#include "tests/cli/WalkerRuns.h"
#include "tests/files/FileTestSupport.h"
#include "tests/support/VanishingFile.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace quillon::test {
namespace {

namespace fs = std::filesystem;
using support::ChildOptions;
using support::ChildResult;
using support::writeBytes;

class UnreadableFiles : public WalkerRuns {};

/// A file of the family, the "Read" lines that come before it, and what is told when it cannot be read.
struct FamilyFile {
    std::string name;
    std::string readBefore;
    /// The reader's own line for a file that does not open once it has passed the check.
    std::string unopened;
    /// The lines on a file that opens and gives nothing.
    std::string unreadable;
    /// The lines on a file of NULs.
    std::string foreign;
};

std::vector<FamilyFile> familyFiles() {
    const std::string noSpecification = "File is not a valid problem specification file.\n"
                                        "       Unable to read from file.";
    const std::string noDefinition = "Unable to read 'walker.probdef'.\n"
                                     "       File is not a Kym Problem Definition File\n       ";
    const std::string noModel = "Unable to read 'walker.model'.\n       Not a valid Kym Model File.\n       ";
    const std::string noLimits = "Unable to read limit data file \"walker.limits\".\n"
                                 "       Unable to read first var limit.\n"
                                 "       Unable to read mode for limit.";
    const std::string noScaleDefinition = "Unable to read \"walker.scaledef\".\n"
                                          "       File does not contain a scale definition.\n"
                                          "       Error reading file.";
    const std::string otherId = "Invalid datafile header id.";
    std::vector<FamilyFile> files = {
        {"walker.zvx", "", "Unable to open 'walker.zvx'.", noSpecification, noSpecification},
        {"walker.probdef", "", "Unable to open 'walker.probdef'.",
         noDefinition + "Unable to read data file header.", noDefinition + otherId},
        {"walker.model", "", "Unable to open model file 'walker.model'.",
         noModel + "Unable to read Header Identification.", noModel + otherId},
        {"walker.limits", "", "Unable to open limit data file \"walker.limits\".", noLimits, noLimits},
        {"walker.scaledef", "", "Couldn't open \"walker.scaledef\".", noScaleDefinition, noScaleDefinition},
    };
    for (std::size_t i = 1; i < files.size(); ++i) {
        files[i].readBefore = files[i - 1].readBefore + "Read " + files[i - 1].name + "\n";
    }
    return files;
}

TEST_F(UnreadableFiles, FileWithoutPermissionIsNamedWithTheCause) {
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
TEST_F(UnreadableFiles, FileThatVanishesBehindItsCheckIsNotOpened) {
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

TEST_F(UnreadableFiles, FileThatVanishesBeforeItsLastCheckDoesNotExist) {
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

TEST_F(UnreadableFiles, PipeWithAWriterIsReadAsAFile) {
    const std::string report = info().out;
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        shell("mv " + file.name + " kept && mkfifo " + file.name);
        const std::string line = "cat kept >" + file.name + " & exec " + QUILLON_TOOL + " info walker.zvx";
        expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), "0", report, allRead);
        shell("mv kept " + file.name);
    }
}

TEST_F(UnreadableFiles, StandardInputMayBeNamedAsAFile) {
    const std::string line = "cat walker.zvx | " QUILLON_TOOL " info /dev/stdin";
    expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), "0", info().out,
              "Read /dev/stdin" + std::string(allRead).substr(15));
}

TEST_F(UnreadableFiles, WriterThatDiesHalfWayLeavesTheShorterText) {
    for (const FamilyFile& file : familyFiles()) {
        SCOPED_TRACE(file.name);
        const std::string whole = support::readBytes(scratch / file.name);
        writeBytes(scratch / "half", whole.substr(0, whole.size() / 2));
        shell("cp half " + file.name);
        const ChildResult shorter = info();
        shell("rm " + file.name + " && mkfifo " + file.name);
        const std::string line =
            "sh -c 'cat half; kill -KILL $$' >" + file.name + " & exec " QUILLON_TOOL " info walker.zvx";
        expectRun(support::runProgram({"/bin/sh", "-c", line}, inScratch()), shorter.outcome, shorter.out,
                  shorter.err);
        shell("rm " + file.name);
        writeBytes(scratch / file.name, whole);
    }
}

// --- Devices -------------------------------------------------------------------------------------

/// A text with each `from` in it replaced.
std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The program runs with a device in the place of a file of the family.
class DeviceInPlaceOfAFile : public UnreadableFiles {
protected:
    void expectTold(const FamilyFile& file, const std::string& device, const std::string& told) const {
        SCOPED_TRACE(file.name + " is " + device);
        std::string specification = "walker.zvx";
        std::string readBefore = file.readBefore;
        if (file.name == specification) {
            specification = device;
        } else {
            writeBytes(scratch / "device.zvx",
                       replaced(support::readBytes(scratch / specification), file.name, device));
            readBefore = replaced(readBefore, specification, "device.zvx");
            specification = "device.zvx";
        }
        const ChildResult result = infoAfter(leaveTerminal, specification);
        expectRun(result, "1", "", readBefore + "\n\nERROR: " + replaced(told, file.name, device) + "\n\n");
    }

private:
    static void leaveTerminal() {
        const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC);
        ioctl(terminal, TIOCNOTTY);
        close(terminal);
    }
};

TEST_F(DeviceInPlaceOfAFile, ThatGivesAnErrorIsTold) {
    for (const FamilyFile& file : familyFiles()) {
        expectTold(file, "/proc/self/mem", file.unreadable);
    }
}

TEST_F(DeviceInPlaceOfAFile, ThatNeverEndsIsToldByItsFirstLine) {
    for (const FamilyFile& file : familyFiles()) {
        expectTold(file, "/dev/zero", file.foreign);
    }
}

TEST_F(DeviceInPlaceOfAFile, ThatIsATerminalWhichTheProgramHasNotIsNotOpened) {
    for (const FamilyFile& file : familyFiles()) {
        expectTold(file, "/dev/tty", file.unopened);
    }
}

// --- What does not return ------------------------------------------------------------------------

// A script sets a limit of its own.
TEST_F(UnreadableFiles, PipeThatNobodyWritesToIsWaitedFor) {
    shell("rm walker.limits && mkfifo walker.limits");
    ChildOptions options = inScratch();
    options.timeLimit = timeToHang;
    expectRun(support::runProgram({QUILLON_TOOL, "info", "walker.zvx"}, options), "TIMEOUT", "",
              "Read walker.zvx\nRead walker.probdef\nRead walker.model\n");
}

TEST_F(UnreadableFiles, FileThatNeverEndsIsReadOn) {
    shell("mv walker.limits kept && mkfifo walker.limits");
    ChildOptions options = inScratch();
    options.timeLimit = timeToHang;
    const std::string line =
        "(head -n 2 kept; yes '# and on') >walker.limits & exec " QUILLON_TOOL " info walker.zvx";
    expectRun(support::runProgram({"/bin/sh", "-c", line}, options), "TIMEOUT", "",
              "Read walker.zvx\nRead walker.probdef\nRead walker.model\n");
}

} // namespace
} // namespace quillon::test
