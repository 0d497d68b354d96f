#include "quillon/scale/MarkerWeightReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/ArrayAppender.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScaleTokens.h"

namespace quillon::scaleDef {

namespace {

namespace format = scaleDefFormat;

/// Whether a required item is there; reports one that is not, or that is empty.
bool isGiven(std::string_view text, const char* key) {
    if (text.empty()) {
        pushErrorf("No '%s' specified.", key);
        return false;
    }
    return true;
}

bool readRealRow(std::istream& input, std::int32_t realCount, RealWeightOverride_t& row) {
    row.markerId = readIntValue(input, "real weight override marker id");
    if (errorStands()) {
        return false;
    }
    row.weight = readFloatValue(input, "real override weight");
    if (errorStands()) {
        return false;
    }
    if (row.markerId < 1 || row.markerId > realCount) {
        pushErrorf("Invalid real marker id (%d) specified for weight override.", row.markerId);
        return false;
    }
    return true;
}

/// Artificial markers have no upper bound: their ids lie anywhere above those of the reals.
bool readArtificialId(std::istream& input, const char* what, std::int32_t realCount, std::int32_t& id) {
    id = readIntValue(input, what);
    if (errorStands()) {
        return false;
    }
    if (id <= realCount) {
        pushErrorf("Invalid artificial marker id (%d) specified for weight override.", id);
        return false;
    }
    return true;
}

bool readArtificialRow(std::istream& input, std::int32_t realCount, ArtificialWeightOverride_t& row) {
    if (!readArtificialId(input, "artificial weight override first marker id", realCount,
                          row.firstMarkerId) ||
        !readArtificialId(input, "artificial weight override second marker id", realCount,
                          row.secondMarkerId)) {
        return false;
    }
    row.weight = readFloatValue(input, "artificial override weight");
    return !errorStands();
}

/// Reads rows into the emptied array until the text ends or a row fails.
template <class Row>
bool readRows(std::string_view text, std::int32_t realCount, LmDArray<Row>& rows,
              bool (*readRow)(std::istream&, std::int32_t, Row&)) {
    rows.setLength(0);
    ArrayAppender<Row> appender(rows);
    LmISStream input(text.data(), text.size());
    while (skipWhite(input)) {
        Row row;
        if (!readRow(input, realCount, row)) {
            return false;
        }
        appender.append() = row;
    }
    return true;
}

} // namespace

bool readRealCount(std::string_view text, ScaleDefContext& context) {
    if (!isGiven(text, format::realCountKey)) {
        return false;
    }
    LmISStream input(text.data(), text.size());
    std::int32_t count = readIntValue(input, "real count");
    if (errorStands()) {
        return false;
    }
    if (count < 0) {
        pushWarningf("'REAL_COUNT' was less than zero.  Value is now set to zero.");
        count = 0;
    }
    const int available = context.problemDef.realMarkers.count();
    if (count > available) {
        // No item has the name in this message any more; users know the message by it.
        LmStr message;
        message.format(
            "The SCALE_REAL_COUNT (%d) is greater than the number of reals in the problem definition "
            "(%d).\n",
            count, available);
        if (!context.reportUnresolved(message)) {
            return false;
        }
    }
    context.definition.realCount = count;
    return true;
}

bool readDefaultRealWeight(std::string_view text, ScaleDefContext& context) {
    if (!isGiven(text, format::defaultRealWeightKey)) {
        return false;
    }
    LmISStream input(text.data(), text.size());
    context.definition.defaultRealWeight = readFloatValue(input, "real weight");
    return !errorStands();
}

bool readRealWeightOverrides(std::string_view text, ScaleDefContext& context) {
    LqScaleDefData& definition = context.definition;
    return readRows(text, definition.realCount, definition.realWeightOverrides, readRealRow);
}

bool readArtificialWeightOverrides(std::string_view text, ScaleDefContext& context) {
    LqScaleDefData& definition = context.definition;
    return readRows(text, definition.realCount, definition.artificialWeightOverrides, readArtificialRow);
}

} // namespace quillon::scaleDef
