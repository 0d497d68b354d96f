#include "quillon/limits/LimitsReader.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmListView.h"
#include "quillon/core/TagReader.h"
#include "quillon/core/TokenReader.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/FilesBeingRead.h"
#include "quillon/files/IncludeSection.h"
#include "quillon/files/LmIFStream.h"
#include "quillon/limits/LimitsFormat.h"
#include "quillon/limits/LimitsIncludes.h"

#include <memory>
#include <optional>

namespace quillon {

namespace {

namespace format = limitsFormat;

/// What a LOWER, UPPER or GUIDE block gives.
struct ValueAndWeight {
    std::optional<float> value;
    std::optional<float> weight;
};

void reportUnexpectedKey(const LmStr& key, LmStatus& status) {
    status.pushError("Unexpected key word \"" + key + "\".");
}

/// Reads the text of one VARIABLE block. Each step returns false when an error stands.
class VariableBlockReader {
public:
    explicit VariableBlockReader(LmStatus& reportTo) : status(reportTo) {}

    bool read(std::string_view blockText, LqVarLimits& record);

private:
    bool readItem(TaggedItems& item);
    bool readId(LmStr& text);
    bool readSubBlock(std::string_view blockText, const char* label, ValueAndWeight& result);
    bool readNumber(LmStr& text, const char* what, const char* label, std::optional<float>& number);
    bool fill(LqVarLimits& record) const;

    LmStatus& status;
    std::optional<std::int32_t> id;
    ValueAndWeight lower;
    ValueAndWeight upper;
    ValueAndWeight guide;
};

bool VariableBlockReader::read(std::string_view blockText, LqVarLimits& record) {
    TaggedItems items(blockText, status);
    while (items.next()) {
        if (!readItem(items)) {
            return false;
        }
    }
    return !status.errorStands() && fill(record);
}

bool VariableBlockReader::readItem(TaggedItems& item) {
    if (item.tagIs(format::idKey)) {
        return readId(item.value());
    }
    if (item.tagIs(format::lowerKey)) {
        return readSubBlock(item.valueText(), "lower limit", lower);
    }
    if (item.tagIs(format::upperKey)) {
        return readSubBlock(item.valueText(), "upper limit", upper);
    }
    if (item.tagIsExactly(format::guideKey)) {
        guide = {};
        return readSubBlock(item.valueText(), "guide", guide);
    }
    // Deliberately silent, unlike the levels above and below: files rely on a misspelt key being skipped.
    return true;
}

bool VariableBlockReader::readId(LmStr& text) {
    if (id) {
        status.pushErrorf("Id specified more than once for system variable id %d.", *id);
        return false;
    }
    std::int32_t number = 0;
    if (!readInt(text, number, status)) {
        status.pushError("Unable to read value for id.");
        return false;
    }
    text.trim();
    if (text.length() != 0) {
        status.pushError("Unexpected data after the value of id.");
        return false;
    }
    id = number;
    return true;
}

bool VariableBlockReader::readSubBlock(std::string_view blockText, const char* label,
                                       ValueAndWeight& result) {
    ValueAndWeight given;
    TaggedItems items(blockText, status);
    while (items.next()) {
        if (items.tagIs(format::valueKey)) {
            if (!readNumber(items.value(), "value", label, given.value)) {
                return false;
            }
        } else if (items.tagIs(format::weightKey)) {
            if (!readNumber(items.value(), "weight", label, given.weight)) {
                return false;
            }
        } else {
            reportUnexpectedKey(items.tag(), status);
            return false;
        }
    }
    if (status.errorStands()) {
        return false;
    }
    result = given;
    return true;
}

bool VariableBlockReader::readNumber(LmStr& text, const char* what, const char* label,
                                     std::optional<float>& number) {
    float read = 0;
    if (readFloat(text, read, status)) {
        number = read;
        return true;
    }
    LmStr message;
    message.format("Unable to read %s for the %s", what, label);
    if (id) {
        message.appendFormat(" of system variable %d.", *id);
    } else {
        message += ".";
    }
    status.pushError(message);
    return false;
}

bool VariableBlockReader::fill(LqVarLimits& record) const {
    if (!id) {
        status.pushError("Id not specified for limits.");
        return false;
    }
    record.id = *id;
    if (upper.value) {
        record.upperValue = *upper.value;
        record.switchUpperLimit(true);
        if (upper.weight) {
            record.upperWeight.set(*upper.weight);
        }
    }
    if (lower.value) {
        record.lowerValue = *lower.value;
        record.switchLowerLimit(true);
        if (lower.weight) {
            record.lowerWeight.set(*lower.weight);
        }
    }
    record.guideValue = guide.value.value_or(0.0F);
    record.guideWeight = guide.weight.value_or(0.0F);
    if (record.mode == LimitBoth && record.lowerValue > record.upperValue) {
        status.pushErrorf("Lower limit is greater than upper limit for system variable %d", record.id);
        return false;
    }
    return true;
}

/// Reads the items behind the header into a target that starts empty. Each step returns false when an error
/// stands.
class TaggedLimitsReader {
public:
    TaggedLimitsReader(LqLimitsData& emptyTarget, LmStatus& reportTo)
        : target(emptyTarget), status(reportTo) {}

    bool read(std::istream& input);

private:
    bool readItem(TaggedItems& item);
    bool readVariable(const LmStr& key, std::string_view blockText);
    bool readInclude(std::string_view blockText);
    void squareGuideWeights();

    LqLimitsData& target;
    LmStatus& status;
    bool linearScale = false;
    bool includeSeen = false;
};

bool TaggedLimitsReader::read(std::istream& input) {
    TaggedItems items(input, status);
    while (items.next()) {
        if (status.errorStands() || !readItem(items)) {
            return false;
        }
    }
    if (status.errorStands()) {
        return false;
    }
    if (!linearScale) {
        squareGuideWeights();
    }
    return true;
}

bool TaggedLimitsReader::readItem(TaggedItems& item) {
    if (item.tagIs(format::variableKey)) {
        return readVariable(item.tag(), item.valueText());
    }
    if (item.tagIs(includeKeyword)) {
        return readInclude(item.valueText());
    }
    if (item.tagIsExactly(format::guideWeightScaleKey)) {
        // Deliberate: every other text counts as linear, so that "Linear" does what it seems to say.
        linearScale = item.value() != format::quadraticScale;
        return true;
    }
    reportUnexpectedKey(item.tag(), status);
    return false;
}

bool TaggedLimitsReader::readVariable(const LmStr& key, std::string_view blockText) {
    if (includeSeen) {
        status.pushErrorf("%s cannot be after a INCLUDE section.", key.c_str());
        return false;
    }
    auto record = std::make_unique<LqVarLimits>();
    if (!VariableBlockReader(status).read(blockText, *record)) {
        status.pushError("Unable to read limits for variable.");
        return false;
    }
    target.vars.append(record.release());
    return true;
}

bool TaggedLimitsReader::readInclude(std::string_view blockText) {
    auto include = std::make_unique<LqLimitsInclude>();
    const IncludeKey keys[] = {{format::idOffsetKey, include->idOffset}};
    if (!readIncludeBlock(blockText, include->fileName, keys, status)) {
        status.pushError("Unable to read INCLUDE section.");
        return false;
    }
    target.includes.append(include.release());
    includeSeen = true;
    return true;
}

/// Without a linear scale a file states the square roots of the guide weights.
void TaggedLimitsReader::squareGuideWeights() {
    for (LqVarLimits* record : LmListView<LqVarLimits>(target.vars)) {
        record->guideWeight *= record->guideWeight;
    }
}

} // namespace

bool readLimitsFile(LqLimitsData& target, const LmStr& name, bool withIncludes) {
    if (!checkFileReadable(name)) {
        return false;
    }
    const FileBeingRead mark(name);
    LmIFStream input(name);
    if (!input.is_open()) {
        pushErrorf("Unable to open limit data file \"%s\".", name.c_str());
        return false;
    }
    if (!readLimitsStream(target, input, withIncludes)) {
        pushErrorf("Unable to read limit data file \"%s\".", name.c_str());
        return false;
    }
    return true;
}

bool readLimitsStream(LqLimitsData& target, std::istream& input, bool withIncludes, LmStatus& status) {
    const bool isTagged = input.peek() == std::char_traits<char>::to_int_type(*limitsFileId.c_str());
    const bool whole = isTagged ? readTaggedLimits(target, input, status) : readOlderLimits(target, input);
    return whole && (!withIncludes || mergeIncludes(target)) && !status.errorStands();
}

bool readTaggedLimits(LqLimitsData& target, std::istream& input, LmStatus& status) {
    if (!readFormatHeader(input, DataFileFormat::Limits)) {
        status.pushError("Unable to validate datafile header.");
        status.pushError("Not a valid " + limitsFileId + ".");
        return false;
    }
    LqLimitsData read;
    if (!TaggedLimitsReader(read, status).read(input)) {
        return false;
    }
    target.replaceAll(read.vars, read.includes);
    return true;
}

bool checkLimitsFile(const LmStr& name, float* version) {
    if (!checkFileReadable(name)) {
        return false;
    }
    LmIFStream input(name);
    if (!input.is_open()) {
        pushErrorf("Unable to open limit data file '%s'.", name.c_str());
        return false;
    }
    return readFormatHeader(input, DataFileFormat::Limits, currentStatus(), version);
}

} // namespace quillon
