// merge_and_check PROBLEM_DEFINITION OUTPUT: merges the INCLUDE blocks of a problem definition, checks the
// result as a whole and writes it if it is sound.

#include "quillon/core/LmStatus.h"
#include "quillon/problem/LqProblemDefData.h"

#include <iostream>

using namespace quillon;

int main(int argc, char** argv) {
    LqProblemDefData problem;
    if (argc == 3 && problem.readProblemDefFile(argv[1], false)) {
        std::cout << problem.includes.count() << " files to include\n";
        if (problem.mergeIncludes()) {
            std::cout << problem.sysVars.count() << " variables, " << problem.bodies.count() << " bodies, "
                      << problem.markerCount() << " markers\n";
            problem.checkProblemDef(currentStatus());
            if (!errorStands()) {
                problem.writeProblemDefFile(argv[2]);
            }
        }
    }
    return currentStatus().printStatusToError();
}
