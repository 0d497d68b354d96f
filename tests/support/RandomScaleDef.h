#pragma once

#include "tests/support/RandomSource.h"

namespace quillon {
class LqProblemDefData;
class LqScaleDefData;
} // namespace quillon

namespace quillon::test {

/// How much a generated scale definition holds at the most, of each kind and in each pose.
struct ScaleDefWishes {
    int mostRecords = 3;
    int mostTerms = 3; ///< of a mapping
};

/// Fills an empty problem definition with what a scale definition refers to: system variables of any names
/// that a text in double quotes holds, real markers, and bodies, of which the first ones have names that
/// stand as bare words and the others names with blanks.
void fillForScaling(LqProblemDefData& problemDef, RandomSource& random);

/// Fills an empty scale definition with data that comes back from its file without a loss, when it is read
/// with the same problem definition, which `fillForScaling` filled.
///
/// There is one limit override at least. All forms of values and mappings occur, infinite limits, extreme and
/// tiny reals of six digits, names of 1, 20 and 21 characters and, where the file holds them, with blanks.
/// Rotations and axes are those that their own text gives back.
void fillRandomly(LqScaleDefData& definition, RandomSource& random, const LqProblemDefData& problemDef,
                  const ScaleDefWishes& wishes = {});

} // namespace quillon::test
