#include "fuzz/Formats.h"
#include "fuzz/FuzzTargets.h"
#include "fuzz/InputParts.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemReport.h"

namespace quillon::fuzz {

namespace {

/// Reads the files of a family in the order of a run, up to the first that fails.
bool readFamily(const std::vector<std::string>& parts, LqProblemBundle& bundle) {
    std::istringstream definition(parts[0]);
    std::istringstream model(parts[1]);
    std::istringstream limits(parts[2]);
    std::istringstream scaling(parts[3]);
    return bundle.problemDef.readProblemDefStream(definition, false) &&
           bundle.model.readModelSections(model, bundle.problemDef, "") &&
           readLimitsStream(bundle.limits, limits, false) &&
           bundle.scaleDef.read(scaling, bundle.problemDef, false);
}

/// The report and the remarks.
std::string reportOf(const LqProblemBundle& bundle) {
    std::ostringstream report;
    std::ostringstream remarks;
    writeProblemReport(report, remarks, bundle);
    require(report.good() && remarks.good(), "a report is written whole");
    return report.str() + remarks.str();
}

} // namespace

void checkFamily(std::string_view input) {
    const std::vector<std::string> parts = partsOf(input, 4);
    LqProblemBundle bundle;
    if (!readFamily(parts, bundle)) {
        require(errorStands(), "a family that is not read leaves an error");
        return;
    }
    currentStatus().clear();
    const std::string report = reportOf(bundle);
    require(!currentStatus().hasEntries(), "a report says nothing on a status");
    require(reportOf(bundle) == report, "a report leaves its problem as it was");
}

} // namespace quillon::fuzz
