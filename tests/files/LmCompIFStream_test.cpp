#include "quillon/files/LmCompIFStream.h"

#include "tests/files/StreamFixture.h"
#include "tests/support/CommaLocale.h"

#include <csignal>
#include <sys/resource.h>

namespace quillon {
namespace {

using support::writeBytes;
using test::printChain;
using test::restOf;
using test::runAsNobody;

class LmCompIFStreamTest : public test::StreamFixture {
protected:
    /// Opens the file in a child and hands over its bits, the number of pipes, the content, the errors.
    std::string opened(const std::string& path) const {
        return runWithTools([&] { printOpened(path); }).out;
    }

    static void printOpened(const std::string& path) {
        LmStatus status;
        LmCompIFStream input;
        input.open(path.c_str(), status);
        std::cout << (input.fail() ? "fail" : "good") << (input.isCompressed ? " compressed " : " plain ")
                  << test::pipesOf().size() << '\n';
        if (input.good()) {
            std::cout << restOf(input) << '\n';
        }
        printChain(status);
    }
};

TEST_F(LmCompIFStreamTest, ReadsAPlainFile) {
    writeBytes(at("a.zvx"), "plain text");
    EXPECT_EQ(opened(at("a.zvx")), "good plain 0\nplain text\n");
}

TEST_F(LmCompIFStreamTest, ReadsAPointUnderALocaleWithADecimalComma) {
    writeBytes(at("a"), "1234.5 7");
    const test::CommaLocale comma;
    LmCompIFStream input;
    input.open(at("a").c_str());
    double real = 0;
    int integer = 0;
    EXPECT_TRUE(input >> real >> integer);
    EXPECT_EQ(real, 1234.5);
    EXPECT_EQ(integer, 7);
}

TEST_F(LmCompIFStreamTest, ReadsACompressedFileInPlaceOfAMissingOne) {
    writeCompressed("a.zvx.gz", "from gz");
    EXPECT_EQ(opened(at("a.zvx")), "good compressed 1\nfrom gz\n");
}

TEST_F(LmCompIFStreamTest, DoesNotLookAtTheCompressedFileBesideAPlainOne) {
    writeBytes(at("a.zvx"), "plain text");
    writeBytes(at("a.zvx.gz"), "no compressed data");
    EXPECT_EQ(opened(at("a.zvx")), "good plain 0\nplain text\n");
}

TEST_F(LmCompIFStreamTest, PrefersGzToZ) {
    writeCompressed("a.zvx.gz", "from gz");
    writeCompressed("a.zvx.Z", "from Z");
    EXPECT_EQ(opened(at("a.zvx")), "good compressed 1\nfrom gz\n");
}

TEST_F(LmCompIFStreamTest, ReadsEachKindByItsTool) {
    for (const char* const name : {"a.gz", "a.Z", "a.jpeg"}) {
        writeCompressed(name, std::string("from ") + name);
        EXPECT_EQ(opened(at(name)), std::string("good compressed 1\nfrom ") + name + "\n");
    }
}

TEST_F(LmCompIFStreamTest, ReadsAnEmptyFileOfEachForm) {
    writeBytes(at("a"), "");
    writeCompressed("b.gz", "");
    EXPECT_EQ(opened(at("a")), "good plain 0\n\n");
    EXPECT_EQ(opened(at("b")), "good compressed 1\n\n");
}

TEST_F(LmCompIFStreamTest, ReadsMoreThanAPipeHolds) {
    const std::string text = test::textOfLength(1000000);
    writeBytes(at("plain"), text);
    writeCompressed("packed.gz", text);
    EXPECT_EQ(opened(at("plain")) == "good plain 0\n" + text + "\n", true);
    EXPECT_EQ(opened(at("packed")) == "good compressed 1\n" + text + "\n", true);
}

TEST_F(LmCompIFStreamTest, TakesTheContentOfANameWithPercentSigns) {
    writeCompressed("100%s%d%n.gz", "text");
    EXPECT_EQ(opened(at("100%s%d%n.gz")), "good compressed 1\ntext\n");
}

TEST_F(LmCompIFStreamTest, FindsNothingUnderANameWithABlank) {
    writeCompressed("a b.gz", "text");
    const auto result = runWithTools([&] { printOpened(at("a b.gz")); });
    EXPECT_EQ(result.out, "good compressed 1\n\n");
    // The tool looks for two files and complains about both.
    EXPECT_NE(result.err, "");
}

TEST_F(LmCompIFStreamTest, TakesABareExtensionForAPlainName) {
    for (const char* const name : {".jpeg", ".gz", ".Z"}) {
        writeBytes(at(name), "plain text");
        const auto result = runWithTools([&] {
            std::filesystem::current_path(scratch.path());
            printOpened(name);
        });
        EXPECT_EQ(result.out, "good plain 0\nplain text\n") << name;
    }
}

TEST_F(LmCompIFStreamTest, DoesNotTryJpegForAMissingFile) {
    writeBytes(at("a.jpeg"), "text");
    EXPECT_EQ(opened(at("a")), "fail plain 0\nerror: \"Unable to open \"" + at("a") +
                                   "\".\"\nerror: \"File does not exist.\"\n");
}

TEST_F(LmCompIFStreamTest, ReportsAMissingCompressedFileUnderItsOwnName) {
    EXPECT_EQ(opened(at("a.gz")), "fail compressed 0\nerror: \"Unable to open \"" + at("a.gz") +
                                      "\".\"\nerror: \"File does not exist.\"\n");
}

TEST_F(LmCompIFStreamTest, ReportsADirectory) {
    std::filesystem::create_directory(at("d"));
    std::filesystem::create_directory(at("e.gz"));
    EXPECT_EQ(opened(at("d")), "fail plain 0\nerror: \"" + at("d") + " is a directory.\"\n");
    EXPECT_EQ(opened(at("e")), "fail compressed 0\nerror: \"" + at("e.gz") + " is a directory.\"\n");
}

TEST_F(LmCompIFStreamTest, ReportsACompressedFileWithoutRightsAndMakesNoPipe) {
    writeCompressed("a.gz", "text");
    chmod(scratch.path().c_str(), 0755);
    chmod(at("a.gz").c_str(), 0);
    EXPECT_EQ(runAsNobody([&] { printOpened(at("a")); }).out,
              "fail compressed 0\nerror: \"Unable to read \"" + at("a.gz") +
                  "\".\"\nerror: \"Insufficient access to read file.  Check permissions.\"\n");
}

TEST_F(LmCompIFStreamTest, ThePipeIsCalledAfterNumberAndProcessAndGoesWhenClosed) {
    writeCompressed("a.gz", "text");
    const auto result = runWithTools([&] {
        LmCompIFStream input;
        input.open(at("a.gz").c_str());
        const std::string expected =
            "/var/tmp/compifstream" + std::to_string(input.pipeNumber) + "." + std::to_string(getpid());
        std::cout << (input.pipeName == expected.c_str()) << test::isThere(expected);
        input.close();
        std::cout << input.good() << (input.pipeName == "") << test::isThere(expected) << '\n';
    });
    EXPECT_EQ(result.out, "11110\n");
}

TEST_F(LmCompIFStreamTest, ThePipeOfAMissingToolStaysUntilTheStreamIsClosed) {
    struct {
        const char* name;
        const char* tool;
    } const cases[] = {{"a.gz", "gunzip"}, {"a.Z", "uncompress"}, {"a.jpeg", "djpeg"}};
    for (const auto& each : cases) {
        writeBytes(at(each.name), "");
        const auto result = runWithTools([&] {
            setenv("PATH", "/none", 1);
            LmStatus status;
            LmCompIFStream input;
            input.open(at(each.name).c_str(), status);
            std::cout << input.fail() << test::pipesOf().size();
            input.close();
            std::cout << test::pipesOf().size() << '\n';
            printChain(status);
        });
        EXPECT_EQ(result.out, std::string("110\nerror: \"Cannot find command '") + each.tool +
                                  "' to uncompress\n'" + at(each.name) +
                                  "'.\nThis command needs to be in your path.\"\n");
    }
}

TEST_F(LmCompIFStreamTest, TheDestructorRemovesThePipeOfAFailedOpen) {
    writeBytes(at("a.gz"), "");
    const auto result = runWithTools([&] {
        unsetenv("PATH");
        LmStatus status;
        {
            LmCompIFStream input;
            input.open(at("a.gz").c_str(), status);
            // A second attempt finds its own pipe in the way, and does not lose it.
            input.open(at("a.gz").c_str(), status);
            std::cout << test::pipesOf().size();
        }
        std::cout << test::pipesOf().size() << '\n';
    });
    EXPECT_EQ(result.out, "10\n");
}

TEST_F(LmCompIFStreamTest, TheDestructorThrowsNothing) {
    writeBytes(at("a.gz"), "");
    const auto result = runWithTools([&] {
        LmCompIFStream input;
        input.exceptions(std::ios::failbit);
    });
    EXPECT_EQ(result.outcome, "0");
}

TEST_F(LmCompIFStreamTest, MayBeClosedBeforeTheToolIsDone) {
    writeCompressed("a.gz", test::textOfLength(1000000));
    const auto result = runWithTools([&] {
        LmCompIFStream input;
        input.open(at("a").c_str());
        std::string line;
        std::getline(input, line);
        input.close();
        std::cout << line << test::pipesOf().size() << '\n';
    });
    EXPECT_EQ(result.out, "10\n");
    EXPECT_EQ(result.outcome, "0");
}

TEST_F(LmCompIFStreamTest, ReportsAPipeThatCannotBeMade) {
    writeCompressed("a.gz", "text");
    const auto result = runWithTools([&] {
        LmStatus status;
        LmCompIFStream input;
        const std::string pipe =
            "/var/tmp/compifstream" + std::to_string(input.pipeNumber) + "." + std::to_string(getpid());
        writeBytes(pipe, "");
        input.open(at("a.gz").c_str(), status);
        std::cout << input.fail() << '\n';
        for (const test::StatusLine& line : test::chainOf(status)) {
            std::cout << (line.text == "Unable to create named pipe \"" + pipe + "\"." ? "pipe" : line.text)
                      << '\n';
        }
        input.close();
        std::filesystem::remove(pipe);
    });
    EXPECT_EQ(result.out, "1\npipe\nFile exists\n");
}

TEST_F(LmCompIFStreamTest, StopsWhenAnErrorStandsOnceThePipeIsMade) {
    writeCompressed("a.gz", "text");
    const auto result = runWithTools([&] {
        LmStatus status;
        status.pushError("earlier");
        LmCompIFStream input;
        input.open(at("a.gz").c_str(), status);
        std::cout << input.fail() << test::pipesOf().size() << '\n';
        printChain(status);
    });
    EXPECT_EQ(result.out, "11\nerror: \"earlier\"\n");
}

TEST_F(LmCompIFStreamTest, ReportsAShellWhoseEndCannotBeAwaited) {
    writeCompressed("a.gz", "text");
    const auto result = runWithTools([&] {
        std::signal(SIGCHLD, SIG_IGN);
        LmStatus status;
        LmCompIFStream input;
        input.open(at("a.gz").c_str(), status);
        std::cout << input.fail() << '\n';
        printChain(status);
        // The tool is at work all the same: let it find its reader before the pipe goes.
        const int pipe = open(input.pipeName.c_str(), O_RDWR | O_CLOEXEC);
        char text[4] = {};
        std::cout << read(pipe, text, sizeof text) << '\n';
        close(pipe);
    });
    EXPECT_EQ(result.out, "1\nerror: \"Unable to decompress file.\"\nerror: \"No child processes\"\n4\n");
}

TEST_F(LmCompIFStreamTest, ReportsAShellThatCannotBeStarted) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "other processes of this user would be counted";
    }
    writeCompressed("a.gz", "text");
    chmod(scratch.path().c_str(), 0755);
    const auto result = runAsNobody([&] {
        const rlimit noMoreProcesses = {0, 0};
        setrlimit(RLIMIT_NPROC, &noMoreProcesses);
        printOpened(at("a.gz"));
    });
    EXPECT_EQ(result.out, "fail compressed 1\nerror: \"Unable to decompress file.\"\n"
                          "error: \"Resource temporarily unavailable\"\n");
}

TEST_F(LmCompIFStreamTest, AGoodOpenClearsAnEarlierFailure) {
    writeBytes(at("a"), "plain text");
    LmStatus status;
    LmCompIFStream input;
    input.open(at("none").c_str(), status);
    EXPECT_TRUE(input.fail());
    input.open(at("a").c_str(), status);
    EXPECT_TRUE(input.good());
    EXPECT_EQ(restOf(input), "plain text");
}

TEST_F(LmCompIFStreamTest, ClosingWhatIsNotOpenSetsTheFailBit) {
    LmCompIFStream input;
    EXPECT_EQ(input.pipeName, "");
    EXPECT_TRUE(input.good());
    input.close();
    EXPECT_TRUE(input.fail());
}

TEST_F(LmCompIFStreamTest, TheModeIsAddedToInput) {
    writeBytes(at("a"), "plain text");
    LmCompIFStream input;
    input.open(at("a").c_str(), currentStatus(), std::ios::ate);
    EXPECT_EQ(input.tellg(), 10);
}

TEST_F(LmCompIFStreamTest, EachStreamGetsTheNextNumberOpenedOrNot) {
    const LmCompIFStream first;
    const LmCompIFStream second;
    EXPECT_EQ(second.pipeNumber, first.pipeNumber + 1);
}

TEST_F(LmCompIFStreamTest, TwoStreamsReadAtOneTime) {
    writeCompressed("a.gz", "one");
    writeCompressed("b.gz", "two");
    const auto result = runWithTools([&] {
        LmCompIFStream first;
        LmCompIFStream second;
        first.open(at("a").c_str());
        second.open(at("b").c_str());
        std::cout << restOf(second) << restOf(first) << test::pipesOf().size() << '\n';
    });
    EXPECT_EQ(result.out, "twoone2\n");
}

} // namespace
} // namespace quillon
