#include "quillon/core/NameIndex.h"

#include "tests/support/RandomSource.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <unordered_map>

namespace quillon {
namespace {

TEST(NameIndex, FindsTheNumberOfAName) {
    NameIndex index;
    EXPECT_TRUE(index.add("Pelvis", 7));
    EXPECT_TRUE(index.add("Head", 0));
    EXPECT_EQ(index.find("Pelvis"), 7);
    EXPECT_EQ(index.find("Head"), 0);
    EXPECT_TRUE(index.contains("Head"));
}

TEST(NameIndex, HasNothingUnderANameThatWasNotAdded) {
    NameIndex index;
    EXPECT_EQ(index.find("Pelvis"), std::nullopt) << "when it is empty";
    index.add("Pelvis", 7);
    for (const char* const name : {"", "pelvis", "Pelvi", "Pelvis "}) {
        EXPECT_EQ(index.find(name), std::nullopt) << name;
        EXPECT_FALSE(index.contains(name)) << name;
    }
}

TEST(NameIndex, KeepsTheFirstOfEqualNames) {
    NameIndex index;
    EXPECT_TRUE(index.add("Pelvis", 7));
    EXPECT_FALSE(index.add(std::string("Pelvis"), 8));
    EXPECT_EQ(index.find("Pelvis"), 7);
}

TEST(NameIndex, TakesTheEmptyNameAndNamesThatBeginAlike) {
    NameIndex index;
    EXPECT_TRUE(index.add("", -1));
    EXPECT_TRUE(index.add("a", 1));
    EXPECT_TRUE(index.add("ab", 2));
    EXPECT_EQ(index.find(""), -1);
    EXPECT_EQ(index.find("a"), 1);
    EXPECT_EQ(index.find("ab"), 2);
}

TEST(NameIndex, FindsWhatAMapFindsAsItGrows) {
    test::RandomSource random(6113);
    for (const std::size_t room : {std::size_t{0}, std::size_t{10}, std::size_t{5000}}) {
        NameIndex index;
        index.reserve(room);
        std::unordered_map<std::string, std::int32_t> model;
        std::deque<std::string> texts; // stay where they are
        for (std::int32_t number = 0; number < 5000; ++number) {
            texts.push_back("Body_" + std::to_string(random.below(4000)));
            EXPECT_EQ(index.add(texts.back(), number), model.emplace(texts.back(), number).second);
        }
        for (int i = 0; i < 4100; ++i) {
            const std::string name = "Body_" + std::to_string(i);
            const auto found = model.find(name);
            EXPECT_EQ(index.find(name), found == model.end() ? std::nullopt : std::optional(found->second));
        }
    }
}

} // namespace
} // namespace quillon
