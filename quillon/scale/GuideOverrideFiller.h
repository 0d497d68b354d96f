#pragma once

#include "quillon/scale/ScaleRecords.h"

#include <cstdint>
#include <map>

namespace quillon::scaleDef {

/// Adds guide overrides to an array of them, which stays sorted by system variable with each id once.
///
/// The array gets the added records when the filler goes. Gathering them first spares moving the tail of the
/// array for each.
class GuideOverrideFiller {
public:
    /// Adds to the records that the array holds.
    explicit GuideOverrideFiller(LmDArray<SysVarGuideOverride>& target);
    GuideOverrideFiller(const GuideOverrideFiller&) = delete;
    GuideOverrideFiller& operator=(const GuideOverrideFiller&) = delete;
    ~GuideOverrideFiller();

    /// Whether there is an override of the system variable.
    bool has(std::int32_t sysVarId) const { return records.contains(sysVarId); }
    /// Adds a record; when its system variable has one, that stays and the new one is dropped.
    void add(const SysVarGuideOverride& record) { records.emplace(record.sysVarId, record); }

private:
    LmDArray<SysVarGuideOverride>& array;
    std::map<std::int32_t, SysVarGuideOverride> records;
};

} // namespace quillon::scaleDef
