#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/model/LqBodyDefData.h"

#include <iosfwd>

namespace quillon {

// What a model file holds for a body depends on the type of the body in the problem definition. All failures
// are reported on the current status. Numbers that cannot be read leave the model empty; a body that the
// definition lacks, or one without a length, ends the reading with the bodies in front of it, and a bad
// INCLUDE section with all that stands in front of the section.

/// Reads a model file; `withIncludes` merges the INCLUDE sections. Returns whether it was read whole: no
/// error stands and the user has not cancelled.
bool readModelFile(LqBodyDefData& target, const LmStr& path, const LqProblemDefData& problemDef,
                   bool withIncludes);
/// The same with the model's own `problemDef`, which must not be null.
bool readModelFile(LqBodyDefData& target, const LmStr& path, bool withIncludes);
/// As `readModelFile`; bodies are looked up in the definition with `suffix` behind their names.
bool readModelFileWithSuffix(LqBodyDefData& target, const LmStr& path, const LqProblemDefData& problemDef,
                             const LmStr& suffix, bool withIncludes);
/// The same with an index of the definition's bodies, which the files of one merge share.
bool readModelFileWithSuffix(LqBodyDefData& target, const LmStr& path, const DefinedBodyIndex& definedBodies,
                             const LmStr& suffix, bool withIncludes);

/// Reads a model from a stream, without a suffix. Returns whether it was read whole.
bool readModelStream(LqBodyDefData& target, std::istream& input, const LqProblemDefData& problemDef,
                     bool withIncludes);
/// Reads header, bodies, markers and includes in place of what the model holds, and merges nothing. Returns
/// whether they were read whole.
bool readModelSections(LqBodyDefData& target, std::istream& input, const LqProblemDefData& problemDef,
                       const LmStr& suffix);

/// Reads id and version. Whether both are good; what is wrong is reported.
bool readModelHeader(std::istream& input);
/// Whether the file can be opened and has a good header.
bool hasModelHeader(const LmStr& path);

} // namespace quillon
