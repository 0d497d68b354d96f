#include "fuzz/Require.h"

#include <cstdlib>
#include <iostream>

namespace quillon::fuzz {

void require(bool holds, std::string_view what, std::string_view details) {
    if (!holds) {
        std::cerr << "Does not hold: " << what << ".\n" << details << std::endl;
        std::abort();
    }
}

} // namespace quillon::fuzz
