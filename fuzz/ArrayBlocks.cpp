#include "fuzz/ArrayBlocks.h"

#include "quillon/core/LmArray.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <sys/mman.h>

namespace quillon {

namespace {

// Larger blocks of zeros come from the system: an address sanitizer would mark every byte of them.
constexpr std::size_t largestMarked = std::size_t{1} << 20;

/// The blocks that come from the system, with their sizes.
std::map<void*, std::size_t>& systemBlocks() {
    static std::map<void*, std::size_t> blocks;
    return blocks;
}

std::size_t sizeOf(std::int64_t count, std::size_t elementSize) {
    if (count < 0 || count > std::numeric_limits<int>::max()) {
        throw fuzz::RefusedCount();
    }
    return static_cast<std::size_t>(count) * elementSize;
}

void* givenBlock(void* block) {
    if (block == nullptr) {
        throw fuzz::RefusedCount();
    }
    return block;
}

void freeSystemBlock(std::map<void*, std::size_t>::iterator entry) {
    munmap(entry->first, entry->second);
    systemBlocks().erase(entry);
}

} // namespace

void* reallocateElements(void* block, std::int64_t count, std::size_t elementSize) {
    const auto entry = systemBlocks().find(block);
    const bool isSystemBlock = entry != systemBlocks().end();
    if (count == 0) {
        if (isSystemBlock) {
            freeSystemBlock(entry);
        } else {
            std::free(block);
        }
        return nullptr;
    }
    const std::size_t size = sizeOf(count, elementSize);
    if (!isSystemBlock) {
        return givenBlock(std::realloc(block, size));
    }
    void* const moved = givenBlock(std::malloc(size));
    std::memcpy(moved, block, std::min(size, entry->second));
    freeSystemBlock(entry);
    return moved;
}

void* allocateZeroedElements(std::int64_t count, std::size_t elementSize) {
    if (count == 0) {
        return nullptr;
    }
    const std::size_t size = sizeOf(count, elementSize);
    if (size <= largestMarked) {
        return givenBlock(std::calloc(size, 1));
    }
    void* const block =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (block == MAP_FAILED) {
        throw fuzz::RefusedCount();
    }
    systemBlocks().emplace(block, size);
    return block;
}

} // namespace quillon
