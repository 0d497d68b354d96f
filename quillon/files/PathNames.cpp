#include "quillon/files/PathNames.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace quillon {

namespace {

constexpr std::string_view rootDir = "/";
constexpr std::size_t longestWorkingDir = 4096;
constexpr const char* noWorkingDirText = "Could not get absolute path of current working directory.\n";

std::string_view withoutTrailingSeparator(std::string_view path) {
    if (path.ends_with('/') || path.ends_with('\\')) {
        path.remove_suffix(1);
    }
    return path;
}

std::size_t lastSeparator(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash != std::string_view::npos ? slash : path.rfind('\\');
}

std::string_view dirNameOf(std::string_view path) {
    const std::string_view name = withoutTrailingSeparator(path);
    const std::size_t separator = lastSeparator(name);
    if (separator == std::string_view::npos) {
        return "";
    }
    return separator == 0 ? rootDir : name.substr(0, separator);
}

std::string_view baseNameOf(std::string_view path) {
    const std::string_view name = withoutTrailingSeparator(path);
    const std::size_t separator = lastSeparator(name);
    return separator == std::string_view::npos ? path : name.substr(separator + 1);
}

void assignIfWanted(LmStr* out, std::string_view text) {
    if (out != nullptr) {
        *out = LmStr(text);
    }
}

LmStr workingDir() {
    char buffer[longestWorkingDir + 1];
    // The system may answer with a text that is no path, for a directory outside the root of the process.
    if (getcwd(buffer, sizeof buffer) == nullptr || buffer[0] != '/') {
        return "";
    }
    return buffer;
}

void appendComponent(std::string& directory, std::string_view component) {
    if (component == ".") {
        return;
    }
    if (component == "..") {
        directory = std::string(dirNameOf(directory));
        return;
    }
    if (directory != rootDir) {
        directory += '/';
    }
    directory += component;
}

LmStr resolveFromRoot(std::string_view path) {
    std::vector<std::string_view> componentsFromTheEnd;
    for (; path != rootDir; path = dirNameOf(path)) {
        componentsFromTheEnd.push_back(baseNameOf(path));
    }
    std::string resolved(rootDir);
    for (auto component = componentsFromTheEnd.rbegin(); component != componentsFromTheEnd.rend();
         ++component) {
        appendComponent(resolved, *component);
    }
    return LmStr(std::string_view(resolved));
}

/// `start` is where a relative path begins, itself given from the root.
LmStr resolve(const LmStr& path, const LmStr& start) {
    return resolveFromRoot((isAbsolutePath(path) ? path : start + "/" + path).view());
}

LmStr baseFromRoot(const LmStr& base, const LmStr& workingDirectory) {
    return base == "" ? workingDirectory : joinPath(workingDirectory, base);
}

} // namespace

LmStr dirName(const LmStr& path) {
    return LmStr(dirNameOf(path.view()));
}

LmStr baseName(const LmStr& path) {
    return LmStr(baseNameOf(path.view()));
}

void splitPath(const LmStr& path, LmStr* dirOut, LmStr* stemOut, LmStr* extensionOut) {
    // An output may be the path itself.
    const LmStr whole = path;
    std::string_view rest = whole.view();
    const std::string_view directory = dirNameOf(rest);
    assignIfWanted(dirOut, directory);
    if (rest.starts_with(directory)) {
        rest.remove_prefix(directory.size());
    }
    if (rest.starts_with('/')) {
        rest.remove_prefix(1);
    }
    const std::size_t dot = rest.rfind('.');
    assignIfWanted(stemOut, rest.substr(0, dot));
    assignIfWanted(extensionOut, dot == std::string_view::npos ? "" : rest.substr(dot + 1));
}

LmStr joinPath(const LmStr& dir, const LmStr& name) {
    return dir.view().ends_with('/') ? dir + name : dir + "/" + name;
}

LmStr joinPathExt(const LmStr& dir, const LmStr& stem, const LmStr& extension) {
    return joinPath(dir, stem + "." + extension);
}

bool isAbsolutePath(const LmStr& path) {
    return path.view().starts_with('/');
}

LmStr currentDir() {
    const LmStr directory = workingDir();
    if (directory == "") {
        std::fputs(noWorkingDirText, stderr);
        std::exit(1);
    }
    return directory;
}

LmStr currentDir(LmStatus& status) {
    const LmStr directory = workingDir();
    if (directory == "") {
        status.pushError(noWorkingDirText);
    }
    return directory;
}

LmStr absolutePath(const LmStr& path) {
    return absolutePath(path, LmStr(""));
}

LmStr absolutePath(const LmStr& path, const LmStr& base) {
    return resolve(path, isAbsolutePath(base) ? base : baseFromRoot(base, currentDir()));
}

LmStr absolutePath(const LmStr& path, LmStatus& status) {
    return absolutePath(path, "", status);
}

LmStr absolutePath(const LmStr& path, const LmStr& base, LmStatus& status) {
    LmStr start = base;
    if (!isAbsolutePath(base)) {
        const LmStr workingDirectory = currentDir(status);
        if (workingDirectory == "") {
            status.pushErrorf("Unable to determine absolute path for \"%s\".", path.c_str());
            return "";
        }
        start = baseFromRoot(base, workingDirectory);
    }
    const LmStr resolved = resolve(path, start);
    return status.errorStands() ? LmStr("") : resolved;
}

} // namespace quillon
