#include "quillon/files/TerminalRun.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/ScratchPrograms.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

using test::chainOf;
using test::error;
using test::StatusChain;

constexpr const char* noTerminal =
    "Unable to execute terminal program.  Supported terminals are konsole and rxvt.";

/// A search path of one directory, where stand-ins for the terminals print how they were called.
class TerminalRun : public testing::Test {
protected:
    void addTerminal(const char* name, const char* body = test::printArguments) {
        test::writeProgram(scratch / name, body);
    }

    /// What the terminal printed, and behind it the status of the caller.
    std::string run(const LmStr& command, const LmStr& title, const LmStr& name) {
        const support::ChildResult result = support::runFunction([&] {
            setenv("PATH", scratch.path().c_str(), 1);
            const bool started = runInTerminal(command, title, name);
            test::printChain();
            if (!started) {
                std::cout << "not started\n";
            }
        });
        EXPECT_EQ(result.outcome, "0");
        EXPECT_EQ(result.err, "");
        EXPECT_FALSE(result.leftProcesses);
        return result.out;
    }

    const support::ScratchDirectory scratch;
};

constexpr const char* shellOfCommand =
    "[-e] [sh] [-c] [make all;echo \"Command COMPLETE\";read dummy_read_var]\n";

TEST_F(TerminalRun, StartsKonsoleWithTheTitleAndTheNameThatAreGiven) {
    addTerminal("konsole");
    const std::string shell = shellOfCommand;
    EXPECT_EQ(run("make all", {}, {}), "konsole " + shell);
    EXPECT_EQ(run("make all", "A title", {}), "konsole [--title] [A title] " + shell);
    EXPECT_EQ(run("make all", {}, "A name"), "konsole [--name] [A name] " + shell);
    EXPECT_EQ(run("make all", "A title", "A name"), "konsole [--title] [A title] [--name] [A name] " + shell);
}

TEST_F(TerminalRun, StartsRxvtWithTheTitleAndTheNameThatAreGiven) {
    addTerminal("rxvt");
    const std::string shell = shellOfCommand;
    EXPECT_EQ(run("make all", {}, {}), "rxvt " + shell);
    EXPECT_EQ(run("make all", "A title", {}), "rxvt [-title] [A title] " + shell);
    EXPECT_EQ(run("make all", {}, "A name"), "rxvt [-n] [A name] " + shell);
    EXPECT_EQ(run("make all", "A title", "A name"), "rxvt [-title] [A title] [-n] [A name] " + shell);
}

TEST_F(TerminalRun, PrefersKonsole) {
    addTerminal("rxvt");
    addTerminal("konsole");
    EXPECT_EQ(run("make all", {}, {}), std::string("konsole ") + shellOfCommand);
}

TEST_F(TerminalRun, PassesOverAKonsoleThatCannotBeExecuted) {
    addTerminal("rxvt");
    support::writeBytes(scratch / "konsole", "");
    EXPECT_EQ(run("make all", {}, {}), std::string("rxvt ") + shellOfCommand);
}

TEST_F(TerminalRun, TakesAnEmptyTitleForOneThatIsGiven) {
    addTerminal("konsole");
    EXPECT_EQ(run("make all", "", {}), std::string("konsole [--title] [] ") + shellOfCommand);
}

TEST_F(TerminalRun, HandsTheTextsToTheShellAsTheyStand) {
    addTerminal("konsole");
    EXPECT_EQ(run("echo %s $A \"b\"", "100%d", "$TERMINAL_RUN_TEST_UNSET"),
              "konsole [--title] [100%d] [--name] [] [-e] [sh] [-c] "
              "[echo %s $A \"b\";echo \"Command COMPLETE\";read dummy_read_var]\n");
}

TEST_F(TerminalRun, CutsNoLongCommand) {
    addTerminal("konsole");
    const std::string command = "echo " + std::string(5000, 'x');
    EXPECT_EQ(run(command.c_str(), {}, {}),
              "konsole [-e] [sh] [-c] [" + command + ";echo \"Command COMPLETE\";read dummy_read_var]\n");
}

TEST_F(TerminalRun, KeepsTheTerminalOpenBehindTheCommand) {
    // A stand-in that does run what it is given, with a line as from the user.
    addTerminal("konsole", "while [ \"$1\" != -e ]; do shift; done\n"
                           "shift\n"
                           "echo pressed | \"$@\"");
    std::filesystem::create_symlink("/bin/sh", scratch / "sh");
    EXPECT_EQ(run("echo first; echo second", "t", "n"), "first\nsecond\nCommand COMPLETE\n");
}

TEST_F(TerminalRun, DoesNotWaitForTheTerminal) {
    const std::string words = scratch / "words";
    ASSERT_EQ(mkfifo(words.c_str(), 0600), 0);
    addTerminal("konsole", ("read word <" + words + "\necho \"$word\"").c_str());
    const support::ChildResult result = support::runFunction([&] {
        setenv("PATH", scratch.path().c_str(), 1);
        std::cout << runInTerminal("true") << std::endl;
        FILE* const pipe = std::fopen(words.c_str(), "w");
        std::fputs("go\n", pipe);
        std::fclose(pipe);
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "1\ngo\n");
}

TEST_F(TerminalRun, WithoutATerminalReportsSoAndRunsNothing) {
    test::writeProgram(scratch / "xterm", test::printArguments);
    EXPECT_EQ(run("echo run", "t", "n"), "error: \"" + std::string(noTerminal) + "\"\nnot started\n");
}

TEST_F(TerminalRun, WhatTheShellAnswersIsNoFailure) {
    addTerminal("konsole");
    // The quote ends the shell's own text early, and the "#" takes the "&" that would hide the result.
    EXPECT_EQ(run("'; exit 3 #", {}, {}), "konsole [-e] [sh] [-c] []\n");
}

TEST_F(TerminalRun, ReportsACommandForWhichNoProcessCanBeStarted) {
    addTerminal("konsole");
    std::filesystem::permissions(scratch.path(), std::filesystem::perms::all);
    const support::ChildResult result = test::runAsNobody([this] {
        setenv("PATH", scratch.path().c_str(), 1);
        test::allowNoProcess();
        std::cout << runInTerminal("make %s", "t", "n") << '\n';
        test::printChain();
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "0\nerror: \"Unable to execute command \"make %s\".\"\n");
    EXPECT_EQ(result.err, "");
}

} // namespace
} // namespace quillon
