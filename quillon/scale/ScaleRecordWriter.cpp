#include "quillon/scale/ScaleRecordWriter.h"

#include "quillon/core/NumberPrinting.h"
#include "quillon/geometry/EulerAngles.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleDefFormat.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <string>
#include <utility>

namespace quillon {

namespace {

namespace format = scaleDefFormat;

constexpr int blanksPerLevel = 2;
constexpr LmEulerOrder writtenRotationOrder = {3, 2, 1};
constexpr const char* writtenRotationLetters = "Z Y X";

void writeScaleVarName(const LqScaleDefData& source, std::ostream& output, std::int32_t id) {
    if (id >= 1 && id <= source.scaleVars.count()) {
        output << source.scaleVars[id - 1].name.view();
    } else {
        printInt(output, id);
    }
}

} // namespace

// --- Fields --------------------------------------------------------------------------------------

void scaleDef::writeVector(std::ostream& output, const LmVec3& vector) {
    printReal(output, vector[0]);
    output << ' ';
    printReal(output, vector[1]);
    output << ' ';
    printReal(output, vector[2]);
}

void scaleDef::writeField(std::ostream& output, std::string_view text, std::size_t width) {
    output << text;
    for (std::size_t column = text.size(); column < width; ++column) {
        output << ' ';
    }
}

void LqScaleDefData::writeScaleMapping(std::ostream& output, const scaleDef::ScaleMapping& mapping) const {
    if (mapping.id > 0) {
        writeScaleVarName(*this, output, mapping.id);
        return;
    }
    printInt(output, mapping.id);
    if (mapping.id == 0) {
        return;
    }
    output << ' ';
    LqScaleDefData::writeScaleFloat(output, mapping.constant, 0.0F);
    std::int64_t termsLeft = -std::int64_t{mapping.id} - 1;
    for (const LqLinearTerm<scaleDef::ScaleFloat>* term : mapping.termList()) {
        if (termsLeft == 0) {
            break;
        }
        --termsLeft;
        output << ' ';
        writeScaleVarName(*this, output, term->sysVar);
        output << ' ';
        LqScaleDefData::writeScaleFloat(output, term->coefficient, 0.0F);
    }
}

// --- Position constraints ------------------------------------------------------------------------

namespace {

/// Writes the items of one constraint, each on a line of its own.
class PositionConstraintWriter {
public:
    PositionConstraintWriter(std::ostream& stream, std::string blanks)
        : output(stream), indent(std::move(blanks)) {}

    void write(const LqScaleDefData& source, const scaleDef::PositionConst_t& record);

private:
    std::ostream& startItem(const char* key) { return output << indent << "  " << key << ": "; }
    void writeText(const char* key, const LmStr& text);
    void writeVector(const char* key, const LmVec3& vector);
    void writeBaseRotation(const LmMat3& rotation);
    void writeTransformOrder(const LmArray<int>& order);

    std::ostream& output;
    const std::string indent;
};

void PositionConstraintWriter::write(const LqScaleDefData& source, const scaleDef::PositionConst_t& record) {
    output << indent << format::positionConstraintKey << " {\n";
    writeText(format::bodyKey, record.body);
    writeText(format::parentKey, record.parent);
    writeVector(format::localPositionKey, record.localPosition);
    startItem(format::weightKey);
    printReal(output, record.weight);
    output << '\n';
    writeVector(format::baseTranslationKey, record.baseTranslation);
    writeBaseRotation(record.baseRotation);
    writeTransformOrder(record.transformOrder);
    output << indent << "  " << format::mappingKey << " {\n";
    for (const scaleDef::ScaleMapping& mapping : record.mapping) {
        output << indent << "    ";
        source.writeScaleMapping(output, mapping);
        output << '\n';
    }
    output << indent << "  }\n" << indent << "}\n";
}

void PositionConstraintWriter::writeText(const char* key, const LmStr& text) {
    startItem(key) << text.view() << '\n';
}

void PositionConstraintWriter::writeVector(const char* key, const LmVec3& vector) {
    startItem(key);
    scaleDef::writeVector(output, vector);
    output << '\n';
}

/// Whatever order a file used, the record keeps the matrix alone.
void PositionConstraintWriter::writeBaseRotation(const LmMat3& rotation) {
    LmVec3 angles = {};
    matrixToEuler(angles, writtenRotationOrder, rotation);
    startItem(format::baseRotationKey);
    scaleDef::writeVector(output, angles);
    output << ' ' << writtenRotationLetters << '\n';
}

void PositionConstraintWriter::writeTransformOrder(const LmArray<int>& order) {
    startItem(format::transformOrderKey);
    const char* before = "";
    for (const int transform : order) {
        output << before;
        printInt(output, transform);
        before = " ";
    }
    output << '\n';
}

} // namespace

void LqScaleDefData::writePositionConstraint(std::ostream& output, const scaleDef::PositionConst_t& record,
                                             int indentLevel) const {
    const std::string indent(static_cast<std::size_t>(blanksPerLevel * indentLevel), ' ');
    PositionConstraintWriter(output, indent).write(*this, record);
}

// --- Guides --------------------------------------------------------------------------------------

void LqScaleDefData::writeGuideOverrides(std::ostream& output,
                                         const LmDArray<scaleDef::SysVarGuideOverride>& records,
                                         const LqProblemDefData& problemDef, std::string_view indent) {
    scaleDef::writeGuideOverrides(output, records, scaleDef::SysVarNames(problemDef), indent);
}

void scaleDef::writeGuideOverrides(std::ostream& output, const LmDArray<SysVarGuideOverride>& records,
                                   const SysVarNames& names, std::string_view indent) {
    for (const SysVarGuideOverride& record : records) {
        const auto name = names.find(record.sysVarId);
        if (!name) {
            std::cerr << "No description found for sysvar " << record.sysVarId << '\n';
            continue;
        }
        output << indent << format::guideOverrideKey << " {\n";
        output << indent << "  " << format::sysVarKey << ": \"" << *name << "\"\n";
        output << indent << "  " << format::valueKey << ": ";
        printReal(output, record.value);
        output << '\n' << indent << "  " << format::weightKey << ": ";
        printReal(output, record.weight);
        output << '\n' << indent << "}\n";
    }
}

// --- Limits and global constraints ---------------------------------------------------------------

void scaleDef::writeLimitAdjustments(std::ostream& output, const LmDArray<LimitOverride_t>& records,
                                     const SysVarNames& names, std::string_view indent) {
    output << indent << format::limitAdjustmentsKey << " {\n";
    for (const LimitOverride_t& record : records) {
        output << indent << "  \"" << names.nameOf(record.sysVarId) << "\" ";
        LqScaleDefData::writeScaleFloat(output, record.lower, noLowerLimit);
        output << ' ';
        LqScaleDefData::writeScaleFloat(output, record.upper, noUpperLimit);
        output << '\n';
    }
    output << indent << "}\n";
}

void scaleDef::writeGlobalConstraints(std::ostream& output, const LmDArray<GlobalConst_t>& records,
                                      std::string_view indent) {
    output << indent << format::globalConstraintsKey << " {\n";
    std::size_t nameWidth = 0;
    for (const GlobalConst_t& record : records) {
        nameWidth = std::max(nameWidth, record.bodyName.view().size());
    }
    if (records.count() != 0) {
        output << indent << "  # ";
        writeField(output, "body", nameWidth);
        output << "    local            global\n";
    }
    for (const GlobalConst_t& record : records) {
        output << indent << "  ";
        writeField(output, record.bodyName.view(), nameWidth);
        output << ' ';
        writeVector(output, record.local);
        output << "  ";
        writeVector(output, record.global);
        output << '\n';
    }
    output << indent << "}\n";
}

} // namespace quillon
