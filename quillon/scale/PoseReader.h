#pragma once

#include "quillon/scale/ScaleRecords.h"

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

/// Reads the text of a POSE block into an empty pose. Reports on the current status; returns whether the pose
/// is whole and has a name. Names of poses may repeat.
bool readPose(std::string_view blockText, const ScaleDefContext& context, Pose_t& pose);

} // namespace quillon::scaleDef
