#include "tests/scale/ScaleDefFile.h"

#include <gmock/gmock.h>

#include <string>

namespace quillon {
namespace {

using test::block;
using test::error;
using test::Reading;
using test::ScaleDefText;
using test::StatusChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

// --- An error of the limits, which is not tested for -------------------------------------------------

class AfterWrongLimits : public test::ScaleDefFile {
protected:
    /// The chain of a file whose limits have an error at its end, less that error.
    StatusChain chainAbove(const std::string& sections,
                           const std::string& globals = block("GLOBAL_CONSTRAINTS", "")) {
        StatusChain chain = chainOfText(
            {.limits = block("LIMIT_ADJUSTMENTS", "elbow 0 1\n"), .sections = sections, .globals = globals});
        if (chain.empty() || !(chain.back() == error("Variable 'elbow' is not in the problem definition."))) {
            ADD_FAILURE() << "no error of the limits";
            return chain;
        }
        chain.pop_back();
        return chain;
    }
};

TEST_F(AfterWrongLimits, ReadingEndsInFrontOfTheGlobalConstraints) {
    EXPECT_THAT(chainAbove("", block("GLOBAL_CONSTRAINTS", "nobody 0 1 0 0 1 0\n")), IsEmpty());
    EXPECT_EQ(definition.globalConstraints.count(), 0);
}

TEST_F(AfterWrongLimits, AnUnexpectedSectionIsReportedToo) {
    EXPECT_THAT(
        chainAbove(block("OTHER", "")),
        ElementsAre(error("Expecting GLOBAL_CONSTRAINTS in scale definition file, but found OTHER.")));
}

TEST_F(AfterWrongLimits, ReadingEndsAtTheFirstScalingVariable) {
    EXPECT_THAT(chainAbove(block("SCALING_VARIABLES", "height x y\n") + block("OTHER", "")), IsEmpty());
    ASSERT_EQ(definition.scaleVars.count(), 1);
    EXPECT_EQ(definition.scaleVars[0].name, "");
}

TEST_F(AfterWrongLimits, SectionsWithoutRowsArePassed) {
    EXPECT_THAT(
        chainAbove(block("SCALING_VARIABLES", "# none\n") + block("BODY_SCALINGS", "# none\n") +
                   block("OTHER", "")),
        ElementsAre(error("Expecting GLOBAL_CONSTRAINTS in scale definition file, but found OTHER.")));
}

TEST_F(AfterWrongLimits, APoseWithoutSectionsIsKept) {
    EXPECT_THAT(chainAbove(block("POSE", "NAME: standing\n")), IsEmpty());
    EXPECT_EQ(definition.poses.count(), 1);
}

TEST_F(AfterWrongLimits, ASectionOfAPoseEndsTheReading) {
    for (const std::string& section :
         {block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n"), block("GLOBAL_CONSTRAINTS", "thigh 0 1 0 0 1 0\n"),
          block("POSITION_CONSTRAINT", "BODY: thigh\n"),
          block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nVALUE: 1\nWEIGHT: 1\n")}) {
        SCOPED_TRACE(section);
        EXPECT_THAT(chainAbove(block("POSE", "NAME: standing\n" + section)),
                    ElementsAre(error("Unable to read POSE #1.")));
        EXPECT_EQ(definition.poses.count(), 0);
    }
}

TEST_F(AfterWrongLimits, ABodyScalingEndsTheReading) {
    EXPECT_THAT(chainAbove(block("BODY_SCALINGS", "thigh\n1 0 0\n0 1 0\n0 0 0\n")),
                ElementsAre(error("Unable to read BODY_SCALINGS.")));
}

TEST_F(AfterWrongLimits, APositionConstraintEndsTheReading) {
    EXPECT_THAT(chainAbove(block("POSITION_CONSTRAINT", "BODY: thigh\n")),
                ElementsAre(error("Unable to read POSITION_CONSTRAINT.")));
    EXPECT_EQ(definition.positionConstraints.count(), 0);
}

TEST_F(AfterWrongLimits, AGuideOverrideEndsTheReading) {
    EXPECT_THAT(chainAbove(block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nVALUE: 1\nWEIGHT: 1\n")), IsEmpty());
    EXPECT_EQ(definition.sysVarGuideOverrides.count(), 0);
}

TEST_F(AfterWrongLimits, ALenientReadingForgivesTheErrorInTheLimitsOfAPose) {
    // The row of the pose finds an error standing and takes it for its own.
    EXPECT_THAT(chainOfText({.limits = block("LIMIT_ADJUSTMENTS", "knee_x 0 x\n"),
                             .sections = block("POSE", "NAME: standing\n" +
                                                           block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n"))},
                            Reading::Lenient),
                ElementsAre(warning("Error reading upper limit.")));
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_EQ(definition.poses[0]->limitOverrides.count(), 0);
}

// --- References that lead nowhere, in a strict and in a lenient reading ------------------------------

class UnresolvedReference : public test::ScaleDefFile {
protected:
    StatusChain strictChain(const ScaleDefText& text) { return chainOfText(text, Reading::Strict); }
    StatusChain lenientChain(const ScaleDefText& text) { return chainOfText(text, Reading::Lenient); }
};

/// Two position constraints that are dropped, and what is said of them.
const std::string unknownTail = block("POSITION_CONSTRAINT", "BODY: tail\n") +
                                block("POSITION_CONSTRAINT", "BODY: thigh\nPARENT: tail\n");
const StatusChain tailIsIgnored = {
    warning("Body 'thigh' is constrained to parent body tail, which is not in the problem definition.  This "
            "constraint will be ignored."),
    warning("Body 'tail' has a POSITION_CONSTRAINT in the scaling definition, but that body is not in the "
            "problem definition.  This constraint will be ignored.")};

TEST_F(UnresolvedReference, OfALimitRowDropsTheRow) {
    const ScaleDefText text = {.limits = block("LIMIT_ADJUSTMENTS", "elbow 0 1\nknee_x 0 1\n")};
    const char* const message = "Variable 'elbow' is not in the problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    ASSERT_EQ(definition.limitOverrides.count(), 1);
    EXPECT_EQ(definition.limitOverrides[0].sysVarId, 3);
}

TEST_F(UnresolvedReference, OfALimitRowInAPoseDropsTheRow) {
    const ScaleDefText text = {
        .sections = block("POSE", "NAME: a\n" + block("LIMIT_ADJUSTMENTS", "elbow 0 1\nknee_x 0 1\n"))};
    const char* const message = "Variable 'elbow' is not in the problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error("Unable to read POSE #1."), error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_EQ(definition.poses[0]->limitOverrides.count(), 1);
}

TEST_F(UnresolvedReference, ToARepeatedLimitKeepsBothRows) {
    const ScaleDefText text = {.limits = block("LIMIT_ADJUSTMENTS", "3 0 1\nknee_x 0 1\n")};
    const char* const message = "There are multiple limit adjustments for variable 3 (knee_x).";
    EXPECT_THAT(strictChain(text), ElementsAre(error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    EXPECT_EQ(definition.limitOverrides.count(), 2);
}

TEST_F(UnresolvedReference, OfAGuideIsAlwaysAnError) {
    const ScaleDefText text = {.sections =
                                   block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: elbow\nVALUE: 1\nWEIGHT: 1\n")};
    const char* const message = "Variable 'elbow' is not in the problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(error(message)));
}

TEST_F(UnresolvedReference, OfAGlobalConstraintKeepsTheRow) {
    const ScaleDefText text = {.globals = block("GLOBAL_CONSTRAINTS", "tail 0 1 0 0 1 0\n")};
    const char* const message =
        "A global constraint was specified for body tail, but this body is not in the "
        "problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    EXPECT_EQ(definition.globalConstraints.count(), 1);
}

TEST_F(UnresolvedReference, OfAPositionConstraintAlwaysDropsIt) {
    const ScaleDefText text = {.sections = unknownTail + block("POSITION_CONSTRAINT", "BODY: thigh\n")};
    EXPECT_EQ(strictChain(text), tailIsIgnored);
    EXPECT_EQ(definition.positionConstraints.count(), 1);
    EXPECT_EQ(lenientChain(text), tailIsIgnored);
    EXPECT_EQ(definition.positionConstraints.count(), 1);
}

TEST_F(UnresolvedReference, OfABodyScalingAlwaysDropsTheBody) {
    const ScaleDefText text = {
        .sections = block("BODY_SCALINGS", "tail\n1 0 0\n0 1 0\n0 0 0\nthigh\n1 0 0\n0 1 0\n0 0 0\n")};
    const StatusChain chain = {
        warning("Body 'tail' is being scaled by the scaling definition, but it is not in the problem "
                "definition.  This body will be ignored.")};
    EXPECT_EQ(strictChain(text), chain);
    EXPECT_EQ(definition.bodyParams.count(), 1);
    EXPECT_EQ(lenientChain(text), chain);
    EXPECT_EQ(definition.bodyParams.count(), 1);
}

TEST_F(UnresolvedReference, OfATempKeepsIt) {
    const ScaleDefText text = {.temps = block("TEMPS", "3 0 0 0 tail 1\n")};
    const char* const attached = "Temp 3 is attached to body tail, which is not in the problem definition.";
    const char* const relative = "Temp 3 is relative to body tail, which is not in the problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error(attached)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(relative), warning(attached)));
    EXPECT_EQ(definition.temps.count(), 1);
}

TEST_F(UnresolvedReference, ToAScalingVariableIsAlwaysAnError) {
    const ScaleDefText text = {.sections = block("BODY_SCALINGS", "thigh\n1 0 0\n0 1 0\nheight 0 0\n")};
    const StatusChain chain = {
        error("Unable to read BODY_SCALINGS."),
        error("Invalid scaling variable 'height' used for first scale variable for body thigh (#1).")};
    EXPECT_EQ(strictChain(text), chain);
    EXPECT_EQ(lenientChain(text), chain);
}

TEST_F(UnresolvedReference, OfAPositionConstraintToAScalingVariableIsAlwaysAnError) {
    const std::string constraint = "BODY: thigh\n" + block("MAPPING", "0 0 height 0 0 0\n");
    const StatusChain below = {error("Unable to read MAPPING."),
                               error("Invalid scaling variable 'height' used for Z Translation.")};
    const struct {
        std::string section;
        const char* top;
    } cases[] = {
        {block("POSITION_CONSTRAINT", constraint), "Unable to read POSITION_CONSTRAINT."},
        {block("POSE", "NAME: a\n" + block("POSITION_CONSTRAINT", constraint)), "Unable to read POSE #1."},
        // Of a body that would be ignored, too.
        {block("POSITION_CONSTRAINT", "PARENT: tail\n" + constraint), "Unable to read POSITION_CONSTRAINT."},
    };
    for (const auto& [section, top] : cases) {
        SCOPED_TRACE(section);
        StatusChain chain = {error(top)};
        chain.insert(chain.end(), below.begin(), below.end());
        EXPECT_EQ(strictChain({.sections = section}), chain);
        EXPECT_EQ(lenientChain({.sections = section}), chain);
        EXPECT_EQ(definition.positionConstraints.count(), 0);
        EXPECT_EQ(definition.poses.count(), 0);
    }
}

TEST_F(UnresolvedReference, ToAScalingVariableThatComesLaterIsAnError) {
    const ScaleDefText text = {
        .sections = block("POSITION_CONSTRAINT", "BODY: thigh\n" + block("MAPPING", "height 0 0 0 0 0\n")) +
                    block("SCALING_VARIABLES", "height 0 1\n")};
    const StatusChain chain = {error("Unable to read POSITION_CONSTRAINT."), error("Unable to read MAPPING."),
                               error("Invalid scaling variable 'height' used for X Translation.")};
    EXPECT_EQ(strictChain(text), chain);
    EXPECT_EQ(lenientChain(text), chain);
}

TEST_F(UnresolvedReference, OfAGuideInAPoseIsAlwaysAnError) {
    const ScaleDefText text = {
        .sections = block(
            "POSE", "NAME: a\n" + block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: elbow\nVALUE: 1\nWEIGHT: 1\n"))};
    const StatusChain chain = {error("Unable to read POSE #1."),
                               error("Variable 'elbow' is not in the problem definition.")};
    EXPECT_EQ(strictChain(text), chain);
    EXPECT_EQ(lenientChain(text), chain);
}

TEST_F(UnresolvedReference, ToARepeatedLimitInAPoseKeepsBothRows) {
    const ScaleDefText text = {
        .sections = block("POSE", "NAME: a\n" + block("LIMIT_ADJUSTMENTS", "3 0 1\nknee_x 0 1\n"))};
    const char* const message = "There are multiple limit adjustments for variable 3 (knee_x).";
    EXPECT_THAT(strictChain(text), ElementsAre(error("Unable to read POSE #1."), error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_EQ(definition.poses[0]->limitOverrides.count(), 2);
}

TEST_F(UnresolvedReference, OfAGlobalConstraintInAPoseKeepsTheRow) {
    const ScaleDefText text = {
        .sections = block("POSE", "NAME: a\n" + block("GLOBAL_CONSTRAINTS", "tail 0 1 0 0 1 0\n"))};
    const char* const message =
        "A global constraint was specified for body tail, but this body is not in the "
        "problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error("Unable to read POSE #1."), error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    ASSERT_EQ(definition.poses.count(), 1);
    EXPECT_EQ(definition.poses[0]->globalConstraints.count(), 1);
}

TEST_F(UnresolvedReference, OfAPositionConstraintInAPoseAlwaysDropsIt) {
    const ScaleDefText text = {.sections = block("POSE", "NAME: a\n" + unknownTail)};
    for (const Reading reading : {Reading::Strict, Reading::Lenient}) {
        EXPECT_EQ(chainOfText(text, reading), tailIsIgnored);
        ASSERT_EQ(definition.poses.count(), 1);
        EXPECT_EQ(definition.poses[0]->positionConstraints.count(), 0);
    }
}

TEST_F(UnresolvedReference, OfATempToItsRelativeBodyAloneKeepsIt) {
    const ScaleDefText text = {.temps = block("TEMPS", "3 0 0 0 tail/thigh 1\n")};
    const char* const message = "Temp 3 is relative to body tail, which is not in the problem definition.";
    EXPECT_THAT(strictChain(text), ElementsAre(error(message)));
    EXPECT_THAT(lenientChain(text), ElementsAre(warning(message)));
    EXPECT_EQ(definition.temps.count(), 1);
}

TEST_F(UnresolvedReference, OfAWeightOverrideToAMarkerIsAlwaysAnError) {
    ScaleDefText text;
    text.counts += block("REAL_WEIGHT_OVERRIDES", "3 1\n");
    const StatusChain aboveTheCount = {error("Invalid real marker id (3) specified for weight override.")};
    EXPECT_EQ(strictChain(text), aboveTheCount);
    EXPECT_EQ(lenientChain(text), aboveTheCount);
}

TEST_F(UnresolvedReference, ToTheNameOfAnotherScalingVariableIsAlwaysAnError) {
    const ScaleDefText text = {.sections = block("SCALING_VARIABLES", "height 0 1\nheight 0 1\n")};
    const StatusChain chain = {error("Duplicate scaling variable name: 'height'\n")};
    EXPECT_EQ(strictChain(text), chain);
    EXPECT_EQ(lenientChain(text), chain);
}

TEST_F(UnresolvedReference, ByTheNumberOfASystemVariableOrToAMeasuredConstantIsNoneAtAll) {
    const ScaleDefText text = {.limits = block("LIMIT_ADJUSTMENTS", "17 [m99 1] [m98 + 1]\n"),
                               .sections =
                                   block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 18\nVALUE: 1\nWEIGHT: 1\n")};
    EXPECT_THAT(strictChain(text), IsEmpty());
    EXPECT_THAT(lenientChain(text), IsEmpty());
    ASSERT_EQ(definition.limitOverrides.count(), 1);
    EXPECT_EQ(definition.limitOverrides[0].sysVarId, 17);
    ASSERT_EQ(definition.sysVarGuideOverrides.count(), 1);
    EXPECT_EQ(definition.sysVarGuideOverrides[0].sysVarId, 18);
}

TEST_F(UnresolvedReference, ToARepeatedTempIsAlwaysAnError) {
    const ScaleDefText text = {.temps = block("TEMPS", "3 0 0 0 thigh 1\n3 0 0 0 thigh 1\n")};
    EXPECT_THAT(strictChain(text), ElementsAre(error("Multiple temp markers with id 3")));
    EXPECT_THAT(lenientChain(text), ElementsAre(error("Multiple temp markers with id 3")));
}

} // namespace
} // namespace quillon
