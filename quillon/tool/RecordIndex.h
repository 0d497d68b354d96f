#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quillon {

/// Records by their `id`. Of several records with one id the first that was added is found, as by a scan.
/// The records are not owned and keep their ids meanwhile.
template <class Record>
class RecordIndex {
public:
    /// Adds a record; a null pointer is passed over. All are added before the first look-up.
    void add(const Record* record) {
        if (record != nullptr) {
            isSorted = isSorted && (records.empty() || records.back()->id <= record->id);
            records.push_back(record);
        }
    }

    /// Ends the adding.
    void finish() {
        if (!isSorted) {
            std::ranges::stable_sort(records, {}, &Record::id);
            isSorted = true;
        }
    }

    /// The first record of that id, or null.
    const Record* find(std::int32_t id) const {
        const auto found = std::ranges::lower_bound(records, id, {}, &Record::id);
        return found != records.end() && (*found)->id == id ? *found : nullptr;
    }

private:
    std::vector<const Record*> records;
    bool isSorted = true;
};

} // namespace quillon
