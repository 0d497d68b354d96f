#include "quillon/scale/ArrayAppender.h"

#include "quillon/core/LmStr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::scaleDef {
namespace {

using testing::ElementsAre;

std::vector<std::string> textsOf(const LmDArray<LmStr>& names) {
    std::vector<std::string> texts;
    for (const LmStr& name : names) {
        texts.emplace_back(name.view());
    }
    return texts;
}

TEST(ArrayAppender, AppendsBehindWhatTheArrayHolds) {
    LmDArray<LmStr> names;
    names.append("a");
    ArrayAppender<LmStr> appender(names);
    appender.append() = "b";
    appender.append() = "c";
    EXPECT_EQ(appender.count(), 3);
    appender.finish();
    EXPECT_THAT(textsOf(names), ElementsAre("a", "b", "c"));
}

TEST(ArrayAppender, GivesTheArrayItsLengthWhenItIsDestroyed) {
    LmDArray<LmStr> names;
    {
        ArrayAppender<LmStr> appender(names);
        for (int i = 0; i < 100; ++i) {
            appender.append().format("%d", i);
        }
    }
    ASSERT_EQ(names.count(), 100);
    EXPECT_EQ(names[0], "0");
    EXPECT_EQ(names[99], "99");
}

TEST(ArrayAppender, GoesOnAfterItHasFinished) {
    LmDArray<int> numbers;
    ArrayAppender<int> appender(numbers);
    appender.append() = 1;
    appender.finish();
    ASSERT_EQ(numbers.count(), 1);
    appender.append() = 2;
    appender.finish();
    ASSERT_EQ(numbers.count(), 2);
    EXPECT_EQ(numbers[0], 1);
    EXPECT_EQ(numbers[1], 2);
}

TEST(ArrayAppender, DropsTheNewestRecord) {
    LmDArray<LmStr> names;
    {
        ArrayAppender<LmStr> appender(names);
        appender.append() = "a";
        appender.append() = "dropped";
        appender.dropLast();
        appender.append() = "b";
    }
    EXPECT_THAT(textsOf(names), ElementsAre("a", "b"));
}

TEST(ArrayAppender, WithoutARecordLeavesTheArrayAsItIs) {
    LmDArray<LmStr> names;
    {
        ArrayAppender<LmStr> appender(names);
        appender.append() = "dropped";
        appender.dropLast();
    }
    EXPECT_EQ(names.count(), 0);
    EXPECT_EQ(names.data(), nullptr);
}

} // namespace
} // namespace quillon::scaleDef
