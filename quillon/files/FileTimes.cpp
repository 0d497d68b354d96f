#include "quillon/files/FileTimes.h"

#include "quillon/files/CompressedNames.h"
#include "quillon/files/FileAccess.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace quillon {

std::int64_t fileModifiedTime(const LmStr& path, bool orCompressed) {
    const LmStr name = orCompressed ? findCompressedVariant(path) : path;
    struct stat facts = {};
    return opensForReading(name) && stat(name.c_str(), &facts) == 0 ? facts.st_mtime : 0;
}

bool touchFile(const LmStr& path) {
    struct timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_nsec = UTIME_NOW;
    return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
}

void LmFileStamp::stamp() {
    time = fileModifiedTime(path);
}

bool LmFileStamp::changedSinceStamp() const {
    return !path.view().empty() && fileModifiedTime(path) != time;
}

} // namespace quillon
