#include "quillon/scale/ScaleRecordWriter.h"

#include "tests/scale/ScaleSamples.h"
#include "tests/scale/ScaleSections.h"
#include "tests/support/RoundTrip.h"

#include <limits>

namespace quillon {
namespace {

using test::literal;
using test::offsetForm;
using test::scaleForm;

class ScaleRecordWriter : public test::ScaleSections {
protected:
    std::string written(const scaleDef::ScaleMapping& mapping) const {
        return test::writtenBy([&](std::ostream& output) { definition.writeScaleMapping(output, mapping); });
    }

    std::string written(const scaleDef::PositionConst_t& record, int indentLevel) const {
        return test::writtenBy(
            [&](std::ostream& output) { definition.writePositionConstraint(output, record, indentLevel); });
    }
};

scaleDef::ScaleMapping combination(const scaleDef::ScaleFloat& constant) {
    scaleDef::ScaleMapping mapping(-1);
    mapping.constant = constant;
    return mapping;
}

// --- Mappings ------------------------------------------------------------------------------------

TEST_F(ScaleRecordWriter, WritesEveryFormOfAMapping) {
    EXPECT_EQ(written(scaleDef::ScaleMapping()), "0");
    EXPECT_EQ(written(scaleDef::ScaleMapping(1)), "height");
    EXPECT_EQ(written(scaleDef::ScaleMapping(-1)), "-1 0");
    EXPECT_EQ(written(combination(offsetForm(3, 0.5F))), "-1 [m3 + 0.5]");
    scaleDef::ScaleMapping mapping = combination(literal(0.1F));
    mapping.appendTerm(1, literal(0.5F));
    EXPECT_EQ(written(mapping), "-2 0.1 height 0.5");
    mapping.constant = scaleForm(1, 4);
    mapping.appendTerm(1, scaleForm(2, 2));
    mapping.appendTerm(1, literal(0));
    EXPECT_EQ(written(mapping), "-4 [m1 4] height 0.5 height [m2 2] height 0");
}

TEST_F(ScaleRecordWriter, WritesNoStarInAMapping) {
    scaleDef::ScaleMapping mapping = combination(literal(scaleDef::noLowerLimit));
    mapping.appendTerm(1, literal(scaleDef::noUpperLimit));
    EXPECT_EQ(written(mapping), "-2 -3.40282e+38 height 3.40282e+38");
}

TEST_F(ScaleRecordWriter, WritesNamesInAMappingBare) {
    EXPECT_EQ(written(scaleDef::ScaleMapping(2)), "arm width");
}

TEST_F(ScaleRecordWriter, WritesTheNumberOfAVariableThatIsNotThere) {
    EXPECT_EQ(written(scaleDef::ScaleMapping(3)), "3");
    scaleDef::ScaleMapping mapping = combination(literal(0.1F));
    mapping.appendTerm(0, literal(1));
    mapping.appendTerm(3, literal(2));
    mapping.appendTerm(-1, literal(3));
    EXPECT_EQ(written(mapping), "-4 0.1 0 1 3 2 -1 3");
}

TEST_F(ScaleRecordWriter, WritesAsManyTermsAsTheIdAnnounces) {
    scaleDef::ScaleMapping mapping = combination(literal(0.1F));
    mapping.appendTerm(1, literal(2));
    mapping.appendTerm(1, literal(3));
    mapping.id = -2;
    EXPECT_EQ(written(mapping), "-2 0.1 height 2");
    mapping.id = -1;
    EXPECT_EQ(written(mapping), "-1 0.1");
    mapping.id = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(written(mapping), "-2147483648 0.1 height 2 height 3");
}

// --- Position constraints ------------------------------------------------------------------------

TEST_F(ScaleRecordWriter, WritesAPositionConstraintAtAnyLevel) {
    scaleDef::PositionConst_t record = test::positionConstraint("left foot", 0.25F);
    record.localPosition = {1e-7F, -2.5F, 1e7F};
    record.baseTranslation = {0.1F, 0, -0.0F};
    record.mapping[0].id = 1;
    record.mapping[5] = combination(scaleForm(1, 2));
    const std::vector<std::string> lines = {"POSITION_CONSTRAINT {",
                                            "  BODY: left foot",
                                            "  PARENT: GLOBAL",
                                            "  LOCAL_POSITION: 1e-07 -2.5 1e+07",
                                            "  WEIGHT: 0.25",
                                            "  BASE_TRANSLATION: 0.1 0 -0",
                                            "  BASE_ROTATION: 0 -0 0 Z Y X",
                                            "  TRANSFORM_ORDER: 1 2 3 4 5 6",
                                            "  MAPPING {",
                                            "    height",
                                            "    0",
                                            "    0",
                                            "    0",
                                            "    0",
                                            "    -1 [m1 2]",
                                            "  }",
                                            "}"};
    std::string text;
    for (int level = 0; level < 3; ++level) {
        std::string expected;
        for (const std::string& line : lines) {
            expected += std::string(static_cast<std::size_t>(2 * level), ' ') + line + "\n";
        }
        EXPECT_EQ(written(record, level), expected);
    }
}

/// The line of the base rotation alone.
std::string rotationLine(const std::string& text) {
    const std::size_t start = text.find("BASE_ROTATION: ");
    return text.substr(start, text.find('\n', start) - start);
}

TEST_F(ScaleRecordWriter, WritesTheBaseRotationAsAnglesOfXYAndZ) {
    const struct {
        LmMat3 rotation;
        const char* line;
    } cases[] = {
        // A quarter turn about x, z, and half a turn about y: which z and x do as well.
        {{1, 0, 0, 0, 0, 1, 0, -1, 0}, "BASE_ROTATION: 1.5708 -0 0 Z Y X"},
        {{0, 1, 0, -1, 0, 0, 0, 0, 1}, "BASE_ROTATION: 0 -0 1.5708 Z Y X"},
        {{-1, 0, 0, 0, 1, 0, 0, 0, -1}, "BASE_ROTATION: 3.14159 -0 3.14159 Z Y X"},
    };
    for (const auto& [rotation, line] : cases) {
        scaleDef::PositionConst_t record = test::positionConstraint("thigh");
        record.baseRotation = rotation;
        EXPECT_EQ(rotationLine(written(record, 0)), line);
    }
}

// --- Guides --------------------------------------------------------------------------------------

TEST_F(ScaleRecordWriter, WritesGuidesBehindAnyIndentation) {
    LmDArray<scaleDef::SysVarGuideOverride> records;
    records.append({4, 1.5F, 1e-5F});
    EXPECT_EQ(test::writtenBy([&](std::ostream& output) {
                  LqScaleDefData::writeGuideOverrides(output, records, problemDef, "\t ");
              }),
              "\t SYS_VAR_GUIDE_OVERRIDE {\n"
              "\t   SYS_VAR: \"knee_x\"\n"
              "\t   VALUE: 1.5\n"
              "\t   WEIGHT: 1e-05\n"
              "\t }\n");
    EXPECT_EQ(test::writtenBy([&](std::ostream& output) {
                  LqScaleDefData::writeGuideOverrides(output, LmDArray<scaleDef::SysVarGuideOverride>(),
                                                      problemDef, "  ");
              }),
              "");
}

} // namespace
} // namespace quillon
