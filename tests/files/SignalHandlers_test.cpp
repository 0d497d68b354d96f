#include "quillon/files/SignalHandlers.h"

#include "quillon/core/Fatal.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace quillon {
namespace {

struct Told {
    int number;
    std::string text;
};

// Signal 9 belongs to these too, and 19 to the others, but no process can handle them.
const std::vector<Told> fatalSignals = {
    {3, "quit (ASCII FS)\n"},      {4, "illegal instruction\n"}, {6, "Abort\n"}, {7, ""},
    {8, "Arithmetic Exception\n"}, {11, "Segmentation Fault\n"},
};
const std::vector<Told> otherSignals = {
    {1, "hangup\n"},         {2, "interrupt (rubout)\n"},
    {10, "User Signal 1\n"}, {12, "User Signal 2\n"},
    {13, "Broken Pipe\n"},   {14, "Alarm Clock\n"},
    {15, "Terminated\n"},    {17, "Child Status Changed\n"},
    {18, "Continued\n"},     {20, "Stopped\n"},
    {21, "Stopped\n"},       {22, "Stopped\n"},
};

support::ChildResult sendToOwnHandlers(int number, bool fatalOnly) {
    return support::runFunction([=] {
        installSignalHandlers(fatalOnly);
        kill(getpid(), number);
    });
}

void expectToldAndAborted(const Told& told, bool fatalOnly) {
    const support::ChildResult result = sendToOwnHandlers(told.number, fatalOnly);
    EXPECT_EQ(result.outcome, "SIGABRT") << told.number;
    EXPECT_EQ(result.err, "signal caught: \n" + told.text) << told.number;
    EXPECT_EQ(result.out, "") << told.number;
}

TEST(SignalHandlers, TellOfFatalSignalsAndAbort) {
    for (const bool fatalOnly : {true, false}) {
        for (const Told& told : fatalSignals) {
            expectToldAndAborted(told, fatalOnly);
        }
    }
}

TEST(SignalHandlers, TellOfTheOthersAndAbortUnlessForFatalOnesOnly) {
    for (const Told& told : otherSignals) {
        expectToldAndAborted(told, false);
    }
}

TEST(SignalHandlers, ForFatalOnesOnlyLeaveTheOthersToTheSystem) {
    const std::vector<std::pair<int, std::string>> outcomes = {
        {1, "SIGHUP"},   {2, "SIGINT"},   {10, "SIGUSR1"}, {12, "SIGUSR2"}, {13, "SIGPIPE"},
        {14, "SIGALRM"}, {15, "SIGTERM"}, {17, "0"},       {18, "0"},
    };
    for (const auto& [number, outcome] : outcomes) {
        const support::ChildResult result = sendToOwnHandlers(number, true);
        EXPECT_EQ(result.outcome, outcome) << number;
        EXPECT_EQ(result.err, "") << number;
    }
}

/// The numbers, up to 31, of the signals with a handler once those of this library are installed in a process
/// that had none.
std::vector<int> numbersHandled(bool fatalOnly) {
    const std::string out = support::runFunction([=] {
                                for (int number = 1; number < 32; ++number) {
                                    std::signal(number, SIG_DFL);
                                }
                                installSignalHandlers(fatalOnly);
                                for (int number = 1; number < 32; ++number) {
                                    struct sigaction action = {};
                                    sigaction(number, nullptr, &action);
                                    std::cout << (action.sa_handler == SIG_DFL ? '.' : '!');
                                }
                            }).out;
    std::vector<int> numbers;
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (out[i] == '!') {
            numbers.push_back(static_cast<int>(i) + 1);
        }
    }
    return numbers;
}

TEST(SignalHandlers, AreThoseOfTheListAndNoOthers) {
    EXPECT_EQ(numbersHandled(true), (std::vector<int>{3, 4, 6, 7, 8, 11}));
    EXPECT_EQ(numbersHandled(false),
              (std::vector<int>{1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13, 14, 15, 17, 18, 20, 21, 22}));
}

TEST(SignalHandlers, CannotKeepTheProcessFromBeingKilled) {
    const support::ChildResult result = sendToOwnHandlers(9, false);
    EXPECT_EQ(result.outcome, "SIGKILL");
    EXPECT_EQ(result.err, "");
}

TEST(SignalHandlers, TellOfAnAbortOnce) {
    const support::ChildResult result = support::runFunction([] {
        installSignalHandlers(true);
        std::abort();
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "signal caught: \nAbort\n");
}

TEST(SignalHandlers, TellOfAMemoryFaultThatHappens) {
    const support::ChildResult result = support::runFunction([] {
        installSignalHandlers(true);
        void* const page = mmap(nullptr, 4096, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        *static_cast<volatile char*>(page) = 'x';
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "signal caught: \nSegmentation Fault\n");
}

TEST(SignalHandlers, AbortAlsoWhenNobodyReadsStandardError) {
    const support::ChildResult result = support::runFunction([] {
        installSignalHandlers(false);
        std::array<int, 2> ends{};
        if (pipe(ends.data()) == 0) {
            close(ends[0]);
            dup2(ends[1], STDERR_FILENO);
            std::raise(SIGTERM);
        }
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
}

TEST(SignalHandlers, AreInstalledTwiceAsOnce) {
    const support::ChildResult result = support::runFunction([] {
        installSignalHandlers(false);
        installSignalHandlers(true);
        std::raise(SIGTERM);
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "signal caught: \nTerminated\n");
}

TEST(SignalHandlers, ForAllSignalsLetNoShellRun) {
    const auto runShell = [](bool fatalOnly) {
        return support::runFunction([=] {
            installSignalHandlers(fatalOnly);
            std::cout << std::system("true");
        });
    };
    EXPECT_EQ(runShell(true).out, "0");
    const support::ChildResult result = runShell(false);
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "signal caught: \nChild Status Changed\n");
}

TEST(SignalHandlers, StayOutOfTheMemoryFaultThatEndsAProcessOnPurpose) {
    const support::ChildResult result = support::runFunction([] {
        installSignalHandlers(true);
        endByMemoryFault();
    });
    EXPECT_EQ(result.outcome, "SIGSEGV");
    EXPECT_EQ(result.err, "");
}

} // namespace
} // namespace quillon
