#include "quillon/files/ProgramSearch.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

/// Directories a and b, with "both" in each, a "plain" file that cannot be executed in a, and "plain" in b.
class SearchPath : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(a);
        std::filesystem::create_directory(b);
        for (const std::string& program : {a + "/both", b + "/both", b + "/plain"}) {
            support::writeBytes(program, "");
            chmod(program.c_str(), 0755);
        }
        support::writeBytes(a + "/plain", "");
        chmod((a + "/plain").c_str(), 0644);
    }

    /// What `findOnPath` and `findOnPathEnv` say with this PATH; none for a null pointer.
    static std::string found(const char* path, const char* name) {
        return support::runFunction([&] {
                   if (path == nullptr) {
                       unsetenv("PATH");
                   } else {
                       setenv("PATH", path, 1);
                   }
                   LmStr full = "-";
                   const bool isFound = findOnPathEnv(name, &full);
                   std::cout << findOnPath(name) << ' ' << isFound << ' ' << full << ' '
                             << findOnPathEnv(name);
               })
            .out;
    }

    const support::ScratchDirectory scratch;
    const std::string a = scratch / "a";
    const std::string b = scratch / "b";
};

TEST_F(SearchPath, TheFirstDirectoryWins) {
    EXPECT_EQ(found((a + ":" + b).c_str(), "both"), a + "/both 1 " + a + "/both 1");
    EXPECT_EQ(found((b + ":" + a).c_str(), "both"), b + "/both 1 " + b + "/both 1");
}

TEST_F(SearchPath, OnlyFindOnPathEnvAsksWhetherItCanBeExecuted) {
    EXPECT_EQ(found((a + ":" + b).c_str(), "plain"), a + "/plain 1 " + b + "/plain 1");
}

TEST_F(SearchPath, ADirectoryMayEndInASlash) {
    EXPECT_EQ(found((a + "/").c_str(), "both"), a + "/both 1 " + a + "/both 1");
}

TEST_F(SearchPath, EmptyEntriesArePassedOver) {
    EXPECT_EQ(found(("::" + a + "::").c_str(), "both"), a + "/both 1 " + a + "/both 1");
    EXPECT_EQ(found(":::", "bin"), " 0 - 0");
}

TEST_F(SearchPath, WithoutAPathNothingIsFound) {
    EXPECT_EQ(found("", "both"), " 0 - 0");
    EXPECT_EQ(found(nullptr, "both"), " 0 - 0");
}

TEST_F(SearchPath, WhatIsInNoDirectoryIsNotFound) {
    EXPECT_EQ(found((a + ":" + b).c_str(), "none"), " 0 - 0");
}

TEST(ExecutablePath, IsThatOfTheRunningProgram) {
    EXPECT_EQ(executablePath(), std::filesystem::read_symlink("/proc/self/exe").c_str());
}

TEST(ExecutablePath, OfALongNameIsWhole) {
    const support::ScratchDirectory scratch;
    for (const int length : {1, 100, 200}) {
        const std::string copy = scratch / std::string(static_cast<std::size_t>(length), 'q');
        std::filesystem::copy_file("/proc/self/exe", copy);
        const auto result =
            support::runProgram({copy, "--gtest_filter=ExecutablePath.IsThatOfTheRunningProgram"});
        EXPECT_EQ(result.outcome, "0") << result.out;
    }
}

TEST(ExecutablePath, TellsOfALinkThatCannotBeRead) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can hide the link";
    }
    const support::ScratchDirectory scratch;
    const support::ChildResult result = support::runFunction([&scratch] {
        std::cout << (chroot(scratch.path().c_str()) == 0 ? "hidden " : "not hidden ");
        std::cout << '[' << executablePath() << ']' << std::flush;
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "hidden []");
    EXPECT_EQ(result.err, "Unable to read link /proc/self/exe\n");
}

} // namespace
} // namespace quillon
