#include "quillon/scale/SysVarNames.h"

#include "quillon/problem/LqProblemDefData.h"

namespace quillon::scaleDef {

SysVarNames::SysVarNames(const LqProblemDefData& problemDef) {
    sysVars.addAll(problemDef.sysVars);
    sysVars.finish();
}

std::optional<std::string_view> SysVarNames::find(std::int32_t id) const {
    const LqPDDSysVar* const found = sysVars.find(id);
    return found == nullptr ? std::nullopt : std::optional(found->description.view());
}

} // namespace quillon::scaleDef
