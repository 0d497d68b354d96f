#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/files/LmAbstractEnv.h"

namespace quillon {

/// Where the programs of the system find their files: the application base directory, the data directory (the
/// current workspace) with a sub-directory for each kind of file, and a few others.
///
/// Everything comes from environment variables, with fallbacks under the user's home. The data and plug-in
/// directories are captured at construction, the others on first need. Every directory that is returned ends
/// in '/'. A process has one layout, `dirLayout()`; others exist for tests. Used from one thread.
class LmDirLayout {
public:
    /// A layout over `environment`, which must outlive it.
    explicit LmDirLayout(LmAbstractEnv& environment);
    LmDirLayout(const LmDirLayout&) = delete;
    LmDirLayout& operator=(const LmDirLayout&) = delete;

    LmStr dataDirPrimary;       ///< DRENK_DATA_DIR at construction
    LmStr dataDirSecondary;     ///< KYM_DATA_DIR at construction
    LmStr defaultDataDir = "";  ///< filled on first need
    LmStr baseDirCache = "";    ///< filled on first need
    LmStr pluginDirCache;       ///< DRENK_PLUGINS at construction
    LmAbstractEnv* env;         ///< not owned
    bool tarvisMode = false;    ///< running inside the host application, whose variables start with RQ
    LmStr fallbackBaseDir = ""; ///< filled on first need

    /// Turns `tarvisMode` on, and makes "Tarvis" the product name of the process.
    void enableTarvisMode();

    // --- Names of variables ----------------------------------------------------------------------

    /// The variable that names the base directory: KYM_DIR goes before DRENK_DIR when both have a value. The
    /// reverse of the order for the data directory; the programs that print these names depend on both.
    const char* baseDirVariable() const;
    /// The variable that names the data directory: KYM_DATA_DIR only when DRENK_DATA_DIR is unset.
    const char* dataDirVariable() const;
    const char* pluginsVariable() const;     ///< the variable that names the plug-in directory
    const char* materialLibVariable() const; ///< the variable that names the material library

    // --- Base directory --------------------------------------------------------------------------

    /// The user's home directory, "/" without HOME.
    LmStr homeDir() const;
    /// What the environment says about the base directory, or "Documents/drenk" under `homeDir`. The one
    /// operation here that adds no '/' at the end.
    LmStr baseDirFromEnv();
    /// The base directory. Should there be none, says so on standard error and ends the process with 1.
    LmStr baseDir();
    void setBaseDir(const LmStr& path); ///< with one '/' at its end
    /// Whether a variable for the base directory is set, to an empty value also.
    bool hasBaseDirVariable() const;
    /// Whether there is a base directory, after the cache has been filled.
    bool hasBaseDir();
    /// Takes the base directory from the first variable that is set. When none is, and no base directory is
    /// known yet, says so on standard error and ends the process with 1.
    void requireBaseDir();
    LmStr binDir();                       ///< programs, below the base directory
    LmStr tclLibDir();                    ///< script libraries, below the base directory
    LmStr pluginDir();                    ///< DRENK_PLUGINS, or lib/plugins below the base directory
    void setPluginDir(const LmStr& path); ///< with one '/' at its end

    // --- Data directory --------------------------------------------------------------------------

    /// The active data directory. When there is none, "workspace/default" under the base directory becomes
    /// it, and the environment is told, so that programs started later see the same directory.
    LmStr dataDir();
    void setDataDir(const LmStr& path); ///< with one '/' at its end, in place of the active one
    /// Empties the active data directory; the secondary one then becomes active if it has a value.
    void clearDataDir();
    bool hasDataDir() const; ///< whether there is one without the fallback

    // Sub-directories of the data directory, by kind of file.

    LmStr animDir() { return dataSubDir("anim"); }
    LmStr workspaceConfigDir() { return dataSubDir(".workspace"); }
    LmStr captureDir() { return dataSubDir("capture"); }
    LmStr probSpecDir() { return dataSubDir("probspec"); }
    LmStr subjectDir() { return dataSubDir("subject"); }
    LmStr calibDir() { return dataSubDir("calib"); }
    LmStr modelDir() { return dataSubDir("model"); }
    LmStr dofDir() { return dataSubDir("dof"); }
    LmStr scalingDir() { return dataSubDir("scaling"); }
    LmStr htrDir() { return dataSubDir("htr"); }
    LmStr bvhDir() { return dataSubDir("bvh"); }
    LmStr motionDir() { return dataSubDir("motion"); }
    LmStr viewpointDir() { return dataSubDir("viewpoint"); }
    LmStr flipbookDir() { return dataSubDir("flipbook"); }
    LmStr audioDir() { return dataSubDir("audio"); }
    LmStr cameraDir() { return dataSubDir("camera"); }
    LmStr thresholdsDir() { return dataSubDir("thresholds"); }
    LmStr masksDir() { return dataSubDir("masks"); }
    LmStr charmapDir() { return dataSubDir("charmap"); }
    LmStr sliderProjectDir() { return dataSubDir("sliderproject"); }
    LmStr cspDir() { return dataSubDir("csp"); }
    LmStr ffdDir() { return dataSubDir("ffd"); }
    LmStr cdfDir() { return dataSubDir("cdf"); }
    LmStr markerDir() { return dataSubDir("marker"); }

    /// The file with the directories visited last.
    LmStr dirHistoryFile();

    /// The variable's value, or the sub-directory `word` of the data directory when it has none.
    LmStr dirFromVariable(const char* variable, const char* word);
    LmStr volumeDir() { return dirFromVariable("D_VOLUME_DIR", "volume"); }  ///< D_VOLUME_DIR, or "volume"
    LmStr configDir() { return dirFromVariable("D_CONFIG_DIR", "default"); } ///< D_CONFIG_DIR, or "default"

private:
    LmStr dataSubDir(const char* word);
    LmStr& activeDataDir();
    void fillBaseDirCache();
};

/// The layout of the process over its environment, as that was when the process started.
LmDirLayout& dirLayout();

/// The product's name, "Undefined" until it is set. One for the process.
const LmStr& productName();
void setProductName(const LmStr& name); ///< for the whole process

/// A second name, for host programs: nothing here uses it. One for the process.
const LmStr& extraName();
void setExtraName(const LmStr& name); ///< for the whole process

/// Sets both variables of the tracking tool's working directory in `env`, to the path without one '/' at its
/// end.
void setLvfollowDir(const LmStr& path, LmAbstractEnv& env);
/// Sets both to the value that one of them has already, the DRENK one first, or to "lvfollow" under
/// `tempDir`.
void ensureLvfollowDir(LmAbstractEnv& env);

} // namespace quillon
