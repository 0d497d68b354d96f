#pragma once

#include "quillon/core/LmArray.h"

#include <algorithm>
#include <memory>

namespace quillon::scaleDef {

/// Whether two arrays have equal elements in equal order.
template <class T>
bool equalElements(const LmArray<T>& left, const LmArray<T>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

/// Removes the element at an index and closes the gap.
template <class T>
void removeAt(LmDArray<T>& array, int index) {
    T* const last = array.end() - 1;
    std::rotate(array.begin() + index, array.begin() + index + 1, array.end());
    std::destroy_at(last);
    array.setLength(array.count() - 1);
}

/// The index of the first element for which the condition holds, or -1.
template <class T, class Condition>
int indexWhere(const LmArray<T>& array, const Condition& condition) {
    const T* const found = std::find_if(array.begin(), array.end(), condition);
    return found == array.end() ? -1 : static_cast<int>(found - array.begin());
}

/// The element at an index, null for the index -1.
template <class T>
T* elementAt(LmArray<T>& array, int index) {
    return index < 0 ? nullptr : &array[index];
}
template <class T>
const T* elementAt(const LmArray<T>& array, int index) {
    return index < 0 ? nullptr : &array[index];
}

} // namespace quillon::scaleDef
