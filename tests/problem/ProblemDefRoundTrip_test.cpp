#include "quillon/problem/LqProblemDefData.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/RandomProblemDef.h"
#include "tests/support/RoundTrip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace quillon::test {
namespace {

void expectDefinitionRoundTrip(const LqProblemDefData& data) {
    expectRoundTrip(
        data, [](std::ostream& output, const LqProblemDefData& each) { each.writeProblemDefStream(output); },
        [](std::istream& input, LqProblemDefData& target) { target.readProblemDefStream(input, false); },
        [](const LqProblemDefData& left, const LqProblemDefData& right) { return equals(left, right); });
}

TEST(ProblemDefRoundTrip, GeneratedDefinitionsComeBack) {
    const CleanStatus clean;
    forGenerated(10000, [](RandomSource& random) {
        LqProblemDefData data;
        fillRandomly(data, random, {.isConsistent = random.oneIn(3), .hasIncludes = true, .mostMarkers = 3});
        expectDefinitionRoundTrip(data);
    });
}

TEST(ProblemDefRoundTrip, LongSectionsComeBack) {
    const CleanStatus clean;
    forGenerated(20, [](RandomSource& random) {
        LqProblemDefData data;
        fillRandomly(data, random, {.mostSysVars = 300, .mostBodies = 120, .mostMarkers = 300});
        expectDefinitionRoundTrip(data);
    });
}

// --- What the file does not hold -----------------------------------------------------------------

/// A definition as it comes back from its file, and what its reader said.
struct ReadBack {
    explicit ReadBack(const LqProblemDefData& source) {
        std::stringstream stream;
        source.writeProblemDefStream(stream);
        data.readProblemDefStream(stream, false);
        chain = takeChain();
    }

    LqProblemDefData data;
    StatusChain chain;
};

constexpr const char* twentyLetters = "ABCDEFGHIJKLMNOPQRST";

/// One body, with a name that fills its columns.
class ProblemDefLosses : public testing::Test {
protected:
    ProblemDefLosses() { data.addBody(twentyLetters, "Root", 7); }
    LqPDDBodyMap& body() { return *data.bodies[0]; }

    CleanStatus clean;
    LqProblemDefData data;
};

TEST_F(ProblemDefLosses, ATypeWhoseLinesAreNotWrittenTakesThoseOfTheNextSections) {
    const StatusLine oneLineMissing = error("Unable to read number of artificial markers.");
    const StatusLine twoLinesMissing = error("Unable to read number of Double markers.");
    const std::pair<int, StatusLine> cases[] = {
        {2, oneLineMissing},  {3, twoLinesMissing},  {5, oneLineMissing},  {6, oneLineMissing},
        {7, twoLinesMissing}, {-1, twoLinesMissing}, {-2, oneLineMissing}, {-3, oneLineMissing},
    };
    for (const auto& [type, expected] : cases) {
        body().type = type;
        EXPECT_EQ(ReadBack(data).chain, StatusChain{expected}) << "type " << type;
    }
}

TEST_F(ProblemDefLosses, ATypeOfFourDigitsTouchesTheNumberInFrontOfIt) {
    body().type = 1000;
    // The type is then the first entry of the order, and the order begins with the mappings.
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{error("Unable to read transformation order for body ABCDEFGHIJKLMNOPQRST."),
                           error("Invalid transformation 0 specified in transformation order.")}));
    body().type = -1000;
    const ReadBack back(data);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_TRUE(equals(back.data, data));
}

TEST_F(ProblemDefLosses, TypeVariablesWithoutTheirTypeComeBackAsZero) {
    body().typeTwoVar = 5;
    const ReadBack withoutTypeTwo(data);
    EXPECT_EQ(withoutTypeTwo.data.bodies[0]->typeTwoVar, 0);
    EXPECT_TRUE(equals(withoutTypeTwo.data, data)) << "this variable is not compared";
    body().typeOneVar = 5;
    const ReadBack withoutTypeOne(data);
    EXPECT_EQ(withoutTypeOne.data.bodies[0]->typeOneVar, 0);
    EXPECT_FALSE(equals(withoutTypeOne.data, data));
    EXPECT_EQ(withoutTypeOne.chain, StatusChain{});
}

TEST_F(ProblemDefLosses, GlobalDirectionMarkersAreInNoFile) {
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(1, 1, twentyLetters));
    const ReadBack back(data);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_EQ(back.data.globalDirectionMarkers.count(), 0);
    EXPECT_TRUE(equals(back.data, data)) << "these markers are not compared";
}

TEST_F(ProblemDefLosses, AConstantThatDoesNotCountIsLost) {
    addSysVar(data, 1, "Hips X");
    body().mappings[0].id = 1;
    body().mappings[0].constant = 5;
    body().mappings[1].constant = 6;
    const ReadBack back(data);
    EXPECT_EQ(back.data.bodies[0]->mappings[0].constant, 0);
    EXPECT_EQ(back.data.bodies[0]->mappings[1].constant, 0);
    EXPECT_TRUE(equals(back.data, data)) << "it is not compared";
}

TEST_F(ProblemDefLosses, RealsThatAreTooSmallForTheirDecimalsBecomeZero) {
    addSysVar(data, 1, "Hips X");
    body().mappings[0] = combination(4.9e-7F, {{1, -4.9e-7F}, {1, 5.1e-7F}});
    addFixMarker(data, LqPDDFixMarker(1, 0.00049F, twentyLetters));
    const ReadBack back(data);
    const LqBasicVarMapping<float>& mapping = back.data.bodies[0]->mappings[0];
    EXPECT_EQ(mapping.constant, 0);
    EXPECT_EQ(termsOf(mapping), (std::vector<std::pair<int, float>>{{1, 0.0F}, {1, 1e-6F}}));
    EXPECT_EQ(back.data.fixMarkers[0]->weight, 0);
}

TEST_F(ProblemDefLosses, ARealThatIsNoNumberCannotBeReadBack) {
    for (const float value : {HUGE_VALF, -HUGE_VALF, std::numeric_limits<float>::quiet_NaN()}) {
        body().mappings[0] = constantMapping(value);
        EXPECT_EQ(ReadBack(data).chain,
                  (StatusChain{error("Unable to read transformation 1 for body ABCDEFGHIJKLMNOPQRST."),
                               error("Unable to constant for mapping.")}));
        LqProblemDefData markers;
        addFixMarker(markers, LqPDDFixMarker(1, value, "Root"));
        EXPECT_EQ(ReadBack(markers).chain, StatusChain{error("Unable to read Fix marker ID and weight.")});
    }
}

TEST_F(ProblemDefLosses, AMappingMustStayBelowTheNumberOfVariables) {
    addSysVar(data, 100, "Hips X");
    const StatusLine forBody = error("Unable to read transformation 1 for body ABCDEFGHIJKLMNOPQRST.");
    body().mappings[0].id = 100;
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{forBody, error("Invalid system variable (100) specified for transformation.  "
                                          "The highest system variable is 1.")}));
    body().mappings[0] = combination(0, {{1, 1.0F}, {0, 1.0F}});
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{forBody, error("Unable to read linear combination term 2."),
                           error("Invalid system variable (0) in linear combination term.")}));
}

TEST_F(ProblemDefLosses, AnOrderThatWasNeverSetCannotBeReadBack) {
    body().transformOrder[5] = 0;
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{error("Unable to read transformation order for body ABCDEFGHIJKLMNOPQRST."),
                           error("Invalid transformation 0 specified in transformation order.")}));
}

TEST_F(ProblemDefLosses, ABodyNameLosesTheWhiteSpaceAtItsEnds) {
    for (const char* const name : {" Arm", "Arm\t", "  Arm \r", "                      Arm"}) {
        body().name = name;
        const ReadBack back(data);
        EXPECT_EQ(back.chain, StatusChain{});
        EXPECT_EQ(namesOf(back.data.bodies), std::vector<std::string>{"Arm"});
    }
}

TEST_F(ProblemDefLosses, ABodyNeedsTwoNamesAndOneOfItsOwn) {
    body().name = "";
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Body with ID 7 has no name.")});
    body().name = LmStr();
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Body with ID 7 has no name.")});
    body().name = "Arm";
    body().parentName = "  ";
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Body with ID 7 has no parent name.")});
    body().parentName = "Root";
    data.addBody("Arm ", "Root", 8);
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Multiple bodies are named \"Arm\".")});
}

TEST_F(ProblemDefLosses, QuotesInFrontOfANameOrInsideALongOneAreTakenForItsOwn) {
    const StatusLine noName = error("Unable to read body name.");
    body().name = "\"Arm";
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{noName, error("Name has an opening quote but no closing quote.")}));
    body().name = "ABCDEFGHIJ\"KLMNOPQRST";
    EXPECT_EQ(ReadBack(data).chain,
              (StatusChain{noName, error("No space after closing quote around body name ABCDEFGHIJ.\n")}));
    // A blank behind the quote ends the name, and what is left of it fills the columns of the parent.
    body().name = "ABCDEFGHIJ\" KLMNOPQRST";
    const ReadBack back(data);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_EQ(back.data.bodies[0]->name, "ABCDEFGHIJ");
    EXPECT_EQ(back.data.bodies[0]->parentName, "KLMNOPQRST\" Root");
}

TEST_F(ProblemDefLosses, ANewlineEndsANameAndTheRestIsTakenForWhatFollows) {
    body().name = "Left\nArm";
    const ReadBack back(data);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_EQ(back.data.bodies[0]->name, "Left");
    EXPECT_EQ(back.data.bodies[0]->parentName, "Arm            Root");
    body().name = "ABCDEFGHIJKLMNOPQRST\nU";
    EXPECT_EQ(ReadBack(data).chain, (StatusChain{error("Unable to read body name."),
                                                 error("Name has an opening quote but no closing quote.")}));
}

TEST_F(ProblemDefLosses, ANewlineInAMarkersBodyIsLostWhereTheRestOfTheRowIsSkipped) {
    LqProblemDefData real;
    real.addRealMarker(LqPDDRealMarker(1, 0, 1, "Left\nArm"));
    EXPECT_EQ(ReadBack(real).chain, StatusChain{error("Unable to read number of Fix markers.")});

    LqProblemDefData others;
    addFixMarker(others, LqPDDFixMarker(1, 1, "Left\nArm"));
    addDoubleMarker(others, LqPDDDoubleMarker(2, 3, 1, "Left\nArm"));
    // Here the columns in front of the second name are skipped, whatever they hold.
    others.addArtificialMarker(LqPDDArtificialMarker(4, 5, 1, "Left\nArm", "Elbow"));
    const ReadBack back(others);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_EQ(back.data.fixMarkers[0]->bodyName, "Left");
    EXPECT_EQ(back.data.doubleMarkers[0]->bodyName, "Left");
    EXPECT_EQ(back.data.artificialMarkers[0]->bodyName, "Left");
    EXPECT_EQ(back.data.artificialMarkers[0]->otherBodyName, "Elbow");
}

TEST_F(ProblemDefLosses, ADescriptionLosesTheWhiteSpaceAtItsEndsAndHasRoomForSeventyFiveCharacters) {
    addSysVar(data, 1, " Hips\tX ");
    addSysVar(data, 2, std::string(75, 'x').c_str());
    const ReadBack back(data);
    EXPECT_EQ(back.chain, StatusChain{});
    EXPECT_EQ(back.data.sysVars[0]->description, "Hips\tX");
    EXPECT_EQ(back.data.sysVars[1]->description.length(), 75);
    data.sysVars[1]->description = std::string(76, 'x').c_str();
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Unable to read system variable description.")});
    data.sysVars[1]->description = "Hips\nX";
    EXPECT_EQ(ReadBack(data).chain, StatusChain{error("Unable to read number of bodies.")});
}

} // namespace
} // namespace quillon::test
