#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemDefData;

// Writing the problem definition file. The stream's format is put back at the end of each section. The type
// one variable is written for a body whose `type` is exactly 1, and the type two variable never.

/// Writes the definition to a file of this name. Reports on the current status and returns whether the file
/// could be written.
bool writeProblemDefFile(const LqProblemDefData& source, const LmStr& path);

/// Writes the header and all sections.
void writeProblemDefStream(const LqProblemDefData& source, std::ostream& output);

/// Writes the sections in file order.
void writeProblemDefSections(const LqProblemDefData& source, std::ostream& output);

/// One section each, in file order.
void writeSysVars(const LqProblemDefData& source, std::ostream& output);
void writeBodies(const LqProblemDefData& source, std::ostream& output);
void writeRealMarkers(const LqProblemDefData& source, std::ostream& output);
void writeFixMarkers(const LqProblemDefData& source, std::ostream& output);
void writeDoubleMarkers(const LqProblemDefData& source, std::ostream& output);
void writeArtificialMarkers(const LqProblemDefData& source, std::ostream& output);

/// Writes a name of at most 20 characters left-justified in 20 columns, and a longer one in double quotes
/// with a blank behind it.
void writeNameField(std::ostream& output, const LmStr& name);

} // namespace quillon
