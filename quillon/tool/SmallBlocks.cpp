// The program's own `operator new` and `operator delete`. Reading a problem makes millions of small records
// that live until the end; the general allocator spends a quarter of a run on them. Here a small block comes
// from a slab of blocks of one size, and goes back to a list of free blocks of that size. Only the program is
// linked with this file, and not when addresses are checked; the library leaves the choice to its host.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace {

constexpr std::size_t granule = 16;
constexpr std::size_t greatestSmallSize = 512;
constexpr std::size_t slabSize = std::size_t{1} << 16;
constexpr std::size_t regionSize = std::size_t{1} << 34;
constexpr std::size_t pageSize = 4096;
/// So much memory has small pages, so that a small problem does not pay for a huge one.
constexpr std::size_t sizeWithSmallPages = std::size_t{1} << 22;
constexpr std::size_t sizeClassCount = greatestSmallSize / granule + 1;

struct FreeBlock {
    FreeBlock* next;
};

/// The blocks of one size, which is the index in `sizeClasses` times the granule.
struct SizeClass {
    FreeBlock* freeBlocks = nullptr;
    char* next = nullptr; ///< what is left of the newest slab
    char* end = nullptr;
};

/// Addresses for all slabs. They cost nothing until they are written to; where a limit refuses them, all
/// blocks come from the general allocator. One thread uses this.
class Region {
public:
    bool holds(const void* block) const {
        return reinterpret_cast<std::uintptr_t>(block) - reinterpret_cast<std::uintptr_t>(begin) < size;
    }

    SizeClass& sizeClassOf(const void* block) {
        return sizeClasses[classOfSlab[static_cast<std::size_t>(static_cast<const char*>(block) - begin) /
                                       slabSize]];
    }

    /// A block from those at hand; null when there is none, as for a size of 0.
    void* takeBlock(std::size_t blockSize) {
        if (blockSize > greatestSmallSize) {
            return nullptr;
        }
        const std::size_t index = indexOf(blockSize);
        SizeClass& sizeClass = sizeClasses[index];
        if (FreeBlock* const block = sizeClass.freeBlocks) {
            sizeClass.freeBlocks = block->next;
            return block;
        }
        const std::size_t roundedSize = index * granule;
        if (static_cast<std::size_t>(sizeClass.end - sizeClass.next) < roundedSize) {
            return nullptr;
        }
        void* const block = sizeClass.next;
        sizeClass.next += roundedSize;
        return block;
    }

    /// Puts a new slab at hand for blocks of a size. False when they are not for slabs or when none is left.
    bool addSlab(std::size_t blockSize) {
        const std::size_t index = indexOf(blockSize);
        if (index == 0 || blockSize > greatestSmallSize || (begin == nullptr && !reserve()) || used == size) {
            return false;
        }
        classOfSlab[used / slabSize] = static_cast<std::uint8_t>(index);
        SizeClass& sizeClass = sizeClasses[index];
        sizeClass.next = begin + used;
        sizeClass.end = sizeClass.next + slabSize;
        used += slabSize;
        return true;
    }

private:
    static std::size_t indexOf(std::size_t blockSize) { return (blockSize + granule - 1) / granule; }

    bool reserve() {
        if (refused) {
            return false;
        }
        void* const addresses = ::mmap(nullptr, regionSize, PROT_READ | PROT_WRITE,
                                       MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        refused = addresses == MAP_FAILED;
        if (!refused) {
            begin = static_cast<char*>(addresses);
            size = regionSize;
            ::madvise(begin + sizeWithSmallPages, regionSize - sizeWithSmallPages, MADV_HUGEPAGE);
        }
        return !refused;
    }

    char* begin = nullptr;
    std::size_t size = 0;
    std::size_t used = 0;
    bool refused = false;
    std::array<SizeClass, sizeClassCount> sizeClasses{};
    std::array<std::uint8_t, regionSize / slabSize> classOfSlab{};
};

constinit Region region;

/// A block of a new slab or from the general allocator. Apart, so that the usual way through `new` is short.
[[gnu::noinline]] void* allocateAnew(std::size_t size) {
    if (region.addSlab(size)) {
        return region.takeBlock(size);
    }
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    if (size >= sizeWithSmallPages) {
        // What lies in it is looked up without order: huge pages spare half of the memory accesses for that.
        const std::uintptr_t rest = reinterpret_cast<std::uintptr_t>(block) % pageSize;
        ::madvise(static_cast<char*>(block) + (pageSize - rest), size - pageSize, MADV_HUGEPAGE);
    }
    return block;
}

} // namespace

void* operator new(std::size_t size) {
    if (void* const block = region.takeBlock(size)) {
        return block;
    }
    return allocateAnew(size);
}

void operator delete(void* block) noexcept {
    if (!region.holds(block)) {
        std::free(block);
        return;
    }
    SizeClass& sizeClass = region.sizeClassOf(block);
    sizeClass.freeBlocks = new (block) FreeBlock{sizeClass.freeBlocks};
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
