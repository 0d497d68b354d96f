// read_family SPECIFICATION: reads the files of a problem and says how much is in them.

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <iostream>

using namespace quillon;

static bool readFamily(LqProblemBundle& bundle, const LmStr& path) {
    LqProblemSpec spec;
    readProblemSpec(spec, path, currentStatus());
    if (errorStands()) {
        return false;
    }
    for (const LmStr& file :
         {spec.problemDefinition, spec.unscaledBodyDef, spec.limits, spec.scaleDefinition}) {
        if (file.isNull()) {
            pushError("The specification does not name all four files.");
            return false;
        }
    }
    return bundle.problemDef.readProblemDefFile(spec.problemDefinition, true) &&
           bundle.model.readModelFile(spec.unscaledBodyDef, bundle.problemDef, true) &&
           readLimitsFile(bundle.limits, spec.limits, true) &&
           bundle.scaleDef.readFile(spec.scaleDefinition, bundle.problemDef, false);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: read_family SPECIFICATION\n";
        return 1;
    }
    LqProblemBundle bundle;
    if (readFamily(bundle, argv[1])) {
        std::cout << bundle.problemDef.sysVars.count() << " variables, " << bundle.limits.vars.count()
                  << " of them with limits\n"
                  << bundle.model.bodies.count() << " bodies, " << bundle.model.markerCount() << " markers\n"
                  << bundle.scaleDef.scaleVars.count() << " scaling variables\n";
    }
    return currentStatus().printStatusToError();
}
