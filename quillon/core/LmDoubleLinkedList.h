#pragma once

#include "quillon/core/LmArray.h"

#include <cstdint>
#include <iosfwd>

namespace quillon {

/// A node of a `LmDoubleLinkedList`. A removed node stays linked while cursors stand on it.
struct LmDLListNode {
    void* data = nullptr;         ///< the element, not owned
    bool deleted = false;         ///< removed while a cursor stood on the node
    std::int32_t cursorCount = 0; ///< how many cursors stand on the node
    LmDLListNode* next = nullptr; ///< the following node, deleted ones included
    LmDLListNode* prev = nullptr; ///< the preceding node
};

/// A list of untyped pointers that is safe against removal under a cursor.
///
/// Owns its nodes and never the data: an owner of records frees what `removeNode(lastLive())` returns while
/// `count()` is not 0. Copying would share the data, so there is none; see `appendAll`.
class LmDoubleLinkedList {
public:
    LmDoubleLinkedList() = default;
    LmDoubleLinkedList(const LmDoubleLinkedList&) = delete;
    LmDoubleLinkedList& operator=(const LmDoubleLinkedList&) = delete;
    ~LmDoubleLinkedList();

    void append(void* data);  ///< at the end
    void prepend(void* data); ///< at the front
    /// Appends the pointers of the live nodes of `other`, in order.
    void appendAll(const LmDoubleLinkedList& other);
    /// The first and the last node that is not deleted, or null.
    LmDLListNode* firstLive() const;
    LmDLListNode* lastLive() const; ///< the same from the end
    /// The node of the i-th live element, counted from 0, or null.
    LmDLListNode* nodeAt(int i) const;
    /// The data of the i-th live element. Without such an element a remark goes to standard output and the
    /// result is null.
    void* operator[](int i) const;
    /// Takes an element out and returns its data. The node goes with it, or when the last cursor leaves.
    void* removeNode(LmDLListNode* node);
    /// Removes the i-th live element and returns its data.
    void* removeAt(int i);
    /// The number of live elements.
    int count() const { return count_; }
    /// Exchanges the nodes of two lists, which must have no cursors.
    void swap(LmDoubleLinkedList& other) noexcept;

private:
    friend class Lm_DLListCursor;
    friend class LmDLListCursor;
    friend class LmDLListReadCursor;

    void unlink(LmDLListNode* node);

    LmDLListNode* head = nullptr;
    LmDLListNode* tail = nullptr;
    std::int32_t count_ = 0;
};

// The list holds no pointer into itself, so records that hold one may stand in an array.
template <>
struct MovesByBytes<LmDoubleLinkedList> : std::true_type {};

/// A debugging aid: the data pointers, one a line, in square brackets.
std::ostream& operator<<(std::ostream& output, const LmDoubleLinkedList& list);

/// The live node behind `node`, or null. For plain walks that remove nothing:
/// `for (LmDLListNode* node = list.firstLive(); node != nullptr; node = nextLive(node))`.
LmDLListNode* nextLive(const LmDLListNode* node);

/// A position in a list: a live node, a node deleted under the cursor, or the end. The node under a cursor
/// survives its removal until the last cursor has left it.
class Lm_DLListCursor {
public:
    virtual ~Lm_DLListCursor() = default;
    Lm_DLListCursor(const Lm_DLListCursor&) = delete;
    Lm_DLListCursor& operator=(const Lm_DLListCursor&) = delete;

    /// The list that the cursor walks.
    virtual LmDoubleLinkedList& list() const = 0;

    bool atEnd() const { return atEnd_; } ///< whether it is behind the last live node
    /// To the following live node, or to the end.
    void next();
    /// To the preceding live node; from the end to the last one.
    void previous();
    void toFirst(); ///< to the first live node, or to the end
    void toLast();  ///< to the last live node, or to the end
    /// To the i-th live node, counted from 0; `i` equal to the count is the end.
    void toIndex(int i);
    /// The current node's data. Aborts with a remark on standard output when the node has been removed.
    void* data() const;
    /// Overwrites the node's data.
    void setData(void* data);
    /// The number of live nodes in front of the cursor.
    int index() const;
    /// Exchanges the data of the two nodes when the indices differ; aborts as `data` does.
    void swapData(Lm_DLListCursor& other);
    void insertBefore(void* data); ///< puts an element in front of the cursor, which stays
    void insertAfter(void* data);  ///< puts an element behind the cursor, which stays

    /// Equal when both are at the end, or both stand on the same node.
    friend bool operator==(const Lm_DLListCursor& a, const Lm_DLListCursor& b);

protected:
    explicit Lm_DLListCursor(LmDoubleLinkedList& list);

    /// Takes a deleted node that no cursor stands on any more out of the list and frees it.
    virtual void releaseNode(LmDLListNode* node) = 0;

    /// The current node; ends the process by a memory fault when there is none.
    LmDLListNode& currentNode() const;
    LmDLListNode& currentLiveNode() const;
    void arriveAt(LmDLListNode* newNode);
    void leave();

    LmDLListNode* node = nullptr;
    bool atEnd_ = false;
    LmDoubleLinkedList* list_;
};

/// A cursor that may change the list.
class LmDLListCursor : public Lm_DLListCursor {
public:
    explicit LmDLListCursor(LmDoubleLinkedList& list) : Lm_DLListCursor(list) {} ///< on the first live node
    ~LmDLListCursor() override { leave(); }

    LmDoubleLinkedList& list() const override { return *list_; }
    /// Marks the current element as removed and returns its data; aborts as `data` does.
    void* remove();

protected:
    void releaseNode(LmDLListNode* node) override;
};

/// A cursor that only reads. It leaves a deleted node at either end of the list in the chain, since it may
/// not change the list's own fields; the list's destructor frees such a node.
class LmDLListReadCursor : public Lm_DLListCursor {
public:
    /// On the first live node.
    explicit LmDLListReadCursor(LmDoubleLinkedList& list) : Lm_DLListCursor(list) {}
    ~LmDLListReadCursor() override { leave(); }

    LmDoubleLinkedList& list() const override { return *list_; }

protected:
    void releaseNode(LmDLListNode* node) override;
};

} // namespace quillon
