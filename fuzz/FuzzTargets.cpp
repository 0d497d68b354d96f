#include "fuzz/FuzzTargets.h"

#include "fuzz/ArrayBlocks.h"
#include "fuzz/MemoryUse.h"
#include "fuzz/Require.h"
#include "quillon/core/LmStatus.h"

#include <algorithm>
#include <ctime>

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

/// Processor time of this process so far, in microseconds: what else runs does not count.
long long processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000LL + time.tv_nsec / 1000;
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
    constexpr long long microsecondsPerByte = 50;
    constexpr long long microsecondsForAll = 2'000'000; // a thousand replacements of a name take some of it
    const std::size_t allocatedBefore = allocatedBytes();
    const long long timeBefore = processorTime();
    const PeakOfResidentMemory peak;
    const bool whole = runWhole(target, input);
    const long long taken = processorTime() - timeBefore;
    require(taken <= microsecondsPerByte * static_cast<long long>(input.size()) + microsecondsForAll,
            "the time grows with the input", std::to_string(taken));
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
