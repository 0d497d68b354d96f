#include "quillon/scale/OverrideReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/TagReader.h"
#include "quillon/scale/ArrayAppender.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScaleTokens.h"

#include <optional>
#include <unordered_set>

namespace quillon::scaleDef {

namespace {

namespace format = scaleDefFormat;

// --- Limits --------------------------------------------------------------------------------------

/// Reads the rows of a LIMIT_ADJUSTMENTS block one after the other.
class LimitRowReader {
public:
    LimitRowReader(std::istream& blockInput, const ScaleDefContext& readingContext,
                   LmDArray<LimitOverride_t>& emptyTarget)
        : input(blockInput), context(readingContext), records(emptyTarget) {}

    /// Returns whether reading may go on.
    bool readRow();

private:
    bool readVariable(std::int32_t& id, bool& dropped) const;
    bool acceptRepeated(std::int32_t id) const;

    std::istream& input;
    const ScaleDefContext& context;
    ArrayAppender<LimitOverride_t> records;
    std::unordered_set<std::int32_t> ids; // of the records
};

bool LimitRowReader::readRow() {
    LimitOverride_t row;
    bool dropped = false;
    if (!readVariable(row.sysVarId, dropped) || !acceptRepeated(row.sysVarId)) {
        return false;
    }
    row.lower = LqScaleDefData::readScaleFloat(input, "lower limit", noLowerLimit);
    if (errorStands()) {
        return false;
    }
    row.upper = LqScaleDefData::readScaleFloat(input, "upper limit", noUpperLimit);
    if (errorStands()) {
        return false;
    }
    skipLine(input);
    if (!dropped) {
        records.append() = row;
        ids.insert(row.sysVarId);
    }
    return true;
}

bool LimitRowReader::readVariable(std::int32_t& id, bool& dropped) const {
    id = context.readSysVarId(input, "variable");
    if (!errorStands()) {
        return true;
    }
    if (!context.lenient) {
        return false;
    }
    // The rest of the row is read all the same, so that what is wrong with it is reported too.
    currentStatus().turnIntoWarning();
    dropped = true;
    return true;
}

bool LimitRowReader::acceptRepeated(std::int32_t id) const {
    if (!ids.contains(id)) {
        return true;
    }
    LmStr message;
    message.format("There are multiple limit adjustments for variable %d (%s).", id,
                   context.sysVarName(id).c_str());
    return context.reportUnresolved(message);
}

// --- Guides --------------------------------------------------------------------------------------

/// Reads the items of a SYS_VAR_GUIDE_OVERRIDE block.
class GuideReader {
public:
    GuideReader(const ScaleDefContext& readingContext, GuideOverrideFiller& reportTo)
        : context(readingContext), target(reportTo) {}

    /// Reads all items and adds the record, unless an error stops it or there is one for the variable.
    void read(std::string_view blockText);

private:
    bool readItem(TaggedItems& item);
    bool readSysVar(std::string_view text);
    static bool readNumber(TaggedItems& item, std::optional<float>& number);
    void addRecord();

    const ScaleDefContext& context;
    GuideOverrideFiller& target;
    std::int32_t sysVarId = 0; // stays 0 when the block names no variable; the record is added all the same
    std::optional<float> value;
    std::optional<float> weight;
};

void GuideReader::read(std::string_view blockText) {
    TaggedItems items(blockText);
    for (;;) {
        const bool taken = items.next();
        // Deliberate: a block that cannot be taken is passed over like any other that does not belong here,
        // and its error stops the next value. Only what leaves no tag ends the block.
        if (!taken && items.tagIsExactly("")) {
            break;
        }
        if (taken && items.isSimple() && !readItem(items)) {
            return;
        }
    }
    addRecord();
}

bool GuideReader::readItem(TaggedItems& item) {
    if (item.tagIs(format::sysVarKey)) {
        return readSysVar(item.valueText());
    }
    if (item.tagIs(format::valueKey)) {
        return readNumber(item, value);
    }
    if (item.tagIs(format::weightKey)) {
        return readNumber(item, weight);
    }
    return true;
}

bool GuideReader::readSysVar(std::string_view text) {
    LmISStream input(text.data(), text.size());
    sysVarId = context.readSysVarId(input, format::sysVarKey);
    return !errorStands() && !target.has(sysVarId);
}

bool GuideReader::readNumber(TaggedItems& item, std::optional<float>& number) {
    const std::string_view text = item.valueText();
    LmISStream input(text.data(), text.size());
    number = readFloatValue(input, item.tag().c_str());
    return !errorStands();
}

void GuideReader::addRecord() {
    if (!value) {
        pushErrorf("No value specified");
    } else if (!weight) {
        pushErrorf("No weight specified.");
    } else {
        target.add({sysVarId, *value, *weight});
    }
}

} // namespace

bool readLimitOverrides(std::string_view blockText, const ScaleDefContext& context,
                        LmDArray<LimitOverride_t>& target) {
    target.setLength(0);
    LmISStream input(blockText.data(), blockText.size());
    LimitRowReader reader(input, context, target);
    while (skipWhite(input)) {
        if (!reader.readRow()) {
            return false;
        }
    }
    return !errorStands();
}

bool readGuideOverride(std::string_view blockText, const ScaleDefContext& context,
                       GuideOverrideFiller& target) {
    GuideReader(context, target).read(blockText);
    return !errorStands();
}

} // namespace quillon::scaleDef
