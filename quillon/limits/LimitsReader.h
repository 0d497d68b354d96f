#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LqLimitsData.h"

#include <iosfwd>

namespace quillon {

// The limits file has a tagged form, which starts with the file id, and an older form of numbered rows
// without a header. After a failure the target keeps what it held before, with two exceptions: the older form
// empties its target first and leaves the rows read up to the failure, and a file that was read but whose
// includes could not be merged is in the target with its INCLUDE sections.

/// Reads a limits file of either form. All failures are reported on the current status, "Unable to read limit
/// data file" on top. Returns whether the file was read whole: no error stands and the user has not
/// cancelled. `withIncludes` merges the files of the INCLUDE sections, see `mergeIncludes`.
bool readLimitsFile(LqLimitsData& target, const LmStr& name, bool withIncludes);

/// Tells the form by the first byte and reads it; returns whether it was read whole. The tagged form reports
/// into `status`, but for the two header lines, which like the older form and the merging of includes report
/// on the current status.
bool readLimitsStream(LqLimitsData& target, std::istream& input, bool withIncludes,
                      LmStatus& status = currentStatus());

/// Reads the tagged form, as in `readLimitsStream`. The INCLUDE sections are kept, not merged.
bool readTaggedLimits(LqLimitsData& target, std::istream& input, LmStatus& status = currentStatus());

/// Reads the older form, reporting on the current status. Returns false after a failure or a cancel.
bool readOlderLimits(LqLimitsData& target, std::istream& input);

/// Whether the file can be opened and has a good header of the tagged form. `version`, which may be null,
/// receives the version that was read. What is wrong is reported on the current status.
bool checkLimitsFile(const LmStr& name, float* version = nullptr);

} // namespace quillon
