#include "quillon/files/VariableExpansion.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/MapEnv.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

using test::MapEnv;

MapEnv sampleEnv() {
    return {{"A", "/a"},   {"SLASHES", "/s//"}, {"EMPTY", ""},     {"NESTED", "$A/n"}, {"ROOT", "/"},
            {"AB", "/ab"}, {"ODD", "$NONE/o"},  {"DEL", "x\x7Fy"}, {"TAIL", "$"},      {"TAILS", "a$/"}};
}

struct ExpansionCase {
    const char* text;
    const char* expected;
    const char* stripped;
};

TEST(ExpandVariables, PutsValuesInThePlacesOfNames) {
    const ExpansionCase cases[] = {
        {"", "", ""},
        {"no reference", "no reference", "no reference"},
        {"$A", "/a", "/a"},
        {"$A/b", "/a/b", "/a/b"},
        {"x$A", "x/a", "x/a"},
        {"$A $A\t$A\f$A\n$A", "/a /a\t/a\f/a\n/a", "/a /a\t/a\f/a\n/a"},
        {"$A/$AB", "/a//ab", "/a//ab"},
        {"$AB/$A", "/ab//a", "/ab//a"},
        {"$A:$A", "$A:/a", "$A:/a"},
        {"$A\r", "$A\r", "$A\r"},
        {"$A\v", "$A\v", "$A\v"},
        {"${A}", "${A}", "${A}"},
        {"$SLASHES/b", "/s///b", "/s/b"},
        {"$ROOT/b", "//b", "/b"},
        {"$EMPTY/b", "/b", "/b"},
        {"$NESTED/b", "/a/n/b", "/a/n/b"},
        {"$NONE/b", "$NONE/b", "$NONE/b"},
        {"$NONE/$A", "$NONE//a", "$NONE//a"},
        {"$NONE/$NONE $A", "$NONE/$NONE /a", "$NONE/$NONE /a"},
        {"$ODD/$A", "$NONE/o//a", "$NONE/o//a"},
        {"$", "$", "$"},
        {"$$", "$$", "$$"},
        {"$$A", "$/a", "$/a"},
        {"$/b", "$/b", "$/b"},
        {"\x7F", "$", "$"},
        {"\x7F"
         "A/$A",
         "$A//a", "$A//a"},
        {"$DEL", "x$y", "x$y"},
        // A value's own "$" joins with what stands behind the reference.
        {"$TAIL", "$", "$"},
        {"$TAIL/$A", "$//a", "$//a"},
        {"$TAILS/b", "a$//b", "a$/b"},
    };
    for (const ExpansionCase& each : cases) {
        MapEnv env = sampleEnv();
        LmStr text = each.text;
        expandVariables(text, env);
        EXPECT_EQ(text, each.expected) << each.text;
        text = each.text;
        expandVariables(text, true, env);
        EXPECT_EQ(text, each.stripped) << each.text;
        EXPECT_EQ(expandedVariables(each.text, env), each.expected) << each.text;
        EXPECT_EQ(expandedVariables(each.text, true, env), each.stripped) << each.text;
    }
}

TEST(ExpandVariables, ANameMayHoldADollarSign) {
    MapEnv env = sampleEnv();
    EXPECT_EQ(expandedVariables("$A$A", env), "$A/a");
    env.values["A$A"] = "joined";
    EXPECT_EQ(expandedVariables("$A$A", env), "joined");
}

TEST(ExpandVariables, ACopyLeavesTheOriginalAlone) {
    MapEnv env = sampleEnv();
    const LmStr original = "$A";
    const LmStr expanded = expandedVariables(original, env);
    EXPECT_EQ(original, "$A");
    EXPECT_EQ(expanded, "/a");
}

TEST(ExpandVariables, StopsAfterAThousandReplacements) {
    MapEnv env = {{"SELF", "$SELF"}, {"GROW", "x/$GROW"}, {"A", "1"}};
    EXPECT_EQ(expandedVariables("$SELF/b", env), "$SELF/b");
    LmStr grown = "";
    for (int i = 0; i < 1000; ++i) {
        grown += "x/";
    }
    EXPECT_EQ(expandedVariables("$GROW $A", env), grown + "$GROW $A");
}

TEST(ExpandVariables, ReplacesAThousandReferencesOfALongText) {
    MapEnv env = {{"A", "1"}};
    LmStr text = "";
    LmStr expected = "";
    for (int i = 0; i < 1001; ++i) {
        text += "$A $NONE ";
        expected += i < 1000 ? "1 $NONE " : "$A $NONE ";
    }
    EXPECT_EQ(expandedVariables(text, env), expected);
}

// The names of several references end at one place, until a value moves it.
TEST(ExpandVariables, GoesOnInTheNameOfAnUnsetVariable) {
    test::MapEnv env{{"B", "one/two"}, {"C", "$B"}};
    EXPECT_EQ(expandedVariables(LmStr("$A$B"), env), "$Aone/two");
    EXPECT_EQ(expandedVariables(LmStr("$A$B/$A$C/$B"), env), "$Aone/two/$Aone/two/one/two");
    EXPECT_EQ(expandedVariables(LmStr("$$B $$"), env), "$one/two $$");
}

// Behind each "$" all the rest is a name: a square of the length would take hours.
TEST(ExpandVariables, OfAnyNumberOfDollarSignsTakesTimeAsTheTextIsLong) {
    const std::string dollars(3'000'000, '$');
    EXPECT_EQ(expandedVariables(LmStr(std::string_view(dollars)), true), dollars.c_str());
}

TEST(ExpandVariables, AsksTheProcessByDefault) {
    const auto result = support::runFunction([] {
        setenv("QUILLON_A", "/a/", 1);
        LmStr text = "$QUILLON_A/b";
        LmStr stripped = text;
        expandVariables(text);
        expandVariables(stripped, true);
        std::cout << text << ' ' << stripped << ' ' << expandedVariables("$QUILLON_A") << ' '
                  << expandedVariables("$QUILLON_A", true);
    });
    EXPECT_EQ(result.out, "/a//b /a/b /a/ /a");
}

TEST(ExpandVariables, OfANullTextEndsTheProcess) {
    EXPECT_EQ(support::runFunction([] {
                  LmStr text;
                  expandVariables(text);
              }).outcome,
              "SIGSEGV");
}

struct AbbreviationCase {
    const char* value; ///< null for an unset variable
    const char* path;
    const char* expected; ///< null for a path that stays
};

TEST(AbbreviateWithVariable, PutsTheNameInThePlaceOfTheValue) {
    const AbbreviationCase cases[] = {
        {"/data", "/data/a/b", "$V/a/b"},
        {"/data/", "/data/a", "$V/a"},
        {"/data//", "/data///a", "$V/a"},
        {"/data", "/data", "$V"},
        {"/data", "/data/", "$V"},
        {"/data/", "/data", "$V"},
        {"/data", "/database", "$V/base"},
        {"/", "/a", "$V/a"},
        {"/data", "/dat", nullptr},
        {"/data", "/other/data", nullptr},
        {"/data", "", nullptr},
        {"", "/a", nullptr},
        {"/data", "/data/$V/a", "$V/$V/a"},
        {"/Data", "/data", nullptr},
        {"//", "/a", "$V/a"},
        // A value of slashes alone is cut to nothing, with which every path begins.
        {"/", "a/b", "$V/a/b"},
        {"/", "", "$V"},
        {"/", "//", "$V"},
        {nullptr, "/a", nullptr},
    };
    for (const AbbreviationCase& each : cases) {
        MapEnv env = {};
        if (each.value != nullptr) {
            env.setEnv("V", each.value);
        }
        LmStr path = each.path;
        EXPECT_EQ(abbreviateWithVariable(path, "V", env), each.expected != nullptr) << each.path;
        EXPECT_EQ(path, each.expected != nullptr ? each.expected : each.path) << each.path;
    }
}

TEST(AbbreviateWithVariable, IsUndoneByExpansion) {
    MapEnv env = {{"V", "/data/x/"}};
    for (const char* const original :
         {"/data/x", "/data/x/a", "/data/x/a b/c.zvx", "relative/x", "/data/y"}) {
        LmStr path = original;
        abbreviateWithVariable(path, "V", env);
        expandVariables(path, true, env);
        EXPECT_EQ(path, original);
    }
}

TEST(AbbreviateWithVariable, AsksTheProcessByDefault) {
    const auto result = support::runFunction([] {
        setenv("QUILLON_A", "/a", 1);
        LmStr path = "/a/b";
        std::cout << abbreviateWithVariable(path, "QUILLON_A") << path;
    });
    EXPECT_EQ(result.out, "1$QUILLON_A/b");
}

} // namespace
} // namespace quillon
