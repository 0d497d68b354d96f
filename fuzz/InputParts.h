#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon::fuzz {

/// Stands between the files of one input, on a line of its own.
inline constexpr std::string_view partSeparator = "%%%%\n";

/// The files of one input, each ended by a newline: at a mapping's last line, reading waits for one.
std::vector<std::string> partsOf(std::string_view input, std::size_t count);

/// The text with a newline at its end.
std::string lineEnded(std::string_view text);

} // namespace quillon::fuzz
