#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleArrays.h"
#include "tests/support/RandomScaleDef.h"
#include "tests/support/RoundTrip.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

/// Beyond what definitions compare: the position constraints outside poses.
bool sameInAll(const LqScaleDefData& left, const LqScaleDefData& right) {
    return left == right && scaleDef::equalElements(left.positionConstraints, right.positionConstraints);
}

void expectScaleDefRoundTrip(const LqScaleDefData& definition, const LqProblemDefData& problemDef) {
    expectRoundTrip(
        definition, [&](std::ostream& output, const LqScaleDefData& each) { each.write(output, problemDef); },
        [&](std::istream& input, LqScaleDefData& target) { target.read(input, problemDef, false); },
        sameInAll);
}

TEST(ScaleDefRoundTrip, GeneratedDefinitionsComeBack) {
    const CleanStatus clean;
    forGenerated(10000, [](RandomSource& random) {
        LqProblemDefData problemDef;
        fillForScaling(problemDef, random);
        LqScaleDefData definition;
        fillRandomly(definition, random, problemDef);
        expectScaleDefRoundTrip(definition, problemDef);
    });
}

TEST(ScaleDefRoundTrip, LongSectionsComeBack) {
    const CleanStatus clean;
    forGenerated(5, [](RandomSource& random) {
        LqProblemDefData problemDef;
        fillForScaling(problemDef, random);
        LqScaleDefData definition;
        fillRandomly(definition, random, problemDef, {.mostRecords = 40, .mostTerms = 30});
        expectScaleDefRoundTrip(definition, problemDef);
    });
}

} // namespace
} // namespace quillon::test
