#include "quillon/model/BodyChain.h"

#include "quillon/geometry/Mat4Inverse.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace quillon {

namespace {

[[noreturn]] void endWith(std::string_view before, const LmStr& bodyName, std::string_view behind) {
    std::cerr << before << bodyName.view() << behind;
    std::cerr.flush();
    std::abort();
}

/// The place of a walk up a body chain: the name of a body or of the global frame.
class ChainWalk {
public:
    ChainWalk(const LqProblemDefData& definition, const LmStr& start)
        : problem(definition), name(start), stepsLeft(definition.bodies.count()) {}

    bool isAtGlobalFrame() const { return name == referenceSystemName; }

    /// Looks the body up, which ends the process when the definition does not have it.
    const LqPDDBodyMap& body() const {
        const LqPDDBodyMap* const found = problem.findBody(name);
        if (found == nullptr) {
            endWith("Body ", name, " is not in the problem definition.\n");
        }
        return *found;
    }

    void goToParent(const LqPDDBodyMap& body) {
        // A chain without a loop has no more bodies than the definition.
        if (stepsLeft == 0) {
            endWith("Body ", name, " is above itself in the problem definition.\n");
        }
        --stepsLeft;
        name = body.parentName;
    }

private:
    const LqProblemDefData& problem;
    LmStr name;
    int stepsLeft;
};

/// The translation that carries a point from one body to another.
LmVec3 translationBetween(const LqProblemDefData& problem, const LqBodyDefData& model, const LmStr& from,
                          const LmStr& to) {
    LmMat4 transform;
    if (isAncestor(problem, from, to)) {
        chainTransform(transform, problem, model, to, from);
    } else {
        chainTransform(transform, problem, model, from, to);
        invertInPlace(transform);
    }
    return {element(transform, 3, 0), element(transform, 3, 1), element(transform, 3, 2)};
}

} // namespace

bool isAncestor(const LqProblemDefData& problem, const LmStr& ancestor, const LmStr& start) {
    ChainWalk walk(problem, start);
    while (!walk.isAtGlobalFrame()) {
        const LqPDDBodyMap& body = walk.body();
        if (body.name == ancestor) {
            return true;
        }
        walk.goToParent(body);
    }
    return ancestor == referenceSystemName;
}

void chainTransform(LmMat4& out, const LqProblemDefData& problem, const LqBodyDefData& model,
                    const LmStr& start, const LmStr& ancestor) {
    out = identityMat4;
    ChainWalk walk(problem, start);
    while (!(walk.isAtGlobalFrame() && ancestor == referenceSystemName)) {
        const LqPDDBodyMap& body = walk.body();
        if (body.name == ancestor) {
            return;
        }
        const LqBDBody* const geometry = model.findBody(body.name);
        if (geometry == nullptr) {
            endWith("Body '", body.name, "' not found in MODELS file\n");
        }
        matrixMultiply(out, out, geometry->baseTransform);
        walk.goToParent(body);
    }
}

LmVec3 offsetBetweenBodies(const LqProblemDefData& problem, const LqBodyDefData& model, const LmVec3& point,
                           const LmStr& from, const LmStr& to) {
    const LmVec3 offset = translationBetween(problem, model, from, to);
    return {point[0] + offset[0], point[1] + offset[1], point[2] + offset[2]};
}

LmVec3 offsetBetweenBodiesInverse(const LqProblemDefData& problem, const LqBodyDefData& model,
                                  const LmVec3& point, const LmStr& from, const LmStr& to) {
    const LmVec3 offset = translationBetween(problem, model, from, to);
    return {point[0] - offset[0], point[1] - offset[1], point[2] - offset[2]};
}

} // namespace quillon
