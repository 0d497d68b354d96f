#include "quillon/files/Collate.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quillon {

namespace {

bool setLocaleFromLang() {
    const char* const lang = std::getenv("LANG");
    if (lang == nullptr) {
        std::fputs("LANG environment variable is not defined!\n", stderr);
        return false;
    }
    const bool namesNoLocale = lang[0] == '\0' || lang[0] == '.';
    if (namesNoLocale) {
        return false;
    }
    const char* const chosen = std::setlocale(LC_ALL, "POSIX");
    if (chosen == nullptr) {
        return false;
    }
    setenv("LANG", chosen, 1);
    return true;
}

} // namespace

void fixLocale() {
    [[maybe_unused]] static const bool fixed = setLocaleFromLang();
}

int collate(const LmStr& text, const LmStr& other) {
    fixLocale();
    return std::strcoll(text.c_str(), other.c_str());
}

} // namespace quillon
