#pragma once

#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

class LqProblemDefData;
class LqScaleDefData;

// Reading the scale definition file. All operations report on the current status and return whether no error
// stands afterwards. `lenient` makes warnings of references into the problem definition that lead nowhere,
// where a section says so; otherwise they are errors and end the reading.
//
// The poses that the target held are freed. Weights, limits, global constraints and temporary markers take
// the place of what it held; scaling variables, scaled bodies, position constraints and guides are added.
// After an error the target is partly filled and not for use.

/// Opens the file and reads it, with "Unable to read" and the path on top of what is wrong.
bool readScaleDefFile(LqScaleDefData& target, const LmStr& path, const LqProblemDefData& problemDef,
                      bool lenient);

/// Reads the header and all items.
bool readScaleDefStream(LqScaleDefData& target, std::istream& input, const LqProblemDefData& problemDef,
                        bool lenient);

/// Reads the items behind the header.
bool readScaleDefBody(LqScaleDefData& target, std::istream& input, const LqProblemDefData& problemDef,
                      bool lenient);

/// Reads and checks the header alone; returns whether it is that of a scale definition.
bool readScaleDefHeader(std::istream& input);

/// Whether the file can be opened and has a good header.
bool isScaleDefFile(const LmStr& path);

} // namespace quillon
