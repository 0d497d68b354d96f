#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/problem/LqBasicVarMapping.h"

#include <cstdint>
#include <set>
#include <utility>

namespace quillon {

/// The name of the fixed global frame. It is a parent or a marker's body, and never a body record.
inline constexpr const char* referenceSystemName = "ReferenceSystemZero";

/// The number of elementary transformations of a body.
inline constexpr int transformCount = 6;

/// Each is a bit of a body's `type`: that of a body with a type one variable, a length and a direction, and
/// that of a body with a type two variable and a direction.
inline constexpr std::int32_t bodyTypeOne = 1;
inline constexpr std::int32_t bodyTypeTwo = 2;

/// A place in the order of a body's transformations, counted from 1.
struct TransformPosition {
    int number; ///< from 1
};

/// One rigid body of a problem definition, with what drives its six elementary transformations.
///
/// The transformation numbers are 1, 2, 3 for the translations along x, y, z and 4, 5, 6 for the rotations
/// about them. Owns its mappings; a copy is deep.
struct LqPDDBodyMap {
    LqPDDBodyMap() : LqPDDBodyMap(LmStr(""), LmStr("")) {}
    /// Of type 0, not driven.
    LqPDDBodyMap(LmStr newName, LmStr newParentName)
        : name(std::move(newName)), parentName(std::move(newParentName)) {}
    LqPDDBodyMap(const LqPDDBodyMap&) = default;
    LqPDDBodyMap& operator=(const LqPDDBodyMap& other);
    ~LqPDDBodyMap() = default;

    const std::uint64_t stamp = 0xFF0082;        ///< the same in every record; never read
    LmStr name;                                  ///< unique in a valid definition
    LmStr parentName;                            ///< a body or `referenceSystemName`
    std::int32_t graphicsNumber = -1;            ///< the number beside the name; reports print it as the id
    std::int32_t type = 0;                       ///< a mask of `bodyTypeOne` and `bodyTypeTwo`
    LmArray<int> transformOrder{transformCount}; ///< the transformation numbers in order of application
    LmArray<LqBasicVarMapping<float>> mappings{transformCount}; ///< k drives `transformOrder[k]`
    std::int32_t typeOneVar = 0; ///< system variable of the type one quantity, 0 for none
    std::int32_t typeTwoVar = 0; ///< system variable of the type two quantity, 0 for none

    /// Assigns the mapping at an index from 0, or at a position from 1. Without such a mapping nothing
    /// happens.
    void setMapping(int index, const LqBasicVarMapping<float>& mapping);
    void setMapping(TransformPosition position, const LqBasicVarMapping<float>& mapping);
    /// Assigns the mapping a bare id, with a zero constant and no terms.
    void setMapping(int index, std::int32_t id);
};

/// Compares everything but `typeTwoVar`. Leaving it out is deliberate: no file keeps it.
bool equals(const LqPDDBodyMap& left, const LqPDDBodyMap& right);

/// The ids of the system variables in the body's mappings, and its type variables where there are any.
std::set<std::int32_t> bodySysVars(const LqPDDBodyMap& body);

/// Whether the id is among `bodySysVars`.
bool bodyUsesSysVar(const LqPDDBodyMap& body, std::int32_t id);

} // namespace quillon
