#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "quillon/tool/ProblemSpecWriter.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/RandomSource.h"
#include "tests/support/RoundTrip.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <sstream>

namespace quillon::test {
namespace {

/// A '$' among other letters might begin the name of a variable that is set.
constexpr std::string_view withoutVariables = "abcXYZ019 _.,:;#%*+-/{}[]()\t'\"\\\xE9";

constexpr const char* dataDirectory = "/quillon-test-data";

/// The data directory of these tests, by the name that a process looks for first.
class ProblemSpecRoundTrip : public testing::Test {
protected:
    CleanStatus clean;
    EnvironmentValue host{"RQ_DATA_DIR", std::nullopt};
    EnvironmentValue directory{"DRENK_DATA_DIR", dataDirectory};
    EnvironmentValue older{"KYM_DATA_DIR", std::nullopt};
};

/// Makes specifications that their file gives back: of files that do not exist.
class RandomSpec {
public:
    explicit RandomSpec(RandomSource& source) : random(source) {}

    void fill(LqProblemSpec& spec) {
        for (const LqSpecPath& entry : specPaths) {
            // A specification without a model is not meant to be written.
            if (entry.path == &LqProblemSpec::model || random.oneIn(2)) {
                spec.*entry.path = path().c_str();
            }
        }
        if (!spec.problemDefinition.isNull() && random.oneIn(2)) {
            spec.setMatchBy(LqMatchBy::BodyName);
        }
        for (int i = random.between(0, 4); i > 0; --i) {
            const LmStr userKey = key().c_str();
            spec.userValues[userKey] = text().c_str();
        }
    }

private:
    /// A text that a simple item gives back: no white space at its ends, no backslash at the last.
    std::string text() { return random.name(random.oneIn(20) ? 600 : 40, letters::line); }

    std::string path() {
        switch (random.below(8)) {
        case 0:
            return "";
        case 1:
            return dataDirectory;
        case 2:
            return std::string(dataDirectory) + "/" + random.name(30);
        case 3:
            return "$QUILLON_TEST_UNSET/" + random.name(10);
        default:
            return "p" + random.name(random.oneIn(20) ? 600 : 40, withoutVariables);
        }
    }

    std::string key() {
        static constexpr const char* nearKeywords[] = {"",      "MODELS",    "model", "match",
                                                       "LIMIT", "PROBDEF x", "x {"};
        if (random.oneIn(4)) {
            return random.oneOf(nearKeywords);
        }
        return random.name(30, "abcXYZ019_-. {}$%\"\\\xE9");
    }

    RandomSource& random;
};

TEST_F(ProblemSpecRoundTrip, GeneratedSpecificationsComeBack) {
    forGenerated(10000, [](RandomSource& random) {
        LqProblemSpec spec;
        RandomSpec(random).fill(spec);
        expectRoundTrip(
            spec,
            [](std::ostream& output, const LqProblemSpec& each) { writeProblemSpecStream(each, output); },
            [](std::istream& input, LqProblemSpec& target) {
                readProblemSpecStream(target, input, currentStatus());
            },
            [](const LqProblemSpec& left, const LqProblemSpec& right) { return left == right; });
    });
}

// --- What the file does not hold -----------------------------------------------------------------

class ProblemSpecLosses : public ProblemSpecRoundTrip {
protected:
    ProblemSpecLosses() { spec.model = "m"; }

    /// Writes the specification and reads it into `back`; what the reader says.
    StatusChain readBack() {
        std::stringstream stream;
        writeProblemSpecStream(spec, stream);
        back.userValues.clear();
        readProblemSpecStream(back, stream, currentStatus());
        return takeChain();
    }

    LqProblemSpec spec;
    LqProblemSpec back;
};

TEST_F(ProblemSpecLosses, MatchingByNameNeedsAProblemDefinition) {
    spec.setMatchBy(LqMatchBy::BodyName);
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.matchBy(), LqMatchBy::BodyID);
}

TEST_F(ProblemSpecLosses, TimesAreThoseOfTheFiles) {
    spec.model = "quillon-test-no-such-file";
    spec.modelTime = 5;
    spec.limits = ".";
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.modelTime, 0);
    EXPECT_GT(back.limitsTime, 0);
}

TEST_F(ProblemSpecLosses, PathsLoseWhiteSpaceAtTheirEndsAndCharacterOneHundredAndTwentySeven) {
    spec.model = " a\x7f"
                 "b\t";
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.model, "a$b");
}

TEST_F(ProblemSpecLosses, APathThatOnlyBeginsLikeTheDataDirectoryGetsASlash) {
    spec.model = (std::string(dataDirectory) + "base").c_str();
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.model, (std::string(dataDirectory) + "/base").c_str());
    spec.model = (std::string(dataDirectory) + "//sub").c_str();
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.model, (std::string(dataDirectory) + "/sub").c_str());
    spec.model = (std::string(dataDirectory) + "/").c_str();
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.model, dataDirectory);
}

TEST_F(ProblemSpecLosses, AVariableThatIsSetBecomesItsValue) {
    spec.model = "$DRENK_DATA_DIR/sub";
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.model, (std::string(dataDirectory) + "/sub").c_str());
}

TEST_F(ProblemSpecLosses, UserValuesKeepWhatOneLineKeeps) {
    using UserValues = std::map<LmStr, LmStr>;
    spec.userValues = {{"empty", ""}, {" blanks ", " a\tb "}, {"a:b", "c"}};
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.userValues, (UserValues{{"blanks", "a\tb"}, {"a", "b: c"}}));

    spec.userValues = {{"#remark", "a"}};
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.userValues, UserValues{});

    spec.userValues = {{"a", "x\\"}, {"b", "y"}};
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.userValues, (UserValues{{"a", "x\nb: y"}}));

    spec.userValues = {{"a", "x\ny"}};
    EXPECT_EQ(readBack(), StatusChain{error("No ':' or '{' following tag 'y'.")});
}

TEST_F(ProblemSpecLosses, AUserKeyThatIsAKeywordIsTakenForOne) {
    spec.userValues = {{"LIMITS", "l"}};
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.limits, "l");
    spec.userValues = {{"MODEL", "x"}};
    EXPECT_EQ(readBack(), StatusChain{error("There can only be one MODEL.")});
    spec.userValues = {{"Match", "x"}};
    EXPECT_EQ(readBack(), StatusChain{error("Invalid identifier after Match: encountered.")});
}

} // namespace
} // namespace quillon::test
