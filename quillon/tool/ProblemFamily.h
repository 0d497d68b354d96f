#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

class LqProblemSpec;
struct LqProblemBundle;

/// Reads a specification and the files that it names, with the files that those include. An entry that is
/// absent is passed over, and its part of the family stays empty. False after an error, which is reported on
/// the current status; what was read until then stays.
bool readProblemFamily(LqProblemSpec& spec, LqProblemBundle& family, const LmStr& path);

} // namespace quillon
