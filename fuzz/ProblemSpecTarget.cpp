#include "fuzz/FormatCheck.h"
#include "fuzz/FuzzTargets.h"
#include "fuzz/Representable.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "quillon/tool/ProblemSpecWriter.h"

#include <cstdlib>

namespace quillon::fuzz {

namespace {

/// Times are those of files, which may change meanwhile.
bool sameBesideTimes(const LqProblemSpec& left, const LqProblemSpec& right) {
    return std::all_of(std::begin(specPaths), std::end(specPaths),
                       [&](const LqSpecPath& entry) { return left.*entry.path == right.*entry.path; }) &&
           left.matchBy() == right.matchBy() && left.userValues == right.userValues;
}

/// No path then has another form with a variable.
void forgetDataDirectory() {
    for (const char* const name : {"RQ_DATA_DIR", "DRENK_DATA_DIR", "KYM_DATA_DIR"}) {
        unsetenv(name);
    }
}

} // namespace

void checkProblemSpec(std::string_view input) {
    forgetDataDirectory();
    const FileFormat<LqProblemSpec> format = {
        [](std::istream& stream, LqProblemSpec& spec) {
            readProblemSpecStream(spec, stream, currentStatus());
            return !errorStands();
        },
        [](std::ostream& stream, const LqProblemSpec& spec) { writeProblemSpecStream(spec, stream); },
        sameBesideTimes, [](const LqProblemSpec& spec) { return isRepresentable(spec); }};
    LqProblemSpec spec;
    checkFormat(format, std::string(input), spec);
}

} // namespace quillon::fuzz
