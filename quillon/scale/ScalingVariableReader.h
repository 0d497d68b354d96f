#pragma once

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

/// Reads the text of a SCALING_VARIABLES block, a variable per line, and adds them to those of the
/// definition. Reports on the current status, and returns whether reading goes on; the variable that fails
/// stays as the last one.
bool readScalingVariables(std::string_view blockText, ScaleDefContext& context);

} // namespace quillon::scaleDef
