#include "quillon/model/RestPose.h"

#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace quillon {
namespace {

using test::StatusChain;

constexpr float pi = 3.14159274F;
constexpr float infinity = std::numeric_limits<float>::infinity();
/// What a coordinate loses by a turn of a quarter, which single precision does not hold exactly.
constexpr float turnTolerance = 1e-5F;

LmMat4 translation(float x, float y, float z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// Turns x to y and y to -x, then moves.
LmMat4 quarterTurn(float x, float y, float z) {
    return {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

LqBasicVarMapping<float> constant(float value) {
    LqBasicVarMapping<float> mapping(-1);
    mapping.constant = value;
    return mapping;
}

class RestPose : public testing::Test {
protected:
    LqPDDBodyMap& add(const char* name, const char* parent, const LmMat4& baseTransform) {
        addGeometry(name, baseTransform);
        return problem.addBody(name, parent, 1);
    }

    void addGeometry(const char* name, const LmMat4& baseTransform, const LmVec3& direction = {},
                     float length = 0) {
        LqBDBody body;
        body.name = name;
        body.baseTransform = baseTransform;
        body.vectorDirection = direction;
        body.vectorLength = length;
        model.addBody(body);
    }

    std::vector<BodyAtRest> bodies() const { return bodiesAtRest(problem, model); }

    /// Of the body that is alone in the definition.
    LmVec3 place() const { return bodies().at(0).place; }

    LqProblemDefData problem;
    LqBodyDefData model;
    test::CleanStatus clean;
};

void expectNear(const LmVec3& actual, const LmVec3& expected) {
    for (std::size_t axis = 0; axis < expected.size(); ++axis) {
        EXPECT_NEAR(actual[axis], expected[axis], turnTolerance) << "axis " << axis;
    }
}

// --- Bodies --------------------------------------------------------------------------------------

// The thigh is turned by a quarter, so that the shin, which lies along its y, lies along -x of the pelvis.
TEST_F(RestPose, PutsBodiesBelowTheirParents) {
    add("pelvis", referenceSystemName, translation(1, 2, 3));
    add("thigh", "pelvis", quarterTurn(10, 0, 0));
    add("shin", "thigh", translation(0, 5, 0));
    add("arm", "pelvis", translation(0, 0, 7));
    struct Expected {
        const char* name;
        int parent;
        int chain;
        LmVec3 place;
    };
    const Expected expected[] = {{"pelvis", -1, 0, {1, 2, 3}},
                                 {"thigh", 0, 1, {11, 2, 3}},
                                 {"shin", 1, 1, {6, 2, 3}},
                                 {"arm", 0, 2, {1, 2, 10}}};
    const std::vector<BodyAtRest> found = bodies();
    ASSERT_EQ(found.size(), std::size(expected));
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].body, problem.bodies[static_cast<int>(i)]);
        EXPECT_EQ(found[i].geometry->name, expected[i].name);
        EXPECT_EQ(found[i].parent, expected[i].parent);
        EXPECT_EQ(found[i].chain, expected[i].chain);
        EXPECT_EQ(found[i].place, expected[i].place);
        EXPECT_EQ(found[i].end, expected[i].place);
    }
    EXPECT_EQ(found[2].toGlobal, quarterTurn(6, 2, 3));
}

TEST_F(RestPose, PutsParentsFirst) {
    add("hand", "arm", translation(0, 0, 1));
    add("arm", "body", translation(0, 1, 0));
    add("other", referenceSystemName, translation(9, 0, 0));
    add("body", referenceSystemName, translation(1, 0, 0));
    std::string names;
    for (const BodyAtRest& body : bodies()) {
        names += body.body->name.c_str() + std::string(" ");
    }
    EXPECT_EQ(names, "body arm hand other ");
    EXPECT_EQ(bodies().at(2).place, (LmVec3{1, 1, 1}));
    EXPECT_EQ(bodies().at(3).chain, 1);
}

TEST_F(RestPose, HasNothingForAnEmptyProblem) {
    EXPECT_TRUE(bodies().empty());
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(RestPose, AppliesConstantsAndLeavesOutVariables) {
    LqPDDBodyMap& body = add("body", referenceSystemName, translation(10, 20, 30));
    body.setMapping(0, constant(1));
    body.setMapping(1, 4); // follows variable 4
    LqBasicVarMapping<float> combination = constant(3);
    combination.appendTerm(1, 5.0F);
    combination.appendTerm(2, 7.0F);
    body.setMapping(2, combination);
    expectNear(place(), {11, 20, 33});
}

// By default translations along x, y, z come first, then the turn about z.
TEST_F(RestPose, ALaterTransformationHappensInTheFrameThatTheEarlierOnesLeave) {
    LqPDDBodyMap& goesFirst = add("goes first", referenceSystemName, identityMat4);
    goesFirst.setMapping(TransformPosition{1}, constant(1));
    goesFirst.setMapping(TransformPosition{6}, constant(pi / 2));
    LqPDDBodyMap& turnsFirst = add("turns first", referenceSystemName, identityMat4);
    turnsFirst.transformOrder[0] = 6;
    turnsFirst.transformOrder[1] = 1;
    turnsFirst.mappings[0] = constant(pi / 2);
    turnsFirst.mappings[1] = constant(1);
    expectNear(bodies().at(0).place, {1, 0, 0});
    expectNear(bodies().at(1).place, {0, 1, 0});
}

TEST_F(RestPose, WhatIsNoTransformationMovesNothing) {
    LqPDDBodyMap& body = add("body", referenceSystemName, translation(10, 20, 30));
    const int orders[] = {0, -1, 7, 1, 2, 3};
    for (int k = 0; k < transformCount; ++k) {
        body.transformOrder[k] = orders[k];
        body.mappings[k] = constant(1);
    }
    expectNear(place(), {11, 21, 31});
}

TEST_F(RestPose, TheVectorOfABodyOfTypeOneEndsAtItsLength) {
    struct Case {
        std::int32_t type;
        LmVec3 direction;
        LmVec3 end;
    };
    const Case cases[] = {{bodyTypeOne, {0, 3, -4}, {1, 5, -2}},
                          {bodyTypeOne | bodyTypeTwo, {0, 3, -4}, {1, 5, -2}},
                          {bodyTypeOne, {0, 0, 0}, {1, 2, 2}},
                          {bodyTypeTwo, {0, 3, -4}, {1, 2, 2}},
                          {0, {0, 3, -4}, {1, 2, 2}}};
    for (const Case& each : cases) {
        LqProblemDefData oneBody;
        oneBody.addBody("body", referenceSystemName, 1).type = each.type;
        model.clear();
        addGeometry("body", translation(1, 2, 2), each.direction, 5);
        expectNear(bodiesAtRest(oneBody, model).at(0).end, each.end);
    }
}

TEST_F(RestPose, TheFirstOfSeveralBodiesOfOneNameIsTheParent) {
    add("body", referenceSystemName, translation(1, 0, 0));
    add("body", referenceSystemName, translation(2, 0, 0));
    add("hand", "body", translation(0, 1, 0));
    EXPECT_EQ(bodies().at(2).parent, 0);
    EXPECT_EQ(bodies().at(2).place, (LmVec3{1, 1, 0}));
}

TEST_F(RestPose, ReportsABodyWithoutAPlace) {
    struct Case {
        std::vector<std::pair<const char*, const char*>> bodies; ///< names and parents
        const char* message;
    };
    const Case cases[] = {
        {{{"a", "a"}}, "Body a is above itself."},
        {{{"hand", "a"}, {"a", "b"}, {"b", "a"}}, "Body a is above itself."},
        {{{"a", referenceSystemName}, {"b", "c"}},
         "Body b hangs on a body that is not in the problem definition."},
        {{{"a", referenceSystemName}, {"not in the model", "a"}},
         "Body not in the model is not in the model."},
        {{{"far", referenceSystemName}}, "Body far has no finite place."},
        {{{"hand", "far"}, {"far", referenceSystemName}}, "Body far has no finite place."},
    };
    for (const char* const name : {"a", "b", "hand"}) {
        addGeometry(name, identityMat4);
    }
    addGeometry("far", translation(0, infinity, 0));
    for (const Case& each : cases) {
        LqProblemDefData definition;
        for (const auto& [name, parent] : each.bodies) {
            definition.addBody(name, parent, 1);
        }
        LmStatus status;
        EXPECT_TRUE(bodiesAtRest(definition, model, status).empty());
        EXPECT_EQ(test::takeChain(status), StatusChain{test::error(each.message)});
    }
    EXPECT_EQ(test::takeChain(), StatusChain{}) << "the current status has no part in it";
}

// --- Markers -------------------------------------------------------------------------------------

TEST_F(RestPose, PutsMarkersOnTheirBodies) {
    add("pelvis", referenceSystemName, translation(1, 2, 3));
    add("thigh", "pelvis", quarterTurn(10, 0, 0));
    problem.addRealMarker({1, 0, 1.0F, "thigh"});
    problem.addRealMarker({2, 0, 1.0F, referenceSystemName});
    problem.addArtificialMarker({3, 4, 1.0F, "pelvis", "thigh"});
    model.addRealMarker({1, {0, 5, 0}});
    model.addRealMarker({2, {7, 8, 9}});
    model.addArtificialPair({3, {0, 0, 1}}, {4, {1, 0, 0}});
    struct Expected {
        std::int32_t id;
        int body;
        LmVec3 place;
    };
    const Expected expected[] = {
        {1, 1, {6, 2, 3}}, {2, -1, {7, 8, 9}}, {3, 0, {1, 2, 4}}, {4, 1, {11, 3, 3}}};
    const std::vector<MarkerAtRest> found = markersAtRest(problem, model, bodies());
    ASSERT_EQ(found.size(), std::size(expected));
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].id, expected[i].id);
        EXPECT_EQ(found[i].body, expected[i].body);
        EXPECT_EQ(found[i].place, expected[i].place);
    }
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(RestPose, LeavesOutMarkersWithoutAPlaceWithAWarning) {
    add("pelvis", referenceSystemName, identityMat4);
    problem.addRealMarker({1, 0, 1.0F, "pelvis"});
    problem.addRealMarker({2, 0, 1.0F, "nobody"});
    problem.addRealMarker({3, 0, 1.0F, "pelvis"});
    problem.addRealMarker({4, 0, 1.0F, "pelvis"});
    model.addRealMarker({2, {}});
    model.addRealMarker({3, {0, infinity, 0}});
    model.addRealMarker({4, {}});
    LmStatus status;
    const std::vector<MarkerAtRest> found = markersAtRest(problem, model, bodies(), status);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, 4);
    EXPECT_EQ(test::takeChain(status),
              (StatusChain{test::warning("Marker 3 has no place and is left out."),
                           test::warning("Marker 2 has no place and is left out."),
                           test::warning("Marker 1 has no place and is left out.")}));
}

} // namespace
} // namespace quillon
