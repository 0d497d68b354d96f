#include "quillon/files/LmDirLayout.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/MapEnv.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

using test::MapEnv;
using Variables = std::initializer_list<std::pair<const std::string, std::string>>;

TEST(LmDirLayout, FallsBackOnTheHomeDirectory) {
    MapEnv env = {{"HOME", "/h"}};
    LmDirLayout layout(env);
    EXPECT_EQ(layout.baseDir(), "/h/Documents/drenk/");
    EXPECT_EQ(layout.dataDir(), "/h/Documents/drenk/workspace/default/");
    EXPECT_EQ(layout.fallbackBaseDir, "/h/Documents/drenk");
    EXPECT_EQ(layout.defaultDataDir, "/h/Documents/drenk/workspace/default");
}

TEST(LmDirLayout, TellsTheEnvironmentOfTheDefaultDataDirectory) {
    MapEnv env = {{"HOME", "/h"}};
    LmDirLayout layout(env);
    layout.dataDir();
    const std::string directory = "/h/Documents/drenk/workspace/default";
    const std::map<std::string, std::string> expected = {{"HOME", "/h"},
                                                         {"DRENK_DATA_DIR", directory},
                                                         {"KYM_DATA_DIR", directory},
                                                         {"RQ_DATA_DIR", directory}};
    EXPECT_EQ(env.values, expected);
    EXPECT_EQ(layout.dataDirPrimary, "");
    EXPECT_EQ(layout.dataDirSecondary, "/h/Documents/drenk/workspace/default/");
}

TEST(LmDirLayout, TellsTheProcessOfTheDefaultDataDirectory) {
    const auto result = support::runFunction([] {
        for (const char* const name : {"DRENK_DIR", "KYM_DIR", "RQ_DIR", "DRENK_DATA_DIR", "KYM_DATA_DIR"}) {
            unsetenv(name);
        }
        setenv("HOME", "/h", 1);
        LmSystemEnv env;
        LmDirLayout layout(env);
        std::cout << layout.dataDir() << ' ' << std::getenv("DRENK_DATA_DIR");
    });
    EXPECT_EQ(result.out, "/h/Documents/drenk/workspace/default/ /h/Documents/drenk/workspace/default");
}

TEST(LmDirLayout, OfTheProcessHoldsWhatTheProcessStartedWith) {
    const char* const atStart = std::getenv("DRENK_DATA_DIR");
    const std::string expected = atStart == nullptr ? "" : atStart;
    const auto result = support::runFunction([] {
        setenv("DRENK_DATA_DIR", "/later", 1);
        std::cout << dirLayout().dataDirPrimary;
    });
    EXPECT_EQ(result.out, expected);
    EXPECT_EQ(&dirLayout(), &dirLayout());
}

struct BaseCase {
    Variables variables;
    bool tarvisMode;
    const char* baseDir;
    const char* variable;
};

TEST(LmDirLayout, TakesTheBaseDirectoryFromTheFirstVariableWithAValue) {
    const BaseCase cases[] = {
        {{{"DRENK_DIR", "/d"}, {"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, false, "/d/", "KYM_DIR"},
        {{{"DRENK_DIR", "/d"}, {"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, true, "/d/", "RQ_DIR"},
        {{{"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, false, "/k/", "KYM_DIR"},
        {{{"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, true, "/r/", "RQ_DIR"},
        {{{"DRENK_DIR", "/d"}}, false, "/d/", "DRENK_DIR"},
        {{{"DRENK_DIR", "/d/"}}, false, "/d/", "DRENK_DIR"},
        {{{"DRENK_DIR", ""}, {"KYM_DIR", "/k"}}, false, "/k/", "KYM_DIR"},
        {{{"KYM_DIR", ""}}, false, "/Documents/drenk/", "DRENK_DIR"},
        {{{"RQ_DIR", "/r"}}, false, "/Documents/drenk/", "DRENK_DIR"},
        {{{"RQ_DIR", ""}}, true, "/Documents/drenk/", "RQ_DIR"},
    };
    for (const BaseCase& each : cases) {
        MapEnv env = each.variables;
        LmDirLayout layout(env);
        layout.tarvisMode = each.tarvisMode;
        EXPECT_EQ(layout.baseDir(), each.baseDir);
        EXPECT_STREQ(layout.baseDirVariable(), each.variable) << each.baseDir;
    }
}

struct DataVariableCase {
    Variables variables;
    bool tarvisMode;
    const char* expected;
};

TEST(LmDirLayout, NamesTheKymDataDirectoryOnlyWhenNoOtherIsSet) {
    const DataVariableCase cases[] = {
        {{}, false, "DRENK_DATA_DIR"},
        {{{"DRENK_DATA_DIR", "/d"}, {"KYM_DATA_DIR", "/k"}}, false, "DRENK_DATA_DIR"},
        {{{"KYM_DATA_DIR", "/k"}}, false, "KYM_DATA_DIR"},
        {{{"KYM_DATA_DIR", "/k"}}, true, "RQ_DATA_DIR"},
        {{{"DRENK_DATA_DIR", ""}, {"KYM_DATA_DIR", "/k"}}, false, "DRENK_DATA_DIR"},
        {{{"KYM_DATA_DIR", ""}}, false, "KYM_DATA_DIR"},
    };
    for (const DataVariableCase& each : cases) {
        MapEnv env = each.variables;
        LmDirLayout layout(env);
        layout.tarvisMode = each.tarvisMode;
        EXPECT_STREQ(layout.dataDirVariable(), each.expected);
    }
}

TEST(LmDirLayout, NamesTheOtherVariablesByTheHost) {
    MapEnv env = {};
    LmDirLayout layout(env);
    EXPECT_STREQ(layout.pluginsVariable(), "DRENK_PLUGINS");
    EXPECT_STREQ(layout.materialLibVariable(), "WF_MTL_LIB");
    layout.tarvisMode = true;
    EXPECT_STREQ(layout.pluginsVariable(), "DRENK_PLUGINS");
    EXPECT_STREQ(layout.materialLibVariable(), "RQ_MTL_LIB");
}

struct DataCase {
    Variables variables;
    const char* expected;
};

TEST(LmDirLayout, TakesTheDataDirectoryFromTheFirstVariableWithAValue) {
    const DataCase cases[] = {
        {{{"DRENK_DATA_DIR", "/d"}, {"KYM_DATA_DIR", "/k"}}, "/d/"},
        {{{"DRENK_DATA_DIR", ""}, {"KYM_DATA_DIR", "/k"}}, "/k/"},
        {{{"KYM_DATA_DIR", "/k/"}}, "/k/"},
        {{{"RQ_DATA_DIR", "/r"}, {"DRENK_DIR", "/b"}}, "/b/workspace/default/"},
    };
    for (const DataCase& each : cases) {
        MapEnv env = each.variables;
        LmDirLayout layout(env);
        EXPECT_EQ(layout.hasDataDir(), each.expected != std::string("/b/workspace/default/"));
        EXPECT_EQ(layout.dataDir(), each.expected);
        EXPECT_TRUE(layout.hasDataDir());
    }
}

TEST(LmDirLayout, DoesNotReadTheDataDirectoryAgain) {
    MapEnv env = {{"DRENK_DATA_DIR", "/d"}, {"DRENK_PLUGINS", "/p"}};
    LmDirLayout layout(env);
    env.values = {{"DRENK_DATA_DIR", "/later"}, {"DRENK_PLUGINS", "/later"}};
    EXPECT_EQ(layout.dataDir(), "/d/");
    EXPECT_EQ(layout.pluginDir(), "/p/");
}

TEST(LmDirLayout, SetsThePrimaryDataDirectoryIfItHasAValueElseTheSecondary) {
    MapEnv env = {{"DRENK_DATA_DIR", "/d"}, {"KYM_DATA_DIR", "/k"}};
    LmDirLayout layout(env);
    layout.setDataDir("/n");
    EXPECT_EQ(layout.dataDirPrimary, "/n/");
    EXPECT_EQ(layout.dataDirSecondary, "/k");
    layout.clearDataDir();
    EXPECT_EQ(layout.dataDir(), "/k/");
    layout.setDataDir("/m/");
    EXPECT_EQ(layout.dataDirPrimary, "");
    EXPECT_EQ(layout.dataDirSecondary, "/m/");
    layout.clearDataDir();
    EXPECT_FALSE(layout.hasDataDir());
}

struct SubDirCase {
    LmStr (LmDirLayout::*operation)();
    const char* expected;
};

TEST(LmDirLayout, HasASubDirectoryForEachKindOfFile) {
    using L = LmDirLayout;
    const SubDirCase cases[] = {
        {&L::animDir, "/d/anim/"},
        {&L::workspaceConfigDir, "/d/.workspace/"},
        {&L::captureDir, "/d/capture/"},
        {&L::probSpecDir, "/d/probspec/"},
        {&L::subjectDir, "/d/subject/"},
        {&L::calibDir, "/d/calib/"},
        {&L::modelDir, "/d/model/"},
        {&L::dofDir, "/d/dof/"},
        {&L::scalingDir, "/d/scaling/"},
        {&L::htrDir, "/d/htr/"},
        {&L::bvhDir, "/d/bvh/"},
        {&L::motionDir, "/d/motion/"},
        {&L::viewpointDir, "/d/viewpoint/"},
        {&L::flipbookDir, "/d/flipbook/"},
        {&L::audioDir, "/d/audio/"},
        {&L::cameraDir, "/d/camera/"},
        {&L::thresholdsDir, "/d/thresholds/"},
        {&L::masksDir, "/d/masks/"},
        {&L::charmapDir, "/d/charmap/"},
        {&L::sliderProjectDir, "/d/sliderproject/"},
        {&L::cspDir, "/d/csp/"},
        {&L::ffdDir, "/d/ffd/"},
        {&L::cdfDir, "/d/cdf/"},
        {&L::markerDir, "/d/marker/"},
        {&L::dirHistoryFile, "/d/.workspace/dir_history"},
        {&L::volumeDir, "/d/volume/"},
        {&L::configDir, "/d/default/"},
        {&L::binDir, "/b/bin/"},
        {&L::tclLibDir, "/b/tcllib/"},
        {&L::pluginDir, "/b/lib/plugins/"},
    };
    MapEnv env = {{"DRENK_DATA_DIR", "/d"}, {"DRENK_DIR", "/b"}};
    LmDirLayout layout(env);
    for (const SubDirCase& each : cases) {
        EXPECT_EQ((layout.*each.operation)(), each.expected);
    }
}

TEST(LmDirLayout, VolumeAndConfigurationMayLieElsewhere) {
    MapEnv env = {{"DRENK_DATA_DIR", "/d"}, {"D_VOLUME_DIR", "/v"}, {"D_CONFIG_DIR", "/c/"}};
    LmDirLayout layout(env);
    EXPECT_EQ(layout.volumeDir(), "/v/");
    EXPECT_EQ(layout.configDir(), "/c/");
    EXPECT_EQ(layout.dirFromVariable("D_OTHER_DIR", "other"), "/d/other/");
}

TEST(LmDirLayout, AnEmptyOverrideCountsAsUnset) {
    MapEnv env = {{"DRENK_DATA_DIR", "/d"}, {"D_CONFIG_DIR", ""}};
    LmDirLayout layout(env);
    EXPECT_EQ(layout.configDir(), "/d/default/");
}

TEST(LmDirLayout, KeepsThePluginDirectory) {
    MapEnv env = {{"DRENK_DIR", "/b"}};
    LmDirLayout layout(env);
    env.values["DRENK_PLUGINS"] = "/p";
    EXPECT_EQ(layout.pluginDir(), "/p/");
    env.values["DRENK_PLUGINS"] = "/q";
    EXPECT_EQ(layout.pluginDir(), "/p/");
    EXPECT_EQ(layout.pluginDirCache, "/p/");
    layout.setPluginDir("/r");
    EXPECT_EQ(layout.pluginDir(), "/r/");
    layout.setPluginDir("/s/");
    EXPECT_EQ(layout.pluginDir(), "/s/");
}

TEST(LmDirLayout, HomeIsTheRootWithoutAVariable) {
    MapEnv env = {};
    const LmDirLayout layout(env);
    EXPECT_EQ(layout.homeDir(), "/");
    env.values["HOME"] = "/h";
    EXPECT_EQ(layout.homeDir(), "/h/");
    env.values["HOME"] = "/h/";
    EXPECT_EQ(layout.homeDir(), "/h/");
}

TEST(LmDirLayout, KeepsTheBaseDirectory) {
    MapEnv env = {{"DRENK_DIR", "/d"}};
    LmDirLayout layout(env);
    EXPECT_EQ(layout.baseDir(), "/d/");
    env.values["DRENK_DIR"] = "/later";
    EXPECT_EQ(layout.baseDir(), "/d/");
    layout.setBaseDir("/s");
    EXPECT_EQ(layout.baseDir(), "/s/");
    layout.setBaseDir("/t/");
    EXPECT_EQ(layout.baseDir(), "/t/");
}

TEST(LmDirLayout, ABaseDirectoryVariableCountsWhenItIsSet) {
    struct {
        Variables variables;
        bool plain;
        bool tarvis;
    } const cases[] = {
        {{}, false, false},
        {{{"DRENK_DIR", ""}}, true, true},
        {{{"KYM_DIR", "/k"}}, true, true},
        {{{"RQ_DIR", "/r"}}, false, true},
    };
    for (const auto& each : cases) {
        MapEnv env = each.variables;
        LmDirLayout layout(env);
        EXPECT_EQ(layout.hasBaseDirVariable(), each.plain);
        layout.tarvisMode = true;
        EXPECT_EQ(layout.hasBaseDirVariable(), each.tarvis);
    }
}

TEST(LmDirLayout, HasABaseDirectoryThroughTheFallback) {
    MapEnv env = {};
    LmDirLayout layout(env);
    EXPECT_TRUE(layout.hasBaseDir());
    EXPECT_EQ(layout.baseDirCache, "/Documents/drenk/");
}

TEST(LmDirLayout, RequiringABaseDirectoryTakesTheFirstVariableThatIsSet) {
    struct {
        Variables variables;
        bool tarvisMode;
        const char* expected;
    } const cases[] = {
        {{{"DRENK_DIR", "/d"}, {"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, false, "/d/"},
        {{{"DRENK_DIR", "/d"}, {"KYM_DIR", "/k"}, {"RQ_DIR", "/r"}}, true, "/r/"},
        {{{"KYM_DIR", "/k/"}}, true, "/k/"},
    };
    for (const auto& each : cases) {
        MapEnv env = each.variables;
        LmDirLayout layout(env);
        layout.tarvisMode = each.tarvisMode;
        layout.requireBaseDir();
        EXPECT_EQ(layout.baseDirCache, each.expected);
    }
}

TEST(LmDirLayout, RequiringABaseDirectoryIsContentWithOneThatIsKnown) {
    MapEnv env = {};
    LmDirLayout layout(env);
    layout.setBaseDir("/s");
    layout.requireBaseDir();
    EXPECT_EQ(layout.baseDir(), "/s/");
}

TEST(LmDirLayout, RequiringABaseDirectoryEndsTheProcessWithoutOne) {
    const auto result = support::runFunction([] {
        MapEnv env = {{"RQ_DIR", "/r"}};
        LmDirLayout layout(env);
        layout.requireBaseDir();
    });
    EXPECT_EQ(result.outcome, "1");
    EXPECT_EQ(result.err, "Environment variable 'DRENK_DIR' not defined.\n");
}

TEST(ProductName, IsTarvisInTheHostApplication) {
    const auto result = support::runFunction([] {
        MapEnv env = {};
        LmDirLayout layout(env);
        std::cout << productName() << ' ' << layout.tarvisMode << ' ';
        setProductName("Other");
        std::cout << productName() << ' ';
        layout.enableTarvisMode();
        std::cout << productName() << ' ' << layout.tarvisMode << " [" << extraName() << "] ";
        setExtraName("extra");
        std::cout << extraName();
    });
    EXPECT_EQ(result.out, "Undefined 0 Other Tarvis 1 [] extra");
}

TEST(LvfollowDir, IsSetUnderBothNames) {
    MapEnv env = {};
    setLvfollowDir("/l/", env);
    const std::map<std::string, std::string> once = {{"DRENK_LVFOLLOW_DIR", "/l"},
                                                     {"KYM_LVFOLLOW_DIR", "/l"}};
    EXPECT_EQ(env.values, once);
    setLvfollowDir("/m//", env);
    EXPECT_EQ(env.values["DRENK_LVFOLLOW_DIR"], "/m/");
    EXPECT_EQ(env.values["KYM_LVFOLLOW_DIR"], "/m/");
}

TEST(LvfollowDir, IsEnsuredFromWhatThereIs) {
    struct {
        Variables variables;
        const char* expected;
    } const cases[] = {
        {{}, "/var/tmp/lvfollow"},
        {{{"DRENK_LVFOLLOW_DIR", "/d"}, {"KYM_LVFOLLOW_DIR", "/k"}}, "/d"},
        {{{"DRENK_LVFOLLOW_DIR", ""}, {"KYM_LVFOLLOW_DIR", "/k/"}}, "/k/"},
    };
    for (const auto& each : cases) {
        MapEnv env = each.variables;
        ensureLvfollowDir(env);
        EXPECT_EQ(env.values["DRENK_LVFOLLOW_DIR"], each.expected);
        EXPECT_EQ(env.values["KYM_LVFOLLOW_DIR"], each.expected);
    }
}

} // namespace
} // namespace quillon
