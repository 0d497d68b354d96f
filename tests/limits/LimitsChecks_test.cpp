#include "quillon/limits/LimitsChecks.h"

#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using test::error;
using test::StatusChain;
using test::takeChain;
using test::warning;

class LimitsChecks : public testing::Test {
protected:
    void addSysVars(const std::vector<int>& ids) {
        for (const int id : ids) {
            definition_.sysVars.append(new LqPDDSysVar(id, "bend"));
        }
    }
    void addLimits(const std::vector<int>& ids) {
        for (const int id : ids) {
            limits_.vars.append(new LqVarLimits(id));
        }
    }

    test::CleanStatus cleanStatus_;
    LmStatus status_;
    LqLimitsData limits_;
    LqProblemDefData definition_;
};

TEST_F(LimitsChecks, NothingIsRightForNothing) {
    EXPECT_TRUE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(takeChain(status_), StatusChain{});
}

TEST_F(LimitsChecks, LimitsMayReachToTheLastVariable) {
    addSysVars({1, 2, 3});
    EXPECT_TRUE(checkLimits(limits_, definition_, status_));
    addLimits({3, 1});
    EXPECT_TRUE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(takeChain(status_), StatusChain{});
}

TEST_F(LimitsChecks, LimitsBeyondTheLastVariableAreAnErrorOnTheStatusOfTheCaller) {
    addSysVars({1, 3, 2});
    addLimits({1, 12, 4});
    EXPECT_FALSE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(
        takeChain(status_),
        (StatusChain{error("There are limits for sysvar 12, but the last sysvar in the probdef is 3\n")}));
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST_F(LimitsChecks, AProblemWithoutVariablesHas0AsItsLast) {
    addLimits({1});
    EXPECT_FALSE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(
        takeChain(status_),
        (StatusChain{error("There are limits for sysvar 1, but the last sysvar in the probdef is 0\n")}));
}

TEST_F(LimitsChecks, GapsAndIdsBelow1AreNotSeen) {
    addSysVars({7});
    addLimits({-4, 0, 5, 5});
    EXPECT_TRUE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(takeChain(status_), StatusChain{});
}

TEST_F(LimitsChecks, WhatStoodOnTheStatusStays) {
    status_.pushWarning("earlier");
    pushError("of another");
    addLimits({2});
    EXPECT_FALSE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(takeChain(status_),
              (StatusChain{error("There are limits for sysvar 2, but the last sysvar in the probdef is 0\n"),
                           warning("earlier")}));
    addSysVars({2});
    status_.pushError("earlier");
    EXPECT_TRUE(checkLimits(limits_, definition_, status_));
    EXPECT_EQ(takeChain(status_), StatusChain{error("earlier")});
    EXPECT_EQ(takeChain(), StatusChain{error("of another")});
}

} // namespace
} // namespace quillon
