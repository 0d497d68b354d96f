#include "quillon/model/ModelIncludes.h"

#include "quillon/core/LmListView.h"
#include "quillon/files/IncludeSection.h"
#include "quillon/model/LqBodyDefData.h"

#include <ostream>
#include <vector>

namespace quillon {

bool readModelIncludes(LqBodyDefData& target, std::istream& input) {
    std::vector<LqBDInclude> includes;
    const bool whole = readIncludeSections(input, [&includes](std::string_view blockText) {
        LqBDInclude& include = includes.emplace_back();
        const IncludeKey keys[] = {{includeSuffixKey, include.bodyNameSuffix}};
        return readIncludeBlock(blockText, include.fileName, keys);
    });
    if (!whole) {
        return false;
    }
    target.clearIncludes();
    for (const LqBDInclude& include : includes) {
        target.includes.append(new LqBDInclude(include));
    }
    return true;
}

void writeModelIncludes(const LqBodyDefData& model, std::ostream& output) {
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(model.includes)) {
        beginIncludeBlock(output, include->fileName);
        writeIncludeText(output, includeSuffixKey, include->bodyNameSuffix);
        endIncludeBlock(output);
    }
}

} // namespace quillon
