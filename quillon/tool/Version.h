#pragma once

namespace quillon {

/// The version of the program and the library; the build reads it from this line.
inline constexpr const char version[] = "0.0.0a";

} // namespace quillon
