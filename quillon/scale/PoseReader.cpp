#include "quillon/scale/PoseReader.h"

#include "quillon/core/LmStatus.h"
#include "quillon/core/TagReader.h"
#include "quillon/scale/ConstraintReader.h"
#include "quillon/scale/OverrideReader.h"
#include "quillon/scale/ScaleDefContext.h"
#include "quillon/scale/ScaleDefFormat.h"

namespace quillon::scaleDef {

namespace {

namespace format = scaleDefFormat;

/// Reads the items of a POSE block. Its arrays have their exact length once it is gone.
class PoseReader {
public:
    PoseReader(const ScaleDefContext& readingContext, Pose_t& target)
        : context(readingContext), pose(target), guides(target.sysVarGuideOverrides),
          positions(target.positionConstraints) {}

    bool read(std::string_view blockText);

private:
    bool readItem(TaggedItems& item);

    const ScaleDefContext& context;
    Pose_t& pose;
    GuideOverrideFiller guides;
    ArrayAppender<PositionConst_t> positions;
};

bool PoseReader::read(std::string_view blockText) {
    TaggedItems items(blockText);
    while (items.next()) {
        if (!readItem(items)) {
            return false;
        }
    }
    if (items.failed()) {
        return false;
    }
    if (pose.name.length() == 0) {
        pushErrorf("A pose was specified with no name.\n");
        return false;
    }
    return true;
}

bool PoseReader::readItem(TaggedItems& item) {
    if (item.tagIs(format::nameKey)) {
        pose.name = item.value();
        return true;
    }
    if (item.tagIs(format::limitAdjustmentsKey)) {
        return readLimitOverrides(item.valueText(), context, pose.limitOverrides);
    }
    if (item.tagIs(format::guideOverrideKey)) {
        return readGuideOverride(item.valueText(), context, guides);
    }
    if (item.tagIs(format::globalConstraintsKey)) {
        return readGlobalConstraints(item.valueText(), context, pose.globalConstraints);
    }
    if (item.tagIs(format::positionConstraintKey)) {
        return readPositionConstraint(item.valueText(), context, positions);
    }
    pushErrorf("Unknown tag '%s' in pose section.", item.tag().c_str());
    return false;
}

} // namespace

bool readPose(std::string_view blockText, const ScaleDefContext& context, Pose_t& pose) {
    return PoseReader(context, pose).read(blockText);
}

} // namespace quillon::scaleDef
