#pragma once

#include "quillon/core/LmListView.h"
#include "quillon/limits/LqLimitsData.h"

#include <sstream>
#include <string>
#include <vector>

namespace quillon::test {

inline std::string textOf(const LqLimitWeight& weight) {
    std::ostringstream text;
    if (weight.notSet) {
        text << "unset(" << weight.value << ")";
    } else {
        text << weight.value;
    }
    return text.str();
}

/// All fields of a record on one line: "7 mode 3 lower -1.5 * 2 upper 1.5 * unset(0) guide 0.25 * 4", with
/// nine significant digits, so that equal texts mean equal floats.
inline std::string textOf(const LqVarLimits& record) {
    std::ostringstream text;
    text.precision(9);
    text << record.id << " mode " << static_cast<int>(record.mode) << " lower " << record.lowerValue << " * "
         << textOf(record.lowerWeight) << " upper " << record.upperValue << " * "
         << textOf(record.upperWeight) << " guide " << record.guideValue << " * " << record.guideWeight;
    return text.str();
}

/// The records and then the includes of limits, one line each.
inline std::vector<std::string> linesOf(const LqLimitsData& limits) {
    std::vector<std::string> lines;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        lines.push_back(textOf(*record));
    }
    for (const LqLimitsInclude* include : LmListView<const LqLimitsInclude>(limits.includes)) {
        lines.push_back("include " + std::string(include->fileName.view()) + " offset " +
                        std::to_string(include->idOffset));
    }
    return lines;
}

/// The ids of the records in list order.
inline std::vector<int> idsOf(const LqLimitsData& limits) {
    std::vector<int> ids;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        ids.push_back(record->id);
    }
    return ids;
}

} // namespace quillon::test
