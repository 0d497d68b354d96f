#pragma once

#include "quillon/limits/LqLimitsData.h"

namespace quillon {

/// Reads the files of the target's INCLUDE sections, each with its own includes merged first, and puts their
/// records among those of the target by ascending id. The sections are gone afterwards.
///
/// An included id is raised by the section's offset; without one, by the greatest id that the target and the
/// files in front have. Returns false after a failure, "Unable to include sub-limits." on top of the current
/// status: a file cannot be read, includes itself, or has an id that is there already. The target then is as
/// it was.
bool mergeIncludes(LqLimitsData& target);

} // namespace quillon
