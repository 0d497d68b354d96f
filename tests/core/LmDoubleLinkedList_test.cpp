#include "quillon/core/LmDoubleLinkedList.h"

#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;
using testing::ElementsAre;
using testing::IsEmpty;

/// The elements that the lists hold, named by their index.
std::array<int, 10> items{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

void* item(int i) {
    return &items[static_cast<std::size_t>(i)];
}

int numberOf(const void* data) {
    return *static_cast<const int*>(data);
}

/// The live elements as a forward walk, as a backward walk and by index see them, which must be the same.
std::vector<int> liveIn(const LmDoubleLinkedList& list) {
    std::vector<int> forward;
    for (const LmDLListNode* node = list.firstLive(); node != nullptr; node = nextLive(node)) {
        forward.push_back(numberOf(node->data));
    }
    EXPECT_EQ(list.count(), static_cast<int>(forward.size()));
    for (int i = 0; i < list.count(); ++i) {
        EXPECT_EQ(numberOf(list[i]), forward[static_cast<std::size_t>(i)]);
        EXPECT_EQ(numberOf(list.nodeAt(i)->data), forward[static_cast<std::size_t>(i)]);
    }
    if (forward.empty()) {
        EXPECT_EQ(list.lastLive(), nullptr);
    } else {
        EXPECT_EQ(numberOf(list.lastLive()->data), forward.back());
    }
    return forward;
}

/// What a cursor meets on its way to the end.
std::vector<int> restOf(Lm_DLListCursor& cursor) {
    std::vector<int> rest;
    for (; !cursor.atEnd(); cursor.next()) {
        rest.push_back(numberOf(cursor.data()));
    }
    return rest;
}

void fill(LmDoubleLinkedList& list, int count) {
    for (int i = 0; i < count; ++i) {
        list.append(item(i));
    }
}

/// A list of the items 0, 1, 2 and so on.
class ListTest : public testing::Test {
protected:
    ListTest() { fill(list, 4); }
    LmDoubleLinkedList list;
};

// --- The list ------------------------------------------------------------------------------------

TEST(LmDoubleLinkedList, IsEmptyAtFirst) {
    const LmDoubleLinkedList list;
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.firstLive(), nullptr);
    EXPECT_EQ(list.lastLive(), nullptr);
    EXPECT_EQ(list.nodeAt(0), nullptr);
}

TEST(LmDoubleLinkedList, GrowsAtBothEnds) {
    LmDoubleLinkedList list;
    list.prepend(item(3));
    list.append(item(4));
    list.prepend(item(2));
    list.append(item(5));
    EXPECT_THAT(liveIn(list), ElementsAre(2, 3, 4, 5));
}

TEST_F(ListTest, LooksUpLiveElementsOnly) {
    EXPECT_EQ(list[2], item(2));
    EXPECT_EQ(list.nodeAt(4), nullptr);
    EXPECT_EQ(list.nodeAt(3), list.lastLive());
    LmDLListCursor cursor(list);
    cursor.remove();
    EXPECT_EQ(list[0], item(1));
    EXPECT_EQ(list.nodeAt(3), nullptr);
    EXPECT_THAT(liveIn(list), ElementsAre(1, 2, 3));
}

TEST(LmDoubleLinkedList, AMissingElementIsARemarkAndNull) {
    for (const int index : {0, 2, 7}) {
        const ChildResult result = runFunction([index] {
            LmDoubleLinkedList list;
            if (index != 0) {
                fill(list, 2);
            }
            if (list[index] != nullptr) {
                std::abort();
            }
        });
        EXPECT_EQ(result.outcome, "0");
        EXPECT_EQ(result.out, "LmDoubleLinkedList::operator [] (int) : element " + std::to_string(index) +
                                  " not found!\n");
        EXPECT_EQ(result.err, "");
    }
}

TEST_F(ListTest, RemovesNodes) {
    EXPECT_EQ(list.removeNode(list.nodeAt(1)), item(1));
    EXPECT_THAT(liveIn(list), ElementsAre(0, 2, 3));
    EXPECT_EQ(list.removeNode(list.firstLive()), item(0));
    EXPECT_EQ(list.removeNode(list.lastLive()), item(3));
    EXPECT_THAT(liveIn(list), ElementsAre(2));
    EXPECT_EQ(list.removeNode(list.firstLive()), item(2));
    EXPECT_THAT(liveIn(list), IsEmpty());
    list.append(item(7));
    EXPECT_THAT(liveIn(list), ElementsAre(7));
}

TEST_F(ListTest, RemovesByIndex) {
    EXPECT_EQ(list.removeAt(2), item(2));
    EXPECT_EQ(list.removeAt(0), item(0));
    EXPECT_EQ(list.removeAt(1), item(3));
    EXPECT_THAT(liveIn(list), ElementsAre(1));
    EXPECT_EQ(list.removeAt(0), item(1));
    EXPECT_THAT(liveIn(list), IsEmpty());
}

TEST_F(ListTest, AnOwnerClearsItFromTheEnd) {
    std::vector<int> freed;
    while (list.count() != 0) {
        freed.push_back(numberOf(list.removeNode(list.lastLive())));
    }
    EXPECT_THAT(freed, ElementsAre(3, 2, 1, 0));
}

TEST_F(ListTest, AppendsTheLiveElementsOfAnother) {
    LmDoubleLinkedList other;
    fill(other, 3);
    LmDLListCursor cursor(other);
    cursor.next();
    cursor.remove();
    list.appendAll(other);
    EXPECT_THAT(liveIn(list), ElementsAre(0, 1, 2, 3, 0, 2));
    EXPECT_THAT(liveIn(other), ElementsAre(0, 2));
    list.appendAll(LmDoubleLinkedList());
    EXPECT_EQ(list.count(), 6);
}

TEST_F(ListTest, AppendsItselfOnce) {
    list.appendAll(list);
    EXPECT_THAT(liveIn(list), ElementsAre(0, 1, 2, 3, 0, 1, 2, 3));
}

TEST_F(ListTest, PrintsThePointers) {
    std::ostringstream expected;
    expected << "[\n   " << item(0) << "\n   " << item(2) << "\n]";
    LmDoubleLinkedList printedList;
    fill(printedList, 3);
    LmDLListCursor cursor(printedList);
    cursor.next();
    cursor.remove();
    std::ostringstream output;
    output << printedList;
    EXPECT_EQ(output.str(), expected.str());
    std::ostringstream empty;
    empty << LmDoubleLinkedList();
    EXPECT_EQ(empty.str(), "[\nEmpty\n]");
}

TEST_F(ListTest, SwapsWithAnother) {
    LmDoubleLinkedList other;
    other.append(item(9));
    list.swap(other);
    EXPECT_THAT(liveIn(list), ElementsAre(9));
    EXPECT_THAT(liveIn(other), ElementsAre(0, 1, 2, 3));
    LmDoubleLinkedList empty;
    list.swap(empty);
    EXPECT_THAT(liveIn(list), IsEmpty());
    EXPECT_THAT(liveIn(empty), ElementsAre(9));
}

// --- Walking -------------------------------------------------------------------------------------

TEST(Cursor, OnAnEmptyListIsAtTheEnd) {
    LmDoubleLinkedList list;
    LmDLListCursor cursor(list);
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(&cursor.list(), &list);
    cursor.toFirst();
    EXPECT_TRUE(cursor.atEnd());
    cursor.toLast();
    EXPECT_TRUE(cursor.atEnd());
    cursor.toIndex(0);
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(cursor.index(), 0);
}

TEST_F(ListTest, CursorsWalkForwardAndBackward) {
    LmDLListReadCursor cursor(list);
    EXPECT_EQ(cursor.data(), item(0));
    EXPECT_EQ(cursor.index(), 0);
    EXPECT_THAT(restOf(cursor), ElementsAre(0, 1, 2, 3));
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(cursor.index(), 4);
    cursor.previous();
    EXPECT_FALSE(cursor.atEnd());
    EXPECT_EQ(cursor.data(), item(3));
    EXPECT_EQ(cursor.index(), 3);
    cursor.previous();
    EXPECT_EQ(cursor.data(), item(2));
}

TEST_F(ListTest, CursorsGoToPlaces) {
    LmDLListCursor cursor(list);
    cursor.toLast();
    EXPECT_EQ(cursor.data(), item(3));
    cursor.toFirst();
    EXPECT_EQ(cursor.data(), item(0));
    cursor.toIndex(2);
    EXPECT_EQ(cursor.data(), item(2));
    EXPECT_EQ(cursor.index(), 2);
    cursor.toIndex(4);
    EXPECT_TRUE(cursor.atEnd());
    cursor.toIndex(0);
    EXPECT_FALSE(cursor.atEnd());
    EXPECT_EQ(cursor.data(), item(0));
    cursor.toIndex(4);
    cursor.toLast();
    EXPECT_FALSE(cursor.atEnd());
}

TEST_F(ListTest, CursorsPassOverDeletedNodes) {
    LmDLListCursor first(list);
    LmDLListCursor second(list);
    second.toIndex(1);
    LmDLListCursor last(list);
    last.toLast();
    LmDLListCursor walker(list);
    walker.toIndex(2);
    first.remove();
    second.remove();
    last.remove();
    EXPECT_THAT(liveIn(list), ElementsAre(2));
    EXPECT_EQ(walker.index(), 0);
    walker.toFirst();
    EXPECT_EQ(walker.data(), item(2));
    walker.next();
    EXPECT_TRUE(walker.atEnd());
    walker.previous();
    EXPECT_EQ(walker.data(), item(2));
    first.next();
    EXPECT_EQ(first.data(), item(2));
    last.previous();
    EXPECT_EQ(last.data(), item(2));
    second.toLast();
    EXPECT_EQ(second.data(), item(2));
    EXPECT_THAT(liveIn(list), ElementsAre(2));
}

TEST_F(ListTest, BeforeTheFirstElementThereIsNoNode) {
    LmDLListCursor cursor(list);
    cursor.previous();
    const ChildResult result = runFunction([&cursor] { cursor.data(); });
    EXPECT_EQ(result.outcome, "SIGSEGV");
    EXPECT_EQ(result.out + result.err, "");
}

TEST_F(ListTest, CursorsAreEqualOnOneNodeOrAtTheEnd) {
    LmDLListCursor a(list);
    LmDLListReadCursor b(list);
    EXPECT_TRUE(a == b);
    b.next();
    EXPECT_FALSE(a == b);
    a.next();
    EXPECT_TRUE(a == b);
    a.toIndex(4);
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    b.toIndex(4);
    EXPECT_TRUE(a == b);
    LmDoubleLinkedList other;
    EXPECT_TRUE(a == LmDLListCursor(other)) << "all ends are equal";
}

// --- Data ----------------------------------------------------------------------------------------

TEST_F(ListTest, CursorsSetAndSwapData) {
    LmDLListCursor a(list);
    a.setData(item(9));
    LmDLListCursor b(list);
    b.toIndex(2);
    a.swapData(b);
    EXPECT_THAT(liveIn(list), ElementsAre(2, 1, 9, 3));
    EXPECT_EQ(a.data(), item(2));
    EXPECT_EQ(b.data(), item(9));
    LmDLListCursor same(list);
    a.swapData(same);
    EXPECT_THAT(liveIn(list), ElementsAre(2, 1, 9, 3));
}

TEST_F(ListTest, CursorsInsertBefore) {
    LmDLListCursor cursor(list);
    cursor.insertBefore(item(5));
    EXPECT_EQ(cursor.data(), item(0));
    EXPECT_EQ(cursor.index(), 1);
    cursor.toIndex(2);
    cursor.insertBefore(item(6));
    EXPECT_EQ(cursor.data(), item(1));
    cursor.toIndex(list.count());
    cursor.insertBefore(item(7));
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_THAT(liveIn(list), ElementsAre(5, 0, 6, 1, 2, 3, 7));
}

TEST_F(ListTest, CursorsInsertAfter) {
    LmDLListCursor cursor(list);
    cursor.insertAfter(item(5));
    EXPECT_EQ(cursor.data(), item(0));
    cursor.toLast();
    cursor.insertAfter(item(6));
    EXPECT_EQ(cursor.data(), item(3));
    cursor.toIndex(list.count());
    cursor.insertAfter(item(7));
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_THAT(liveIn(list), ElementsAre(7, 0, 5, 1, 2, 3, 6));
}

TEST(Cursor, InsertsIntoAnEmptyList) {
    LmDoubleLinkedList list;
    LmDLListCursor cursor(list);
    cursor.insertBefore(item(1));
    EXPECT_TRUE(cursor.atEnd());
    cursor.insertAfter(item(0));
    cursor.insertBefore(item(2));
    EXPECT_THAT(liveIn(list), ElementsAre(0, 1, 2));
}

// --- Removal under a cursor ----------------------------------------------------------------------

TEST_F(ListTest, ANodeGoesWhenItsLastCursorLeaves) {
    LmDLListCursor a(list);
    a.next();
    LmDLListCursor b(list);
    b.next();
    EXPECT_EQ(a.remove(), item(1));
    EXPECT_EQ(list.count(), 3);
    LmDLListNode* const before = list.firstLive();
    EXPECT_TRUE(before->next->deleted);
    EXPECT_EQ(before->next->cursorCount, 2);
    a.next();
    EXPECT_EQ(a.data(), item(2));
    EXPECT_TRUE(before->next->deleted);
    EXPECT_EQ(before->next->cursorCount, 1);
    b.previous();
    EXPECT_EQ(b.data(), item(0));
    EXPECT_EQ(before->next->data, item(2)) << "the node is gone";
    EXPECT_EQ(before->next->prev, before);
    EXPECT_THAT(liveIn(list), ElementsAre(0, 2, 3));
}

TEST_F(ListTest, AListRemovalUnderACursorWaitsForIt) {
    {
        LmDLListCursor cursor(list);
        EXPECT_EQ(list.removeNode(list.firstLive()), item(0));
        EXPECT_EQ(list.removeAt(0), item(1)) << "where no cursor stands it goes at once";
        EXPECT_THAT(liveIn(list), ElementsAre(2, 3));
        EXPECT_EQ(list.firstLive()->prev->data, item(0));
    }
    EXPECT_EQ(list.firstLive()->prev, nullptr) << "the destructor of the cursor leaves the node";
    EXPECT_THAT(liveIn(list), ElementsAre(2, 3));
}

TEST_F(ListTest, HeadAndTailAreRemovedThroughACursor) {
    LmDLListCursor cursor(list);
    cursor.remove();
    cursor.toLast();
    cursor.remove();
    cursor.next();
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(list.firstLive()->prev, nullptr);
    EXPECT_EQ(list.lastLive()->next, nullptr);
    list.append(item(8));
    list.prepend(item(7));
    EXPECT_THAT(liveIn(list), ElementsAre(7, 1, 2, 8));
}

TEST_F(ListTest, EverythingIsRemovedOnAWalk) {
    LmDLListCursor cursor(list);
    std::vector<int> removed;
    for (; !cursor.atEnd(); cursor.next()) {
        removed.push_back(numberOf(cursor.remove()));
    }
    EXPECT_THAT(removed, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(liveIn(list), IsEmpty());
    list.append(item(5));
    EXPECT_THAT(liveIn(list), ElementsAre(5));
}

TEST_F(ListTest, InsertionBesideADeletedNodeKeepsTheOrder) {
    LmDLListCursor head(list);
    head.remove();
    head.insertBefore(item(7));
    head.insertAfter(item(8));
    LmDLListCursor tail(list);
    tail.toLast();
    tail.remove();
    tail.insertBefore(item(5));
    tail.insertAfter(item(6));
    EXPECT_THAT(liveIn(list), ElementsAre(7, 8, 1, 2, 5, 6));
    head.next();
    EXPECT_EQ(head.data(), item(8));
    tail.previous();
    EXPECT_EQ(tail.data(), item(5));
    EXPECT_THAT(liveIn(list), ElementsAre(7, 8, 1, 2, 5, 6));
}

TEST_F(ListTest, AReadCursorUnlinksADeletedNodeInTheMiddle) {
    LmDLListNode* const before = list.firstLive();
    LmDLListReadCursor cursor(list);
    cursor.next();
    list.removeNode(before->next);
    EXPECT_TRUE(before->next->deleted);
    cursor.next();
    EXPECT_EQ(before->next->data, item(2));
    EXPECT_THAT(liveIn(list), ElementsAre(0, 2, 3));
}

TEST_F(ListTest, AReadCursorLeavesADeletedHeadInTheChain) {
    {
        LmDLListReadCursor cursor(list);
        list.removeNode(list.firstLive());
        cursor.next();
        EXPECT_EQ(cursor.data(), item(1));
    }
    EXPECT_NE(list.firstLive()->prev, nullptr) << "still linked";
    EXPECT_TRUE(list.firstLive()->prev->deleted);
    EXPECT_THAT(liveIn(list), ElementsAre(1, 2, 3));
    LmDLListCursor cursor(list);
    EXPECT_EQ(cursor.data(), item(1));
    cursor.insertBefore(item(8));
    list.prepend(item(9));
    EXPECT_THAT(liveIn(list), ElementsAre(9, 8, 1, 2, 3));
}

TEST_F(ListTest, AReadCursorLeavesADeletedTailInTheChain) {
    {
        LmDLListReadCursor cursor(list);
        cursor.toLast();
        list.removeNode(list.lastLive());
        cursor.next();
        EXPECT_TRUE(cursor.atEnd());
        cursor.previous();
        EXPECT_EQ(cursor.data(), item(2));
    }
    EXPECT_NE(list.lastLive()->next, nullptr) << "still linked";
    list.append(item(8));
    EXPECT_THAT(liveIn(list), ElementsAre(0, 1, 2, 8));
    LmDLListCursor cursor(list);
    cursor.toLast();
    EXPECT_EQ(cursor.data(), item(8));
    cursor.previous();
    EXPECT_EQ(cursor.data(), item(2));
}

TEST(LmDoubleLinkedList, WithOnlyADeletedNodeIsEmptyAndMayGrow) {
    for (const bool atTheEnd : {false, true}) {
        LmDoubleLinkedList list;
        list.append(item(0));
        {
            const LmDLListReadCursor cursor(list);
            list.removeNode(list.firstLive());
        }
        EXPECT_THAT(liveIn(list), IsEmpty());
        std::ostringstream output;
        output << list;
        EXPECT_EQ(output.str(), "[\nEmpty\n]");
        LmDLListCursor cursor(list);
        EXPECT_TRUE(cursor.atEnd());
        if (atTheEnd) {
            list.append(item(1));
            list.append(item(2));
        } else {
            list.prepend(item(2));
            list.prepend(item(1));
        }
        EXPECT_THAT(liveIn(list), ElementsAre(1, 2));
        EXPECT_EQ(numberOf(list.removeNode(list.firstLive())), 1);
        EXPECT_EQ(numberOf(list.removeNode(list.lastLive())), 2);
        EXPECT_THAT(liveIn(list), IsEmpty());
    }
}

// --- Ends of the process -------------------------------------------------------------------------

TEST_F(ListTest, DataOfADeletedNodeAbortsWithARemark) {
    const struct {
        const char* name;
        std::function<void(LmDLListCursor& onDeleted, LmDLListCursor& onLive)> operation;
    } cases[] = {
        {"data", [](LmDLListCursor& onDeleted, LmDLListCursor&) { onDeleted.data(); }},
        {"remove", [](LmDLListCursor& onDeleted, LmDLListCursor&) { onDeleted.remove(); }},
        {"swapData", [](LmDLListCursor& onDeleted, LmDLListCursor& onLive) { onDeleted.swapData(onLive); }},
        {"swapData with",
         [](LmDLListCursor& onDeleted, LmDLListCursor& onLive) { onLive.swapData(onDeleted); }},
    };
    for (const auto& each : cases) {
        const ChildResult result = runFunction([this, &each] {
            LmDLListCursor onDeleted(list);
            onDeleted.next();
            LmDLListCursor onLive(list);
            onLive.toLast();
            onDeleted.remove();
            each.operation(onDeleted, onLive);
        });
        EXPECT_EQ(result.outcome, "SIGABRT") << each.name;
        EXPECT_EQ(result.out, "Lm_DLListCursor::data(): retrieving data from deleted node.\n") << each.name;
        EXPECT_EQ(result.err, "") << each.name;
    }
}

TEST_F(ListTest, ACursorWithoutANodeEndsTheProcess) {
    const struct {
        const char* name;
        std::function<void(LmDLListCursor& atEnd)> operation;
    } cases[] = {
        {"data", [](LmDLListCursor& cursor) { cursor.data(); }},
        {"setData", [](LmDLListCursor& cursor) { cursor.setData(nullptr); }},
        {"remove", [](LmDLListCursor& cursor) { cursor.remove(); }},
        {"swapData",
         [](LmDLListCursor& cursor) {
             LmDLListCursor other(cursor.list());
             cursor.swapData(other);
         }},
        {"toIndex beyond the end", [](LmDLListCursor& cursor) { cursor.toIndex(5); }},
        {"removeAt beyond the end", [](LmDLListCursor& cursor) { cursor.list().removeAt(4); }},
    };
    for (const auto& each : cases) {
        const ChildResult result = runFunction([this, &each] {
            LmDLListCursor cursor(list);
            cursor.toIndex(4);
            each.operation(cursor);
        });
        EXPECT_EQ(result.outcome, "SIGSEGV") << each.name;
        EXPECT_EQ(result.out + result.err, "") << each.name;
    }
}

} // namespace
} // namespace quillon
