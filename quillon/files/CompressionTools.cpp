#include "quillon/files/CompressionTools.h"

#include "quillon/files/Directories.h"
#include "quillon/files/FileOperations.h"
#include "quillon/files/ProgramSearch.h"
#include "quillon/files/ShellResult.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

namespace {

const CompressionKind* findKind(const LmStr& key, LmStatus& status) {
    for (const CompressionKind& kind : compressionKinds) {
        if (key == kind.key) {
            return &kind;
        }
    }
    status.pushErrorf("Unknown compression extension '%s'.", key.c_str());
    return nullptr;
}

/// The line with the names in the places of its two "%s". Names are not quoted: a blank in one breaks the
/// line.
LmStr fillLine(std::string_view line, const LmStr& first, const LmStr& second) {
    const std::size_t firstPlace = line.find("%s");
    const std::size_t secondPlace = line.find("%s", firstPlace + 2);
    LmStr filled(line.substr(0, firstPlace));
    filled += first;
    filled.append(line.substr(firstPlace + 2, secondPlace - firstPlace - 2));
    filled += second;
    filled.append(line.substr(secondPlace + 2));
    return filled;
}

bool runInShell(const LmStr& commandLine, LmStatus& status) {
    if (shellCouldBeRun(std::system(commandLine.c_str()))) {
        return true;
    }
    status.pushError(std::strerror(errno));
    // Deliberately the same words for both directions: users and scripts know them.
    status.pushError("Unable to decompress file.");
    return false;
}

} // namespace

bool startDecompression(const LmStr& key, const LmStr& file, const LmStr& pipe, LmStatus& status) {
    const CompressionKind* const kind = findKind(key, status);
    if (kind == nullptr) {
        return false;
    }
    if (!findOnPathEnv(kind->decompress.program)) {
        status.pushErrorf(
            "Cannot find command '%s' to uncompress\n'%s'.\nThis command needs to be in your path.",
            kind->decompress.program, file.c_str());
        return false;
    }
    return runInShell(fillLine(kind->decompress.line, file, pipe), status);
}

bool startCompression(const LmStr& key, const LmStr& pipe, const LmStr& file, LmStatus& status) {
    const CompressionKind* const kind = findKind(key, status);
    if (kind == nullptr) {
        return false;
    }
    if (!findOnPathEnv(kind->compress.program)) {
        status.pushErrorf(
            "Cannot find command '%s' to compress\n'%s'.\nThis command needs to be in your path.",
            kind->compress.program, file.c_str());
        return false;
    }
    return runInShell(fillLine(kind->compress.line, pipe, file), status);
}

std::int32_t nextPipeNumber() {
    static std::atomic<std::int32_t> counter = 0;
    return counter++;
}

void createPipe(const char* streamKind, std::int32_t number, LmStr& pipeName, LmStatus& status) {
    LmStr name;
    name.format("%s/%s%d.%d", tempDir().c_str(), streamKind, number, getpid());
    if (mkfifo(name.c_str(), S_IRUSR | S_IWUSR) != 0) {
        status.pushError(std::strerror(errno));
        status.pushErrorf("Unable to create named pipe \"%s\".", name.c_str());
        return;
    }
    pipeName = name;
}

void removePipe(LmStr& pipeName) {
    if (pipeName != "") {
        removeFile(pipeName);
        pipeName = "";
    }
}

} // namespace quillon
