#pragma once

#include "quillon/scale/ArrayAppender.h"
#include "quillon/scale/ScaleRecords.h"

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

// The constraints of a definition and those of a pose have one form. All reports go to the current status;
// each function returns whether no error stands afterwards.

/// Reads the text of a GLOBAL_CONSTRAINTS block, a row per line, in the place of what the target holds. The
/// row that fails stays as the last one.
bool readGlobalConstraints(std::string_view blockText, const ScaleDefContext& context,
                           LmDArray<GlobalConst_t>& target);

/// Reads the text of a POSITION_CONSTRAINT block. Adds one record, or none after an error and, deliberately
/// with a warning alone, for a body or parent that the problem definition does not have.
bool readPositionConstraint(std::string_view blockText, const ScaleDefContext& context,
                            ArrayAppender<PositionConst_t>& target);

} // namespace quillon::scaleDef
