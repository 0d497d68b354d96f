#include "quillon/scale/PoseReader.h"

#include "tests/scale/ScaleSections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon::scaleDef {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

class PoseReader : public test::ScaleSections {
protected:
    bool read(const std::string& blockText, bool lenient = false) {
        pose = {};
        const ScaleDefContext context(definition, problemDef, lenient);
        return readPose(blockText, context, pose);
    }

    std::vector<std::string> limitLines() const {
        std::vector<std::string> lines;
        for (const LimitOverride_t& limit : pose.limitOverrides) {
            lines.push_back(std::to_string(limit.sysVarId) + " from " + test::textOf(limit.lower) + " to " +
                            test::textOf(limit.upper));
        }
        return lines;
    }

    std::vector<std::vector<float>> guides() const {
        std::vector<std::vector<float>> rows;
        for (const SysVarGuideOverride& guide : pose.sysVarGuideOverrides) {
            rows.push_back({static_cast<float>(guide.sysVarId), guide.value, guide.weight});
        }
        return rows;
    }

    /// The bodies of the position constraints.
    std::vector<std::string> positionedBodies() const {
        std::vector<std::string> names;
        for (const PositionConst_t& record : pose.positionConstraints) {
            names.emplace_back(record.body.view());
        }
        return names;
    }

    Pose_t pose;
};

TEST_F(PoseReader, ReadsAllSections) {
    EXPECT_TRUE(read("NAME: standing still\n"
                     "LIMIT_ADJUSTMENTS {\n"
                     "knee_x -1.5 [m1 + 2]\n"
                     "17 0 1\n"
                     "}\n"
                     "SYS_VAR_GUIDE_OVERRIDE {\n"
                     "SYS_VAR: 9\n"
                     "VALUE: 0.5\n"
                     "WEIGHT: 2\n"
                     "}\n"
                     "GLOBAL_CONSTRAINTS {\n"
                     "thigh 0 1 0  0 0 1\n"
                     "}\n"
                     "POSITION_CONSTRAINT {\n"
                     "BODY: thigh\n"
                     "MAPPING {\n"
                     "0 height 0 0 0 0\n"
                     "}\n"
                     "}\n"
                     "SYS_VAR_GUIDE_OVERRIDE {\n"
                     "SYS_VAR: knee_x\n"
                     "VALUE: -1\n"
                     "WEIGHT: 1\n"
                     "}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(pose.name, "standing still");
    EXPECT_THAT(limitLines(), ElementsAre("4 from -1.5 to [m1 factor 0 offset 2]", "17 from 0 to 1"));
    EXPECT_THAT(guides(), ElementsAre(ElementsAre(4, -1, 1), ElementsAre(9, 0.5, 2)));
    EXPECT_THAT(linesOf(pose.globalConstraints), ElementsAre("thigh: (0 1 0) along (0 0 1)"));
    EXPECT_THAT(
        linesOf(pose.positionConstraints),
        ElementsAre("thigh on GLOBAL: at (0 0 0) order (1 2 3 6 5 4) weight 1 mapping 0, var 1, 0, 0, "
                    "0, 0 base (0 0 0) turned (1 0 0 0 1 0 0 0 1)"));
}

TEST_F(PoseReader, NothingGoesToTheDefinitionItself) {
    EXPECT_TRUE(
        read("NAME: a\nLIMIT_ADJUSTMENTS {\n17 0 1\n}\nSYS_VAR_GUIDE_OVERRIDE {\nSYS_VAR: 9\nVALUE: 1\n"
             "WEIGHT: 1\n}\nGLOBAL_CONSTRAINTS {\nthigh 1 0 0 1 0 0\n}\n"
             "POSITION_CONSTRAINT {\nBODY: thigh\n}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(definition.limitOverrides.count(), 0);
    EXPECT_EQ(definition.sysVarGuideOverrides.count(), 0);
    EXPECT_EQ(definition.globalConstraints.count(), 0);
    EXPECT_EQ(definition.positionConstraints.count(), 0);
    EXPECT_EQ(definition.poses.count(), 0);
}

TEST_F(PoseReader, NameAloneMakesAPose) {
    EXPECT_TRUE(read("Name: sitting\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    Pose_t expected;
    expected.name = "sitting";
    EXPECT_TRUE(pose == expected);
}

TEST_F(PoseReader, RepeatedNameKeepsTheLast) {
    EXPECT_TRUE(read("NAME: a\nNAME: b\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(pose.name, "b");
}

TEST_F(PoseReader, LaterBlockOfLimitsOrGlobalConstraintsReplacesTheEarlier) {
    EXPECT_TRUE(read("NAME: a\n"
                     "LIMIT_ADJUSTMENTS {\n1 0 1\n2 0 1\n}\n"
                     "LIMIT_ADJUSTMENTS {\n3 0 1\n}\n"
                     "GLOBAL_CONSTRAINTS {\nthigh 1 0 0 1 0 0\n}\n"
                     "GLOBAL_CONSTRAINTS {\nshank 1 0 0 1 0 0\n}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(limitLines(), ElementsAre("3 from 0 to 1"));
    EXPECT_THAT(linesOf(pose.globalConstraints), ElementsAre("shank: (1 0 0) along (1 0 0)"));
}

TEST_F(PoseReader, EmptyBlocksOfLimitsAndGlobalConstraintsAreTaken) {
    EXPECT_TRUE(read("LIMIT_ADJUSTMENTS {\n}\nGLOBAL_CONSTRAINTS {\n}\nNAME: a\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(PoseReader, BlocksOfGuidesAndPositionConstraintsAdd) {
    EXPECT_TRUE(read("NAME: a\n"
                     "POSITION_CONSTRAINT {\nBODY: thigh\n}\n"
                     "SYS_VAR_GUIDE_OVERRIDE {\nSYS_VAR: 9\nVALUE: 1\nWEIGHT: 1\n}\n"
                     "POSITION_CONSTRAINT {\nBODY: shank\n}\n"
                     "POSITION_CONSTRAINT {\nBODY: thigh\n}\n"
                     "SYS_VAR_GUIDE_OVERRIDE {\nSYS_VAR: 8\nVALUE: 2\nWEIGHT: 2\n}\n"
                     "SYS_VAR_GUIDE_OVERRIDE {\nSYS_VAR: 9\nVALUE: 3\nWEIGHT: 3\n}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(guides(), ElementsAre(ElementsAre(8, 2, 2), ElementsAre(9, 1, 1)));
    EXPECT_THAT(positionedBodies(), ElementsAre("thigh", "shank", "thigh"));
}

TEST_F(PoseReader, PoseWithoutANameIsRefusedAtItsEnd) {
    const test::StatusLine noName = error("A pose was specified with no name.\n");
    EXPECT_FALSE(read(""));
    EXPECT_EQ(takeChain(), StatusChain{noName});
    EXPECT_FALSE(read("NAME: a\nNAME:\n"));
    EXPECT_EQ(takeChain(), StatusChain{noName});
    EXPECT_FALSE(read("GLOBAL_CONSTRAINTS {\nthigh 0 1 0 0 0 4\n}\nPOSITION_CONSTRAINT {\nBODY: tail\n}\n"
                      "POSITION_CONSTRAINT {\nBODY: thigh\n}\n"));
    EXPECT_EQ(
        takeChain(),
        (StatusChain{noName,
                     warning("Body 'tail' has a POSITION_CONSTRAINT in the scaling definition, but that "
                             "body is not in the problem definition.  This constraint will be ignored."),
                     warning("A global constraint was specified for body thigh which has differing "
                             "magnitudes for the local and global vectors.  Adjusting the vectors.")}));
    EXPECT_THAT(positionedBodies(), ElementsAre("thigh"));
}

TEST_F(PoseReader, FirstFailureEndsTheReading) {
    struct Case {
        const char* text;
        StatusChain expected;
    };
    const Case cases[] = {
        {"NAME: a\nX: 1\nY: 1\n", {error("Unknown tag 'X' in pose section.")}},
        {"BODY_SCALINGS {\n}\n", {error("Unknown tag 'BODY_SCALINGS' in pose section.")}},
        {": x\n", {error("Unknown tag '' in pose section.")}},
        {"NAME standing\n", {error("No ':' or '{' following tag 'NAME standing'.")}},
        {"GLOBAL_CONSTRAINTS {\n", {error("Hit end of file without reading '}' for tag GLOBAL_CONSTRAINTS")}},
        {"LIMIT_ADJUSTMENTS {\n3 x 1\n}\nX: 1\n", {error("Error reading lower limit.")}},
        {"SYS_VAR_GUIDE_OVERRIDE {\nWEIGHT: 1\n}\nX: 1\n", {error("No value specified")}},
        {"SYS_VAR_GUIDE_OVERRIDE {\nSYS_VAR: elbow\nVALUE: 1\nWEIGHT: 1\n}\nX: 1\n",
         {error("Variable 'elbow' is not in the problem definition.")}},
        {"GLOBAL_CONSTRAINTS {\nthigh 1 0 0\n}\nX: 1\n", {error("Error reading constraint global vect.")}},
        {"POSITION_CONSTRAINT {\nWEIGHT: 1\n}\nX: 1\n",
         {error("A POSITION_CONSTRAINT was specified with no BODY.")}},
    };
    for (const bool lenient : {false, true}) {
        for (const Case& c : cases) {
            EXPECT_FALSE(read(c.text, lenient)) << c.text;
            EXPECT_EQ(takeChain(), c.expected) << c.text;
        }
    }
}

TEST_F(PoseReader, UnresolvedReferencesEndAStrictReadingOnly) {
    struct Case {
        const char* text;
        std::string message;
    };
    const Case cases[] = {
        {"LIMIT_ADJUSTMENTS {\nelbow 0 1\n}\n", "Variable 'elbow' is not in the problem definition."},
        {"LIMIT_ADJUSTMENTS {\n4 0 1\n4 0 1\n}\n",
         "There are multiple limit adjustments for variable 4 (knee_x)."},
        {"GLOBAL_CONSTRAINTS {\ntail 0 1 0 0 0 1\n}\n",
         "A global constraint was specified for body tail, but this body is not in the problem definition."},
    };
    for (const Case& c : cases) {
        const std::string text = std::string(c.text) + "NAME: a\n";
        EXPECT_FALSE(read(text)) << text;
        EXPECT_EQ(takeChain(), StatusChain{error(c.message)}) << text;
        EXPECT_TRUE(read(text, true)) << text;
        EXPECT_EQ(takeChain(), StatusChain{warning(c.message)}) << text;
    }
}

TEST_F(PoseReader, ErrorThatStoodBeforeStopsTheFirstSectionThatAsks) {
    pushError("before");
    EXPECT_TRUE(read("NAME: a\n"));
    EXPECT_FALSE(read("NAME: a\nGLOBAL_CONSTRAINTS {\n}\nX: 1\n"));
    EXPECT_EQ(takeChain(), StatusChain{error("before")});
}

} // namespace
} // namespace quillon::scaleDef
