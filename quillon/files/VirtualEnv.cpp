#include "quillon/files/VirtualEnv.h"

#include "quillon/files/LmDirLayout.h"

#include <string_view>

namespace quillon {

namespace {

char* copyWithoutTrailingSlashes(LmStr directory) {
    directory = directory.dropRight(directory.trailingSlashCount());
    return directory.duplicate();
}

} // namespace

char* VirtualEnv::getEnv(const char* name) {
    const std::string_view wanted = name;
    if (wanted == "DRENK_DATA_DIR") {
        return copyWithoutTrailingSlashes(layout.dataDir());
    }
    if (wanted == "DRENK_DIR") {
        return copyWithoutTrailingSlashes(layout.baseDir());
    }
    return layout.env->getEnv(name);
}

void VirtualEnv::setEnv(const char*, const char*) {}

void VirtualEnv::unsetEnv(const char*) {}

} // namespace quillon
