#include "quillon/files/LmTclScriptFinder.h"

#include "quillon/files/LmDirLayout.h"
#include "tests/files/MapEnv.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::MapEnv;
using Texts = std::vector<std::string>;

/// A program at a path that the test chooses.
class ProgramAt : public LmTclScriptFinder::ExecutableFinder {
public:
    explicit ProgramAt(const char* where) : path(where) {}
    LmStr executablePath() const override { return path; }

private:
    LmStr path;
};

/// A file system of a few paths, which remembers what it was asked.
class FilesAt : public LmTclScriptFinder::ExistenceChecker {
public:
    explicit FilesAt(Texts there) : paths(std::move(there)) {}

    bool exists(const LmStr& path) const override {
        asked.emplace_back(path.c_str());
        return std::find(paths.begin(), paths.end(), path.c_str()) != paths.end();
    }

    mutable Texts asked;

private:
    Texts paths;
};

Texts textsOf(const LmDArray<LmStr>& strings) {
    Texts texts;
    for (const LmStr& string : strings) {
        texts.emplace_back(string.c_str());
    }
    return texts;
}

/// The application "app" with its program at /opt/x/bin/app, over an environment of the test.
class ScriptFinder : public testing::Test {
protected:
    LmTclScriptFinder finder() { return {"app", &layout, &finders, alsoUpperCase}; }
    Texts searchDirs() { return textsOf(scriptSearchDirs(finder())); }
    Texts dirs() { return textsOf(scriptDirs(finder())); }

    MapEnv env = {{"HOME", "/h"}};
    LmDirLayout layout{env};
    ProgramAt program{"/opt/x/bin/app"};
    FilesAt files{{}};
    LmTclScriptFinder::Finders finders{program, files};
    bool alsoUpperCase = false;
};

TEST_F(ScriptFinder, SearchesTheDirectoriesOfTheVariableAlone) {
    env.values["DRENK_TCL"] = "/a:/b";
    EXPECT_EQ(searchDirs(), (Texts{"/a", "/b"}));
    EXPECT_EQ(dirs(), (Texts{"/a/app", "/a", "/b/app", "/b"}));
    EXPECT_EQ(textsOf(scriptCandidates(finder(), "s.tcl")),
              (Texts{"/a/app/s.tcl", "/a/s.tcl", "/b/app/s.tcl", "/b/s.tcl"}));
}

TEST_F(ScriptFinder, TriesTheNameInCapitalsBehindTheName) {
    env.values["DRENK_TCL"] = "/a:/b";
    alsoUpperCase = true;
    EXPECT_EQ(dirs(), (Texts{"/a/app", "/a/APP", "/a", "/b/app", "/b/APP", "/b"}));
    EXPECT_EQ(textsOf(scriptCandidates(finder(), "s")),
              (Texts{"/a/app/s", "/a/APP/s", "/a/s", "/b/app/s", "/b/APP/s", "/b/s"}));
}

TEST_F(ScriptFinder, WithoutTheVariableSearchesDataBaseAndInstallation) {
    const Texts expected = {"/h/Documents/drenk/workspace/default/tcl", "/h/Documents/drenk/lib/tcl",
                            "/opt/x/lib/tcl"};
    EXPECT_EQ(searchDirs(), expected);
    env.values["DRENK_TCL"] = "";
    EXPECT_EQ(searchDirs(), expected);
}

TEST_F(ScriptFinder, TakesDataAndBaseFromTheLayoutRatherThanFromTheProcess) {
    layout.setDataDir("/d//");
    layout.setBaseDir("/b");
    env.values["DRENK_DIR"] = "/other";
    EXPECT_EQ(searchDirs(), (Texts{"/d/tcl", "/b/lib/tcl", "/opt/x/lib/tcl"}));
    env.values["DRENK_TCL"] = "$DRENK_DIR:$DRENK_DATA_DIR/x";
    EXPECT_EQ(searchDirs(), (Texts{"/b", "/d/x"}));
}

TEST_F(ScriptFinder, EndsTheListAtAnEmptyEntry) {
    const std::vector<std::pair<const char*, Texts>> cases = {
        {"/a::/b", {"/a"}}, {"/a:", {"/a"}}, {":/a", {}}, {":", {}}, {"/a:/b:/c::", {"/a", "/b", "/c"}},
    };
    for (const auto& [value, expected] : cases) {
        env.values["DRENK_TCL"] = value;
        EXPECT_EQ(searchDirs(), expected) << value;
    }
}

TEST_F(ScriptFinder, ExpandsVariablesWithoutTheSlashesAtTheirEnds) {
    env.values["SCRIPTS"] = "/s//";
    env.values["DRENK_TCL"] = "$SCRIPTS/tcl:/x/$NONE/y:$SCRIPTS:$EMPTY:/z";
    env.values["EMPTY"] = "";
    // An entry that expansion empties is not one that was empty: the list goes on.
    EXPECT_EQ(searchDirs(), (Texts{"/s/tcl", "/x/$NONE/y", "/s", "", "/z"}));
}

TEST_F(ScriptFinder, AColonInAValueDividesNothing) {
    env.values["SCRIPTS"] = "/s:/t";
    env.values["DRENK_TCL"] = "$SCRIPTS/x:/a";
    EXPECT_EQ(searchDirs(), (Texts{"/s:/t/x", "/a"}));
}

TEST_F(ScriptFinder, FindsTheFirstThatExistsAndAsksNoFurther) {
    env.values["DRENK_TCL"] = "/a:/b";
    const FilesAt shared({"/a/s.tcl", "/b/app/s.tcl"});
    EXPECT_EQ(findScriptFile(finder(), "s.tcl", shared), "/a/s.tcl");
    EXPECT_EQ(shared.asked, (Texts{"/a/app/s.tcl", "/a/s.tcl"}));
    const FilesAt own({"/a/s.tcl", "/a/app/s.tcl"});
    EXPECT_EQ(findScriptFile(finder(), "s.tcl", own), "/a/app/s.tcl");
    EXPECT_EQ(own.asked, (Texts{"/a/app/s.tcl"}));
}

TEST_F(ScriptFinder, GivesAnEmptyTextForAScriptThatIsNowhere) {
    env.values["DRENK_TCL"] = "/a:/b";
    const FilesAt others({"/a/app/t.tcl", "/a/APP/s.tcl", "/s.tcl"});
    const LmStr found = findScriptFile(finder(), "s.tcl", others);
    EXPECT_EQ(found, "");
    EXPECT_EQ(others.asked, (Texts{"/a/app/s.tcl", "/a/s.tcl", "/b/app/s.tcl", "/b/s.tcl"}));
}

TEST_F(ScriptFinder, AProgramInTheRootWasInstalledThere) {
    for (const char* const path : {"/app", "/bin/app"}) {
        const ProgramAt nearTheRoot(path);
        const LmTclScriptFinder::Finders nearFinders = {nearTheRoot, files};
        const LmTclScriptFinder nearFinder = {"app", &layout, &nearFinders, false};
        EXPECT_EQ(textsOf(scriptSearchDirs(nearFinder)).back(), "/lib/tcl") << path;
    }
}

TEST_F(ScriptFinder, SearchesTheWorkingDirectoryForAnUnknownProgramAndTellsSo) {
    const support::ChildResult result = support::runFunction([this] {
        const ProgramAt nowhere("");
        const LmTclScriptFinder::Finders lostFinders = {nowhere, files};
        const LmTclScriptFinder lostFinder = {"app", &layout, &lostFinders, false};
        std::cout << scriptSearchDirs(lostFinder)[2] << '\n';
        // Nobody needs to know the program's path here.
        env.values["DRENK_TCL"] = "/a";
        std::cout << scriptSearchDirs(lostFinder)[0] << '\n';
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "./lib/tcl\n/a\n");
    EXPECT_EQ(result.err, "Could not get path of executable\n");
}

// --- On the real machine -------------------------------------------------------------------------

TEST(FindTclScript, LooksIntoTheFileSystemByTheLayoutOfTheProcess) {
    const support::ScratchDirectory scratch;
    for (const char* const directory : {"/data/tcl/APP", "/base/lib/tcl/app"}) {
        std::filesystem::create_directories(scratch.path().string() + directory);
    }
    support::writeBytes(scratch / "data/tcl/APP/s.tcl", "");
    support::writeBytes(scratch / "base/lib/tcl/app/s.tcl", "");
    const support::ChildResult result = support::runFunction([&] {
        unsetenv("DRENK_TCL");
        dirLayout().setBaseDir((scratch / "base").c_str());
        dirLayout().dataDirPrimary = (scratch / "data").c_str();
        std::cout << findTclScript("s.tcl", "app", true) << '\n';
        std::cout << findTclScript("s.tcl", "app", false) << '\n';
        std::cout << '[' << findTclScript("t.tcl", "app", true) << "]\n";
    });
    EXPECT_EQ(result.out,
              scratch / "data/tcl/APP/s.tcl" + "\n" + (scratch / "base/lib/tcl/app/s.tcl") + "\n[]\n");
    EXPECT_EQ(result.err, "");
}

TEST(TclBaseDir, IsThatOfTheBaseDirectoryIfItIsADirectory) {
    const support::ScratchDirectory scratch;
    MapEnv env = {{"DRENK_DIR", scratch.path().string()}};
    LmDirLayout layout(env);
    const ProgramAt program("/opt/x/bin/app");
    EXPECT_EQ(tclBaseDir(layout, program), "/opt/x/lib/tcl/");
    std::filesystem::create_directory(scratch / "lib");
    support::writeBytes(scratch / "lib/tcl", "");
    EXPECT_EQ(tclBaseDir(layout, program), "/opt/x/lib/tcl/");
    std::filesystem::remove(scratch / "lib/tcl");
    std::filesystem::create_directory(scratch / "lib/tcl");
    EXPECT_EQ(tclBaseDir(layout, program), (scratch / "lib/tcl/").c_str());
}

TEST(TclBaseDir, OfAnUnknownProgramIsInTheWorkingDirectory) {
    const support::ScratchDirectory scratch;
    const support::ChildResult result = support::runFunction([&] {
        MapEnv env = {{"DRENK_DIR", scratch.path().string()}};
        LmDirLayout layout(env);
        std::cout << tclBaseDir(layout, ProgramAt(""));
    });
    EXPECT_EQ(result.out, "./lib/tcl/");
    EXPECT_EQ(result.err, "Could not get path of executable\n");
}

TEST(TclBaseDir, OfTheProcessGoesByItsLayoutAndItsProgram) {
    const support::ScratchDirectory scratch;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const support::ChildResult result = support::runFunction([&] {
        dirLayout().setBaseDir(scratch.path().c_str());
        std::cout << tclBaseDir() << '\n';
        std::filesystem::create_directories(scratch / "lib/tcl");
        std::cout << tclBaseDir() << '\n';
    });
    const std::string installed = (program.parent_path().parent_path() / "lib/tcl/").string();
    EXPECT_EQ(result.out, installed + "\n" + (scratch / "lib/tcl/") + "\n");
    EXPECT_EQ(result.err, "");
}

} // namespace
} // namespace quillon
