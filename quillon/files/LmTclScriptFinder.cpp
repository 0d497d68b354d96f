#include "quillon/files/LmTclScriptFinder.h"

#include "quillon/files/FileAccess.h"
#include "quillon/files/LmDirLayout.h"
#include "quillon/files/PathNames.h"
#include "quillon/files/ProgramSearch.h"
#include "quillon/files/VariableExpansion.h"
#include "quillon/files/VirtualEnv.h"

#include <cstdio>

namespace quillon {

namespace {

constexpr const char* defaultSearchPath = "$DRENK_DATA_DIR/tcl:$DRENK_DIR/lib/tcl";

LmStr tclDirUnder(const LmStr& directory) {
    return joinPath(joinPath(directory, "lib"), "tcl");
}

/// The script directory of an installation whose programs lie in a directory of their own beside "lib".
LmStr tclDirOfInstallation(const LmTclScriptFinder::ExecutableFinder& program) {
    const LmStr path = program.executablePath();
    if (path.view().empty()) {
        std::fputs("Could not get path of executable\n", stderr);
        return tclDirUnder(".");
    }
    return tclDirUnder(dirName(dirName(path)));
}

} // namespace

LmStr RealExecutableFinder::executablePath() const {
    return quillon::executablePath();
}

bool RealExistenceChecker::exists(const LmStr& path) const {
    return fileExists(path);
}

LmDArray<LmStr> scriptSearchDirs(const LmTclScriptFinder& finder) {
    VirtualEnv env(*finder.layout);
    LmStr searchPath = envString("DRENK_TCL", env);
    const bool isDefault = searchPath.view().empty();
    if (isDefault) {
        searchPath = defaultSearchPath;
    }
    LmDArray<LmStr> directories;
    for (LmStr& entry : searchPath.split(':')) {
        if (entry.view().empty()) {
            break;
        }
        expandVariables(entry, true, env);
        directories.append(entry);
    }
    if (isDefault) {
        directories.append(tclDirOfInstallation(finder.finders->executable));
    }
    return directories;
}

LmDArray<LmStr> scriptDirs(const LmTclScriptFinder& finder) {
    LmStr appNameInCapitals = finder.appName;
    appNameInCapitals.toUpper();
    LmDArray<LmStr> directories;
    for (const LmStr& directory : scriptSearchDirs(finder)) {
        directories.append(joinPath(directory, finder.appName));
        if (finder.alsoUpperCase) {
            directories.append(joinPath(directory, appNameInCapitals));
        }
        directories.append(directory);
    }
    return directories;
}

LmDArray<LmStr> scriptCandidates(const LmTclScriptFinder& finder, const LmStr& script) {
    LmDArray<LmStr> candidates = scriptDirs(finder);
    for (LmStr& candidate : candidates) {
        candidate = joinPath(candidate, script);
    }
    return candidates;
}

LmStr findScriptFile(const LmTclScriptFinder& finder, const LmStr& script,
                     const LmTclScriptFinder::ExistenceChecker& checker) {
    for (const LmStr& candidate : scriptCandidates(finder, script)) {
        if (checker.exists(candidate)) {
            return candidate;
        }
    }
    return "";
}

LmStr findTclScript(const LmStr& script, const LmStr& appName, bool alsoUpperCase) {
    const RealExecutableFinder executable;
    const RealExistenceChecker existence;
    const LmTclScriptFinder::Finders finders = {executable, existence};
    const LmTclScriptFinder finder = {appName, &dirLayout(), &finders, alsoUpperCase};
    return findScriptFile(finder, script, finders.existence);
}

LmStr tclBaseDir(LmDirLayout& layout, const LmTclScriptFinder::ExecutableFinder& program) {
    const LmStr ofBaseDir = tclDirUnder(layout.baseDir());
    return (isDirectory(ofBaseDir) ? ofBaseDir : tclDirOfInstallation(program)) + "/";
}

LmStr tclBaseDir() {
    return tclBaseDir(dirLayout(), RealExecutableFinder());
}

} // namespace quillon
