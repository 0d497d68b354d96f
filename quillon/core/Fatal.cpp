#include "quillon/core/Fatal.h"

#include <csignal>
#include <cstdlib>

namespace quillon {

[[gnu::cold, gnu::noinline]] void endByMemoryFault() {
    // A host's or a sanitizer's handler would print or go on; the default action does neither. A host that
    // blocks the signal would leave it pending.
    std::signal(SIGSEGV, SIG_DFL);
    sigset_t faults;
    sigemptyset(&faults);
    sigaddset(&faults, SIGSEGV);
    pthread_sigmask(SIG_UNBLOCK, &faults, nullptr);
    std::raise(SIGSEGV);
    std::abort();
}

} // namespace quillon
