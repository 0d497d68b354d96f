#pragma once

#include <string_view>

namespace quillon::scaleDef {

class ScaleDefContext;

/// Reads the text of a TEMPS block, a marker per line, in the place of the markers that the definition holds.
/// Their ids are only tested to be different. Reports on the current status, and returns whether no error
/// stands; the marker that fails stays as the last one.
bool readTemps(std::string_view blockText, ScaleDefContext& context);

} // namespace quillon::scaleDef
