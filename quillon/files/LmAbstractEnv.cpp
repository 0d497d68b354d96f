#include "quillon/files/LmAbstractEnv.h"

#include "quillon/core/CString.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace quillon {

namespace {

/// The value, null when the variable is unset.
LmStr valueOrNull(const char* name, LmAbstractEnv& env) {
    char* const copy = env.getEnv(name);
    const LmStr value = copy;
    std::free(copy);
    return value;
}

/// What `getenv` gives, without measuring the name first: paths of data files may hold texts of any length in
/// place of a name, again behind each "$".
const char* environmentValue(const char* name) {
    if (environ == nullptr || *name == '\0') {
        return nullptr;
    }
    for (char** entry = environ; *entry != nullptr; ++entry) {
        std::size_t same = 0;
        while (name[same] != '\0' && name[same] == (*entry)[same]) {
            ++same;
        }
        if (name[same] == '\0' && (*entry)[same] == '=') {
            return *entry + same + 1;
        }
    }
    return nullptr;
}

} // namespace

char* LmSystemEnv::getEnv(const char* name) {
    const char* const value = environmentValue(name);
    return value == nullptr ? nullptr : strDuplicate(value);
}

void LmSystemEnv::setEnv(const char* name, const char* value) {
    setenv(name, value, 1);
}

void LmSystemEnv::unsetEnv(const char* name) {
    unsetenv(name);
}

LmStr envString(const char* name, LmAbstractEnv& env) {
    const LmStr value = valueOrNull(name, env);
    return value.isNull() ? LmStr("") : value;
}

LmStr envString(const char* name) {
    LmSystemEnv env;
    return envString(name, env);
}

LmStr requireEnvString(const char* name, LmAbstractEnv& env) {
    const LmStr value = valueOrNull(name, env);
    if (value.isNull()) {
        std::fprintf(stderr, "Environment variable '%s' not defined.\n", name);
        std::exit(1);
    }
    return value;
}

LmStr requireEnvString(const char* name) {
    LmSystemEnv env;
    return requireEnvString(name, env);
}

bool isEnvSet(const char* name, LmAbstractEnv& env) {
    return !valueOrNull(name, env).isNull();
}

bool isEnvSet(const char* name) {
    return std::getenv(name) != nullptr;
}

} // namespace quillon
