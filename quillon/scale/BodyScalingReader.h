#pragma once

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

/// Reads the text of a BODY_SCALINGS block and adds its bodies to those of the definition. A body that the
/// problem definition does not have is read whole and then dropped with a warning, in a strict reading too.
/// Reports on the current status, and returns whether reading goes on, which a block without bodies never
/// ends; the body that fails stays as the last one.
bool readBodyScalings(std::string_view blockText, ScaleDefContext& context);

} // namespace quillon::scaleDef
