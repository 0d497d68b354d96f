#include "quillon/scale/BodyScalingReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleTokens.h"
#include "quillon/scale/ScalingAxes.h"

#include <array>
#include <cstddef>
#include <string>

namespace quillon::scaleDef {

namespace {

/// Reads the bodies of a BODY_SCALINGS block one after the other. Each step returns false when an error
/// stands.
class BodyScalingReader {
public:
    BodyScalingReader(std::istream& blockInput, ScaleDefContext& readingContext)
        : input(blockInput), context(readingContext) {}

    bool readBody();

private:
    void nameBody(const LmStr& name);
    bool readAxes(BodyParams_t& body);
    bool readAxis(const char* name, LmVec3& axis);
    bool readMappings(BodyParams_t& body);
    const char* ofBody(const char* item);

    std::istream& input;
    ScaleDefContext& context;
    std::string suffix; ///< tells the body in messages: its name, and its number among those that are kept
    std::string what;   ///< the item in hand with the suffix
};

bool BodyScalingReader::readBody() {
    const LmStr name = readNameValue(input, "body name");
    if (errorStands()) {
        return false;
    }
    nameBody(name);
    BodyParams_t& body = context.bodyParams.append();
    body.bodyName = name;
    skipLine(input);
    if (!readAxes(body) || !readMappings(body)) {
        return false;
    }
    if (!context.hasBody(name)) {
        context.bodyParams.dropLast();
        pushWarningf("Body '%s' is being scaled by the scaling definition, but it is not in the problem "
                     "definition.  This body will be ignored.",
                     name.c_str());
    }
    return true;
}

void BodyScalingReader::nameBody(const LmStr& name) {
    suffix = " for body ";
    suffix += name.view();
    suffix += " (#";
    suffix += std::to_string(context.bodyParams.count() + 1);
    suffix += ")";
}

/// The item's name in messages; valid until the next call.
const char* BodyScalingReader::ofBody(const char* item) {
    what = item;
    what += suffix;
    return what.c_str();
}

/// Reads the first and the second axis, each on a line of its own; the third one follows from them.
bool BodyScalingReader::readAxes(BodyParams_t& body) {
    LmVec3 first = {};
    if (!readAxis("first axis", first)) {
        return false;
    }
    if (isWithoutDirection(first)) {
        // The second blank in front of the suffix is deliberate: users know the message by it.
        pushErrorf("Invalid first scaling axis %s", suffix.c_str());
        return false;
    }
    skipLine(input);
    LmVec3 second = {};
    if (!readAxis("second axis", second)) {
        return false;
    }
    if (isWithoutDirection(second)) {
        pushErrorf("Invalid second scaling axis%s", suffix.c_str());
        return false;
    }
    skipLine(input);
    ScalingAxes axes = {};
    if (!makeScalingAxes(first, second, axes)) {
        pushErrorf("First and second scaling axes are parallel%s", suffix.c_str());
        return false;
    }
    body.firstAxis = axes.first;
    body.secondAxis = axes.second;
    body.thirdAxis = axes.third;
    return true;
}

bool BodyScalingReader::readAxis(const char* name, LmVec3& axis) {
    axis = readVectorValue(input, ofBody(name));
    return !errorStands();
}

bool BodyScalingReader::readMappings(BodyParams_t& body) {
    constexpr std::array<const char*, 3> items = {"first scale variable", "second scale variable",
                                                  "third scale variable"};
    for (std::size_t i = 0; i < items.size(); ++i) {
        body.scale[i] = context.readScaleMapping(input, ofBody(items[i]));
        if (errorStands()) {
            return false;
        }
    }
    return true;
}

} // namespace

bool readBodyScalings(std::string_view blockText, ScaleDefContext& context) {
    LmISStream input(blockText.data(), blockText.size());
    BodyScalingReader reader(input, context);
    while (skipWhite(input)) {
        if (!reader.readBody()) {
            pushErrorf("Unable to read BODY_SCALINGS.");
            return false;
        }
    }
    return true;
}

} // namespace quillon::scaleDef
