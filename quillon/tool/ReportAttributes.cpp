#include "quillon/tool/ReportAttributes.h"

#include "quillon/core/NumberPrinting.h"
#include "quillon/geometry/EulerAngles.h"

#include <iostream>

namespace quillon {

LmStr numberText(float number) {
    char text[numberTextSize];
    return LmStr(std::string_view(text, formatReal(text, number)));
}

void appendNumber(std::string& text, float number) {
    char digits[numberTextSize];
    text.append(digits, formatReal(digits, number));
}

LmStr writeVector3(float x, float y, float z) {
    char text[3 * numberTextSize + 4];
    char* end = text;
    *end++ = '(';
    end = formatReal(end, x);
    *end++ = ' ';
    end = formatReal(end, y);
    *end++ = ' ';
    end = formatReal(end, z);
    *end++ = ')';
    return LmStr(std::string_view(text, end));
}

void writeValueList(ReportText& out, const char* label, const LmArray<ValueSpec>& entries) {
    out << " " << label << "=(";
    const char* separator = "";
    for (const ValueSpec& entry : entries) {
        out << separator << entry.name << "=" << entry.value;
        separator = " ";
    }
    out << ")";
}

const LmStr& transformLabel(std::int32_t id) {
    static const LmStr labels[] = {"tx", "ty", "tz", "rx", "ry", "rz"};
    static const LmStr unknown("unknown");
    if (id < 1 || id > 6) {
        std::cerr << "invalid transform_id " << id << "\n";
        return unknown;
    }
    return labels[id - 1];
}

void addValue(LmDArray<ValueSpec>& entries, const LmStr& label, float number) {
    if (number != 0.0F) {
        entries.append({label, numberText(number)});
    }
}

void writeTransformAttribute(ReportText& out, const char* label, const LmVec3& translation,
                             const LmMat3& rotation) {
    static constexpr LmEulerOrder order = {1, 2, 3};
    LmVec3 angles{};
    matrixToEuler(angles, order, rotation);
    LmDArray<ValueSpec> entries;
    for (std::int32_t axis = 0; axis < 3; ++axis) {
        addValue(entries, transformLabel(axis + 1), translation[static_cast<std::size_t>(axis)]);
    }
    for (std::int32_t axis = 0; axis < 3; ++axis) {
        addValue(entries, transformLabel(axis + 4), angles[static_cast<std::size_t>(axis)]);
    }
    if (entries.count() != 0) {
        writeValueList(out, label, entries);
    }
}

} // namespace quillon
