#include "quillon/core/Fatal.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;

void expectQuietMemoryFault(const ChildResult& result) {
    EXPECT_EQ(result.outcome, "SIGSEGV");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

TEST(MemoryFault, EndsTheProcessWithoutAMessage) {
    expectQuietMemoryFault(runFunction([] { endByMemoryFault(); }));
}

TEST(MemoryFault, PassesByAHandlerOrAnIgnoredSignal) {
    expectQuietMemoryFault(runFunction([] {
        std::signal(SIGSEGV, SIG_IGN);
        endByMemoryFault();
    }));
    expectQuietMemoryFault(runFunction([] {
        std::signal(SIGSEGV, [](int) { std::_Exit(3); });
        endByMemoryFault();
    }));
}

TEST(MemoryFault, PassesByABlockedSignal) {
    expectQuietMemoryFault(runFunction([] {
        sigset_t faults;
        sigemptyset(&faults);
        sigaddset(&faults, SIGSEGV);
        sigprocmask(SIG_BLOCK, &faults, nullptr);
        endByMemoryFault();
    }));
}

} // namespace
} // namespace quillon
