#include "quillon/scale/LqScaleDefData.h"

#include "tests/core/StrForms.h"
#include "tests/scale/ScaleSamples.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace quillon {
namespace {

using test::addPose;
using test::error;
using test::literal;
using test::positionConstraint;
using test::Scale;
using test::scaledBody;
using test::scaleVar;
using test::StatusChain;
using testing::ElementsAre;
using testing::IsEmpty;

class ScaleVariables : public testing::Test {
protected:
    void append(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            definition.scaleVars.append(scaleVar(name));
        }
    }

    std::vector<std::string> names() const {
        std::vector<std::string> texts;
        for (const Scale::ScaleVar& variable : definition.scaleVars) {
            texts.push_back(test::textOf(variable.name));
        }
        return texts;
    }

    Scale definition;

private:
    test::CleanStatus cleanStatus;
};

/// A linear combination of two variables.
scaleDef::ScaleMapping combination(int first, int second) {
    scaleDef::ScaleMapping mapping;
    mapping.appendTerm(first, literal(1));
    mapping.appendTerm(second, literal(2));
    return mapping;
}

/// The id of a mapping and those of its terms.
std::vector<int> idsOf(const scaleDef::ScaleMapping& mapping) {
    std::vector<int> ids{mapping.id};
    for (const LqLinearTerm<Scale::ScaleFloat>* term : mapping.termList()) {
        ids.push_back(term->sysVar);
    }
    return ids;
}

TEST_F(ScaleVariables, AreCounted) {
    EXPECT_EQ(definition.scaleVarCount(), 0);
    append({"a", "b"});
    EXPECT_EQ(definition.scaleVarCount(), 2);
}

TEST_F(ScaleVariables, AreSetWhole) {
    append({"a", "b"});
    const Scale::ScaleVar height{"height", "Subject height", test::scaleForm(1, 2), test::offsetForm(2, 3)};
    definition.setScaleVar(2, height);
    EXPECT_EQ(definition.scaleVars[1], height);
    EXPECT_THAT(names(), ElementsAre("a", "height"));
}

TEST_F(ScaleVariables, WithoutANameAreNamedByTheirId) {
    append({"a", "b", "c", "d", "e", "f", "g"});
    definition.setScaleVar(7, scaleVar("", "nameless"));
    EXPECT_EQ(definition.scaleVars[6], scaleVar("7", "nameless"));
    Scale::ScaleVar withNullName = scaleVar("x");
    withNullName.name.reset();
    definition.setScaleVar(1, withNullName);
    EXPECT_EQ(definition.scaleVars[0], scaleVar("1"));
}

TEST_F(ScaleVariables, AreInsertedFromTheFirstIdToOneBehindTheLast) {
    definition.insertScaleVar(1, scaleVar("b"));
    definition.insertScaleVar(1, scaleVar("a"));
    definition.insertScaleVar(3, scaleVar("d"));
    definition.insertScaleVar(3, scaleVar("", "nameless"));
    EXPECT_THAT(names(), ElementsAre("a", "b", "3", "d"));
    EXPECT_EQ(definition.scaleVars[2], scaleVar("3", "nameless"));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(ScaleVariables, AreNotInsertedElsewhere) {
    append({"a", "b"});
    for (const int id : {0, -1, -2147483647 - 1}) {
        definition.insertScaleVar(id, scaleVar("x"));
        EXPECT_EQ(test::takeChain(), StatusChain{error("The id must be greater than zero.")}) << id;
    }
    for (const int id : {4, 2147483647}) {
        definition.insertScaleVar(id, scaleVar("x"));
        EXPECT_EQ(test::takeChain(), StatusChain{error("The highest valid id is 3.")}) << id;
    }
    EXPECT_THAT(names(), ElementsAre("a", "b"));
}

TEST_F(ScaleVariables, ThatAreInsertedLeaveTheMappings) {
    append({"a", "b"});
    definition.bodyParams.append(scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 2;
    definition.bodyParams[0].scale[1] = combination(1, 2);
    definition.insertScaleVar(1, scaleVar("x"));
    EXPECT_THAT(idsOf(definition.bodyParams[0].scale[0]), ElementsAre(2));
    EXPECT_THAT(idsOf(definition.bodyParams[0].scale[1]), ElementsAre(-3, 1, 2));
}

TEST_F(ScaleVariables, ThatAreRemovedCloseTheGapInTheArray) {
    append({"a", "b", "c"});
    definition.removeScaleVar(2);
    EXPECT_THAT(names(), ElementsAre("a", "c"));
    definition.removeScaleVar(2);
    definition.removeScaleVar(1);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ScaleVariables, ThatAreRemovedRenumberEveryMappingOnLaterOnes) {
    append({"a", "b", "c", "d"});
    definition.bodyParams.append(scaledBody("thigh"));
    definition.positionConstraints.append(positionConstraint("shin"));
    definition.poses.append(nullptr);
    addPose(definition, "standing").positionConstraints.append(positionConstraint("foot"));
    Scale::BodyParams_t& body = definition.bodyParams[0];
    LmArray<scaleDef::ScaleMapping>& own = definition.positionConstraints[0].mapping;
    LmArray<scaleDef::ScaleMapping>& posed = definition.poses[1]->positionConstraints[0].mapping;
    body.scale[0].id = 3;
    body.scale[1].id = 1;
    body.scale[2] = combination(4, 1);
    own[0].id = 4;
    own[5] = combination(3, 4);
    posed[0].id = -1;
    posed[1] = combination(1, 3);

    definition.removeScaleVar(2);

    EXPECT_THAT(idsOf(body.scale[0]), ElementsAre(2));
    EXPECT_THAT(idsOf(body.scale[1]), ElementsAre(1));
    EXPECT_THAT(idsOf(body.scale[2]), ElementsAre(-3, 3, 1));
    EXPECT_THAT(idsOf(own[0]), ElementsAre(3));
    EXPECT_THAT(idsOf(own[1]), ElementsAre(0));
    EXPECT_THAT(idsOf(own[5]), ElementsAre(-3, 2, 3));
    EXPECT_THAT(idsOf(posed[0]), ElementsAre(-1));
    EXPECT_THAT(idsOf(posed[1]), ElementsAre(-3, 1, 2));
}

TEST_F(ScaleVariables, ThatAreRemovedInUseLeaveTheirMappingsOnTheOneThatMovedUp) {
    append({"a", "b", "c"});
    definition.bodyParams.append(scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 2;
    definition.bodyParams[0].scale[1] = combination(2, 3);
    definition.removeScaleVar(2);
    EXPECT_THAT(idsOf(definition.bodyParams[0].scale[0]), ElementsAre(2));
    EXPECT_THAT(idsOf(definition.bodyParams[0].scale[1]), ElementsAre(-3, 2, 2));
    EXPECT_EQ(definition.scaleVars[1].name, "c");
}

TEST_F(ScaleVariables, ThatAreRemovedInUseByAConstraintLeaveItsMappingsToo) {
    append({"a", "b", "c"});
    definition.positionConstraints.append(positionConstraint("shin"));
    addPose(definition, "standing").positionConstraints.append(positionConstraint("foot"));
    for (LmArray<scaleDef::ScaleMapping>* mapping :
         {&definition.positionConstraints[0].mapping, &definition.poses[0]->positionConstraints[0].mapping}) {
        (*mapping)[0].id = 2;
        (*mapping)[3] = combination(3, 2);
        (*mapping)[4].id = 3;
    }
    definition.removeScaleVar(2);
    for (const LmArray<scaleDef::ScaleMapping>* mapping :
         {&definition.positionConstraints[0].mapping, &definition.poses[0]->positionConstraints[0].mapping}) {
        EXPECT_THAT(idsOf((*mapping)[0]), ElementsAre(2));
        EXPECT_THAT(idsOf((*mapping)[3]), ElementsAre(-3, 2, 2));
        EXPECT_THAT(idsOf((*mapping)[4]), ElementsAre(2));
    }
}

TEST_F(ScaleVariables, AreUsedInEachPlaceOfAMapping) {
    using Mappings = std::function<scaleDef::ScaleMapping&(Scale&)>;
    const struct {
        const char* name;
        Mappings mapping;
    } places[] = {{"first axis", [](Scale & d) -> auto& {return d.bodyParams[0].scale[0];
}
} // namespace
, {"third axis", [](Scale& d) -> auto& {return d.bodyParams[0].scale[2];
} // namespace quillon
}
, {"own first", [](Scale& d) -> auto& {return d.positionConstraints[0].mapping[0];
}
}
, {"own last", [](Scale& d) -> auto& {return d.positionConstraints[0].mapping[5];
}
}
, {"posed first", [](Scale& d) -> auto& {return d.poses[0]->positionConstraints[0].mapping[0];
}
}
, {"posed last", [](Scale& d) -> auto& {return d.poses[0]->positionConstraints[0].mapping[5];
}
}
,
}
;
definition.bodyParams.append(scaledBody("thigh"));
definition.positionConstraints.append(positionConstraint("shin"));
addPose(definition, "standing").positionConstraints.append(positionConstraint("foot"));
for (const auto& [name, mapping] : places) {
    SCOPED_TRACE(name);
    mapping(definition).id = 3;
    EXPECT_TRUE(definition.isScaleVarUsed(3));
    EXPECT_FALSE(definition.isScaleVarUsed(2));
    mapping(definition) = combination(4, 3);
    EXPECT_TRUE(definition.isScaleVarUsed(3));
    EXPECT_TRUE(definition.isScaleVarUsed(4));
    EXPECT_FALSE(definition.isScaleVarUsed(2));
    mapping(definition) = scaleDef::ScaleMapping();
    EXPECT_FALSE(definition.isScaleVarUsed(3));
}
}

TEST_F(ScaleVariables, AreUsedByTheMappingsOfBodiesAndPositionConstraints) {
    for (int id = 1; id <= 8; ++id) {
        EXPECT_FALSE(definition.isScaleVarUsed(id));
    }
    definition.bodyParams.append(scaledBody("thigh"));
    definition.bodyParams[0].scale[2].id = 1;
    definition.bodyParams[0].scale[0] = combination(2, 3);
    definition.positionConstraints.append(positionConstraint("shin"));
    definition.positionConstraints[0].mapping[5].id = 4;
    definition.poses.append(nullptr);
    addPose(definition, "standing").positionConstraints.append(positionConstraint("foot"));
    definition.poses[1]->positionConstraints[0].mapping[0] = combination(5, 6);
    for (int id = 1; id <= 6; ++id) {
        EXPECT_TRUE(definition.isScaleVarUsed(id)) << id;
    }
    EXPECT_FALSE(definition.isScaleVarUsed(7));
}

TEST_F(ScaleVariables, AreLabelledByDescriptionOrName) {
    EXPECT_EQ(Scale::scaleVarLabel(scaleVar("height", "Subject height")), "Subject height");
    EXPECT_EQ(Scale::scaleVarLabel(scaleVar("height")), "Scale Var height");
    EXPECT_EQ(Scale::scaleVarLabel(scaleVar("3")), "Scale Var 3");
    Scale::ScaleVar withoutDescription = scaleVar("height");
    withoutDescription.description.reset();
    EXPECT_EQ(Scale::scaleVarLabel(withoutDescription), "Scale Var height");
}

} // namespace
} // namespace quillon
