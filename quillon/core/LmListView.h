#pragma once

#include "quillon/core/LmDoubleLinkedList.h"

namespace quillon {

/// The live elements of a list as pointers to T, for range-based loops that remove nothing:
/// `for (const LqVarLimits* limits : LmListView<const LqVarLimits>(list))`.
///
/// Every element of the list must be a T. The list stays as it is while the loop runs.
template <class T>
class LmListView {
public:
    class Iterator {
    public:
        explicit Iterator(LmDLListNode* start) : node(start) {}
        T* operator*() const { return static_cast<T*>(node->data); }
        Iterator& operator++() {
            node = nextLive(node);
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        LmDLListNode* node;
    };

    explicit LmListView(const LmDoubleLinkedList& viewed) : list(viewed) {}
    Iterator begin() const { return Iterator(list.firstLive()); }
    Iterator end() const { return Iterator(nullptr); }

private:
    const LmDoubleLinkedList& list;
};

} // namespace quillon
