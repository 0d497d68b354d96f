#pragma once

#include "quillon/core/LmStr.h"

#include <fstream>

namespace quillon {

/// The output file stream that all writers use. Writes in the classic locale, whatever that of the process: a
/// data file must read back under any other.
class LmOFStream : public std::ofstream {
public:
    LmOFStream();
    explicit LmOFStream(const LmStr& name, std::ios::openmode mode = std::ios::out); ///< opens the file
    ~LmOFStream() override = default;

    /// Opens the file for output in any case, whatever `mode` says besides. Sets the fail bit on failure.
    void open(const LmStr& name, std::ios::openmode mode = std::ios::out);
};

} // namespace quillon
