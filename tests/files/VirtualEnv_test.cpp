#include "quillon/files/VirtualEnv.h"

#include "quillon/files/LmDirLayout.h"
#include "quillon/files/VariableExpansion.h"
#include "tests/files/MapEnv.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using test::MapEnv;

TEST(VirtualEnv, KnowsTheDirectoriesThatNoVariableNames) {
    MapEnv env = {{"HOME", "/h"}};
    LmDirLayout layout(env);
    VirtualEnv answers(layout);
    EXPECT_EQ(envString("DRENK_DIR", answers), "/h/Documents/drenk");
    EXPECT_EQ(envString("DRENK_DATA_DIR", answers), "/h/Documents/drenk/workspace/default");
}

TEST(VirtualEnv, AnswersFromTheLayoutWithoutASlashAtTheEnd) {
    MapEnv env = {{"DRENK_DIR", "/b//"}, {"DRENK_DATA_DIR", "/d/"}};
    LmDirLayout layout(env);
    VirtualEnv answers(layout);
    EXPECT_EQ(envString("DRENK_DIR", answers), "/b");
    EXPECT_EQ(envString("DRENK_DATA_DIR", answers), "/d");
    layout.setDataDir("/e");
    EXPECT_EQ(envString("DRENK_DATA_DIR", answers), "/e");
    EXPECT_EQ(expandedVariables("$DRENK_DATA_DIR/tcl:", answers), "/e/tcl:");
}

TEST(VirtualEnv, AsksTheLayoutsEnvironmentForAllElse) {
    MapEnv env = {{"KYM_DIR", "/k"}, {"DRENK_TCL", ""}};
    LmDirLayout layout(env);
    VirtualEnv answers(layout);
    EXPECT_EQ(envString("KYM_DIR", answers), "/k");
    EXPECT_TRUE(isEnvSet("DRENK_TCL", answers));
    EXPECT_FALSE(isEnvSet("KYM_DATA_DIR", answers));
}

TEST(VirtualEnv, CannotBeChanged) {
    MapEnv env = {{"A", "one"}, {"DRENK_DIR", "/b"}};
    const std::map<std::string, std::string> before = env.values;
    LmDirLayout layout(env);
    VirtualEnv answers(layout);
    answers.setEnv("A", "two");
    answers.setEnv("DRENK_DIR", "/c");
    answers.unsetEnv("A");
    answers.unsetEnv("DRENK_DIR");
    EXPECT_EQ(env.values, before);
    EXPECT_EQ(envString("DRENK_DIR", answers), "/b");
}

} // namespace
} // namespace quillon
