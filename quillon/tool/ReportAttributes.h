#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/tool/ReportText.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace quillon {

// The grammar that all lines of the report share.

/// One entry of a parenthesised attribute such as " transforms=(tx=v1 ty=v2)".
struct ValueSpec {
    LmStr name;
    LmStr value;
};

template <>
struct MovesByBytes<ValueSpec> : std::true_type {};

/// The number as the report prints it.
LmStr numberText(float number);

/// Appends that text.
void appendNumber(std::string& text, float number);

/// "(x y z)".
LmStr writeVector3(float x, float y, float z);

/// A blank, the label, "=(", the entries as name=value with a blank between them, and ")".
void writeValueList(ReportText& out, const char* label, const LmArray<ValueSpec>& entries);

/// The label of a transformation: "tx", "ty", "tz" for 1 to 3, "rx", "ry", "rz" for 4 to 6. Any other number
/// is remarked on standard error and is "unknown".
const LmStr& transformLabel(std::int32_t id);

/// Adds an entry for a number that is not 0.
void addValue(LmDArray<ValueSpec>& entries, const LmStr& label, float number);

/// A value list of the translation (metres) and of the rotation's angles about x, y and z (radians), each
/// left out when it is 0; nothing at all for an identity.
void writeTransformAttribute(ReportText& out, const char* label, const LmVec3& translation,
                             const LmMat3& rotation);

} // namespace quillon
