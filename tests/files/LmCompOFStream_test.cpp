#include "quillon/files/LmCompOFStream.h"

#include "quillon/files/LmCompIFStream.h"
#include "tests/files/StreamFixture.h"

#include <gmock/gmock.h>

#include <csignal>

namespace quillon {
namespace {

using support::readBytes;
using support::writeBytes;
using test::printChain;
using test::restOf;
using test::runAsNobody;

class LmCompOFStreamTest : public test::StreamFixture {
protected:
    /// Writes the text in a child, which ends once the tool has ended, too.
    std::string written(const std::string& path, const std::string& text) const {
        return runWithTools([&] {
                   LmStatus status;
                   LmCompOFStream output;
                   output.open(path.c_str(), status);
                   output << text;
                   std::cout << (output.fail() ? "fail" : "good") << ' ' << test::pipesOf().size() << '\n';
                   printChain(status);
               })
            .out;
    }

    std::string readBack(const std::string& path) const {
        return runWithTools([&] {
                   LmCompIFStream input;
                   input.open(path.c_str());
                   std::cout << restOf(input);
               })
            .out;
    }
};

TEST_F(LmCompOFStreamTest, WritesAPlainFile) {
    writeBytes(at("a.zvx"), "what was there before");
    EXPECT_EQ(written(at("a.zvx"), "plain text"), "good 0\n");
    EXPECT_EQ(readBytes(at("a.zvx")), "plain text");
}

TEST_F(LmCompOFStreamTest, WritesEachKindByItsTool) {
    for (const char* const name : {"a.gz", "a.Z", "a.jpeg"}) {
        const std::string text = test::textOfLength(1000) + name;
        EXPECT_EQ(written(at(name), text), "good 1\n") << name;
        EXPECT_EQ(readBack(at(name)), text) << name;
    }
    EXPECT_EQ(readBytes(at("a.gz")).substr(0, 2), "\x1F\x8B");
    EXPECT_EQ(readBytes(at("a.Z")).substr(0, 2), "\x1F\x9D");
}

TEST_F(LmCompOFStreamTest, WritesMoreThanAPipeHolds) {
    const std::string text = test::textOfLength(1000000);
    EXPECT_EQ(written(at("a.gz"), text), "good 1\n");
    EXPECT_EQ(readBack(at("a")) == text, true);
}

TEST_F(LmCompOFStreamTest, WritesAnEmptyFile) {
    EXPECT_EQ(written(at("a.gz"), ""), "good 1\n");
    EXPECT_EQ(readBack(at("a.gz")), "");
    EXPECT_EQ(readBytes(at("a.gz")).substr(0, 2), "\x1F\x8B");
}

TEST_F(LmCompOFStreamTest, TakesABareExtensionForAPlainName) {
    for (const char* const name : {".jpeg", ".gz", ".Z"}) {
        const auto result = runWithTools([&] {
            std::filesystem::current_path(scratch.path());
            LmCompOFStream output;
            output.open(name);
            output << "plain text";
            std::cout << test::pipesOf().size() << '\n';
        });
        EXPECT_EQ(result.out, "0\n");
        EXPECT_EQ(readBytes(at(name)), "plain text");
    }
}

TEST_F(LmCompOFStreamTest, ThePipeIsCalledAfterNumberAndProcessAndGoesWhenClosed) {
    const auto result = runWithTools([&] {
        LmCompOFStream output;
        output.open(at("a.gz").c_str());
        const std::string expected =
            "/var/tmp/compofstream" + std::to_string(output.pipeNumber) + "." + std::to_string(getpid());
        std::cout << (output.pipeName == expected.c_str()) << test::isThere(expected);
        output.close();
        std::cout << output.good() << (output.pipeName == "") << test::isThere(expected) << '\n';
    });
    EXPECT_EQ(result.out, "11110\n");
}

TEST_F(LmCompOFStreamTest, ThePipeOfAMissingToolStaysUntilTheStreamIsClosed) {
    struct {
        const char* name;
        const char* tool;
    } const cases[] = {{"a.gz", "gzip"}, {"a.Z", "compress"}, {"a.jpeg", "cjpeg"}};
    for (const auto& each : cases) {
        const auto result = runWithTools([&] {
            setenv("PATH", "", 1);
            LmStatus status;
            LmCompOFStream output;
            output.open(at(each.name).c_str(), status);
            std::cout << output.fail() << test::pipesOf().size();
            output.close();
            std::cout << test::pipesOf().size() << '\n';
            printChain(status);
        });
        EXPECT_EQ(result.out, std::string("110\nerror: \"Cannot find command '") + each.tool +
                                  "' to compress\n'" + at(each.name) +
                                  "'.\nThis command needs to be in your path.\"\n");
        EXPECT_FALSE(test::isThere(at(each.name)));
    }
}

TEST_F(LmCompOFStreamTest, ReportsAFileThatCannotBeWrittenAndMakesNoPipe) {
    for (const char* const name : {"none/a", "none/a.gz"}) {
        EXPECT_EQ(written(at(name), "text"), "fail 0\nerror: \"File \"" + at(name) +
                                                 "\" is unwritable.\"\nerror: \"Parent directory \"" +
                                                 at("none") + "\" does not exist.\"\n");
    }
}

TEST_F(LmCompOFStreamTest, ReportsAPipeThatCannotBeMade) {
    const auto result = runWithTools([&] {
        LmStatus status;
        LmCompOFStream output;
        const std::string pipe =
            "/var/tmp/compofstream" + std::to_string(output.pipeNumber) + "." + std::to_string(getpid());
        writeBytes(pipe, "");
        output.open(at("a.gz").c_str(), status);
        std::cout << output.fail() << '\n';
        for (const test::StatusLine& line : test::chainOf(status)) {
            std::cout << (line.text == "Unable to create named pipe \"" + pipe + "\"." ? "pipe" : line.text)
                      << '\n';
        }
        output.close();
        std::filesystem::remove(pipe);
    });
    EXPECT_EQ(result.out, "1\npipe\nFile exists\n");
}

TEST_F(LmCompOFStreamTest, ReportsAShellWhoseEndCannotBeAwaitedInTheWordsOfDecompression) {
    const auto result = runWithTools([&] {
        std::signal(SIGCHLD, SIG_IGN);
        LmStatus status;
        LmCompOFStream output;
        output.open(at("a.gz").c_str(), status);
        std::cout << output.fail() << '\n';
        printChain(status);
        // The tool is at work all the same: let it find its writer before the pipe goes.
        int pipe = -1;
        while (pipe == -1) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            pipe = open(output.pipeName.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        }
        close(pipe);
    });
    EXPECT_EQ(result.out, "1\nerror: \"Unable to decompress file.\"\nerror: \"No child processes\"\n");
}

TEST_F(LmCompOFStreamTest, AToolThatEndsEarlyEndsAWriterOfMoreThanAPipeHolds) {
    addTool("gzip", "#!/bin/sh\nexit 1\n");
    const auto writeMuch = [this](bool ignoresSignal) {
        return runWithTools([&] {
            std::signal(SIGPIPE, ignoresSignal ? SIG_IGN : SIG_DFL);
            LmCompOFStream output;
            output.open(at("a.gz").c_str());
            std::cout << output.pipeName;
            output << test::textOfLength(1000000);
            std::cout << (output.fail() ? " fail" : " good");
        });
    };
    EXPECT_THAT(writeMuch(true).out, testing::EndsWith(" fail"));
    const support::ChildResult ended = writeMuch(false);
    EXPECT_EQ(ended.outcome, "SIGPIPE");
    // Such an end leaves the pipe behind.
    EXPECT_TRUE(std::filesystem::remove(ended.out)) << ended.out;
}

TEST_F(LmCompOFStreamTest, TheDestructorThrowsNothing) {
    const auto result = runWithTools([&] {
        LmCompOFStream output;
        output.exceptions(std::ios::failbit);
    });
    EXPECT_EQ(result.outcome, "0");
}

TEST_F(LmCompOFStreamTest, TheModeIsAddedToOutput) {
    writeBytes(at("a"), "one ");
    LmCompOFStream output;
    output.open(at("a").c_str(), currentStatus(), std::ios::app);
    output << "two";
    output.close();
    EXPECT_TRUE(output.good());
    EXPECT_EQ(readBytes(at("a")), "one two");
}

TEST_F(LmCompOFStreamTest, ClosingWhatIsNotOpenSetsTheFailBit) {
    LmCompOFStream output;
    EXPECT_EQ(output.pipeName, "");
    output.close();
    EXPECT_TRUE(output.fail());
}

TEST_F(LmCompOFStreamTest, SharesItsNumbersWithTheInputStreams) {
    const LmCompOFStream first;
    const LmCompIFStream second;
    const LmCompOFStream third;
    EXPECT_EQ(second.pipeNumber, first.pipeNumber + 1);
    EXPECT_EQ(third.pipeNumber, first.pipeNumber + 2);
}

} // namespace
} // namespace quillon
