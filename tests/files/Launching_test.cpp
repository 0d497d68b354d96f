#include "quillon/files/Launching.h"

#include "quillon/files/LmDirLayout.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/ScratchPrograms.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace quillon {
namespace {

/// A base directory, a home with nothing in it, and the directories a and b of the search path. What is
/// started in the background writes to the outputs of the child, which are collected until it has closed
/// them.
class Launching : public testing::Test {
protected:
    support::ChildResult inChild(const std::function<void()>& body) {
        return support::runFunction([&] {
            dirLayout().setBaseDir(base.c_str());
            setenv("PATH", path.c_str(), 1);
            body();
        });
    }

    /// The directory and the path of the program, or what is printed for one that is not found.
    std::string found(const std::string& name) {
        const support::ChildResult result = inChild([&] {
            const LmStr directory = findApplication(name.c_str());
            std::cout << directory;
            if (directory != "") {
                std::cout << ' ' << applicationPath(name.c_str());
            }
        });
        EXPECT_EQ(result.outcome, "0");
        return result.out + result.err;
    }

    const support::ScratchDirectory scratch;
    const std::string base = scratch / "base";
    const std::string bin = scratch / "base/bin/";
    const std::string a = scratch / "a";
    const std::string b = scratch / "b";
    std::string path = a + ":" + b;
    const std::filesystem::path ownProgram = std::filesystem::read_symlink("/proc/self/exe");
    const std::string ownDirectory = ownProgram.parent_path().string();
};

TEST_F(Launching, PrefersTheDirectoryOfTheSystemsPrograms) {
    for (const std::string& directory : {base + "/bin", a, b}) {
        test::writeProgram(directory + "/tool", "");
    }
    EXPECT_EQ(found("tool"), bin + " " + bin + "tool");
}

TEST_F(Launching, LooksBesideTheRunningProgramBeforeThePath) {
    const std::string own = ownProgram.filename().string();
    test::writeProgram(a + "/" + own, "");
    EXPECT_EQ(found(own), ownDirectory + " " + ownDirectory + "/" + own);
    test::writeProgram(bin + own, "");
    EXPECT_EQ(found(own), bin + " " + bin + own);
}

TEST_F(Launching, LooksThroughThePathInOrder) {
    test::writeProgram(b + "/tool", "");
    EXPECT_EQ(found("tool"), b + " " + b + "/tool");
    test::writeProgram(a + "/tool", "");
    EXPECT_EQ(found("tool"), a + " " + a + "/tool");
}

TEST_F(Launching, PassesOverEmptyEntriesOfThePath) {
    test::writeProgram(b + "/tool", "");
    path = "::" + a + "::" + b + ":";
    EXPECT_EQ(found("tool"), b + " " + b + "/tool");
    // The name of what lies in the root is no program of an empty entry.
    EXPECT_EQ(found("bin"), "Couldn't find application bin\n  looked in " + bin + "\n  looked in " +
                                ownDirectory + "\n  looked in " + a + "\n  looked in " + b + "\n");
}

TEST_F(Launching, WhatExistsIsFoundWhetherItCanBeExecutedOrNot) {
    std::filesystem::create_directory(a);
    support::writeBytes(a + "/plain", "");
    EXPECT_EQ(found("plain"), a + " " + a + "/plain");
}

TEST_F(Launching, TellsWhereAProgramWasLookedFor) {
    const support::ChildResult result = inChild([] { std::cout << '[' << findApplication("none") << ']'; });
    EXPECT_EQ(result.out, "[]");
    EXPECT_EQ(result.err, "Couldn't find application none\n  looked in " + bin + "\n  looked in " +
                              ownDirectory + "\n  looked in " + a + "\n  looked in " + b + "\n");
    path = "";
    const support::ChildResult withoutPath =
        inChild([] { std::cout << '[' << applicationPath("none") << ']'; });
    EXPECT_EQ(withoutPath.out, "[]");
    EXPECT_EQ(withoutPath.err,
              "Couldn't find application none\n  looked in " + bin + "\n  looked in " + ownDirectory + "\n");
}

TEST_F(Launching, DoesWithoutItsOwnDirectoryWhenTheSystemDoesNotTellIt) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can hide the link to the program";
    }
    test::writeProgram(bin + "tool", "");
    const support::ChildResult result = inChild([this] {
        std::cout << (chroot(scratch.path().c_str()) == 0);
        dirLayout().setBaseDir("/base");
        setenv("PATH", "/a", 1);
        // What lies in the first directory needs no look at the others.
        std::cout << ' ' << findApplication("tool");
        std::cout << " [" << findApplication("base") << ']';
    });
    EXPECT_EQ(result.out, "1 /base/bin/ []");
    EXPECT_EQ(result.err, "Unable to read link /proc/self/exe\n"
                          "Couldn't find application base\n  looked in /base/bin/\n  looked in /a\n");
}

// --- Starting ------------------------------------------------------------------------------------

TEST_F(Launching, StartsAProgramWithItsArgumentsAsTheShellSplitsThem) {
    test::writeProgram(bin + "tool", test::printArguments);
    test::writeProgram(b + "/other", test::printArguments);
    const std::vector<std::pair<const char*, std::string>> lines = {
        {"tool", "tool\n"},
        {"tool a  'b c' \"$0\"", "tool [a] [b c] [sh]\n"},
        {" \t\n\r other\tx", "other [x]\n"},
        {"other -x >&2", "other [-x]\n"},
    };
    for (const auto& [line, expected] : lines) {
        const support::ChildResult result = inChild([line = line] {
            if (!launchApplication(line)) {
                std::cout << "not started\n";
            }
        });
        EXPECT_EQ(result.outcome, "0") << line;
        EXPECT_EQ(result.out + result.err, expected) << line;
        EXPECT_FALSE(result.leftProcesses) << line;
    }
}

TEST_F(Launching, DoesNotWaitForTheProgram) {
    // The program waits for a word that only comes once its start has been told of.
    const std::string words = scratch / "words";
    ASSERT_EQ(mkfifo(words.c_str(), 0600), 0);
    test::writeProgram(bin + "tool", "read word <\"$1\"\necho \"$word\"");
    const support::ChildResult result = inChild([&] {
        std::cout << launchApplication(("tool " + words).c_str()) << std::endl;
        std::ofstream(words) << "go\n";
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "1\ngo\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Launching, RunsNothingForAProgramThatIsNotFound) {
    const support::ChildResult result =
        inChild([] { std::cout << launchApplication("none; echo run") << launchApplication("none x"); });
    EXPECT_EQ(result.out, "00");
    const std::string places = "  looked in " + bin + "\n  looked in " + ownDirectory + "\n  looked in " + a +
                               "\n  looked in " + b + "\n";
    EXPECT_EQ(result.err,
              "Couldn't find application none;\n" + places + "Couldn't find application none\n" + places);
}

TEST_F(Launching, TheProgramsNameEndsAtBlankTabOrLineEnd) {
    path = "";
    for (const char delimiter : {' ', '\t', '\n', '\r'}) {
        const std::string line = std::string("none\v\f") + delimiter + "x";
        const support::ChildResult result = inChild([&] { std::cout << launchApplication(line.c_str()); });
        EXPECT_EQ(result.out, "0");
        EXPECT_EQ(result.err, "Couldn't find application none\v\f\n  looked in " + bin + "\n  looked in " +
                                  ownDirectory + "\n");
    }
}

TEST_F(Launching, TellsOfALineWithoutAProgram) {
    std::filesystem::create_directories(bin);
    const support::ChildResult result =
        inChild([] { std::cout << launchApplication("") << launchApplication(" \t"); });
    EXPECT_EQ(result.out, "00");
    EXPECT_EQ(result.err, "Couldn't execute \nCouldn't execute  \t\n");
}

TEST_F(Launching, TellsOfAnyResultOfTheShellButZero) {
    test::writeProgram(bin + "tool", "");
    // The "#" takes the "&" that would hide the result.
    const support::ChildResult result = inChild([] { std::cout << launchApplication("tool ; exit 3 #"); });
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Couldn't execute tool ; exit 3 #\n");
}

TEST_F(Launching, TellsWhenNoProcessCanBeStarted) {
    test::writeProgram(bin + "tool", test::printArguments);
    std::filesystem::permissions(scratch.path(), std::filesystem::perms::all);
    const support::ChildResult result = test::runAsNobody([this] {
        dirLayout().setBaseDir(base.c_str());
        test::allowNoProcess();
        std::cout << launchApplication("tool a b");
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "0");
    EXPECT_EQ(result.err, "Couldn't execute tool a b\n");
}

} // namespace
} // namespace quillon
