#include "quillon/files/FilesBeingRead.h"

#include "quillon/files/CompressedNames.h"

#include <sys/stat.h>

#include <set>

namespace quillon {

namespace {

using FileIdentity = std::pair<dev_t, ino_t>;

/// The files that are being read, outermost to innermost include; one for the process, which has one thread.
std::set<FileIdentity>& filesBeingRead() {
    static std::set<FileIdentity> files;
    return files;
}

/// Device and inode, which links and differently written paths share; false when there is no such file.
bool findIdentity(const LmStr& path, FileIdentity& identity) {
    struct stat facts {};
    if (stat(findCompressedVariant(path).c_str(), &facts) != 0) {
        return false;
    }
    identity = {facts.st_dev, facts.st_ino};
    return true;
}

} // namespace

FileBeingRead::FileBeingRead(const LmStr& path)
    : file_(), isMarked_(findIdentity(path, file_) && filesBeingRead().insert(file_).second) {}

FileBeingRead::~FileBeingRead() {
    if (isMarked_) {
        filesBeingRead().erase(file_);
    }
}

bool refuseOwnInclude(const LmStr& path, LmStatus& status) {
    FileIdentity identity;
    if (!findIdentity(path, identity) || !filesBeingRead().contains(identity)) {
        return false;
    }
    status.pushErrorf("\"%s\" includes itself.", path.c_str());
    return true;
}

} // namespace quillon
