#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmDoubleLinkedList.h"
#include "quillon/core/LmStr.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/geometry/Vec3.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <vector>

namespace quillon {

class DefinedBodyIndex;
class LqProblemDefData;

/// The geometry of one body.
struct LqBDBody {
    LmStr name{""};                      ///< as in the model file, without a suffix
    LmMat4 baseTransform = identityMat4; ///< the base matrix
    float vectorLength = 0;              ///< the length of a body of type one
    float reserved = 1;                  ///< neither read, written nor compared
    LmVec3 vectorDirection = {};         ///< the direction of a body of type one or two
};

/// The place of one marker in the frame of its body.
struct LqBDMarker {
    std::int32_t id = 0;  ///< counts from 1
    LmVec3 position = {}; ///< in the frame of the body
};

/// One INCLUDE section: another model file whose bodies get a suffix and whose markers are appended.
struct LqBDInclude {
    LmStr fileName{""};       ///< as in the file, with `$NAME` expanded
    LmStr bodyNameSuffix{""}; ///< put behind the names of the included bodies
};

/// A model: the geometry of the bodies and markers that a problem definition names. Owns all records.
///
/// Markers refer to the definition by id, bodies by name. A slot of `bodies` is null only behind the last
/// body, where the reading of a file ended early; a count in such a file may be far above what it holds, so
/// walks go over `storedBodies` and never over the null slots.
class LqBodyDefData {
public:
    LqBodyDefData() = default;
    /// A deep copy of all members; `problemDef` is shared.
    LqBodyDefData(const LqBodyDefData& other);
    LqBodyDefData& operator=(const LqBodyDefData& other);
    ~LqBodyDefData();

    // --- The file --------------------------------------------------------------------------------
    //
    // What a model file holds for a body depends on the type of the body in the problem definition. All
    // failures are reported on the current status. Numbers that cannot be read leave the model empty; a body
    // that the definition lacks, or one without a length, ends the reading with the bodies in front of it,
    // and a bad INCLUDE section with all that stands in front of the section.

    /// Reads a model file; `withIncludes` merges the INCLUDE sections. Returns whether it was read whole: no
    /// error stands and the user has not cancelled.
    bool readModelFile(const LmStr& path, const LqProblemDefData& definition, bool withIncludes);
    /// The same with the model's own `problemDef`, which must not be null.
    bool readModelFile(const LmStr& path, bool withIncludes);
    /// As `readModelFile`; bodies are looked up in the definition with `suffix` behind their names.
    bool readModelFileWithSuffix(const LmStr& path, const LqProblemDefData& definition, const LmStr& suffix,
                                 bool withIncludes);
    /// The same with an index of the definition's bodies, which the files of one merge share.
    bool readModelFileWithSuffix(const LmStr& path, const DefinedBodyIndex& definedBodies,
                                 const LmStr& suffix, bool withIncludes);
    /// Reads a model from a stream, without a suffix, and compares the number of bodies with the definition's
    /// (`checkBodyCount`) once it was read whole. Returns whether no error stands.
    bool readModelStream(std::istream& input, const LqProblemDefData& definition, bool withIncludes);
    /// Reads header, bodies, markers and includes in place of what the model holds, and merges nothing.
    /// Returns whether they were read whole.
    bool readModelSections(std::istream& input, const LqProblemDefData& definition, const LmStr& suffix);
    /// Reads id and version. Whether both are good; what is wrong is reported.
    static bool readModelHeader(std::istream& input);
    /// Whether the file can be opened and has a good header.
    static bool hasModelHeader(const LmStr& path);
    /// Reads the last section, the INCLUDE blocks up to the end of the input, in place of what `includes`
    /// held. After a failure, with the result false, `includes` stays as it was.
    bool readModelIncludes(std::istream& input);

    /// Writes a model file; what keeps it from being created is reported on the current status.
    void writeModelFile(const LmStr& path, const LqProblemDefData& definition) const;
    /// Writes header, bodies, markers and includes. The definition, whose bodies are found without regard to
    /// case, says which bodies have a length and a direction. Leaves the stream's real format general, not
    /// fixed-point.
    void writeModelStream(std::ostream& output, const LqProblemDefData& definition) const;
    /// Writes a block for each include.
    void writeModelIncludes(std::ostream& output) const;

    // --- Look-ups --------------------------------------------------------------------------------

    /// The bodies in front of the first null slot, in file order.
    std::span<LqBDBody* const> storedBodies() const;
    /// The first body of exactly that name, or null. A linear scan, as `findMarker` is.
    LqBDBody* findBody(const LmStr& name);
    const LqBDBody* findBody(const LmStr& name) const;
    /// The first marker of that id among the real, fix, double and artificial markers, or null.
    LqBDMarker* findMarker(std::int32_t id);
    const LqBDMarker* findMarker(std::int32_t id) const;
    /// The bodies whose name another body has too: for each pair of equal names the later body, each behind
    /// the earlier one, which is listed once. Owned by this model.
    std::vector<const LqBDBody*> duplicateBodies() const;

    /// Whether all six arrays are empty.
    bool isEmpty() const;
    /// Whether there are neither records nor includes.
    bool isBlank() const;
    /// The largest id of the real, fix, double and artificial markers, 0 when there are none.
    std::int32_t highestMarkerId() const;
    /// The id of the last real marker, 0 when there is none.
    std::int32_t lastRealMarkerId() const;
    /// Real, fix, double and artificial records; an artificial pair counts as 2.
    int markerCount() const;
    /// 0 when the definition has as many markers (bodies), -1 when it has more, 1 when it has fewer.
    int compareMarkerCount(const LqProblemDefData& definition) const;
    int compareBodyCount(const LqProblemDefData& definition) const; ///< the same for the bodies
    /// The same against `problemDef`, which must not be null.
    int compareMarkerCount() const;
    int compareBodyCount() const; ///< the same for the bodies
    /// Whether bodies, markers and includes are equal in array order: base matrices element by element within
    /// less than 0.0005, all else exactly. Camera count and global direction markers are not compared.
    bool equals(const LqBodyDefData& other) const;

    // --- Checks: they report on the current status and change nothing -----------------------------

    /// Compares a number of bodies with that of the definition. Other than equal, two entries say so: errors
    /// when `strictMatch` is set, else warnings.
    void checkBodyCount(int bodyCount, const LqProblemDefData& definition) const;
    /// Tests that body names are unique, that the ids of the real, fix, double and artificial markers are one
    /// run from 1 in array order, and that there are as many bodies and markers as in `problemDef`, which
    /// must not be null. The first fault ends the check with one error.
    void checkModel() const;

    // --- Editing ---------------------------------------------------------------------------------

    /// Frees the records and the includes; `cameraCount` and `problemDef` stay.
    void clear();
    /// Append copies.
    void addBody(const LqBDBody& body);
    void addRealMarker(const LqBDMarker& marker);            ///< at the end of its array
    void addGlobalDirectionMarker(const LqBDMarker& marker); ///< at the end of its array
    /// Both points, one behind the other.
    void addArtificialPair(const LqBDMarker& first, const LqBDMarker& second);
    /// Inserts a copy in front of the first real marker whose id is not below the new one. The ids of the
    /// real markers that move back, and of all fix, double and artificial markers, rise by 1.
    void insertRealMarker(const LqBDMarker& marker);
    /// Frees the first real marker of that id, if there is one; the ids of the others stay.
    void removeRealMarker(std::int32_t id);
    /// Frees the last real marker, if there is one.
    void removeLastRealMarker();
    /// Frees the markers of these ids in all five marker arrays.
    void removeMarkers(const LmArray<int>& ids);
    /// Frees the bodies of these names.
    void removeBodies(const LmArray<LmStr>& names);
    /// Put copies of the given records in the place of those of one array.
    void setBodies(const LmArray<LqBDBody*>& source);
    void setRealMarkers(const LmArray<LqBDMarker*>& source);            ///< as `setBodies`
    void setGlobalDirectionMarkers(const LmArray<LqBDMarker*>& source); ///< as `setBodies`
    void setFixMarkers(const LmArray<LqBDMarker*>& source);             ///< as `setBodies`
    void setDoubleMarkers(const LmArray<LqBDMarker*>& source);          ///< as `setBodies`
    void setArtificialMarkers(const LmArray<LqBDMarker*>& source);      ///< as `setBodies`
    /// Every marker's id becomes `table[id - 1]`, an id that the table does not reach stays; then each of the
    /// five marker arrays is sorted by id.
    void applyMarkerIdTable(const LmArray<int>& table);
    void clearIncludes(); ///< frees the INCLUDE sections
    /// Appends a text to the suffix of every include.
    void appendToIncludeSuffixes(const LmStr& suffix);
    /// Reads the files that the includes name, with their own includes merged first, and puts their records
    /// behind those of this model as `mergeModels` does, one include after the other. Bodies are looked up in
    /// the definition with the include's own suffix, at any depth.
    ///
    /// The includes and the global direction markers are gone afterwards, `cameraCount` and `strictMatch` are
    /// those of a new model, `problemDef` stays. When a file cannot be read, or includes itself, reports on
    /// the current status, gives false and leaves everything as it was.
    bool mergeModelIncludes(const LqProblemDefData& definition);
    /// The same with an index of the definition's bodies.
    bool mergeModelIncludes(const DefinedBodyIndex& definedBodies);

    const LqProblemDefData* problemDef = nullptr; ///< the definition that checks look at, not owned
    std::int32_t cameraCount = 0;                 ///< number of cameras in the file
    bool strictMatch = true;                      ///< whether a wrong body count is an error or a warning
    LmDArray<LqBDBody*> bodies;                   ///< in file order
    LmDArray<LqBDMarker*> realMarkers;            ///< by ascending id in a valid model
    LmDArray<LqBDMarker*> globalDirectionMarkers; ///< in no file
    LmDArray<LqBDMarker*> fixMarkers;             ///< behind the real ones
    LmDArray<LqBDMarker*> doubleMarkers;          ///< behind the fix ones
    LmDArray<LqBDMarker*> artificialMarkers;      ///< two records for each pair of the definition
    LmDoubleLinkedList includes;                  ///< of `LqBDInclude*`, owned; empty once merged

private:
    void copyFrom(const LqBodyDefData& other);
};

} // namespace quillon
