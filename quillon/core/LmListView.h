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
    /// A live node, as range-based loops need it.
    class Iterator {
    public:
        explicit Iterator(LmDLListNode* start) : node(start) {}      ///< at a live node, or null for the end
        T* operator*() const { return static_cast<T*>(node->data); } ///< the element
        /// To the next live node.
        Iterator& operator++() {
            node = nextLive(node);
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        LmDLListNode* node;
    };

    /// Of a list that outlives the view.
    explicit LmListView(const LmDoubleLinkedList& viewed) : list(viewed) {}
    Iterator begin() const { return Iterator(list.firstLive()); }
    Iterator end() const { return Iterator(nullptr); }

private:
    const LmDoubleLinkedList& list;
};

} // namespace quillon
