#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/tool/ReportText.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillon {

// The grammar that all lines of the report share.

/// One entry of a parenthesised attribute such as " transforms=(tx=v1 ty=v2)".
struct ValueSpec {
    LmStr name;
    LmStr value;
};

/// The number as the report prints it.
LmStr numberText(float number);

/// "(x y z)".
LmStr writeVector3(float x, float y, float z);

/// A blank, the label, "=(", the entries as name=value with a blank between them, and ")".
void writeValueList(ReportText& out, const char* label, std::span<const ValueSpec> entries);

/// The label of a transformation: "tx", "ty", "tz" for 1 to 3, "rx", "ry", "rz" for 4 to 6. Any other number
/// is remarked on standard error and is "unknown".
const LmStr& transformLabel(std::int32_t id);

/// Adds an entry for a number that is not 0.
void addValue(std::vector<ValueSpec>& entries, const LmStr& label, float number);

/// A value list of the translation (metres) and of the rotation's angles about x, y and z (radians), each
/// left out when it is 0; nothing at all for an identity. `entries` is room for the list.
void writeTransformAttribute(ReportText& out, std::vector<ValueSpec>& entries, const char* label,
                             const LmVec3& translation, const LmMat3& rotation);

} // namespace quillon
