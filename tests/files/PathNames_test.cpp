#include "quillon/files/PathNames.h"

#include "tests/files/FileTestSupport.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

using test::chainOf;
using test::error;
using test::StatusChain;

struct NameCase {
    const char* path;
    const char* directory;
    const char* base;
};

constexpr NameCase nameCases[] = {
    {"a/b", "a", "b"},       {"a/b/", "a", "b"},      {"/a", "/", "a"},
    {"/a/", "/", "a"},       {"/", "", "/"},          {"", "", ""},
    {nullptr, "", ""},       {"a", "", "a"},          {"a/", "", "a/"},
    {"a\\", "", "a\\"},      {"a\\b", "a", "b"},      {"\\a", "/", "a"},
    {"a/b\\c", "a", "b\\c"}, {"a\\b/c", "a\\b", "c"}, {"a/b\\", "a", "b"},
    {"//", "/", ""},         {"a//b", "a/", "b"},     {"a//", "a", ""},
    {"/a/b.c", "/a", "b.c"},
};

TEST(DirName, IsWhatStandsBeforeTheLastSeparator) {
    for (const NameCase& each : nameCases) {
        EXPECT_EQ(dirName(each.path), each.directory) << (each.path ? each.path : "null");
    }
}

TEST(BaseName, IsWhatStandsBehindTheLastSeparator) {
    for (const NameCase& each : nameCases) {
        EXPECT_EQ(baseName(each.path), each.base) << (each.path ? each.path : "null");
    }
}

struct SplitCase {
    const char* path;
    const char* directory;
    const char* stem;
    const char* extension;
};

TEST(SplitPath, SplitsTheNameAtItsLastDot) {
    const SplitCase cases[] = {
        {"/d/a.b.c", "/d", "a.b", "c"},
        {"a.b", "", "a", "b"},
        {"a", "", "a", ""},
        {"/a", "/", "a", ""},
        {"a.", "", "a", ""},
        {".gz", "", "", "gz"},
        {"d.e/a", "d.e", "a", ""},
        {"d/e.f/", "d", "e", "f/"},
        {"a//b.c", "a/", "b", "c"},
        {"", "", "", ""},
        {nullptr, "", "", ""},
        {"a\\b.c", "a", "\\b", "c"},
    };
    for (const SplitCase& each : cases) {
        LmStr directory = "x";
        LmStr stem = "x";
        LmStr extension = "x";
        splitPath(each.path, &directory, &stem, &extension);
        EXPECT_EQ(directory, each.directory) << (each.path ? each.path : "null");
        EXPECT_EQ(stem, each.stem) << (each.path ? each.path : "null");
        EXPECT_EQ(extension, each.extension) << (each.path ? each.path : "null");
    }
}

TEST(SplitPath, FillsOnlyTheOutputsThatAreGiven) {
    LmStr path = "/d/a.b";
    splitPath(path, nullptr, nullptr, nullptr);
    splitPath(path, nullptr, &path, nullptr);
    EXPECT_EQ(path, "a");
}

TEST(JoinPath, PutsOneSlashBetween) {
    EXPECT_EQ(joinPath("a", "b"), "a/b");
    EXPECT_EQ(joinPath("a/", "b"), "a/b");
    EXPECT_EQ(joinPath("a//", "b"), "a//b");
    EXPECT_EQ(joinPath("/", "b"), "/b");
    EXPECT_EQ(joinPath("", "b"), "/b");
    EXPECT_EQ(joinPath("a", ""), "a/");
    EXPECT_EQ(joinPath("a\\", "b"), "a\\/b");
}

TEST(JoinPathExt, PutsADotBeforeTheExtension) {
    EXPECT_EQ(joinPathExt("d/", "a", "zvx"), "d/a.zvx");
    EXPECT_EQ(joinPathExt("d", "a.b", ""), "d/a.b.");
}

TEST(IsAbsolutePath, LooksAtTheFirstCharacter) {
    EXPECT_TRUE(isAbsolutePath("/"));
    EXPECT_TRUE(isAbsolutePath("/a"));
    EXPECT_FALSE(isAbsolutePath("a/"));
    EXPECT_FALSE(isAbsolutePath("\\a"));
    EXPECT_FALSE(isAbsolutePath(""));
    EXPECT_FALSE(isAbsolutePath(nullptr));
}

struct AbsoluteCase {
    const char* path;
    const char* base;
    const char* expected;
};

constexpr AbsoluteCase absoluteCases[] = {
    {"a/./b/../c", "/x", "/x/a/c"},
    {"/a/./b/../c", "/x", "/a/c"},
    {"a", "/", "/a"},
    {"a", "/x/", "/x/a"},
    {"", "/x", "/x"},
    {".", "/x", "/x"},
    {"..", "/x/y", "/x"},
    {"../..", "/x/y", "/"},
    {"/", "/x", "/"},
    {"/.", "/x", "/"},
    {"/..", "/x", ""},
    {"/../a", "/x", "/a"},
    {"/a/../b", "/x", "/b"},
    {"/a//b", "/x", "/a/b"},
    {"/a/", "/x", "/a"},
    {"/a/...", "/x", "/a/..."},
    {"/a/.b", "/x", "/a/.b"},
};

TEST(AbsolutePath, ResolvesDotsInTheTextAlone) {
    for (const AbsoluteCase& each : absoluteCases) {
        LmStatus status;
        EXPECT_EQ(absolutePath(each.path, each.base), each.expected) << each.path;
        EXPECT_EQ(absolutePath(each.path, each.base, status), each.expected) << each.path;
        EXPECT_EQ(chainOf(status), StatusChain{}) << each.path;
    }
}

TEST(AbsolutePath, OfAVeryDeepPathTakesNoStack) {
    std::string deep;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        deep += "/a/.";
        expected += "/a";
    }
    EXPECT_EQ(absolutePath(deep.c_str(), "/"), expected.c_str());
}

TEST(AbsolutePath, StartsAtTheWorkingDirectoryWithoutABase) {
    const support::ScratchDirectory scratch;
    const auto result = support::runFunction(
        [] {
            LmStatus status;
            std::cout << currentDir() << '\n' << currentDir(status) << '\n';
            std::cout << absolutePath("a") << '\n' << absolutePath("a", status) << '\n';
            std::cout << absolutePath("a", "") << '\n' << absolutePath("a", "b", status) << '\n';
            std::cout << absolutePath("a", "b") << '\n';
            test::printChain(status);
        },
        {.directory = scratch.path()});
    const std::string here = scratch.path().string();
    EXPECT_EQ(result.out, here + '\n' + here + '\n' + here + "/a\n" + here + "/a\n" + here + "/a\n" + here +
                              "/b/a\n" + here + "/b/a\n");
    EXPECT_EQ(result.outcome, "0");
}

TEST(AbsolutePath, IsEmptyWhileAnErrorStands) {
    LmStatus status;
    status.pushError("earlier");
    EXPECT_EQ(absolutePath("a", "/x", status), "");
    status.pushWarning("on top");
    EXPECT_EQ(absolutePath("a", "/x", status), "/x/a");
}

support::ChildResult runInRemovedDirectory(const std::function<void()>& body) {
    const support::ScratchDirectory scratch;
    const std::string gone = scratch / "gone";
    return support::runFunction([&] {
        std::filesystem::create_directory(gone);
        std::filesystem::current_path(gone);
        std::filesystem::remove(gone);
        body();
    });
}

TEST(CurrentDir, ReportsAWorkingDirectoryThatIsGone) {
    const auto result = runInRemovedDirectory([] {
        LmStatus status;
        std::cout << '[' << currentDir(status) << "]\n";
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "[]\nerror: \"Could not get absolute path of current working directory.\n\"\n");
    EXPECT_EQ(result.err, "");
}

TEST(CurrentDir, EndsTheProcessWithoutAStatusToReportOn) {
    for (const auto& ask : {+[] { return currentDir(); }, +[] { return absolutePath("a"); },
                            +[] { return absolutePath("/a", ""); }}) {
        const auto result = runInRemovedDirectory([&] { ask(); });
        EXPECT_EQ(result.outcome, "1");
        EXPECT_EQ(result.err, "Could not get absolute path of current working directory.\n");
    }
}

TEST(AbsolutePath, ReportsAWorkingDirectoryThatIsGone) {
    const auto result = runInRemovedDirectory([] {
        LmStatus status;
        std::cout << '[' << absolutePath("a", status) << "]\n";
        test::printChain(status);
    });
    EXPECT_EQ(result.out, "[]\nerror: \"Unable to determine absolute path for \"a\".\"\n"
                          "error: \"Could not get absolute path of current working directory.\n\"\n");
}

} // namespace
} // namespace quillon
