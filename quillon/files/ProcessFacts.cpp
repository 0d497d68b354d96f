#include "quillon/files/ProcessFacts.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <unistd.h>

namespace quillon {

namespace {

constexpr const char* bootIdFile = "/proc/sys/kernel/random/boot_id";
constexpr std::size_t longestHostName = 80;

} // namespace

int readBootId(char* buffer, int size) {
    if (size < 1) {
        return 0;
    }
    buffer[0] = '\0';
    std::FILE* const file = size < 3 ? nullptr : std::fopen(bootIdFile, "re");
    if (file == nullptr) {
        return 0;
    }
    const bool hasLine = std::fgets(buffer, size - 1, file) != nullptr;
    std::fclose(file);
    if (!hasLine) {
        buffer[0] = '\0';
        return 0;
    }
    const std::size_t length = std::strcspn(buffer, "\n");
    buffer[length] = '\0';
    return static_cast<int>(length);
}

bool processAlive(int pid) {
    return kill(pid, 0) == 0;
}

LmStr hostName() {
    char buffer[longestHostName + 1] = {};
    // A longer name is cut, and then need not be terminated.
    if (gethostname(buffer, longestHostName) != 0 && errno != ENAMETOOLONG) {
        return "";
    }
    return buffer;
}

long clockTicksPerSecond() {
    return sysconf(_SC_CLK_TCK);
}

int cpuCount() {
    return static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
}

void sleepTicks(long n) {
    if (n < 1) {
        return;
    }
    const long ticks = clockTicksPerSecond();
    constexpr long nanosecondsPerSecond = 1000000000;
    timespec rest = {};
    rest.tv_sec = n / ticks;
    rest.tv_nsec = (n % ticks) * (nanosecondsPerSecond / ticks);
    while (nanosleep(&rest, &rest) == -1 && errno == EINTR) {
    }
}

} // namespace quillon
