#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>
#include <utility>

namespace quillon {

/// One INCLUDE section of a problem definition: another definition that is to be merged into it.
struct LqPDDInclude {
    LqPDDInclude() : fileName(""), bodyNameSuffix("") {}
    /// A section with these values.
    explicit LqPDDInclude(LmStr file, LmStr suffix = LmStr(""), std::int32_t bodyOffset = 0,
                          std::int32_t sysVarOffset = -1)
        : fileName(std::move(file)), bodyNameSuffix(std::move(suffix)), bodyIdOffset(bodyOffset),
          sysVarIdOffset(sysVarOffset) {}

    LmStr fileName;                   ///< of the included definition
    LmStr bodyNameSuffix;             ///< appended to the names of the included definition
    std::int32_t bodyIdOffset = 0;    ///< added to each `graphicsNumber`
    std::int32_t sysVarIdOffset = -1; ///< added to each system variable id; negative for "not given"
};

} // namespace quillon
