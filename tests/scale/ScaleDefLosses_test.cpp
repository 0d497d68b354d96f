// What a scale definition file does not hold, or not as it was given.

#include "tests/scale/WrittenScaleDef.h"

#include <gmock/gmock.h>

#include <cmath>
#include <string>

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using test::error;
using test::literal;
using test::notANumber;
using test::StatusChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

class ScaleDefLosses : public test::WrittenScaleDef {
protected:
    /// Writes the definition and reads it into `back`; what the reader says.
    StatusChain readBack() {
        back = LqScaleDefData();
        return chainOfReadingBack(back);
    }

    /// Writes the definition, reads it back, and starts with an empty one again.
    StatusChain readBackAndClear() {
        StatusChain chain = readBack();
        definition = LqScaleDefData();
        return chain;
    }

    LqScaleDefData back;
};

// --- Sections and markers ------------------------------------------------------------------------

TEST_F(ScaleDefLosses, ADefinitionWithoutLimitOverridesIsRefused) {
    std::istringstream input(written());
    EXPECT_FALSE(back.read(input, problemDef, true));
    EXPECT_THAT(test::takeChain(), ElementsAre(error("No LIMIT_ADJUSTMENTS' section.")));
}

TEST_F(ScaleDefLosses, ANegativeRealCountComesBackAsZero) {
    definition.realCount = -3;
    EXPECT_THAT(readBack(),
                ElementsAre(warning("'REAL_COUNT' was less than zero.  Value is now set to zero.")));
    EXPECT_EQ(back.realCount, 0);
}

TEST_F(ScaleDefLosses, WeightsOfMarkersOnTheWrongSideOfTheRealCountAreRefused) {
    definition.realWeightOverrides.append({1, 1});
    EXPECT_THAT(readBackAndClear(),
                ElementsAre(error("Invalid real marker id (1) specified for weight override.")));
    definition.realCount = 2;
    definition.artificialWeightOverrides.append({3, 2, 1});
    EXPECT_THAT(readBackAndClear(),
                ElementsAre(error("Invalid artificial marker id (2) specified for weight override.")));
}

// --- Numbers -------------------------------------------------------------------------------------

TEST_F(ScaleDefLosses, DigitsBehindTheSixthAreLost) {
    definition.defaultRealWeight = 1.2345678F;
    definition.limitOverrides.append(test::limit(3, -1234567, 0.12345678F));
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.defaultRealWeight, 1.23457F);
    EXPECT_EQ(back.limitOverrides[0], test::limit(3, -1.23457e6F, 0.123457F));
}

TEST_F(ScaleDefLosses, AnInfiniteLimitOnTheOtherSideLosesItsInfinity) {
    definition.limitOverrides.append(test::limit(3, noUpperLimit, noLowerLimit));
    definition.limitOverrides.append(test::limit(4, noLowerLimit, noUpperLimit));
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.limitOverrides[0], test::limit(3, 3.40282e38F, -3.40282e38F));
    EXPECT_EQ(back.limitOverrides[1], definition.limitOverrides[1]);
}

TEST_F(ScaleDefLosses, ARealThatIsNoNumberIsRefused) {
    for (const float value : {HUGE_VALF, -HUGE_VALF, notANumber}) {
        definition.defaultRealWeight = value;
        EXPECT_THAT(readBackAndClear(), ElementsAre(error("Error reading real weight.")));
        definition.limitOverrides.append({3, literal(0), test::offsetForm(1, value)});
        EXPECT_THAT(readBackAndClear(), ElementsAre(error("Error reading measured constant offset.")));
    }
}

TEST_F(ScaleDefLosses, AnOffsetHidesTheFactorOfAReference) {
    definition.scaleVars.append({"height", LmStr(), {2, 3, 1}, {2, 0, 1}});
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.scaleVars[0].lower, test::offsetForm(1, 3));
    EXPECT_EQ(back.scaleVars[0].upper, test::scaleForm(1, 2));
}

TEST_F(ScaleDefLosses, AnOffsetWithoutAMeasuredConstantIsLost) {
    definition.scaleVars.append({"height", LmStr(), {2, 3, 0}, literal(4)});
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.scaleVars[0].lower, literal(2));
}

TEST_F(ScaleDefLosses, AMeasuredConstantBelowTheFirstIsRefused) {
    definition.scaleVars.append({"height", LmStr(), test::scaleForm(-1, 2), literal(4)});
    EXPECT_THAT(readBack(), ElementsAre(error("Invalid measured constant -1.")));
}

// --- References to the problem definition --------------------------------------------------------

TEST_F(ScaleDefLosses, ALimitOfAnUnknownVariableIsRefused) {
    definition.limitOverrides.append(test::limit(17));
    EXPECT_THAT(readBack(), ElementsAre(error("Variable '' is not in the problem definition.")));
}

TEST_F(ScaleDefLosses, ASecondLimitOfAVariableIsRefused) {
    definition.limitOverrides.append(test::limit(3));
    definition.limitOverrides.append(test::limit(3));
    EXPECT_THAT(readBack(),
                ElementsAre(error("There are multiple limit adjustments for variable 3 (knee_x).")));
}

TEST_F(ScaleDefLosses, OfTwoVariablesWithOneNameTheFirstComesBack) {
    problemDef.sysVars.append(new LqPDDSysVar(5, "knee_x"));
    definition.limitOverrides.append(test::limit(5));
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.limitOverrides[0], test::limit(3));
}

TEST_F(ScaleDefLosses, ANameOfAVariableWithAQuoteEndsThere) {
    problemDef.sysVars.append(new LqPDDSysVar(5, "knee\"x"));
    definition.limitOverrides.append(test::limit(5));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("Variable 'knee' is not in the problem definition.")));
    definition.sysVarGuideOverrides.append({5, 1, 2});
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("Variable 'knee' is not in the problem definition.")));
}

TEST_F(ScaleDefLosses, AGuideOfAnUnknownVariableIsLeftOut) {
    definition.sysVarGuideOverrides.append({17, 1, 2});
    testing::internal::CaptureStderr();
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No description found for sysvar 17\n");
    EXPECT_EQ(back.sysVarGuideOverrides.count(), 0);
}

TEST_F(ScaleDefLosses, UnknownBodiesAreDroppedOrRefused) {
    definition.bodyParams.append(test::scaledBody("arm"));
    EXPECT_THAT(readBackAndClear(),
                ElementsAre(warning("Body 'arm' is being scaled by the scaling definition, but it is not in "
                                    "the problem definition.  This body will be ignored.")));
    EXPECT_EQ(back.bodyParams.count(), 0);
    definition.positionConstraints.append(test::positionConstraint("arm"));
    EXPECT_THAT(
        readBackAndClear(),
        ElementsAre(warning("Body 'arm' has a POSITION_CONSTRAINT in the scaling definition, but that body "
                            "is not in the problem definition.  This constraint will be ignored.")));
    EXPECT_EQ(back.positionConstraints.count(), 0);
    definition.globalConstraints.append(test::globalConstraint("arm"));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("A global constraint was specified for body arm, but "
                                                      "this body is not in the problem definition.")));
    definition.temps.append(test::temp(4, "thigh", "arm"));
    EXPECT_THAT(
        readBackAndClear(),
        ElementsAre(error("Temp 4 is relative to body arm, which is not in the problem definition.")));
}

// --- Names ---------------------------------------------------------------------------------------

TEST_F(ScaleDefLosses, ABlankEndsTheNameOfAScalingVariable) {
    definition.scaleVars.append(test::scaleVar("arm width"));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("Error reading scaling variable lower limit.")));
    // What follows is taken for the limits, and the upper limit for the description.
    definition.scaleVars.append({"arm 5", LmStr(), literal(0), literal(1)});
    EXPECT_THAT(readBackAndClear(), IsEmpty());
    EXPECT_EQ(back.scaleVars[0], (scaleDef::ScaleVar{"arm", "1", literal(5), literal(0)}));
}

TEST_F(ScaleDefLosses, AMappingTakesANameThatIsANumberBelow1ForAForm) {
    for (const char* name : {"0", "-1"}) {
        definition.scaleVars.append(test::scaleVar(name));
    }
    definition.bodyParams.append(test::scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 1;
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.bodyParams[0].scale[0].id, 0);
    // "-1" takes the "0" behind it for its constant, and nothing is left for the third axis.
    definition.bodyParams[0].scale[0].id = 2;
    EXPECT_THAT(readBack(), ElementsAre(error("Unable to read BODY_SCALINGS."),
                                        error("Error reading third scale variable for body thigh (#1).")));
}

TEST_F(ScaleDefLosses, AMappingOnAVariableThatIsNotThereIsRefused) {
    definition.bodyParams.append(test::scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 5;
    EXPECT_THAT(
        readBack(),
        ElementsAre(
            error("Unable to read BODY_SCALINGS."),
            error("Invalid scaling variable '5' used for first scale variable for body thigh (#1).")));
}

TEST_F(ScaleDefLosses, TwoVariablesOfOneNameAreRefused) {
    definition.scaleVars.append(test::scaleVar("height"));
    definition.scaleVars.append(test::scaleVar("height"));
    EXPECT_THAT(readBack(), ElementsAre(error("Duplicate scaling variable name: 'height'\n")));
}

TEST_F(ScaleDefLosses, ADescriptionEndsAtAQuoteAndAnEmptyOneIsNone) {
    definition.scaleVars.append(test::scaleVar("height", "the \"real\" height"));
    definition.scaleVars.append(test::scaleVar("width", ""));
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.scaleVars[0].description, "the ");
    EXPECT_TRUE(back.scaleVars[1].description.isNull());
}

TEST_F(ScaleDefLosses, ANewlineInADescriptionIsRefused) {
    definition.scaleVars.append(test::scaleVar("height", "two\nlines"));
    EXPECT_THAT(readBack(), ElementsAre(error("Hit end of line in string reading description for scaling "
                                              "variable height")));
}

TEST_F(ScaleDefLosses, ABlankEndsTheNameOfABodyOutsideOfPositionConstraints) {
    problemDef.addBody("left foot", "thigh", 3);
    definition.positionConstraints.append(test::positionConstraint("left foot"));
    EXPECT_THAT(readBackAndClear(), IsEmpty());
    EXPECT_EQ(back.positionConstraints[0].body, "left foot");
    definition.bodyParams.append(test::scaledBody("left foot"));
    EXPECT_THAT(readBackAndClear(),
                ElementsAre(warning("Body 'left' is being scaled by the scaling definition, but it is not in "
                                    "the problem definition.  This body will be ignored.")));
    definition.globalConstraints.append(test::globalConstraint("left foot"));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("A global constraint was specified for body left, but "
                                                      "this body is not in the problem definition.")));
    definition.temps.append(test::temp(4, "left foot", "left foot"));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("Temp 4 is attached to body left, which is not in the "
                                                      "problem definition.")));
}

TEST_F(ScaleDefLosses, ASlashInTheBodyOfATempDividesIt) {
    problemDef.addBody("pelvis/thigh", "thigh", 3);
    definition.temps.append(test::temp(4, "pelvis/thigh", "pelvis/thigh"));
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.temps[0], test::temp(4, "thigh", "pelvis"));
}

TEST_F(ScaleDefLosses, TwoTempsOfOneIdAreRefused) {
    definition.temps.append(test::temp(4));
    definition.temps.append(test::temp(4));
    EXPECT_THAT(readBack(), ElementsAre(error("Multiple temp markers with id 4")));
}

// --- Poses and constraints -----------------------------------------------------------------------

TEST_F(ScaleDefLosses, ThePosesNameLosesTheBlanksAtItsEndsAndMayNotBeEmpty) {
    test::addPose(definition, " at rest\t");
    EXPECT_THAT(readBackAndClear(), IsEmpty());
    EXPECT_EQ(back.poses[0]->name, "at rest");
    test::addPose(definition, "");
    EXPECT_THAT(readBackAndClear(),
                ElementsAre(error("Unable to read POSE #1."), error("A pose was specified with no name.\n")));
}

TEST_F(ScaleDefLosses, ANullPoseIsLost) {
    definition.poses.append(nullptr);
    test::addPose(definition, "standing");
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.poses.count(), 1);
}

TEST_F(ScaleDefLosses, VectorsOfDifferentLengthsAreAdjusted) {
    definition.globalConstraints.append(test::globalConstraint("thigh", {0, 1, 0}, {0, 0, 4}));
    EXPECT_THAT(readBack(), ElementsAre(warning("A global constraint was specified for body thigh which has "
                                                "differing magnitudes for the local and global vectors.  "
                                                "Adjusting the vectors.")));
    EXPECT_EQ(back.globalConstraints[0], test::globalConstraint("thigh", {0, 2, 0}, {0, 0, 2}));
}

TEST_F(ScaleDefLosses, APositionConstraintWithoutABodyOrParentIsRefusedOrDropped) {
    definition.positionConstraints.append(test::positionConstraint(""));
    EXPECT_THAT(readBackAndClear(), ElementsAre(error("Unable to read POSITION_CONSTRAINT."),
                                                error("A POSITION_CONSTRAINT was specified with no BODY.")));
    definition.positionConstraints.append(test::positionConstraint("thigh"));
    definition.positionConstraints[0].parent = "";
    EXPECT_THAT(
        readBackAndClear(),
        ElementsAre(warning("Body 'thigh' is constrained to parent body , which is not in the problem "
                            "definition.  This constraint will be ignored.")));
    EXPECT_EQ(back.positionConstraints.count(), 0);
}

TEST_F(ScaleDefLosses, ATransformationThatDoesNotExistIsRefused) {
    definition.positionConstraints.append(test::positionConstraint("thigh"));
    definition.positionConstraints[0].transformOrder[5] = 7;
    EXPECT_THAT(readBack(), ElementsAre(error("Unable to read POSITION_CONSTRAINT."),
                                        error("Invalid transform id in TRANSFORM_ORDER")));
}

TEST_F(ScaleDefLosses, AnglesComeBackWithinHalfATurnAndInOneOrder) {
    const struct {
        const char* given;
        const char* written;
    } cases[] = {
        {"0.25 0.5 0.75 Z Y X", "0.25 0.5 0.75 Z Y X"},
        // 3.5 - 2 pi
        {"0.25 0.5 3.5 Z Y X", "0.25 0.5 -2.78319 Z Y X"},
        // 0.5 - pi, pi - 2 and 0.25 - pi: the other angles of one rotation
        {"0.5 2 0.25 Z Y X", "-2.64159 1.14159 -2.89159 Z Y X"},
    };
    for (const auto& [given, expected] : cases) {
        const std::string text =
            test::block("POSITION_CONSTRAINT", std::string("BODY: thigh\nBASE_ROTATION: ") + given + "\n");
        ASSERT_THAT(chainOfText({.sections = text}), IsEmpty());
        const std::string all = written();
        const std::size_t start = all.find("BASE_ROTATION: ") + 15;
        EXPECT_EQ(all.substr(start, all.find('\n', start) - start), expected);
    }
}

TEST_F(ScaleDefLosses, ARotationOfAnotherOrderComesBackAsTheSameRotation) {
    for (const char* order : {"X Y Z", "X Z Y", "Y X Z", "Y Z X", "Z X Y", "Z Y X", "X Y X", "Z X Z"}) {
        const std::string text = test::block(
            "POSITION_CONSTRAINT", std::string("BODY: thigh\nBASE_ROTATION: 0.3 -0.7 2.9 ") + order + "\n");
        ASSERT_THAT(chainOfText({.sections = text}), IsEmpty());
        EXPECT_THAT(readBack(), IsEmpty());
        // Six digits of angles up to pi.
        constexpr float tolerance = 2e-5F;
        for (std::size_t i = 0; i < 9; ++i) {
            EXPECT_NEAR(back.positionConstraints[0].baseRotation[i],
                        definition.positionConstraints[0].baseRotation[i], tolerance)
                << order;
        }
    }
}

TEST_F(ScaleDefLosses, AxesComeBackAsAFrameWithTheThirdAxisMadeAnew) {
    definition.bodyParams.append(test::scaledBody("thigh"));
    scaleDef::BodyParams_t& body = definition.bodyParams[0];
    body.firstAxis = {2, 0, 0};
    body.secondAxis = {1, 1, 0};
    body.thirdAxis = {7, 8, 9};
    EXPECT_THAT(readBack(), IsEmpty());
    EXPECT_EQ(back.bodyParams[0], test::scaledBody("thigh"));
    body.secondAxis = {-3, 0, 0};
    EXPECT_THAT(readBack(), ElementsAre(error("Unable to read BODY_SCALINGS."),
                                        error("First and second scaling axes are parallel for body thigh "
                                              "(#1)")));
}

// --- What a file holds that a written one does not -----------------------------------------------

TEST_F(ScaleDefLosses, AVariableThatIsGivenByItsNumberComesBackByName) {
    ASSERT_THAT(
        chainOfText({.limits = test::block("LIMIT_ADJUSTMENTS", "# a remark\n4 0 1\n"),
                     .sections = test::block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nVALUE: 1\nWEIGHT: 2\n")}),
        IsEmpty());
    const std::string text = written();
    EXPECT_EQ(text.substr(text.find("LIMIT_ADJUSTMENTS")), "LIMIT_ADJUSTMENTS {\n"
                                                           "  \"hip x\" 0 1\n"
                                                           "}\n"
                                                           "SYS_VAR_GUIDE_OVERRIDE {\n"
                                                           "  SYS_VAR: \"knee_x\"\n"
                                                           "  VALUE: 1\n"
                                                           "  WEIGHT: 2\n"
                                                           "}\n"
                                                           "SCALING_VARIABLES {\n"
                                                           "}\n"
                                                           "BODY_SCALINGS {\n"
                                                           "}\n"
                                                           "GLOBAL_CONSTRAINTS {\n"
                                                           "}\n"
                                                           "TEMPS {\n"
                                                           "}\n");
}

TEST_F(ScaleDefLosses, BlocksOfOneKindComeBackAsOne) {
    ASSERT_THAT(chainOfText({.sections = test::block("SCALING_VARIABLES", "a 0 1\n") +
                                         test::block("BODY_SCALINGS", "thigh\n1 0 0\n0 1 0\na 0 0\n") +
                                         test::block("SCALING_VARIABLES", "b 0 1\n") +
                                         test::block("BODY_SCALINGS", "pelvis\n1 0 0\n0 1 0\nb 0 0\n")}),
                IsEmpty());
    const std::string text = written();
    const std::string variables = text.substr(text.find("SCALING_VARIABLES"));
    EXPECT_EQ(variables, "SCALING_VARIABLES {\n" + test::variableHeading +
                             "  a 0 1\n"
                             "  b 0 1\n"
                             "}\n"
                             "BODY_SCALINGS {\n"
                             "  thigh                     # body name\n"
                             "    1 0 0    # first axis\n"
                             "    0 1 0    # second axis\n"
                             "    a                 # scaling vars\n"
                             "    0\n"
                             "    0\n"
                             "  pelvis                   \n"
                             "    1 0 0\n"
                             "    0 1 0\n"
                             "    b\n"
                             "    0\n"
                             "    0\n"
                             "}\n"
                             "GLOBAL_CONSTRAINTS {\n"
                             "}\n"
                             "TEMPS {\n"
                             "}\n");
}

} // namespace
} // namespace quillon
