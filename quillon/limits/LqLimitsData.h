#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmDoubleLinkedList.h"
#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

/// Which limits a system variable has. The numbers are fixed: the tests for a limit are made on them.
enum LqLimitMode : std::int32_t { LimitNone = 0, LimitUpper = 1, LimitLower = 2, LimitBoth = 3 };

/// The weight of a limit, which may be left open.
struct LqLimitWeight {
    float value = 0;    ///< 0 while the weight is not set
    bool notSet = true; ///< no weight was given

    /// Makes `weight` the weight that is set.
    void set(float weight) {
        value = weight;
        notSet = false;
    }
};

/// The limits and the guide of one system variable, in the variable's own units.
struct LqVarLimits {
    LqVarLimits() = default;
    explicit LqVarLimits(std::int32_t newId) : id(newId) {} ///< no limits and no guide

    std::int32_t id = 0;          ///< system variable id, counted from 1
    LqLimitMode mode = LimitNone; ///< which limits exist
    float upperValue = 0;         ///< meaningful with an upper limit
    LqLimitWeight upperWeight;    ///< of the upper limit
    float lowerValue = 0;         ///< meaningful with a lower limit
    LqLimitWeight lowerWeight;    ///< of the lower limit
    float guideValue = 0;         ///< what the variable is drawn towards; 0 without a guide
    float guideWeight = 0;        ///< how strongly; 0 without a guide

    bool hasUpperLimit() const; ///< by `mode`
    bool hasLowerLimit() const; ///< by `mode`
    /// Switch a limit on or off in `mode`; the other limit stays as it is.
    void switchUpperLimit(bool on);
    void switchLowerLimit(bool on); ///< the same for the lower limit
};

/// One INCLUDE section: another limits file whose records are to be merged.
struct LqLimitsInclude {
    LmStr fileName{""};         ///< as in the file, with `$NAME` expanded
    std::int32_t idOffset = -1; ///< added to the ids of that file; -1 when none was given
};

/// The limits of a problem's system variables. Owns all records; a copy is deep.
///
/// A record is found by the id of its variable. Records that a file gave stand in file order, those that the
/// editing operations add are put in by ascending id. An id may occur twice; look-ups then see the first.
class LqLimitsData {
public:
    LqLimitsData() = default;
    LqLimitsData(const LqLimitsData& other);
    LqLimitsData& operator=(const LqLimitsData& other);
    ~LqLimitsData();

    // --- Look-ups --------------------------------------------------------------------------------

    /// The first record of that id, or null. A linear scan: for all variables of a problem use an index.
    LqVarLimits* findVar(std::int32_t id);
    const LqVarLimits* findVar(std::int32_t id) const;
    /// The guide of a variable, 0 without a record.
    float guideValue(std::int32_t id) const;
    float guideWeight(std::int32_t id) const; ///< its weight
    /// The greatest id of all records, 0 when none is above 0.
    std::int32_t lastVarId() const;
    /// Whether the records that have an effect are equal, in order. A record without limits whose guide has
    /// no weight has none and is passed over; a NaN is never equal. Includes are not compared.
    bool equalEffective(const LqLimitsData& other) const;

    // --- Editing ---------------------------------------------------------------------------------

    /// Inserts a copy in front of the first record whose id is not below the new one, at the end if the id is
    /// above that of the last record, and returns it. A record of equal id stays, behind the new one.
    LqVarLimits* insertVar(const LqVarLimits& record);
    /// The first record of that id; a new one is inserted when there is none.
    LqVarLimits* varForEdit(std::int32_t id);
    /// Store a limit of `varForEdit(id)` and switch it on.
    void setUpperLimit(std::int32_t id, float value);
    void setLowerLimit(std::int32_t id, float value); ///< the same for the lower limit
    /// Store the weight of a limit of `varForEdit(id)`; whether the limit exists stays as it is.
    void setUpperWeight(std::int32_t id, float weight);
    void setLowerWeight(std::int32_t id, float weight); ///< the same for the lower limit
    /// Store one half of the guide of `varForEdit(id)`.
    void setGuideValue(std::int32_t id, float value);
    void setGuideWeight(std::int32_t id, float weight); ///< the same for its weight
    /// Frees every record of that id, or of those ids.
    void removeVar(std::int32_t id);
    void removeVars(const LmArray<int>& ids); ///< the same for several ids
    /// Every record's id becomes `table[id - 1]`; an id that the table does not reach stays. The order of
    /// the records stays.
    void renumberVars(const LmArray<int>& table);
    /// Appends an INCLUDE section; an `idOffset` of -1 means that none is given.
    void addInclude(const LmStr& fileName, std::int32_t idOffset);
    void clearIncludes(); ///< frees the INCLUDE sections
    /// Frees all records and includes.
    void clear();
    /// Takes the records and the includes of two lists, which are empty afterwards, in place of those held.
    /// The includes held are freed. The records held are unlinked but stay alive until `clear` or the end of
    /// this object, so that a caller's pointer to one survives the reading of another file.
    void replaceAll(LmDoubleLinkedList& newVars, LmDoubleLinkedList& newIncludes);

    LmDoubleLinkedList vars;     ///< of `LqVarLimits*`, owned
    LmDoubleLinkedList includes; ///< of `LqLimitsInclude*`, owned, in file order; empty once merged

private:
    void copyFrom(const LqLimitsData& other);

    LmDoubleLinkedList unlinkedVars; // of LqVarLimits*, owned: records that a later read took out of `vars`
};

} // namespace quillon
