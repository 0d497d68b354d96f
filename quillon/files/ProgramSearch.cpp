#include "quillon/files/ProgramSearch.h"

#include "quillon/files/FileAccess.h"
#include "quillon/files/LmAbstractEnv.h"
#include "quillon/files/PathNames.h"

#include <cstdio>
#include <unistd.h>
#include <vector>

namespace quillon {

namespace {

constexpr const char* linkToSelf = "/proc/self/exe";

} // namespace

LmStr findOnPath(const LmStr& name) {
    LmStr rest = envString("PATH");
    for (LmStr dir = rest.popToken(":"); !dir.isNull(); dir = rest.popToken(":")) {
        const LmStr candidate = joinPath(dir, name);
        if (fileExists(candidate)) {
            return candidate;
        }
    }
    return "";
}

bool findOnPathEnv(const LmStr& name, LmStr* fullPathOut) {
    LmStr rest = envString("PATH");
    for (LmStr dir = rest.popToken(":"); !dir.isNull(); dir = rest.popToken(":")) {
        const LmStr candidate = joinPath(dir, name);
        if (fileExists(candidate) && fileExecutable(candidate)) {
            if (fullPathOut != nullptr) {
                *fullPathOut = candidate;
            }
            return true;
        }
    }
    return false;
}

LmStr executablePath() {
    for (std::vector<char> buffer(10);; buffer.resize(2 * buffer.size())) {
        const ssize_t length = readlink(linkToSelf, buffer.data(), buffer.size());
        if (length == -1) {
            std::fprintf(stderr, "Unable to read link %s\n", linkToSelf);
            return "";
        }
        // A name that fills the buffer may have been cut.
        if (static_cast<std::size_t>(length) < buffer.size()) {
            return LmStr(buffer.data(), static_cast<int>(length));
        }
    }
}

} // namespace quillon
