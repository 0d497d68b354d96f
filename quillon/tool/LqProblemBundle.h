#pragma once

#include "quillon/limits/LqLimitsData.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"

namespace quillon {

/// The data of one problem, as the files of a specification give it. Owns everything that readers put in it.
struct LqProblemBundle {
    LqProblemDefData problemDef; ///< of `PROBDEF:`
    LqBodyDefData model;         ///< of `UNSCALEDBODYDEF:`
    LqLimitsData limits;         ///< of `LIMITS:`
    LqScaleDefData scaleDef;     ///< of `SCALEDEF:`
};

} // namespace quillon
