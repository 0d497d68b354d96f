#include "quillon/files/ProcessFacts.h"

#include "tests/files/FileTestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <fstream>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon {
namespace {

std::string bootId() {
    std::ifstream input("/proc/sys/kernel/random/boot_id");
    std::string line;
    std::getline(input, line);
    return line;
}

TEST(ReadBootId, GivesTheFirstLine) {
    char buffer[100];
    EXPECT_EQ(readBootId(buffer, sizeof buffer), 36);
    EXPECT_EQ(buffer, bootId());
}

TEST(ReadBootId, LeavesTwoBytesOfTheBuffer) {
    for (int size = 0; size <= 40; ++size) {
        char buffer[40] = {};
        const int expected = std::min(std::max(size - 2, 0), 36);
        EXPECT_EQ(readBootId(buffer, size), expected) << size;
        EXPECT_EQ(buffer, bootId().substr(0, static_cast<std::size_t>(expected))) << size;
    }
}

TEST(ProcessAlive, AsksWhetherASignalCouldBeSent) {
    EXPECT_TRUE(processAlive(getpid()));
    const pid_t ended = fork();
    ASSERT_NE(ended, -1);
    if (ended == 0) {
        _exit(0);
    }
    waitpid(ended, nullptr, 0);
    EXPECT_FALSE(processAlive(ended));
}

TEST(LoginName, FitsOnlyWithItsTerminator) {
    const passwd* const user = getpwuid(getuid());
    ASSERT_NE(user, nullptr);
    const std::string name = user->pw_name;
    const int length = static_cast<int>(name.size());
    std::vector<char> buffer(name.size() + 1, 'x');
    EXPECT_TRUE(loginName(buffer.data(), length + 1));
    EXPECT_EQ(buffer.data(), name);
    EXPECT_FALSE(loginName(buffer.data(), length));
    EXPECT_FALSE(loginName(buffer.data(), 0));
}

TEST(UserFacts, AreUnknownOfAUserWithoutAnEntry) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    const auto result = support::runFunction([] {
        if (setuid(1234567) != 0) {
            return;
        }
        char buffer[100];
        LmStr name = "untouched";
        std::cout << loginName(buffer, sizeof buffer) << effectiveUserInfo(&name, nullptr) << name;
    });
    EXPECT_EQ(result.out, "00untouched");
}

TEST(EffectiveUserInfo, FillsTheOutputsThatAreGiven) {
    const passwd* const user = getpwuid(geteuid());
    ASSERT_NE(user, nullptr);
    LmStr name;
    LmStr home;
    EXPECT_TRUE(effectiveUserInfo(nullptr, nullptr));
    EXPECT_TRUE(effectiveUserInfo(&name, nullptr));
    EXPECT_TRUE(effectiveUserInfo(nullptr, &home));
    EXPECT_EQ(name, user->pw_name);
    EXPECT_EQ(home, user->pw_dir);
}

TEST(EffectiveUserInfo, IsNotAboutTheRealUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    const auto result = support::runFunction([] {
        char buffer[100];
        LmStr name;
        if (seteuid(65534) == 0 && loginName(buffer, sizeof buffer) && effectiveUserInfo(&name, nullptr)) {
            std::cout << buffer << ' ' << name;
        }
    });
    EXPECT_EQ(result.out, "root nobody");
}

TEST(HostName, IsThatOfTheSystem) {
    char buffer[HOST_NAME_MAX + 1] = {};
    ASSERT_EQ(gethostname(buffer, sizeof buffer), 0);
    EXPECT_EQ(hostName(), buffer);
}

TEST(SystemFacts, ComeFromTheSystem) {
    EXPECT_EQ(clockTicksPerSecond(), sysconf(_SC_CLK_TCK));
    EXPECT_EQ(cpuCount(), sysconf(_SC_NPROCESSORS_ONLN));
}

TEST(SleepTicks, SleepsAtLeastThatLong) {
    const auto start = std::chrono::steady_clock::now();
    sleepTicks(2);
    const std::chrono::duration<double> slept = std::chrono::steady_clock::now() - start;
    EXPECT_GE(slept.count(), 2.0 / static_cast<double>(clockTicksPerSecond()));
}

TEST(SleepTicks, DoesNotSleepForNoTicks) {
    EXPECT_EQ(support::runFunction([] {
                  sleepTicks(0);
                  sleepTicks(LONG_MIN);
              }).outcome,
              "0");
}

} // namespace
} // namespace quillon
