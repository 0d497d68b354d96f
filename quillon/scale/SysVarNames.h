#pragma once

#include "quillon/core/RecordIndex.h"
#include "quillon/problem/LqPDDSysVar.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillon {

class LqProblemDefData;

namespace scaleDef {

/// The names of a problem definition's system variables by id, found without a scan.
///
/// Of several variables with one id the first counts. Views into the problem definition, which stays as it is
/// meanwhile.
class SysVarNames {
public:
    explicit SysVarNames(const LqProblemDefData& problemDef); ///< of all its variables

    /// The name, which may be empty; none when there is no variable of that id.
    std::optional<std::string_view> find(std::int32_t id) const;
    /// The name, empty when there is no variable of that id.
    std::string_view nameOf(std::int32_t id) const { return find(id).value_or(std::string_view()); }

private:
    RecordIndex<LqPDDSysVar> sysVars;
};

} // namespace scaleDef
} // namespace quillon
