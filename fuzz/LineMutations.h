#pragma once

#include "fuzz/FuzzTargets.h"
#include "tests/support/RandomSource.h"

namespace quillon::fuzz {

/// The text with a few of its lines, words and numbers changed, moved, doubled or taken away; now and then a
/// text that is made up for the target. Counts stay plausible, so that what follows them is read.
std::string mutatedLines(std::string_view text, const FuzzTarget& target, test::RandomSource& random);

} // namespace quillon::fuzz
