#include "quillon/limits/LimitsWriter.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/IncludeSection.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/limits/LimitsFormat.h"

#include <ostream>

namespace quillon {

namespace {

namespace format = limitsFormat;

constexpr int limitWeightDecimals = 4;

bool isWorthWriting(const LqVarLimits& record) {
    return record.mode != LimitNone || record.guideValue != 0.0F || record.guideWeight != 0.0F;
}

/// "linear" says that the weights stand as they are used and are not to be squared by the reader.
void writeGuideWeightScale(std::ostream& output, const LmDoubleLinkedList& vars) {
    const LmListView<const LqVarLimits> records(vars);
    for (const LqVarLimits* record : records) {
        if (record->guideWeight != 0.0F) {
            output << format::guideWeightScaleKey << ": " << format::linearScale << "\n";
            return;
        }
    }
}

void writeReal(std::ostream& output, const char* key, float number) {
    output << "    " << key << ": ";
    printReal(output, number);
    output << "\n";
}

void writeLimit(std::ostream& output, const char* key, float value, const LqLimitWeight& weight) {
    output << "  " << key << " {\n";
    writeReal(output, format::valueKey, value);
    if (!weight.notSet) {
        const std::streamsize decimals = output.precision(limitWeightDecimals);
        writeReal(output, format::weightKey, weight.value);
        output.precision(decimals);
    }
    output << "  }\n";
}

void writeGuide(std::ostream& output, const LqVarLimits& record) {
    if (record.guideValue == 0.0F && record.guideWeight == 0.0F) {
        return;
    }
    output << "  " << format::guideKey << " {\n";
    writeReal(output, format::valueKey, record.guideValue);
    if (record.guideWeight != 0.0F) {
        writeReal(output, format::weightKey, record.guideWeight);
    }
    output << "  }\n";
}

void writeVariable(std::ostream& output, const LqVarLimits& record) {
    output << format::variableKey << " {\n"
           << "  " << format::idKey << ": ";
    printInt(output, record.id);
    output << "\n";
    if (record.hasLowerLimit()) {
        writeLimit(output, format::lowerKey, record.lowerValue, record.lowerWeight);
    }
    if (record.hasUpperLimit()) {
        writeLimit(output, format::upperKey, record.upperValue, record.upperWeight);
    }
    writeGuide(output, record);
    output << "}\n";
}

void writeInclude(std::ostream& output, const LqLimitsInclude& include) {
    beginIncludeBlock(output, include.fileName);
    if (include.idOffset != -1) {
        writeIncludeNumber(output, format::idOffsetKey, include.idOffset);
    }
    endIncludeBlock(output);
}

void openAndWrite(LmOFStream& output, const LqLimitsData& limits, const LmStr& name) {
    if (!checkFileWritable(name)) {
        return;
    }
    output.open(name);
    if (!output.is_open()) {
        pushErrorf("Couldn't create file \"%s\".", name.c_str());
        return;
    }
    writeTaggedLimits(limits, output);
}

} // namespace

void writeLimitsFile(const LqLimitsData& limits, const LmStr& name) {
    LmOFStream output;
    openAndWrite(output, limits, name);
}

void writeLimitsFileChecked(const LqLimitsData& limits, const LmStr& name) {
    LmOFStream output;
    openAndWrite(output, limits, name);
    if (!output.is_open()) {
        return;
    }
    // A full disk shows only once the buffer is on it.
    output.flush();
    if (output.fail()) {
        pushErrorf("Couldn't write file \"%s\".", name.c_str());
    }
}

void writeTaggedLimits(const LqLimitsData& limits, std::ostream& output) {
    if (!writeCheckedDataHeader(output, limitsFileId, limitsFileVersion)) {
        pushError("Unable to write header info.");
        return;
    }
    output.setf(std::ios::dec, std::ios::basefield);
    // Deliberate: the header leaves fixed-point with two decimals, and all values below are written so. A
    // limit of 0.123 becomes 0.12; files are compared by these two decimals.
    writeGuideWeightScale(output, limits.vars);
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        if (isWorthWriting(*record)) {
            writeVariable(output, *record);
        }
    }
    for (const LqLimitsInclude* include : LmListView<const LqLimitsInclude>(limits.includes)) {
        writeInclude(output, *include);
    }
}

} // namespace quillon
