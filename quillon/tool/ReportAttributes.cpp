#include "quillon/tool/ReportAttributes.h"

#include "quillon/geometry/EulerAngles.h"

#include <cstddef>
#include <iostream>

namespace quillon {

void writeVector3(ReportText& out, const LmVec3& vector) {
    out << "(" << vector[0] << " " << vector[1] << " " << vector[2] << ")";
}

ValueList::~ValueList() {
    if (hasEntries) {
        out << ")";
    }
}

ReportText& ValueList::addEntry(std::string_view name) {
    if (hasEntries) {
        out << " ";
    } else {
        out << " " << label << "=(";
    }
    hasEntries = true;
    return out << name << "=";
}

std::string_view transformLabel(std::int32_t id) {
    static constexpr std::string_view labels[] = {"tx", "ty", "tz", "rx", "ry", "rz"};
    if (id < 1 || id > 6) {
        std::cerr << "invalid transform_id " << id << "\n";
        return "unknown";
    }
    return labels[id - 1];
}

void addValue(ValueList& list, std::string_view name, float number) {
    if (number != 0.0F) {
        list.addEntry(name) << number;
    }
}

void writeTransformAttribute(ReportText& out, const char* label, const LmVec3& translation,
                             const LmMat3& rotation) {
    static constexpr LmEulerOrder order = {1, 2, 3};
    LmVec3 angles{};
    matrixToEuler(angles, order, rotation);
    ValueList list(out, label);
    for (std::int32_t axis = 0; axis < 3; ++axis) {
        addValue(list, transformLabel(axis + 1), translation[static_cast<std::size_t>(axis)]);
    }
    for (std::int32_t axis = 0; axis < 3; ++axis) {
        addValue(list, transformLabel(axis + 4), angles[static_cast<std::size_t>(axis)]);
    }
}

} // namespace quillon
