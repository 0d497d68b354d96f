#include "quillon/tool/Info.h"

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemReport.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <ostream>

namespace quillon {

namespace {

/// The truth value of the current status, which the driver hands to every reader: a file is read with its
/// includes, and a scale definition leniently, only when a warning stands already. Deliberate; the report of
/// a clean run depends on it.
bool statusTruth() {
    return currentStatus().hasEntries();
}

/// Prints the "Read" line of a file that was read. False when an error stands.
bool confirmRead(const LmStr& path, std::ostream& messages) {
    if (errorStands()) {
        return false;
    }
    messages << "Read " + path + "\n";
    return true;
}

bool readFamily(LqProblemBundle& bundle, LqProblemSpec& spec, const LmStr& path, std::ostream& messages) {
    readProblemSpec(spec, path, currentStatus());
    if (!confirmRead(path, messages)) {
        return false;
    }
    if (!spec.problemDefinition.isNull()) {
        bundle.problemDef.readProblemDefFile(spec.problemDefinition, statusTruth());
        if (!confirmRead(spec.problemDefinition, messages)) {
            return false;
        }
    }
    if (!spec.unscaledBodyDef.isNull()) {
        bundle.model.readModelFile(spec.unscaledBodyDef, bundle.problemDef, statusTruth());
        if (!confirmRead(spec.unscaledBodyDef, messages)) {
            return false;
        }
    }
    readLimitsFile(bundle.limits, spec.limits, statusTruth());
    if (!confirmRead(spec.limits, messages)) {
        return false;
    }
    bundle.scaleDef.readFile(spec.scaleDefinition, bundle.problemDef, statusTruth());
    return confirmRead(spec.scaleDefinition, messages);
}

} // namespace

void runInfo(const LmStr& path, std::ostream& out, std::ostream& messages) {
    LqProblemBundle bundle;
    LqProblemSpec spec;
    if (readFamily(bundle, spec, path, messages)) {
        writeProblemReport(out, messages, bundle);
    }
}

} // namespace quillon
