#include "quillon/scale/ScaleFloat.h"

#include "quillon/core/LmSStream.h"
#include "tests/scale/ScaleSamples.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

namespace quillon::scaleDef {

/// How googletest shows a value: by its three fields.
static void PrintTo(const ScaleFloat& value, std::ostream* output) {
    *output << "value " << value.value << ", offset " << value.offset << ", m" << value.measuredId;
}

} // namespace quillon::scaleDef

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using test::error;
using test::literal;
using test::measuredData;
using test::notANumber;
using test::offsetForm;
using test::Scale;
using test::scaleForm;
using test::StatusChain;

class ScaleFloatTest : public testing::Test {
protected:
    /// Reads a value from the start of a text and keeps what is left of it.
    Scale::ScaleFloat read(const std::string& text, float infinity = 0) {
        LmISStream input(text.c_str());
        const Scale::ScaleFloat value = Scale::readScaleFloat(input, "temp position x", infinity);
        input.clear();
        rest.assign(std::istreambuf_iterator<char>(input), {});
        return value;
    }

    std::string rest;

private:
    test::CleanStatus cleanStatus;
};

std::string displayForm(const Scale::ScaleFloat& value) {
    std::ostringstream output;
    value.print(output);
    return output.str();
}

std::string fileForm(const Scale::ScaleFloat& value, float infinity) {
    std::ostringstream output;
    Scale::writeScaleFloat(output, value, infinity);
    return output.str();
}

// --- The value itself -------------------------------------------------------------------------------------

TEST_F(ScaleFloatTest, ByDefaultIsTheLiteralZero) {
    const Scale::ScaleFloat value;
    EXPECT_EQ(value.value, 0.0F);
    EXPECT_EQ(value.offset, 0.0F);
    EXPECT_EQ(value.measuredId, 0);
}

TEST_F(ScaleFloatTest, InfiniteLimitsAreTheOutermostFiniteNumbers) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(noLowerLimit), 0xFF7FFFFFU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(noUpperLimit), 0x7F7FFFFFU);
}

TEST_F(ScaleFloatTest, ComparesAllThreeFieldsAndNeverANaN) {
    EXPECT_EQ(literal(2), literal(2));
    EXPECT_EQ(literal(0), literal(-0.0F));
    EXPECT_NE(literal(2), literal(3));
    EXPECT_NE(scaleForm(1, 2), scaleForm(2, 2));
    EXPECT_NE(offsetForm(1, 2), offsetForm(1, 3));
    EXPECT_NE(scaleForm(1, 2), offsetForm(1, 2));
    EXPECT_NE(literal(notANumber), literal(notANumber));
    EXPECT_NE(offsetForm(1, notANumber), offsetForm(1, notANumber));
}

TEST_F(ScaleFloatTest, EvaluatesEachForm) {
    const LqMeasuredData measured = measuredData({7, 8, 10});
    EXPECT_EQ(literal(1.5F).evaluate(measured), 1.5F);
    EXPECT_EQ(scaleForm(3, 2).evaluate(measured), 4.0F);
    EXPECT_EQ(offsetForm(3, 2).evaluate(measured), 12.0F);
    EXPECT_EQ(scaleForm(3, 0).evaluate(measured), 10.0F) << "a factor of 0 is an offset of 0";
    EXPECT_EQ(scaleForm(1, 1).evaluate(measured), 6.0F) << "the first constant is number 1";
}

TEST_F(ScaleFloatTest, EvaluatesInSinglePrecision) {
    // 1 / 3 is 0.3333333433 in single precision; less 1 that is -0.6666666269 (-0.6666666865 is nearest to
    // -2/3).
    EXPECT_EQ(scaleForm(1, 3).evaluate(measuredData({1})), -0.66666662693023681640625F);
    // 2^24 + 1 is no single-precision number.
    EXPECT_EQ(offsetForm(1, 1).evaluate(measuredData({16777216})), 16777216.0F);
}

TEST_F(ScaleFloatTest, SettingChangesWhatTheFormHolds) {
    const LqMeasuredData measured = measuredData({7, 8, 10});
    Scale::ScaleFloat value = literal(1);
    value.setEvaluated(measured, 5);
    EXPECT_EQ(value, literal(5));
    value = scaleForm(3, 7);
    value.setEvaluated(measured, 4);
    EXPECT_EQ(value, scaleForm(3, 2));
    value = offsetForm(3, 7);
    value.setEvaluated(measured, 4);
    EXPECT_EQ(value, offsetForm(3, -6));
    value = scaleForm(3, 2);
    value.setEvaluated(measured, 4);
    EXPECT_EQ(value, scaleForm(3, 2)) << "what it evaluates to already";
}

TEST_F(ScaleFloatTest, EvaluatesToWhatWasSetInAllForms) {
    std::mt19937 random(2601);
    std::uniform_real_distribution<float> constants(0.5F, 200);
    std::uniform_real_distribution<float> numbers(-100, 100);
    // Five roundings, each of half a unit of the last place of numbers up to 200 and of quotients that grow
    // with 1 + x.
    constexpr float tolerance = 1e-4F;
    for (int round = 0; round < 20000; ++round) {
        const LqMeasuredData measured = measuredData({constants(random), constants(random)});
        float x = numbers(random);
        if (std::abs(x + 1.0F) < 0.01F) {
            x = 2; // a factor for -1 would be infinite
        }
        for (Scale::ScaleFloat value : {literal(x - 1), scaleForm(2, 0.5F + numbers(random) * 0.001F),
                                        offsetForm(1, numbers(random)), offsetForm(2, 0)}) {
            value.setEvaluated(measured, x);
            ASSERT_NEAR(value.evaluate(measured), x, tolerance)
                << displayForm(value) << " in round " << round;
        }
    }
}

TEST_F(ScaleFloatTest, SettingWhatItEvaluatesToLeavesTheValue) {
    std::mt19937 random(2602);
    std::uniform_real_distribution<float> constants(1, 100);
    std::uniform_real_distribution<float> numbers(0.5F, 4);
    for (int round = 0; round < 20000; ++round) {
        const LqMeasuredData measured = measuredData({constants(random)});
        for (const Scale::ScaleFloat& before :
             {literal(numbers(random)), scaleForm(1, numbers(random)), offsetForm(1, numbers(random))}) {
            Scale::ScaleFloat after = before;
            after.setEvaluated(measured, before.evaluate(measured));
            ASSERT_NEAR(after.value, before.value, 1e-5F);
            ASSERT_NEAR(after.offset, before.offset, 1e-5F);
            ASSERT_EQ(after.measuredId, before.measuredId);
        }
    }
}

TEST_F(ScaleFloatTest, BaseValueNeedsNoMeasuredData) {
    EXPECT_EQ(literal(1.5F).baseValue(), 1.5F);
    EXPECT_EQ(offsetForm(3, 2.5F).baseValue(), 2.5F);
    EXPECT_EQ(scaleForm(3, 2.5F).baseValue(), 0.0F);
}

TEST_F(ScaleFloatTest, DisplayFormShowsTheOffsetOfEveryReference) {
    EXPECT_EQ(displayForm(literal(1.5F)), "1.5");
    EXPECT_EQ(displayForm(literal(noUpperLimit)), "3.40282e+38");
    EXPECT_EQ(displayForm(offsetForm(3, 1.5F)), "[m3 1.5]");
    EXPECT_EQ(displayForm(scaleForm(3, 2.5F)), "[m3 0]");
}

// --- Reading ----------------------------------------------------------------------------------------------

TEST_F(ScaleFloatTest, ReadsEachFormAndNothingBehindIt) {
    const struct {
        const char* text;
        Scale::ScaleFloat value;
        const char* rest;
    } cases[] = {
        {"1.5 2", literal(1.5F), " 2"},
        {" # a comment\n  -3e1,", literal(-30), ","},
        {"[m3 2.5]x", scaleForm(3, 2.5F), "x"},
        {"[m3 + 1.5] 1", offsetForm(3, 1.5F), " 1"},
        {"[ m 3 + -1.5 ]", offsetForm(3, -1.5F), ""},
        {"[m3+1.5]", offsetForm(3, 1.5F), ""},
        {"[\n m # name\n 12 # number\n -2 # factor\n ]\n", scaleForm(12, -2), "\n"},
        {"[m3 0]", offsetForm(3, 0), ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(read(each.text), each.value) << each.text;
        EXPECT_EQ(rest, each.rest) << each.text;
        EXPECT_EQ(test::takeChain(), StatusChain{}) << each.text;
    }
}

TEST_F(ScaleFloatTest, ReadsInDoublePrecisionAndThenCutsTo32Bits) {
    const struct {
        const char* text;
        Scale::ScaleFloat value;
    } cases[] = {
        {"1e39", literal(HUGE_VALF)},
        {"-1e39", literal(-HUGE_VALF)},
        {"1e-46", literal(0)},
        {"1e-400", literal(0)},
        {"3.4028235e38", literal(noUpperLimit)},
        {"[m2147483647 1e39]", scaleForm(2147483647, HUGE_VALF)},
        {"[m3 + -1e39]", offsetForm(3, -HUGE_VALF)},
        // A little more than half a unit above 1. Double precision keeps the half alone, which goes to 1.
        {"1.00000005960464484", literal(1)},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(read(text), value) << text;
        EXPECT_EQ(test::takeChain(), StatusChain{}) << text;
    }
}

TEST_F(ScaleFloatTest, ReadsAnAsteriskAsTheInfiniteLimit) {
    EXPECT_EQ(read(" *0.5", noLowerLimit), literal(noLowerLimit));
    EXPECT_EQ(rest, "0.5");
    EXPECT_EQ(read("*", noUpperLimit), literal(noUpperLimit));
    EXPECT_EQ(read("4 *", noUpperLimit), literal(4));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleFloatTest, IsAllZeroAfterAnError) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"*", "Cannot specify an infinite value for temp position x."},
        {"", "Error reading temp position x."},
        {"abc", "Error reading temp position x."},
        {"[x1 2]", "Invalid measured constant name."},
        {"[", "Invalid measured constant name."},
        {"[ 3 2]", "Invalid measured constant name."},
        {"[M3 2]", "Invalid measured constant name."},
        {"[mx 2]", "Error reading measured constant number."},
        {"[m", "Error reading measured constant number."},
        {"[m0 2]", "Invalid measured constant 0."},
        {"[m2147483648 2]", "Error reading measured constant number."},
        {"[m99999999999 2]", "Error reading measured constant number."},
        {"[m3 1e400]", "Error reading measured constant scale factor."},
        {"[m3 + -1e400]", "Error reading measured constant offset."},
        {"1e400", "Error reading temp position x."},
        {"[m-7 2]", "Invalid measured constant -7."},
        {"[m3]", "Error reading measured constant scale factor."},
        {"[m3 *]", "Error reading measured constant scale factor."},
        {"[m3", "Error reading measured constant scale factor."},
        {"[m3 + ]", "Error reading measured constant offset."},
        {"[m3 + +", "Error reading measured constant offset."},
        {"[m3 2 1]", "No ']' after measured constant specification."},
        {"[m3 + 2", "No ']' after measured constant specification."},
        {"[m3 2)", "No ']' after measured constant specification."},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(read(each.text), Scale::ScaleFloat()) << each.text;
        EXPECT_EQ(test::takeChain(), StatusChain{error(each.message)}) << each.text;
    }
}

TEST_F(ScaleFloatTest, AnAsteriskThatIsRefusedStays) {
    read(" *");
    EXPECT_EQ(rest, "*");
}

TEST_F(ScaleFloatTest, AnOlderErrorStopsAReferenceButNoLiteral) {
    pushErrorf("Older.");
    EXPECT_EQ(read("2"), literal(2));
    EXPECT_EQ(read("[m3 2]"), Scale::ScaleFloat());
    EXPECT_EQ(test::takeChain(), StatusChain{error("Older.")});
}

// --- Writing ----------------------------------------------------------------------------------------------

TEST_F(ScaleFloatTest, FileFormIsWhatReadingTakes) {
    const struct {
        Scale::ScaleFloat value;
        float infinity;
        const char* text;
    } cases[] = {
        {literal(1.5F), 0, "1.5"},
        {literal(0), 0, "0"},
        {literal(noUpperLimit), noUpperLimit, "*"},
        {literal(noUpperLimit), 0, "3.40282e+38"},
        {literal(noUpperLimit), noLowerLimit, "3.40282e+38"},
        {literal(noLowerLimit), noLowerLimit, "*"},
        {scaleForm(3, 2.5F), 0, "[m3 2.5]"},
        {scaleForm(3, noUpperLimit), noUpperLimit, "[m3 3.40282e+38]"},
        {offsetForm(3, -1.5F), 0, "[m3 + -1.5]"},
        {offsetForm(3, 0), 0, "[m3 0]"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(fileForm(each.value, each.infinity), each.text);
    }
}

TEST_F(ScaleFloatTest, ReadsBackWhatWasWritten) {
    std::mt19937 random(2603);
    std::uniform_int_distribution<int> numbers(-99999, 99999);
    std::uniform_int_distribution<int> ids(1, 40);
    for (int round = 0; round < 5000; ++round) {
        const float number = static_cast<float>(numbers(random)) / 8.0F;
        // Six digits are what the file keeps, so the number starts as one of them.
        std::stringstream sixDigits;
        sixDigits << number;
        const float kept = std::stof(sixDigits.str());
        for (const Scale::ScaleFloat& value : {literal(kept), scaleForm(ids(random), kept),
                                               offsetForm(ids(random), kept), literal(noLowerLimit)}) {
            ASSERT_EQ(read(fileForm(value, noLowerLimit), noLowerLimit), value);
        }
    }
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

// --- References -------------------------------------------------------------------------------------------

TEST_F(ScaleFloatTest, ALiteralNeedsNoMeasuredData) {
    EXPECT_TRUE(Scale::validateMeasuredRef(literal(5), nullptr));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleFloatTest, AReferenceNeedsMeasuredData) {
    EXPECT_FALSE(Scale::validateMeasuredRef(scaleForm(1, 2), nullptr));
    EXPECT_EQ(test::takeChain(),
              StatusChain{error("No measured data has been specified, but the scaling definition references "
                                "measured constants.")});
}

TEST_F(ScaleFloatTest, AReferenceMustLieWithinTheMeasuredData) {
    const LqMeasuredData measured = measuredData({7, 8});
    EXPECT_TRUE(Scale::validateMeasuredRef(scaleForm(2, 2), &measured));
    EXPECT_EQ(test::takeChain(), StatusChain{});
    EXPECT_FALSE(Scale::validateMeasuredRef(offsetForm(3, 2), &measured));
    EXPECT_EQ(test::takeChain(),
              StatusChain{error(
                  "Invalid measured id 3.  There are only 2 measured constants in the measured data.")});
}

} // namespace
} // namespace quillon
