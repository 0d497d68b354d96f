#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"

namespace quillon {

class LmDirLayout;

/// What a search for an application's script files goes by. Owns neither the layout nor the finders, which
/// must outlive it.
class LmTclScriptFinder {
public:
    /// Where the running program lies.
    class ExecutableFinder {
    public:
        ExecutableFinder() = default;
        ExecutableFinder(const ExecutableFinder&) = delete;
        ExecutableFinder& operator=(const ExecutableFinder&) = delete;
        virtual ~ExecutableFinder() = default;

        /// The path of the running program; empty when it is unknown.
        virtual LmStr executablePath() const = 0;
    };

    /// What there is in the file system.
    class ExistenceChecker {
    public:
        ExistenceChecker() = default;
        ExistenceChecker(const ExistenceChecker&) = delete;
        ExistenceChecker& operator=(const ExistenceChecker&) = delete;
        virtual ~ExistenceChecker() = default;

        /// Whether there is a file or directory of that path.
        virtual bool exists(const LmStr& path) const = 0;
    };

    /// The two through which a search sees the machine, so that both can be substituted.
    struct Finders {
        const ExecutableFinder& executable; ///< not owned
        const ExistenceChecker& existence;  ///< not owned
    };

    LmStr appName;                    ///< the application's name, also a directory word
    LmDirLayout* layout = nullptr;    ///< not owned
    const Finders* finders = nullptr; ///< not owned
    bool alsoUpperCase = false;       ///< also try the name in capitals
};

/// Asks the system for the running program.
class RealExecutableFinder : public LmTclScriptFinder::ExecutableFinder {
public:
    LmStr executablePath() const override;
};

/// Asks the file system.
class RealExistenceChecker : public LmTclScriptFinder::ExistenceChecker {
public:
    bool exists(const LmStr& path) const override;
};

/// The directories of DRENK_TCL, up to its first empty entry, with `$NAME` references expanded. Without a
/// value those of the data and the base directory, and the one that the running program was installed with;
/// should the program be unknown, says so on standard error and looks from the working directory.
LmDArray<LmStr> scriptSearchDirs(const LmTclScriptFinder& finder);

/// For each of `scriptSearchDirs` the application's own directory in it, the same in capitals if the finder
/// says so, and itself: scripts of the application go before shared ones of the same directory.
LmDArray<LmStr> scriptDirs(const LmTclScriptFinder& finder);

/// Each of `scriptDirs` joined with the script's file name.
LmDArray<LmStr> scriptCandidates(const LmTclScriptFinder& finder, const LmStr& script);

/// The first of `scriptCandidates` that exists for `checker`, empty when none does.
LmStr findScriptFile(const LmTclScriptFinder& finder, const LmStr& script,
                     const LmTclScriptFinder::ExistenceChecker& checker);

/// `findScriptFile` with the layout of the process and the real file system.
LmStr findTclScript(const LmStr& script, const LmStr& appName, bool alsoUpperCase);

/// The directory of the scripts that all applications share, with '/' at its end: the one of the base
/// directory or, when there is none, the one that the running program was installed with.
LmStr tclBaseDir(LmDirLayout& layout, const LmTclScriptFinder::ExecutableFinder& program);
/// The same with the layout of the process.
LmStr tclBaseDir();

} // namespace quillon
