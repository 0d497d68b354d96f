#include "quillon/scale/ConstraintReader.h"

#include "tests/geometry/GeometryTesting.h"
#include "tests/scale/ScaleSections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace quillon::scaleDef {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

class PositionConstraintReader : public test::ScaleSections {
protected:
    bool read(const std::string& blockText, bool lenient = false) {
        const ScaleDefContext context(definition, problemDef, lenient);
        ArrayAppender<PositionConst_t> appender(records);
        return readPositionConstraint(blockText, context, appender);
    }

    /// The rotation that a constraint of the thigh gets from this value.
    LmMat3 rotationOf(const std::string& value) {
        EXPECT_TRUE(read("BODY: thigh\nBASE_ROTATION: " + value + "\n"));
        EXPECT_THAT(takeChain(), IsEmpty());
        return records.count() == 0 ? LmMat3{} : records[records.count() - 1].baseRotation;
    }

    LmDArray<PositionConst_t> records;
};

const std::string plain = " order (1 2 3 6 5 4) weight 1 mapping 0, 0, 0, 0, 0, 0 base (0 0 0) turned "
                          "(1 0 0 0 1 0 0 0 1)";

TEST_F(PositionConstraintReader, ReadsAllItems) {
    EXPECT_TRUE(read("BODY: thigh\n"
                     "PARENT: pelvis\n"
                     "LOCAL_POSITION: 1 2.5 -3\n"
                     "WEIGHT: 2\n"
                     "BASE_TRANSLATION: 0 0.75 0\n"
                     "BASE_ROTATION: 0 0 0 Z Y X\n"
                     "TRANSFORM_ORDER: 6 5 4 3 2 1\n"
                     "MAPPING {\n"
                     "0\n"
                     "height # along y\n"
                     "-1 [m3 + 0.5] -2\n"
                     "0.5 \"arm width\" [m2 2]\n"
                     "0 height\n"
                     "}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(records),
                ElementsAre("thigh on pelvis: at (1 2.5 -3) order (6 5 4 3 2 1) weight 2 mapping 0, var 1, "
                            "-1 [m3 factor 0 offset 0.5], -2 0.5 + [m2 factor 2 offset 0] * var 2, 0, var 1 "
                            "base (0 0.75 0) turned (1 0 0 0 1 0 0 0 1)"));
}

TEST_F(PositionConstraintReader, BodyAloneTakesTheDefaults) {
    EXPECT_TRUE(read("BODY: left foot\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(records), ElementsAre("left foot on GLOBAL: at (0 0 0)" + plain));
}

TEST_F(PositionConstraintReader, BlocksAddToTheTarget) {
    EXPECT_TRUE(read("BODY: thigh\n"));
    EXPECT_TRUE(read("BODY: thigh\n"));
    EXPECT_EQ(records.count(), 2);
}

TEST_F(PositionConstraintReader, LaterItemReplacesTheEarlierAndKeywordsIgnoreCase) {
    EXPECT_TRUE(read("Body: nobody\nweight: 3\nbody: thigh\nWeight: 4\nParent: nobody\nPARENT: pelvis\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    ASSERT_EQ(records.count(), 1);
    EXPECT_EQ(records[0].body, "thigh");
    EXPECT_EQ(records[0].parent, "pelvis");
    EXPECT_EQ(records[0].weight, 4.0F);
}

TEST_F(PositionConstraintReader, TextBehindTheLastValueIsIgnored) {
    EXPECT_TRUE(read("BODY: thigh\nLOCAL_POSITION: 1 2 3 4\nWEIGHT: 2 kg\nTRANSFORM_ORDER: 1 2 3 4 5 6 7\n"
                     "BASE_ROTATION: 0 0 0 X Y Z W\nMAPPING {\n0 0 0 0 0 0 nonsense\n}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(records),
                ElementsAre("thigh on GLOBAL: at (1 2 3) order (1 2 3 4 5 6) weight 2 mapping 0, 0, 0, 0, 0, "
                            "0 base (0 0 0) turned (1 0 0 0 1 0 0 0 1)"));
}

TEST_F(PositionConstraintReader, GlobalOnGlobalPassesAllTests) {
    EXPECT_TRUE(read("BODY: GLOBAL\nPARENT: GLOBAL\n"));
    EXPECT_TRUE(read("BODY: GLOBAL\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(records),
                ElementsAre("GLOBAL on GLOBAL: at (0 0 0)" + plain, "GLOBAL on GLOBAL: at (0 0 0)" + plain));
}

TEST_F(PositionConstraintReader, TransformOrderNeedNotBeAPermutation) {
    EXPECT_TRUE(read("BODY: thigh\nTRANSFORM_ORDER: 6 6 6 1 1 1\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    ASSERT_EQ(records.count(), 1);
    EXPECT_THAT(std::vector<int>(records[0].transformOrder.begin(), records[0].transformOrder.end()),
                ElementsAre(6, 6, 6, 1, 1, 1));
}

TEST_F(PositionConstraintReader, ItemsMayStandInAnyOrder) {
    const std::vector<std::string> items = {
        "BODY: thigh\n",
        "PARENT: pelvis\n",
        "LOCAL_POSITION: 1 2.5 -3\n",
        "WEIGHT: 2\n",
        "BASE_TRANSLATION: 0 0.75 0\n",
        "BASE_ROTATION: 0 0 0 Z Y X\n",
        "TRANSFORM_ORDER: 6 5 4 3 2 1\n",
        "MAPPING {\n0 height 0 0 0 0\n}\n",
    };
    // Each item once as the first one and once as the last one.
    for (std::size_t first = 0; first < items.size(); ++first) {
        std::string text;
        for (std::size_t i = 0; i < items.size(); ++i) {
            text += items[(first + i) % items.size()];
        }
        SCOPED_TRACE(text);
        records = LmDArray<PositionConst_t>();
        EXPECT_TRUE(read(text));
        EXPECT_THAT(takeChain(), IsEmpty());
        EXPECT_THAT(linesOf(records),
                    ElementsAre("thigh on pelvis: at (1 2.5 -3) order (6 5 4 3 2 1) weight 2 mapping 0, var "
                                "1, 0, 0, 0, 0 base (0 0.75 0) turned (1 0 0 0 1 0 0 0 1)"));
    }
}

TEST_F(PositionConstraintReader, NamesOfBodiesAreTakenAsTheyStand) {
    const char* const names[] = {"thigh # x", "\"left foot\"", "\"thigh", "thigh,", "left  foot"};
    for (const std::string name : names) {
        EXPECT_TRUE(read("BODY: " + name + "\n"));
        EXPECT_EQ(takeChain(), StatusChain{warning("Body '" + name +
                                                   "' has a POSITION_CONSTRAINT in the scaling definition, "
                                                   "but that body is not in the problem definition.  This "
                                                   "constraint will be ignored.")});
        EXPECT_TRUE(read("BODY: thigh\nPARENT: " + name + "\n"));
        EXPECT_EQ(takeChain(), StatusChain{warning("Body 'thigh' is constrained to parent body " + name +
                                                   ", which is not in the problem definition.  This "
                                                   "constraint will be ignored.")});
        EXPECT_THAT(linesOf(records), IsEmpty());
    }
    problemDef.addBody("thigh # x", "thigh", 5);
    problemDef.addBody("\"left foot\"", "thigh", 6);
    EXPECT_TRUE(read("BODY: thigh # x\nPARENT:   \"left foot\"  \n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(records), ElementsAre("thigh # x on \"left foot\": at (0 0 0)" + plain));
}

TEST_F(PositionConstraintReader, BlockInThePlaceOfAValueIsItsText) {
    // Numbers do not mind the line ends of a block; a name is taken with them.
    EXPECT_TRUE(read("WEIGHT {\n2\n}\nLOCAL_POSITION {\n1\n2\n3\n}\nBODY: thigh\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    ASSERT_EQ(records.count(), 1);
    EXPECT_EQ(records[0].weight, 2.0F);
    EXPECT_EQ(records[0].localPosition, (LmVec3{1, 2, 3}));
    EXPECT_TRUE(read("BODY {\nthigh\n}\n"));
    EXPECT_EQ(takeChain(), StatusChain{warning("Body 'thigh\n' has a POSITION_CONSTRAINT in the scaling "
                                               "definition, but that body is not in the problem definition.  "
                                               "This constraint will be ignored.")});
    EXPECT_TRUE(read("BODY: thigh\nMAPPING: 0 height 0 0 0 0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    ASSERT_EQ(records.count(), 2);
    EXPECT_EQ(records[1].mapping[1].id, 1);
}

// --- The base rotation -----------------------------------------------------------------------------

TEST_F(PositionConstraintReader, AnglesOfTheBaseRotationAreIndexedByAxisWhateverTheOrder) {
    const float c = std::cos(0.5F);
    const float s = std::sin(0.5F);
    EXPECT_THAT(rotationOf("0.5 0 0 Z Y X"),
                testing_geometry::elementsNear(LmMat3{1, 0, 0, 0, c, s, 0, -s, c}, 1e-6F));
    EXPECT_THAT(rotationOf("0 0.5 0 Z Y X"),
                testing_geometry::elementsNear(LmMat3{c, 0, -s, 0, 1, 0, s, 0, c}, 1e-6F));
    EXPECT_THAT(rotationOf("0 0 0.5 X Y Z"),
                testing_geometry::elementsNear(LmMat3{c, s, 0, -s, c, 0, 0, 0, 1}, 1e-6F));
}

TEST_F(PositionConstraintReader, LettersOfTheBaseRotationGiveTheOrderOfTheProduct) {
    // The last letter's rotation stands leftmost. A quarter turn about X is (x, z, -y), one about Z (y, -x,
    // z).
    EXPECT_THAT(rotationOf("1.5707964 0 1.5707964 X Y Z"),
                testing_geometry::elementsNear(LmMat3{0, 0, 1, -1, 0, 0, 0, -1, 0}, 1e-6F));
    EXPECT_THAT(rotationOf("1.5707964 0 1.5707964 Z Y X"),
                testing_geometry::elementsNear(LmMat3{0, 1, 0, 0, 0, 1, 1, 0, 0}, 1e-6F));
}

TEST_F(PositionConstraintReader, EqualLettersOfTheBaseRotationAreNotRefused) {
    EXPECT_EQ(rotationOf("0 0.25 0.5 X X X"), identityMat3);
}

TEST_F(PositionConstraintReader, LettersOfTheBaseRotationMayStandOnAContinuedLine) {
    EXPECT_EQ(rotationOf("0 0 0 \\\n  # the order\\\n  X Y Z"), identityMat3);
}

// --- Constraints that are ignored ------------------------------------------------------------------

TEST_F(PositionConstraintReader, UnknownBodyIsIgnoredWithAWarning) {
    for (const bool lenient : {false, true}) {
        EXPECT_TRUE(read("BODY: tail\nPARENT: nobody\n", lenient));
        EXPECT_EQ(takeChain(), StatusChain{warning("Body 'tail' has a POSITION_CONSTRAINT in the scaling "
                                                   "definition, but that body is not in the problem "
                                                   "definition.  This constraint will be ignored.")});
        EXPECT_THAT(linesOf(records), IsEmpty());
    }
}

TEST_F(PositionConstraintReader, UnknownParentIsIgnoredWithAWarning) {
    for (const bool lenient : {false, true}) {
        EXPECT_TRUE(read("BODY: thigh\nPARENT: nobody\n", lenient));
        EXPECT_EQ(takeChain(), StatusChain{warning("Body 'thigh' is constrained to parent body nobody, which "
                                                   "is not in the problem definition.  This constraint will "
                                                   "be ignored.")});
        EXPECT_THAT(linesOf(records), IsEmpty());
    }
}

TEST_F(PositionConstraintReader, ParentWithoutANameIsUnknown) {
    EXPECT_TRUE(read("BODY: thigh\nPARENT:\n"));
    EXPECT_EQ(takeChain(), StatusChain{warning("Body 'thigh' is constrained to parent body , which is not in "
                                               "the problem definition.  This constraint will be ignored.")});
}

TEST_F(PositionConstraintReader, NamesCompareWithTheirCase) {
    EXPECT_TRUE(read("BODY: Global\n"));
    EXPECT_EQ(takeChain(), StatusChain{warning("Body 'Global' has a POSITION_CONSTRAINT in the scaling "
                                               "definition, but that body is not in the problem definition.  "
                                               "This constraint will be ignored.")});
}

// --- Failures --------------------------------------------------------------------------------------

struct FailureCase {
    const char* text;
    StatusChain expected;
};

class PositionConstraintFailure : public PositionConstraintReader {
protected:
    /// Reads behind a first constraint, which is to remain as the only one.
    void expect(const FailureCase& c) {
        ASSERT_TRUE(read("BODY: shank\n"));
        for (const bool lenient : {false, true}) {
            EXPECT_FALSE(read(c.text, lenient)) << c.text;
            EXPECT_EQ(takeChain(), c.expected) << c.text;
        }
        EXPECT_THAT(linesOf(records), ElementsAre("shank on GLOBAL: at (0 0 0)" + plain)) << c.text;
        records = LmDArray<PositionConst_t>();
    }
};

TEST_F(PositionConstraintFailure, OfValues) {
    const FailureCase cases[] = {
        {"BODY: thigh\nLOCAL_POSITION: 0 0\n", {error("Error reading LOCAL_POSITION.")}},
        {"BODY: thigh\nlocal_position: x\n", {error("Error reading local_position.")}},
        {"BODY: thigh\nBASE_TRANSLATION: 0 x 0\n", {error("Error reading BASE_TRANSLATION.")}},
        {"BODY: thigh\nBASE_ROTATION: 0.1 0.2\n", {error("Error reading BASE_ROTATION.")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0\n", {error("Error reading rotation order for BASE_ROTATION.")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 Z Y\n",
         {error("Error reading rotation order for BASE_ROTATION.")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 Z Y W\n",
         {error("Invalid axis (W) in rotation order for BASE_ROTATION.\n")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 x y z\n",
         {error("Invalid axis (x) in rotation order for BASE_ROTATION.\n")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 1 2 3\n",
         {error("Invalid axis (1) in rotation order for BASE_ROTATION.\n")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 X # Y Z\n",
         {error("Invalid axis (#) in rotation order for BASE_ROTATION.\n")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 # X Y Z\n",
         {error("Error reading rotation order for BASE_ROTATION.")}},
        {"BODY: thigh\nBASE_ROTATION: 0 0 0 XYZ\n",
         {error("Invalid axis (XYZ) in rotation order for BASE_ROTATION.\n")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 1 2 3 7 5 4\n", {error("Invalid transform id in TRANSFORM_ORDER")}},
        {"BODY: thigh\nTRANSFORM_ORDER: -1 2 3 6 5 4\n", {error("Invalid transform id in TRANSFORM_ORDER")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 1 2 3 6 5 4294967300\n", {error("Error reading TRANSFORM_ORDER.")}},
        {"BODY: thigh\nTRANSFORM_ORDER:\n", {error("Error reading TRANSFORM_ORDER.")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 0 x\n", {error("Invalid transform id in TRANSFORM_ORDER")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 1 2 3 6 5\n", {error("Error reading TRANSFORM_ORDER.")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 1 2 x 6 5 4\n", {error("Error reading TRANSFORM_ORDER.")}},
        {"BODY: thigh\nTRANSFORM_ORDER: 1 2 3 4 5 \\\n#\\\n6\n", {error("Error reading TRANSFORM_ORDER.")}},
        {"BODY: thigh\nWEIGHT: heavy\n", {error("Unable to read WEIGHT."), error("Error reading WEIGHT.")}},
        {"BODY: thigh\nWEIGHT:\n", {error("Unable to read WEIGHT."), error("Error reading WEIGHT.")}},
    };
    for (const FailureCase& c : cases) {
        expect(c);
    }
}

TEST_F(PositionConstraintFailure, OfMappingsNamesTheTransform) {
    const FailureCase cases[] = {
        {"BODY: thigh\nMAPPING {\n}\n",
         {error("Unable to read MAPPING."), error("Error reading X Translation.")}},
        {"BODY: thigh\nMAPPING {\n0\n}\n",
         {error("Unable to read MAPPING."), error("Error reading Y Translation.")}},
        {"BODY: thigh\nMAPPING {\n0\n0\n}\n",
         {error("Unable to read MAPPING."), error("Error reading Z Translation.")}},
        {"BODY: thigh\nMAPPING {\n0\nheight\n0\n}\n",
         {error("Unable to read MAPPING."), error("Error reading X Rotation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 0 0\n}\n",
         {error("Unable to read MAPPING."), error("Error reading Y Rotation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 0 0 -2 0.1 height 0.5\n}\n",
         {error("Unable to read MAPPING."), error("Error reading Z Rotation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 depth 0 0 0\n}\n",
         {error("Unable to read MAPPING."),
          error("Invalid scaling variable 'depth' used for Z Translation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 0 0 7 0\n}\n",
         {error("Unable to read MAPPING."), error("Invalid scaling variable '7' used for Y Rotation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 0 0 0 -2 0.1 0 1\n}\n",
         {error("Unable to read MAPPING."), error("Invalid scaling variable (0) used for Z Rotation.")}},
        {"BODY: thigh\nMAPPING {\n0 0 0 -1 * 0 0\n}\n",
         {error("Unable to read MAPPING."), error("Cannot specify an infinite value for X Rotation.")}},
    };
    for (const FailureCase& c : cases) {
        expect(c);
    }
}

TEST_F(PositionConstraintFailure, OfItems) {
    const FailureCase cases[] = {
        {"BODY: thigh\nNAME: x\n", {error("Unknown tag 'NAME' in POINT_CONSTRAINT.")}},
        {"BODY: thigh\nPOSE {\n}\n", {error("Unknown tag 'POSE' in POINT_CONSTRAINT.")}},
        {"BODY: thigh\n: x\n", {error("Unknown tag '' in POINT_CONSTRAINT.")}},
        {"BODY: thigh\nWEIGHT 2\n", {error("No ':' or '{' following tag 'WEIGHT 2'.")}},
        {"BODY: thigh\nMAPPING {\n0\n", {error("Hit end of file without reading '}' for tag MAPPING")}},
        {"", {error("A POSITION_CONSTRAINT was specified with no BODY.")}},
        {"BODY:\nPARENT: nobody\n", {error("A POSITION_CONSTRAINT was specified with no BODY.")}},
        {"BODY: thigh\nBODY:\n", {error("A POSITION_CONSTRAINT was specified with no BODY.")}},
    };
    for (const FailureCase& c : cases) {
        expect(c);
    }
}

TEST_F(PositionConstraintFailure, OfABaseTransformLetsTheNextItemsBeRead) {
    const FailureCase cases[] = {
        {"BASE_TRANSLATION: x\nWEIGHT: 1\nNONSENSE: 1\n",
         {error("Unable to read WEIGHT."), error("Error reading BASE_TRANSLATION.")}},
        {"BASE_TRANSLATION: x\nPARENT: GLOBAL\nNONSENSE: 1\n",
         {error("Unknown tag 'NONSENSE' in POINT_CONSTRAINT."), error("Error reading BASE_TRANSLATION.")}},
        {"BASE_ROTATION: x\nNONSENSE: 1\n",
         {error("Unknown tag 'NONSENSE' in POINT_CONSTRAINT."), error("Error reading BASE_ROTATION.")}},
        {"BASE_ROTATION: 0 0 0 A\nNONSENSE: 1\n",
         {error("Unknown tag 'NONSENSE' in POINT_CONSTRAINT."),
          error("Invalid axis (A) in rotation order for BASE_ROTATION.\n")}},
        {"BASE_ROTATION: 0 0 0\nMAPPING {\n0 0 0 0 0 0\n}\nNONSENSE: 1\n",
         {error("Unable to read MAPPING."), error("Error reading rotation order for BASE_ROTATION.")}},
        {"BASE_TRANSLATION: x\nLOCAL_POSITION: 0 0 0\nNONSENSE: 1\n",
         {error("Error reading BASE_TRANSLATION.")}},
        {"BASE_TRANSLATION: x\nTRANSFORM_ORDER: 1 2 3 4 5 6\nBASE_TRANSLATION: y\nBODY: tail\n",
         {error("Error reading BASE_TRANSLATION."), error("Error reading BASE_TRANSLATION.")}},
    };
    for (const FailureCase& c : cases) {
        expect(c);
    }
}

TEST_F(PositionConstraintFailure, OfOtherValuesEndsTheReading) {
    const FailureCase cases[] = {
        {"LOCAL_POSITION: x\nNONSENSE: 1\n", {error("Error reading LOCAL_POSITION.")}},
        {"TRANSFORM_ORDER: 9\nNONSENSE: 1\n", {error("Invalid transform id in TRANSFORM_ORDER")}},
        {"WEIGHT: x\nNONSENSE: 1\n", {error("Unable to read WEIGHT."), error("Error reading WEIGHT.")}},
    };
    for (const FailureCase& c : cases) {
        expect(c);
    }
}

TEST_F(PositionConstraintReader, ErrorThatStoodBeforeDropsTheConstraint) {
    pushError("before");
    EXPECT_FALSE(read("BODY: thigh\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("before")});
    EXPECT_THAT(linesOf(records), IsEmpty());
}

} // namespace
} // namespace quillon::scaleDef
