#include "quillon/files/LmDirLayout.h"

#include "quillon/files/Directories.h"
#include "quillon/files/PathNames.h"

#include <cstdio>
#include <cstdlib>

namespace quillon {

namespace {

constexpr const char* noBaseDirText = "\nApplication base directory not set.\n\n";

// What a process starts with is what the layout goes by, also when its own environment is changed before the
// layout is first asked.
[[maybe_unused]] const LmDirLayout& layoutFromTheStart = dirLayout();

bool hasText(const LmStr& text) {
    return !text.view().empty();
}

LmStr withSlash(const LmStr& directory) {
    return directory.view().ends_with('/') ? directory : directory + "/";
}

LmStr withoutOneSlash(const LmStr& directory) {
    return directory.view().ends_with('/') ? directory.dropRight(1) : directory;
}

LmStr& productNameOfProcess() {
    static LmStr name = "Undefined";
    return name;
}

LmStr& extraNameOfProcess() {
    static LmStr name = "";
    return name;
}

void setBothLvfollowVariables(const LmStr& path, LmAbstractEnv& env) {
    env.setEnv("DRENK_LVFOLLOW_DIR", path.c_str());
    env.setEnv("KYM_LVFOLLOW_DIR", path.c_str());
}

} // namespace

LmDirLayout::LmDirLayout(LmAbstractEnv& environment)
    : dataDirPrimary(envString("DRENK_DATA_DIR", environment)),
      dataDirSecondary(envString("KYM_DATA_DIR", environment)),
      pluginDirCache(envString("DRENK_PLUGINS", environment)), env(&environment) {}

void LmDirLayout::enableTarvisMode() {
    tarvisMode = true;
    setProductName("Tarvis");
}

const char* LmDirLayout::baseDirVariable() const {
    if (tarvisMode) {
        return "RQ_DIR";
    }
    return hasText(envString("KYM_DIR", *env)) ? "KYM_DIR" : "DRENK_DIR";
}

const char* LmDirLayout::dataDirVariable() const {
    if (tarvisMode) {
        return "RQ_DATA_DIR";
    }
    const bool onlyKymIsSet = !isEnvSet("DRENK_DATA_DIR", *env) && isEnvSet("KYM_DATA_DIR", *env);
    return onlyKymIsSet ? "KYM_DATA_DIR" : "DRENK_DATA_DIR";
}

const char* LmDirLayout::pluginsVariable() const {
    return "DRENK_PLUGINS";
}

const char* LmDirLayout::materialLibVariable() const {
    return tarvisMode ? "RQ_MTL_LIB" : "WF_MTL_LIB";
}

LmStr LmDirLayout::homeDir() const {
    return withSlash(envString("HOME", *env));
}

LmStr LmDirLayout::baseDirFromEnv() {
    const char* const variables[] = {"DRENK_DIR", tarvisMode ? "RQ_DIR" : nullptr, "KYM_DIR"};
    for (const char* const variable : variables) {
        const LmStr value = variable == nullptr ? LmStr("") : envString(variable, *env);
        if (hasText(value)) {
            return value;
        }
    }
    if (!hasText(fallbackBaseDir)) {
        fallbackBaseDir = joinPath(joinPath(homeDir(), "Documents"), "drenk");
    }
    return fallbackBaseDir;
}

void LmDirLayout::fillBaseDirCache() {
    if (hasText(baseDirCache)) {
        return;
    }
    const LmStr directory = baseDirFromEnv();
    if (hasText(directory)) {
        baseDirCache = withSlash(directory);
    }
}

LmStr LmDirLayout::baseDir() {
    fillBaseDirCache();
    if (!hasText(baseDirCache)) {
        std::fputs(noBaseDirText, stderr);
        std::exit(1);
    }
    return baseDirCache;
}

void LmDirLayout::setBaseDir(const LmStr& path) {
    baseDirCache = withSlash(path);
}

bool LmDirLayout::hasBaseDirVariable() const {
    return (tarvisMode && isEnvSet("RQ_DIR", *env)) || isEnvSet("DRENK_DIR", *env) ||
           isEnvSet("KYM_DIR", *env);
}

bool LmDirLayout::hasBaseDir() {
    fillBaseDirCache();
    return hasText(baseDirCache) || hasBaseDirVariable();
}

void LmDirLayout::requireBaseDir() {
    const char* const variables[] = {tarvisMode ? "RQ_DIR" : nullptr, "DRENK_DIR", "KYM_DIR"};
    for (const char* const variable : variables) {
        if (variable != nullptr && isEnvSet(variable, *env)) {
            baseDirCache = withSlash(envString(variable, *env));
            return;
        }
    }
    if (!hasText(baseDirCache)) {
        std::fputs("Environment variable 'DRENK_DIR' not defined.\n", stderr);
        std::exit(1);
    }
}

LmStr LmDirLayout::binDir() {
    return baseDir() + "bin/";
}

LmStr LmDirLayout::tclLibDir() {
    return withSlash(joinPath(baseDir(), "tcllib"));
}

LmStr LmDirLayout::pluginDir() {
    if (!hasText(pluginDirCache)) {
        const LmStr value = envString("DRENK_PLUGINS", *env);
        pluginDirCache = hasText(value) ? value : joinPath(joinPath(baseDir(), "lib"), "plugins");
    }
    pluginDirCache = withSlash(pluginDirCache);
    return pluginDirCache;
}

void LmDirLayout::setPluginDir(const LmStr& path) {
    pluginDirCache = withSlash(path);
}

LmStr& LmDirLayout::activeDataDir() {
    return hasText(dataDirPrimary) ? dataDirPrimary : dataDirSecondary;
}

LmStr LmDirLayout::dataDir() {
    if (!hasText(activeDataDir())) {
        if (!hasText(defaultDataDir)) {
            defaultDataDir = joinPath(joinPath(baseDir(), "workspace"), "default");
        }
        activeDataDir() = defaultDataDir;
        for (const char* const variable : {"KYM_DATA_DIR", "DRENK_DATA_DIR", "RQ_DATA_DIR"}) {
            env->setEnv(variable, defaultDataDir.c_str());
        }
    }
    LmStr& active = activeDataDir();
    active = withSlash(active);
    return active;
}

void LmDirLayout::setDataDir(const LmStr& path) {
    activeDataDir() = withSlash(path);
}

void LmDirLayout::clearDataDir() {
    activeDataDir() = "";
}

bool LmDirLayout::hasDataDir() const {
    return hasText(dataDirPrimary) || hasText(dataDirSecondary);
}

LmStr LmDirLayout::dataSubDir(const char* word) {
    return dataDir() + word + "/";
}

LmStr LmDirLayout::dirHistoryFile() {
    return workspaceConfigDir() + "dir_history";
}

LmStr LmDirLayout::dirFromVariable(const char* variable, const char* word) {
    const LmStr value = envString(variable, *env);
    return withSlash(hasText(value) ? value : dataDir() + word);
}

LmDirLayout& dirLayout() {
    static LmSystemEnv environment;
    static LmDirLayout layout(environment);
    return layout;
}

const LmStr& productName() {
    return productNameOfProcess();
}

void setProductName(const LmStr& name) {
    productNameOfProcess() = name;
}

const LmStr& extraName() {
    return extraNameOfProcess();
}

void setExtraName(const LmStr& name) {
    extraNameOfProcess() = name;
}

void setLvfollowDir(const LmStr& path, LmAbstractEnv& env) {
    setBothLvfollowVariables(withoutOneSlash(path), env);
}

void ensureLvfollowDir(LmAbstractEnv& env) {
    for (const char* const variable : {"DRENK_LVFOLLOW_DIR", "KYM_LVFOLLOW_DIR"}) {
        const LmStr value = envString(variable, env);
        if (hasText(value)) {
            setBothLvfollowVariables(value, env);
            return;
        }
    }
    setBothLvfollowVariables(joinPath(tempDir(), "lvfollow"), env);
}

} // namespace quillon
