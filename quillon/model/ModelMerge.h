#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

class LqBodyDefData;

/// Makes the records of `result`, which may be one of the other two, of copies of the first model's records
/// and behind them, kind by kind, of the second's. It has no includes and no global direction markers; its
/// camera count and all else stay.
///
/// The names of the bodies get the suffix of their side. A marker's id rises by the number of the other
/// model's markers of the kinds in front of it and, in the second model, by the first's markers of its own
/// kind: so the ids of two models that were numbered from 1 are those of their merged definitions.
void mergeModels(LqBodyDefData& result, const LqBodyDefData& first, const LqBodyDefData& second,
                 const LmStr& firstSuffix, const LmStr& secondSuffix);

} // namespace quillon
