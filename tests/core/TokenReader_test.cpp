#include "quillon/core/TokenReader.h"

#include "quillon/core/LmDoubleLinkedList.h"
#include "tests/core/StrForms.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::chainOf;
using test::CleanStatus;
using test::error;
using test::forEachForm;
using test::StatusChain;
using test::takeChain;
using test::textOf;
using testing::ElementsAre;
using testing::IsEmpty;

const StatusChain none{};

class TokenReader : public testing::Test {
protected:
    CleanStatus clean;
};

/// Runs a reader on every form of the text, once on the current status and once on another, and checks what
/// it reports, where, and what it leaves.
template <class Read>
void checkReader(const char* source, const char* rest, const StatusChain& chain, const Read& read) {
    for (const bool ownStatus : {false, true}) {
        SCOPED_TRACE(ownStatus ? "status of its own" : "current status");
        forEachForm(source, [&](LmStr& text) {
            LmStatus own;
            read(text, ownStatus ? own : currentStatus());
            EXPECT_EQ(takeChain(ownStatus ? own : currentStatus()), chain);
            EXPECT_FALSE(own.hasEntries());
            EXPECT_FALSE(currentStatus().hasEntries());
            ASSERT_FALSE(text.isNull());
            EXPECT_EQ(textOf(text), rest);
        });
    }
}

TEST_F(TokenReader, Identifiers) {
    const struct {
        const char* source;
        const char* identifier; // null for none
        const char* rest;
        StatusChain chain;
    } cases[] = {
        {"  foo_1 bar", "foo_1", " bar", none},
        {"_x", "_x", "", none},
        {"\n\ta-b", "a", "-b", none},
        {"1foo", nullptr, "1foo", {error("Invalid identifier.")}},
        {"  -foo", nullptr, "-foo", {error("Invalid identifier.")}},
        {"\xE9", nullptr, "\xE9", {error("Invalid identifier.")}},
        {"", nullptr, "", {error("Expecting identifier.")}},
        {" \n\t ", nullptr, "", {error("Expecting identifier.")}},
    };
    for (const auto& each : cases) {
        checkReader(each.source, each.rest, each.chain, [&each](LmStr& text, LmStatus& status) {
            const LmStr identifier = readIdentifier(text, status);
            EXPECT_TRUE(identifier == each.identifier) << testing::PrintToString(identifier);
        });
    }
}

TEST_F(TokenReader, Integers) {
    const struct {
        const char* source;
        bool read;
        std::int64_t wide;
        std::int32_t narrow;
        const char* rest;
    } cases[] = {
        {"12abc", true, 12, 12, "abc"},
        {"  -5 6", true, -5, -5, " 6"},
        {"+7", true, 7, 7, ""},
        {"010", true, 10, 10, ""},
        {"0x10", true, 0, 0, "x10"},
        {"1.5", true, 1, 1, ".5"},
        {"\n\t 3\n", true, 3, 3, "\n"},
        {"4294967297", true, 4294967297, 1, ""},
        {"2147483648", true, 2147483648, std::numeric_limits<std::int32_t>::min(), ""},
        {"99999999999999999999 x", true, std::numeric_limits<std::int64_t>::max(), -1, " x"},
        {"-99999999999999999999", true, std::numeric_limits<std::int64_t>::min(), 0, ""},
        {"abc", false, 0, 0, "abc"},
        {"  abc", false, 0, 0, "abc"},
        {"- 5", false, 0, 0, "- 5"},
        {"", false, 0, 0, ""},
        {"  ", false, 0, 0, ""},
    };
    for (const auto& each : cases) {
        const StatusChain chain = each.read ? none : StatusChain{error("Invalid integer value.")};
        checkReader(each.source, each.rest, chain, [&each](LmStr& text, LmStatus& status) {
            std::int64_t out = -77;
            EXPECT_EQ(readInt(text, out, status), each.read);
            if (each.read) {
                EXPECT_EQ(out, each.wide);
            }
        });
        checkReader(each.source, each.rest, chain, [&each](LmStr& text, LmStatus& status) {
            std::int32_t out = -77;
            EXPECT_EQ(readInt(text, out, status), each.read);
            if (each.read) {
                EXPECT_EQ(out, each.narrow);
            }
        });
    }
}

TEST_F(TokenReader, UnsignedIntegersOfEveryBase) {
    const struct {
        const char* source;
        bool read;
        std::uint64_t wide;
        std::uint32_t narrow;
        const char* rest;
    } cases[] = {
        {"0x1F", true, 31, 31, ""},
        {"  0X10 z", true, 16, 16, " z"},
        {"010", true, 8, 8, ""},
        {"08", true, 0, 0, "8"},
        {"12abc", true, 12, 12, "abc"},
        {"0xg", true, 0, 0, "xg"},
        {"-1", true, 18446744073709551615U, 4294967295U, ""},
        {"4294967297", true, 4294967297U, 1, ""},
        {"99999999999999999999", true, 18446744073709551615U, 4294967295U, ""},
        {"x1", false, 0, 0, "x1"},
        {"  ", false, 0, 0, ""},
        {"", false, 0, 0, ""},
    };
    for (const auto& each : cases) {
        const StatusChain chain = each.read ? none : StatusChain{error("Invalid integer value.")};
        forEachForm(each.source, [&](LmStr& text) {
            const LmStr copy(text);
            std::uint64_t wide = 77;
            EXPECT_EQ(readUnsigned(text, wide), each.read);
            EXPECT_EQ(takeChain(), chain);
            EXPECT_EQ(textOf(text), each.rest);
            text = copy;
            std::uint32_t narrow = 77;
            EXPECT_EQ(readUnsigned(text, narrow), each.read);
            EXPECT_EQ(takeChain(), chain);
            EXPECT_EQ(textOf(text), each.rest);
            if (each.read) {
                EXPECT_EQ(wide, each.wide);
                EXPECT_EQ(narrow, each.narrow);
            }
        });
    }
}

TEST_F(TokenReader, Booleans) {
    const struct {
        const char* source;
        bool read;
        bool value;
        const char* rest;
    } cases[] = {
        {"Yes, ok", true, true, ", ok"},
        {"  on", true, true, ""},
        {"1 x", true, true, " x"},
        {"no_x", true, false, "_x"},
        {"FALSE\n", true, false, "\n"},
        {"0", true, false, ""},
        {"off.", true, false, "."},
        {"on1", false, false, "on1"},
        {"1x", false, false, "1x"},
        {"maybe", false, false, "maybe"},
        {" truely", false, false, "truely"},
        {"", false, false, ""},
        {"  ", false, false, ""},
        {"-1", false, false, "-1"},
        {"on\xE9", true, true, "\xE9"},
    };
    for (const auto& each : cases) {
        const StatusChain chain = each.read ? none : StatusChain{error("Invalid boolean value.")};
        checkReader(each.source, each.rest, chain, [&each](LmStr& text, LmStatus& status) {
            bool out = !each.value;
            EXPECT_EQ(readBool(text, out, status), each.read);
            if (each.read) {
                EXPECT_EQ(out, each.value);
            }
        });
    }
}

TEST_F(TokenReader, Reals) {
    const StatusChain noValue{error("No value given.")};
    const StatusChain invalid{error("Invalid floating point value.")};
    const struct {
        const char* source;
        bool read;
        double value;
        const char* rest;
        StatusChain chain;
    } cases[] = {
        {"1.5abc", true, 1.5, "abc", none},
        {"  -2e3 4", true, -2000, " 4", none},
        {".5", true, 0.5, "", none},
        {"5.", true, 5, "", none},
        {"1e", true, 1, "e", none},
        {"1e+x", true, 1, "e+x", none},
        {"1,5", true, 1, ",5", none},
        {"0x10", true, 16, "", none},
        {"\n+7\n", true, 7, "\n", none},
        {"1.2.3", true, 1.2, ".3", none},
        {"1e-999", true, 0, "", none},
        {"", false, 0, "", noValue},
        {" \n\t ", false, 0, "", noValue},
        {"inf", false, 0, "inf", invalid},
        {"nan", false, 0, "nan", invalid},
        {" -inf x", false, 0, "-inf x", invalid},
        {"Infinity", false, 0, "Infinity", invalid},
        {"NaN(1)", false, 0, "NaN(1)", invalid},
        {"1e999", false, 0, "1e999", invalid},
        {"-1e999 2", false, 0, "-1e999 2", invalid},
        {"x", false, 0, "x", invalid},
        {".", false, 0, ".", invalid},
        {"-", false, 0, "-", invalid},
        {"e5", false, 0, "e5", invalid},
    };
    for (const auto& each : cases) {
        checkReader(each.source, each.rest, each.chain, [&each](LmStr& text, LmStatus& status) {
            double out = -77;
            EXPECT_EQ(readDouble(text, out, true, status), each.read);
            if (each.read) {
                EXPECT_EQ(out, each.value);
            }
        });
        checkReader(each.source, each.rest, none, [&each](LmStr& text, LmStatus& status) {
            double out = -77;
            EXPECT_EQ(readDouble(text, out, false, status), each.read) << "silently";
        });
        checkReader(each.source, each.rest, each.chain, [&each](LmStr& text, LmStatus& status) {
            float out = -77;
            EXPECT_EQ(readFloat(text, out, status), each.read);
            if (each.read) {
                EXPECT_EQ(out, static_cast<float>(each.value));
            }
        });
    }
}

TEST_F(TokenReader, ReadersGoThroughAText) {
    LmStr text("  Pelvis 3 -1.5e1 on (0x1F) \"a b\" end");
    std::int32_t integer = 0;
    double real = 0;
    bool flag = false;
    std::uint32_t bits = 0;
    LmStr quoted;
    EXPECT_STREQ(readIdentifier(text).c_str(), "Pelvis");
    EXPECT_TRUE(readInt(text, integer));
    EXPECT_TRUE(readDouble(text, real));
    EXPECT_TRUE(readBool(text, flag));
    EXPECT_TRUE(expect(text, "("));
    EXPECT_TRUE(readUnsigned(text, bits));
    EXPECT_TRUE(expect(text, ")"));
    EXPECT_TRUE(readQuoted(text, '"', quoted));
    EXPECT_STREQ(text.c_str(), " end");
    EXPECT_EQ(integer, 3);
    EXPECT_EQ(real, -15);
    EXPECT_TRUE(flag);
    EXPECT_EQ(bits, 31U);
    EXPECT_STREQ(quoted.c_str(), "a b");
    EXPECT_FALSE(currentStatus().hasEntries());
}

// --- Vectors -------------------------------------------------------------------------------------

struct VectorCase {
    const char* source;
    const char* cause;     ///< null when all is well
    const char* component; ///< of the general message
    const char* rest;
};

const VectorCase vectorCases[] = {
    {"1 2.5 -3 4", nullptr, nullptr, " 4"},
    {" 1\n2.5\n-3", nullptr, nullptr, ""},
    {"1 2.5-3", nullptr, nullptr, ""},
    {"x 2 3", "Invalid floating point value.", "Invalid X component", "x 2 3"},
    {"", "No value given.", "Invalid X component", ""},
    {"1 y 3", "Invalid floating point value.", "Invalid Y component", "y 3"},
    {"1", "No value given.", "Invalid Y component", ""},
    {"1 2 inf", "Invalid floating point value.", "Invalid Z component", "inf"},
    {"1 2 ", "No value given.", "Invalid Z component", ""},
};

TEST_F(TokenReader, VectorsReportTheComponentOnTheCurrentStatus) {
    for (const VectorCase& each : vectorCases) {
        forEachForm(each.source, [&each](LmStr& text) {
            const LmStr copy(text);
            std::array<float, 3> out{7, 8, 9};
            EXPECT_EQ(readVector(text, out), each.cause == nullptr);
            EXPECT_EQ(takeChain(),
                      each.cause == nullptr ? none : (StatusChain{error(each.component), error(each.cause)}));
            EXPECT_EQ(textOf(text), each.rest);
            if (each.cause == nullptr) {
                EXPECT_THAT(out, ElementsAre(1, 2.5F, -3));
            } else {
                EXPECT_THAT(out, ElementsAre(7, 8, 9)) << "written only when all three succeed";
            }
            text = copy;
            LmStatus own;
            EXPECT_EQ(readVector(text, out, own), each.cause == nullptr);
            EXPECT_EQ(chainOf(own), each.cause == nullptr ? none : StatusChain{error(each.cause)});
            EXPECT_EQ(takeChain(), each.cause == nullptr ? none : StatusChain{error(each.component)});
        });
    }
}

/// The vectors of a list, which is emptied and whose elements are freed.
std::vector<std::array<float, 3>> takeVectors(LmDoubleLinkedList& list) {
    std::vector<std::array<float, 3>> vectors;
    while (list.count() != 0) {
        auto* const vector = static_cast<std::array<float, 3>*>(list.removeNode(list.firstLive()));
        vectors.push_back(*vector);
        delete vector;
    }
    return vectors;
}

TEST_F(TokenReader, VectorListsRunToTheEndOfTheText) {
    using Vectors = std::vector<std::array<float, 3>>;
    const struct {
        const char* source;
        bool read;
        Vectors vectors;
        StatusChain chain;
    } cases[] = {
        {"1 2 3  4 5 6", true, {{1, 2, 3}, {4, 5, 6}}, none},
        {" 1 2 3\n4 5 6 \n", true, {{1, 2, 3}, {4, 5, 6}}, none},
        {"", true, {}, none},
        {"1 2 3 4", false, {{1, 2, 3}}, {error("Invalid Y component"), error("No value given.")}},
        {"1 2 3 x",
         false,
         {{1, 2, 3}},
         {error("Invalid X component"), error("Invalid floating point value.")}},
    };
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            LmDoubleLinkedList list;
            EXPECT_EQ(readVectorList(text, list), each.read);
            EXPECT_EQ(takeVectors(list), each.vectors);
            EXPECT_EQ(takeChain(), each.chain);
            if (each.read) {
                EXPECT_EQ(textOf(text), "");
            }
        });
    }
}

TEST_F(TokenReader, VectorListsAppend) {
    LmDoubleLinkedList list;
    list.append(new std::array<float, 3>{0, 0, 0});
    LmStr text("1 2 3");
    EXPECT_TRUE(readVectorList(text, list));
    EXPECT_EQ(takeVectors(list).size(), 2U);
}

// --- Tokens, words, quotes -----------------------------------------------------------------------

TEST_F(TokenReader, DelimitedTokens) {
    LmStr text("one,two;;three,");
    LmStr token;
    LmStatus own;
    EXPECT_TRUE(readDelimitedToken(text, ",;", token, own));
    EXPECT_STREQ(token.c_str(), "one");
    EXPECT_STREQ(text.c_str(), "two;;three,");
    EXPECT_TRUE(readDelimitedToken(text, ",;", token, own));
    EXPECT_STREQ(token.c_str(), "two");
    EXPECT_STREQ(text.c_str(), ";three,");
    EXPECT_TRUE(readDelimitedToken(text, ",;", token, own));
    EXPECT_STREQ(token.c_str(), "three");
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_THAT(chainOf(own), IsEmpty());
    EXPECT_FALSE(readDelimitedToken(text, ",;", token, own));
    EXPECT_FALSE(token.isNull());
    EXPECT_STREQ(token.c_str(), "");
    EXPECT_THAT(chainOf(own), ElementsAre(error("Expecting token.")));
    EXPECT_FALSE(currentStatus().hasEntries());
    LmStr delimiters(";;,");
    EXPECT_FALSE(readDelimitedToken(delimiters, ",;", token));
    EXPECT_STREQ(token.c_str(), "");
    EXPECT_THAT(takeChain(), ElementsAre(error("Expecting token.")));
    LmStr last("last");
    EXPECT_TRUE(readDelimitedToken(last, ",;", token));
    EXPECT_STREQ(token.c_str(), "last");
}

TEST_F(TokenReader, UpToACharacter) {
    const struct {
        const char* source;
        bool read;
        const char* out;
        const char* rest;
    } cases[] = {{"abc:def", true, "abc", ":def"},
                 {":def", true, "", ":def"},
                 {"a:b:c", true, "a", ":b:c"},
                 {"a b :", true, "a b ", ":"}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            LmStr out;
            EXPECT_TRUE(readUntilChar(text, ':', out));
            EXPECT_STREQ(out.c_str(), each.out);
            EXPECT_EQ(textOf(text), each.rest);
            EXPECT_FALSE(currentStatus().hasEntries());
        });
    }
    LmStr text("abc");
    LmStr out;
    EXPECT_FALSE(readUntilChar(text, '%', out));
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_THAT(takeChain(), ElementsAre(error("'%' expected.")));
}

TEST_F(TokenReader, ExpectedWords) {
    const struct {
        const char* source;
        const char* word;
        bool found;
        const char* rest;
    } cases[] = {
        {"  foo bar", "foo", true, " bar"},
        {"foobar", "foo", true, "bar"},
        {"foo", "foo", true, ""},
        {"\n(", "(", true, ""},
        {"  fo", "foo", false, "fo"},
        {"Foo", "foo", false, "Foo"},
        {"", "foo", false, ""},
        {"  ", "foo", false, ""},
        {"x foo", "foo", false, "x foo"},
        {"x", "%d", false, "x"},
        {"%d", "%d", true, ""},
    };
    for (const auto& each : cases) {
        const StatusChain chain =
            each.found ? none : StatusChain{error("'" + std::string(each.word) + "' expected.")};
        checkReader(each.source, each.rest, chain, [&each](LmStr& text, LmStatus& status) {
            EXPECT_EQ(expect(text, each.word, status), each.found);
        });
    }
}

TEST_F(TokenReader, QuotedTexts) {
    const struct {
        const char* source;
        char quote;
        const char* out;
        const char* rest;
    } cases[] = {
        {R"("a b" rest)", '"', "a b", " rest"},
        {R"(  "a")", '"', "a", ""},
        {R"(""x)", '"', "", "x"},
        {R"(" a ")", '"', " a ", ""},
        {R"("a\"b" rest)", '"', R"(a"b)", " rest"},
        {R"("a\\b")", '"', R"(a\b)", ""},
        {R"("a\\" b")", '"', R"(a\)", R"( b")"},
        {R"("a\\\"b")", '"', R"(a\"b)", ""},
        {R"("a\nb")", '"', R"(a\nb)", ""},
        {R"("a'b")", '"', "a'b", ""},
        {R"('a"b' rest)", '\'', R"(a"b)", " rest"},
        {R"('it\'s')", '\'', "it's", ""},
        {R"('a\"b')", '\'', R"(a\"b)", ""},
        {"\"two\nlines\"", '"', "two\nlines", ""},
        {R"("\\\\")", '"', R"(\\)", ""},
    };
    for (const auto& each : cases) {
        checkReader(each.source, each.rest, none, [&each](LmStr& text, LmStatus& status) {
            LmStr out;
            EXPECT_TRUE(readQuoted(text, each.quote, out, status));
            EXPECT_STREQ(out.c_str(), each.out);
        });
    }
}

TEST_F(TokenReader, QuotedTextsThatFail) {
    const struct {
        const char* source;
        char quote;
        const char* message;
        const char* rest;
    } cases[] = {
        {"abc", '"', "'\"' expected.", "abc"},
        {"  abc", '\'', "''' expected.", "abc"},
        {"", '"', "'\"' expected.", ""},
        {R"("abc)", '"', "No closing '\"' found.", "abc"},
        {"'abc\"", '\'', "No closing ''' found.", "abc\""},
        {R"("abc\")", '"', "No closing '\"' found.", R"(abc\")"},
        {R"("abc\)", '"', "No closing '\"' found.", R"(abc\)"},
        {R"(")", '"', "No closing '\"' found.", ""},
    };
    for (const auto& each : cases) {
        checkReader(each.source, each.rest, {error(each.message)}, [&each](LmStr& text, LmStatus& status) {
            LmStr out;
            EXPECT_FALSE(readQuoted(text, each.quote, out, status));
        });
    }
}

// --- Skipping ------------------------------------------------------------------------------------

TEST_F(TokenReader, SkippingALine) {
    const struct {
        const char* source;
        const char* rest;
    } cases[] = {{"a\nb\nc", "b\nc"}, {"\nb", "b"}, {"abc", ""}, {"", ""}, {"abc\n", ""}, {"a\r\nb", "b"}};
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            skipLine(text);
            ASSERT_FALSE(text.isNull());
            EXPECT_EQ(textOf(text), each.rest);
        });
    }
}

TEST_F(TokenReader, SkippingSpaceAndComments) {
    const struct {
        const char* source;
        bool comments;
        bool stopAtNewline;
        const char* rest;
    } cases[] = {
        {"  x", true, false, "x"},
        {" \n\t x", false, false, "x"},
        {" \n\t x", false, true, "\n\t x"},
        {"  # c\n x", false, false, "# c\n x"},
        {"  # c\n x", true, false, "x"},
        {"# c\n# d\n\n  # e\nx # f", true, false, "x # f"},
        {"# c", true, false, ""},
        {"  # c\n", true, false, ""},
        {"", true, false, ""},
        {"", true, true, ""},
        {"  \n # c\n x", true, true, "\n # c\n x"},
        {"\r\n x", true, true, "\r\n x"},
        {"  # c\n  x", true, true, "x"},
        {"  # c\n\n  x", true, true, "\n  x"},
        {"  # c\n# d\nx", true, true, "x"},
    };
    for (const auto& each : cases) {
        forEachForm(each.source, [&each](LmStr& text) {
            skipSpaceAndComments(text, each.comments, each.stopAtNewline);
            ASSERT_FALSE(text.isNull());
            EXPECT_EQ(textOf(text), each.rest);
        });
    }
    EXPECT_FALSE(currentStatus().hasEntries());
}

} // namespace
} // namespace quillon
