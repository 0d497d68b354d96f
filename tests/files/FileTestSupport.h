#pragma once

#include "quillon/core/LmStatus.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <array>
#include <filesystem>
#include <functional>
#include <grp.h>
#include <iostream>
#include <string>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillon::test {

/// Why a test needs the superuser: only he can ask as another user than the one who made the files.
inline constexpr const char* ownedByAsker = "the files would belong to the user who asks";

/// `support::runFunction` by a user who may not do everything.
inline support::ChildResult runAsNobody(const std::function<void()>& body) {
    return support::runFunction([&] {
        constexpr unsigned nobody = 65534;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
            std::cout << "cannot become another user\n";
            return;
        }
        body();
    });
}

/// From now on the process, which must not be the superuser's, can start no other.
inline void allowNoProcess() {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_NPROC, &none);
}

/// One line for each entry, newest first: the form in which a child hands its status over.
inline void printChain(const LmStatus& status = currentStatus()) {
    for (const StatusLine& line : chainOf(status)) {
        std::cout << line << '\n';
    }
}

/// Whether there is anything at the path, a dangling link or a pipe included.
inline bool isThere(const std::string& path) {
    struct stat facts = {};
    return lstat(path.c_str(), &facts) == 0;
}

/// The bits of the file's mode that tell who may do what; 0 when there is no such file.
inline unsigned permissionsOf(const std::string& path) {
    struct stat facts = {};
    return stat(path.c_str(), &facts) == 0 ? facts.st_mode & 07777U : 0;
}

/// Sees when a file is opened.
class OpeningWatch {
public:
    explicit OpeningWatch(const std::string& path) : events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(events, path.c_str(), IN_OPEN);
    }
    OpeningWatch(const OpeningWatch&) = delete;
    OpeningWatch& operator=(const OpeningWatch&) = delete;
    ~OpeningWatch() { close(events); }

    /// Whether the file has been opened since the last time that this was asked.
    bool hasSeenOne() const {
        std::array<char, 1024> event{};
        return read(events, event.data(), event.size()) > 0;
    }

private:
    int events;
};

/// The names of the pipes that a process has in the directory for them.
inline std::vector<std::string> pipesOf(int pid = getpid()) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator("/var/tmp")) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("comp") && name.ends_with("." + std::to_string(pid))) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace quillon::test
