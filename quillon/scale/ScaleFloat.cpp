#include "quillon/scale/ScaleFloat.h"

#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleTokens.h"

#include <istream>
#include <ostream>

namespace quillon {

namespace scaleDef {

namespace {

float measuredConstant(const LqMeasuredData& measured, std::int32_t measuredId) {
    return measured[measuredId - 1];
}

} // namespace

float ScaleFloat::evaluate(const LqMeasuredData& measured) const {
    if (measuredId == 0) {
        return value;
    }
    const float constant = measuredConstant(measured, measuredId);
    // The 1 is deliberate: scaling variables count from the unscaled size, which is 0. `setEvaluated`
    // matches.
    return value == 0.0F ? constant + offset : constant / value - 1.0F;
}

void ScaleFloat::setEvaluated(const LqMeasuredData& measured, float x) {
    if (measuredId == 0) {
        value = x;
        return;
    }
    const float constant = measuredConstant(measured, measuredId);
    if (value == 0.0F) {
        offset = x - constant;
    } else {
        value = constant / (x + 1.0F);
    }
}

float ScaleFloat::baseValue() const {
    if (measuredId == 0) {
        return value;
    }
    return value == 0.0F ? offset : 0.0F;
}

void ScaleFloat::print(std::ostream& output) const {
    if (measuredId == 0) {
        printReal(output, value);
        return;
    }
    output << "[m";
    printInt(output, measuredId);
    output << ' ';
    printReal(output, offset);
    output << ']';
}

} // namespace scaleDef

namespace {

/// Reads the number of the measured constant behind "[". 0 after an error.
std::int32_t readMeasuredId(std::istream& input) {
    scaleDef::skipWhite(input);
    if (peekChar(input) != 'm') {
        pushErrorf("Invalid measured constant name.");
        return 0;
    }
    skipChars(input, 1);
    const std::int32_t id = scaleDef::readIntValue(input, "measured constant number");
    if (errorStands()) {
        return 0;
    }
    if (id < 1) {
        pushErrorf("Invalid measured constant %d.", id);
        return 0;
    }
    return id;
}

/// Reads "+" and an offset, or a factor.
void readFactorOrOffset(std::istream& input, scaleDef::ScaleFloat& reference) {
    scaleDef::skipWhite(input);
    if (peekChar(input) == '+') {
        skipChars(input, 1);
        reference.offset = scaleDef::readFloatValue(input, "measured constant offset");
    } else {
        reference.value = scaleDef::readFloatValue(input, "measured constant scale factor");
    }
}

/// Reads a reference from its "[", which is next, through its "]". All zero after an error.
scaleDef::ScaleFloat readReference(std::istream& input) {
    skipChars(input, 1);
    scaleDef::ScaleFloat reference;
    reference.measuredId = readMeasuredId(input);
    if (reference.measuredId == 0) {
        return {};
    }
    readFactorOrOffset(input, reference);
    if (errorStands()) {
        return {};
    }
    scaleDef::skipWhite(input);
    if (peekChar(input) != ']') {
        pushErrorf("No ']' after measured constant specification.");
        return {};
    }
    skipChars(input, 1);
    return reference;
}

} // namespace

LqScaleDefData::ScaleFloat LqScaleDefData::readScaleFloat(std::istream& input, const char* what,
                                                          float infinity) {
    ScaleFloat literal;
    scaleDef::skipWhite(input);
    switch (peekChar(input)) {
    case '[':
        return readReference(input);
    case '*':
        if (infinity == 0.0F) {
            pushErrorf("Cannot specify an infinite value for %s.", what);
            return {};
        }
        skipChars(input, 1);
        literal.value = infinity;
        return literal;
    default:
        literal.value = scaleDef::readFloatValue(input, what);
        return input.fail() ? ScaleFloat() : literal;
    }
}

void LqScaleDefData::writeScaleFloat(std::ostream& output, const ScaleFloat& value, float infinity) {
    if (value.measuredId == 0) {
        if (infinity != 0.0F && value.value == infinity) {
            output << '*';
        } else {
            printReal(output, value.value);
        }
        return;
    }
    output << "[m";
    printInt(output, value.measuredId);
    const bool hasOffset = value.offset != 0.0F;
    output << (hasOffset ? " + " : " ");
    printReal(output, hasOffset ? value.offset : value.value);
    output << ']';
}

bool LqScaleDefData::validateMeasuredRef(const ScaleFloat& value, const LqMeasuredData* measured) {
    if (value.measuredId == 0) {
        return true;
    }
    if (measured == nullptr) {
        pushErrorf("No measured data has been specified, but the scaling definition references measured "
                   "constants.");
        return false;
    }
    if (value.measuredId > measured->count()) {
        pushErrorf("Invalid measured id %d.  There are only %d measured constants in the measured data.",
                   value.measuredId, measured->count());
        return false;
    }
    return true;
}

} // namespace quillon
