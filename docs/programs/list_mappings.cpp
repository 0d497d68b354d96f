// list_mappings PROBLEM_DEFINITION: prints what drives each transformation of each body.

#include "quillon/core/LmStatus.h"
#include "quillon/problem/LqProblemDefData.h"

#include <iostream>

using namespace quillon;

static void printMapping(const LqBasicVarMapping<float>& mapping) {
    if (mapping.id > 0) {
        std::cout << "variable " << mapping.id;
        return;
    }
    std::cout << mapping.constant;
    for (const LqLinearTerm<float>* term : mapping.termList()) {
        std::cout << " + " << term->coefficient << " * variable " << term->sysVar;
    }
}

int main(int argc, char** argv) {
    LqProblemDefData problem;
    if (argc == 2 && problem.readProblemDefFile(argv[1], true)) {
        for (const LqPDDBodyMap* body : problem.bodies) {
            for (int k = 0; k < transformCount; ++k) {
                if (body->mappings[k].id != 0) {
                    std::cout << body->name << ", transformation " << body->transformOrder[k] << ": ";
                    printMapping(body->mappings[k]);
                    std::cout << "\n";
                }
            }
        }
    }
    return currentStatus().printStatusToError();
}
