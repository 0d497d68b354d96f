#include "quillon/tool/ProblemReport.h"

#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemDefReport.h"
#include "quillon/tool/ReportText.h"
#include "quillon/tool/ScalingReport.h"

namespace quillon {

void writeProblemReport(std::ostream& out, std::ostream& messages, const LqProblemBundle& bundle) {
    ReportText text(out);
    writeProblemDefSection(text, messages, bundle);
    writeScalingSection(text, bundle.scaleDef);
}

} // namespace quillon
