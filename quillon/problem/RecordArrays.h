#pragma once

#include "quillon/core/LmArray.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace quillon {

// What the arrays of owned records of a problem definition have in common. No array repeats a pointer unless
// an operation says so; slots may be null.

/// Adds to an id. Files may hold any id, so the sum wraps around instead of overflowing.
inline void shiftId(std::int32_t& id, std::int32_t offset) {
    id = static_cast<std::int32_t>(std::int64_t{id} + offset);
}

/// Frees the records and empties the array.
template <class Record>
void freeRecords(LmDArray<Record*>& records) {
    for (const Record* record : records) {
        delete record;
    }
    records.setLength(0);
}

/// Copies the records slot by slot into an empty array. Slots that share a record share its copy.
template <class Record>
void copyRecords(LmDArray<Record*>& target, const LmDArray<Record*>& source, bool slotsMayRepeat = false) {
    target.setLengthZeroed(source.count());
    std::unordered_map<const Record*, Record*> copies;
    for (int i = 0; i < source.count(); ++i) {
        const Record* const record = source[i];
        if (record == nullptr) {
            continue;
        }
        if (!slotsMayRepeat) {
            target[i] = new Record(*record);
            continue;
        }
        Record*& copy = copies[record];
        if (copy == nullptr) {
            copy = new Record(*record);
        }
        target[i] = copy;
    }
}

/// Puts copies of the given records in the place of those of the array. The given array may be this one.
template <class Record>
void replaceRecords(LmDArray<Record*>& records, const LmDArray<Record*>& newRecords) {
    LmDArray<Record*> copies;
    copyRecords(copies, newRecords);
    freeRecords(records);
    records = copies;
}

/// Moves the records in front of the null slots, in order, and gives their number. The length of the array
/// and the slots behind the records stay as they are.
template <class Record>
int closeGaps(LmDArray<Record*>& records) {
    int filled = 0;
    for (Record* const record : records) {
        if (record != nullptr) {
            records[filled] = record;
            ++filled;
        }
    }
    return filled;
}

/// Frees the records for which the condition holds, and shrinks the array to the others.
template <class Record, class Condition>
void removeRecordsIf(LmDArray<Record*>& records, const Condition& condition) {
    for (Record*& record : records) {
        if (record != nullptr && condition(*record)) {
            delete record;
            record = nullptr;
        }
    }
    records.setLength(closeGaps(records));
}

/// Shrinks an array to the first slot of each record.
template <class Record>
void dropRepeats(LmDArray<Record*>& records) {
    std::unordered_set<const Record*> seen;
    for (Record*& record : records) {
        if (record != nullptr && !seen.insert(record).second) {
            record = nullptr;
        }
    }
    records.setLength(closeGaps(records));
}

} // namespace quillon
