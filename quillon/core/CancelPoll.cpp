#include "quillon/core/CancelPoll.h"

#include "quillon/core/LmStatus.h"

namespace quillon {

bool CancelPoll::canceledAfterRecord() {
    if (counter != askAt) {
        ++counter;
        return false;
    }
    counter = 2;
    if (checkCanceled() == 0) {
        return false;
    }
    pushWarningf("Read aborted.");
    return true;
}

} // namespace quillon
