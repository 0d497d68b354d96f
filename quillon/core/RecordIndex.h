#pragma once

#include <algorithm>
#include <cstddef>
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

    /// Adds all of a range of records.
    void addAll(const auto& added) {
        for (const Record* record : added) {
            add(record);
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
        if (const Record* const record = atPlaceOf(id)) {
            return record;
        }
        const auto found = std::ranges::lower_bound(records, id, {}, &Record::id);
        return found != records.end() && (*found)->id == id ? *found : nullptr;
    }

private:
    /// The record at the place of its id, where ids count from 1, as they mostly do: that saves the search.
    const Record* atPlaceOf(std::int32_t id) const {
        const auto place = static_cast<std::size_t>(id) - 1;
        const auto hasId = [&](std::size_t i) { return records[i]->id == id; };
        return id > 0 && place < records.size() && hasId(place) && (place == 0 || !hasId(place - 1))
                   ? records[place]
                   : nullptr;
    }

    std::vector<const Record*> records;
    bool isSorted = true;
};

} // namespace quillon
