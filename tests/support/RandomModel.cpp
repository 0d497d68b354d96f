#include "tests/support/RandomModel.h"

#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "tests/support/RandomProblemDef.h"

#include <set>
#include <vector>

namespace quillon::test {

namespace {

constexpr int transformDecimals = 6;
constexpr int digitsBehindBodies = 6;
constexpr int digitsWithoutBodies = 2;

class ModelFiller {
public:
    ModelFiller(LqBodyDefData& target, RandomSource& source, const LqProblemDefData& problemDef,
                const ModelWishes& asked)
        : model(target), random(source), definition(problemDef), wishes(asked) {}

    void fill() {
        model.cameraCount = random.oneIn(20) ? -2 : random.between(0, 3);
        fillBodies();
        digits = model.bodies.count() == 0 ? digitsWithoutBodies : digitsBehindBodies;
        if (wishes.isConsistent) {
            addDefinedMarkers();
        } else {
            addMarkers(model.realMarkers, 1);
            addMarkers(model.fixMarkers, 1);
            addMarkers(model.doubleMarkers, 1);
            addMarkers(model.artificialMarkers, 2);
        }
        for (int i = wishes.hasIncludes ? random.between(0, 3) : 0; i > 0; --i) {
            addInclude();
        }
    }

private:
    /// The definition's bodies without those that the writer would take for one in front of them.
    std::vector<const LqPDDBodyMap*> distinctBodies() const {
        std::vector<const LqPDDBodyMap*> bodies;
        std::set<std::string> known;
        for (const LqPDDBodyMap* body : definition.bodies) {
            if (known.insert(inUpperCase(body->name.view())).second) {
                bodies.push_back(body);
            }
        }
        return bodies;
    }

    void fillBodies() {
        const std::vector<const LqPDDBodyMap*> bodies = distinctBodies();
        if (wishes.isConsistent) {
            for (const LqPDDBodyMap* body : bodies) {
                addBody(*body);
            }
        } else if (!bodies.empty() && !random.oneIn(8)) {
            for (int i = random.between(0, 5); i > 0; --i) {
                addBody(*random.oneOf(bodies));
            }
        }
    }

    void addBody(const LqPDDBodyMap& defined) {
        LqBDBody body;
        body.name = defined.name;
        for (const std::size_t element : {0U, 1U, 2U, 4U, 5U, 6U, 8U, 9U, 10U, 12U, 13U, 14U}) {
            body.baseTransform[element] = random.decimal(transformDecimals);
        }
        if ((defined.type & bodyTypeOne) != 0) {
            while (body.vectorLength == 0) {
                body.vectorLength = random.sixDigits();
            }
        }
        if ((defined.type & (bodyTypeOne | bodyTypeTwo)) != 0) {
            for (float& component : body.vectorDirection) {
                component = random.sixDigits();
            }
        }
        model.addBody(body);
    }

    LqBDMarker marker(int id) {
        LqBDMarker made;
        made.id = id;
        for (float& coordinate : made.position) {
            coordinate = random.significant(digits);
        }
        return made;
    }

    void addMarkers(LmDArray<LqBDMarker*>& markers, int recordsPerCount) {
        for (int i = recordsPerCount * random.between(0, wishes.mostMarkers); i > 0; --i) {
            const int id = random.anyInt();
            markers.append(new LqBDMarker(marker(id)));
        }
    }

    void addDefinedMarkers() {
        for (const LqPDDRealMarker* defined : definition.realMarkers) {
            model.realMarkers.append(new LqBDMarker(marker(defined->id)));
        }
        for (const LqPDDFixMarker* defined : definition.fixMarkers) {
            model.fixMarkers.append(new LqBDMarker(marker(defined->id)));
        }
        for (const LqPDDDoubleMarker* defined : definition.doubleMarkers) {
            model.doubleMarkers.append(new LqBDMarker(marker(defined->id)));
        }
        for (const LqPDDArtificialMarker* defined : definition.artificialMarkers) {
            const LqBDMarker first = marker(defined->id);
            model.addArtificialPair(first, marker(defined->otherId));
        }
    }

    void addInclude() {
        auto* const include = new LqBDInclude;
        include->fileName = includePath(random).c_str();
        if (random.oneIn(2)) {
            include->bodyNameSuffix = random.name(12).c_str();
        }
        model.includes.append(include);
    }

    LqBodyDefData& model;
    RandomSource& random;
    const LqProblemDefData& definition;
    const ModelWishes& wishes;
    int digits = digitsBehindBodies;
};

} // namespace

void fillRandomly(LqBodyDefData& model, RandomSource& random, const LqProblemDefData& definition,
                  const ModelWishes& wishes) {
    ModelFiller(model, random, definition, wishes).fill();
}

} // namespace quillon::test
