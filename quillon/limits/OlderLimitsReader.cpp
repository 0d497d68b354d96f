#include "quillon/core/CancelPoll.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/limits/LimitsFormat.h"
#include "quillon/limits/LimitsReader.h"

#include <istream>
#include <memory>

namespace quillon {

namespace {

constexpr int fieldNumberLineLimit = 256;

/// The first line starts with a number that nothing uses.
void skipFieldNumberLine(std::istream& input) {
    std::int32_t fieldNumber = 0;
    extractInt(input, fieldNumber);
    skipRestOfLine(input, fieldNumberLineLimit);
}

bool setMode(LqVarLimits& record, std::int32_t number) {
    for (const limitsFormat::OlderMode& candidate : limitsFormat::olderModes) {
        if (candidate.number == number) {
            record.mode = candidate.mode;
            return true;
        }
    }
    pushErrorf("Invalid limit mode of %d.", number);
    return false;
}

void readBounds(std::istream& input, LqVarLimits& record) {
    if (record.hasLowerLimit() && !extractFloat(input, record.lowerValue)) {
        pushError("Unable to read lower bound for limit.");
        return;
    }
    if (record.hasUpperLimit() && !extractFloat(input, record.upperValue)) {
        pushError("Unable to read upper bound for limit.");
        return;
    }
    if (record.mode == LimitBoth && record.lowerValue > record.upperValue) {
        pushErrorf("The lower limit for var id %d is greater than the upper limit.", record.id);
    }
}

/// Reads one row, whose line breaks do not matter, up to the first failure, which is reported. The end of the
/// input in front of a row is none.
void readRow(std::istream& input, LqVarLimits& record) {
    std::int32_t modeNumber = 0;
    extractInt(input, modeNumber);
    if (input.eof()) {
        return;
    }
    if (input.fail()) {
        pushError("Unable to read mode for limit.");
        return;
    }
    if (!setMode(record, modeNumber)) {
        return;
    }
    if (!extractInt(input, record.id)) {
        pushError("Unable to read var id for limit.");
        return;
    }
    readBounds(input, record);
}

void reportUnreadable(const LqLimitsData& target) {
    const LmDLListNode* const last = target.vars.lastLive();
    if (last == nullptr) {
        pushError("Unable to read first var limit.");
        return;
    }
    pushErrorf("Unable to read var limits.  Last read was var id %d.",
               static_cast<const LqVarLimits*>(last->data)->id);
}

} // namespace

bool readOlderLimits(LqLimitsData& target, std::istream& input) {
    target.clear();
    skipFieldNumberLine(input);
    CancelPoll cancel(limitsBeforeCancelPoll);
    while (true) {
        auto record = std::make_unique<LqVarLimits>();
        readRow(input, *record);
        // Deliberate: a row whose last number touches the end of the file is dropped, since the end is tested
        // before the row is looked at. Files end every row with a newline.
        if (input.eof()) {
            return !errorStands();
        }
        if (currentStatus().hasEntries()) {
            reportUnreadable(target);
            return false;
        }
        target.vars.append(record.release());
        if (cancel.canceledAfterRecord()) {
            return false;
        }
    }
}

} // namespace quillon
