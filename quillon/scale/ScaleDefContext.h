#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/core/NameIndex.h"
#include "quillon/scale/ArrayAppender.h"
#include "quillon/scale/GuideOverrideFiller.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/SysVarNames.h"

#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace quillon {

class LqProblemDefData;

namespace scaleDef {

/// What the sections of a scale definition share while it is read: the definition that is filled, the problem
/// definition that names are resolved against, and look-ups of both that do not scan.
///
/// All reports go to the current status. The arrays that several sections add to are filled through this
/// object and have their exact length again when it goes; until then their counts in the definition mean
/// nothing. The problem definition stays as it is meanwhile.
class ScaleDefContext {
public:
    /// `lenientReading` makes warnings of unresolved references, as `reportUnresolved` tells.
    ScaleDefContext(LqScaleDefData& target, const LqProblemDefData& problem, bool lenientReading);

    const LqProblemDefData& problemDef; ///< that names are looked up in
    LqScaleDefData& definition;         ///< that is filled
    const bool lenient;                 ///< whether unresolved references are warnings

    // The arrays of the definition that are filled through this object, beside its scaling variables.
    ArrayAppender<Pose_t*> poses;                       ///< of the definition
    ArrayAppender<BodyParams_t> bodyParams;             ///< of the definition
    ArrayAppender<PositionConst_t> positionConstraints; ///< of the definition
    GuideOverrideFiller sysVarGuideOverrides;           ///< of the definition

    // --- References to the problem definition ----------------------------------------------------

    /// Whether the problem definition has a body of exactly that name.
    bool hasBody(const LmStr& name) const;
    /// The name of a system variable, empty when there is none of that id.
    LmStr sysVarName(std::int32_t id) const;
    /// Reads a number, which is not looked up, or the name of a system variable. Returns its id, 0 after an
    /// error.
    std::int32_t readSysVarId(std::istream& input, const char* what) const;
    /// Reports a reference that leads nowhere: as a warning in a lenient reading, else as an error. Returns
    /// whether reading goes on, which it does after a warning.
    bool reportUnresolved(const LmStr& message) const;

    // --- Scaling variables and mappings ----------------------------------------------------------

    int scaleVarCount() const { return scaleVars.count(); } ///< those appended so far
    /// The id of the first scaling variable of that name, 0 when there is none.
    std::int32_t scaleVarId(const LmStr& name) const;
    /// Appends a scaling variable without a name; it stays where it is until the next one is appended.
    ScaleVar& appendScaleVar() { return scaleVars.append(); }
    /// Gives the variable that was appended last its name, by which it is found from then on.
    void nameScaleVar(ScaleVar& last, const LmStr& name);
    /// Reads the name of a scaling variable, or a number below 1, and returns the variable's id or that
    /// number; 0 after an error.
    std::int32_t readScaleVarId(std::istream& input, const char* what) const;
    /// Reads a mapping: "0", the name of a scaling variable, "-1" and a constant, or -(n + 1), a constant and
    /// n times a name and a factor. Partly filled after an error.
    ScaleMapping readScaleMapping(std::istream& input, const char* what) const;

private:
    void addScaleVarName(const LmStr& name, std::int32_t id);
    bool readTerms(std::istream& input, const char* what, ScaleMapping& mapping) const;

    ArrayAppender<ScaleVar> scaleVars;
    std::vector<LmStr> scaleVarNames; // holds the texts for the index of their ids
    NameIndex scaleVarIds;
    NameIndex bodyNames;
    NameIndex sysVarIds;
    SysVarNames sysVarNames;
};

} // namespace scaleDef
} // namespace quillon
