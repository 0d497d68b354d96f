// Apart from the other facts about the process: the password database may be served by libraries that are
// loaded at run time, which a program linked statically must not depend on unless it asks these questions.

#include "quillon/files/ProcessFacts.h"

#include <cstring>
#include <pwd.h>
#include <unistd.h>

namespace quillon {

bool loginName(char* buffer, int size) {
    const passwd* const user = getpwuid(getuid());
    if (user == nullptr || user->pw_name == nullptr || size < 1) {
        return false;
    }
    const std::size_t length = std::strlen(user->pw_name);
    if (length >= static_cast<std::size_t>(size)) {
        return false;
    }
    std::memcpy(buffer, user->pw_name, length + 1);
    return true;
}

bool effectiveUserInfo(LmStr* nameOut, LmStr* homeOut) {
    const passwd* const user = getpwuid(geteuid());
    if (user == nullptr) {
        return false;
    }
    if (nameOut != nullptr) {
        *nameOut = user->pw_name;
    }
    if (homeOut != nullptr) {
        *homeOut = user->pw_dir;
    }
    return true;
}

} // namespace quillon
