#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::test {
class RandomSource;
} // namespace quillon::test

namespace quillon::fuzz {

/// One way into the library. `check` takes any bytes, and ends the process when something does not hold.
struct FuzzTarget {
    std::string_view name; ///< also of its dictionary, its seeds and its regressions
    void (*check)(std::string_view input);
    /// Makes up an input that gets deep; null where plain bytes do.
    std::string (*makeInput)(test::RandomSource& random) = nullptr;
    bool readsLines = true; ///< whether an input is text, which is mutated by lines and words
};

/// All targets.
std::span<const FuzzTarget> fuzzTargets();
/// The target of that name, or null.
const FuzzTarget* findFuzzTarget(std::string_view name);

/// Runs a target, and checks what holds for all of them: what was allocated is freed, the pages touched stay
/// below 64 times the input and 16 MB, the time below 50 us for each byte and two seconds, with all run-time
/// checks built in.
void runFuzzTarget(const FuzzTarget& target, std::string_view input);

// The targets. Those that need several files take them from one input (see `InputParts`).
void checkProblemSpec(std::string_view input);
void checkProblemDef(std::string_view input);
void checkModel(std::string_view input);
void checkLimits(std::string_view input);
void checkScaleDef(std::string_view input);
void checkMeasuredData(std::string_view input);
void checkFamily(std::string_view input);
void checkTags(std::string_view input);
void checkStrings(std::string_view input);
void checkWordWrap(std::string_view input);
void checkVariables(std::string_view input);
void checkColours(std::string_view input);

// What makes inputs up, for the targets of the same names.
std::string makeProblemDef(test::RandomSource& random);
std::string makeModel(test::RandomSource& random);
std::string makeScaleDef(test::RandomSource& random);
std::string makeLimits(test::RandomSource& random);
std::string makeFamily(test::RandomSource& random);

/// Inputs to start from: what the examples and the whole runs of the tests hold for a target, and some that
/// are made up.
std::vector<std::string> seedsOf(const FuzzTarget& target);

} // namespace quillon::fuzz
