#include "quillon/scale/ScaleTokens.h"

#include "quillon/core/LmSStream.h"
#include "tests/core/StrForms.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using namespace scaleDef;
using test::error;
using test::StatusChain;

class ScaleTokens : public testing::Test {
protected:
    /// Calls `body` on a text as the text of a block and as a file stream, each time with no error standing.
    static void onBoth(const std::string& text, const std::function<void(std::istream&)>& body) {
        LmISStream block(text.c_str());
        std::istringstream file(text);
        for (std::istream* input : {static_cast<std::istream*>(&block), static_cast<std::istream*>(&file)}) {
            SCOPED_TRACE(text);
            body(*input);
            currentStatus().clear();
        }
    }

    static std::string restOf(std::istream& input) {
        input.clear();
        return {std::istreambuf_iterator<char>(input), {}};
    }

private:
    test::CleanStatus cleanStatus;
};

TEST_F(ScaleTokens, BlanksEndAtALineEndAnotherCharacterOrTheEnd) {
    const struct {
        const char* text;
        bool found;
        const char* rest;
    } cases[] = {
        {"", false, ""},        {" \t\r", false, ""},
        {"  \nx", true, "\nx"}, {" \t x", true, "x"},
        {"x", true, "x"},       {" # text # more\n x", true, "\n x"},
        {"#\n", true, "\n"},    {"# to the very end", false, ""},
    };
    for (const auto& each : cases) {
        onBoth(each.text, [&each](std::istream& input) {
            EXPECT_EQ(skipBlanks(input), each.found);
            EXPECT_EQ(restOf(input), each.rest);
        });
    }
}

TEST_F(ScaleTokens, WhiteEndsAtATokenAcrossLinesAndComments) {
    const struct {
        const char* text;
        bool found;
        const char* rest;
    } cases[] = {
        {"", false, ""},  {" \n\n\t\n", false, ""},      {" \n # one\n# two\n\n  x y", true, "x y"},
        {"x", true, "x"}, {"# to the end\n", false, ""}, {"# to the very end", false, ""},
    };
    for (const auto& each : cases) {
        onBoth(each.text, [&each](std::istream& input) {
            EXPECT_EQ(skipWhite(input), each.found);
            EXPECT_EQ(restOf(input), each.rest);
        });
    }
}

TEST_F(ScaleTokens, CheckReportsAFailedStreamOnly) {
    const struct {
        std::ios::iostate state;
        bool reports;
    } cases[] = {{std::ios::goodbit, false},
                 {std::ios::eofbit, false},
                 {std::ios::failbit, true},
                 {std::ios::badbit, true},
                 {std::ios::eofbit | std::ios::failbit, true}};
    for (const auto& each : cases) {
        onBoth("text", [&each](std::istream& input) {
            input.clear(each.state);
            checkRead(input, "temp weight");
            EXPECT_EQ(test::takeChain(),
                      each.reports ? StatusChain{error("Error reading temp weight.")} : StatusChain{});
        });
    }
}

TEST_F(ScaleTokens, ReadsRealsBehindCommentsAndUpToTheirEnd) {
    onBoth(" # first\n 1.5-2e1 .5]7", [](std::istream& input) {
        EXPECT_EQ(readFloatValue(input, "value"), 1.5F);
        EXPECT_EQ(readFloatValue(input, "value"), -20.0F);
        EXPECT_EQ(readFloatValue(input, "value"), 0.5F);
        EXPECT_EQ(test::takeChain(), StatusChain{});
        EXPECT_EQ(restOf(input), "]7");
    });
    onBoth("88", [](std::istream& input) {
        EXPECT_EQ(readFloatValue(input, "value"), 88.0F);
        EXPECT_EQ(test::takeChain(), StatusChain{});
    });
}

TEST_F(ScaleTokens, ARealThatIsNoneIsZeroAndReported) {
    for (const char* text : {"", " # nothing\n", "x", "*"}) {
        onBoth(text, [](std::istream& input) {
            EXPECT_EQ(readFloatValue(input, "real weight"), 0.0F);
            EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading real weight.")});
        });
    }
}

TEST_F(ScaleTokens, ReadsIntegersUpToTheirEnd) {
    onBoth(" -12 \n# two\n 34.5", [](std::istream& input) {
        EXPECT_EQ(readIntValue(input, "count"), -12);
        EXPECT_EQ(readIntValue(input, "count"), 34);
        EXPECT_EQ(test::takeChain(), StatusChain{});
        EXPECT_EQ(restOf(input), ".5");
    });
    for (const char* text : {"", "x1"}) {
        onBoth(text, [](std::istream& input) {
            EXPECT_EQ(readIntValue(input, "measured count"), 0);
            EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured count.")});
        });
    }
}

TEST_F(ScaleTokens, ReadsVectorsAndStopsAtTheFirstError) {
    onBoth("1 2 # y\n 3 4", [](std::istream& input) {
        EXPECT_EQ(readVectorValue(input, "axis"), (LmVec3{1, 2, 3}));
        EXPECT_EQ(test::takeChain(), StatusChain{});
        EXPECT_EQ(restOf(input), " 4");
    });
    onBoth("1 x 3", [](std::istream& input) {
        EXPECT_EQ(readVectorValue(input, "axis"), (LmVec3{1, 0, 0}));
        EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading axis.")});
    });
    onBoth("1 2 3", [](std::istream& input) {
        pushErrorf("Older.");
        EXPECT_EQ(readVectorValue(input, "axis"), (LmVec3{1, 0, 0}));
        EXPECT_EQ(test::takeChain(), StatusChain{error("Older.")});
        EXPECT_EQ(restOf(input), " 2 3");
    });
}

TEST_F(ScaleTokens, ReadsWordsAndQuotedNames) {
    onBoth(" # who\n left_knee\n\"upper \\ # arm\"tail \"\"", [](std::istream& input) {
        EXPECT_EQ(readNameValue(input, "body"), "left_knee");
        EXPECT_EQ(readNameValue(input, "body"), "upper \\ # arm") << "no escapes and no comments within";
        EXPECT_EQ(readNameValue(input, "body"), "tail");
        EXPECT_EQ(readNameValue(input, "body"), "");
        EXPECT_EQ(test::takeChain(), StatusChain{});
        EXPECT_EQ(restOf(input), "");
    });
}

TEST_F(ScaleTokens, AQuotedNameMayBeOfAnyLength) {
    for (const std::size_t length : {310U, 311U, 312U, 313U, 5000U}) {
        const std::string name(length, 'x');
        onBoth('"' + name + "\" 1", [&name](std::istream& input) {
            EXPECT_EQ(readNameValue(input, "body"), name.c_str());
            EXPECT_EQ(restOf(input), " 1");
        });
    }
}

TEST_F(ScaleTokens, AQuotedNameMustEndOnItsLine) {
    for (const char* text : {"\"open\n\"", "\"open", "\""}) {
        onBoth(text, [](std::istream& input) {
            const LmStr name = readNameValue(input, "scaling variable name");
            EXPECT_FALSE(name.isNull());
            EXPECT_EQ(name, "");
            EXPECT_EQ(test::takeChain(),
                      StatusChain{error("Hit end of line in string reading scaling variable name")});
        });
    }
}

TEST_F(ScaleTokens, ANameThatIsMissingIsEmptyAndReported) {
    for (const char* text : {"", " # none\n"}) {
        onBoth(text, [](std::istream& input) {
            const LmStr name = readNameValue(input, "body");
            EXPECT_FALSE(name.isNull());
            EXPECT_EQ(name, "");
            EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading body.")});
        });
    }
}

} // namespace
} // namespace quillon
