#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

/// The data-file formats, which all start with a line of the file id and a line of "v" and the version.
enum class DataFileFormat { ProblemSpec, ProblemDef, Model, Limits, ScaleDef, Measured };

/// The file id and the version of each format, as its writer puts them on the first two lines.
extern const LmStr problemSpecFileId;
extern const LmStr problemDefFileId;
extern const LmStr modelFileId;
extern const LmStr limitsFileId;
extern const LmStr scaleDefFileId;
extern const LmStr measuredFileId;
inline constexpr float problemSpecFileVersion = 1.0F;
inline constexpr float problemDefFileVersion = 1.0F;
inline constexpr float modelFileVersion = 1.0F;
inline constexpr float limitsFileVersion = 2.0F;
inline constexpr float scaleDefFileVersion = 1.0F;
inline constexpr float measuredFileVersion = 1.0F;

/// Reads id and version by the common steps and in the common words, and refuses a version with another whole
/// part than `version`. Returns whether the header is good; what is wrong is reported into `status`.
bool readDataHeader(std::istream& input, const LmStr& id, LmStatus& status, float version);

/// Reads id and version with the steps and the words of one format. `versionRead`, which may be null,
/// receives the number. Returns whether the header is good.
bool readFormatHeader(std::istream& input, DataFileFormat format, LmStatus& status = currentStatus(),
                      float* versionRead = nullptr);

/// Writes the two lines, the version with two decimals, and puts the stream's format back.
void writeDataHeader(std::ostream& output, const LmStr& id, float version);

/// Writes the two lines with a test of the stream after each, which reports "Unable to write data file id."
/// or "Unable to write data file version." on the current status, and returns whether both could be written.
/// The stream stays in fixed-point, left-justified form with two decimals: the limits file depends on it.
bool writeCheckedDataHeader(std::ostream& output, const LmStr& id, float version);

} // namespace quillon
