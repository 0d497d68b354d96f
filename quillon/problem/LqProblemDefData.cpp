#include "quillon/problem/LqProblemDefData.h"

#include "quillon/core/LmListView.h"
#include "quillon/problem/RecordArrays.h"

namespace quillon {

LqProblemDefData::LqProblemDefData(const LqProblemDefData& other) {
    assign(other);
}

LqProblemDefData& LqProblemDefData::operator=(const LqProblemDefData& other) {
    assign(other);
    return *this;
}

LqProblemDefData::~LqProblemDefData() {
    clear();
}

void LqProblemDefData::assign(const LqProblemDefData& other) {
    if (this == &other) {
        return;
    }
    clear();
    copyRecords(sysVars, other.sysVars);
    copyRecords(bodies, other.bodies, other.slotsMayRepeat);
    copyRecords(fixMarkers, other.fixMarkers, other.slotsMayRepeat);
    copyRecords(realMarkers, other.realMarkers, other.slotsMayRepeat);
    copyRecords(doubleMarkers, other.doubleMarkers, other.slotsMayRepeat);
    copyRecords(artificialMarkers, other.artificialMarkers, other.slotsMayRepeat);
    slotsMayRepeat = other.slotsMayRepeat;
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(other.includes)) {
        addInclude(*include);
    }
}

void LqProblemDefData::clear() {
    dropRepeatedSlots();
    freeRecords(sysVars);
    freeRecords(bodies);
    freeRecords(fixMarkers);
    freeRecords(realMarkers);
    freeRecords(globalDirectionMarkers);
    freeRecords(doubleMarkers);
    freeRecords(artificialMarkers);
    clearIncludes();
}

void LqProblemDefData::dropRepeatedSlots() {
    if (!slotsMayRepeat) {
        return;
    }
    dropRepeats(bodies);
    dropRepeats(realMarkers);
    dropRepeats(fixMarkers);
    dropRepeats(doubleMarkers);
    dropRepeats(artificialMarkers);
    slotsMayRepeat = false;
}

bool LqProblemDefData::isEmpty() const {
    return sysVars.count() == 0 && bodies.count() == 0 && fixMarkers.count() == 0 &&
           realMarkers.count() == 0 && globalDirectionMarkers.count() == 0 && doubleMarkers.count() == 0 &&
           artificialMarkers.count() == 0;
}

bool LqProblemDefData::isBlank() const {
    return includes.count() == 0 && isEmpty();
}

bool LqProblemDefData::isIncludesOnly() const {
    return includes.count() != 0 && isEmpty();
}

void LqProblemDefData::addInclude(const LqPDDInclude& include) {
    includes.append(new LqPDDInclude(include));
}

void LqProblemDefData::clearIncludes() {
    while (includes.count() != 0) {
        delete static_cast<LqPDDInclude*>(includes.removeNode(includes.lastLive()));
    }
}

void LqProblemDefData::appendToIncludeSuffixes(const LmStr& text) {
    // The text may be the suffix of one of the includes itself.
    const LmStr suffix = text;
    for (LqPDDInclude* include : LmListView<LqPDDInclude>(includes)) {
        include->bodyNameSuffix += suffix;
    }
}

} // namespace quillon
