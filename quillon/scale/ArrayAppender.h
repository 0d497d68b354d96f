#pragma once

#include "quillon/core/LmArray.h"

#include <cstdint>
#include <memory>
#include <new>

namespace quillon::scaleDef {

/// Appends records to an array without growing it for each of them.
///
/// Takes room ahead, and gives it back when it is destroyed or `finish` is called: until then the length of
/// the array is not that of its records, and nobody else may look at it. The array outlives the appender.
template <class Record>
class ArrayAppender {
public:
    /// Behind the records that the array holds.
    explicit ArrayAppender(LmDArray<Record>& array) : array(array), recordCount(array.count()) {}
    ArrayAppender(const ArrayAppender&) = delete;
    ArrayAppender& operator=(const ArrayAppender&) = delete;
    ~ArrayAppender() { finish(); }

    /// Appends a default record, which stays where it is until the next one is appended.
    Record& append() {
        if (recordCount == array.count()) {
            array.setLength(2 * std::int64_t{recordCount} + 1);
        }
        Record* const record = new (array.data() + recordCount) Record();
        ++recordCount;
        return *record;
    }

    /// Takes the newest record out again.
    void dropLast() {
        --recordCount;
        std::destroy_at(array.data() + recordCount);
    }

    /// The number of records, with those that the array held before.
    int count() const { return recordCount; }

    /// Gives the array the length of its records.
    void finish() {
        if (recordCount != array.count()) {
            array.setLength(recordCount);
        }
    }

private:
    LmDArray<Record>& array;
    int recordCount;
};

} // namespace quillon::scaleDef
