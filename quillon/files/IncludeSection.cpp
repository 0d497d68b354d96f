#include "quillon/files/IncludeSection.h"

#include "quillon/core/NumberPrinting.h"
#include "quillon/core/TagReader.h"
#include "quillon/core/TokenReader.h"
#include "quillon/files/LmDirLayout.h"
#include "quillon/files/VariableExpansion.h"

#include <algorithm>
#include <ostream>

namespace quillon {

// --- Reading -------------------------------------------------------------------------------------

namespace {

void reportUnexpectedKey(const LmStr& key, LmStatus& status) {
    status.pushError("Unexpected key word \"" + key + "\".");
}

bool takeValue(const IncludeKey& key, TaggedItems& item, LmStatus& status) {
    if (key.text != nullptr) {
        *key.text = item.value();
        return true;
    }
    if (!readInt(item.value(), *key.number, status)) {
        status.pushError("Invalid value for " + item.tag() + ".");
        return false;
    }
    return true;
}

} // namespace

bool readIncludeBlock(std::string_view blockText, LmStr& fileName, std::span<const IncludeKey> furtherKeys,
                      LmStatus& status) {
    TaggedItems items(blockText, status);
    while (items.next()) {
        if (items.tagIs(includeFileNameKey)) {
            fileName = items.value();
            expandVariables(fileName, true);
            continue;
        }
        const auto key = std::ranges::find_if(
            furtherKeys, [&items](const IncludeKey& known) { return items.tagIs(known.keyword); });
        if (key == furtherKeys.end()) {
            reportUnexpectedKey(items.tag(), status);
            return false;
        }
        if (!takeValue(*key, items, status)) {
            return false;
        }
    }
    if (status.errorStands()) {
        return false;
    }
    if (fileName.length() == 0) {
        status.pushError("No FILE_NAME specified.");
        return false;
    }
    return true;
}

bool readIncludeSections(std::istream& input, const std::function<bool(std::string_view)>& readBlock) {
    TaggedItems items(input);
    while (items.next() && !errorStands()) {
        if (!items.tagIs(includeKeyword)) {
            reportUnexpectedKey(items.tag(), currentStatus());
            return false;
        }
        if (!readBlock(items.valueText())) {
            pushError("Unable to read " + items.tag() + " section.");
            return false;
        }
    }
    return !errorStands();
}

// --- Writing -------------------------------------------------------------------------------------

void beginIncludeBlock(std::ostream& output, const LmStr& fileName) {
    LmStr contracted = fileName;
    abbreviateWithVariable(contracted, dirLayout().dataDirVariable());
    output << includeKeyword << " {\n"
           << "  " << includeFileNameKey << ": " << contracted << "\n";
}

void writeIncludeText(std::ostream& output, const char* key, const LmStr& text) {
    if (text.length() != 0) {
        output << "  " << key << ": " << text << "\n";
    }
}

void writeIncludeNumber(std::ostream& output, const char* key, std::int32_t number) {
    output << "  " << key << ": ";
    printInt(output, number);
    output << "\n";
}

void endIncludeBlock(std::ostream& output) {
    output << "}\n";
}

} // namespace quillon
