#include "quillon/files/FileOperations.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

namespace {

constexpr std::size_t copyBlockSize = 65536;

/// `read` and `write` begun anew when a signal came in between.
ssize_t readBlock(int file, char* block) {
    ssize_t count = -1;
    do {
        count = read(file, block, copyBlockSize);
    } while (count == -1 && errno == EINTR);
    return count;
}

bool writeBlock(int file, const char* block, std::size_t size) {
    while (size > 0) {
        const ssize_t count = write(file, block, size);
        if (count == -1 && errno != EINTR) {
            return false;
        }
        if (count > 0) {
            block += count;
            size -= static_cast<std::size_t>(count);
        }
    }
    return true;
}

bool copyContent(int from, const LmStr& source, int to, const LmStr& target, LmStatus& status) {
    std::array<char, copyBlockSize> block;
    bool complete = true;
    for (;;) {
        const ssize_t count = readBlock(from, block.data());
        if (count == 0) {
            return complete;
        }
        if (count == -1) {
            status.pushError("Error reading from " + source + ".");
            return false;
        }
        if (!writeBlock(to, block.data(), static_cast<std::size_t>(count))) {
            status.pushError("Error writing to " + target + ".");
            complete = false;
        }
    }
}

} // namespace

bool copyFile(const LmStr& source, const LmStr& target, LmStatus& status) {
    const int from = open(source.c_str(), O_RDONLY | O_CLOEXEC);
    if (from == -1) {
        status.pushError("Couldn't open " + source);
        return false;
    }
    const int to = open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (to == -1) {
        status.pushError("Couldn't create " + target);
        close(from);
        return false;
    }
    const bool complete = copyContent(from, source, to, target, status);
    close(from);
    close(to);
    return complete;
}

bool removeFile(const LmStr& path) {
    return unlink(path.c_str()) == 0;
}

bool makeSymLink(const LmStr& from, const LmStr& to) {
    return symlink(from.c_str(), to.c_str()) == 0;
}

bool removeFilePermission(const LmStr& path, unsigned bits) {
    struct stat facts = {};
    if (stat(path.c_str(), &facts) != 0) {
        std::fprintf(stderr, "Unable to stat file %s\n", path.c_str());
        return false;
    }
    if (chmod(path.c_str(), facts.st_mode & 07777U & ~bits) != 0) {
        std::fputs("Unable to remove permission\n", stderr);
        return false;
    }
    return true;
}

bool removeOwnerRead(const LmStr& path) {
    return removeFilePermission(path, S_IRUSR);
}

bool removeOwnerWrite(const LmStr& path) {
    return removeFilePermission(path, S_IWUSR);
}

} // namespace quillon
