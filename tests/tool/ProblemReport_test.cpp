#include "quillon/tool/ProblemReport.h"

#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemDefReport.h"
#include "quillon/tool/ReportAttributes.h"
#include "tests/support/StatusChain.h"
#include "tests/tool/WrittenText.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using test::written;

struct Report {
    std::string out;
    std::string messages;
};

Report reportOf(const LqProblemBundle& bundle) {
    std::ostringstream out;
    std::ostringstream messages;
    writeProblemReport(out, messages, bundle);
    return {out.str(), messages.str()};
}

LqBasicVarMapping<float> combination(float constant, std::initializer_list<LqLinearTerm<float>> terms) {
    LqBasicVarMapping<float> mapping;
    mapping.id = -1;
    mapping.constant = constant;
    for (const LqLinearTerm<float>& term : terms) {
        mapping.appendTerm(term.sysVar, term.coefficient);
    }
    return mapping;
}

// Most of what the report prints and leaves out is fixed by whole runs; here stands what no file can hold.

TEST(ProblemReport, OfAnEmptyProblemIsEmpty) {
    const Report report = reportOf(LqProblemBundle());
    EXPECT_EQ(report.out, "");
    EXPECT_EQ(report.messages, "");
}

TEST(ProblemReport, LeavesOutNullTextsAndPrintsEmptyOnes) {
    LqProblemBundle bundle;
    for (const LmStr& text : {LmStr(), LmStr("")}) {
        auto* const sysVar = new LqPDDSysVar;
        sysVar->id = 3;
        sysVar->description = text;
        bundle.problemDef.sysVars.append(sysVar);
        bundle.problemDef.addBody("B", text, 0);
        LqPDDRealMarker marker;
        marker.id = 1;
        marker.bodyName = text;
        bundle.problemDef.addRealMarker(marker);
    }
    const Report report = reportOf(bundle);
    EXPECT_EQ(report.out, "sys_var v3\n"
                          "sys_var v3 description=\"\"\n"
                          "body B\n"
                          "body B parent=\"\"\n"
                          "real_marker id=1 weight=0\n"
                          "real_marker id=1 body= weight=0\n");
    EXPECT_EQ(report.messages, "Body B is missing in the unscaled body def\n"
                               "Body B is missing in the unscaled body def\n"
                               "Marker 1 is not in the unscaled bodydef.\n"
                               "Marker 1 is not in the unscaled bodydef.\n");
}

TEST(ProblemReport, PassesOverNullSlots) {
    LqProblemBundle bundle;
    bundle.problemDef.sysVars.append(nullptr);
    bundle.problemDef.realMarkers.append(nullptr);
    bundle.problemDef.artificialMarkers.append(nullptr);
    bundle.model.realMarkers.append(nullptr);
    EXPECT_EQ(reportOf(bundle).out, "");
}

TEST(ProblemReport, PrintsNoMarkersOfOtherKinds) {
    LqProblemBundle bundle;
    bundle.problemDef.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(1, 1, "B"));
    bundle.problemDef.fixMarkers.append(new LqPDDFixMarker(2, 1, "B"));
    bundle.problemDef.doubleMarkers.append(new LqPDDDoubleMarker(3, 1, 1, "B"));
    const Report report = reportOf(bundle);
    EXPECT_EQ(report.out, "");
    EXPECT_EQ(report.messages, "");
}

TEST(ProblemReport, LooksUpMarkersInAllArraysOfTheModelButThatOfGlobalDirections) {
    LqProblemBundle bundle;
    LqPDDArtificialMarker pair;
    pair.id = 1;
    pair.otherId = 2;
    bundle.problemDef.addArtificialMarker(pair);
    bundle.model.globalDirectionMarkers.append(new LqBDMarker{1, {9, 9, 9}});
    bundle.model.doubleMarkers.append(new LqBDMarker{2, {1, 2, 3}});
    EXPECT_EQ(reportOf(bundle).out, "artificial_pair id=1 other_id=2 weight=0\n"
                                    "artificial_marker id=1 body=\n"
                                    "artificial_marker id=2 body= local=(1 2 3)\n");
}

TEST(ProblemReport, TestsAndPushesNothing) {
    const test::CleanStatus cleanStatus;
    pushError("before");
    LqProblemBundle bundle;
    bundle.problemDef.addBody("B", referenceSystemName, 0);
    EXPECT_EQ(reportOf(bundle).out, "body B\n");
    EXPECT_EQ(test::takeChain(), test::StatusChain{test::error("before")});
}

TEST(ProblemReport, PrintsAWeightThatIsSetWithoutItsLimit) {
    LqProblemBundle bundle;
    auto* const sysVar = new LqPDDSysVar;
    sysVar->id = 1;
    sysVar->description = "a";
    bundle.problemDef.sysVars.append(sysVar);
    bundle.limits.setLowerWeight(1, 2.5F);
    bundle.limits.setUpperWeight(1, 0.0F);
    bundle.limits.setGuideValue(1, 2.0F);
    EXPECT_EQ(reportOf(bundle).out,
              "sys_var v1 description=\"a\" lower_limit_weight=2.5 upper_limit_weight=0\n");
}

TEST(ProblemReport, PrintsTheNumberOfABodyTypeOtherThanTwist) {
    LqProblemBundle bundle;
    for (const std::int32_t type : {0, 1, 2, 3, -1}) {
        bundle.problemDef.addBody("B", referenceSystemName, 1);
        bundle.problemDef.bodies[bundle.problemDef.bodies.count() - 1]->type = type;
    }
    EXPECT_EQ(reportOf(bundle).out, "body B id=1\n"
                                    "body B id=1 type=twist\n"
                                    "body B id=1 type=2\n"
                                    "body B id=1 type=3\n"
                                    "body B id=1 type=-1\n");
}

TEST(ProblemReport, TakesTheFirstOfSeveralRecordsOfOneNameOrId) {
    LqProblemBundle bundle;
    bundle.problemDef.addBody("B", referenceSystemName, 0);
    for (const float x : {1.0F, 2.0F}) {
        LqBDBody body;
        body.name = "B";
        body.baseTransform[12] = x;
        bundle.model.addBody(body);
        bundle.model.addRealMarker({4, {x, 0, 0}});
        bundle.model.addArtificialPair({7, {x, 0, 0}}, {2, {x, 0, 0}});
    }
    LqPDDArtificialMarker pair;
    pair.id = 2;
    pair.otherId = 7;
    bundle.problemDef.addArtificialMarker(pair);
    LqPDDRealMarker marker;
    marker.id = 4;
    marker.bodyName = referenceSystemName;
    bundle.problemDef.addRealMarker(marker);
    EXPECT_EQ(reportOf(bundle).out, "body B base_transform=(tx=1)\n"
                                    "real_marker id=4 weight=0 local=(1 0 0)\n"
                                    "artificial_pair id=2 other_id=7 weight=0\n"
                                    "artificial_marker id=2 body= local=(1 0 0)\n"
                                    "artificial_marker id=7 body= local=(1 0 0)\n");
}

TEST(ProblemReport, WritesATransformThatNoOrderNamesAsUnknown) {
    LqProblemBundle bundle;
    bundle.problemDef.addBody("B", referenceSystemName, 0);
    LqPDDBodyMap& body = *bundle.problemDef.bodies[0];
    body.transformOrder[0] = 7;
    body.setMapping(0, 1);
    testing::internal::CaptureStderr();
    const std::string out = reportOf(bundle).out;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "invalid transform_id 7\n");
    EXPECT_EQ(out, "body B transforms=(unknown=v1)\n");
}

TEST(ProblemReport, IsWholeBeyondTheSizeOfOnePiece) {
    LqProblemBundle bundle;
    std::string expected;
    for (std::int32_t id = 1; id <= 5000; ++id) {
        auto* const sysVar = new LqPDDSysVar;
        sysVar->id = id;
        sysVar->description = "some variable";
        bundle.problemDef.sysVars.append(sysVar);
        expected += "sys_var v" + std::to_string(id) + " description=\"some variable\"\n";
    }
    EXPECT_EQ(reportOf(bundle).out, expected);
}

TEST(WriteMappingText, FollowsTheFormOfTheMapping) {
    const auto textOf = [](const LqBasicVarMapping<float>& mapping) {
        return written([&mapping](ReportText& out) { writeMappingText(out, mapping); });
    };
    EXPECT_EQ(textOf(LqBasicVarMapping<float>(0)), "");
    EXPECT_EQ(textOf(LqBasicVarMapping<float>(12)), "v12");
    EXPECT_EQ(textOf(combination(0, {})), "");
    EXPECT_EQ(textOf(combination(-0.0F, {})), "");
    EXPECT_EQ(textOf(combination(0.5F, {})), "0.5");
    EXPECT_EQ(textOf(combination(0.5F, {{3, -2}, {4, 1}})), "0.5+-2*v3+v4");
    EXPECT_EQ(textOf(combination(0, {{3, 1}, {4, 0}})), "v3+0*v4");
    EXPECT_EQ(textOf(combination(1, {{3, 1}})), "1+v3");
}

TEST(TransformLabel, NamesTheSixTransforms) {
    const char* const labels[] = {"tx", "ty", "tz", "rx", "ry", "rz"};
    for (std::int32_t id = 1; id <= 6; ++id) {
        EXPECT_EQ(transformLabel(id), labels[id - 1]);
    }
}

TEST(TransformLabel, RemarksOnAnyOtherNumberOnStandardError) {
    for (const std::int32_t id : {0, 7, -1, 2147483647}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(transformLabel(id), "unknown");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "invalid transform_id " + std::to_string(id) + "\n");
    }
}

TEST(WriteVector3, PutsTheNumbersInParentheses) {
    const auto textOf = [](const LmVec3& vector) {
        return written([&vector](ReportText& out) { writeVector3(out, vector); });
    };
    EXPECT_EQ(textOf({0.1F, -2.0F, 1e-7F}), "(0.1 -2 1e-07)");
    EXPECT_EQ(textOf({-1.23456e-38F, -1.23456e-38F, -1.23456e-38F}),
              "(-1.23456e-38 -1.23456e-38 -1.23456e-38)");
}

TEST(ValueList, SeparatesItsEntriesByOneBlank) {
    EXPECT_EQ(written([](ReportText& out) {
                  ValueList list(out, "list");
                  addValue(list, "a", 1.5F);
                  addValue(list, "b", 0.0F);
                  addValue(list, "c", -0.0F);
                  addValue(list, "d", -2.0F);
                  list.addEntry("e");
              }),
              " list=(a=1.5 d=-2 e=)");
}

TEST(ValueList, WritesNothingWithoutEntries) {
    EXPECT_EQ(written([](ReportText& out) { const ValueList list(out, "list"); }), "");
}

TEST(WriteTransformAttribute, LeavesOutZerosOneByOneAndAnIdentityAltogether) {
    // A quarter turn about z takes x to y.
    constexpr LmMat3 quarterTurn = {0, 1, 0, -1, 0, 0, 0, 0, 1};
    const struct {
        LmVec3 translation;
        LmMat3 rotation;
        const char* text;
    } cases[] = {
        {{0, 0, 0}, identityMat3, ""},
        {{0, -0.0F, 0}, identityMat3, ""},
        {{1, 0, 0}, identityMat3, " base=(tx=1)"},
        {{0, -2.5F, 1e-9F}, identityMat3, " base=(ty=-2.5 tz=1e-09)"},
        {{0, 0, 0}, quarterTurn, " base=(rz=1.5708)"},
        {{1, 2, 3}, quarterTurn, " base=(tx=1 ty=2 tz=3 rz=1.5708)"},
    };
    for (const auto& [translation, rotation, text] : cases) {
        const LmVec3& offset = translation;
        const LmMat3& turn = rotation;
        EXPECT_EQ(written([&](ReportText& out) { writeTransformAttribute(out, "base", offset, turn); }),
                  text);
    }
}

} // namespace
} // namespace quillon
