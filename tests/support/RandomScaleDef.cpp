#include "tests/support/RandomScaleDef.h"

#include "quillon/geometry/EulerAngles.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScalingAxes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace quillon::test {

namespace {

using scaleDef::ScaleFloat;
using scaleDef::ScaleMapping;

constexpr std::size_t longestName = 40;
constexpr int mostBareBodies = 3;

// A brace that opens and a number sign are never in one text: behind the brace, the sign would make a comment
// of the rest of the line, and a block of the brace.
constexpr std::string_view bareLetters[] = {"abcXYZ019_.,;:#%$*+-}[]()'\"\\\x80\xa0\xff",
                                            "abcXYZ019_.,;:{%$*+-}[]()'\"\\\x80\xa0\xff"};
constexpr std::string_view quotedLetters[] = {"abcXYZ019 _.,;:#%$*+-/}[]()\t'\\\x80\xa0\xff",
                                              "abcXYZ019 _.,;:{%$*+-/}[]()\t'\\\x80\xa0\xff"};

/// A word without a slash, which divides the bodies of a temporary marker.
std::string bareName(RandomSource& random) {
    return random.name(longestName, random.oneOf(bareLetters));
}

std::string quotedName(RandomSource& random) {
    const std::size_t length = random.oneIn(2) ? 20 + random.below(2) : 1 + random.below(longestName);
    return random.text(length, random.oneOf(quotedLetters));
}

/// A word that mappings take for a name: no number below 1. A positive number is a name like any other.
std::string scaleVarName(RandomSource& random) {
    std::string name = random.oneIn(8) ? std::to_string(random.between(1, 30)) : bareName(random);
    if (name.front() == '-' || name.front() == '0') {
        name.front() = 'v';
    }
    return name;
}

/// The real that the text of six significant digits gives back.
float sixDigitsOf(float real) {
    constexpr int significantDigits = 6;
    std::array<char, 40> text = {};
    const auto wide = static_cast<double>(real);
    char* const end =
        std::to_chars(text.begin(), text.end(), wide, std::chars_format::general, significantDigits).ptr;
    double kept = 0;
    std::from_chars(text.begin(), end, kept);
    return static_cast<float>(kept);
}

template <class Reals>
Reals sixDigitsOfEach(Reals reals) {
    for (float& real : reals) {
        real = sixDigitsOf(real);
    }
    return reals;
}

/// Whether two groups of reals have the same bits, so that they have the same text.
template <class Reals>
bool sameBits(const Reals& left, const Reals& right) {
    return std::equal(left.begin(), left.end(), right.begin(), [](float one, float other) {
        return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
    });
}

class ScaleDefFiller {
public:
    ScaleDefFiller(LqScaleDefData& target, RandomSource& source, const LqProblemDefData& problem,
                   const ScaleDefWishes& asked)
        : definition(target), random(source), problemDef(problem), wishes(asked) {}

    void fill();

private:
    // --- Parts of records ------------------------------------------------------------------------

    int someCount(int least = 0) { return fewOf(least, wishes.mostRecords); }
    int fewOf(int least, int most);
    ScaleFloat scaleFloat();
    ScaleFloat limit(float infinity);
    ScaleMapping mapping();
    LmVec3 vector();
    LmMat3 rotation();
    LmStr anyBody();
    LmStr bareBody();
    std::vector<std::int32_t> someSysVars(int least);

    // --- Records ---------------------------------------------------------------------------------

    void fillWeights();
    void fillScaleVars();
    void fillLimits(LmDArray<scaleDef::LimitOverride_t>& records, int least);
    void fillGuides(LmDArray<scaleDef::SysVarGuideOverride>& records);
    void fillGlobals(LmDArray<scaleDef::GlobalConst_t>& records);
    void fillPositions(LmDArray<scaleDef::PositionConst_t>& records);
    void fillPoses();
    void fillBodies();
    void setAxes(scaleDef::BodyParams_t& body);
    void fillTemps();

    LqScaleDefData& definition;
    RandomSource& random;
    const LqProblemDefData& problemDef;
    const ScaleDefWishes& wishes;
};

void ScaleDefFiller::fill() {
    fillWeights();
    fillLimits(definition.limitOverrides, 1);
    fillGuides(definition.sysVarGuideOverrides);
    fillScaleVars();
    fillPoses();
    fillBodies();
    fillPositions(definition.positionConstraints);
    fillGlobals(definition.globalConstraints);
    fillTemps();
}

// --- Parts of records ----------------------------------------------------------------------------

/// Small numbers more often than great ones, so that many definitions are written and read in little time.
int ScaleDefFiller::fewOf(int least, int most) {
    const int count = random.between(least, most);
    return std::min(count, random.between(least, most));
}

ScaleFloat ScaleDefFiller::scaleFloat() {
    ScaleFloat made;
    if (random.oneIn(2)) {
        made.measuredId = random.oneIn(10) ? std::numeric_limits<int>::max() : random.between(1, 99);
    }
    const bool isOffset = made.measuredId != 0 && random.oneIn(2);
    (isOffset ? made.offset : made.value) = random.sixDigits();
    return made;
}

ScaleFloat ScaleDefFiller::limit(float infinity) {
    return random.oneIn(3) ? ScaleFloat{infinity, 0, 0} : scaleFloat();
}

ScaleMapping ScaleDefFiller::mapping() {
    const int count = definition.scaleVars.count();
    if (random.oneIn(3)) {
        return ScaleMapping(random.between(0, count));
    }
    ScaleMapping made(-1);
    made.constant = scaleFloat();
    for (int i = count == 0 ? 0 : random.between(0, wishes.mostTerms); i > 0; --i) {
        const int id = random.between(1, count);
        made.appendTerm(id, scaleFloat());
    }
    return made;
}

LmVec3 ScaleDefFiller::vector() {
    LmVec3 made = {};
    for (float& component : made) {
        component = random.sixDigits();
    }
    return made;
}

/// Turns about z, y and x whose angles, cut to six digits, make the same matrix again.
LmMat3 ScaleDefFiller::rotation() {
    constexpr LmEulerOrder order = {3, 2, 1};
    constexpr int mostRounds = 8;
    LmMat3 made = identityMat3;
    for (bool isKept = random.oneIn(3); !isKept;) {
        LmVec3 angles = {};
        for (float& angle : angles) {
            angle = random.oneIn(4) ? 0.0F : static_cast<float>(random.between(-314159, 314159)) / 100000.0F;
        }
        eulerToMatrix(made, angles, order);
        for (int round = 0; round < mostRounds && !isKept; ++round) {
            const LmMat3 before = made;
            matrixToEuler(angles, order, made);
            eulerToMatrix(made, sixDigitsOfEach(angles), order);
            isKept = sameBits(made, before);
        }
    }
    return made;
}

LmStr ScaleDefFiller::anyBody() {
    return problemDef.bodies[random.between(0, problemDef.bodies.count() - 1)]->name;
}

LmStr ScaleDefFiller::bareBody() {
    return problemDef.bodies[random.between(0, mostBareBodies - 1)]->name;
}

/// Different system variables, in any order.
std::vector<std::int32_t> ScaleDefFiller::someSysVars(int least) {
    std::vector<std::int32_t> ids;
    for (const LqPDDSysVar* sysVar : problemDef.sysVars) {
        const std::size_t place = random.below(ids.size() + 1);
        ids.insert(ids.begin() + static_cast<std::ptrdiff_t>(place), sysVar->id);
    }
    ids.resize(std::min(ids.size(), static_cast<std::size_t>(someCount(least))));
    return ids;
}

// --- Records -------------------------------------------------------------------------------------

void ScaleDefFiller::fillWeights() {
    definition.realCount = random.between(0, problemDef.realMarkers.count());
    definition.defaultRealWeight = random.sixDigits();
    for (int i = definition.realCount == 0 ? 0 : someCount(); i > 0; --i) {
        const int id = random.between(1, definition.realCount);
        definition.realWeightOverrides.append({id, random.sixDigits()});
    }
    for (int i = someCount(); i > 0; --i) {
        const int first = std::max(random.anyInt(), definition.realCount + 1);
        const int second = std::max(random.anyInt(), definition.realCount + 1);
        definition.artificialWeightOverrides.append({first, second, random.sixDigits()});
    }
}

void ScaleDefFiller::fillScaleVars() {
    std::set<std::string> names;
    for (int i = someCount(); i > 0; --i) {
        const std::string name = scaleVarName(random);
        if (!names.insert(name).second) {
            continue;
        }
        scaleDef::ScaleVar made;
        made.name = name.c_str();
        if (random.oneIn(2)) {
            made.description = quotedName(random).c_str();
        }
        made.lower = limit(scaleDef::noLowerLimit);
        made.upper = limit(scaleDef::noUpperLimit);
        definition.scaleVars.append(made);
    }
}

void ScaleDefFiller::fillLimits(LmDArray<scaleDef::LimitOverride_t>& records, int least) {
    for (const std::int32_t id : someSysVars(least)) {
        const ScaleFloat lower = limit(scaleDef::noLowerLimit);
        records.append({id, lower, limit(scaleDef::noUpperLimit)});
    }
}

void ScaleDefFiller::fillGuides(LmDArray<scaleDef::SysVarGuideOverride>& records) {
    std::vector<std::int32_t> ids = someSysVars(0);
    std::sort(ids.begin(), ids.end());
    for (const std::int32_t id : ids) {
        const float value = random.sixDigits();
        records.append({id, value, random.sixDigits()});
    }
}

/// The two vectors differ in signs alone, so that their magnitudes are one number.
void ScaleDefFiller::fillGlobals(LmDArray<scaleDef::GlobalConst_t>& records) {
    for (int i = someCount(); i > 0; --i) {
        scaleDef::GlobalConst_t made;
        made.bodyName = bareBody();
        made.local = vector();
        made.global = made.local;
        for (float& component : made.global) {
            component = random.oneIn(2) ? -component : component;
        }
        records.append(made);
    }
}

void ScaleDefFiller::fillPositions(LmDArray<scaleDef::PositionConst_t>& records) {
    for (int i = fewOf(0, (wishes.mostRecords + 1) / 2); i > 0; --i) {
        scaleDef::PositionConst_t made;
        for (int& transform : made.transformOrder) {
            transform = random.between(1, transformCount);
        }
        for (ScaleMapping& each : made.mapping) {
            each = mapping();
        }
        made.body = random.oneIn(4) ? LmStr("GLOBAL") : anyBody();
        made.parent = random.oneIn(4) ? LmStr("GLOBAL") : anyBody();
        made.weight = random.sixDigits();
        made.localPosition = vector();
        made.baseTranslation = vector();
        made.baseRotation = rotation();
        records.append(made);
    }
}

void ScaleDefFiller::fillPoses() {
    for (int i = fewOf(0, (wishes.mostRecords + 1) / 2); i > 0; --i) {
        auto* const pose = new scaleDef::Pose_t;
        definition.poses.append(pose);
        pose->name = random.name(longestName, random.oneOf(quotedLetters)).c_str();
        fillLimits(pose->limitOverrides, 0);
        fillGuides(pose->sysVarGuideOverrides);
        fillGlobals(pose->globalConstraints);
        fillPositions(pose->positionConstraints);
    }
}

void ScaleDefFiller::fillBodies() {
    for (int i = someCount(); i > 0; --i) {
        scaleDef::BodyParams_t made;
        made.bodyName = bareBody();
        setAxes(made);
        for (ScaleMapping& each : made.scale) {
            each = mapping();
        }
        definition.bodyParams.append(made);
    }
}

/// Axes of a frame which the first two, cut to six digits, make again.
void ScaleDefFiller::setAxes(scaleDef::BodyParams_t& body) {
    constexpr int mostRounds = 8;
    scaleDef::ScalingAxes axes = {};
    for (bool isKept = false; !isKept;) {
        LmVec3 first = {};
        LmVec3 second = {};
        for (LmVec3* axis : {&first, &second}) {
            for (float& component : *axis) {
                component = static_cast<float>(random.between(-20, 20)) / 10.0F;
            }
        }
        if (scaleDef::isWithoutDirection(first) || scaleDef::isWithoutDirection(second) ||
            !makeScalingAxes(first, second, axes)) {
            continue;
        }
        for (int round = 0; round < mostRounds && !isKept; ++round) {
            const scaleDef::ScalingAxes before = axes;
            makeScalingAxes(sixDigitsOfEach(before.first), sixDigitsOfEach(before.second), axes);
            isKept = sameBits(axes.first, before.first) && sameBits(axes.second, before.second) &&
                     sameBits(axes.third, before.third);
        }
    }
    body.firstAxis = axes.first;
    body.secondAxis = axes.second;
    body.thirdAxis = axes.third;
}

void ScaleDefFiller::fillTemps() {
    std::set<std::int32_t> ids;
    for (int i = someCount(); i > 0; --i) {
        const std::int32_t id = random.anyInt();
        if (!ids.insert(id).second) {
            continue;
        }
        scaleDef::TempData_t made;
        made.id = id;
        for (ScaleFloat& coordinate : made.position) {
            coordinate = scaleFloat();
        }
        made.attachedBody = bareBody();
        made.relativeBody = random.oneIn(2) ? made.attachedBody : bareBody();
        made.weight = random.sixDigits();
        definition.temps.append(made);
    }
}

} // namespace

void fillForScaling(LqProblemDefData& problemDef, RandomSource& random) {
    for (int i = 0; i < mostBareBodies; ++i) {
        problemDef.addBody(bareName(random).c_str(), referenceSystemName, i);
    }
    for (int i = random.between(0, 2); i > 0; --i) {
        problemDef.addBody(random.name(longestName, random.oneOf(quotedLetters)).c_str(), referenceSystemName,
                           i);
    }
    std::set<std::string> names;
    std::set<std::int32_t> ids;
    for (int i = random.between(1, 5); i > 0; --i) {
        const std::string name = quotedName(random);
        const std::int32_t id = random.anyInt();
        if (names.insert(name).second && ids.insert(id).second) {
            problemDef.sysVars.append(new LqPDDSysVar(id, name.c_str()));
        }
    }
    for (int i = random.between(0, 5); i > 0; --i) {
        problemDef.addRealMarker(LqPDDRealMarker(i, 0, 1, ""));
    }
}

void fillRandomly(LqScaleDefData& definition, RandomSource& random, const LqProblemDefData& problemDef,
                  const ScaleDefWishes& wishes) {
    ScaleDefFiller(definition, random, problemDef, wishes).fill();
}

} // namespace quillon::test
