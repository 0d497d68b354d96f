#pragma once

#include <string>

namespace quillon {
class LqBodyDefData;
class LqLimitsData;
class LqProblemDefData;
class LqProblemSpec;
class LqScaleDefData;
} // namespace quillon

namespace quillon::fuzz {

// Whether data comes back from the file that is written of it, up to the decimals of its reals. What readers
// take is more: see the tests of what no file holds.

bool isRepresentable(const LqProblemSpec& spec);
bool isRepresentable(const LqProblemDefData& definition);
/// In a file that is read with the same definition.
bool isRepresentable(const LqBodyDefData& model, const LqProblemDefData& definition);
/// By the tagged form.
bool isRepresentable(const LqLimitsData& limits);
/// By the older form, which has neither guides, weights nor includes.
bool isRepresentableInOlderForm(const LqLimitsData& limits);
/// In a file that is read with the same definition; then up to what the normalising of vectors and rotations
/// changes: see `isNearlySameText`.
bool isRepresentable(const LqScaleDefData& definition, const LqProblemDefData& problemDef);

/// Whether two texts of a scale definition are equal line by line, but for the last digits of reals and the
/// angles of rotations.
bool isNearlySameText(const std::string& one, const std::string& other);

} // namespace quillon::fuzz
