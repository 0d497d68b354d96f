#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemDefData;
class LqScaleDefData;

// Writing the scale definition file. The problem definition gives the system variables their names. Reals
// have six significant digits, sections stand in one fixed order, and the stream's format is put back.
//
// What is written reads back, with two deliberate exceptions that users know: readers refuse the empty
// LIMIT_ADJUSTMENTS block of a definition without limit overrides, and names of scaling variables, and of
// bodies outside of position constraints, stand bare, so that a blank in one breaks its line.

/// Writes the definition to a file of this name. Reports on the current status and returns whether no error
/// stands; a disk that is full behind the header is deliberately not noticed.
bool writeScaleDefFile(const LqScaleDefData& source, const LmStr& path, const LqProblemDefData& problemDef);

/// Writes the header and, unless an error stands, all sections.
void writeScaleDefStream(const LqScaleDefData& source, std::ostream& output,
                         const LqProblemDefData& problemDef);

/// Writes the lines of the file id and of the version, and reports the one that cannot be written on the
/// current status.
void writeScaleDefHeader(std::ostream& output);

/// Writes the sections in file order.
void writeScaleDefBody(const LqScaleDefData& source, std::ostream& output,
                       const LqProblemDefData& problemDef);

} // namespace quillon
