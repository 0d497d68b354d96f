#include "quillon/limits/LimitsIncludes.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/limits/LimitsReader.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_set>
#include <vector>

namespace quillon {

namespace {

constexpr std::int32_t noOffset = -1;

/// The records of an included file, and what is added to their ids.
struct LoadedLimits {
    LqLimitsData limits;
    std::int32_t idOffset = noOffset;
};

/// A list of records, not owned, into which records are inserted as by `LqLimitsData::insertVar` but without
/// a scan for each.
///
/// A record whose id is above all ids in front of it opens a run, which reaches up to the next such record.
/// So the runs ascend by the ids that open them, and the first record that is not below a given id opens a
/// run.
class RecordRuns {
public:
    explicit RecordRuns(const LmDoubleLinkedList& vars) {
        for (LqVarLimits* record : LmListView<LqVarLimits>(vars)) {
            append(record);
        }
    }

    bool holds(std::int32_t id) const { return ids.contains(id); }

    /// Inserts a record whose id is not held.
    void insert(LqVarLimits* record) {
        if (runs.empty() || record->id > lastInList) {
            append(record);
        } else {
            ids.insert(record->id);
            runs[record->id] = {record};
        }
    }

    /// As `LqLimitsData::lastVarId`.
    std::int32_t lastVarId() const { return runs.empty() ? 0 : std::max(runs.rbegin()->first, 0); }

    void copyTo(LmDoubleLinkedList& vars) const {
        for (const auto& [id, run] : runs) {
            for (LqVarLimits* record : run) {
                vars.append(record);
            }
        }
    }

private:
    void append(LqVarLimits* record) {
        ids.insert(record->id);
        lastInList = record->id;
        if (runs.empty() || record->id > runs.rbegin()->first) {
            runs[record->id] = {record};
        } else {
            runs.rbegin()->second.push_back(record);
        }
    }

    std::map<std::int32_t, std::vector<LqVarLimits*>> runs; // by the id that opens each
    std::unordered_set<std::int32_t> ids;
    std::int32_t lastInList = 0;
};

bool loadIncludes(const LmDoubleLinkedList& includes, std::deque<LoadedLimits>& loaded) {
    for (const LqLimitsInclude* include : LmListView<const LqLimitsInclude>(includes)) {
        LoadedLimits& next = loaded.emplace_back();
        next.idOffset = include->idOffset;
        if (refuseOwnInclude(include->fileName) || !readLimitsFile(next.limits, include->fileName, true)) {
            return false;
        }
    }
    return true;
}

/// Added as unsigned numbers: ids beyond the greatest one go on at the least one.
std::int32_t shifted(std::int32_t id, std::int32_t offset) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(id) + static_cast<std::uint32_t>(offset));
}

/// Gives the loaded records their new ids and inserts them, up to an id that is held already.
bool addRecords(RecordRuns& merged, const LoadedLimits& loaded) {
    const std::int32_t offset = loaded.idOffset == noOffset ? merged.lastVarId() : loaded.idOffset;
    for (LqVarLimits* record : LmListView<LqVarLimits>(loaded.limits.vars)) {
        record->id = shifted(record->id, offset);
        if (merged.holds(record->id)) {
            pushErrorf("Sys var id %d cannot have more than one set of limits.", record->id);
            return false;
        }
        merged.insert(record);
    }
    return true;
}

bool addAllRecords(RecordRuns& merged, const std::deque<LoadedLimits>& loaded) {
    for (const LoadedLimits& next : loaded) {
        if (!addRecords(merged, next)) {
            return false;
        }
    }
    return true;
}

/// Unlinks records that have another owner now.
void release(LmDoubleLinkedList& vars) {
    LmDoubleLinkedList nodes;
    nodes.swap(vars);
}

} // namespace

bool mergeIncludes(LqLimitsData& target) {
    if (target.includes.count() == 0) {
        return true;
    }
    std::deque<LoadedLimits> loaded;
    RecordRuns merged(target.vars);
    if (!loadIncludes(target.includes, loaded) || !addAllRecords(merged, loaded)) {
        pushError("Unable to include sub-limits.");
        return false;
    }
    release(target.vars);
    for (LoadedLimits& next : loaded) {
        release(next.limits.vars);
    }
    merged.copyTo(target.vars);
    target.clearIncludes();
    return true;
}

} // namespace quillon
