#include "tests/support/RandomProblemDef.h"

#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <set>

namespace quillon::test {

namespace {

constexpr int weightDecimals = 3;
constexpr int mappingDecimals = 6;
constexpr std::size_t longestDescription = 75; // with the four blanks in front, 79 characters
constexpr std::size_t longestUnquoted = 20;

class ProblemDefFiller {
public:
    ProblemDefFiller(LqProblemDefData& definition, RandomSource& source, const ProblemDefWishes& asked)
        : data(definition), random(source), wishes(asked) {}

    void fill() {
        fillSysVars();
        fillBodies();
        for (int i = random.between(0, wishes.mostMarkers); i > 0; --i) {
            addRealMarker();
        }
        // Such markers need a body that is not the global frame.
        const int mostOnBodies = wishes.isConsistent && data.bodies.count() == 0 ? 0 : wishes.mostMarkers;
        for (int i = random.between(0, mostOnBodies); i > 0; --i) {
            addFixMarker();
        }
        for (int i = random.between(0, mostOnBodies); i > 0; --i) {
            addDoubleMarker();
        }
        for (int i = random.between(0, wishes.mostMarkers); i > 0; --i) {
            addArtificialMarker();
        }
        for (int i = wishes.hasIncludes ? random.between(0, 3) : 0; i > 0; --i) {
            addInclude();
        }
    }

private:
    /// A name that its field gives back: quotes stand neither first nor anywhere in a name that is quoted.
    LmStr fieldName() {
        std::string name = random.name(60, random.oneIn(2) ? letters::words : letters::line);
        if (name.size() > 2 && name.size() <= longestUnquoted && random.oneIn(8)) {
            name[1] = '"';
        }
        return LmStr(name.c_str());
    }

    void fillSysVars() {
        LmDArray<LqPDDSysVar*> made;
        std::set<std::string> known;
        for (int i = random.between(0, wishes.mostSysVars); i > 0; --i) {
            std::string description = random.oneIn(8) ? "" : random.name(longestDescription, letters::line);
            if (wishes.isConsistent) {
                while (!known.insert(description).second) {
                    description = random.name(longestDescription, letters::line);
                }
            }
            const int id = wishes.isConsistent ? made.count() + 1 : random.anyInt();
            made.append(new LqPDDSysVar(id, description.c_str()));
        }
        data.setSysVars(made);
        for (LqPDDSysVar* sysVar : made) {
            delete sysVar;
        }
    }

    int sysVar() { return random.between(1, data.sysVars.count()); }

    void fillBodies() {
        std::set<std::string> known;
        for (int i = random.between(0, wishes.mostBodies); i > 0; --i) {
            LmStr name = fieldName();
            while (!known.insert(wishes.isConsistent ? inUpperCase(name.view()) : name.c_str()).second) {
                name = fieldName();
            }
            const LmStr parent = wishes.isConsistent ? frameName() : fieldName();
            const int number = random.anyInt();
            fillBody(data.addBody(name, parent, number));
        }
    }

    LmStr definedName() { return data.bodies[random.between(0, data.bodies.count() - 1)]->name; }
    /// The name of a body that stands in the definition, or of the global frame.
    LmStr frameName() {
        return data.bodies.count() == 0 || random.oneIn(5) ? LmStr(referenceSystemName) : definedName();
    }

    void fillBody(LqPDDBodyMap& body) {
        // A type of four digits would touch the number in front of it.
        static constexpr int types[] = {0, 0, 1, 1, 4, 996, -4, -400};
        body.type = random.oneOf(types);
        for (int& entry : body.transformOrder) {
            entry = random.between(1, 6);
        }
        for (LqBasicVarMapping<float>& mapping : body.mappings) {
            fillMapping(mapping);
        }
        if (body.type == bodyTypeOne) {
            body.typeOneVar = wishes.isConsistent ? random.between(0, data.sysVars.count()) : random.anyInt();
        }
    }

    void fillMapping(LqBasicVarMapping<float>& mapping) {
        const std::size_t form = random.below(4);
        if (form == 0) {
            return;
        }
        if (form == 1 && data.sysVars.count() > 0) {
            mapping.id = sysVar();
            return;
        }
        mapping.id = -1;
        mapping.constant = random.decimal(mappingDecimals);
        if (form == 2 || data.sysVars.count() == 0) {
            return;
        }
        for (int i = random.oneIn(30) ? random.between(20, 60) : random.between(1, 3); i > 0; --i) {
            const int id = sysVar();
            mapping.appendTerm(id, random.decimal(mappingDecimals));
        }
    }

    int markerId() { return wishes.isConsistent ? ++lastMarkerId : random.anyInt(); }
    /// A field of blanks alone holds an empty name.
    LmStr anyBody() { return random.oneIn(8) ? LmStr("") : fieldName(); }

    void addRealMarker() {
        LqPDDRealMarker marker;
        fillMarker(marker, wishes.isConsistent ? frameName() : anyBody());
        marker.predictionType = random.anyInt();
        data.addRealMarker(marker);
    }

    void addFixMarker() {
        LqPDDFixMarker marker;
        fillMarker(marker, wishes.isConsistent ? definedName() : anyBody());
        data.fixMarkers.append(new LqPDDFixMarker(marker));
    }

    void addDoubleMarker() {
        LqPDDDoubleMarker marker;
        fillMarker(marker, wishes.isConsistent ? definedName() : anyBody());
        marker.doubleId = random.anyInt();
        data.doubleMarkers.append(new LqPDDDoubleMarker(marker));
    }

    void addArtificialMarker() {
        LqPDDArtificialMarker pair;
        fillMarker(pair, wishes.isConsistent ? frameName() : anyBody());
        pair.otherId = markerId();
        pair.otherBodyName = wishes.isConsistent ? frameName() : anyBody();
        data.addArtificialMarker(pair);
    }

    void fillMarker(LqPDDFixMarker& marker, const LmStr& bodyName) {
        marker.id = markerId();
        marker.weight = random.decimal(weightDecimals);
        marker.bodyName = bodyName;
    }

    void addInclude() {
        LqPDDInclude include;
        include.fileName = includePath(random).c_str();
        if (random.oneIn(2)) {
            include.bodyNameSuffix = random.name(12).c_str();
        }
        include.bodyIdOffset = random.anyInt();
        include.sysVarIdOffset = random.oneIn(3) ? -1 : random.anyInt();
        data.addInclude(include);
    }

    LqProblemDefData& data;
    RandomSource& random;
    const ProblemDefWishes& wishes;
    int lastMarkerId = 0;
};

} // namespace

void fillRandomly(LqProblemDefData& definition, RandomSource& random, const ProblemDefWishes& wishes) {
    ProblemDefFiller(definition, random, wishes).fill();
}

std::string inUpperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return 'a' <= c && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return upper;
}

std::string includePath(RandomSource& random) {
    static constexpr std::string_view inside = "abcXYZ019_-./ :;,#}\\\t\xE9";
    const std::string path = random.name(40, inside);
    return random.oneIn(4) ? "$QUILLON_TEST_UNSET/" + path : path;
}

} // namespace quillon::test
