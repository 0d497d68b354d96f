// Reads one file by the library's reader of its kind; scripts/instructions.sh counts what that takes:
//
//     read_file KIND FILE [DEFINITION]
//
// DEFINITION is the problem definition that a model or a scale definition is read with. Only what runs in
// `readWanted` is of interest, which a profiler finds by its name.

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <cstdio>
#include <iostream>
#include <string_view>

namespace {

/// Room for whatever is read, and what is read with it.
struct Targets {
    quillon::LqProblemSpec specification;
    quillon::LqProblemDefData problemDefinition;
    quillon::LqBodyDefData model;
    quillon::LqLimitsData limits;
    quillon::LqScaleDefData scaleDefinition;
    quillon::LqMeasuredData measuredData;
    quillon::LqProblemDefData definitionToReadWith;
};

struct Kind {
    std::string_view name;
    void (*read)(Targets& targets, const char* path);
};

constexpr Kind kinds[] = {
    {"specification",
     [](Targets& targets, const char* path) {
         quillon::readProblemSpec(targets.specification, path, quillon::currentStatus());
     }},
    {"problem-definition",
     [](Targets& targets, const char* path) { targets.problemDefinition.readProblemDefFile(path, false); }},
    {"model",
     [](Targets& targets, const char* path) {
         targets.model.readModelFile(path, targets.definitionToReadWith, false);
     }},
    {"limits",
     [](Targets& targets, const char* path) { quillon::readLimitsFile(targets.limits, path, false); }},
    {"scale-definition",
     [](Targets& targets, const char* path) {
         targets.scaleDefinition.readFile(path, targets.definitionToReadWith, false);
     }},
    {"measured-data", [](Targets& targets, const char* path) { targets.measuredData.readFile(path); }},
};

} // namespace

/// Never inlined, so that its name is there to be found.
[[gnu::noinline]] void readWanted(const Kind& kind, Targets& targets, const char* path) {
    kind.read(targets, path);
}

int main(int argumentCount, char** arguments) {
    Targets targets;
    if (argumentCount == 4) {
        targets.definitionToReadWith.readProblemDefFile(arguments[3], false);
    }
    for (const Kind& kind : kinds) {
        if ((argumentCount == 3 || argumentCount == 4) && kind.name == arguments[1]) {
            readWanted(kind, targets, arguments[2]);
            return quillon::currentStatus().printStatus(std::cerr);
        }
    }
    std::fputs("Usage: read_file KIND FILE [DEFINITION]\n", stderr);
    return 1;
}
