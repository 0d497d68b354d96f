#include "quillon/core/StreamTokens.h"

#include "quillon/core/LmSStream.h"
#include "tests/core/StrForms.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using test::CleanStatus;
using test::error;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

const StatusChain none{};

class StreamTokens : public testing::Test {
protected:
    CleanStatus clean;
};

std::string restOf(std::istream& input) {
    input.clear();
    return std::string(std::istreambuf_iterator<char>(input), {});
}

TEST_F(StreamTokens, CommentsAreSkippedUpToALineEndOrAnotherCharacter) {
    const struct {
        const char* source;
        bool result;
        const char* rest;
    } cases[] = {
        {"", false, ""},         {"  \t", false, ""}, {"\nx", true, "\nx"},        {" \t\nx", true, "\nx"},
        {"  x", true, "x"},      {"x", true, "x"},    {" \r\v\f\nx", true, "\nx"}, {"# c\nx", true, "x"},
        {"  # c\nx", true, "x"}, {"# c", false, ""},  {"\xFF", true, "\xFF"}};
    for (const auto& each : cases) {
        LmISStream input(each.source);
        EXPECT_EQ(skipStreamComments(input), each.result) << each.source;
        EXPECT_EQ(restOf(input), each.rest);
    }
}

TEST_F(StreamTokens, SpaceIsSkippedOverLinesAndComments) {
    const struct {
        const char* source;
        bool result;
        const char* rest;
    } cases[] = {{"", false, ""},
                 {" \n\t\r\v\f ", false, ""},
                 {"x", true, "x"},
                 {"  \n\n x", true, "x"},
                 {"# a\n  # b\n\n x # c", true, "x # c"},
                 {"# a\r\n# b\r\nx", true, "x"},
                 {"# a", false, ""},
                 {"# a\n", false, ""},
                 {"x # a", true, "x # a"},
                 {"\n#\n#\nx", true, "x"},
                 {"\xA0", true, "\xA0"}};
    for (const auto& each : cases) {
        std::istringstream input(each.source);
        EXPECT_EQ(skipStreamSpace(input), each.result) << each.source;
        EXPECT_EQ(restOf(input), each.rest);
    }
    EXPECT_FALSE(currentStatus().hasEntries());
}

TEST_F(StreamTokens, OnlyAFailedStreamIsReported) {
    std::istringstream input("1");
    checkStream(input, "a number");
    EXPECT_THAT(takeChain(), IsEmpty());
    input.setstate(std::ios::eofbit);
    checkStream(input, "a number");
    EXPECT_THAT(takeChain(), IsEmpty());
    input.setstate(std::ios::failbit);
    checkStream(input, "100% of a number");
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading 100% of a number.")));
    input.clear(std::ios::badbit);
    checkStream(input, "a number");
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading a number.")));
}

TEST_F(StreamTokens, RealsAreReadBehindSpaceAndComments) {
    const struct {
        const char* source;
        float value;
        const char* rest;
        bool read;
    } cases[] = {{"1.5", 1.5F, "", true},      {" # a\n\n -2e3 4", -2000.0F, " 4", true},
                 {"0.1x", 0.1F, "x", true},    {"16777217", 16777216.0F, "", true},
                 {"x", 0, "x", false},         {"", 0, "", false},
                 {"  # nothing", 0, "", false}};
    for (const auto& each : cases) {
        LmISStream input(each.source);
        const float value = readStreamFloat(input, "the weight");
        EXPECT_EQ(takeChain(), each.read ? none : StatusChain{error("Error reading the weight.")})
            << each.source;
        EXPECT_EQ(input.fail(), !each.read);
        EXPECT_EQ(restOf(input), each.rest);
        if (each.read) {
            EXPECT_EQ(value, each.value);
        }
    }
}

TEST_F(StreamTokens, IntegersAreReadBehindSpaceAndComments) {
    LmISStream input(" 12 # a\n-3.5 2147483648");
    EXPECT_EQ(readStreamInt(input, "the id"), 12);
    EXPECT_EQ(readStreamInt(input, "the id"), -3);
    EXPECT_THAT(takeChain(), IsEmpty());
    readStreamInt(input, "the id");
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading the id.")));
    LmISStream limit("2147483648");
    EXPECT_EQ(readStreamInt(limit, "the id"), std::numeric_limits<std::int32_t>::max());
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading the id.")));
    LmISStream empty("");
    readStreamInt(empty, "the id");
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading the id.")));
}

TEST_F(StreamTokens, VectorsStopWithTheRestAtZero) {
    const struct {
        const char* source;
        std::array<float, 3> vector;
        bool read;
        const char* rest;
    } cases[] = {{"1 2.5 -3 4", {1, 2.5F, -3}, true, " 4"}, {"1 # x\n 2 # y\n\n 3", {1, 2, 3}, true, ""},
                 {"1 2 x", {1, 2, 0}, false, "x"},          {"1 y 3", {1, 0, 0}, false, "y 3"},
                 {"x 2 3", {0, 0, 0}, false, "x 2 3"},      {"1", {1, 0, 0}, false, ""}};
    for (const auto& each : cases) {
        LmISStream input(each.source);
        EXPECT_EQ(readStreamVector(input, "the position"), each.vector) << each.source;
        EXPECT_EQ(takeChain(), each.read ? none : StatusChain{error("Error reading the position.")});
        EXPECT_EQ(restOf(input), each.rest);
    }
}

TEST_F(StreamTokens, StringsAreWordsOrQuoted) {
    const std::string longWord(700, 'w');
    const struct {
        std::string source;
        std::string text;
        std::string rest;
    } cases[] = {{"word next", "word", " next"},
                 {" # a\n word", "word", ""},
                 {"two\"quotes\" x", "two\"quotes\"", " x"},
                 {"\"two words\" next", "two words", " next"},
                 {" # a\n\"\"x", "", "x"},
                 {"\" a \"", " a ", ""},
                 {"\"a\\\" b\"", "a\\", " b\""},
                 {"\"a # b\"", "a # b", ""},
                 {"\"a\tb\r\"", "a\tb\r", ""},
                 {longWord + " x", longWord, " x"},
                 {"\"" + longWord.substr(0, 300) + "\" x", longWord.substr(0, 300), " x"}};
    for (const auto& each : cases) {
        std::istringstream input(each.source);
        const LmStr text = readStreamString(input, "the name");
        ASSERT_FALSE(text.isNull()) << each.source;
        EXPECT_EQ(test::textOf(text), each.text);
        EXPECT_EQ(restOf(input), each.rest);
        EXPECT_FALSE(currentStatus().hasEntries());
    }
}

TEST_F(StreamTokens, AWordAtTheEndIsNoFailure) {
    LmISStream input("last");
    EXPECT_STREQ(readStreamString(input, "the name").c_str(), "last");
    EXPECT_TRUE(input.good());
    EXPECT_TRUE(readStreamString(input, "the name").isNull());
    EXPECT_THAT(takeChain(), ElementsAre(error("Error reading the name.")));
}

TEST_F(StreamTokens, AQuoteClosesOnItsOwnLine) {
    for (const char* source : {"\"abc\ndef\"", "\"abc", "\"", "\"\n\"", " # x\n \"a # \n"}) {
        LmISStream input(source);
        EXPECT_TRUE(readStreamString(input, "100% of a name").isNull()) << source;
        EXPECT_THAT(takeChain(), ElementsAre(error("Hit end of line in string reading 100% of a name")))
            << source;
    }
}

TEST_F(StreamTokens, WhatWasFoundInsteadIsNamed) {
    expectedButFound("END", "END");
    EXPECT_THAT(takeChain(), IsEmpty());
    expectedButFound("end", "END");
    EXPECT_THAT(takeChain(), ElementsAre(error("Expecting END in scale definition file, but found end.")));
    expectedButFound("", "END");
    EXPECT_THAT(takeChain(), ElementsAre(error("Expecting END in scale definition file, but found .")));
    expectedButFound(LmStr(), "END");
    EXPECT_THAT(takeChain(),
                ElementsAre(error("Expecting END in scale definition file, but found end of file.")));
    expectedButFound("50%d", "100%s");
    EXPECT_THAT(takeChain(), ElementsAre(error("Expecting 100%s in scale definition file, but found 50%d.")));
}

} // namespace
} // namespace quillon
