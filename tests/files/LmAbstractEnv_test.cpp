#include "quillon/files/LmAbstractEnv.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/MapEnv.h"
#include "tests/support/EnvironmentValue.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

using test::MapEnv;

TEST(LmSystemEnv, IsTheEnvironmentOfTheProcess) {
    const auto result = support::runFunction([] {
        LmSystemEnv env;
        env.setEnv("QUILLON_A", "one");
        std::cout << std::getenv("QUILLON_A") << ' ';
        env.setEnv("QUILLON_A", "two");
        char* const value = env.getEnv("QUILLON_A");
        env.unsetEnv("QUILLON_A");
        std::cout << value << ' ' << (std::getenv("QUILLON_A") == nullptr)
                  << (env.getEnv("QUILLON_A") == nullptr);
        std::free(value);
    });
    EXPECT_EQ(result.out, "one two 11");
}

TEST(LmSystemEnv, GivesWhatTheSystemsOwnLookUpGives) {
    const test::EnvironmentValue value("QUILLON_TEST", "a=b");
    const test::EnvironmentValue longer("QUILLON_TEST_LONGER", "");
    LmSystemEnv env;
    for (const char* const name : {"QUILLON_TEST", "QUILLON_TEST_LONGER", "QUILLON_TES", "QUILLON_TEST_", "",
                                   "QUILLON_TEST=", "QUILLON_TEST=a", "quillon_test", "PATH", "HOME"}) {
        const char* const expected = std::getenv(name);
        char* const found = env.getEnv(name);
        EXPECT_STREQ(found, expected) << name;
        std::free(found);
    }
}

TEST(EnvString, IsEmptyForAnUnsetVariable) {
    MapEnv env = {{"A", "one"}, {"EMPTY", ""}};
    EXPECT_EQ(envString("A", env), "one");
    EXPECT_EQ(envString("EMPTY", env), "");
    EXPECT_EQ(envString("NONE", env), "");
}

TEST(IsEnvSet, IsTrueOfAnEmptyValue) {
    MapEnv env = {{"A", "one"}, {"EMPTY", ""}};
    EXPECT_TRUE(isEnvSet("A", env));
    EXPECT_TRUE(isEnvSet("EMPTY", env));
    EXPECT_FALSE(isEnvSet("NONE", env));
}

TEST(RequireEnvString, EndsTheProcessForAnUnsetVariable) {
    MapEnv env = {{"A", "one"}, {"EMPTY", ""}};
    EXPECT_EQ(requireEnvString("A", env), "one");
    EXPECT_EQ(requireEnvString("EMPTY", env), "");
    const auto result = support::runFunction([&] { requireEnvString("NONE", env); });
    EXPECT_EQ(result.outcome, "1");
    EXPECT_EQ(result.err, "Environment variable 'NONE' not defined.\n");
}

TEST(EnvFunctions, WorkOnTheProcessByDefault) {
    const auto result = support::runFunction([] {
        setenv("QUILLON_A", "one", 1);
        unsetenv("QUILLON_B");
        std::cout << envString("QUILLON_A") << requireEnvString("QUILLON_A") << isEnvSet("QUILLON_A")
                  << isEnvSet("QUILLON_B") << envString("QUILLON_B") << '\n';
        requireEnvString("QUILLON_B");
    });
    EXPECT_EQ(result.out, "oneone10\n");
    EXPECT_EQ(result.outcome, "1");
    EXPECT_EQ(result.err, "Environment variable 'QUILLON_B' not defined.\n");
}

} // namespace
} // namespace quillon
