#include "quillon/scale/LqScaleDefData.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamTokens.h"
#include "quillon/core/TagReader.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmIFStream.h"
#include "quillon/scale/BodyScalingReader.h"
#include "quillon/scale/ConstraintReader.h"
#include "quillon/scale/MarkerWeightReader.h"
#include "quillon/scale/OverrideReader.h"
#include "quillon/scale/PoseReader.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScalingVariableReader.h"
#include "quillon/scale/TempMarkerReader.h"

#include <memory>

namespace quillon {

namespace {

using scaleDef::ScaleDefContext;
namespace format = scaleDefFormat;

/// Reads the items of a file in three stages: those that are only kept until LIMIT_ADJUSTMENTS ends the
/// first, the sections up to GLOBAL_CONSTRAINTS, and TEMPS. A step that returns false ends the reading.
class ScaleDefReader {
public:
    ScaleDefReader(std::istream& input, ScaleDefContext& readingContext)
        : items(input), context(readingContext) {}

    void read();

private:
    bool keepFirstStage();
    LmStr* keptText();
    bool readFirstStage();
    bool readSecondStage();
    bool readSection(bool& known);
    bool readPose();
    bool readPositionConstraint();
    void readGlobalConstraints();
    void readTemps();
    void expectTag(const char* key) const;

    TaggedItems items;
    bool itemFound = false; // false behind the last item
    ScaleDefContext& context;
    LmStr realCount;
    LmStr defaultRealWeight;
    LmStr realWeightOverrides;
    LmStr artificialWeightOverrides;
    LmStr limitAdjustments;
};

void ScaleDefReader::read() {
    if (!keepFirstStage() || !readFirstStage() || !readSecondStage()) {
        return;
    }
    expectTag(format::globalConstraintsKey);
    if (errorStands()) {
        return;
    }
    readGlobalConstraints();
    readTemps();
}

// --- The first stage -----------------------------------------------------------------------------

bool ScaleDefReader::keepFirstStage() {
    while (items.next()) {
        LmStr* const kept = keptText();
        if (kept == nullptr) {
            pushErrorf("Unexpected tag '%s' specified.", items.tag().c_str());
            return false;
        }
        *kept = items.value();
        if (kept == &limitAdjustments) {
            return true;
        }
    }
    if (!items.failed()) {
        pushErrorf("Missing LIMIT_ADJUSTMENTS section.");
    }
    return false;
}

/// Where the text of the item is kept, null for an item of another stage.
LmStr* ScaleDefReader::keptText() {
    const struct {
        const char* key;
        LmStr* text;
    } places[] = {{format::realCountKey, &realCount},
                  {format::defaultRealWeightKey, &defaultRealWeight},
                  {format::realWeightOverridesKey, &realWeightOverrides},
                  {format::artificialWeightOverridesKey, &artificialWeightOverrides},
                  {format::limitAdjustmentsKey, &limitAdjustments}};
    for (const auto& [key, text] : places) {
        if (items.tagIs(key)) {
            return text;
        }
    }
    return nullptr;
}

bool ScaleDefReader::readFirstStage() {
    if (!scaleDef::readRealCount(realCount.view(), context) ||
        !scaleDef::readDefaultRealWeight(defaultRealWeight.view(), context) ||
        !scaleDef::readRealWeightOverrides(realWeightOverrides.view(), context) ||
        !scaleDef::readArtificialWeightOverrides(artificialWeightOverrides.view(), context)) {
        return false;
    }
    if (limitAdjustments.view().empty()) {
        // Deliberate, with its stray quote: a block without limits holds a comment or a blank line at least.
        pushErrorf("No LIMIT_ADJUSTMENTS' section.");
        return false;
    }
    // Deliberately not tested: an error stops the next section that asks whether one stands, which may put
    // its own sentence on top. Users know the messages that come of it.
    scaleDef::readLimitOverrides(limitAdjustments.view(), context, context.definition.limitOverrides);
    return true;
}

// --- The second stage ----------------------------------------------------------------------------

/// Reads sections up to an item that is none of them, or the end of the input.
bool ScaleDefReader::readSecondStage() {
    for (bool known = true; known;) {
        itemFound = items.next();
        if (items.failed() || !readSection(known)) {
            return false;
        }
    }
    return true;
}

bool ScaleDefReader::readSection(bool& known) {
    if (items.tagIs(format::scalingVariablesKey)) {
        return scaleDef::readScalingVariables(items.valueText(), context);
    }
    if (items.tagIs(format::poseKey)) {
        return readPose();
    }
    if (items.tagIs(format::bodyScalingsKey)) {
        return scaleDef::readBodyScalings(items.valueText(), context);
    }
    if (items.tagIs(format::positionConstraintKey)) {
        return readPositionConstraint();
    }
    if (items.tagIs(format::guideOverrideKey)) {
        return scaleDef::readGuideOverride(items.valueText(), context, context.sysVarGuideOverrides);
    }
    known = false;
    return true;
}

bool ScaleDefReader::readPose() {
    auto pose = std::make_unique<scaleDef::Pose_t>();
    if (!scaleDef::readPose(items.valueText(), context, *pose)) {
        pushErrorf("Unable to read POSE #%d.", context.poses.count() + 1);
        return false;
    }
    context.poses.append() = pose.release();
    return true;
}

bool ScaleDefReader::readPositionConstraint() {
    if (!scaleDef::readPositionConstraint(items.valueText(), context, context.positionConstraints)) {
        pushErrorf("Unable to read POSITION_CONSTRAINT.");
        return false;
    }
    return true;
}

// --- The end of the file -------------------------------------------------------------------------

void ScaleDefReader::readGlobalConstraints() {
    // Deliberately not tested: TEMPS is read up to its first row behind an error.
    scaleDef::readGlobalConstraints(items.valueText(), context, context.definition.globalConstraints);
}

void ScaleDefReader::readTemps() {
    itemFound = items.next();
    if (items.failed()) {
        pushErrorf("Error reading '%s' section.", items.tag().c_str());
    } else {
        expectTag(format::tempsKey);
    }
    // Deliberately whatever the item is: the messages about a wrong item include what it is not. Without a
    // text the definition has no temps.
    scaleDef::readTemps(itemFound ? items.valueText() : std::string_view(), context);
}

/// Reports an item that is not the one expected, or the end of the file in its place.
void ScaleDefReader::expectTag(const char* key) const {
    if (!items.tagIs(key)) {
        expectedButFound(itemFound ? items.tag() : LmStr(), key);
    }
}

} // namespace

bool LqScaleDefData::readFile(const LmStr& path, const LqProblemDefData& problemDef, bool lenient) {
    if (!checkFileReadable(path)) {
        return false;
    }
    LmIFStream input(path);
    if (!input.is_open()) {
        pushErrorf("Couldn't open \"%s\".", path.c_str());
        return false;
    }
    if (!read(input, problemDef, lenient)) {
        pushErrorf("Unable to read \"%s\".", path.c_str());
        return false;
    }
    return true;
}

bool LqScaleDefData::read(std::istream& input, const LqProblemDefData& problemDef, bool lenient) {
    if (!readHeader(input)) {
        pushErrorf("File does not contain a scale definition.");
        return false;
    }
    return readBody(input, problemDef, lenient);
}

bool LqScaleDefData::readBody(std::istream& input, const LqProblemDefData& problemDef, bool lenient) {
    clearPoses();
    ScaleDefContext context(*this, problemDef, lenient);
    ScaleDefReader(input, context).read();
    return !errorStands();
}

bool LqScaleDefData::readHeader(std::istream& input) {
    return readFormatHeader(input, DataFileFormat::ScaleDef);
}

bool LqScaleDefData::isScaleDefFile(const LmStr& path) {
    if (!checkFileReadable(path)) {
        pushErrorf("Unable to open \"%s\".", path.c_str());
        return false;
    }
    LmIFStream input(path);
    if (!input.is_open()) {
        pushErrorf("Couldn't open \"%s\".", path.c_str());
        return false;
    }
    return readHeader(input);
}

} // namespace quillon
