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

/// The bodies that walks go along.
class Bodies {
public:
    virtual ~Bodies() = default;

    /// The body in the definition, or null.
    virtual const LqPDDBodyMap* findBody(const LmStr& name) const = 0;
    /// The body in the model, or null.
    virtual const LqBDBody* findGeometry(const LmStr& name) const = 0;
    /// The number of bodies in the definition.
    virtual int count() const = 0;
};

/// Bodies that are looked up by a scan. The model may be null for walks that do not ask for it.
class ScannedBodies : public Bodies {
public:
    ScannedBodies(const LqProblemDefData& definition, const LqBodyDefData* geometry)
        : problem(definition), model(geometry) {}

    const LqPDDBodyMap* findBody(const LmStr& name) const override { return problem.findBody(name); }
    const LqBDBody* findGeometry(const LmStr& name) const override { return model->findBody(name); }
    int count() const override { return problem.bodies.count(); }

private:
    const LqProblemDefData& problem;
    const LqBodyDefData* const model;
};

class IndexedBodies : public Bodies {
public:
    explicit IndexedBodies(const BodyIndex& bodies) : index(bodies) {}

    const LqPDDBodyMap* findBody(const LmStr& name) const override { return index.findBody(name); }
    const LqBDBody* findGeometry(const LmStr& name) const override { return index.findGeometry(name); }
    int count() const override { return index.count(); }

private:
    const BodyIndex& index;
};

/// The place of a walk up a body chain: the name of a body or of the global frame.
class ChainWalk {
public:
    ChainWalk(const Bodies& all, const LmStr& start) : bodies(all), name(start), stepsLeft(all.count()) {}

    bool isAtGlobalFrame() const { return name == referenceSystemName; }

    /// Looks the body up, which ends the process when the definition does not have it.
    const LqPDDBodyMap& body() const {
        const LqPDDBodyMap* const found = bodies.findBody(name);
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
    const Bodies& bodies;
    LmStr name;
    int stepsLeft;
};

bool isAncestorAmong(const Bodies& bodies, const LmStr& ancestor, const LmStr& start) {
    ChainWalk walk(bodies, start);
    while (!walk.isAtGlobalFrame()) {
        const LqPDDBodyMap& body = walk.body();
        if (body.name == ancestor) {
            return true;
        }
        walk.goToParent(body);
    }
    return ancestor == referenceSystemName;
}

void transformAmong(LmMat4& out, const Bodies& bodies, const LmStr& start, const LmStr& ancestor) {
    out = identityMat4;
    ChainWalk walk(bodies, start);
    while (!(walk.isAtGlobalFrame() && ancestor == referenceSystemName)) {
        const LqPDDBodyMap& body = walk.body();
        if (body.name == ancestor) {
            return;
        }
        const LqBDBody* const geometry = bodies.findGeometry(body.name);
        if (geometry == nullptr) {
            endWith("Body '", body.name, "' not found in MODELS file\n");
        }
        matrixMultiply(out, out, geometry->baseTransform);
        walk.goToParent(body);
    }
}

/// The translation that carries a point from one body to another.
LmVec3 translationAmong(const Bodies& bodies, const LmStr& from, const LmStr& to) {
    LmMat4 transform;
    if (isAncestorAmong(bodies, from, to)) {
        transformAmong(transform, bodies, to, from);
    } else {
        transformAmong(transform, bodies, from, to);
        invertInPlace(transform);
    }
    return {element(transform, 3, 0), element(transform, 3, 1), element(transform, 3, 2)};
}

LmVec3 sum(const LmVec3& point, const LmVec3& offset) {
    return {point[0] + offset[0], point[1] + offset[1], point[2] + offset[2]};
}

} // namespace

bool isAncestor(const LqProblemDefData& problem, const LmStr& ancestor, const LmStr& start) {
    return isAncestorAmong(ScannedBodies(problem, nullptr), ancestor, start);
}

void chainTransform(LmMat4& out, const LqProblemDefData& problem, const LqBodyDefData& model,
                    const LmStr& start, const LmStr& ancestor) {
    transformAmong(out, ScannedBodies(problem, &model), start, ancestor);
}

LmVec3 offsetBetweenBodies(const LqProblemDefData& problem, const LqBodyDefData& model, const LmVec3& point,
                           const LmStr& from, const LmStr& to) {
    return sum(point, translationAmong(ScannedBodies(problem, &model), from, to));
}

LmVec3 offsetBetweenBodiesInverse(const LqProblemDefData& problem, const LqBodyDefData& model,
                                  const LmVec3& point, const LmStr& from, const LmStr& to) {
    const LmVec3 offset = translationAmong(ScannedBodies(problem, &model), from, to);
    return {point[0] - offset[0], point[1] - offset[1], point[2] - offset[2]};
}

// --- Many walks ----------------------------------------------------------------------------------

BodyIndex::BodyIndex(const LqProblemDefData& problem, const LqBodyDefData& model)
    : definedBodies(problem), bodyCount(problem.bodies.count()) {
    for (const LqBDBody* body : model.storedBodies()) {
        geometries.emplace(body->name.view(), body);
    }
}

const LqPDDBodyMap* BodyIndex::findBody(const LmStr& name) const {
    return definedBodies.find(name.view());
}

const LqBDBody* BodyIndex::findGeometry(const LmStr& name) const {
    const auto found = geometries.find(name.view());
    return found == geometries.end() ? nullptr : found->second;
}

LmVec3 offsetBetweenBodies(const BodyIndex& bodies, const LmVec3& point, const LmStr& from, const LmStr& to) {
    return sum(point, translationAmong(IndexedBodies(bodies), from, to));
}

} // namespace quillon
