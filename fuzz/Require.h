#pragma once

#include <string_view>

namespace quillon::fuzz {

/// Ends the process with what was to hold on standard error, and details, unless `holds`.
void require(bool holds, std::string_view what, std::string_view details = {});

} // namespace quillon::fuzz
