#include "quillon/scale/ScalingVariableReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleTokens.h"

namespace quillon::scaleDef {

namespace {

/// Reads the rows of a SCALING_VARIABLES block one after the other. Each step returns false when an error
/// stands.
class ScalingVariableReader {
public:
    ScalingVariableReader(std::istream& blockInput, ScaleDefContext& readingContext)
        : input(blockInput), context(readingContext) {}

    bool readRow();

private:
    bool readName(ScaleVar& scaleVar);
    bool readLimits(ScaleVar& scaleVar);
    bool readDescription(ScaleVar& scaleVar);

    std::istream& input;
    ScaleDefContext& context;
    LmStr previousName; // null in front of the first row
};

bool ScalingVariableReader::readRow() {
    ScaleVar& scaleVar = context.appendScaleVar();
    if (!readName(scaleVar) || !readLimits(scaleVar) || !readDescription(scaleVar)) {
        return false;
    }
    skipLine(input);
    previousName = scaleVar.name;
    return true;
}

bool ScalingVariableReader::readName(ScaleVar& scaleVar) {
    const LmStr what = previousName.isNull()
                           ? LmStr("first scaling variable name")
                           : "name for the scaling variable that comes after " + previousName;
    const LmStr name = readNameValue(input, what.c_str());
    if (errorStands()) {
        return false;
    }
    if (context.scaleVarId(name) != 0) {
        pushErrorf("Duplicate scaling variable name: '%s'\n", name.c_str());
        return false;
    }
    context.nameScaleVar(scaleVar, name);
    return true;
}

bool ScalingVariableReader::readLimits(ScaleVar& scaleVar) {
    scaleVar.lower = LqScaleDefData::readScaleFloat(input, "scaling variable lower limit", noLowerLimit);
    if (errorStands()) {
        return false;
    }
    scaleVar.upper = LqScaleDefData::readScaleFloat(input, "scaling variable upper limit", noUpperLimit);
    return !errorStands();
}

bool ScalingVariableReader::readDescription(ScaleVar& scaleVar) {
    // A comment behind the limits is no description.
    if (!skipBlanks(input) || peekChar(input) == '\n') {
        return true;
    }
    const LmStr what = "description for scaling variable " + scaleVar.name;
    scaleVar.description = readNameValue(input, what.c_str());
    return !errorStands();
}

} // namespace

bool readScalingVariables(std::string_view blockText, ScaleDefContext& context) {
    LmISStream input(blockText.data(), blockText.size());
    ScalingVariableReader reader(input, context);
    while (skipWhite(input)) {
        if (!reader.readRow()) {
            return false;
        }
    }
    return true;
}

} // namespace quillon::scaleDef
