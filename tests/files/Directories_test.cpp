#include "quillon/files/Directories.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using support::ScratchDirectory;
using test::permissionsOf;
using CodeAndText = std::pair<int, LmStr>;

TEST(MakeDir, TellsTheOutcomeByACode) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "d";
    EXPECT_EQ(makeDir(path.c_str()), CodeAndText(0, ""));
    EXPECT_EQ(makeDir(path.c_str()), CodeAndText(1, ""));
    EXPECT_EQ(makeDir((scratch / "none/d").c_str()), CodeAndText(3, "No such file or directory"));
    if (geteuid() != 0) {
        GTEST_SKIP() << test::ownedByAsker;
    }
    chmod(scratch.path().c_str(), 0755);
    const auto denied = test::runAsNobody([&] {
        const CodeAndText result = makeDir((scratch / "e").c_str());
        std::cout << result.first << '[' << result.second << ']';
    });
    EXPECT_EQ(denied.out, "2[]");
}

TEST(MakeDir, LeavesThePermissionsToTheMask) {
    const ScratchDirectory scratch;
    support::runFunction([&] {
        umask(0);
        makeDir((scratch / "d").c_str());
        umask(027);
        makeDir((scratch / "e").c_str());
        makeDirPath((scratch / "f/g").c_str());
    });
    EXPECT_EQ(permissionsOf(scratch / "d"), 0777U);
    EXPECT_EQ(permissionsOf(scratch / "e"), 0750U);
    EXPECT_EQ(permissionsOf(scratch / "f/g"), 0750U);
}

TEST(RemoveDir, RemovesAnEmptyDirectoryOnly) {
    const ScratchDirectory scratch;
    std::filesystem::create_directories(scratch / "d/e");
    EXPECT_FALSE(removeDir((scratch / "d").c_str()));
    EXPECT_TRUE(removeDir((scratch / "d/e").c_str()));
    EXPECT_FALSE(removeDir((scratch / "d/e").c_str()));
}

TEST(ChangeDir, MovesTheProcess) {
    const ScratchDirectory scratch;
    const auto result = support::runFunction([&] {
        std::cout << changeDir(scratch.path().c_str()) << changeDir("none");
        std::cout << std::filesystem::current_path().string();
    });
    EXPECT_EQ(result.out, "10" + scratch.path().string());
}

TEST(MakeDirPath, CreatesTheParentsToo) {
    const ScratchDirectory scratch;
    LmStr message = "untouched";
    EXPECT_TRUE(makeDirPath((scratch / "a/b/c/").c_str(), &message));
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "a/b/c"));
    EXPECT_EQ(message, "untouched");
}

TEST(MakeDirPath, LeavesAnExistingDirectoryAlone) {
    const ScratchDirectory scratch;
    support::writeBytes(scratch / "a", "");
    EXPECT_TRUE(makeDirPath(scratch.path().c_str()));
    EXPECT_TRUE(test::isThere(scratch / "a"));
    EXPECT_TRUE(makeDirPath("/"));
}

TEST(MakeDirPath, WorksInTheWorkingDirectory) {
    const ScratchDirectory scratch;
    const auto result =
        support::runFunction([] { std::cout << makeDirPath("a/b"); }, {.directory = scratch.path()});
    EXPECT_EQ(result.out, "1");
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "a/b"));
}

TEST(MakeDirPath, TellsOfAFileInTheWay) {
    const ScratchDirectory scratch;
    const std::string file = scratch / "a";
    support::writeBytes(file, "");
    for (const std::string& path : {file, file + "/b/c"}) {
        LmStr message;
        EXPECT_FALSE(makeDirPath(path.c_str(), &message));
        EXPECT_FALSE(makeDirPath(path.c_str()));
        EXPECT_EQ(message, (file + " already exists, but is not a directory.").c_str());
    }
}

TEST(MakeDirPath, TellsOfADanglingLinkInTheWay) {
    const ScratchDirectory scratch;
    const std::string link = scratch / "link";
    ASSERT_EQ(symlink("none", link.c_str()), 0);
    LmStr message;
    EXPECT_FALSE(makeDirPath(link.c_str(), &message));
    EXPECT_EQ(message, (link + " already exists.").c_str());
}

TEST(MakeDirPath, TellsOfAParentWithoutRights) {
    if (geteuid() != 0) {
        GTEST_SKIP() << test::ownedByAsker;
    }
    const ScratchDirectory scratch;
    chmod(scratch.path().c_str(), 0755);
    const auto result = test::runAsNobody([&] {
        LmStr message;
        std::cout << makeDirPath((scratch / "a/b").c_str(), &message) << message;
    });
    EXPECT_EQ(result.out, "0" + scratch.path().string() + " is not writable.");
}

TEST(MakeDirPath, TellsTheSystemsTextOtherwise) {
    LmStr message;
    EXPECT_FALSE(makeDirPath("/proc/quillon", &message));
    EXPECT_EQ(message, "/proc/quillon No such file or directory");
    EXPECT_FALSE(makeDirPath("", &message));
    EXPECT_EQ(message, " No such file or directory");
}

TEST(TempDir, DoesNotDependOnTheEnvironment) {
    EXPECT_EQ(support::runFunction([] {
                  setenv("TMPDIR", "/elsewhere", 1);
                  std::cout << tempDir();
              }).out,
              "/var/tmp");
}

} // namespace
} // namespace quillon
