#include "quillon/scale/SysVarNames.h"

#include "quillon/problem/LqProblemDefData.h"

namespace quillon::scaleDef {

SysVarNames::SysVarNames(const LqProblemDefData& problemDef) {
    for (const LqPDDSysVar* sysVar : problemDef.sysVars) {
        if (sysVar != nullptr) {
            names.emplace(sysVar->id, sysVar->description.view());
        }
    }
}

std::optional<std::string_view> SysVarNames::find(std::int32_t id) const {
    const auto found = names.find(id);
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

} // namespace quillon::scaleDef
