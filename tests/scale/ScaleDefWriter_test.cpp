#include "quillon/scale/LqScaleDefData.h"

#include "tests/files/FileTestSupport.h"
#include "tests/scale/WrittenScaleDef.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/LimitedBuffer.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iomanip>
#include <sys/stat.h>

namespace quillon {
namespace {

using scaleDef::noUpperLimit;
using test::error;
using test::literal;
using test::offsetForm;
using test::scaleForm;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string header = "Kym Scale Definition File\nv1.00\n";

class ScaleDefWriter : public test::WrittenScaleDef {
protected:
    support::ScratchDirectory scratch;
};

// --- The whole file ------------------------------------------------------------------------------

TEST_F(ScaleDefWriter, WritesADefinitionOfNothing) {
    EXPECT_EQ(written(), "Kym Scale Definition File\n"
                         "v1.00\n"
                         "REAL_COUNT: 0\n"
                         "DEFAULT_REAL_WEIGHT: 0\n"
                         "REAL_WEIGHT_OVERRIDES {\n"
                         "}\n"
                         "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES {\n"
                         "}\n"
                         "LIMIT_ADJUSTMENTS {\n"
                         "}\n"
                         "SCALING_VARIABLES {\n"
                         "}\n"
                         "BODY_SCALINGS {\n"
                         "}\n"
                         "GLOBAL_CONSTRAINTS {\n"
                         "}\n"
                         "TEMPS {\n"
                         "}\n");
    EXPECT_THAT(takeChain(), IsEmpty());
}

/// A pose with everything that a pose may hold.
void addStandingPose(LqScaleDefData& definition) {
    scaleDef::Pose_t& pose = test::addPose(definition, "standing");
    pose.limitOverrides.append({4, literal(0), literal(noUpperLimit)});
    pose.sysVarGuideOverrides.append({3, 0.5F, 3});
    pose.sysVarGuideOverrides.append({4, -0.5F, 1});
    pose.globalConstraints.append(test::globalConstraint("thigh"));
    scaleDef::PositionConst_t constraint = test::positionConstraint("thigh", 4);
    constraint.localPosition = {0.5F, -1, 2};
    constraint.baseTranslation = {0, 0.8F, 0};
    constraint.baseRotation = {0, 1, 0, -1, 0, 0, 0, 0, 1}; // a quarter turn about z
    pose.positionConstraints.append(constraint);
}

/// A position constraint with mappings of all forms on the variables 1 and 2.
scaleDef::PositionConst_t constraintOfAllMappings() {
    scaleDef::PositionConst_t constraint = test::positionConstraint("GLOBAL");
    constraint.parent = "pelvis";
    const int order[] = {1, 2, 3, 6, 5, 4};
    std::copy(std::begin(order), std::end(order), constraint.transformOrder.begin());
    constraint.mapping[1].id = 2;
    constraint.mapping[2].id = -1;
    constraint.mapping[2].constant = offsetForm(3, 0.5F);
    constraint.mapping[4].constant = literal(0.1F);
    constraint.mapping[4].appendTerm(1, literal(0.5F));
    constraint.mapping[4].appendTerm(2, scaleForm(2, 2));
    return constraint;
}

LqScaleDefData definitionOfEverything() {
    LqScaleDefData definition;
    definition.realCount = 3;
    definition.defaultRealWeight = 0.5F;
    definition.realWeightOverrides.append({2, 0.25F});
    definition.realWeightOverrides.append({3, 1e-7F});
    definition.artificialWeightOverrides.append({8, 9, 0.75F});
    definition.artificialWeightOverrides.append({10, 8, 1e6F});
    definition.limitOverrides.append({3, literal(-1.5F), literal(noUpperLimit)});
    definition.limitOverrides.append({4, scaleForm(1, 2), offsetForm(2, -0.5F)});
    definition.sysVarGuideOverrides.append({3, 1.5F, 2});
    definition.scaleVars.append({"height", "Subject height", scaleForm(1, 0.5F), literal(noUpperLimit)});
    definition.scaleVars.append({"w", LmStr(), literal(0), literal(1)});
    addStandingPose(definition);
    test::addPose(definition, "at rest");
    definition.bodyParams.append(test::scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 1;
    definition.bodyParams[0].scale[2].constant = literal(0.1F);
    definition.bodyParams[0].scale[2].appendTerm(1, literal(0.5F));
    definition.bodyParams.append(test::scaledBody("pelvis"));
    definition.bodyParams[1].firstAxis = {0.6F, 0.8F, 0};
    definition.bodyParams[1].secondAxis = {-0.8F, 0.6F, 0};
    definition.positionConstraints.append(constraintOfAllMappings());
    definition.globalConstraints.append(test::globalConstraint("thigh"));
    definition.globalConstraints.append(test::globalConstraint("pelvis", {0.5F, 0, 0}, {0, 0, -0.5F}));
    definition.temps.append({4, {literal(0), offsetForm(2, 0.5F), literal(0)}, "thigh", "pelvis", 1});
    definition.temps.append(test::temp(5));
    return definition;
}

const char* const fileOfEverything =
    "Kym Scale Definition File\n"
    "v1.00\n"
    "REAL_COUNT: 3\n"
    "DEFAULT_REAL_WEIGHT: 0.5\n"
    "REAL_WEIGHT_OVERRIDES {\n"
    "  2 0.25\n"
    "  3 1e-07\n"
    "}\n"
    "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES {\n"
    "  8 9 0.75\n"
    "  10 8 1e+06\n"
    "}\n"
    "LIMIT_ADJUSTMENTS {\n"
    "  \"knee_x\" -1.5 *\n"
    "  \"hip x\" [m1 2] [m2 + -0.5]\n"
    "}\n"
    "SYS_VAR_GUIDE_OVERRIDE {\n"
    "  SYS_VAR: \"knee_x\"\n"
    "  VALUE: 1.5\n"
    "  WEIGHT: 2\n"
    "}\n"
    "SCALING_VARIABLES {\n"
    "  # variable name    lower limit (none)  upper limit (none)\n"
    "  height [m1 0.5] * \"Subject height\"\n"
    "  w      0 1\n"
    "}\n"
    "POSE {\n"
    "  NAME: standing\n"
    "  LIMIT_ADJUSTMENTS {\n"
    "    \"hip x\" 0 *\n"
    "  }\n"
    "  SYS_VAR_GUIDE_OVERRIDE {\n"
    "    SYS_VAR: \"knee_x\"\n"
    "    VALUE: 0.5\n"
    "    WEIGHT: 3\n"
    "  }\n"
    "  SYS_VAR_GUIDE_OVERRIDE {\n"
    "    SYS_VAR: \"hip x\"\n"
    "    VALUE: -0.5\n"
    "    WEIGHT: 1\n"
    "  }\n"
    "  GLOBAL_CONSTRAINTS {\n"
    "    # body     local            global\n"
    "    thigh 0 1 0  0 0 1\n"
    "  }\n"
    "  POSITION_CONSTRAINT {\n"
    "    BODY: thigh\n"
    "    PARENT: GLOBAL\n"
    "    LOCAL_POSITION: 0.5 -1 2\n"
    "    WEIGHT: 4\n"
    "    BASE_TRANSLATION: 0 0.8 0\n"
    "    BASE_ROTATION: 0 -0 1.5708 Z Y X\n"
    "    TRANSFORM_ORDER: 1 2 3 4 5 6\n"
    "    MAPPING {\n"
    "      0\n"
    "      0\n"
    "      0\n"
    "      0\n"
    "      0\n"
    "      0\n"
    "    }\n"
    "  }\n"
    "}\n"
    "POSE {\n"
    "  NAME: at rest\n"
    "}\n"
    "BODY_SCALINGS {\n"
    "  thigh                     # body name\n"
    "    1 0 0    # first axis\n"
    "    0 1 0    # second axis\n"
    "    height                 # scaling vars\n"
    "    0\n"
    "    -2 0.1 height 0.5\n"
    "  pelvis                   \n"
    "    0.6 0.8 0\n"
    "    -0.8 0.6 0\n"
    "    0\n"
    "    0\n"
    "    0\n"
    "}\n"
    "POSITION_CONSTRAINT {\n"
    "  BODY: GLOBAL\n"
    "  PARENT: pelvis\n"
    "  LOCAL_POSITION: 0 0 0\n"
    "  WEIGHT: 1\n"
    "  BASE_TRANSLATION: 0 0 0\n"
    "  BASE_ROTATION: 0 -0 0 Z Y X\n"
    "  TRANSFORM_ORDER: 1 2 3 6 5 4\n"
    "  MAPPING {\n"
    "    0\n"
    "    w\n"
    "    -1 [m3 + 0.5]\n"
    "    0\n"
    "    -3 0.1 height 0.5 w [m2 2]\n"
    "    0\n"
    "  }\n"
    "}\n"
    "GLOBAL_CONSTRAINTS {\n"
    "  # body      local            global\n"
    "  thigh  0 1 0  0 0 1\n"
    "  pelvis 0.5 0 0  0 0 -0.5\n"
    "}\n"
    "TEMPS {\n"
    "  4 0 [m2 + 0.5] 0 pelvis/thigh 1                # id  local  body  weight\n"
    "  5 1 2 3 thigh 1\n"
    "}\n";

TEST_F(ScaleDefWriter, WritesEverySectionInItsPlace) {
    definition = definitionOfEverything();
    EXPECT_EQ(written(), fileOfEverything);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefWriter, WhatItWritesReadsBack) {
    definition = definitionOfEverything();
    // Six digits do not hold a quarter turn.
    definition.poses[0]->positionConstraints[0].baseRotation = identityMat3;
    LqScaleDefData back;
    EXPECT_THAT(chainOfReadingBack(back), IsEmpty());
    EXPECT_TRUE(back == definition);
    ASSERT_EQ(back.positionConstraints.count(), 1);
    EXPECT_EQ(back.positionConstraints[0], definition.positionConstraints[0]);
}

TEST_F(ScaleDefWriter, WritesAFile) {
    definition = definitionOfEverything();
    const std::string path = scratch / "x.scale";
    EXPECT_TRUE(definition.writeFile(path.c_str(), problemDef));
    EXPECT_EQ(support::readBytes(path), fileOfEverything);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefWriter, AFileTakesThePlaceOfALongerOne) {
    const std::string path = scratch / "x.scale";
    support::writeBytes(path, std::string(100000, 'x'));
    EXPECT_TRUE(definition.writeFile(path.c_str(), problemDef));
    EXPECT_EQ(support::readBytes(path), test::WrittenText().all());
}

TEST_F(ScaleDefWriter, AFileDoesNotFollowTheGlobalLocale) {
    definition = definitionOfEverything();
    definition.realCount = 12345;
    std::string text = fileOfEverything;
    text.replace(text.find("REAL_COUNT: 3"), 13, "REAL_COUNT: 12345");
    const std::string path = scratch / "x.scale";
    {
        const test::CommaLocale comma;
        EXPECT_TRUE(definition.writeFile(path.c_str(), problemDef));
    }
    EXPECT_EQ(support::readBytes(path), text);
}

// --- The stream's format -------------------------------------------------------------------------

TEST_F(ScaleDefWriter, WritesTheSameWhateverFormatTheStreamHas) {
    definition = definitionOfEverything();
    std::ostringstream output;
    output << std::hex << std::scientific << std::internal << std::showpos << std::uppercase
           << std::setprecision(11) << std::setfill('*') << std::setw(40);
    definition.write(output, problemDef);
    EXPECT_EQ(output.str(), fileOfEverything);
}

TEST_F(ScaleDefWriter, PutsTheFormatOfTheStreamBack) {
    definition = definitionOfEverything();
    std::ostringstream output;
    output << std::hex << std::scientific << std::internal << std::setprecision(11) << std::setfill('*')
           << std::setw(40);
    const std::ios_base::fmtflags flags = output.flags();
    const auto expectItBack = [&] {
        EXPECT_EQ(output.flags(), flags);
        EXPECT_EQ(output.precision(), 11);
        EXPECT_EQ(output.width(), 40);
        EXPECT_EQ(output.fill(), '*');
    };
    LqScaleDefData::writeHeader(output);
    expectItBack();
    definition.writeBody(output, problemDef);
    expectItBack();
}

// --- Failures ------------------------------------------------------------------------------------

TEST_F(ScaleDefWriter, ReportsAHeaderThatCannotBeWrittenAndWritesNothingBehindIt) {
    test::LimitedBuffer noRoom(0);
    std::ostream output(&noRoom);
    definition.write(output, problemDef);
    EXPECT_THAT(takeChain(), ElementsAre(error("Unable to write data file id.")));
    test::LimitedBuffer roomForTheId(26);
    std::ostream cutOutput(&roomForTheId);
    definition.write(cutOutput, problemDef);
    EXPECT_THAT(takeChain(), ElementsAre(error("Unable to write data file version.")));
}

TEST_F(ScaleDefWriter, SaysNothingOfABodyThatCannotBeWritten) {
    test::LimitedBuffer roomForTheHeader(static_cast<int>(header.size()));
    std::ostream output(&roomForTheHeader);
    definition.write(output, problemDef);
    EXPECT_FALSE(output.good());
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefWriter, WritesTheHeaderAloneBehindAnOlderError) {
    const std::string path = scratch / "x.scale";
    pushErrorf("Older.");
    EXPECT_FALSE(definition.writeFile(path.c_str(), problemDef));
    EXPECT_THAT(takeChain(), ElementsAre(error("Unable to write \"" + path + "\"."), error("Older.")));
    EXPECT_EQ(support::readBytes(path), header);
}

TEST_F(ScaleDefWriter, ReportsADiskThatIsFullAtTheHeader) {
    EXPECT_FALSE(definition.writeFile("/dev/full", problemDef));
    EXPECT_THAT(takeChain(),
                ElementsAre(error("Unable to write \"/dev/full\"."), error("Unable to write data file id.")));
}

TEST_F(ScaleDefWriter, LeavesTheAccessChecksOwnReport) {
    const std::string directory = scratch.path().string();
    EXPECT_FALSE(definition.writeFile(directory.c_str(), problemDef));
    EXPECT_THAT(takeChain(), ElementsAre(error("File \"" + directory + "\" is unwritable."),
                                         error("File is a directory.")));
}

TEST_F(ScaleDefWriter, DoesNotTouchAFileThatItMayNotWrite) {
    const std::string path = scratch / "x.scale";
    support::writeBytes(path, "kept");
    chmod(scratch.path().c_str(), 0755);
    chmod(path.c_str(), 0444);
    const support::ChildResult result = test::runAsNobody([&] {
        definition.writeFile(path.c_str(), problemDef);
        test::printChain();
    });
    EXPECT_EQ(result.out,
              "error: \"File \"" + path +
                  "\" is unwritable.\"\n"
                  "error: \"Insufficient access to write to existing file.  Check permissions.\"\n");
    EXPECT_EQ(support::readBytes(path), "kept");
}

TEST_F(ScaleDefWriter, ReportsAFileThatCannotBeCreated) {
    // Taken out of the fixture in front: to check the type of an object, a sanitizer needs a descriptor
    // itself.
    const std::string path = scratch / "x.scale";
    const LmStr name(path.c_str());
    const LqScaleDefData& source = definition;
    const LqProblemDefData& problem = problemDef;
    {
        const test::NoFreeDescriptors none;
        EXPECT_FALSE(source.writeFile(name, problem));
    }
    EXPECT_THAT(takeChain(), ElementsAre(error("Couldn't create \"" + path + "\".")));
}

} // namespace
} // namespace quillon
