#include "quillon/files/Launching.h"

#include "quillon/files/FileAccess.h"
#include "quillon/files/LmAbstractEnv.h"
#include "quillon/files/LmDirLayout.h"
#include "quillon/files/PathNames.h"
#include "quillon/files/ProgramSearch.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace quillon {

namespace {

bool holds(const LmStr& directory, const LmStr& name) {
    return fileExists(joinPath(directory, name));
}

/// Where programs are looked for behind `binDir`, in order.
std::vector<LmStr> furtherDirs() {
    std::vector<LmStr> directories;
    const LmStr ownDirectory = dirName(executablePath());
    // An empty name would be taken for the root.
    if (!ownDirectory.view().empty()) {
        directories.push_back(ownDirectory);
    }
    LmStr rest = envString("PATH");
    for (LmStr directory = rest.popToken(":"); !directory.isNull(); directory = rest.popToken(":")) {
        directories.push_back(directory);
    }
    return directories;
}

void tellWhereLooked(const LmStr& directory) {
    std::fprintf(stderr, "  looked in %s\n", directory.c_str());
}

/// The line from its first word on, in the directory of the program that this names.
LmStr lineWithDirectory(const LmStr& commandLine, const LmStr& directory, const LmStr& program) {
    int start = 0;
    commandLine.find(program, &start);
    return joinPath(directory, commandLine.skip(start));
}

} // namespace

LmStr findApplication(const LmStr& name) {
    const LmStr binDir = dirLayout().binDir();
    if (holds(binDir, name)) {
        return binDir;
    }
    const std::vector<LmStr> further = furtherDirs();
    for (const LmStr& directory : further) {
        if (holds(directory, name)) {
            return directory;
        }
    }
    std::fprintf(stderr, "Couldn't find application %s\n", name.c_str());
    tellWhereLooked(binDir);
    for (const LmStr& directory : further) {
        tellWhereLooked(directory);
    }
    return "";
}

LmStr applicationPath(const LmStr& name) {
    const LmStr directory = findApplication(name);
    return directory == "" ? directory : joinPath(directory, name);
}

bool launchApplication(const LmStr& commandLine) {
    const LmStr program = commandLine.firstToken(" \t\n\r");
    if (!program.isNull()) {
        const LmStr directory = findApplication(program);
        if (directory == "") {
            return false;
        }
        const LmStr shellLine = lineWithDirectory(commandLine, directory, program) + " &";
        if (std::system(shellLine.c_str()) == 0) {
            return true;
        }
    }
    std::fprintf(stderr, "Couldn't execute %s\n", commandLine.c_str());
    return false;
}

} // namespace quillon
