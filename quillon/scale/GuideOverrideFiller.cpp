#include "quillon/scale/GuideOverrideFiller.h"

namespace quillon::scaleDef {

GuideOverrideFiller::GuideOverrideFiller(LmDArray<SysVarGuideOverride>& target) : array(target) {
    for (const SysVarGuideOverride& record : array) {
        add(record);
    }
}

GuideOverrideFiller::~GuideOverrideFiller() {
    array.setLength(static_cast<std::int64_t>(records.size()));
    int i = 0;
    for (const auto& [sysVarId, record] : records) {
        array[i] = record;
        ++i;
    }
}

} // namespace quillon::scaleDef
