#include "fuzz/MemoryUse.h"

#include "tests/support/AddressCheck.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak)); // NOLINT

/// Asked for by the address sanitizer: blocks that are refused are told, and what is freed is not kept, so
/// that resident memory means something.
extern "C" const char* __asan_default_options() { // NOLINT: its name is that of the sanitizer
    return "allocator_may_return_null=1:quarantine_size_mb=1";
}

namespace quillon::fuzz {

namespace {

/// Makes the system take the present resident memory for the peak.
bool forgetPeak() {
    static const int file = open("/proc/self/clear_refs", O_WRONLY | O_CLOEXEC);
    return file >= 0 && write(file, "5", 1) == 1;
}

/// In bytes.
std::size_t peak() {
    static const int file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
    char text[4096];
    const ssize_t length = file < 0 ? -1 : pread(file, text, sizeof text - 1, 0);
    if (length < 0) {
        return 0;
    }
    text[length] = '\0';
    static constexpr const char key[] = "VmHWM:";
    const char* const line = std::strstr(text, key);
    return line == nullptr ? 0 : std::strtoul(line + sizeof key - 1, nullptr, 10) * 1024;
}

} // namespace

std::size_t allocatedBytes() {
    return support::checksAddresses ? __sanitizer_get_current_allocated_bytes() : 0;
}

PeakOfResidentMemory::PeakOfResidentMemory() {
    if (forgetPeak()) {
        before = peak();
    }
}

std::size_t PeakOfResidentMemory::growth() const {
    // The system's count lags behind by some pages, so a peak may seem to lie below what was there before.
    const std::size_t now = peak();
    return before == 0 || now < before ? 0 : now - before;
}

} // namespace quillon::fuzz
