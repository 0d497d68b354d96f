#pragma once

#include "tests/support/RandomSource.h"

namespace quillon {
class LqBodyDefData;
class LqProblemDefData;
} // namespace quillon

namespace quillon::test {

/// What is asked of a generated model beyond that its file can represent it.
struct ModelWishes {
    /// All bodies and markers of the definition stand in the model, in its order and by its ids. Without it
    /// some of the bodies do, in any order and repeatedly, and any markers.
    bool isConsistent = false;
    /// There may be INCLUDE sections, of files that do not exist.
    bool hasIncludes = false;
    int mostMarkers = 6; ///< of each kind, and of pairs; without `isConsistent`
};

/// Fills an empty model with data that comes back from its file without a loss, when it is read with the same
/// definition: the vectors that the types of its bodies ask for, no length of 0, six decimals in matrices and
/// six digits elsewhere, or two in a model without bodies.
///
/// No body has a name that differs in case alone from one in front of it in the definition.
void fillRandomly(LqBodyDefData& model, RandomSource& random, const LqProblemDefData& definition,
                  const ModelWishes& wishes = {});

} // namespace quillon::test
