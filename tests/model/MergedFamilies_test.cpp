// What holds of every merge of problem definitions and models, over generated files that include each other.

#include "quillon/model/LqBodyDefData.h"
#include "quillon/model/ModelMerge.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/problem/ProblemDefMerge.h"
#include "tests/model/ModelText.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/problem/ProblemDefText.h"
#include "tests/support/RandomSource.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace quillon::test {
namespace {

using Names = std::vector<std::string>;
using Ids = std::vector<int>;

struct GeneratedInclude {
    int file;
    std::string suffix;
    int bodyIdOffset;
};

/// A file of a family, without its includes: variables "v2.0", "v2.1" and so on in the file 2, bodies "b2.0",
/// and markers on them.
///
/// Each body follows the variable of its own number, as far as there are so many. Each marker has a weight
/// that no other marker of the file has; in the model this is also its x coordinate.
struct GeneratedFile {
    LqProblemDefData definition;
    LqBodyDefData model;
    std::vector<GeneratedInclude> includes;
};

/// Makes the file `number`.
class FileMaker {
public:
    FileMaker(RandomSource& source, int number) : random(source), prefix(std::to_string(number) + ".") {}

    void fill(GeneratedFile& file) {
        const int variables = random.between(1, 4);
        for (int k = 0; k < variables; ++k) {
            addSysVar(file.definition, k + 1, ("v" + prefix + std::to_string(k)).c_str());
        }
        bodyCount = random.between(0, 4);
        for (int k = 0; k < bodyCount; ++k) {
            addBody(file, k, variables);
        }
        if (bodyCount != 0) {
            addMarkers(file);
        }
    }

private:
    std::string bodyName(int k) const { return "b" + prefix + std::to_string(k); }
    LmStr anyBodyName() { return bodyName(random.between(0, bodyCount - 1)).c_str(); }

    void addBody(GeneratedFile& file, int k, int variables) {
        const bool isRoot = k == 0 || random.oneIn(3);
        const std::string parent = isRoot ? referenceSystemName : bodyName(random.between(0, k - 1));
        LqPDDBodyMap& body = file.definition.addBody(bodyName(k).c_str(), parent.c_str(), k + 1);
        body.setMapping(0, k % variables + 1);
        body.setMapping(1, combination(0.5F, {{variables, 2.0F}, {1, -1.0F}}));
        body.setMapping(2, constantMapping(0.25F));
        LqBDBody geometry;
        geometry.name = body.name;
        geometry.baseTransform[12] = static_cast<float>(k);
        if (random.oneIn(2)) {
            body.type = bodyTypeOne;
            body.typeOneVar = variables;
            geometry.vectorLength = 1.5F;
            geometry.vectorDirection = {0, 0, 1};
        }
        file.model.addBody(geometry);
    }

    LqBDMarker* nextPoint() { return new LqBDMarker{++lastId, {weight, 0, 0}}; }

    void addMarkers(GeneratedFile& file) {
        for (int count = random.between(0, 3); count > 0; --count, weight += 1.0F) {
            file.model.realMarkers.append(nextPoint());
            file.definition.addRealMarker(LqPDDRealMarker(lastId, 0, weight, anyBodyName()));
        }
        for (int count = random.between(0, 3); count > 0; --count, weight += 1.0F) {
            file.model.fixMarkers.append(nextPoint());
            addFixMarker(file.definition, LqPDDFixMarker(lastId, weight, anyBodyName()));
        }
        for (int count = random.between(0, 3); count > 0; --count, weight += 1.0F) {
            file.model.doubleMarkers.append(nextPoint());
            addDoubleMarker(file.definition, LqPDDDoubleMarker(lastId, 1, weight, anyBodyName()));
        }
        for (int count = random.between(0, 3); count > 0; --count, weight += 1.0F) {
            file.model.artificialMarkers.append(nextPoint());
            file.model.artificialMarkers.append(nextPoint());
            const LmStr body = anyBodyName();
            file.definition.addArtificialMarker(
                LqPDDArtificialMarker(lastId - 1, lastId, weight, body, anyBodyName()));
        }
    }

    RandomSource& random;
    std::string prefix;
    int bodyCount = 0;
    int lastId = 0;
    float weight = 1.0F;
};

/// Files that include each other without a circle, each with a problem definition and a model; the file 0 is
/// the outermost.
class GeneratedFamily {
public:
    /// With `suffixesEverywhere` a file that has includes may be included with a suffix. The models of such a
    /// family do not fit its merged definition: bodies are looked up with the suffix of their own include.
    GeneratedFamily(RandomSource& random, bool suffixesEverywhere) {
        const int count = random.between(2, 5);
        files = std::vector<GeneratedFile>(static_cast<std::size_t>(count));
        for (int i = count - 1; i >= 0; --i) {
            FileMaker(random, i).fill(file(i));
            for (int includes = i == count - 1 ? 0 : random.between(i == 0 ? 1 : 0, 3); includes > 0;
                 --includes) {
                const int included = random.between(i + 1, count - 1);
                const bool mayHaveSuffix = suffixesEverywhere || file(included).includes.empty();
                const std::string suffix =
                    mayHaveSuffix && !random.oneIn(4) ? "_" + random.name(8, letters::word) : "";
                file(i).includes.push_back({included, suffix, random.between(-5, 300)});
            }
        }
        for (int i = 0; i < count; ++i) {
            writeFile(i);
        }
    }

    const GeneratedFile& file(int i) const { return files[static_cast<std::size_t>(i)]; }
    LmStr definitionPath(int i) const { return (scratch / (std::to_string(i) + ".probdef")).c_str(); }
    LmStr modelPath(int i) const { return (scratch / (std::to_string(i) + ".model")).c_str(); }

    /// What `namesIn` gives for each file, with the suffixes of the includes that lead there, in the order of
    /// a merge: a file's own names, then those of its includes.
    template <class NamesIn>
    Names namesInOrder(int i, const NamesIn& namesIn) const {
        Names names = namesIn(file(i));
        for (const GeneratedInclude& include : file(i).includes) {
            for (const std::string& name : namesInOrder(include.file, namesIn)) {
                names.push_back(name + include.suffix);
            }
        }
        return names;
    }

private:
    GeneratedFile& file(int i) { return files[static_cast<std::size_t>(i)]; }

    void writeFile(int i) {
        LqProblemDefData definition(file(i).definition);
        LqBodyDefData model(file(i).model);
        for (const GeneratedInclude& include : file(i).includes) {
            definition.addInclude(
                LqPDDInclude(definitionPath(include.file), include.suffix.c_str(), include.bodyIdOffset));
            model.includes.append(new LqBDInclude{modelPath(include.file), include.suffix.c_str()});
        }
        definition.writeProblemDefFile(definitionPath(i));
        model.writeModelFile(modelPath(i), definition);
        EXPECT_EQ(takeChain(), StatusChain{});
    }

    support::ScratchDirectory scratch;
    std::vector<GeneratedFile> files;
};

constexpr int families = 50;

void readMerged(LqProblemDefData& definition, const GeneratedFamily& family) {
    EXPECT_TRUE(definition.readProblemDefFile(family.definitionPath(0), true));
    EXPECT_EQ(takeChain(), StatusChain{});
}

// --- Definitions ---------------------------------------------------------------------------------

/// "body weight" of each marker; the body stands last, so that a suffix can be appended.
template <class Marker>
Names markersOf(const LmDArray<Marker*>& markers) {
    Names names;
    for (const Marker* marker : markers) {
        names.push_back(std::to_string(marker->weight) + " " + std::string(marker->bodyName.view()));
    }
    return names;
}

Names otherBodiesOf(const LmDArray<LqPDDArtificialMarker*>& pairs) {
    Names names;
    for (const LqPDDArtificialMarker* pair : pairs) {
        names.push_back(std::to_string(pair->weight) + " " + std::string(pair->otherBodyName.view()));
    }
    return names;
}

Names descriptionsOf(const LmDArray<LqPDDSysVar*>& sysVars) {
    Names names;
    for (const LqPDDSysVar* sysVar : sysVars) {
        names.emplace_back(sysVar->description.view());
    }
    return names;
}

TEST(MergedFamilies, RecordsStandInTheOrderOfTheFilesWithAllTheirSuffixes) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, true);
        LqProblemDefData merged;
        readMerged(merged, family);
        const auto expected = [&family](const auto& namesIn) {
            return family.namesInOrder(
                0, [&namesIn](const GeneratedFile& file) { return namesIn(file.definition); });
        };
        using Data = LqProblemDefData;
        EXPECT_EQ(descriptionsOf(merged.sysVars),
                  expected([](const Data& data) { return descriptionsOf(data.sysVars); }));
        EXPECT_EQ(namesOf(merged.bodies), expected([](const Data& data) { return namesOf(data.bodies); }));
        EXPECT_EQ(markersOf(merged.realMarkers),
                  expected([](const Data& data) { return markersOf(data.realMarkers); }));
        EXPECT_EQ(markersOf(merged.fixMarkers),
                  expected([](const Data& data) { return markersOf(data.fixMarkers); }));
        EXPECT_EQ(markersOf(merged.doubleMarkers),
                  expected([](const Data& data) { return markersOf(data.doubleMarkers); }));
        EXPECT_EQ(markersOf(merged.artificialMarkers),
                  expected([](const Data& data) { return markersOf(data.artificialMarkers); }));
        EXPECT_EQ(otherBodiesOf(merged.artificialMarkers),
                  expected([](const Data& data) { return otherBodiesOf(data.artificialMarkers); }));
    });
}

Ids oneRun(int from, int count) {
    Ids ids(static_cast<std::size_t>(count));
    std::iota(ids.begin(), ids.end(), from);
    return ids;
}

/// The ids of both points of all pairs.
Ids pointIdsOf(const LqProblemDefData& data) {
    Ids ids;
    for (const auto& [id, otherId] : pairIdsOf(data)) {
        ids.push_back(id);
        ids.push_back(otherId);
    }
    return ids;
}

TEST(MergedFamilies, IdsAreOneRunFrom1) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, true);
        LqProblemDefData merged;
        readMerged(merged, family);
        EXPECT_EQ(idsOf(merged.sysVars), oneRun(1, merged.sysVars.count()));
        Ids markers = idsOf(merged.realMarkers);
        for (const Ids& more : {idsOf(merged.fixMarkers), idsOf(merged.doubleMarkers), pointIdsOf(merged)}) {
            markers.insert(markers.end(), more.begin(), more.end());
        }
        EXPECT_EQ(markers, oneRun(1, merged.markerCount()));
    });
}

/// Expects each variable that the body refers to to be the one of its own file and include.
void expectOwnVariables(const LqPDDBodyMap& body, const LqProblemDefData& merged) {
    // "b2.1_left" follows "v2.k_left", and the last variable of that file drives the twist and one term.
    const std::string name(body.name.view());
    const std::string ofFile = "v" + name.substr(1, name.find('.'));
    const std::string suffix = name.substr(name.find('.') + 2);
    Ids references = {body.mappings[0].id};
    for (const auto& [sysVar, coefficient] : termsOf(body.mappings[1])) {
        references.push_back(sysVar);
    }
    if (body.type == bodyTypeOne) {
        references.push_back(body.typeOneVar);
    } else {
        EXPECT_EQ(body.typeOneVar, 0);
    }
    for (const int id : references) {
        ASSERT_TRUE(id >= 1 && id <= merged.sysVars.count()) << name << " refers to " << id;
        const std::string description(merged.sysVars[id - 1]->description.view());
        EXPECT_EQ(description.substr(0, ofFile.size()), ofFile) << name;
        EXPECT_EQ(description.substr(ofFile.size() + 1), suffix) << name;
    }
    EXPECT_EQ(body.mappings[1].id, -3);
    EXPECT_EQ(body.mappings[2].id, -1);
    EXPECT_EQ(body.mappings[3].id, 0);
}

TEST(MergedFamilies, EveryReferenceResolves) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, true);
        LqProblemDefData merged;
        readMerged(merged, family);
        const Names names = namesOf(merged.bodies);
        const std::set<std::string> bodies(names.begin(), names.end());
        const auto isBody = [&bodies](const LmStr& name) {
            return bodies.contains(std::string(name.view()));
        };
        for (const LqPDDBodyMap* body : merged.bodies) {
            EXPECT_TRUE(body->parentName == referenceSystemName || isBody(body->parentName));
            expectOwnVariables(*body, merged);
        }
        const auto expectBodies = [&isBody](const auto& markers) {
            for (const auto* marker : markers) {
                EXPECT_TRUE(isBody(marker->bodyName)) << marker->bodyName;
            }
        };
        expectBodies(merged.realMarkers);
        expectBodies(merged.fixMarkers);
        expectBodies(merged.doubleMarkers);
        expectBodies(merged.artificialMarkers);
        for (const LqPDDArtificialMarker* pair : merged.artificialMarkers) {
            EXPECT_TRUE(isBody(pair->otherBodyName)) << pair->otherBodyName;
        }
    });
}

/// Merges two definitions at a time, from the innermost files outwards.
void mergePairwise(LqProblemDefData& merged, const GeneratedFamily& family, int i) {
    EXPECT_TRUE(merged.readProblemDefFile(family.definitionPath(i), false));
    merged.clearIncludes();
    for (const GeneratedInclude& include : family.file(i).includes) {
        LqProblemDefData part;
        mergePairwise(part, family, include.file);
        mergeDefinitions(merged, merged, part, "", include.suffix.c_str(), include.bodyIdOffset, -1);
    }
}

TEST(MergedFamilies, AreWhatTwoDefinitionsAtATimeMergeTo) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, true);
        LqProblemDefData merged;
        readMerged(merged, family);
        LqProblemDefData expected;
        mergePairwise(expected, family, 0);
        EXPECT_EQ(linesOf(merged), linesOf(expected));
        EXPECT_TRUE(equals(merged, expected));
    });
}

// --- Models --------------------------------------------------------------------------------------

void mergePairwise(LqBodyDefData& merged, const GeneratedFamily& family, int i,
                   const LqProblemDefData& definition, const std::string& suffix) {
    EXPECT_TRUE(merged.readModelFileWithSuffix(family.modelPath(i), definition, suffix.c_str(), false));
    merged.clearIncludes();
    for (const GeneratedInclude& include : family.file(i).includes) {
        LqBodyDefData part;
        mergePairwise(part, family, include.file, definition, include.suffix);
        mergeModels(merged, merged, part, "", include.suffix.c_str());
    }
}

TEST(MergedFamilies, ModelsAreWhatTwoModelsAtATimeMergeTo) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, false);
        LqProblemDefData definition;
        readMerged(definition, family);
        LqBodyDefData merged;
        EXPECT_TRUE(merged.readModelFile(family.modelPath(0), definition, true));
        LqBodyDefData expected;
        mergePairwise(expected, family, 0, definition, "");
        EXPECT_EQ(takeChain(), StatusChain{});
        EXPECT_EQ(linesOf(merged), linesOf(expected));
        EXPECT_TRUE(merged.equals(expected));
    });
}

/// Expects the points to be those of the markers: each has the weight of its marker as x coordinate.
template <class Marker>
void expectPointsOf(const LmDArray<LqBDMarker*>& points, const LmDArray<Marker*>& markers, int perMarker) {
    ASSERT_EQ(points.count(), markers.count() * perMarker);
    for (int i = 0; i < points.count(); ++i) {
        EXPECT_EQ(points[i]->position[0], markers[i / perMarker]->weight);
    }
}

TEST(MergedFamilies, TheModelAgreesWithTheDefinition) {
    const CleanStatus clean;
    forGenerated(families, [](RandomSource& random) {
        const GeneratedFamily family(random, false);
        LqProblemDefData definition;
        readMerged(definition, family);
        LqBodyDefData model;
        EXPECT_TRUE(model.readModelFile(family.modelPath(0), definition, true));
        EXPECT_EQ(takeChain(), StatusChain{});
        EXPECT_EQ(bodyNamesOf(model), namesOf(definition.bodies));
        EXPECT_EQ(idsOf(model.realMarkers), idsOf(definition.realMarkers));
        EXPECT_EQ(idsOf(model.fixMarkers), idsOf(definition.fixMarkers));
        EXPECT_EQ(idsOf(model.doubleMarkers), idsOf(definition.doubleMarkers));
        EXPECT_EQ(idsOf(model.artificialMarkers), pointIdsOf(definition));
        expectPointsOf(model.realMarkers, definition.realMarkers, 1);
        expectPointsOf(model.fixMarkers, definition.fixMarkers, 1);
        expectPointsOf(model.doubleMarkers, definition.doubleMarkers, 1);
        expectPointsOf(model.artificialMarkers, definition.artificialMarkers, 2);
        for (int i = 0; i < model.bodies.count(); ++i) {
            EXPECT_EQ(model.bodies[i]->vectorLength, definition.bodies[i]->type == bodyTypeOne ? 1.5F : 0.0F);
        }
    });
}

} // namespace
} // namespace quillon::test
