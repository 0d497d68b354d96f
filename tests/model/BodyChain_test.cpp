#include "quillon/model/BodyChain.h"

#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <unistd.h>
#include <utility>

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

LmMat4 translation(float x, float y, float z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// Turns x to y and y to -x, then moves.
LmMat4 quarterTurn(float x, float y, float z) {
    return {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// The chain shin, thigh, pelvis, global frame, and an arm on the pelvis.
class BodyChain : public testing::Test {
protected:
    BodyChain() {
        add("pelvis", referenceSystemName, translation(1, 2, 3));
        add("thigh", "pelvis", quarterTurn(10, 0, 0));
        add("shin", "thigh", translation(0, 5, 0));
        add("arm", "pelvis", translation(0, 0, 7));
    }

    void add(const char* name, const char* parent, const LmMat4& baseTransform) {
        problem.addBody(name, parent, 1);
        LqBDBody body;
        body.name = name;
        body.baseTransform = baseTransform;
        model.addBody(body);
    }

    LmMat4 transform(const char* start, const char* ancestor) const {
        LmMat4 out = translation(99, 99, 99);
        chainTransform(out, problem, model, start, ancestor);
        return out;
    }

    LmVec3 offset(const char* from, const char* to) const {
        return offsetBetweenBodies(problem, model, {100, 200, 300}, from, to);
    }

    LmVec3 indexedOffset(const char* from, const char* to) const {
        return offsetBetweenBodies(BodyIndex(problem, model), {100, 200, 300}, from, to);
    }

    LmVec3 inverseOffset(const char* from, const char* to) const {
        return offsetBetweenBodiesInverse(problem, model, {100, 200, 300}, from, to);
    }

    LqProblemDefData problem;
    LqBodyDefData model;
};

/// What is left of a process that `body` has ended: how it ended and what it said.
std::string endOf(const std::function<void()>& body) {
    const support::ChildResult result = support::runFunction(body);
    return result.outcome + ": " + result.err;
}

TEST_F(BodyChain, HasTheBodyItselfAndAllAboveItForAncestors) {
    for (const char* ancestor : {"shin", "thigh", "pelvis", referenceSystemName}) {
        EXPECT_TRUE(isAncestor(problem, ancestor, "shin")) << ancestor;
    }
    for (const char* other : {"arm", "Pelvis", "nobody", ""}) {
        EXPECT_FALSE(isAncestor(problem, other, "shin")) << other;
    }
    EXPECT_FALSE(isAncestor(problem, "shin", "thigh")) << "not downwards";
}

TEST_F(BodyChain, OfTheGlobalFrameIsTheGlobalFrameAlone) {
    EXPECT_TRUE(isAncestor(problem, referenceSystemName, referenceSystemName));
    EXPECT_FALSE(isAncestor(problem, "pelvis", referenceSystemName));
    EXPECT_TRUE(isAncestor(LqProblemDefData(), referenceSystemName, referenceSystemName));
}

TEST_F(BodyChain, FromABodyToItselfIsTheIdentity) {
    for (const char* name : {"shin", "pelvis", referenceSystemName}) {
        EXPECT_THAT(transform(name, name), ElementsAreArray(identityMat4)) << name;
    }
}

TEST_F(BodyChain, OfOneStepIsTheBaseTransform) {
    EXPECT_THAT(transform("thigh", "pelvis"), ElementsAreArray(quarterTurn(10, 0, 0)));
}

TEST_F(BodyChain, CarriesAPointFromTheStartToTheAncestor) {
    // The origin of the shin is (0, 5, 0) in the thigh, which the thigh turns to (-5, 0, 0) and moves by 10.
    EXPECT_THAT(transform("shin", "pelvis"), ElementsAreArray(quarterTurn(5, 0, 0)));
    EXPECT_THAT(transform("shin", referenceSystemName), ElementsAreArray(quarterTurn(6, 2, 3)));
}

TEST_F(BodyChain, IsComposedByTheProductOfTheProcess) {
    static int products = 0;
    const auto before = matrixMultiply;
    products = 0;
    matrixMultiply = [](LmMat4& out, const LmMat4& a, const LmMat4& b) {
        ++products;
        multiply(out, a, b);
    };
    transform("shin", "pelvis");
    matrixMultiply = before;
    EXPECT_EQ(products, 2);
}

TEST_F(BodyChain, OffsetsAPointByTheTranslationBelowAnAncestor) {
    EXPECT_THAT(offset("pelvis", "shin"), ElementsAre(105, 200, 300));
    EXPECT_THAT(inverseOffset("pelvis", "shin"), ElementsAre(95, 200, 300));
    EXPECT_THAT(offset(referenceSystemName, "shin"), ElementsAre(106, 202, 303));
    EXPECT_THAT(inverseOffset(referenceSystemName, "shin"), ElementsAre(94, 198, 297));
}

TEST_F(BodyChain, OffsetsAPointByTheInverseTranslationAboveABody) {
    // The turn back takes x to -y and y to x: the inverse of moving by (5, 0, 0) moves by (0, 5, 0).
    EXPECT_THAT(offset("shin", "pelvis"), ElementsAre(100, 205, 300));
    EXPECT_THAT(inverseOffset("shin", "pelvis"), ElementsAre(100, 195, 300));
    EXPECT_THAT(offset("shin", referenceSystemName), ElementsAre(98, 206, 297));
    EXPECT_THAT(inverseOffset("shin", referenceSystemName), ElementsAre(102, 194, 303));
}

TEST_F(BodyChain, OffsetsTheSameByAnIndex) {
    for (const auto& [from, to] :
         {std::pair("pelvis", "shin"), std::pair("shin", "pelvis"), std::pair(referenceSystemName, "arm"),
          std::pair("arm", referenceSystemName), std::pair("thigh", "thigh")}) {
        EXPECT_EQ(indexedOffset(from, to), offset(from, to)) << from << " to " << to;
    }
    EXPECT_EQ(endOf([this] { indexedOffset("nobody", "shin"); }),
              "SIGABRT: Body nobody is not in the problem definition.\n");
    EXPECT_EQ(endOf([this] { indexedOffset("arm", "shin"); }),
              "SIGABRT: Body ReferenceSystemZero is not in the problem definition.\n");
    problem.addBody("hat", "shin", 1);
    EXPECT_EQ(endOf([this] { indexedOffset("hat", "shin"); }),
              "SIGABRT: Body 'hat' not found in MODELS file\n");
}

TEST_F(BodyChain, TakesTheFirstOfTwoBodiesOfOneNameByAnIndexToo) {
    add("thigh", referenceSystemName, translation(900, 900, 900));
    EXPECT_EQ(offset("pelvis", "shin"), indexedOffset("pelvis", "shin"));
    EXPECT_THAT(indexedOffset("pelvis", "shin"), ElementsAre(105, 200, 300));
}

TEST_F(BodyChain, OffsetsNothingWithinOneBody) {
    EXPECT_THAT(offset("thigh", "thigh"), ElementsAre(100, 200, 300));
    EXPECT_THAT(inverseOffset("thigh", "thigh"), ElementsAre(100, 200, 300));
}

TEST_F(BodyChain, EndsTheProcessAtABodyThatIsNotInTheDefinition) {
    add("hat", "head", identityMat4);
    EXPECT_EQ(endOf([this] { isAncestor(problem, "pelvis", "hat"); }),
              "SIGABRT: Body head is not in the problem definition.\n");
    EXPECT_EQ(endOf([this] { isAncestor(problem, "", "nobody"); }),
              "SIGABRT: Body nobody is not in the problem definition.\n");
    EXPECT_EQ(endOf([this] { transform("hat", "pelvis"); }),
              "SIGABRT: Body head is not in the problem definition.\n");
    EXPECT_EQ(endOf([this] { transform("nobody", "nobody"); }),
              "SIGABRT: Body nobody is not in the problem definition.\n");
}

TEST_F(BodyChain, EndsTheProcessBetweenBodiesOfTwoChains) {
    EXPECT_EQ(endOf([this] { offset("arm", "shin"); }),
              "SIGABRT: Body ReferenceSystemZero is not in the problem definition.\n");
    EXPECT_EQ(endOf([this] { transform("thigh", "shin"); }),
              "SIGABRT: Body ReferenceSystemZero is not in the problem definition.\n");
}

TEST_F(BodyChain, EndsTheProcessAtABodyThatIsNotInTheModel) {
    problem.addBody("hat", "shin", 1);
    problem.addBody("feather", "hat", 1);
    LqBDBody feather;
    feather.name = "feather";
    model.addBody(feather);
    EXPECT_TRUE(isAncestor(problem, "pelvis", "feather")) << "which asks the definition alone";
    EXPECT_EQ(endOf([this] { transform("feather", "pelvis"); }),
              "SIGABRT: Body 'hat' not found in MODELS file\n");
    EXPECT_THAT(transform("feather", "hat"), ElementsAreArray(identityMat4))
        << "the ancestor's own is not needed";
}

TEST_F(BodyChain, EndsTheProcessAtABodyThatIsAboveItself) {
    add("left", "right", identityMat4);
    add("right", "left", identityMat4);
    EXPECT_TRUE(isAncestor(problem, "left", "right"));
    EXPECT_EQ(endOf([this] { isAncestor(problem, "pelvis", "left"); }),
              "SIGABRT: Body left is above itself in the problem definition.\n");
    EXPECT_EQ(endOf([this] { transform("right", "pelvis"); }),
              "SIGABRT: Body right is above itself in the problem definition.\n");
}

TEST_F(BodyChain, LeavesTheStatusAlone) {
    const test::CleanStatus cleanStatus;
    pushError("before");
    pushWarning("and a warning");
    const test::StatusChain before = test::chainOf();
    EXPECT_TRUE(isAncestor(problem, "pelvis", "shin")) << "an error that stands does not stop a walk";
    EXPECT_FALSE(isAncestor(problem, "arm", "shin"));
    transform("shin", referenceSystemName);
    offset("shin", "pelvis");
    inverseOffset("pelvis", "shin");
    EXPECT_EQ(test::chainOf(), before);
}

TEST_F(BodyChain, EndsTheProcessWithoutAWordOnTheStatus) {
    // What stands on the status when the process is about to end.
    const auto statusAtTheEndOf = [](const std::function<void()>& body) {
        return endOf([&body] {
            currentStatus().clear();
            std::signal(SIGABRT, [](int) {
                const char* const text = currentStatus().head() == nullptr ? "nothing" : "something";
                std::_Exit(::write(STDERR_FILENO, text, std::strlen(text)) < 0 ? 1 : 0);
            });
            body();
        });
    };
    EXPECT_EQ(statusAtTheEndOf([this] { isAncestor(problem, "", "nobody"); }),
              "0: Body nobody is not in the problem definition.\nnothing");
    problem.addBody("hat", "shin", 1);
    EXPECT_EQ(statusAtTheEndOf([this] { transform("hat", "shin"); }),
              "0: Body 'hat' not found in MODELS file\nnothing");
}

TEST_F(BodyChain, MayGoThroughEveryBodyOfTheDefinition) {
    LqProblemDefData line;
    line.addBody("a", referenceSystemName, 1);
    line.addBody("b", "a", 2);
    line.addBody("c", "b", 3);
    EXPECT_TRUE(isAncestor(line, "a", "c"));
    EXPECT_FALSE(isAncestor(line, "x", "c"));
    EXPECT_TRUE(isAncestor(line, referenceSystemName, "c"));
}

} // namespace
} // namespace quillon
