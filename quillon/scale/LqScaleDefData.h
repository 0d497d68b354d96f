#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/scale/ScaleRecords.h"

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace quillon {

class LqBodyDefData;
class LqMeasuredData;
class LqProblemDefData;

/// How a skeleton is fitted to a subject: the markers that take part and their weights, changed limits and
/// guides, the scaling variables that are solved for, the poses in which the subject is measured, the bodies
/// that are scaled, and the temporary markers.
///
/// Owns all its records, the poses included; a copy is deep. Names compare byte by byte, and look-ups are
/// scans that answer the first match or null. A result that points to a record is good until its array is
/// changed. Indices, and ids that stand for positions, must exist, unless an operation says that it reports
/// them. Errors are reported on the current status.
class LqScaleDefData {
public:
    using ScaleFloat = scaleDef::ScaleFloat;
    using RealWeightOverride_t = scaleDef::RealWeightOverride_t;
    using ArtificialWeightOverride_t = scaleDef::ArtificialWeightOverride_t;
    using LimitOverride_t = scaleDef::LimitOverride_t;
    using SysVarGuideOverride = scaleDef::SysVarGuideOverride;
    using GlobalConst_t = scaleDef::GlobalConst_t;
    using PositionConst_t = scaleDef::PositionConst_t;
    using BodyParams_t = scaleDef::BodyParams_t;
    using TempData_t = scaleDef::TempData_t;
    using ScaleVar = scaleDef::ScaleVar;
    using Pose_t = scaleDef::Pose_t;

    LqScaleDefData() = default;
    LqScaleDefData(const LqScaleDefData& other);
    LqScaleDefData& operator=(const LqScaleDefData& other);
    ~LqScaleDefData();

    /// Compares record by record in order; a null pose equals only a null one. Deliberately not compared:
    /// the definition's own `positionConstraints`.
    bool operator==(const LqScaleDefData& other) const;
    /// Whether nothing is defined. Deliberately not looked at: `sysVarGuideOverrides` and
    /// `positionConstraints`.
    bool isEmpty() const;

    LmDArray<Pose_t*> poses;                                        ///< owned, in file order
    LmDArray<RealWeightOverride_t> realWeightOverrides;             ///< in file order
    LmDArray<ArtificialWeightOverride_t> artificialWeightOverrides; ///< in file order
    LmDArray<LimitOverride_t> limitOverrides;                       ///< in force in every pose
    LmDArray<SysVarGuideOverride> sysVarGuideOverrides; ///< outside poses; by ascending id, each id once
    LmDArray<BodyParams_t> bodyParams;                  ///< in file order
    LmDArray<TempData_t> temps;                         ///< in file order
    LmDArray<ScaleVar> scaleVars;                       ///< the id of one is its position from 1
    LmDArray<GlobalConst_t> globalConstraints;          ///< outside poses
    LmDArray<PositionConst_t> positionConstraints;      ///< outside poses
    std::int32_t realCount = 0;  ///< the real markers that take part in the scaling are 1 to `realCount`
    float defaultRealWeight = 0; ///< of a real marker without an override

    // --- The file: its reader -------------------------------------------------------------------------
    //
    // All report on the current status and return whether no error stands afterwards. `lenient` makes
    // warnings of references into the problem definition that lead nowhere, where a section says so;
    // otherwise they are errors and end the reading.
    //
    // The poses that the definition held are freed. Weights, limits, global constraints and temporary markers
    // take the place of what it held; scaling variables, scaled bodies, position constraints and guides are
    // added. After an error the definition is partly filled and not for use.

    /// Opens the file and reads it, with "Unable to read" and the path on top of what is wrong.
    bool readFile(const LmStr& path, const LqProblemDefData& problemDef, bool lenient);
    /// Reads the header and all items.
    bool read(std::istream& input, const LqProblemDefData& problemDef, bool lenient);
    /// Reads the items behind the header.
    bool readBody(std::istream& input, const LqProblemDefData& problemDef, bool lenient);
    /// Reads and checks the header alone; returns whether it is that of a scale definition.
    static bool readHeader(std::istream& input);
    /// Whether the file can be opened and has a good header.
    static bool isScaleDefFile(const LmStr& path);

    // --- The file: its writer -------------------------------------------------------------------------
    //
    // The problem definition gives the system variables their names. Reals have six significant digits,
    // sections stand in one fixed order, and the stream's format is put back.
    //
    // What is written reads back, with two deliberate exceptions that users know: readers refuse the empty
    // LIMIT_ADJUSTMENTS block of a definition without limit overrides, and names of scaling variables, and of
    // bodies outside of position constraints, stand bare, so that a blank in one breaks its line.

    /// Writes the definition to a file of this name. Reports on the current status and returns whether no
    /// error stands; a disk that is full behind the header is deliberately not noticed.
    bool writeFile(const LmStr& path, const LqProblemDefData& problemDef) const;
    /// Writes the header and, unless an error stands, all sections.
    void write(std::ostream& output, const LqProblemDefData& problemDef) const;
    /// Writes the lines of the file id and of the version, and reports the one that cannot be written on the
    /// current status.
    static void writeHeader(std::ostream& output);
    /// Writes the sections in file order.
    void writeBody(std::ostream& output, const LqProblemDefData& problemDef) const;

    // Records that stand in more than one section. Numbers take the format that the stream has; `writeBody`
    // gives it the default one.

    /// Writes "0", the name of a scaling variable, or -(n + 1), the constant, and n times a name and a
    /// factor. Names are bare: one with a blank in it does not read back. In the place of a variable that
    /// there is not stands its number, which readers refuse.
    void writeScaleMapping(std::ostream& output, const scaleDef::ScaleMapping& mapping) const;
    /// Writes a POSITION_CONSTRAINT block, its lines behind two blanks for each level of indentation.
    void writePositionConstraint(std::ostream& output, const PositionConst_t& record, int indentLevel) const;
    /// Writes a SYS_VAR_GUIDE_OVERRIDE block for each record, its lines behind the indentation. A record on a
    /// variable that the problem definition does not have is left out and told on standard error.
    static void writeGuideOverrides(std::ostream& output, const LmDArray<SysVarGuideOverride>& records,
                                    const LqProblemDefData& problemDef, std::string_view indent);

    // --- Values -------------------------------------------------------------------------------------

    /// Reads a literal, "[m3 2.5]" (scale form) or "[m3 + 1.5]" (offset form). "*" gives the literal
    /// `infinity`, and is an error when that is 0. `what` names the value in messages. All zero after an
    /// error.
    static ScaleFloat readScaleFloat(std::istream& input, const char* what, float infinity);
    /// Writes what `readScaleFloat` reads; a literal equal to an `infinity` that is not 0 becomes "*".
    static void writeScaleFloat(std::ostream& output, const ScaleFloat& value, float infinity);
    /// Whether the value can be evaluated with the measured data, which may be null. If not, reports why.
    static bool validateMeasuredRef(const ScaleFloat& value, const LqMeasuredData* measured);

    // --- Real markers and weights ---------------------------------------------------------------------

    void setRealCount(std::int32_t count); ///< sets the field; overrides stay
    /// Makes room for a new real marker: overrides for markers from `id` on move up, as do the ids of all
    /// temps and artificial pairs, since they lie above the reals. `realCount` grows unless `id` lies more
    /// than 1 above it.
    void insertRealMarker(std::int32_t id);
    /// The inverse, which also drops the override of the marker. Does nothing for an id above `realCount`.
    void removeRealMarker(std::int32_t id);
    int realWeightOverrideCount() const;                                 ///< how many there are
    bool hasRealWeightOverride(std::int32_t markerId) const;             ///< by the marker
    RealWeightOverride_t* findRealWeightOverride(std::int32_t markerId); ///< by the marker
    const RealWeightOverride_t* findRealWeightOverride(std::int32_t markerId) const;
    /// Change the weight of an override that exists.
    void setRealWeight(std::int32_t markerId, float weight);
    void setRealWeight(const RealWeightOverride_t& record);
    /// Append an override; reports "Duplicate entry." when the marker has one.
    void addRealWeightOverride(std::int32_t markerId, float weight);
    void addRealWeightOverride(const RealWeightOverride_t& record);
    void removeRealWeightOverride(std::int32_t markerId); ///< the first of that marker
    /// Whether the id is either one of a pair.
    bool hasArtificialWeightOverride(std::int32_t markerId) const;
    /// Sets the weight of the first pair that holds the id.
    void setArtificialWeight(std::int32_t markerId, float weight);
    /// The first pair that holds the id; ids -1 and weight 0 without one.
    ArtificialWeightOverride_t findArtificialPair(std::int32_t markerId) const;
    /// Appends a pair; reports "Duplicate entry." when its first id is in a pair. Its second id is not
    /// tested.
    void addArtificialWeightOverride(const ArtificialWeightOverride_t& record);
    /// Removes the first pair that holds the id.
    void removeArtificialWeightOverride(std::int32_t markerId);

    // --- Limit overrides ------------------------------------------------------------------------------

    bool hasLimitOverride(std::int32_t sysVarId) const;        ///< outside poses
    LimitOverride_t* findLimitOverride(std::int32_t sysVarId); ///< outside poses
    const LimitOverride_t* findLimitOverride(std::int32_t sysVarId) const;
    /// Replaces the record of the same id, if there is one.
    void updateLimitOverride(const LimitOverride_t& record);
    /// Appends; an id may occur twice.
    void addLimitOverride(const LimitOverride_t& record);
    /// Whether one was removed.
    bool removeLimitOverride(std::int32_t sysVarId);
    /// Removes the override outside poses, then goes through the poses; answers whether any was found.
    /// Deliberately, a match in a pose removes the record at its index from `limitOverrides`, if there is
    /// one, and leaves the pose as it was: callers are settled on that.
    bool removeLimitOverrideEverywhere(std::int32_t sysVarId);
    /// Looks in the default pose when there are no poses.
    bool hasPoseLimitOverride(std::int32_t sysVarId, int pose) const;
    LimitOverride_t* findPoseLimitOverride(std::int32_t sysVarId, int pose); ///< as `hasPoseLimitOverride`
    const LimitOverride_t* findPoseLimitOverride(std::int32_t sysVarId, int pose) const;
    void updatePoseLimitOverride(const LimitOverride_t& record, int pose); ///< as outside poses
    void addPoseLimitOverride(const LimitOverride_t& record, int pose);    ///< as outside poses
    bool removePoseLimitOverride(std::int32_t sysVarId, int pose);         ///< as outside poses
    /// Gives the pose an override with both limits 0 when it has none, or takes it away. Looks in the
    /// default pose when there are no poses; one can only be added to a pose that there is.
    void setPoseLimitOverride(std::int32_t sysVarId, int pose, bool on);
    /// Changes the id in all limit overrides; guide overrides deliberately stay.
    void renameSysVar(std::int32_t oldId, std::int32_t newId);

    // --- Guide overrides: without a pose, and for a null pose, those outside poses ----------------------

    SysVarGuideOverride* findGuideOverride(std::int32_t sysVarId); ///< outside poses
    const SysVarGuideOverride* findGuideOverride(std::int32_t sysVarId) const;
    /// Looks in the default pose when there are no poses.
    const SysVarGuideOverride* findPoseGuideOverride(std::int32_t sysVarId, int pose) const;
    /// The array in force.
    LmDArray<SysVarGuideOverride>& guideOverrides(std::optional<int> pose = std::nullopt);
    const LmDArray<SysVarGuideOverride>& guideOverrides(std::optional<int> pose = std::nullopt) const;
    /// Replaces the record of the same id, if there is one.
    void updateGuideOverride(const SysVarGuideOverride& record, std::optional<int> pose = std::nullopt);
    /// Inserts by ascending id. When the id exists the new record is dropped without a message.
    void addGuideOverride(const SysVarGuideOverride& record, std::optional<int> pose = std::nullopt);
    /// Removes the record of that id.
    void removeGuideOverride(std::int32_t sysVarId, std::optional<int> pose = std::nullopt);

    // --- Scaled bodies and constraints ------------------------------------------------------------------

    BodyParams_t* findBodyParams(const LmStr& bodyName); ///< by the body's name
    const BodyParams_t* findBodyParams(const LmStr& bodyName) const;
    /// Appends a copy.
    void addBodyParams(const BodyParams_t& record);
    /// Removes the first match.
    void removeBodyParams(const LmStr& bodyName);
    /// Renames a body in `bodyParams`, `globalConstraints` and `temps`. What the poses hold, and all position
    /// constraints, deliberately keep the old name.
    void renameBody(const LmStr& oldName, const LmStr& newName);
    // A constraint is found by the values of all its fields; the first match is replaced or removed.
    /// Outside poses.
    void replaceGlobalConstraint(const GlobalConst_t& record, const GlobalConst_t& replacement);
    void removeGlobalConstraint(const GlobalConst_t& record);            ///< outside poses
    void addPoseGlobalConstraint(const GlobalConst_t& record, int pose); ///< appends
    /// In a pose.
    void replacePoseGlobalConstraint(const GlobalConst_t& record, const GlobalConst_t& replacement, int pose);
    void removePoseGlobalConstraint(const GlobalConst_t& record, int pose);  ///< in a pose
    void addPosePositionConstraint(const PositionConst_t& record, int pose); ///< appends
    /// In a pose, or without one outside poses.
    void replacePositionConstraint(const PositionConst_t& record, const PositionConst_t& replacement,
                                   std::optional<int> pose = std::nullopt);
    void removePositionConstraint(const PositionConst_t& record);               ///< outside poses
    void removePosePositionConstraint(const PositionConst_t& record, int pose); ///< in a pose

    // --- Temporary markers ------------------------------------------------------------------------------

    bool hasTemp(std::int32_t id) const;   ///< by its id
    TempData_t* findTemp(std::int32_t id); ///< by its id
    const TempData_t* findTemp(std::int32_t id) const;
    /// Appends.
    void addTemp(const TempData_t& record);
    /// Inserts in front of the first temp with the same id, and raises the ids from there on by 1; appends
    /// when there is none.
    void insertTemp(const TempData_t& record);
    /// Removes the first match and lowers the ids of the temps behind it by 1.
    void removeTemp(std::int32_t id);
    /// Whether the first temp, if there is one, has the id `realCount` + 1.
    bool tempsFollowReals() const;
    /// Whether the id of each temp is 1 above that of the temp in front of it.
    bool tempIdsAreConsecutive() const;

    // --- Scaling variables ------------------------------------------------------------------------------

    int scaleVarCount() const; ///< how many there are
    /// Replaces the variable of that id. Without a name it is named by the decimal text of the id.
    void setScaleVar(std::int32_t id, const ScaleVar& record);
    /// Inserts a variable as `setScaleVar` sets it; reports an id outside 1 to count + 1. Mappings keep
    /// their numbers.
    void insertScaleVar(std::int32_t id, const ScaleVar& record);
    /// Removes a variable and renumbers the mappings on later ones. A mapping on the removed one keeps its
    /// number, so callers ask `isScaleVarUsed` first.
    void removeScaleVar(std::int32_t id);
    /// Whether a mapping of a scaled body or of a position constraint, in a pose or not, names the variable.
    bool isScaleVarUsed(std::int32_t id) const;
    /// The description, or "Scale Var " and the name when that is empty.
    static LmStr scaleVarLabel(const ScaleVar& record);

    // --- Poses ------------------------------------------------------------------------------------------

    bool hasPose(const LmStr& name) const; ///< by its name
    /// Frees all poses.
    void clearPoses();
    /// Frees the first match.
    void removePose(const LmStr& name);
    /// Makes the first pose of that name a copy of the given one, name included.
    void replacePose(const LmStr& name, const Pose_t& pose);

    // --- Use with measured data ---------------------------------------------------------------------------

    /// Reports the first reference of a limit, a scaling variable or the mapping of a scaled body that cannot
    /// be evaluated, or the first lower limit of a system variable above its upper one. `measured` may be
    /// null. Deliberately not looked at: what poses hold, position constraints, and temps, which
    /// `installTemps` tests.
    void validateMeasured(const LqMeasuredData* measured) const;
    /// Makes the temps real markers of a problem definition and its model, behind the first `realCount` ones;
    /// the other real markers are dropped and the ids of all markers behind them move. `measured` may be
    /// null. A reference that cannot be evaluated is reported and leaves what was changed until then; a body
    /// without a chain to the other one of its temp ends the process.
    void installTemps(LqProblemDefData& problemDef, LqBodyDefData& model,
                      const LqMeasuredData* measured) const;

private:
    int poseIndex(const LmStr& name) const;
    const Pose_t* poseToLookIn(int pose) const;
};

} // namespace quillon
