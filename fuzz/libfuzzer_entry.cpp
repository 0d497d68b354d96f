// Makes a program of libFuzzer out of the target QUILLON_FUZZ_TARGET.

#include "fuzz/FuzzTargets.h"
#include "fuzz/LineMutations.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

const quillon::fuzz::FuzzTarget& target() {
    static const quillon::fuzz::FuzzTarget& found = *quillon::fuzz::findFuzzTarget(QUILLON_FUZZ_TARGET);
    return found;
}

std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace

extern "C" {

std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quillon::fuzz::runFuzzTarget(target(), textOf(data, size));
    return 0;
}

/// Plain bytes every other time; else lines and words.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    quillon::test::RandomSource random(seed);
    if (!target().readsLines || random.oneIn(2)) {
        return LLVMFuzzerMutate(data, size, room);
    }
    const std::string text = quillon::fuzz::mutatedLines(textOf(data, size), target(), random);
    const std::size_t kept = std::min(text.size(), room);
    std::memcpy(data, text.data(), kept);
    return kept;
}
}
