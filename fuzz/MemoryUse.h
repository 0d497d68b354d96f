#pragma once

#include <cstddef>

namespace quillon::fuzz {

/// The bytes that are allocated, where an address sanitizer counts them; else always 0.
std::size_t allocatedBytes();

/// How far the resident memory of the process has grown since this object was made, at the most. 0 where the
/// system does not tell.
class PeakOfResidentMemory {
public:
    PeakOfResidentMemory();
    std::size_t growth() const;

private:
    std::size_t before = 0;
};

} // namespace quillon::fuzz
