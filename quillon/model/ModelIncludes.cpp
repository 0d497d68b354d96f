#include "quillon/model/LqBodyDefData.h"

#include "quillon/core/LmListView.h"
#include "quillon/files/IncludeSection.h"

#include <ostream>
#include <vector>

namespace quillon {

bool LqBodyDefData::readModelIncludes(std::istream& input) {
    std::vector<LqBDInclude> read;
    const bool whole = readIncludeSections(input, [&read](std::string_view blockText) {
        LqBDInclude& include = read.emplace_back();
        const IncludeKey keys[] = {{includeSuffixKey, include.bodyNameSuffix}};
        return readIncludeBlock(blockText, include.fileName, keys);
    });
    if (!whole) {
        return false;
    }
    clearIncludes();
    for (const LqBDInclude& include : read) {
        includes.append(new LqBDInclude(include));
    }
    return true;
}

void LqBodyDefData::writeModelIncludes(std::ostream& output) const {
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(includes)) {
        beginIncludeBlock(output, include->fileName);
        writeIncludeText(output, includeSuffixKey, include->bodyNameSuffix);
        endIncludeBlock(output);
    }
}

} // namespace quillon
