#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace quillon::support {
namespace {

using namespace std::chrono_literals;

ChildResult runShell(const std::string& script, const ChildOptions& options = {}) {
    return runProgram({"/bin/sh", "-c", script}, options);
}

TEST(ChildProcess, BothOutputsAndTheExitCodeAreKept) {
    const ChildResult result = runShell("printf 'a\\000b\\n'; echo c >&2; exit 3");
    EXPECT_EQ(result.outcome, "3");
    EXPECT_EQ(result.out, std::string("a\0b\n", 4));
    EXPECT_EQ(result.err, "c\n");
    EXPECT_FALSE(result.leftProcesses);
}

TEST(ChildProcess, OutputLargerThanAPipeIsKeptWhole) {
    const ChildResult result = runShell("head -c 1000000 /dev/zero; head -c 500000 /dev/zero >&2");
    EXPECT_EQ(result.out.size(), 1000000u);
    EXPECT_EQ(result.err.size(), 500000u);
}

TEST(ChildProcess, SignalsAreNamed) {
    EXPECT_EQ(runShell("kill -SEGV $$").outcome, "SIGSEGV");
    EXPECT_EQ(runShell("kill -ABRT $$").outcome, "SIGABRT");
    EXPECT_EQ(runShell("kill -PIPE $$").outcome, "SIGPIPE");
}

TEST(ChildProcess, WhatRunsTooLongIsKilledWithAllThatItStarted) {
    const ScratchDirectory scratch;
    ChildOptions options;
    options.timeLimit = 200ms;
    options.directory = scratch.path();
    const ChildResult result = runShell("echo before; (sleep 0.4; touch survived) & sleep 60", options);
    EXPECT_EQ(result.outcome, "TIMEOUT");
    EXPECT_EQ(result.out, "before\n");
    usleep(500000);
    EXPECT_FALSE(std::filesystem::exists(scratch / "survived"));
}

TEST(ChildProcess, WhatABackgroundProcessWritesIsWaitedFor) {
    const ChildResult result = runShell("(sleep 0.2; echo late) &");
    EXPECT_EQ(result.out, "late\n");
    EXPECT_FALSE(result.leftProcesses);
}

TEST(ChildProcess, ABackgroundProcessThatRunsOnIsToldAndKilled) {
    ChildOptions options;
    options.timeForStragglers = 100ms;
    const ChildResult result = runShell("sleep 60 & echo done", options);
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "done\n");
    EXPECT_TRUE(result.leftProcesses);
}

TEST(ChildProcess, TheEnvironmentAndTheDirectoryAreThoseGiven) {
    const ScratchDirectory scratch;
    writeBytes(scratch / "here", "content");
    ChildOptions options;
    options.directory = scratch.path();
    options.environment = {"ONLY=this"};
    EXPECT_EQ(runProgram({"/usr/bin/env"}, options).out, "ONLY=this\n");
    EXPECT_EQ(runProgram({"/bin/cat", "here"}, options).out, "content");
}

TEST(ChildProcess, StandardInputIsEmpty) {
    const ChildResult result = runProgram({"/bin/cat"});
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "");
}

TEST(ChildProcess, AProgramThatIsNotThereGives127) {
    EXPECT_EQ(runProgram({"/no/such/program"}).outcome, "127");
}

TEST(ChildProcess, AFunctionThatReturnsGivesZeroAndItsOutput) {
    const ChildResult result = runFunction([] {
        std::cout << "out";
        std::cerr << "err";
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "out");
    EXPECT_EQ(result.err, "err");
    EXPECT_GT(result.peakMemory, 0);
}

TEST(ChildProcess, AFunctionMayEndTheProcess) {
    EXPECT_EQ(runFunction([] { _exit(7); }).outcome, "7");
    EXPECT_EQ(runFunction([] { std::abort(); }).outcome, "SIGABRT");
    ChildOptions options;
    options.timeLimit = 200ms;
    EXPECT_EQ(runFunction([] { pause(); }, options).outcome, "TIMEOUT");
}

TEST(ScratchDirectory, IsRemovedWithItsContent) {
    std::filesystem::path path;
    {
        const ScratchDirectory scratch;
        path = scratch.path();
        std::filesystem::create_directories(path / "a" / "b");
        writeBytes(path / "a" / "b" / "c", std::string("x\0y", 3));
        EXPECT_EQ(readBytes(path / "a" / "b" / "c"), std::string("x\0y", 3));
        std::filesystem::permissions(path / "a", std::filesystem::perms::none);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace
} // namespace quillon::support
