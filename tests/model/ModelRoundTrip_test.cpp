#include "quillon/model/LqBodyDefData.h"
#include "tests/model/ModelText.h"
#include "tests/support/RandomModel.h"
#include "tests/support/RandomProblemDef.h"
#include "tests/support/RoundTrip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace quillon::test {
namespace {

/// Beyond what models compare: matrices to the last bit, and the number of cameras.
bool sameInAll(const LqBodyDefData& left, const LqBodyDefData& right) {
    return left.equals(right) && left.cameraCount == right.cameraCount &&
           std::equal(left.bodies.begin(), left.bodies.end(), right.bodies.begin(),
                      [](const LqBDBody* one, const LqBDBody* other) {
                          return one->baseTransform == other->baseTransform;
                      });
}

void expectModelRoundTrip(const LqBodyDefData& model, const LqProblemDefData& definition) {
    expectRoundTrip(
        model,
        [&](std::ostream& output, const LqBodyDefData& each) { each.writeModelStream(output, definition); },
        [&](std::istream& input, LqBodyDefData& target) { target.readModelSections(input, definition, ""); },
        sameInAll);
}

TEST(ModelRoundTrip, GeneratedModelsComeBack) {
    const CleanStatus clean;
    forGenerated(10000, [](RandomSource& random) {
        const bool isConsistent = random.oneIn(3);
        LqProblemDefData definition;
        fillRandomly(definition, random, {.isConsistent = isConsistent, .mostBodies = 4, .mostMarkers = 3});
        for (LqPDDBodyMap* body : definition.bodies) {
            // The model knows lines for all types, unlike the file of the definition.
            body->type = random.between(-4, 3);
        }
        LqBodyDefData model;
        fillRandomly(model, random, definition,
                     {.isConsistent = isConsistent, .hasIncludes = true, .mostMarkers = 3});
        expectModelRoundTrip(model, definition);
    });
}

TEST(ModelRoundTrip, LongSectionsComeBack) {
    const CleanStatus clean;
    forGenerated(10, [](RandomSource& random) {
        LqProblemDefData definition;
        fillRandomly(definition, random, {.isConsistent = true, .mostBodies = 300, .mostMarkers = 500});
        LqBodyDefData model;
        fillRandomly(model, random, definition, {.isConsistent = true});
        expectModelRoundTrip(model, definition);
    });
}

// --- What the file does not hold -----------------------------------------------------------------

/// A definition with the bodies "Twist" of type 1, "Both" of type 3, "Slide" of type 2 and "Plain" of type 0.
class ModelLosses : public testing::Test {
protected:
    ModelLosses() { addBodies(definition, {{"Twist", 1}, {"Both", 3}, {"Slide", 2}, {"Plain", 0}}); }

    LqBDBody& addBody(const char* name) {
        LqBDBody body;
        body.name = name;
        body.vectorLength = 2;
        body.vectorDirection = {1, 2, 3};
        model.addBody(body);
        return *model.bodies[model.bodies.count() - 1];
    }

    /// Writes the model and reads it into `back`; what the reader says.
    StatusChain readBack() {
        std::stringstream stream;
        model.writeModelStream(stream, definition);
        back = LqBodyDefData();
        back.readModelSections(stream, definition, "");
        return takeChain();
    }

    CleanStatus clean;
    LqProblemDefData definition;
    LqBodyDefData model;
    LqBodyDefData back;
};

TEST_F(ModelLosses, ALengthOfZeroIsRefusedForABodyOfTypeOne) {
    for (const char* const name : {"Twist", "Both"}) {
        model.clear();
        addBody(name).vectorLength = 0;
        EXPECT_EQ(readBack(),
                  StatusChain{error("Body '" + std::string(name) + "' has a zero type one vector length.")});
    }
    model.clear();
    addBody("Slide").vectorLength = 0;
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_TRUE(back.equals(model));
}

TEST_F(ModelLosses, AVectorThatTheTypeDoesNotAskForComesBackAsZero) {
    addBody("Slide");
    addBody("Plain");
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(linesOf(back),
              (std::vector<std::string>{
                  "cameras 0", "body Slide [1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1] length 0 direction 1 2 3",
                  "body Plain [1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1] length 0 direction 0 0 0"}));
}

TEST_F(ModelLosses, ABodyThatTheDefinitionLacksCannotBeReadBack) {
    addBody("Arm");
    EXPECT_EQ(readBack(), StatusChain{error("The base matrix for body 'Arm' is given, but there is no such "
                                            "body in the problem definition.")});
    // The writer alone takes names without regard to case.
    model.clear();
    addBody("TWIST");
    EXPECT_EQ(readBack(), StatusChain{error("The base matrix for body 'TWIST' is given, but there is no such "
                                            "body in the problem definition.")});
}

TEST_F(ModelLosses, OfTwoBodiesThatDifferInCaseTheFirstSaysWhatIsWrittenForBoth) {
    addBodies(definition, {{"PLAIN", 1}});
    addBody("PLAIN");
    // Without lines of its own the body takes the count of real markers for its length,
    EXPECT_EQ(readBack(), StatusChain{error("Body 'PLAIN' has a zero type one vector length.")});
    // and the row of the first one for its direction; each count is then that of the next section.
    model.addRealMarker({7, {1, 2, 3}});
    EXPECT_EQ(readBack(), StatusChain{error("Unable to read number of artificial markers.")});
}

TEST_F(ModelLosses, TheFourthColumnOfAMatrixAndWhatIsBeyondSixDecimalsAreLost) {
    addBody("Plain").baseTransform = {1.00000049F, 0, 0, 9, 0, 1e-7F, 0, 9, 0, 0, 1, 9, 12.3456789F, 0, 0, 9};
    EXPECT_EQ(readBack(), StatusChain{});
    const LmMat4 expected = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 12.345679F, 0, 0, 1};
    EXPECT_EQ(back.bodies[0]->baseTransform, expected);
}

TEST_F(ModelLosses, WhatIsBeyondSixDigitsIsLostAndBeyondTwoWithoutBodies) {
    model.addRealMarker({1, {1.2345678F, 1234567, -1.2345678e-20F}});
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.realMarkers[0]->position, (LmVec3{1.2F, 1.2e6F, -1.2e-20F}));
    addBody("Twist").vectorLength = 7654321;
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.realMarkers[0]->position, (LmVec3{1.23457F, 1.23457e6F, -1.23457e-20F}));
    EXPECT_EQ(back.bodies[0]->vectorLength, 7.65432e6F);
}

TEST_F(ModelLosses, ARealThatIsNoNumberCannotBeReadBack) {
    for (const float value : {HUGE_VALF, -HUGE_VALF, std::numeric_limits<float>::quiet_NaN()}) {
        model.clear();
        model.fixMarkers.append(new LqBDMarker{1, {0, value, 0}});
        EXPECT_EQ(readBack(), StatusChain{error("Unable to read fixed marker position.")});
        addBody("Plain").baseTransform[8] = value;
        EXPECT_EQ(readBack(), StatusChain{error("Unable to read transformation row 1 for 'Plain'.")});
    }
}

TEST_F(ModelLosses, AnArtificialPointWithoutAPartnerIsNotCounted) {
    for (const int id : {1, 2, 3}) {
        model.artificialMarkers.append(new LqBDMarker{id, {}});
    }
    std::ostringstream output;
    model.writeModelStream(output, definition);
    const std::string text = output.str();
    EXPECT_EQ(text.substr(text.find("1    ; # of artificial pairs\n")),
              "1    ; # of artificial pairs\n  1   0   0   0\n  2   0   0   0\n  3   0   0   0\n");
}

TEST_F(ModelLosses, GlobalDirectionMarkersAndTheSettingsOfTheObjectAreInNoFile) {
    model.addGlobalDirectionMarker({1, {}});
    model.strictMatch = false;
    model.problemDef = &definition;
    addBody("Plain").reserved = 5;
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(back.globalDirectionMarkers.count(), 0);
    EXPECT_TRUE(back.strictMatch);
    EXPECT_EQ(back.problemDef, nullptr);
    EXPECT_EQ(back.bodies[0]->reserved, 1);
}

TEST_F(ModelLosses, ANameLosesTheWhiteSpaceAtItsEndsAndANewlineEndsIt) {
    addBodies(definition, {{"Left", 0}});
    addBody("\t Plain  \r");
    EXPECT_EQ(readBack(), StatusChain{});
    EXPECT_EQ(bodyNamesOf(back), std::vector<std::string>{"Plain"});
    model.clear();
    addBody("Left\nArm");
    EXPECT_EQ(readBack(), StatusChain{error("Unable to read transformation row 1 for 'Left'.")});
}

} // namespace
} // namespace quillon::test
