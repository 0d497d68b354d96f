#include "quillon/scale/LqScaleDefData.h"

#include "tests/scale/ScaleDefFile.h"
#include "tests/scale/ScaleSamples.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace quillon {
namespace {

using scaleDef::noLowerLimit;
using scaleDef::noUpperLimit;
using scaleDef::ScaleFloat;
using support::ScratchDirectory;
using support::writeBytes;
using test::block;
using test::error;
using test::literal;
using test::Reading;
using test::ScaleDefText;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::string header = "Kym Scale Definition File\nv1.00\n";

class ScaleDefReader : public test::ScaleDefFile {
protected:
    std::string path() const { return scratch / "x.scale"; }

    StatusChain chainOfFile(const std::string& text) {
        writeBytes(path(), text);
        const bool whole = definition.readFile(path().c_str(), problemDef, false);
        EXPECT_EQ(whole, !errorStands());
        return takeChain();
    }

    /// Ids and weights of the overrides for real markers.
    std::vector<std::pair<int, float>> realWeights() const {
        std::vector<std::pair<int, float>> weights;
        for (const auto& record : definition.realWeightOverrides) {
            weights.emplace_back(record.markerId, record.weight);
        }
        return weights;
    }

    std::vector<std::string> scaleVarNames() const {
        std::vector<std::string> names;
        for (const auto& scaleVar : definition.scaleVars) {
            names.emplace_back(scaleVar.name.view());
        }
        return names;
    }

    ScratchDirectory scratch;
};

StatusChain operator+(StatusChain newer, const StatusChain& older) {
    newer.insert(newer.end(), older.begin(), older.end());
    return newer;
}

// --- Files and their header ----------------------------------------------------------------------

TEST_F(ScaleDefReader, ReadsAWholeFile) {
    EXPECT_THAT(chainOfFile(header + "REAL_COUNT: 2\n"
                                     "DEFAULT_REAL_WEIGHT: 1\n"
                                     "REAL_WEIGHT_OVERRIDES {\n"
                                     "  2 0.5\n"
                                     "}\n"
                                     "LIMIT_ADJUSTMENTS {\n"
                                     "  \"knee_x\" -1.5 *\n"
                                     "}\n"
                                     "SCALING_VARIABLES {\n"
                                     "  # variable name    lower limit (none)  upper limit (none)\n"
                                     "  height [m1 0.5] * \"Subject height\"\n"
                                     "}\n"
                                     "POSE {\n"
                                     "  NAME: standing\n"
                                     "  GLOBAL_CONSTRAINTS {\n"
                                     "    thigh 0 1 0  0 0 1\n"
                                     "  }\n"
                                     "}\n"
                                     "BODY_SCALINGS {\n"
                                     "  thigh\n"
                                     "    1 0 0\n"
                                     "    0 1 0\n"
                                     "    height\n"
                                     "    0\n"
                                     "    -2 0.1 height 0.5\n"
                                     "}\n"
                                     "GLOBAL_CONSTRAINTS {\n"
                                     "}\n"
                                     "TEMPS {\n"
                                     "  3 0 [m2 + 0.5] 0 pelvis/thigh 1\n"
                                     "}\n"),
                IsEmpty());

    LqScaleDefData expected;
    expected.realCount = 2;
    expected.defaultRealWeight = 1;
    expected.realWeightOverrides.append({2, 0.5F});
    expected.limitOverrides.append({3, literal(-1.5F), literal(noUpperLimit)});
    expected.scaleVars.append(
        {LmStr("height"), LmStr("Subject height"), {0.5F, 0, 1}, literal(noUpperLimit)});
    auto* const pose = new scaleDef::Pose_t;
    pose->name = "standing";
    pose->globalConstraints.append({LmStr("thigh"), {0, 1, 0}, {0, 0, 1}});
    expected.poses.append(pose);
    scaleDef::BodyParams_t body;
    body.bodyName = "thigh";
    body.firstAxis = {1, 0, 0};
    body.secondAxis = {0, 1, 0};
    body.thirdAxis = {0, 0, 1};
    body.scale[0].id = 1;
    body.scale[2].constant = literal(0.1F);
    body.scale[2].appendTerm(1, literal(0.5F));
    expected.bodyParams.append(body);
    expected.temps.append(
        {3, {literal(0), ScaleFloat{0, 0.5F, 2}, literal(0)}, LmStr("thigh"), LmStr("pelvis"), 1});
    EXPECT_TRUE(definition == expected);
    EXPECT_EQ(definition.positionConstraints.count(), 0);
}

TEST_F(ScaleDefReader, IgnoresWhatStandsBehindTheTemps) {
    EXPECT_THAT(chainOfFile(header + ScaleDefText().items() + "hello\nPOSE {\n"), IsEmpty());
}

TEST_F(ScaleDefReader, TakesTagsInAnyCase) {
    const ScaleDefText text = {.counts = "real_count: 2\nDefault_Real_Weight: 1\n",
                               .limits = block("limit_adjustments", "knee_x 0 1\n"),
                               .sections = block("scaling_variables", "height 0 1\n") +
                                           block("Pose", "NAME: standing\n"),
                               .globals = block("global_constraints", ""),
                               .temps = block("temps", "4 0 0 0 thigh 1\n")};
    EXPECT_THAT(chainOfText(text), IsEmpty());
    EXPECT_EQ(definition.temps.count(), 1);
    EXPECT_EQ(definition.poses.count(), 1);
}

TEST_F(ScaleDefReader, PutsThePathOnTopOfWhatIsWrong) {
    EXPECT_EQ(chainOfFile(header + "POSE {\n}\n"), (StatusChain{error("Unable to read \"" + path() + "\"."),
                                                                error("Unexpected tag 'POSE' specified.")}));
}

TEST_F(ScaleDefReader, ReportsABadHeader) {
    const struct {
        std::string text;
        const char* cause;
    } cases[] = {
        {"", "Error reading file."},
        {"Kym Model File\nv1.00\n", "Invalid datafile header id."},
        {"Kym Scale Definition File\nv\n", "Unable to read datafile version number."},
        {"Kym Scale Definition File\nv2.00\n",
         "Unsupported datafile version 2.00.  Application uses version 1.00."},
    };
    for (const auto& [text, cause] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(chainOfFile(text),
                  (StatusChain{error("Unable to read \"" + path() + "\"."),
                               error("File does not contain a scale definition."), error(cause)}));
        EXPECT_FALSE(LqScaleDefData::isScaleDefFile(path().c_str()));
        EXPECT_THAT(takeChain(), ElementsAre(error(cause)));
    }
}

TEST_F(ScaleDefReader, LooksAtTheHeaderAlone) {
    writeBytes(path(), "Kym Scale Definition File\nv1.75\nhello\n");
    EXPECT_TRUE(LqScaleDefData::isScaleDefFile(path().c_str()));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ScaleDefReader, ReportsAFileThatIsNotThere) {
    const StatusChain noAccess = {error("Unable to open \"" + path() + "\"."), error("File does not exist.")};
    EXPECT_FALSE(definition.readFile(path().c_str(), problemDef, false));
    EXPECT_EQ(takeChain(), noAccess);
    EXPECT_FALSE(LqScaleDefData::isScaleDefFile(path().c_str()));
    EXPECT_EQ(takeChain(), StatusChain{error("Unable to open \"" + path() + "\".")} + noAccess);
}

TEST_F(ScaleDefReader, ReportsAFileThatDoesNotOpenAlthoughItMayBeRead) {
    writeBytes(path(), header);
    // Taken out of the fixture in front: to check the type of an object, a sanitizer needs a descriptor
    // itself.
    const LmStr name(path().c_str());
    LqScaleDefData& target = definition;
    const LqProblemDefData& problem = problemDef;
    {
        const test::NoFreeDescriptors none;
        EXPECT_FALSE(target.readFile(name, problem, false));
        EXPECT_FALSE(LqScaleDefData::isScaleDefFile(name));
    }
    EXPECT_EQ(takeChain(), (StatusChain{error("Couldn't open \"" + path() + "\"."),
                                        error("Couldn't open \"" + path() + "\".")}));
}

TEST_F(ScaleDefReader, AddsToSomeOfWhatTheTargetHoldsAndReplacesTheRest) {
    const ScaleDefText text = {
        .counts = "REAL_COUNT: 2\nDEFAULT_REAL_WEIGHT: 1\nREAL_WEIGHT_OVERRIDES {\n1 1\n}\n"
                  "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES {\n5 6 1\n}\n",
        .limits = block("LIMIT_ADJUSTMENTS", "knee_x 0 1\n"),
        .sections = block("SCALING_VARIABLES", "height 0 1\n") + block("POSE", "NAME: standing\n") +
                    block("BODY_SCALINGS", "thigh\n1 0 0\n0 1 0\nheight 0 0\n") +
                    block("POSITION_CONSTRAINT", "BODY: thigh\n") +
                    block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: knee_x\nVALUE: 1\nWEIGHT: 1\n"),
        .globals = block("GLOBAL_CONSTRAINTS", "thigh 0 1 0 0 1 0\n"),
        .temps = block("TEMPS", "4 0 0 0 thigh 1\n")};
    EXPECT_THAT(chainOfText(text), IsEmpty());
    ScaleDefText second = text;
    second.sections = block("SCALING_VARIABLES", "girth 0 1\n") +
                      block("BODY_SCALINGS", "pelvis\n1 0 0\n0 1 0\nheight girth 0\n") +
                      block("POSITION_CONSTRAINT", "BODY: pelvis\n") +
                      block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 1\nVALUE: 1\nWEIGHT: 1\n");
    EXPECT_TRUE(readItems(second.items()));
    EXPECT_THAT(takeChain(), IsEmpty());

    EXPECT_EQ(definition.poses.count(), 0);
    EXPECT_EQ(definition.realWeightOverrides.count(), 1);
    EXPECT_EQ(definition.artificialWeightOverrides.count(), 1);
    EXPECT_EQ(definition.limitOverrides.count(), 1);
    EXPECT_EQ(definition.globalConstraints.count(), 1);
    EXPECT_EQ(definition.temps.count(), 1);
    EXPECT_THAT(scaleVarNames(), ElementsAre("height", "girth"));
    ASSERT_EQ(definition.bodyParams.count(), 2);
    EXPECT_EQ(definition.bodyParams[1].scale[0].id, 1);
    EXPECT_EQ(definition.bodyParams[1].scale[1].id, 2);
    EXPECT_EQ(definition.positionConstraints.count(), 2);
    ASSERT_EQ(definition.sysVarGuideOverrides.count(), 2);
    EXPECT_EQ(definition.sysVarGuideOverrides[0].sysVarId, 1);
    EXPECT_EQ(definition.sysVarGuideOverrides[1].sysVarId, 3);
}

// --- The first stage -----------------------------------------------------------------------------

TEST_F(ScaleDefReader, TakesTheLastOfRepeatedItemsInAnyOrder) {
    const ScaleDefText text = {.counts = "REAL_WEIGHT_OVERRIDES {\n1 7\n}\nDEFAULT_REAL_WEIGHT: x\n"
                                         "REAL_COUNT: 1\nREAL_WEIGHT_OVERRIDES {\n2 8\n}\n"
                                         "DEFAULT_REAL_WEIGHT: 0.25\nREAL_COUNT: 2\n"};
    EXPECT_THAT(chainOfText(text), IsEmpty());
    EXPECT_EQ(definition.realCount, 2);
    EXPECT_EQ(definition.defaultRealWeight, 0.25F);
    EXPECT_THAT(realWeights(), ElementsAre(Pair(2, 8)));
}

TEST_F(ScaleDefReader, ReportsWhatIsWrongInTheFirstStage) {
    const std::string count = "REAL_COUNT: 2\n";
    const std::string weight = "DEFAULT_REAL_WEIGHT: 1\n";
    const std::string limits = "LIMIT_ADJUSTMENTS {\n\n}\n";
    const struct {
        std::string items;
        StatusChain chain;
    } cases[] = {
        {"", {error("Missing LIMIT_ADJUSTMENTS section.")}},
        {count + weight, {error("Missing LIMIT_ADJUSTMENTS section.")}},
        {count + ": x\n" + weight + limits, {error("Unexpected tag '' specified.")}},
        {count + "hello\n", {error("No ':' or '{' following tag 'hello'.")}},
        {"LIMIT_ADJUSTMENTS {\n", {error("Hit end of file without reading '}' for tag LIMIT_ADJUSTMENTS")}},
        {"POSE {\n}\n", {error("Unexpected tag 'POSE' specified.")}},
        {"Temps {\n}\n", {error("Unexpected tag 'Temps' specified.")}},
        {weight + limits, {error("No 'REAL_COUNT' specified.")}},
        {"REAL_COUNT:\n" + weight + limits, {error("No 'REAL_COUNT' specified.")}},
        {"REAL_COUNT: two\n" + weight + limits, {error("Error reading real count.")}},
        {count + limits, {error("No 'DEFAULT_REAL_WEIGHT' specified.")}},
        {count + "DEFAULT_REAL_WEIGHT:\n" + limits, {error("No 'DEFAULT_REAL_WEIGHT' specified.")}},
        {count + "DEFAULT_REAL_WEIGHT: one\n" + limits, {error("Error reading real weight.")}},
        {count + weight + "LIMIT_ADJUSTMENTS {\n}\n", {error("No LIMIT_ADJUSTMENTS' section.")}},
        {count + weight + "LIMIT_ADJUSTMENTS:\n", {error("No LIMIT_ADJUSTMENTS' section.")}},
    };
    for (const auto& [items, chain] : cases) {
        SCOPED_TRACE(items);
        EXPECT_EQ(chainOfItems(items), chain);
        EXPECT_EQ(chainOfItems(items, Reading::Lenient), chain);
    }
}

TEST_F(ScaleDefReader, TakesABlockWithARemarkForAnEmptyLimitsSection) {
    EXPECT_THAT(chainOfText({.limits = "LIMIT_ADJUSTMENTS {\n# none\n}\n"}), IsEmpty());
    EXPECT_EQ(definition.limitOverrides.count(), 0);
}

TEST_F(ScaleDefReader, MakesANegativeRealCountZero) {
    const StatusChain negative = {warning("'REAL_COUNT' was less than zero.  Value is now set to zero.")};
    const std::string counts = "REAL_COUNT: -3\nDEFAULT_REAL_WEIGHT: 1\n";
    EXPECT_EQ(chainOfText({.counts = counts}), negative);
    EXPECT_EQ(definition.realCount, 0);
    EXPECT_EQ(chainOfText({.counts = counts + "REAL_WEIGHT_OVERRIDES {\n1 1\n}\n"}),
              StatusChain{error("Invalid real marker id (1) specified for weight override.")} + negative);
}

TEST_F(ScaleDefReader, TakesAsManyRealMarkersAsThereAre) {
    EXPECT_THAT(chainOfText({.counts = "REAL_COUNT: 3\nDEFAULT_REAL_WEIGHT: 1\n"}), IsEmpty());
    EXPECT_EQ(definition.realCount, 3);
}

TEST_F(ScaleDefReader, KeepsARealCountAboveTheRealMarkersInALenientReading) {
    const char* const message =
        "The SCALE_REAL_COUNT (4) is greater than the number of reals in the problem definition (3).\n";
    const ScaleDefText text = {.counts = "REAL_COUNT: 4\nDEFAULT_REAL_WEIGHT: 1\n"};
    EXPECT_THAT(chainOfText(text), ElementsAre(error(message)));
    EXPECT_EQ(definition.realCount, 0);
    EXPECT_THAT(chainOfText(text, Reading::Lenient), ElementsAre(warning(message)));
    EXPECT_EQ(definition.realCount, 4);
}

TEST_F(ScaleDefReader, ReadsWeightOverridesByTokensAlone) {
    const ScaleDefText text = {.counts = "REAL_COUNT: 2\nDEFAULT_REAL_WEIGHT: 1\n"
                                         "REAL_WEIGHT_OVERRIDES {\n1 # first\n\n0.5 2\n0.25 2 0.125\n}\n"
                                         "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES {\n3\n99 0.5 3 3\n1\n}\n"};
    EXPECT_THAT(chainOfText(text), IsEmpty());
    EXPECT_THAT(realWeights(), ElementsAre(Pair(1, 0.5F), Pair(2, 0.25F), Pair(2, 0.125F)));
    using Pair_t = scaleDef::ArtificialWeightOverride_t;
    ASSERT_EQ(definition.artificialWeightOverrides.count(), 2);
    EXPECT_EQ(definition.artificialWeightOverrides[0], (Pair_t{3, 99, 0.5F}));
    EXPECT_EQ(definition.artificialWeightOverrides[1], (Pair_t{3, 3, 1}));
}

TEST_F(ScaleDefReader, ReportsWhatIsWrongWithAWeightOverrideInEveryReading) {
    const std::string reals = "REAL_WEIGHT_OVERRIDES";
    const std::string artificials = "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES";
    const struct {
        std::string tag;
        std::string row;
        const char* message;
    } cases[] = {
        {reals, "x 1", "Error reading real weight override marker id."},
        {reals, "1 x", "Error reading real override weight."},
        {reals, "9", "Error reading real override weight."},
        {reals, "0 1", "Invalid real marker id (0) specified for weight override."},
        {reals, "3 1", "Invalid real marker id (3) specified for weight override."},
        {artificials, "x 4 1", "Error reading artificial weight override first marker id."},
        {artificials, "2 x 1", "Invalid artificial marker id (2) specified for weight override."},
        {artificials, "3 x 1", "Error reading artificial weight override second marker id."},
        {artificials, "3 2 x", "Invalid artificial marker id (2) specified for weight override."},
        {artificials, "3 4", "Error reading artificial override weight."},
    };
    for (const auto& [tag, row, message] : cases) {
        SCOPED_TRACE(row);
        ScaleDefText text;
        text.counts += block(tag, row + "\n");
        EXPECT_THAT(chainOfText(text), ElementsAre(error(message)));
        EXPECT_THAT(chainOfText(text, Reading::Lenient), ElementsAre(error(message)));
    }
}

TEST_F(ScaleDefReader, ARealCountThatIsForgivenBoundsTheOverrides) {
    const StatusChain forgiven = {warning(
        "The SCALE_REAL_COUNT (5) is greater than the number of reals in the problem definition (3).\n")};
    const std::string counts = "REAL_COUNT: 5\nDEFAULT_REAL_WEIGHT: 1\n";
    EXPECT_EQ(chainOfText({.counts = counts + block("REAL_WEIGHT_OVERRIDES", "5 1\n") +
                                     block("ARTIFICIAL_PAIR_WEIGHT_OVERRIDES", "6 7 1\n")},
                          Reading::Lenient),
              forgiven);
    EXPECT_THAT(realWeights(), ElementsAre(Pair(5, 1)));
    EXPECT_EQ(definition.artificialWeightOverrides.count(), 1);
    EXPECT_EQ(chainOfText({.counts = counts + block("REAL_WEIGHT_OVERRIDES", "6 1\n")}, Reading::Lenient),
              StatusChain{error("Invalid real marker id (6) specified for weight override.")} + forgiven);
    EXPECT_EQ(chainOfText({.counts = counts + block("ARTIFICIAL_PAIR_WEIGHT_OVERRIDES", "5 7 1\n")},
                          Reading::Lenient),
              StatusChain{error("Invalid artificial marker id (5) specified for weight override.")} +
                  forgiven);
}

TEST_F(ScaleDefReader, TakesCommentsWithinValues) {
    EXPECT_THAT(chainOfText({.counts = "REAL_COUNT: 2 # x\nDEFAULT_REAL_WEIGHT: 0.5 # y\n"}), IsEmpty());
    EXPECT_EQ(definition.realCount, 2);
    EXPECT_EQ(definition.defaultRealWeight, 0.5F);
    EXPECT_THAT(chainOfText({.counts = "REAL_COUNT: # how many\\\n2\nDEFAULT_REAL_WEIGHT: 1\n"}), IsEmpty());
    EXPECT_EQ(definition.realCount, 2);
    EXPECT_THAT(chainOfText({.counts = "REAL_COUNT: # x\nDEFAULT_REAL_WEIGHT: 1\n"}),
                ElementsAre(error("Error reading real count.")));
    EXPECT_THAT(chainOfText({.counts = "REAL_COUNT: 2\nDEFAULT_REAL_WEIGHT: # x\n"}),
                ElementsAre(error("Error reading real weight.")));
}

TEST_F(ScaleDefReader, FreesThePosesOnceTheHeaderIsGood) {
    test::addPose(definition, "standing");
    std::istringstream otherFile("Kym Model File\nv1.00\n");
    EXPECT_FALSE(definition.read(otherFile, problemDef, false));
    EXPECT_THAT(takeChain(), ElementsAre(error("File does not contain a scale definition."),
                                         error("Invalid datafile header id.")));
    EXPECT_TRUE(definition.hasPose("standing"));
    std::istringstream noLimits(header);
    EXPECT_FALSE(definition.read(noLimits, problemDef, false));
    EXPECT_THAT(takeChain(), ElementsAre(error("Missing LIMIT_ADJUSTMENTS section.")));
    EXPECT_EQ(definition.poses.count(), 0);
}

TEST_F(ScaleDefReader, EmptiesWeightOverridesThatTheFileDoesNotHave) {
    definition.realWeightOverrides.append({1, 1});
    definition.artificialWeightOverrides.append({4, 5, 1});
    EXPECT_TRUE(readItems(ScaleDefText().items()));
    EXPECT_EQ(definition.realWeightOverrides.count(), 0);
    EXPECT_EQ(definition.artificialWeightOverrides.count(), 0);
}

// --- The second stage ----------------------------------------------------------------------------

TEST_F(ScaleDefReader, ReadsScalingVariablesOfSeveralBlocks) {
    EXPECT_THAT(chainOfText({.sections = block("SCALING_VARIABLES", "height -1 [m1 + 2]\n"
                                                                    "\"arm width\" * * tall and more\n"
                                                                    "knee 0 1 # a remark\n") +
                                         block("SCALING_VARIABLES", "girth 0 1 \"as \\worn\" # a remark\n")}),
                IsEmpty());
    ASSERT_THAT(scaleVarNames(), ElementsAre("height", "arm width", "knee", "girth"));
    EXPECT_EQ(definition.scaleVars[0].lower, literal(-1));
    EXPECT_EQ(definition.scaleVars[0].upper, (ScaleFloat{0, 2, 1}));
    EXPECT_TRUE(definition.scaleVars[0].description.isNull());
    EXPECT_EQ(definition.scaleVars[1].lower, literal(noLowerLimit));
    EXPECT_EQ(definition.scaleVars[1].upper, literal(noUpperLimit));
    EXPECT_EQ(definition.scaleVars[1].description, "tall");
    EXPECT_TRUE(definition.scaleVars[2].description.isNull());
    EXPECT_EQ(definition.scaleVars[3].description, "as \\worn");
}

TEST_F(ScaleDefReader, ReportsWhatIsWrongWithAScalingVariable) {
    const struct {
        const char* rows;
        const char* message;
    } cases[] = {
        {"\"height\n", "Hit end of line in string reading first scaling variable name"},
        {"arm 0 1\n\"height\n",
         "Hit end of line in string reading name for the scaling variable that comes after arm"},
        {"arm 0 1\nheight 0 1\narm 0 1\n", "Duplicate scaling variable name: 'arm'\n"},
        {"first 0 1\n", "Duplicate scaling variable name: 'first'\n"},
        {"arm\n", "Error reading scaling variable lower limit."},
        {"arm 0\n", "Error reading scaling variable upper limit."},
        {"arm 0 [m1 x]\n", "Error reading measured constant scale factor."},
        {"arm 0 1 \"tall\n", "Hit end of line in string reading description for scaling variable arm"},
    };
    for (const auto& [rows, message] : cases) {
        SCOPED_TRACE(rows);
        const ScaleDefText text = {.sections = block("SCALING_VARIABLES", "first 0 1\n") +
                                               block("SCALING_VARIABLES", rows)};
        EXPECT_THAT(chainOfText(text), ElementsAre(error(message)));
        EXPECT_THAT(chainOfText(text, Reading::Lenient), ElementsAre(error(message)));
    }
}

TEST_F(ScaleDefReader, LeavesTheScalingVariableThatFailsPartlyFilled) {
    using scaleDef::ScaleVar;
    const struct {
        const char* row;
        ScaleVar left;
    } cases[] = {
        {"first 1 2\n", {"", LmStr(), literal(0), literal(0)}},
        {"\"second\n", {"", LmStr(), literal(0), literal(0)}},
        {"second x 2\n", {"second", LmStr(), literal(0), literal(0)}},
        {"second 1 x\n", {"second", LmStr(), literal(1), literal(0)}},
        {"second 1 [m1 2 tall\n", {"second", LmStr(), literal(1), literal(0)}},
        {"second 1 2 \"tall\n", {"second", "", literal(1), literal(2)}},
    };
    for (const auto& [row, left] : cases) {
        SCOPED_TRACE(row);
        EXPECT_EQ(chainOfText({.sections = block("SCALING_VARIABLES",
                                                 std::string("first 3 4\n") + row + "third 5 6\n")})
                      .size(),
                  1U);
        ASSERT_EQ(definition.scaleVars.count(), 2);
        EXPECT_EQ(definition.scaleVars[0], (ScaleVar{"first", LmStr(), literal(3), literal(4)}));
        EXPECT_EQ(definition.scaleVars[1], left);
    }
}

TEST_F(ScaleDefReader, EndsAScalingVariableAtTheEndOfAValue) {
    EXPECT_THAT(chainOfText({.sections = "SCALING_VARIABLES: height 0 1\n"}), IsEmpty());
    EXPECT_THAT(scaleVarNames(), ElementsAre("height"));
}

TEST_F(ScaleDefReader, NumbersThePoseThatCannotBeRead) {
    EXPECT_THAT(chainOfText({.sections = block("POSE", "NAME: a\n") + block("POSE", "NAME: b\nX: 1\n")}),
                ElementsAre(error("Unable to read POSE #2."), error("Unknown tag 'X' in pose section.")));
    EXPECT_EQ(definition.poses.count(), 1);
    EXPECT_THAT(chainOfText({.sections = block("POSE", "")}),
                ElementsAre(error("Unable to read POSE #1."), error("A pose was specified with no name.\n")));
}

TEST_F(ScaleDefReader, PutsTheSectionOnTopOfWhatIsWrongInIt) {
    EXPECT_THAT(chainOfText({.sections = block("POSITION_CONSTRAINT", "PARENT: thigh\n")}),
                ElementsAre(error("Unable to read POSITION_CONSTRAINT."),
                            error("A POSITION_CONSTRAINT was specified with no BODY.")));
    EXPECT_THAT(chainOfText({.sections = block("BODY_SCALINGS", "thigh\n0 0 0\n")}),
                ElementsAre(error("Unable to read BODY_SCALINGS."),
                            error("Invalid first scaling axis  for body thigh (#1)")));
    EXPECT_THAT(chainOfText({.sections = block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nVALUE: 1\n")}),
                ElementsAre(error("No weight specified.")));
}

TEST_F(ScaleDefReader, KeepsTheFirstOfTwoGuidesInSilence) {
    EXPECT_THAT(
        chainOfText({.sections = block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: knee_x\nVALUE: 1\nWEIGHT: 2\n") +
                                 block("SYS_VAR_GUIDE_OVERRIDE", "SYS_VAR: 3\nVALUE: 3\nWEIGHT: 4\n")}),
        IsEmpty());
    ASSERT_EQ(definition.sysVarGuideOverrides.count(), 1);
    EXPECT_EQ(definition.sysVarGuideOverrides[0], (scaleDef::SysVarGuideOverride{3, 1, 2}));
}

TEST_F(ScaleDefReader, ReportsAnItemOfTheSecondStageThatCannotBeTaken) {
    EXPECT_THAT(chainOfText({.sections = "hello\n"}),
                ElementsAre(error("No ':' or '{' following tag 'hello'.")));
    EXPECT_THAT(chainOfText({.sections = "POSE {\nNAME: a\n", .globals = "", .temps = ""}),
                ElementsAre(error("Hit end of file without reading '}' for tag POSE")));
}

// --- The order of the end --------------------------------------------------------------------------

TEST_F(ScaleDefReader, ReportsWhatStandsInThePlaceOfTheGlobalConstraints) {
    const std::string expecting = "Expecting GLOBAL_CONSTRAINTS in scale definition file, but found ";
    EXPECT_THAT(chainOfText({.globals = "", .temps = ""}), ElementsAre(error(expecting + "end of file.")));
    EXPECT_THAT(chainOfText({.globals = ": x\n"}), ElementsAre(error(expecting + ".")));
    EXPECT_THAT(chainOfText({.globals = ""}), ElementsAre(error(expecting + "TEMPS.")));
    EXPECT_THAT(chainOfText({.sections = "LIMIT_ADJUSTMENTS {\n\n}\n"}),
                ElementsAre(error(expecting + "LIMIT_ADJUSTMENTS.")));
    EXPECT_THAT(chainOfText({.sections = "REAL_COUNT: 2\n"}), ElementsAre(error(expecting + "REAL_COUNT.")));
}

TEST_F(ScaleDefReader, ReportsWhatStandsInThePlaceOfTheTemps) {
    const std::string expecting = "Expecting TEMPS in scale definition file, but found ";
    EXPECT_THAT(chainOfText({.temps = ""}), ElementsAre(error(expecting + "end of file.")));
    EXPECT_THAT(chainOfText({.temps = block("POSE", "")}), ElementsAre(error(expecting + "POSE.")));
    EXPECT_THAT(chainOfText({.temps = block("GLOBAL_CONSTRAINTS", "")}),
                ElementsAre(error(expecting + "GLOBAL_CONSTRAINTS.")));
}

TEST_F(ScaleDefReader, ReadsTempsFromWhateverStandsInTheirPlace) {
    const std::string expecting = "Expecting TEMPS in scale definition file, but found ";
    EXPECT_THAT(chainOfText({.temps = block("POSE", "NAME: a\n")}),
                ElementsAre(error("Error reading temp id."), error(expecting + "POSE.")));
    EXPECT_THAT(chainOfText({.temps = block("POSE", "4 0 0 0 thigh 1\n")}),
                ElementsAre(error(expecting + "POSE.")));
    EXPECT_EQ(definition.temps.count(), 1);
}

TEST_F(ScaleDefReader, ReportsTempsThatCannotBeTaken) {
    EXPECT_THAT(chainOfText({.temps = "TEMPS {\n4 0 0 0 thigh 1\n"}),
                ElementsAre(error("Error reading 'TEMPS' section."),
                            error("Hit end of file without reading '}' for tag TEMPS")));
    EXPECT_THAT(
        chainOfText({.temps = "hello\n"}),
        ElementsAre(error("Error reading '' section."), error("No ':' or '{' following tag 'hello'.")));
    EXPECT_EQ(definition.temps.count(), 0);
}

TEST_F(ScaleDefReader, LooksForTheTempsBehindAnErrorOfTheGlobalConstraints) {
    const std::string globals = block("GLOBAL_CONSTRAINTS", "thigh x\n");
    const StatusChain wrong = {error("Error reading constraint local vect.")};
    EXPECT_EQ(chainOfText({.globals = globals}), wrong);
    EXPECT_EQ(chainOfText({.globals = globals, .temps = block("TEMPS", "4 x\n")}), wrong);
    EXPECT_EQ(chainOfText({.globals = globals, .temps = block("TEMPS", "x\n")}),
              StatusChain{error("Error reading temp id.")} + wrong);
    EXPECT_EQ(chainOfText({.globals = globals, .temps = ""}),
              StatusChain{error("Expecting TEMPS in scale definition file, but found end of file.")} + wrong);
}

} // namespace
} // namespace quillon
