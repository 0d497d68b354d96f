#pragma once

#include "quillon/core/LmStr.h"

#include <fstream>

namespace quillon {

/// The output file stream that all writers use.
class LmOFStream : public std::ofstream {
public:
    LmOFStream() = default;
    explicit LmOFStream(const LmStr& name, std::ios::openmode mode = std::ios::out) { open(name, mode); }
    ~LmOFStream() override = default;

    /// Opens the file for output in any case, whatever `mode` says besides. Sets the fail bit on failure.
    void open(const LmStr& name, std::ios::openmode mode = std::ios::out);
};

} // namespace quillon
