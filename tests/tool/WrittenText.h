#pragma once

#include "quillon/tool/ReportText.h"

#include <sstream>
#include <string>

namespace quillon::test {

/// What `write`, called with a `ReportText`, writes to it.
template <class Write>
std::string written(Write write) {
    std::ostringstream stream;
    {
        ReportText out(stream);
        write(out);
    }
    return stream.str();
}

} // namespace quillon::test
