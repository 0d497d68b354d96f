#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemDefData;

// Reading the problem definition file. All operations report on the current status. Those with a `bool`
// result say whether reading may go on, which is when no error stands and the user has not cancelled: a
// cancel leaves the warning "Read aborted." on top of its error. After a failure the definition is partly
// filled, with the sections before the failure whole and the failing one cut to the rows that were completed.

/// Opens the file, which may lie compressed, and reads it. `withIncludes` merges the INCLUDE sections.
bool readProblemDefFile(LqProblemDefData& target, const LmStr& path, bool withIncludes);

/// Clears the definition and reads the header and all sections.
bool readProblemDefStream(LqProblemDefData& target, std::istream& input, bool withIncludes);

/// Reads and checks the header alone. True if no error stands afterwards.
bool readProblemDefHeader(std::istream& input);

/// One section each, in file order. What the section held before is freed once its count has been read.
bool readSysVars(LqProblemDefData& target, std::istream& input);
bool readBodies(LqProblemDefData& target, std::istream& input);
bool readRealMarkers(LqProblemDefData& target, std::istream& input);
bool readFixMarkers(LqProblemDefData& target, std::istream& input);
bool readDoubleMarkers(LqProblemDefData& target, std::istream& input);
bool readArtificialMarkers(LqProblemDefData& target, std::istream& input);

/// The four marker sections in the order real, fix, double, artificial, up to the first that fails.
bool readMarkers(LqProblemDefData& target, std::istream& input);

/// Reads a name of 20 columns, or of fewer up to and including a newline, or a name in double quotes with a
/// blank behind it. White space within the columns belongs to the result, which is empty after a failure.
LmStr readNameField(std::istream& input);

} // namespace quillon
