#pragma once

namespace quillon {

/// Whether the system's shell could be started, by the result of `std::system` for a line that ends in "&".
/// If not, `errno` tells why. Only for use inside this folder and in tests.
bool shellCouldBeRun(int result);

} // namespace quillon
