#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>
#include <utility>

namespace quillon {

/// One system variable, that is one degree of freedom, of a problem definition.
struct LqPDDSysVar {
    LqPDDSysVar() : description("") {}
    /// A variable of that id and name.
    LqPDDSysVar(std::int32_t newId, LmStr newDescription)
        : id(newId), description(std::move(newDescription)) {}
    LqPDDSysVar(const LqPDDSysVar&) = default;
    LqPDDSysVar& operator=(const LqPDDSysVar& other) {
        id = other.id;
        description = other.description;
        return *this;
    }
    ~LqPDDSysVar() = default;

    const std::uint64_t stamp = 553482; ///< the same in every record; never read
    std::int32_t id = 0;                ///< counts from 1
    LmStr description;                  ///< its name
};

} // namespace quillon
