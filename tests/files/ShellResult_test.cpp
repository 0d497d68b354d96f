#include "quillon/files/ShellResult.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

TEST(ShellResult, TellsWhetherThereWasAShell) {
    EXPECT_FALSE(shellCouldBeRun(-1));
    EXPECT_FALSE(shellCouldBeRun(127 << 8));
    // A program in the background that is not there does not count.
    EXPECT_TRUE(shellCouldBeRun(std::system("/quillon-no-such-program 2>/dev/null &")));
    EXPECT_TRUE(shellCouldBeRun(0));
    EXPECT_TRUE(shellCouldBeRun(2 << 8));
    // Ended by signal 15.
    EXPECT_TRUE(shellCouldBeRun(15));
}

} // namespace
} // namespace quillon
