#include "quillon/core/LmListView.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/limits/LimitsFormat.h"
#include "quillon/limits/LimitsWriter.h"

#include <ostream>

namespace quillon {

namespace {

constexpr int idWidth = 3;
constexpr int limitWidth = 9;
constexpr int limitDecimals = 4;

std::int32_t numberOf(LqLimitMode mode) {
    for (const limitsFormat::OlderMode& candidate : limitsFormat::olderModes) {
        if (candidate.mode == mode) {
            return candidate.number;
        }
    }
    return 0;
}

void writeLimit(std::ostream& output, float limit) {
    output << "   ";
    output.width(limitWidth);
    printReal(output, limit);
    output << std::endl;
}

void writeRow(std::ostream& output, const LqVarLimits& record) {
    output << "             ";
    printInt(output, numberOf(record.mode));
    output << "          ";
    output.width(idWidth);
    printInt(output, record.id);
    output << std::endl;
    if (record.hasLowerLimit()) {
        writeLimit(output, record.lowerValue);
    }
    if (record.hasUpperLimit()) {
        writeLimit(output, record.upperValue);
    }
}

} // namespace

void writeOlderLimits(const LqLimitsData& limits, std::ostream& output) {
    const FormatGuard restored(output);
    output.flags(std::ios::dec | std::ios::fixed | std::ios::right);
    output.precision(limitDecimals);
    output.width(0);
    output.fill(' ');
    output << limitsFormat::olderFirstLine << std::endl;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        writeRow(output, *record);
    }
}

} // namespace quillon
