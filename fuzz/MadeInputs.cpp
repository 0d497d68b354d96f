// Inputs that are made up: what the writers make of generated data.

#include "fuzz/Formats.h"
#include "fuzz/FuzzTargets.h"
#include "fuzz/InputParts.h"
#include "tests/support/RandomLimits.h"
#include "tests/support/RandomModel.h"
#include "tests/support/RandomProblemDef.h"
#include "tests/support/RandomScaleDef.h"

namespace quillon::fuzz {

std::string makeProblemDef(test::RandomSource& random) {
    LqProblemDefData definition;
    test::fillRandomly(definition, random, {.isConsistent = random.oneIn(2), .hasIncludes = true});
    return textOf(problemDefFormat(), definition);
}

std::string makeModel(test::RandomSource& random) {
    const bool isConsistent = random.oneIn(2);
    LqProblemDefData definition;
    test::fillRandomly(definition, random, {.isConsistent = isConsistent, .hasIncludes = true});
    LqBodyDefData model;
    test::fillRandomly(model, random, definition, {.isConsistent = isConsistent, .hasIncludes = true});
    const std::string text = textOf(problemDefFormat(), definition);
    return text + std::string(partSeparator) + textOf(modelFormat(definition), model);
}

std::string makeScaleDef(test::RandomSource& random) {
    LqProblemDefData problemDef;
    test::fillForScaling(problemDef, random);
    LqScaleDefData definition;
    test::fillRandomly(definition, random, problemDef);
    const std::string text = textOf(problemDefFormat(), problemDef);
    return text + std::string(partSeparator) + textOf(scaleDefFormat(problemDef, false), definition);
}

std::string makeLimits(test::RandomSource& random) {
    test::RandomLimits limits(random);
    return random.oneIn(3) ? textOf(olderLimitsFormat(), limits.older())
                           : textOf(limitsFormat(), limits.tagged());
}

std::string makeFamily(test::RandomSource& random) {
    LqProblemDefData problemDef;
    test::fillForScaling(problemDef, random);
    LqBodyDefData model;
    test::fillRandomly(model, random, problemDef, {.isConsistent = true});
    LqScaleDefData scaleDef;
    test::fillRandomly(scaleDef, random, problemDef);
    std::string text = textOf(problemDefFormat(), problemDef);
    text += std::string(partSeparator) + textOf(modelFormat(problemDef), model);
    text += std::string(partSeparator) + makeLimits(random);
    return text + std::string(partSeparator) + textOf(scaleDefFormat(problemDef, false), scaleDef);
}

} // namespace quillon::fuzz
