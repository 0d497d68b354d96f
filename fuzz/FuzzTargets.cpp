#include "fuzz/FuzzTargets.h"

#include "fuzz/ArrayBlocks.h"
#include "fuzz/MemoryUse.h"
#include "fuzz/Require.h"
#include "quillon/core/LmStatus.h"

#include <algorithm>

namespace quillon::fuzz {

namespace {

constexpr FuzzTarget targets[] = {
    {"problem_spec", checkProblemSpec},
    {"problem_def", checkProblemDef, makeProblemDef},
    {"model", checkModel, makeModel},
    {"limits", checkLimits, makeLimits},
    {"scale_def", checkScaleDef, makeScaleDef},
    {"measured_data", checkMeasuredData},
    {"family", checkFamily, makeFamily},
    {"tags", checkTags},
    {"strings", checkStrings, nullptr, false},
    {"word_wrap", checkWordWrap, nullptr, false},
    {"variables", checkVariables},
    {"colours", checkColours},
};

/// False when the check came to an end of the process that is told for its input.
bool runWhole(const FuzzTarget& target, std::string_view input) {
    currentStatus().clear();
    bool whole = true;
    try {
        target.check(input);
    } catch (const RefusedCount&) {
        whole = false;
    }
    currentStatus().clear();
    return whole;
}

} // namespace

std::span<const FuzzTarget> fuzzTargets() {
    return targets;
}

const FuzzTarget* findFuzzTarget(std::string_view name) {
    const auto* const found = std::find_if(std::begin(targets), std::end(targets),
                                           [name](const FuzzTarget& target) { return target.name == name; });
    return found == std::end(targets) ? nullptr : found;
}

void runFuzzTarget(const FuzzTarget& target, std::string_view input) {
    constexpr std::size_t bytesPerByte = 64;
    constexpr std::size_t bytesForAll = std::size_t{16} << 20;
    const std::size_t allocatedBefore = allocatedBytes();
    const PeakOfResidentMemory peak;
    const bool whole = runWhole(target, input);
    const std::size_t grown = peak.growth();
    require(grown <= bytesPerByte * input.size() + bytesForAll, "the memory grows with the input",
            std::to_string(grown));
    const std::size_t allocatedBehind = allocatedBytes();
    if (whole && allocatedBehind != allocatedBefore) {
        // What is made once and stays was made in the first run.
        runWhole(target, input);
        require(allocatedBytes() == allocatedBehind, "what was allocated is freed");
    }
}

} // namespace quillon::fuzz
