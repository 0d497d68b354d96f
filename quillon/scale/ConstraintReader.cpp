#include "quillon/scale/ConstraintReader.h"

#include "quillon/core/LmSStream.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/core/TagReader.h"
#include "quillon/geometry/EulerAngles.h"
#include "quillon/scale/ConstraintVectors.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScaleTokens.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace quillon::scaleDef {

namespace {

namespace format = scaleDefFormat;

// --- Global constraints ----------------------------------------------------------------------------

void adjustMagnitudes(GlobalConst_t& row) {
    if (haveDifferingLengths(row.local, row.global)) {
        pushWarningf("A global constraint was specified for body %s which has differing magnitudes for the "
                     "local and global vectors.  Adjusting the vectors.",
                     row.bodyName.c_str());
        equalizeLengths(row.local, row.global);
    }
}

/// Reads a row up to its last number. Returns false when an error stands.
bool readGlobalConstraint(std::istream& input, const ScaleDefContext& context, GlobalConst_t& row) {
    row.bodyName = readNameValue(input, "constraint body name");
    if (errorStands()) {
        return false;
    }
    if (!context.hasBody(row.bodyName)) {
        LmStr message;
        message.format("A global constraint was specified for body %s, but this body is not in the problem "
                       "definition.",
                       row.bodyName.c_str());
        if (!context.reportUnresolved(message)) {
            return false;
        }
    }
    row.local = readVectorValue(input, "constraint local vect");
    if (errorStands()) {
        return false;
    }
    row.global = readVectorValue(input, "constraint global vect");
    if (errorStands()) {
        return false;
    }
    adjustMagnitudes(row);
    return true;
}

// --- Position constraints --------------------------------------------------------------------------

/// The mappings in the order of the file, by the names that messages give them.
constexpr std::array<const char*, transformCount> mappingNames = {
    "X Translation", "Y Translation", "Z Translation", "X Rotation", "Y Rotation", "Z Rotation"};

constexpr std::array<int, transformCount> usualTransformOrder = {1, 2, 3, 6, 5, 4};

/// Reads the items of a POSITION_CONSTRAINT block. Errors are left standing on the current status.
class PositionConstraintReader {
public:
    PositionConstraintReader(const ScaleDefContext& readingContext, PositionConst_t& target)
        : context(readingContext), record(target) {}

    /// Whether the record is to be kept.
    bool read(std::string_view blockText);

private:
    // Each returns whether the reading of items goes on.
    bool readItem(TaggedItems& item);
    bool readTransformOrder(std::string_view text);
    bool readMappings(std::string_view blockText);
    bool readWeight(std::string_view text);

    void readVector(TaggedItems& item, LmVec3& vector) const;
    void readBaseRotation(std::string_view text);
    bool hasKnownBodies() const;
    bool isKnown(const LmStr& bodyName) const;

    const ScaleDefContext& context;
    PositionConst_t& record;
};

bool PositionConstraintReader::read(std::string_view blockText) {
    std::copy(usualTransformOrder.begin(), usualTransformOrder.end(), record.transformOrder.begin());
    record.parent = format::globalName;
    TaggedItems items(blockText);
    while (items.next() && readItem(items)) {
    }
    return !errorStands() && hasKnownBodies();
}

bool PositionConstraintReader::readItem(TaggedItems& item) {
    if (item.tagIs(format::bodyKey)) {
        record.body = item.value();
        return true;
    }
    if (item.tagIs(format::parentKey)) {
        record.parent = item.value();
        return true;
    }
    if (item.tagIs(format::localPositionKey)) {
        readVector(item, record.localPosition);
        return !errorStands();
    }
    if (item.tagIs(format::baseTranslationKey)) {
        // Deliberately not a reason to stop: the items behind a bad vector are still reported on.
        readVector(item, record.baseTranslation);
        return true;
    }
    if (item.tagIs(format::baseRotationKey)) {
        readBaseRotation(item.valueText());
        return true;
    }
    if (item.tagIs(format::transformOrderKey)) {
        return readTransformOrder(item.valueText());
    }
    if (item.tagIs(format::mappingKey)) {
        return readMappings(item.valueText());
    }
    if (item.tagIs(format::weightKey)) {
        return readWeight(item.valueText());
    }
    // Deliberately under another name than the section has in the file: users know the message by it.
    pushErrorf("Unknown tag '%s' in POINT_CONSTRAINT.", item.tag().c_str());
    return false;
}

void PositionConstraintReader::readVector(TaggedItems& item, LmVec3& vector) const {
    const std::string_view text = item.valueText();
    LmISStream input(text.data(), text.size());
    vector = readVectorValue(input, item.tag().c_str());
}

/// Reads an axis letter and gives its number, or 0 after an error.
int readAxis(std::istream& input) {
    LmStr word;
    word.readWord(input);
    if (word.isNull()) {
        pushErrorf("Error reading rotation order for BASE_ROTATION.");
        return 0;
    }
    constexpr std::array<const char*, 3> letters = {"X", "Y", "Z"};
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (word == letters[i]) {
            return static_cast<int>(i) + 1;
        }
    }
    pushErrorf("Invalid axis (%s) in rotation order for BASE_ROTATION.\n", word.c_str());
    return 0;
}

/// Three angles, indexed by axis, and three axis letters in the order of application. After an error the
/// rotation is the identity.
void PositionConstraintReader::readBaseRotation(std::string_view text) {
    record.baseRotation = identityMat3;
    LmISStream input(text.data(), text.size());
    const LmVec3 angles = readVectorValue(input, format::baseRotationKey);
    if (errorStands()) {
        return;
    }
    skipWhite(input);
    LmEulerOrder order = {};
    for (std::int32_t& axis : order) {
        axis = readAxis(input);
        if (axis == 0) {
            return;
        }
    }
    eulerToMatrix(record.baseRotation, angles, order);
}

bool PositionConstraintReader::readTransformOrder(std::string_view text) {
    LmISStream input(text.data(), text.size());
    for (int& transform : record.transformOrder) {
        std::int32_t id = 0;
        if (!extractInt(input, id)) {
            pushErrorf("Error reading TRANSFORM_ORDER.");
            return false;
        }
        if (id < 1 || id > transformCount) {
            pushErrorf("Invalid transform id in TRANSFORM_ORDER");
            return false;
        }
        transform = id;
    }
    return true;
}

bool PositionConstraintReader::readMappings(std::string_view blockText) {
    LmISStream input(blockText.data(), blockText.size());
    for (int i = 0; i < transformCount; ++i) {
        record.mapping[i] = context.readScaleMapping(input, mappingNames[static_cast<std::size_t>(i)]);
        if (errorStands()) {
            pushErrorf("Unable to read MAPPING.");
            return false;
        }
    }
    return true;
}

bool PositionConstraintReader::readWeight(std::string_view text) {
    LmISStream input(text.data(), text.size());
    record.weight = readFloatValue(input, format::weightKey);
    if (errorStands()) {
        pushErrorf("Unable to read WEIGHT.");
        return false;
    }
    return true;
}

/// Tests the names of the two bodies. Only a missing one is an error; a constraint on bodies that the problem
/// definition does not have is dropped with a warning in a strict reading too, deliberately unlike a global
/// constraint: definitions are shared by skeletons with fewer bodies.
bool PositionConstraintReader::hasKnownBodies() const {
    if (record.body.length() == 0) {
        pushErrorf("A POSITION_CONSTRAINT was specified with no BODY.");
        return false;
    }
    if (!isKnown(record.body)) {
        pushWarningf("Body '%s' has a POSITION_CONSTRAINT in the scaling definition, but that body is not in "
                     "the problem definition.  This constraint will be ignored.",
                     record.body.c_str());
        return false;
    }
    if (!isKnown(record.parent)) {
        pushWarningf("Body '%s' is constrained to parent body %s, which is not in the problem definition.  "
                     "This constraint will be ignored.",
                     record.body.c_str(), record.parent.c_str());
        return false;
    }
    return true;
}

bool PositionConstraintReader::isKnown(const LmStr& bodyName) const {
    return bodyName == format::globalName || context.hasBody(bodyName);
}

} // namespace

bool readGlobalConstraints(std::string_view blockText, const ScaleDefContext& context,
                           LmDArray<GlobalConst_t>& target) {
    target = LmDArray<GlobalConst_t>();
    ArrayAppender<GlobalConst_t> rows(target);
    LmISStream input(blockText.data(), blockText.size());
    while (skipWhite(input)) {
        if (!readGlobalConstraint(input, context, rows.append())) {
            return false;
        }
        skipLine(input);
    }
    return !errorStands();
}

bool readPositionConstraint(std::string_view blockText, const ScaleDefContext& context,
                            ArrayAppender<PositionConst_t>& target) {
    if (!PositionConstraintReader(context, target.append()).read(blockText)) {
        target.dropLast();
    }
    return !errorStands();
}

} // namespace quillon::scaleDef
