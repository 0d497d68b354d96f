#include "quillon/core/LmArray.h"

#include "quillon/core/LmStr.h"
#include "tests/core/StrForms.h"
#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <malloc.h>
#include <memory>
#include <numeric>
#include <string>
#include <sys/resource.h>
#include <type_traits>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_ADDRESS_SANITIZER 1
#endif
#endif

namespace quillon::test {

/// An element that notes what is done with it.
struct Watched {
    static inline std::vector<std::string> notes;

    int value = 0;

    Watched() { note("default"); }
    explicit Watched(int number) : value(number) {}
    Watched(const Watched& other) : value(other.value) { note("copy"); }
    Watched& operator=(const Watched& other) {
        value = other.value;
        note("assign");
        return *this;
    }
    ~Watched() { note("destroy"); }

    void note(const char* what) const { notes.push_back(what + (" " + std::to_string(value))); }

    static std::vector<std::string> takeNotes() { return std::exchange(notes, {}); }
};

} // namespace quillon::test

namespace quillon {

template <>
struct MovesByBytes<test::Watched> : std::true_type {};

namespace {

using support::ChildResult;
using support::runFunction;
using test::textsOf;
using test::Watched;
using testing::ElementsAre;
using testing::IsEmpty;

template <class T>
std::vector<T> valuesOf(const LmArray<T>& array) {
    return std::vector<T>(array.begin(), array.end());
}

LmDArray<int> numbersUpTo(int count) {
    LmDArray<int> array(count);
    std::iota(array.begin(), array.end(), 1);
    return array;
}

LmDArray<LmStr> strings(std::initializer_list<const char*> texts) {
    LmDArray<LmStr> array;
    for (const char* text : texts) {
        array.append(text);
    }
    return array;
}

TEST(LmArray, IsEmptyAtFirst) {
    const LmDArray<int> array;
    EXPECT_EQ(array.count(), 0);
    EXPECT_EQ(array.data(), nullptr);
    EXPECT_EQ(array.begin(), array.end());
    const LmArray<LmStr> fixed(0);
    EXPECT_EQ(fixed.data(), nullptr);
}

TEST(LmArray, IsPolymorphic) {
    EXPECT_TRUE(std::has_virtual_destructor_v<LmArray<int>>);
    const std::unique_ptr<LmArray<LmStr>> array = std::make_unique<LmDArray<LmStr>>(strings({"a", "b"}));
    EXPECT_EQ(array->count(), 2);
}

TEST(LmArray, OfACountHoldsDefaults) {
    const LmArray<int> numbers(3);
    EXPECT_THAT(valuesOf(numbers), ElementsAre(0, 0, 0));
    const LmArray<LmStr> texts(2);
    EXPECT_TRUE(texts[0].isNull());
    EXPECT_TRUE(texts[1].isNull());
}

TEST(LmArray, AppendingGrowsByOne) {
    LmDArray<int> array;
    array.append(7);
    EXPECT_EQ(array.count(), 1);
    EXPECT_NE(array.data(), nullptr);
    array.append(8);
    array.append(9);
    EXPECT_THAT(valuesOf(array), ElementsAre(7, 8, 9));
    EXPECT_EQ(array[1], 8);
}

TEST(LmArray, TheBlockHoldsExactlyTheElements) {
    using Large = std::array<std::int64_t, 32>;
    LmDArray<Large> array;
    for (std::size_t count = 1; count <= 20; ++count) {
        array.append(Large{});
        EXPECT_GE(malloc_usable_size(array.data()), count * sizeof(Large));
        EXPECT_LT(malloc_usable_size(array.data()), (count + 1) * sizeof(Large));
    }
}

TEST(LmArray, AppendingCopyConstructsOneElement) {
    {
        LmDArray<Watched> array;
        const Watched value(5);
        array.append(value);
        EXPECT_EQ(array[0].value, 5);
        const std::vector<std::string> notes = Watched::takeNotes();
        EXPECT_EQ(std::count(notes.begin(), notes.end(), "copy 5"),
                  std::count(notes.begin(), notes.end(), "destroy 5") + 1)
            << "a copy in between is allowed";
        EXPECT_EQ(std::count(notes.begin(), notes.end(), "assign 5"), 0);
        EXPECT_EQ(std::count(notes.begin(), notes.end(), "default 0"), 0);
    }
    Watched::takeNotes();
}

TEST(LmArray, AppendsItsOwnElement) {
    LmDArray<LmStr> texts = strings({"first", "second"});
    for (int i = 0; i < 20; ++i) {
        texts.append(texts[0]);
    }
    EXPECT_EQ(texts.count(), 22);
    EXPECT_STREQ(texts[21].c_str(), "first");
}

TEST(LmArray, ElementsAreDestroyedFromTheFirstToTheLast) {
    {
        LmDArray<Watched> array;
        array.append(Watched(1));
        array.append(Watched(2));
        array.append(Watched(3));
        Watched::takeNotes();
    }
    EXPECT_THAT(Watched::takeNotes(), ElementsAre("destroy 1", "destroy 2", "destroy 3"));
}

TEST(LmArray, SettingTheLengthConstructsAndDestroysNothing) {
    LmDArray<Watched> array;
    array.append(Watched(1));
    array.append(Watched(2));
    Watched::takeNotes();
    array.setLength(1);
    EXPECT_THAT(Watched::takeNotes(), IsEmpty());
    EXPECT_EQ(array.count(), 1);
    EXPECT_EQ(array[0].value, 1);
    array.setLength(3);
    EXPECT_THAT(Watched::takeNotes(), IsEmpty());
    EXPECT_EQ(array.count(), 3);
    array.setLength(0);
    EXPECT_THAT(Watched::takeNotes(), IsEmpty());
}

TEST(LmArray, ALengthOfZeroFreesTheBlock) {
    LmDArray<int> array = numbersUpTo(5);
    array.setLength(0);
    EXPECT_EQ(array.data(), nullptr);
    EXPECT_EQ(array.count(), 0);
    array.setLength(0);
    EXPECT_EQ(array.data(), nullptr);
    array.append(1);
    EXPECT_THAT(valuesOf(array), ElementsAre(1));
}

TEST(LmArray, SettingTheLengthKeepsWhatFits) {
    LmDArray<int> array = numbersUpTo(4);
    array.setLength(6);
    EXPECT_EQ(array.count(), 6);
    EXPECT_EQ(array[3], 4);
    array.setLength(2);
    EXPECT_THAT(valuesOf(array), ElementsAre(1, 2));
}

TEST(LmArray, ZeroedSlotsAreNull) {
    LmDArray<int*> array;
    array.setLengthZeroed(1000);
    EXPECT_EQ(array.count(), 1000);
    EXPECT_THAT(valuesOf(array), testing::Each(nullptr));
    array.setLengthZeroed(0);
    EXPECT_EQ(array.data(), nullptr);
    EXPECT_EQ(array.count(), 0);
}

TEST(LmArray, InsertsCopiesOfAValue) {
    const struct {
        int position;
        int count;
        std::vector<int> result;
    } cases[] = {
        {0, 2, {9, 9, 1, 2, 3}}, {1, 1, {1, 9, 2, 3}}, {3, 3, {1, 2, 3, 9, 9, 9}}, {2, 0, {1, 2, 3}}};
    for (const auto& each : cases) {
        LmDArray<int> array = numbersUpTo(3);
        array.insert(each.position, each.count, 9);
        EXPECT_EQ(valuesOf(array), each.result);
    }
    LmDArray<int> empty;
    empty.insert(0, 2, 5);
    EXPECT_THAT(valuesOf(empty), ElementsAre(5, 5));
}

TEST(LmArray, InsertsOwningElements) {
    LmDArray<LmStr> texts = strings({"a", "b", "c"});
    texts.insert(1, 2, texts[2]);
    EXPECT_THAT(textsOf(texts), ElementsAre("a", "c", "c", "b", "c"));
    texts[1].setChar(0, 'X');
    EXPECT_THAT(textsOf(texts), ElementsAre("a", "X", "c", "b", "c"));
}

TEST(LmArray, AssignmentTakesLengthAndElements) {
    const std::vector<std::vector<int>> lengths{{3, 3}, {5, 2}, {2, 5}, {0, 3}, {3, 0}, {0, 0}};
    for (const std::vector<int>& pair : lengths) {
        LmDArray<int> target(pair[0]);
        const LmDArray<int> source = numbersUpTo(pair[1]);
        target = source;
        EXPECT_EQ(valuesOf(target), valuesOf(source));
        if (pair[1] == 0) {
            EXPECT_EQ(target.data(), nullptr);
        }
    }
}

TEST(LmArray, AssignmentOfOwningElementsLeaksNothing) {
    const std::vector<LmDArray<LmStr>> sources{
        strings({}), strings({"one"}), strings({"one", "two", "three"}), strings({"1", "2", "3", "4", "5"})};
    for (const LmDArray<LmStr>& first : sources) {
        for (const LmDArray<LmStr>& second : sources) {
            LmDArray<LmStr> target(first);
            target = second;
            EXPECT_EQ(textsOf(target), textsOf(second));
            for (LmStr& text : target) {
                text.append("changed");
            }
        }
    }
    EXPECT_THAT(textsOf(sources[2]), ElementsAre("one", "two", "three"));
}

TEST(LmArray, AssignmentOfEqualLengthsAssignsEachElement) {
    LmDArray<Watched> target;
    target.append(Watched(1));
    target.append(Watched(2));
    LmDArray<Watched> source;
    source.append(Watched(3));
    source.append(Watched(4));
    const Watched* const block = target.data();
    Watched::takeNotes();
    target = source;
    EXPECT_THAT(Watched::takeNotes(), ElementsAre("assign 3", "assign 4"));
    EXPECT_EQ(target.data(), block);
    const LmDArray<Watched>& same = target;
    target = same;
    EXPECT_EQ(target[0].value, 3);
    EXPECT_EQ(target[1].value, 4);
    Watched::takeNotes();
}

TEST(LmArray, ACopyIsElementwise) {
    LmDArray<LmStr> source = strings({"a", "b"});
    LmDArray<LmStr> copy(source);
    copy[0].setChar(0, 'X');
    EXPECT_THAT(textsOf(source), ElementsAre("a", "b"));
    EXPECT_THAT(textsOf(copy), ElementsAre("X", "b"));
    LmArray<LmStr> fixed(3);
    fixed = source;
    EXPECT_EQ(fixed.count(), 2);
    EXPECT_STREQ(fixed[1].c_str(), "b");
    const LmArray<LmStr> fixedCopy(fixed);
    EXPECT_STREQ(fixedCopy[0].c_str(), "a");
}

// --- Refusals ------------------------------------------------------------------------------------

std::string refusal(const std::string& count, const std::string& size) {
    return "\nUnable to allocate memory!\nAttempted to allocate " + count + " elements, total size: " + size +
           ".\n\n";
}

void expectRefusal(const ChildResult& result, const std::string& count, const std::string& size) {
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, refusal(count, size));
    EXPECT_EQ(result.out, "");
}

TEST(LmArrayRefusal, OfANegativeLength) {
    // The size is the unsigned number that the allocator would have been asked for.
    expectRefusal(runFunction([] { LmDArray<int>().setLength(-1); }), "-1", "18446744073709551612");
    expectRefusal(runFunction([] { LmDArray<double*>().setLengthZeroed(-2); }), "-2", "18446744073709551600");
}

TEST(LmArrayRefusal, OfALengthBeyondThirtyTwoBits) {
    expectRefusal(runFunction([] { LmDArray<int>().setLength(4294967296); }), "4294967296", "17179869184");
    expectRefusal(runFunction([] { LmDArray<char>().setLengthZeroed(2147483648); }), "2147483648",
                  "2147483648");
}

#ifndef QUILLON_ADDRESS_SANITIZER

TEST(LmArray, AHugeZeroedLengthCostsNoMemory) {
    const ChildResult result = runFunction([] {
        LmDArray<int*> array;
        array.setLengthZeroed(200000000);
        array[5] = nullptr;
        array.setLength(5);
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_LT(result.peakMemory, 200 * 1024);
}

void limitMemory() {
    const rlimit limit{1 << 30, 1 << 30};
    setrlimit(RLIMIT_AS, &limit);
}

TEST(LmArrayRefusal, OfABlockThatCannotBeHad) {
    expectRefusal(runFunction([] {
                      limitMemory();
                      LmDArray<double> array(2);
                      array.setLength(2147483647);
                  }),
                  "2147483647", "17179869176");
    expectRefusal(runFunction([] {
                      limitMemory();
                      LmDArray<int*>().setLengthZeroed(2147483647);
                  }),
                  "2147483647", "17179869176");
    expectRefusal(runFunction([] {
                      limitMemory();
                      LmDArray<int> array(1);
                      array.insert(0, 2147483646, 5);
                  }),
                  "2147483647", "8589934588");
    expectRefusal(runFunction([] {
                      limitMemory();
                      const LmArray<std::int64_t> array(500000000);
                  }),
                  "500000000", "4000000000");
}

#endif

} // namespace
} // namespace quillon
