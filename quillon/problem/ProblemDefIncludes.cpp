#include "quillon/problem/ProblemDefIncludes.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/IncludeSection.h"
#include "quillon/problem/LqProblemDefData.h"

#include <ostream>
#include <vector>

namespace quillon {

namespace {

constexpr const char* bodyIdOffsetKey = "BODY_ID_OFFSET";
constexpr const char* sysVarIdOffsetKey = "SYS_VAR_ID_OFFSET";

/// The offset of an include that has none.
constexpr std::int32_t sysVarIdOffsetNotGiven = -1;

bool readInclude(std::string_view blockText, LqPDDInclude& include) {
    const IncludeKey keys[] = {
        {includeSuffixKey, include.bodyNameSuffix},
        {bodyIdOffsetKey, include.bodyIdOffset},
        {sysVarIdOffsetKey, include.sysVarIdOffset},
    };
    return readIncludeBlock(blockText, include.fileName, keys);
}

} // namespace

bool readIncludes(LqProblemDefData& target, std::istream& input) {
    std::vector<LqPDDInclude> includes;
    const bool whole = readIncludeSections(input, [&includes](std::string_view blockText) {
        return readInclude(blockText, includes.emplace_back());
    });
    if (!whole) {
        return false;
    }
    target.clearIncludes();
    for (const LqPDDInclude& include : includes) {
        target.addInclude(include);
    }
    return true;
}

void writeIncludes(const LqProblemDefData& source, std::ostream& output) {
    const FormatGuard restored(output);
    output.flags(std::ios_base::dec);
    output.width(0);
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(source.includes)) {
        beginIncludeBlock(output, include->fileName);
        writeIncludeText(output, includeSuffixKey, include->bodyNameSuffix);
        writeIncludeNumber(output, bodyIdOffsetKey, include->bodyIdOffset);
        if (include->sysVarIdOffset != sysVarIdOffsetNotGiven) {
            writeIncludeNumber(output, sysVarIdOffsetKey, include->sysVarIdOffset);
        }
        endIncludeBlock(output);
    }
}

} // namespace quillon
