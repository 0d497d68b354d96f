// The fuzz targets over their seeds, and over every input that was ever found to break something.

#include "fuzz/FuzzTargets.h"

#include "fuzz/Representable.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/RandomLimits.h"
#include "tests/support/RandomModel.h"
#include "tests/support/RandomProblemDef.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <utility>

namespace quillon::fuzz {
namespace {

namespace fs = std::filesystem;

using NamedInputs = std::vector<std::pair<std::string, std::string>>;

const fs::path regressions = fs::path(QUILLON_SOURCE_DIR) / "tests" / "regressions";

NamedInputs regressionsOf(const FuzzTarget& target) {
    NamedInputs inputs;
    const fs::path directory = regressions / target.name;
    if (fs::exists(directory)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
            inputs.emplace_back(entry.path().filename(), support::readBytes(entry.path()));
        }
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

NamedInputs numberedSeedsOf(const FuzzTarget& target) {
    NamedInputs inputs;
    for (const std::string& seed : seedsOf(target)) {
        inputs.emplace_back("seed " + std::to_string(inputs.size() + 1), seed);
    }
    return inputs;
}

/// Runs a target over all inputs in a child process, which tells the one that it ends at.
void expectTargetHolds(const FuzzTarget& target, const NamedInputs& inputs) {
    support::ChildOptions options;
    options.timeLimit = std::chrono::minutes(4);
    const support::ChildResult child = support::runFunction(
        [&] {
            for (const auto& [name, input] : inputs) {
                std::cout << name << std::endl;
                runFuzzTarget(target, input);
            }
        },
        options);
    EXPECT_EQ(child.outcome, "0") << target.name << " over "
                                  << child.out.substr(child.out.rfind('\n', child.out.size() - 2) + 1)
                                  << child.err;
}

class FuzzTargets : public testing::TestWithParam<FuzzTarget> {};

TEST_P(FuzzTargets, HoldOverWhatTheyStartFrom) {
    const NamedInputs seeds = numberedSeedsOf(GetParam());
    EXPECT_FALSE(seeds.empty());
    expectTargetHolds(GetParam(), seeds);
}

TEST_P(FuzzTargets, HoldOverWhatWasFound) {
    expectTargetHolds(GetParam(), regressionsOf(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, FuzzTargets, testing::ValuesIn(fuzzTargets().begin(), fuzzTargets().end()),
                         [](const auto& target) { return std::string(target.param.name); });

TEST(Regressions, StandInTheFolderOfATarget) {
    for (const fs::directory_entry& entry : fs::directory_iterator(regressions)) {
        if (entry.is_directory()) {
            EXPECT_NE(findFuzzTarget(entry.path().filename().string()), nullptr) << entry.path();
        }
    }
}

TEST(FuzzTarget, EveryOneHasADictionaryIfItReadsLines) {
    for (const FuzzTarget& target : fuzzTargets()) {
        const fs::path dictionary =
            fs::path(QUILLON_SOURCE_DIR) / "fuzz" / "dictionaries" / (std::string(target.name) + ".dict");
        EXPECT_EQ(fs::exists(dictionary), target.readsLines) << dictionary;
    }
}

TEST(Representable, IsAllThatIsGenerated) {
    test::forGenerated(2000, [](test::RandomSource& random) {
        LqProblemDefData definition;
        fillRandomly(definition, random, {.isConsistent = random.oneIn(2)});
        EXPECT_TRUE(isRepresentable(definition));
        LqBodyDefData model;
        fillRandomly(model, random, definition, {.isConsistent = random.oneIn(2)});
        EXPECT_TRUE(isRepresentable(model, definition));
        EXPECT_TRUE(isRepresentableInOlderForm(test::RandomLimits(random).older()));
    });
}

} // namespace
} // namespace quillon::fuzz
