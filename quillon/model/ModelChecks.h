#pragma once

namespace quillon {

class LmStatus;
class LqBodyDefData;
class LqProblemDefData;

/// Whether a model fits a problem definition: as many markers of each kind, and each body of the definition
/// by its exact name. The first difference is reported on `status`. A body that only the model has, and the
/// ids of the markers, make no difference.
bool matchProblemDef(const LqProblemDefData& problemDef, const LqBodyDefData& model, LmStatus& status);

} // namespace quillon
