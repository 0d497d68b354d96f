#include "quillon/core/LmDoubleLinkedList.h"

#include "quillon/core/Fatal.h"

#include <cstdlib>
#include <iostream>
#include <utility>

namespace quillon {

namespace {

LmDLListNode* liveFrom(LmDLListNode* node) {
    while (node != nullptr && node->deleted) {
        node = node->next;
    }
    return node;
}

LmDLListNode* liveBackFrom(LmDLListNode* node) {
    while (node != nullptr && node->deleted) {
        node = node->prev;
    }
    return node;
}

LmDLListNode& existing(LmDLListNode* node) {
    if (node == nullptr) {
        endByMemoryFault();
    }
    return *node;
}

} // namespace

LmDLListNode* nextLive(const LmDLListNode* node) {
    return liveFrom(node->next);
}

// --- The list ------------------------------------------------------------------------------------

LmDoubleLinkedList::~LmDoubleLinkedList() {
    while (head != nullptr) {
        delete std::exchange(head, head->next);
    }
}

void LmDoubleLinkedList::append(void* data) {
    auto* const node = new LmDLListNode{.data = data, .next = nullptr, .prev = tail};
    (tail == nullptr ? head : tail->next) = node;
    tail = node;
    ++count_;
}

void LmDoubleLinkedList::prepend(void* data) {
    auto* const node = new LmDLListNode{.data = data, .next = head, .prev = nullptr};
    (head == nullptr ? tail : head->prev) = node;
    head = node;
    ++count_;
}

void LmDoubleLinkedList::appendAll(const LmDoubleLinkedList& other) {
    // A list that is appended to itself is doubled, not walked for ever.
    int left = other.count_;
    for (const LmDLListNode* node = other.firstLive(); left > 0; node = nextLive(node), --left) {
        append(node->data);
    }
}

LmDLListNode* LmDoubleLinkedList::firstLive() const {
    return liveFrom(head);
}

LmDLListNode* LmDoubleLinkedList::lastLive() const {
    return liveBackFrom(tail);
}

LmDLListNode* LmDoubleLinkedList::nodeAt(int i) const {
    LmDLListNode* node = i < 0 ? nullptr : firstLive();
    for (int k = 0; k < i && node != nullptr; ++k) {
        node = nextLive(node);
    }
    return node;
}

void* LmDoubleLinkedList::operator[](int i) const {
    const LmDLListNode* const node = nodeAt(i);
    if (node == nullptr) {
        std::cout << "LmDoubleLinkedList::operator [] (int) : element " << i << " not found!\n";
        return nullptr;
    }
    return node->data;
}

void LmDoubleLinkedList::unlink(LmDLListNode* node) {
    (node->prev == nullptr ? head : node->prev->next) = node->next;
    (node->next == nullptr ? tail : node->next->prev) = node->prev;
    delete node;
}

void* LmDoubleLinkedList::removeNode(LmDLListNode* node) {
    void* const data = existing(node).data;
    --count_;
    if (node->cursorCount == 0) {
        unlink(node);
    } else {
        node->deleted = true;
    }
    return data;
}

void* LmDoubleLinkedList::removeAt(int i) {
    LmDLListCursor cursor(*this);
    cursor.toIndex(i);
    return cursor.remove();
}

void LmDoubleLinkedList::swap(LmDoubleLinkedList& other) noexcept {
    std::swap(head, other.head);
    std::swap(tail, other.tail);
    std::swap(count_, other.count_);
}

std::ostream& operator<<(std::ostream& output, const LmDoubleLinkedList& list) {
    output << "[\n";
    if (list.count() == 0) {
        output << "Empty\n";
    }
    for (const LmDLListNode* node = list.firstLive(); node != nullptr; node = nextLive(node)) {
        output << "   " << node->data << "\n";
    }
    return output << "]";
}

// --- Cursors -------------------------------------------------------------------------------------

Lm_DLListCursor::Lm_DLListCursor(LmDoubleLinkedList& list) : list_(&list) {
    if (list.count_ == 0) {
        atEnd_ = true;
    } else {
        arriveAt(&existing(list.firstLive()));
    }
}

LmDLListNode& Lm_DLListCursor::currentNode() const {
    return existing(node);
}

LmDLListNode& Lm_DLListCursor::currentLiveNode() const {
    if (currentNode().deleted) {
        std::cout << "Lm_DLListCursor::data(): retrieving data from deleted node." << std::endl;
        std::abort();
    }
    return *node;
}

void Lm_DLListCursor::arriveAt(LmDLListNode* newNode) {
    node = newNode;
    atEnd_ = node == nullptr;
    if (node != nullptr) {
        ++node->cursorCount;
    }
}

void Lm_DLListCursor::leave() {
    if (node == nullptr) {
        return;
    }
    LmDLListNode* const left = std::exchange(node, nullptr);
    if (--left->cursorCount == 0 && left->deleted) {
        releaseNode(left);
    }
}

void Lm_DLListCursor::next() {
    if (node == nullptr) {
        return;
    }
    LmDLListNode* const target = nextLive(node);
    leave();
    arriveAt(target);
}

void Lm_DLListCursor::previous() {
    LmDLListNode* const target = node == nullptr ? list_->lastLive() : liveBackFrom(node->prev);
    leave();
    arriveAt(target);
}

void Lm_DLListCursor::toFirst() {
    leave();
    arriveAt(list_->firstLive());
}

void Lm_DLListCursor::toLast() {
    leave();
    arriveAt(list_->lastLive());
}

void Lm_DLListCursor::toIndex(int i) {
    LmDLListNode* const target = i == list_->count() ? nullptr : &existing(list_->nodeAt(i));
    leave();
    arriveAt(target);
}

void* Lm_DLListCursor::data() const {
    return currentLiveNode().data;
}

void Lm_DLListCursor::setData(void* data) {
    currentNode().data = data;
}

int Lm_DLListCursor::index() const {
    int passed = 0;
    for (const LmDLListNode* at = list_->head; at != nullptr && at != node; at = at->next) {
        passed += at->deleted ? 0 : 1;
    }
    return passed;
}

void Lm_DLListCursor::swapData(Lm_DLListCursor& other) {
    if (index() != other.index()) {
        std::swap(currentLiveNode().data, other.currentLiveNode().data);
    }
}

void Lm_DLListCursor::insertBefore(void* data) {
    if (atEnd_) {
        list_->append(data);
    } else if (node == list_->head) {
        list_->prepend(data);
    } else {
        LmDLListNode& here = currentNode();
        auto* const added = new LmDLListNode{.data = data, .next = &here, .prev = here.prev};
        here.prev->next = added;
        here.prev = added;
        ++list_->count_;
    }
}

void Lm_DLListCursor::insertAfter(void* data) {
    if (atEnd_) {
        list_->prepend(data);
    } else if (node == list_->tail) {
        list_->append(data);
    } else {
        LmDLListNode& here = currentNode();
        auto* const added = new LmDLListNode{.data = data, .next = here.next, .prev = &here};
        here.next->prev = added;
        here.next = added;
        ++list_->count_;
    }
}

bool operator==(const Lm_DLListCursor& a, const Lm_DLListCursor& b) {
    return a.atEnd_ || b.atEnd_ ? a.atEnd_ && b.atEnd_ : a.node == b.node;
}

void* LmDLListCursor::remove() {
    LmDLListNode& removed = currentLiveNode();
    removed.deleted = true;
    --list_->count_;
    return removed.data;
}

void LmDLListCursor::releaseNode(LmDLListNode* node) {
    list_->unlink(node);
}

void LmDLListReadCursor::releaseNode(LmDLListNode* node) {
    if (node != list_->head && node != list_->tail) {
        list_->unlink(node);
    }
}

} // namespace quillon
