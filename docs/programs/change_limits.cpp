// change_limits LIMITS OUTPUT: opens every lower limit by a tenth and writes the result.

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"
#include "quillon/limits/LqLimitsData.h"

#include <iostream>

using namespace quillon;

int main(int argc, char** argv) {
    LqLimitsData limits;
    if (argc == 3 && readLimitsFile(limits, argv[1], true)) {
        for (LqVarLimits* record : LmListView<LqVarLimits>(limits.vars)) {
            if (record->hasLowerLimit()) {
                record->lowerValue -= 0.1F;
                std::cout << "variable " << record->id << " from " << record->lowerValue << "\n";
            }
        }
        writeLimitsFileChecked(limits, argv[2]);
    }
    return currentStatus().printStatusToError();
}
