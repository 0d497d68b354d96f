#include "quillon/files/Collate.h"

#include "tests/files/FileTestSupport.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace quillon {
namespace {

/// Runs `fixLocale` twice in a process with this LANG, and hands over LANG afterwards.
support::ChildResult langAfterFixing(const char* lang) {
    return support::runFunction([&] {
        setenv("LANG", lang, 1);
        fixLocale();
        fixLocale();
        std::cout << std::getenv("LANG") << ' ' << std::setlocale(LC_ALL, nullptr);
    });
}

TEST(FixLocale, SetsTheLocaleOfThePortableStandard) {
    // The system calls the locale "POSIX" by its other name.
    for (const char* const lang :
         {"de_DE.UTF-8", "en_US", "x", "a_locale_name_of_more_than_31_characters.UTF-8"}) {
        const auto result = langAfterFixing(lang);
        EXPECT_EQ(result.out, "C C") << lang;
        EXPECT_EQ(result.err, "") << lang;
    }
}

TEST(FixLocale, LeavesALangAloneThatNamesNoLocale) {
    EXPECT_EQ(langAfterFixing("").out, " C");
    EXPECT_EQ(langAfterFixing(".UTF-8").out, ".UTF-8 C");
}

TEST(FixLocale, TellsOfAMissingLangOnce) {
    const auto result = support::runFunction([] {
        unsetenv("LANG");
        fixLocale();
        fixLocale();
        std::cout << collate("a", "b") << (std::getenv("LANG") == nullptr);
    });
    EXPECT_EQ(result.err, "LANG environment variable is not defined!\n");
    EXPECT_EQ(result.out, "-11");
}

TEST(Collate, SortsByBytesOnceTheLocaleIsFixed) {
    const auto result = support::runFunction([] {
        setenv("LANG", "en_US.UTF-8", 1);
        std::cout << (collate("B", "a") < 0) << (collate("a", "B") > 0) << (collate("a", "a") == 0)
                  << (collate("a", "ab") < 0) << (collate("", "a") < 0) << ' ' << std::getenv("LANG");
    });
    EXPECT_EQ(result.out, "11111 C");
}

} // namespace
} // namespace quillon
