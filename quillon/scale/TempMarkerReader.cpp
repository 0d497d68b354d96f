#include "quillon/scale/TempMarkerReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScaleTokens.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_set>

namespace quillon::scaleDef {

namespace {

/// Reads the rows of a TEMPS block. Each step returns false when an error stands.
class TempMarkerReader {
public:
    TempMarkerReader(std::istream& blockInput, ScaleDefContext& readingContext)
        : input(blockInput), context(readingContext), temps(readingContext.definition.temps) {}

    bool read();

private:
    bool readRow();
    bool readPosition(TempData_t& temp);
    bool readBodies(TempData_t& temp);
    bool resolveBodies(const TempData_t& temp) const;

    std::istream& input;
    ScaleDefContext& context;
    ArrayAppender<TempData_t> temps;
    std::unordered_set<std::int32_t> ids;
};

bool TempMarkerReader::read() {
    while (skipWhite(input)) {
        if (!readRow()) {
            return false;
        }
        skipLine(input);
    }
    return !errorStands();
}

bool TempMarkerReader::readRow() {
    const std::int32_t id = readIntValue(input, "temp id");
    if (!ids.insert(id).second) {
        pushErrorf("Multiple temp markers with id %d", id);
        return false;
    }
    TempData_t& temp = temps.append();
    temp.id = id;
    if (errorStands() || !readPosition(temp) || !readBodies(temp) || !resolveBodies(temp)) {
        return false;
    }
    temp.weight = readFloatValue(input, "temp weight");
    return !errorStands();
}

bool TempMarkerReader::readPosition(TempData_t& temp) {
    constexpr std::array<const char*, 3> names = {"temp position x", "temp position y", "temp position z"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        temp.position[i] = LqScaleDefData::readScaleFloat(input, names[i], 0);
        if (errorStands()) {
            return false;
        }
    }
    return true;
}

/// Reads the attached body, or the relative body, a slash and the attached body.
bool TempMarkerReader::readBodies(TempData_t& temp) {
    const LmStr bodies = readNameValue(input, "temp body");
    if (errorStands()) {
        return false;
    }
    temp.relativeBody = bodies;
    temp.attachedBody = bodies;
    int separator = 0;
    if (bodies.find(scaleDefFormat::bodySeparator, &separator)) {
        temp.relativeBody = bodies.left(separator);
        temp.attachedBody = bodies.skip(separator + 1);
    }
    return true;
}

bool TempMarkerReader::resolveBodies(const TempData_t& temp) const {
    const auto resolve = [&](const LmStr& body, const char* relation) {
        if (context.hasBody(body)) {
            return true;
        }
        LmStr message;
        message.format("Temp %d is %s body %s, which is not in the problem definition.", temp.id, relation,
                       body.c_str());
        return context.reportUnresolved(message);
    };
    return resolve(temp.attachedBody, "attached to") && resolve(temp.relativeBody, "relative to");
}

} // namespace

bool readTemps(std::string_view blockText, ScaleDefContext& context) {
    context.definition.temps = LmDArray<TempData_t>();
    LmISStream input(blockText.data(), blockText.size());
    return TempMarkerReader(input, context).read();
}

} // namespace quillon::scaleDef
