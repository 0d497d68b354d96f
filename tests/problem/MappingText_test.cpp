#include "quillon/problem/MappingText.h"

#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/FailingDevice.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace quillon::test {
namespace {

using Terms = std::vector<std::pair<int, float>>;

constexpr int highestSysVar = 12;

struct GoodCase {
    const char* text;
    int id;
    float constant;
    Terms terms;
    const char* rest;
};

TEST(MappingText, ReadsEachFormAndTheRestOfItsLastLine) {
    const GoodCase cases[] = {
        {"   0\nnext", 0, 0.0F, {}, "next"},
        {"0 1 2 3\nnext", 0, 0.0F, {}, "next"},
        {"  12\nnext", 12, 0.0F, {}, "next"},
        {" -1\n 1.5\nnext", -1, 1.5F, {}, "next"},
        {" -1 1.5 and more\nnext", -1, 1.5F, {}, "next"},
        {" -3\n 0.25\n    1   2\n    12   -0.5\nnext", -3, 0.25F, {{1, 2.0F}, {12, -0.5F}}, "next"},
        {"-3 0.25 1\n2 12\n\n-0.5 # done\nnext", -3, 0.25F, {{1, 2.0F}, {12, -0.5F}}, "next"},
        {"-2 1 3 4\r\nnext", -2, 1.0F, {{3, 4.0F}}, "next"},
        {"-2 1 3 4\n", -2, 1.0F, {{3, 4.0F}}, ""},
        {"+7\n", 7, 0.0F, {}, ""},
    };
    const CleanStatus clean;
    for (const GoodCase& each : cases) {
        std::istringstream input(each.text);
        LqBasicVarMapping<float> mapping = combination(9, {{9, 9}});
        EXPECT_TRUE(readMapping(mapping, input, highestSysVar)) << each.text;
        EXPECT_EQ(mapping.id, each.id) << each.text;
        EXPECT_EQ(mapping.constant, each.constant) << each.text;
        EXPECT_EQ(termsOf(mapping), each.terms) << each.text;
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), each.rest) << each.text;
        EXPECT_EQ(takeChain(), StatusChain{}) << each.text;
    }
}

struct BadCase {
    const char* text;
    StatusChain chain;
    int id;
    Terms terms;
};

TEST(MappingText, ReportsWhatItCannotRead) {
    const BadCase cases[] = {
        {"", {error("Unable to read system variable id for mapping.")}, 0, {}},
        {"x\n", {error("Unable to read system variable id for mapping.")}, 0, {}},
        {"13\n",
         {error("Invalid system variable (13) specified for transformation.  "
                "The highest system variable is 12.")},
         13,
         {}},
        {"-1\n", {error("Unable to constant for mapping.")}, -1, {}},
        {"-1 one\n", {error("Unable to constant for mapping.")}, -1, {}},
        {"-2 1\n",
         {error("Unable to read linear combination term 1."),
          error("Unable to read system variable id for coefficient.")},
         -2,
         {}},
        {"-3 1 4 0.5 5 x\n",
         {error("Unable to read linear combination term 2."), error("Unable to read coefficient.")},
         -3,
         {{4, 0.5F}}},
        {"-2 1 0 0.5\n",
         {error("Unable to read linear combination term 1."),
          error("Invalid system variable (0) in linear combination term.")},
         -2,
         {}},
        {"-2 1 -4 0.5\n",
         {error("Unable to read linear combination term 1."),
          error("Invalid system variable (-4) in linear combination term.")},
         -2,
         {}},
        {"-2 1 13 0.5\n",
         {error("Unable to read linear combination term 1."),
          error("Invalid system variable (13) in linear combination term.  The highest variable is 12.")},
         -2,
         {}},
        {"-2147483648 1 4 0.5\n",
         {error("Unable to read linear combination term 2."),
          error("Unable to read system variable id for coefficient.")},
         std::numeric_limits<int>::min(),
         {{4, 0.5F}}},
    };
    const CleanStatus clean;
    for (const BadCase& each : cases) {
        std::istringstream input(each.text);
        LqBasicVarMapping<float> mapping;
        EXPECT_FALSE(readMapping(mapping, input, highestSysVar)) << each.text;
        EXPECT_EQ(takeChain(), each.chain) << each.text;
        EXPECT_EQ(mapping.id, each.id) << each.text;
        EXPECT_EQ(termsOf(mapping), each.terms) << each.text;
    }
}

TEST(MappingText, LeavesTheStreamBehindTheNumberThatItRefuses) {
    const std::pair<const char*, const char*> cases[] = {
        {"13 # behind\nnext", " # behind\nnext"},
        {"-3 1 4 0.5 13 0.25\nnext", " 0.25\nnext"},
        {"-2 1 0 0.25\nnext", " 0.25\nnext"},
    };
    const CleanStatus clean;
    for (const auto& [text, rest] : cases) {
        std::istringstream input(text);
        LqBasicVarMapping<float> mapping;
        EXPECT_FALSE(readMapping(mapping, input, highestSysVar)) << text;
        EXPECT_TRUE(input.good()) << text;
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), rest);
        currentStatus().clear();
    }
}

TEST(MappingText, WithoutVariablesAcceptsNoDirectMapping) {
    const CleanStatus clean;
    std::istringstream input("1\n");
    LqBasicVarMapping<float> mapping;
    EXPECT_FALSE(readMapping(mapping, input, 0));
    EXPECT_EQ(takeChain(), StatusChain{error("Invalid system variable (1) specified for transformation.  "
                                             "The highest system variable is 0.")});
}

TEST(MappingText, NarrowsItsRealsFromDoublePrecision) {
    const CleanStatus clean;
    // The double next to this text lies on the other side of the middle of two floats than the text itself.
    std::istringstream input("-2 0.1 1 1e39\n");
    LqBasicVarMapping<float> mapping;
    EXPECT_TRUE(readMapping(mapping, input, highestSysVar));
    EXPECT_EQ(mapping.constant, static_cast<float>(0.1));
    ASSERT_EQ(mapping.terms.count(), 1);
    EXPECT_TRUE(std::isinf(termsOf(mapping)[0].second));
}

TEST(MappingText, SkipsALineOfAnyLength) {
    const CleanStatus clean;
    std::istringstream input("3 " + std::string(100000, 'x') + "\nnext");
    LqBasicVarMapping<float> mapping;
    EXPECT_TRUE(readMapping(mapping, input, highestSysVar));
    EXPECT_EQ(input.get(), 'n');
}

TEST(MappingText, NeverReturnsFromALastLineWithoutANewline) {
    for (const char* text : {"0", "3 and more", "-1 0.5", "-2 0.5 1 2"}) {
        support::ChildOptions options;
        options.timeLimit = std::chrono::milliseconds(300);
        const support::ChildResult result = support::runFunction(
            [text] {
                std::istringstream input(text);
                LqBasicVarMapping<float> mapping;
                readMapping(mapping, input, highestSysVar);
            },
            options);
        EXPECT_EQ(result.outcome, "TIMEOUT") << text;
    }
}

TEST(MappingText, ReportsADeviceThatFailsInItsLastLine) {
    const CleanStatus clean;
    const std::pair<const char*, const char*> cases[] = {
        {"1", "Unable to read system variable id for mapping."},
        {"1 ", "Error reading file."},
        {"-1 2.5 and more", "Error reading file."},
        {"-2 0.5 1 0.25 \t", "Error reading file."},
    };
    for (const auto& [text, told] : cases) {
        FailingDevice device(text);
        std::istream input(&device);
        LqBasicVarMapping<float> mapping;
        EXPECT_FALSE(readMapping(mapping, input, highestSysVar)) << text;
        EXPECT_EQ(takeChain(), (StatusChain{error(told)})) << text;
    }
}

TEST(MappingText, ReadsATermBySingleTokens) {
    const CleanStatus clean;
    std::istringstream input(" 4\n\n 0.5 rest");
    LqLinearTerm<float> term;
    EXPECT_TRUE(readLinearTerm(term, input, 4));
    EXPECT_EQ(term.sysVar, 4);
    EXPECT_EQ(term.coefficient, 0.5F);
    EXPECT_EQ(input.get(), ' ');
}

struct WriteCase {
    LqBasicVarMapping<float> mapping;
    const char* text;
};

TEST(MappingText, WritesEachFormWithoutItsLastNewline) {
    const WriteCase cases[] = {
        {LqBasicVarMapping<float>(), "   0"},
        {LqBasicVarMapping<float>(7), "   7"},
        {LqBasicVarMapping<float>(1234), " 1234"},
        {constantMapping(0.5F), "  -1\n 0.500000"},
        {combination(-2.25F, {{3, 1.0F}, {1000, -0.125F}}),
         "  -3\n -2.250000\n    3   1.000000\n    1000   -0.125000"},
    };
    for (const WriteCase& each : cases) {
        std::ostringstream output;
        output << std::fixed;
        writeMapping(each.mapping, output);
        EXPECT_EQ(output.str(), each.text);
    }
}

TEST(MappingText, WritesRealsInTheFormatThatTheStreamHas) {
    std::ostringstream output;
    writeMapping(combination(5, {{2, 0.5F}}), output);
    EXPECT_EQ(output.str(), "  -2\n   5\n    2   0.5");
}

/// Keeps what has been written at each flush.
class FlushedTexts : public std::stringbuf {
public:
    std::vector<std::string> texts;

protected:
    int sync() override {
        texts.push_back(str());
        return 0;
    }
};

TEST(MappingText, EndsEachOfItsLinesWithAFlush) {
    FlushedTexts flushed;
    std::ostream output(&flushed);
    writeMapping(LqBasicVarMapping<float>(7), output);
    EXPECT_EQ(flushed.texts.size(), 0U);
    writeMapping(combination(5, {{2, 0.5F}, {3, 4.0F}}), output);
    EXPECT_EQ(flushed.texts.size(), 3U);
    EXPECT_EQ(flushed.str(), "   7  -3\n   5\n    2   0.5\n    3   4");
}

TEST(MappingText, WritesWhatItReadsBack) {
    const CleanStatus clean;
    const LqBasicVarMapping<float> source = combination(0.1234567F, {{1, 2.0F}, {12, -0.0000004F}});
    std::ostringstream output;
    output << std::fixed;
    writeMapping(source, output);
    output << '\n';
    std::istringstream input(output.str());
    LqBasicVarMapping<float> mapping;
    EXPECT_TRUE(readMapping(mapping, input, highestSysVar));
    EXPECT_TRUE(equals(mapping, combination(0.123457F, {{1, 2.0F}, {12, 0.0F}})));
}

} // namespace
} // namespace quillon::test
