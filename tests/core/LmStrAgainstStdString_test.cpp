#include "tests/core/StrProgram.h"

#include <gtest/gtest.h>

#include <random>

namespace quillon {
namespace {

constexpr unsigned seed = 20240611;
constexpr int programs = 60;
constexpr int stepsPerProgram = 700;

TEST(LmStrAgainstStdString, RandomProgramsLeaveTheSameTexts) {
    for (unsigned number = 0; number < programs; ++number) {
        SCOPED_TRACE(testing::Message() << "seed " << seed + number);
        std::mt19937 random(seed + number);
        test::StrProgram program([&random](std::size_t limit) { return random() % limit; });
        for (int step = 0; step < stepsPerProgram; ++step) {
            program.step();
            program.compareAll();
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

} // namespace
} // namespace quillon
