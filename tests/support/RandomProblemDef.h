#pragma once

#include "tests/support/RandomSource.h"

namespace quillon {
class LqProblemDefData;
} // namespace quillon

namespace quillon::test {

/// What is asked of a generated problem definition beyond that its file can represent it.
struct ProblemDefWishes {
    /// Ids are runs from 1, descriptions are unique, names too whatever their case, parents stand in front of
    /// their children, and every reference resolves. Without it they are anything that the file holds.
    bool isConsistent = false;
    /// There may be INCLUDE sections, of files that do not exist.
    bool hasIncludes = false;
    int mostSysVars = 6;
    int mostBodies = 5;
    int mostMarkers = 5; ///< of each kind
};

/// Fills an empty definition with data that comes back from its file without a loss.
///
/// All forms of mappings occur, names with blanks and of 1, 20 and 21 characters, extreme and tiny reals, and
/// empty sections. Bodies are of type one, or of a type that needs no line of its own; reals have the
/// decimals of their section.
void fillRandomly(LqProblemDefData& definition, RandomSource& random, const ProblemDefWishes& wishes = {});

/// The text with its small letters of ASCII made large.
std::string inUpperCase(std::string_view text);

/// A path of an INCLUDE section that no tagged block takes for anything else.
std::string includePath(RandomSource& random);

} // namespace quillon::test
