#pragma once

#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/tool/ReportText.h"

#include <cstdint>
#include <string_view>

namespace quillon {

// The grammar that all lines of the report share.

/// "(x y z)".
void writeVector3(ReportText& out, const LmVec3& vector);

/// A parenthesised attribute such as " transforms=(tx=v1 ty=v2)": a blank, the label, "=(", the entries as
/// name=value with a blank between them, and ")" on destruction. Without an entry nothing is written.
class ValueList {
public:
    /// Begins a list in a report that outlives it.
    ValueList(ReportText& text, const char* listLabel) : out(text), label(listLabel) {}
    ValueList(const ValueList&) = delete;
    ValueList& operator=(const ValueList&) = delete;
    ~ValueList();

    /// Begins an entry. Its value is to be written to the text that is returned, before the next entry.
    ReportText& addEntry(std::string_view name);

private:
    ReportText& out;
    const char* label;
    bool hasEntries = false;
};

/// The label of a transformation: "tx", "ty", "tz" for 1 to 3, "rx", "ry", "rz" for 4 to 6. Any other number
/// is remarked on standard error and is "unknown".
std::string_view transformLabel(std::int32_t id);

/// Adds an entry for a number that is not 0.
void addValue(ValueList& list, std::string_view name, float number);

/// A value list of the translation and of the rotation's angles about x, y and z (radians, by `matrixToEuler`
/// with the order 1, 2, 3), each left out when it is 0; nothing at all for an identity.
void writeTransformAttribute(ReportText& out, const char* label, const LmVec3& translation,
                             const LmMat3& rotation);

} // namespace quillon
