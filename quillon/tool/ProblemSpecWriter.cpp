#include "quillon/tool/ProblemSpecWriter.h"

#include "quillon/core/DataHeader.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmDirLayout.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/files/VariableExpansion.h"
#include "quillon/tool/LqProblemSpec.h"

#include <ostream>

namespace quillon {

namespace {

void writePath(std::ostream& output, const LqSpecPath& entry, const LmStr& path) {
    LmStr abbreviated(path);
    abbreviateWithVariable(abbreviated, dirLayout().dataDirVariable());
    output << entry.keyword << " " << abbreviated << std::endl;
}

} // namespace

void writeProblemSpec(const LqProblemSpec& source, const LmStr& path, LmStatus& status) {
    if (!checkFileWritable(path, status)) {
        return;
    }
    LmOFStream output(path, std::ios::out | std::ios::trunc);
    if (output.fail()) {
        status.pushErrorf("Unable to open '%s'.", path.c_str());
        return;
    }
    writeProblemSpecStream(source, output);
}

void writeProblemSpecStream(const LqProblemSpec& source, std::ostream& output) {
    writeDataHeader(output, problemSpecFileId, problemSpecFileVersion);
    for (const LqSpecPath& entry : specPaths) {
        // The model is written without a question: a specification without one is not meant to be written.
        if (entry.path == &LqProblemSpec::model || !(source.*entry.path).isNull()) {
            writePath(output, entry, source.*entry.path);
        }
    }
    if (!source.problemDefinition.isNull()) {
        const bool byName = source.matchBy() == LqMatchBy::BodyName;
        output << matchKeyword << " " << (byName ? matchBodyName : matchBodyID) << std::endl;
    }
    for (const auto& [key, value] : source.userValues) {
        if (value.length() != 0) {
            output << key << ": " << value << "\n";
        }
    }
    output.flush();
}

} // namespace quillon
