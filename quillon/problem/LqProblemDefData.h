#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmDoubleLinkedList.h"
#include "quillon/core/LmStr.h"
#include "quillon/problem/LqPDDRecords.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <set>

namespace quillon {

class LmStatus;

/// A problem definition: the system variables, the bodies that they drive and the markers on the bodies.
///
/// Owns every record that its arrays and its list point to; a copy is deep. Ids of system variables and of
/// markers count from 1. Array slots are null only within an editing operation, while a reader fills an
/// array, and behind the records that `removeBody` leaves.
class LqProblemDefData {
public:
    LqProblemDefData() = default;
    /// As `assign`.
    LqProblemDefData(const LqProblemDefData& other);
    LqProblemDefData& operator=(const LqProblemDefData& other);
    ~LqProblemDefData();

    LmDArray<LqPDDSysVar*> sysVars;                               ///< by ascending id in a valid definition
    LmDArray<LqPDDBodyMap*> bodies;                               ///< in file order
    LmDArray<LqPDDFixMarker*> fixMarkers;                         ///< numbered behind the real markers
    LmDArray<LqPDDRealMarker*> realMarkers;                       ///< numbered from 1
    LmDArray<LqPDDGlobalDirectionMarker*> globalDirectionMarkers; ///< in no file
    LmDArray<LqPDDDoubleMarker*> doubleMarkers;                   ///< numbered behind the fix markers
    LmDArray<LqPDDArtificialMarker*> artificialMarkers;           ///< pairs, numbered last
    LmDoubleLinkedList includes; ///< of `LqPDDInclude*`: sections not yet merged, in file order

    /// Clears this definition and copies all of the other but its global direction markers, which are left
    /// out deliberately: no file keeps them. Assigning a definition to itself does nothing.
    void assign(const LqProblemDefData& other);
    /// Frees all records and includes.
    void clear();

    // --- The file: its reader ----------------------------------------------------------------------
    //
    // All report on the current status. The result says whether reading may go on, which is when no error
    // stands and the user has not cancelled: a cancel leaves the warning "Read aborted." on top of its error.
    // After a failure the definition is partly filled, with the sections before the failure whole and the
    // failing one cut to the rows that were completed.

    /// Opens the file, which may lie compressed, and reads it. `withIncludes` merges the INCLUDE sections.
    bool readProblemDefFile(const LmStr& path, bool withIncludes);
    /// Clears the definition and reads the header and all sections.
    bool readProblemDefStream(std::istream& input, bool withIncludes);
    /// Reads and checks the header alone. True if no error stands afterwards.
    static bool readProblemDefHeader(std::istream& input);
    /// One section each, in file order. What the section held before is freed once its count has been read.
    bool readSysVars(std::istream& input);
    bool readBodies(std::istream& input);            ///< as `readSysVars`
    bool readRealMarkers(std::istream& input);       ///< as `readSysVars`
    bool readFixMarkers(std::istream& input);        ///< as `readSysVars`
    bool readDoubleMarkers(std::istream& input);     ///< as `readSysVars`
    bool readArtificialMarkers(std::istream& input); ///< as `readSysVars`
    /// The four marker sections in the order real, fix, double, artificial, up to the first that fails.
    bool readMarkers(std::istream& input);
    /// Reads the last section, the INCLUDE blocks up to the end of the input, in place of what `includes`
    /// held. After a failure `includes` stays as it was.
    bool readIncludes(std::istream& input);
    /// Reads a name of 20 columns, or of fewer up to and including a newline, or a name in double quotes with
    /// a blank behind it. White space within the columns belongs to the result, which is empty after a
    /// failure.
    static LmStr readNameField(std::istream& input);

    // --- The file: its writer ----------------------------------------------------------------------
    //
    // The stream's format is put back at the end of each section. The type one variable is written for a body
    // whose `type` is exactly 1, and the type two variable never.

    /// Writes the definition to a file of this name. Reports on the current status and returns whether the
    /// file could be written.
    bool writeProblemDefFile(const LmStr& path) const;
    /// Writes the header and all sections.
    void writeProblemDefStream(std::ostream& output) const;
    /// Writes the sections in file order.
    void writeProblemDefSections(std::ostream& output) const;
    /// One section each, in file order.
    void writeSysVars(std::ostream& output) const;
    void writeBodies(std::ostream& output) const;            ///< as `writeSysVars`
    void writeRealMarkers(std::ostream& output) const;       ///< as `writeSysVars`
    void writeFixMarkers(std::ostream& output) const;        ///< as `writeSysVars`
    void writeDoubleMarkers(std::ostream& output) const;     ///< as `writeSysVars`
    void writeArtificialMarkers(std::ostream& output) const; ///< as `writeSysVars`
    void writeIncludes(std::ostream& output) const;          ///< as `writeSysVars`: the INCLUDE blocks
    /// Writes a name of at most 20 characters left-justified in 20 columns, and a longer one in double quotes
    /// with a blank behind it.
    static void writeNameField(std::ostream& output, const LmStr& name);

    // --- Look-ups: scans from the front that answer the first match; names compare byte by byte --

    /// The body, or null; also null for `referenceSystemName`.
    LqPDDBodyMap* findBody(const LmStr& name) const;
    bool hasBody(const LmStr& name) const; ///< whether there is one; not for `referenceSystemName`
    /// The index in `bodies`.
    std::optional<int> bodyIndex(const LmStr& name) const;
    LqPDDBodyMap* findBodyByNumber(std::int32_t graphicsNumber) const; ///< by the number beside the name
    LqPDDSysVar* findSysVar(const LmStr& description) const;           ///< by its name
    LqPDDSysVar* findSysVarById(std::int32_t id) const;                ///< by its id
    LqPDDRealMarker* findRealMarker(std::int32_t id) const;            ///< by its id
    /// The index in `realMarkers`, or -1.
    int realMarkerIndex(std::int32_t id) const;
    /// By `id`, not by `otherId`.
    LqPDDArtificialMarker* findArtificialMarker(std::int32_t id) const;
    /// The index in `artificialMarkers`, or -1. By `id`, not by `otherId`.
    int artificialMarkerIndex(std::int32_t id) const;
    bool hasRealMarker(std::int32_t id) const;   ///< by its id
    bool hasFixMarker(std::int32_t id) const;    ///< by its id
    bool hasDoubleMarker(std::int32_t id) const; ///< by its `id`, not by `doubleId`

    // --- Summaries -------------------------------------------------------------------------------

    /// Whether all seven arrays are empty. The includes are not looked at.
    bool isEmpty() const;
    /// Whether there are no includes and `isEmpty` holds.
    bool isBlank() const;
    /// Whether there are includes and `isEmpty` holds.
    bool isIncludesOnly() const;
    /// The largest id in `sysVars`, 0 when there are none.
    std::int32_t highestSysVarId() const;
    /// The largest id of all markers, with both ids of each pair; 0 when there are none.
    std::int32_t highestMarkerId() const;
    /// The largest `graphicsNumber`, 0 when there are no bodies or all numbers are negative.
    std::int32_t highestBodyNumber() const;
    /// The number of markers; an artificial pair counts twice.
    int markerCount() const;
    /// Whether any mapping of any body is a constant or a linear combination.
    bool hasLinearCombinations() const;
    /// Appends the real markers (`LqPDDRealMarker*`, still owned by this definition) on the body to the list.
    void realMarkersOnBody(const LmStr& bodyName, LmDoubleLinkedList& markers) const;
    /// Appends, for each artificial pair, `id` if that point is on the body, else `otherId` if that one is.
    void artificialIdsOnBody(const LmStr& bodyName, LmDArray<int>& ids) const;
    /// One entry for every body that has a later body of the same name, in array order.
    LmDArray<LmStr> duplicateBodyNames() const;
    /// The ids from 1 to `highestSysVarId` that no body uses, ascending. A type variable counts as used when
    /// the body's `type` has its bit.
    LmDArray<int> unusedSysVars() const;
    bool hasUnusedSysVars() const; ///< whether `unusedSysVars` has any
    /// Whether the id is among the `bodySysVars` of some body.
    bool anyBodyUsesSysVar(std::int32_t id) const;

    // --- Checks: no reader runs them; they change nothing and pass over null slots ---------------

    /// Tests parents, system variables, body names, marker ids and the bodies of markers, in a fixed order.
    /// The first fault ends the check with one error on `status`. An error that stands there before ends it
    /// too, once the parents have been tested.
    void checkProblemDef(LmStatus& status) const;
    /// Whether the first marker, in the order real, global direction, fix, double, has the id 1. Of
    /// artificial pairs alone one must have it at either end, with no id below 1 up to that pair. True
    /// without markers.
    bool hasValidMarkerIdStart() const;
    /// Whether the ids of the markers are one run from 1 in the order real, fix, double, artificial. Global
    /// direction markers go on behind the real ones, but fix and double markers do not go on behind them.
    bool hasConsecutiveMarkerIds() const;
    /// Tests that each real marker is on a body or the global frame and has an id of at least 1. The first
    /// fault ends the check with one error on `status`.
    void checkRealMarkerBodies(LmStatus& status) const;

    // --- Editing: bodies -------------------------------------------------------------------------

    /// Appends a new body of type 0 with the transformation order 1, 2, 3, 6, 5, 4, and gives it back.
    LqPDDBodyMap& addBody(const LmStr& name, const LmStr& parentName, std::int32_t graphicsNumber);
    /// Renames a body, with the references of its children and of the markers as `renameBodyInMarkers` does
    /// it. Does nothing without such a body.
    void renameBody(const LmStr& oldName, const LmStr& newName);
    /// Replaces the name in the real markers and in both places of the artificial pairs. Fix and double
    /// markers keep the old name; they are deliberately left out.
    void renameBodyInMarkers(const LmStr& oldName, const LmStr& newName);
    /// Removes a body, all bodies below it, and the real, fix, double and artificial markers on them.
    ///
    /// The remaining records move forward, but the arrays deliberately keep their lengths: the last slots
    /// hold what they held before, that is null or a record that has moved forward, until the next editing
    /// operation drops them.
    void removeBody(const LmStr& name);
    /// Frees every body with one of these names. Markers and children stay.
    void removeBodies(const LmArray<LmStr>& names);
    /// Empties the array and copies the given one into it; so do all operations of this form.
    void setBodies(const LmDArray<LqPDDBodyMap*>& newBodies);

    // --- Editing: markers ------------------------------------------------------------------------

    /// Appends a copy.
    void addRealMarker(const LqPDDRealMarker& marker);
    /// Inserts a copy in front of the first real marker whose id is not below its own, and raises the ids of
    /// the real markers behind it, of all fix and double markers and of all artificial pairs by 1.
    void insertRealMarker(const LqPDDRealMarker& marker);
    /// Frees the first real marker with the id. The ids of the others stay.
    void removeRealMarker(std::int32_t id);
    /// Frees the last real marker, if there is one.
    void removeLastRealMarker();
    /// Frees all markers with these ids; an artificial pair goes by its `id`, not by its `otherId`.
    void removeMarkers(const LmArray<int>& ids);
    /// Append a copy.
    void addArtificialMarker(const LqPDDArtificialMarker& marker);
    void addGlobalDirectionMarker(const LqPDDGlobalDirectionMarker& marker); ///< at the end of its array
    void setFixMarkers(const LmDArray<LqPDDFixMarker*>& markers);            ///< as `setBodies`
    void setRealMarkers(const LmDArray<LqPDDRealMarker*>& markers);          ///< as `setBodies`
    /// As `setBodies`.
    void setGlobalDirectionMarkers(const LmDArray<LqPDDGlobalDirectionMarker*>& markers);
    void setDoubleMarkers(const LmDArray<LqPDDDoubleMarker*>& markers);         ///< as `setBodies`
    void setArtificialMarkers(const LmDArray<LqPDDArtificialMarker*>& markers); ///< as `setBodies`

    // --- Editing: system variables and includes --------------------------------------------------

    void setSysVars(const LmDArray<LqPDDSysVar*>& newSysVars); ///< as `setBodies`
    /// Appends copies of the given variables.
    void appendSysVars(const LmDArray<LqPDDSysVar*>& moreSysVars);
    /// Frees the variables with these ids and takes them out of all mappings: terms on them go, and what
    /// followed one of them directly is not driven any more. Type variables stay.
    void removeSysVars(const LmArray<int>& ids);
    /// Appends a copy.
    void addInclude(const LqPDDInclude& include);
    void clearIncludes(); ///< frees the INCLUDE sections
    /// Appends the text to the `bodyNameSuffix` of every include.
    void appendToIncludeSuffixes(const LmStr& text);
    /// Reads the files that the includes name, with their own includes merged first, and puts their records
    /// behind those of this definition as `mergeDefinitions` does, one include after the other. The includes
    /// and the global direction markers are gone afterwards. When a file cannot be read, or includes itself,
    /// reports on the current status, gives false and leaves everything as it was.
    bool mergeIncludes();

    // --- Renumbering: an id that a table does not cover stays as it is ---------------------------

    /// Adds the number to both ids of every artificial pair.
    void shiftArtificialIds(std::int32_t offset);
    /// Numbers all markers from 1 in the order real, global direction, fix, double, artificial. Ids below 1
    /// take no number. Gives the table of new ids, indexed by the old id minus 1, with 0 where there was no
    /// marker.
    LmDArray<int> compactMarkerIds();
    /// Every id of every marker becomes `table[id - 1]`; `doubleId` stays.
    void applyMarkerIdTable(const LmArray<int>& table);
    /// Makes the bodies refer to each variable by its position in `sysVars`, counted from 1. The variables
    /// themselves are not renumbered.
    void compactSysVarIds();
    /// Every reference of a body to a system variable becomes `table[id - 1]`.
    void applySysVarIdTable(const LmArray<int>& table);

private:
    // Set while the last slots of the arrays that removeBody closes may repeat earlier ones.
    bool slotsMayRepeat = false;

    void dropRepeatedSlots();
};

/// Whether the definitions are the same object, or equal element by element in array order. Reals compare
/// exactly. Deliberately not compared: global direction markers, `typeTwoVar` and the includes' `fileName`.
bool equals(const LqProblemDefData& left, const LqProblemDefData& right);

} // namespace quillon
