#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/IncludeSection.h"

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

bool LqProblemDefData::readIncludes(std::istream& input) {
    std::vector<LqPDDInclude> read;
    const bool whole = readIncludeSections(
        input, [&read](std::string_view blockText) { return readInclude(blockText, read.emplace_back()); });
    if (!whole) {
        return false;
    }
    clearIncludes();
    for (const LqPDDInclude& include : read) {
        addInclude(include);
    }
    return true;
}

void LqProblemDefData::writeIncludes(std::ostream& output) const {
    const FormatGuard restored(output);
    output.flags(std::ios_base::dec);
    output.width(0);
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(includes)) {
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
