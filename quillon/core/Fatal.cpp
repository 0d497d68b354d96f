#include "quillon/core/Fatal.h"

#include <csignal>
#include <cstdlib>

namespace quillon {

[[gnu::cold, gnu::noinline]] void endByMemoryFault() {
    // A host's or a sanitizer's handler would print or go on; the default action does neither.
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
    std::abort();
}

} // namespace quillon
