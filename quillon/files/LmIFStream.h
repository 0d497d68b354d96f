#pragma once

#include "quillon/core/LmStr.h"

#include <fstream>

namespace quillon {

/// The input file stream of the formats that are never compressed. Reads in the classic locale, whatever that
/// of the process. See `LmCompIFStream` for the others.
class LmIFStream : public std::ifstream {
public:
    /// Opens the file. Sets the fail bit on failure.
    explicit LmIFStream(const LmStr& name);
};

} // namespace quillon
