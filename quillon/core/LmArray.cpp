#include "quillon/core/LmArray.h"

#include <cstdlib>
#include <iostream>
#include <limits>

namespace quillon {

namespace {

[[noreturn, gnu::cold]] void refuseElements(std::int64_t count, std::size_t elementSize) {
    // The size is the unsigned number that the allocator was asked for, also for a negative count.
    const std::size_t size = static_cast<std::size_t>(count) * elementSize;
    std::cerr << "\n"
              << "Unable to allocate memory!\n"
              << "Attempted to allocate " << count << " elements, total size: " << size << ".\n"
              << "\n";
    std::cerr.flush();
    std::abort();
}

bool isPossibleCount(std::int64_t count) {
    return count >= 0 && count <= std::numeric_limits<int>::max();
}

} // namespace

void* reallocateElements(void* block, std::int64_t count, std::size_t elementSize) {
    if (count == 0) {
        std::free(block);
        return nullptr;
    }
    void* const moved =
        isPossibleCount(count) ? std::realloc(block, static_cast<std::size_t>(count) * elementSize) : nullptr;
    if (moved == nullptr) {
        refuseElements(count, elementSize);
    }
    return moved;
}

void* allocateZeroedElements(std::int64_t count, std::size_t elementSize) {
    if (count == 0) {
        return nullptr;
    }
    void* const block =
        isPossibleCount(count) ? std::calloc(static_cast<std::size_t>(count), elementSize) : nullptr;
    if (block == nullptr) {
        refuseElements(count, elementSize);
    }
    return block;
}

} // namespace quillon
