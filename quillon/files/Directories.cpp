#include "quillon/files/Directories.h"

#include "quillon/files/FileAccess.h"
#include "quillon/files/PathNames.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

namespace {

constexpr mode_t newDirectoryMode = 0777;

LmStr reasonNotMade(const LmStr& path, int errorNumber) {
    if (errorNumber == EACCES) {
        return dirName(path) + " is not writable.";
    }
    if (errorNumber == EEXIST) {
        return path + " already exists.";
    }
    return path + " " + std::strerror(errorNumber);
}

void tellIfWanted(LmStr* messageOut, const LmStr& text) {
    if (messageOut != nullptr) {
        *messageOut = text;
    }
}

} // namespace

bool changeDir(const LmStr& path) {
    return chdir(path.c_str()) == 0;
}

std::pair<int, LmStr> makeDir(const LmStr& path) {
    if (mkdir(path.c_str(), newDirectoryMode) == 0) {
        return {0, ""};
    }
    switch (errno) {
    case EEXIST:
        return {1, ""};
    case EACCES:
        return {2, ""};
    default:
        return {3, std::strerror(errno)};
    }
}

bool removeDir(const LmStr& path) {
    return rmdir(path.c_str()) == 0;
}

bool makeDirPath(const LmStr& path, LmStr* messageOut) {
    if (fileExists(path)) {
        if (isDirectory(path)) {
            return true;
        }
        tellIfWanted(messageOut, path + " already exists, but is not a directory.");
        return false;
    }
    const LmStr parent = dirName(path);
    if (parent != "" && !makeDirPath(parent, messageOut)) {
        return false;
    }
    if (mkdir(path.c_str(), newDirectoryMode) != 0) {
        tellIfWanted(messageOut, reasonNotMade(path, errno));
    }
    return isDirectory(path);
}

LmStr tempDir() {
    return "/var/tmp";
}

} // namespace quillon
