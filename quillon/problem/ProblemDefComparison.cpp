// The equality of bodies and of whole problem definitions.

#include "quillon/core/LmListView.h"
#include "quillon/problem/LqProblemDefData.h"

namespace quillon {

bool equals(const LqPDDBodyMap& left, const LqPDDBodyMap& right) {
    if (left.name != right.name || left.parentName != right.parentName ||
        left.graphicsNumber != right.graphicsNumber || left.type != right.type ||
        left.typeOneVar != right.typeOneVar || left.mappings.count() != right.mappings.count() ||
        left.transformOrder.count() != right.transformOrder.count()) {
        return false;
    }
    for (int k = 0; k < left.mappings.count(); ++k) {
        if (!equals(left.mappings[k], right.mappings[k])) {
            return false;
        }
    }
    for (int k = 0; k < left.transformOrder.count(); ++k) {
        if (left.transformOrder[k] != right.transformOrder[k]) {
            return false;
        }
    }
    return true;
}

namespace {

bool equals(const LqPDDSysVar& left, const LqPDDSysVar& right) {
    return left.id == right.id && left.description == right.description;
}

bool equals(const LqPDDFixMarker& left, const LqPDDFixMarker& right) {
    return left.id == right.id && left.weight == right.weight && left.bodyName == right.bodyName;
}

bool equals(const LqPDDRealMarker& left, const LqPDDRealMarker& right) {
    return equals(static_cast<const LqPDDFixMarker&>(left), right) &&
           left.predictionType == right.predictionType;
}

bool equals(const LqPDDDoubleMarker& left, const LqPDDDoubleMarker& right) {
    return equals(static_cast<const LqPDDFixMarker&>(left), right) && left.doubleId == right.doubleId;
}

bool equals(const LqPDDArtificialMarker& left, const LqPDDArtificialMarker& right) {
    return equals(static_cast<const LqPDDFixMarker&>(left), right) && left.otherId == right.otherId &&
           left.otherBodyName == right.otherBodyName;
}

bool equals(const LqPDDInclude& left, const LqPDDInclude& right) {
    return left.bodyNameSuffix == right.bodyNameSuffix && left.bodyIdOffset == right.bodyIdOffset &&
           left.sysVarIdOffset == right.sysVarIdOffset;
}

template <class Record>
bool equals(const LmDArray<Record*>& left, const LmDArray<Record*>& right) {
    if (left.count() != right.count()) {
        return false;
    }
    for (int i = 0; i < left.count(); ++i) {
        if (left[i] == nullptr || right[i] == nullptr) {
            if (left[i] != right[i]) {
                return false;
            }
        } else if (!equals(*left[i], *right[i])) {
            return false;
        }
    }
    return true;
}

bool equalIncludes(const LmDoubleLinkedList& left, const LmDoubleLinkedList& right) {
    if (left.count() != right.count()) {
        return false;
    }
    const LmListView<const LqPDDInclude> rightIncludes(right);
    auto other = rightIncludes.begin();
    for (const LqPDDInclude* include : LmListView<const LqPDDInclude>(left)) {
        if (!equals(*include, **other)) {
            return false;
        }
        ++other;
    }
    return true;
}

} // namespace

bool equals(const LqProblemDefData& left, const LqProblemDefData& right) {
    if (&left == &right) {
        return true;
    }
    return equals(left.sysVars, right.sysVars) && equals(left.bodies, right.bodies) &&
           equals(left.fixMarkers, right.fixMarkers) && equals(left.realMarkers, right.realMarkers) &&
           equals(left.doubleMarkers, right.doubleMarkers) &&
           equals(left.artificialMarkers, right.artificialMarkers) &&
           equalIncludes(left.includes, right.includes);
}

} // namespace quillon
