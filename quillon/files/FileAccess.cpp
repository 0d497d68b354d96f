#include "quillon/files/FileAccess.h"

#include "quillon/files/CompressedNames.h"
#include "quillon/files/PathNames.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

namespace {

constexpr mode_t regularBit = 0x8000;
constexpr mode_t directoryBit = 0x4000;
constexpr mode_t pipeBit = 0x1000;

bool allows(const LmStr& path, bool orCompressed, int right) {
    return access((orCompressed ? findCompressedVariant(path) : path).c_str(), right) == 0;
}

/// The mode of what a path leads to, 0 when it cannot be examined.
mode_t modeOf(const LmStr& path, bool followLinks = true) {
    struct stat facts = {};
    const int result = followLinks ? stat(path.c_str(), &facts) : lstat(path.c_str(), &facts);
    return result == 0 ? facts.st_mode : 0;
}

/// The error below the last one, and whether the existing file can be written.
bool existingFileIsWritable(const LmStr& path, LmStatus& status) {
    if (isDirectory(path)) {
        status.pushError("File is a directory.");
        return false;
    }
    if (!fileWritable(path)) {
        status.pushError("Insufficient access to write to existing file.  Check permissions.");
        return false;
    }
    return true;
}

LmStr underWorkingDirIfBare(const LmStr& path) {
    if (path.find('/')) {
        return path;
    }
    char buffer[4097];
    return getcwd(buffer, sizeof buffer) == nullptr ? path : LmStr(buffer) + "/" + path;
}

/// The error below the last one, and whether a new file can be made.
bool newFileIsCreatable(const LmStr& path, LmStatus& status) {
    const LmStr name = underWorkingDirIfBare(path);
    const LmStr parent = dirName(name);
    if (parent == "") {
        status.pushErrorf("Unable to determine the directory for \"%s\".", name.c_str());
        return false;
    }
    if (!fileExists(parent)) {
        status.pushErrorf("Parent directory \"%s\" does not exist.", parent.c_str());
        return false;
    }
    if (!fileWritable(parent)) {
        status.pushErrorf("Insufficient access to create file in \"%s\".  Check permissions.",
                          parent.c_str());
        return false;
    }
    return true;
}

} // namespace

bool opensForReading(const LmStr& path) {
    // To open a pipe and close it again would use up its writer, and the reader to come would wait for ever.
    if (isPipeLike(path)) {
        return fileReadable(path);
    }
    // A device that is not ready must not hold up the check.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file == -1) {
        return false;
    }
    close(file);
    return true;
}

bool checkFileReadable(const LmStr& path, LmStatus& status) {
    if (opensForReading(path)) {
        if (isDirectory(path)) {
            status.pushError(path + " is a directory.");
            return false;
        }
        return true;
    }
    if (!fileExists(path)) {
        status.pushError("File does not exist.");
        status.pushErrorf("Unable to open \"%s\".", path.c_str());
        return false;
    }
    if (!fileReadable(path)) {
        status.pushError("Insufficient access to read file.  Check permissions.");
        status.pushErrorf("Unable to read \"%s\".", path.c_str());
        return false;
    }
    if (isDirectory(path)) {
        status.pushError("File is a directory.");
        status.pushErrorf("Unable to read \"%s\".", path.c_str());
        return false;
    }
    return true;
}

bool checkFileWritable(const LmStr& path, LmStatus& status) {
    if (fileExists(path) ? existingFileIsWritable(path, status) : newFileIsCreatable(path, status)) {
        return true;
    }
    status.pushErrorf("File \"%s\" is unwritable.", path.c_str());
    return false;
}

bool fileExists(const LmStr& path, bool orCompressed) {
    return allows(path, orCompressed, F_OK);
}

bool fileReadable(const LmStr& path, bool orCompressed) {
    return allows(path, orCompressed, R_OK);
}

bool fileWritable(const LmStr& path, bool orCompressed) {
    return allows(path, orCompressed, W_OK);
}

bool fileExecutable(const LmStr& path) {
    return allows(path, false, X_OK);
}

bool isDirectory(const LmStr& path, bool followLinks) {
    return (modeOf(path, followLinks) & directoryBit) != 0;
}

bool isFileLike(const LmStr& path) {
    return (modeOf(path) & (regularBit | directoryBit)) != 0;
}

bool isPipeLike(const LmStr& path) {
    return (modeOf(path) & pipeBit) != 0;
}

bool isSymLink(const LmStr& path) {
    return S_ISLNK(modeOf(path, false));
}

bool isExecutableFile(const LmStr& path) {
    const mode_t mode = modeOf(path);
    return S_ISREG(mode) && (mode & S_IXUSR) != 0;
}

std::int64_t fileSize(const LmStr& path) {
    struct stat facts = {};
    return stat(path.c_str(), &facts) == 0 ? facts.st_size : 0;
}

} // namespace quillon
