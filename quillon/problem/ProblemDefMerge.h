#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

class LqProblemDefData;

/// Makes `result`, which may be one of the other two, of copies of the first definition's records and behind
/// them, kind by kind, of the second's. It has no includes.
///
/// The names of each side get its suffix: variables, bodies, parents but for `referenceSystemName`, and the
/// bodies of markers, where that name deliberately gets the suffix too. In the second definition the bodies'
/// numbers are raised by `bodyNumberOffset` and the system variables by `sysVarOffset`, a negative one
/// standing for the number of the first definition's variables; no id is looked at for a collision. Markers
/// are numbered from 1 in the order real, global direction, fix, double, artificial; `doubleId` stays.
void mergeDefinitions(LqProblemDefData& result, const LqProblemDefData& first, const LqProblemDefData& second,
                      const LmStr& firstSuffix, const LmStr& secondSuffix, std::int32_t bodyNumberOffset,
                      std::int32_t sysVarOffset);

} // namespace quillon
