#include "quillon/limits/LqLimitsData.h"

#include "tests/limits/LimitsText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace quillon {
namespace {

using test::idsOf;
using test::linesOf;
using test::textOf;
using testing::ElementsAre;
using testing::IsEmpty;

LmDArray<int> arrayOf(const std::vector<int>& numbers) {
    LmDArray<int> array;
    array.setLength(static_cast<std::int64_t>(numbers.size()));
    std::copy(numbers.begin(), numbers.end(), array.begin());
    return array;
}

LqLimitsData limitsWithIds(const std::vector<int>& ids) {
    LqLimitsData limits;
    for (const int id : ids) {
        limits.vars.append(new LqVarLimits(id));
    }
    return limits;
}

TEST(LqVarLimits, ANewRecordHasNoLimitsNoWeightsAndNoGuide) {
    EXPECT_EQ(textOf(LqVarLimits()), "0 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0");
    EXPECT_EQ(textOf(LqVarLimits(7)), "7 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0");
}

TEST(LqVarLimits, TheNumbersOfTheModesAreFixed) {
    EXPECT_EQ(LimitNone, 0);
    EXPECT_EQ(LimitUpper, 1);
    EXPECT_EQ(LimitLower, 2);
    EXPECT_EQ(LimitBoth, 3);
}

TEST(LqVarLimits, SwitchingOneLimitLeavesTheOther) {
    struct Case {
        LqLimitMode before, upperOn, upperOff, lowerOn, lowerOff;
        bool hasUpper, hasLower;
    };
    const Case cases[] = {
        {LimitNone, LimitUpper, LimitNone, LimitLower, LimitNone, false, false},
        {LimitUpper, LimitUpper, LimitNone, LimitBoth, LimitUpper, true, false},
        {LimitLower, LimitBoth, LimitLower, LimitLower, LimitNone, false, true},
        {LimitBoth, LimitBoth, LimitLower, LimitBoth, LimitUpper, true, true},
    };
    const auto switched = [](LqLimitMode mode, void (LqVarLimits::*limit)(bool), bool on) {
        LqVarLimits record;
        record.mode = mode;
        (record.*limit)(on);
        return record.mode;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.before);
        EXPECT_EQ(switched(c.before, &LqVarLimits::switchUpperLimit, true), c.upperOn);
        EXPECT_EQ(switched(c.before, &LqVarLimits::switchUpperLimit, false), c.upperOff);
        EXPECT_EQ(switched(c.before, &LqVarLimits::switchLowerLimit, true), c.lowerOn);
        EXPECT_EQ(switched(c.before, &LqVarLimits::switchLowerLimit, false), c.lowerOff);
        LqVarLimits record;
        record.mode = c.before;
        EXPECT_EQ(record.hasUpperLimit(), c.hasUpper);
        EXPECT_EQ(record.hasLowerLimit(), c.hasLower);
    }
}

TEST(LqVarLimits, AModeThatIsNoneOfTheFourHasNoLimitAndIsNotSwitched) {
    for (const int number : {-1, 4, 5, 6, 7}) {
        LqVarLimits record;
        record.mode = static_cast<LqLimitMode>(number);
        EXPECT_FALSE(record.hasUpperLimit()) << number;
        EXPECT_FALSE(record.hasLowerLimit()) << number;
        record.switchUpperLimit(true);
        record.switchLowerLimit(false);
        EXPECT_EQ(record.mode, number);
    }
}

TEST(LqLimitsData, InsertsInFrontOfTheFirstRecordThatIsNotBelow) {
    struct Case {
        std::vector<int> before;
        int id;
        std::vector<int> after;
    };
    const Case cases[] = {
        {{}, 5, {5}},
        {{1, 3}, 2, {1, 2, 3}},
        {{1, 3}, 0, {0, 1, 3}},
        {{1, 3}, 4, {1, 3, 4}},
        {{1, 3}, 3, {1, 3, 3}},
        // Above the last record it goes to the end, also behind a greater id.
        {{9, 2}, 3, {9, 2, 3}},
        {{9, 2}, 2, {2, 9, 2}},
        {{1, 9, 2}, 2, {1, 2, 9, 2}},
    };
    for (const Case& c : cases) {
        LqLimitsData limits = limitsWithIds(c.before);
        const LqVarLimits* const copy = limits.insertVar(LqVarLimits(c.id));
        EXPECT_EQ(idsOf(limits), c.after);
        EXPECT_EQ(copy->id, c.id);
    }
}

TEST(LqLimitsData, AnInsertedRecordOfEqualIdStandsInFrontAndIsTheOneFound) {
    LqLimitsData limits;
    LqVarLimits record(4);
    record.guideValue = 1;
    limits.insertVar(record);
    record.guideValue = 2;
    const LqVarLimits* const second = limits.insertVar(record);
    EXPECT_EQ(limits.findVar(4), second);
    EXPECT_EQ(limits.guideValue(4), 2.0F);
    EXPECT_EQ(idsOf(limits), std::vector<int>({4, 4}));
}

TEST(LqLimitsData, FindsNothingForAnUnknownId) {
    const LqLimitsData limits = limitsWithIds({1, 2});
    EXPECT_EQ(limits.findVar(3), nullptr);
    EXPECT_EQ(limits.guideValue(3), 0.0F);
    EXPECT_EQ(limits.guideWeight(3), 0.0F);
    EXPECT_NE(limits.findVar(2), nullptr);
}

TEST(LqLimitsData, SettersMakeTheRecordAndSwitchLimitsButWeightsLeaveTheModeAlone) {
    LqLimitsData limits;
    limits.setUpperWeight(2, 5);
    limits.setLowerWeight(2, 6);
    EXPECT_THAT(linesOf(limits), ElementsAre("2 mode 0 lower 0 * 6 upper 0 * 5 guide 0 * 0"));
    limits.setLowerLimit(2, -1.5F);
    EXPECT_THAT(linesOf(limits), ElementsAre("2 mode 2 lower -1.5 * 6 upper 0 * 5 guide 0 * 0"));
    limits.setUpperLimit(2, 1.5F);
    EXPECT_THAT(linesOf(limits), ElementsAre("2 mode 3 lower -1.5 * 6 upper 1.5 * 5 guide 0 * 0"));
    limits.setGuideValue(1, 0.25F);
    limits.setGuideWeight(3, 4);
    EXPECT_THAT(linesOf(limits), ElementsAre("1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0.25 * 0",
                                             "2 mode 3 lower -1.5 * 6 upper 1.5 * 5 guide 0 * 0",
                                             "3 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 4"));
    EXPECT_EQ(limits.guideValue(1), 0.25F);
    EXPECT_EQ(limits.guideWeight(3), 4.0F);
}

TEST(LqLimitsData, RemovesEveryRecordOfAnId) {
    LqLimitsData limits = limitsWithIds({3, 1, 3, 2, 3});
    limits.removeVar(3);
    EXPECT_THAT(idsOf(limits), ElementsAre(1, 2));
    limits.removeVar(7);
    EXPECT_THAT(idsOf(limits), ElementsAre(1, 2));
}

TEST(LqLimitsData, RemovesEveryRecordOfAListOfIds) {
    LqLimitsData limits = limitsWithIds({3, 1, 3, 2, 5});
    limits.removeVars(arrayOf({5, 3, 3, 9}));
    EXPECT_THAT(idsOf(limits), ElementsAre(1, 2));
    limits.removeVars(arrayOf({}));
    EXPECT_THAT(idsOf(limits), ElementsAre(1, 2));
    limits.removeVars(arrayOf({1, 2}));
    EXPECT_THAT(idsOf(limits), IsEmpty());
}

TEST(LqLimitsData, RenumbersByATableAndKeepsTheOrderAndTheIdsBeyondTheTable) {
    LqLimitsData limits = limitsWithIds({1, 3, 2, 4, 0, -1});
    limits.renumberVars(arrayOf({30, 20, 10}));
    EXPECT_THAT(idsOf(limits), ElementsAre(30, 10, 20, 4, 0, -1));
}

TEST(LqLimitsData, TheLastIdIsTheGreatestAndAtLeastZero) {
    EXPECT_EQ(LqLimitsData().lastVarId(), 0);
    EXPECT_EQ(limitsWithIds({-4, -2}).lastVarId(), 0);
    EXPECT_EQ(limitsWithIds({2, 9, 3}).lastVarId(), 9);
}

TEST(LqLimitsData, IncludesAreAppendedAndCleared) {
    LqLimitsData limits;
    limits.addInclude("arm.limits", 40);
    limits.addInclude("leg.limits", -1);
    EXPECT_THAT(linesOf(limits), ElementsAre("include arm.limits offset 40", "include leg.limits offset -1"));
    limits.clearIncludes();
    EXPECT_THAT(linesOf(limits), IsEmpty());
}

TEST(LqLimitsData, ClearEmptiesBothLists) {
    LqLimitsData limits = limitsWithIds({1, 2});
    limits.addInclude("arm.limits", 40);
    limits.clear();
    EXPECT_EQ(limits.vars.count(), 0);
    EXPECT_EQ(limits.includes.count(), 0);
}

TEST(LqLimitsData, ACopyIsDeep) {
    LqLimitsData limits = limitsWithIds({1});
    limits.addInclude("arm.limits", 40);
    const LqLimitsData copy(limits);
    LqLimitsData assigned = limitsWithIds({8, 9});
    assigned = limits;
    limits.setUpperLimit(1, 3);
    limits.clearIncludes();
    for (const LqLimitsData* other : {&copy, static_cast<const LqLimitsData*>(&assigned)}) {
        EXPECT_THAT(linesOf(*other), ElementsAre("1 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                                 "include arm.limits offset 40"));
    }
}

TEST(LqLimitsData, AssigningToItselfDoesNothing) {
    LqLimitsData limits = limitsWithIds({1, 2});
    const LqVarLimits* const first = limits.findVar(1);
    const LqLimitsData& same = limits;
    limits = same;
    EXPECT_THAT(idsOf(limits), ElementsAre(1, 2));
    EXPECT_EQ(limits.findVar(1), first);
}

TEST(LqLimitsData, RecordsThatAreReplacedStayAliveForThoseWhoPointAtThem) {
    LqLimitsData limits = limitsWithIds({1});
    const LqVarLimits* const old = limits.findVar(1);
    LqLimitsData other = limitsWithIds({2, 3});
    other.addInclude("arm.limits", 40);
    limits.addInclude("leg.limits", 1);
    limits.replaceAll(other.vars, other.includes);
    EXPECT_EQ(old->id, 1);
    EXPECT_THAT(idsOf(limits), ElementsAre(2, 3));
    EXPECT_EQ(limits.includes.count(), 1);
    EXPECT_EQ(other.vars.count(), 0);
    EXPECT_EQ(other.includes.count(), 0);
}

// --- Equality of what has an effect --------------------------------------------------------------

LqVarLimits fullRecord() {
    LqVarLimits record(7);
    record.mode = LimitBoth;
    record.upperValue = 2;
    record.upperWeight.set(3);
    record.lowerValue = 1;
    record.lowerWeight.set(4);
    record.guideValue = 5;
    record.guideWeight = 6;
    return record;
}

LqLimitsData limitsOf(const std::vector<LqVarLimits>& records) {
    LqLimitsData limits;
    for (const LqVarLimits& record : records) {
        limits.vars.append(new LqVarLimits(record));
    }
    return limits;
}

TEST(LqLimitsData, EqualEffectComparesEveryFieldThatMatters) {
    const LqLimitsData full = limitsOf({fullRecord()});
    EXPECT_TRUE(full.equalEffective(limitsOf({fullRecord()})));

    using Change = void (*)(LqVarLimits&);
    const Change changes[] = {
        [](LqVarLimits& r) { r.id = 8; },
        [](LqVarLimits& r) { r.mode = LimitUpper; },
        [](LqVarLimits& r) { r.upperValue = 9; },
        [](LqVarLimits& r) { r.lowerValue = 9; },
        [](LqVarLimits& r) { r.upperWeight.value = 9; },
        [](LqVarLimits& r) { r.lowerWeight.value = 9; },
        [](LqVarLimits& r) { r.upperWeight.notSet = true; },
        [](LqVarLimits& r) { r.lowerWeight.notSet = true; },
        [](LqVarLimits& r) { r.guideValue = 9; },
        [](LqVarLimits& r) { r.guideWeight = 9; },
        [](LqVarLimits& r) { r.guideWeight = std::numeric_limits<float>::quiet_NaN(); },
    };
    for (const Change change : changes) {
        LqVarLimits changed = fullRecord();
        change(changed);
        EXPECT_FALSE(full.equalEffective(limitsOf({changed}))) << textOf(changed);
        EXPECT_FALSE(limitsOf({changed}).equalEffective(full)) << textOf(changed);
    }
}

TEST(LqLimitsData, EqualEffectLeavesOutTheValuesOfAbsentLimitsAndUnsetWeights) {
    LqVarLimits a = fullRecord();
    a.mode = LimitUpper;
    a.lowerWeight = {};
    LqVarLimits b = a;
    b.lowerValue = 77;
    b.lowerWeight.value = 88;
    EXPECT_TRUE(limitsOf({a}).equalEffective(limitsOf({b})));
    a.mode = b.mode = LimitLower;
    a.lowerValue = b.lowerValue;
    b.upperValue = 77;
    EXPECT_TRUE(limitsOf({a}).equalEffective(limitsOf({b})));
}

TEST(LqLimitsData, EqualEffectComparesTheWeightsOfAbsentLimitsToo) {
    LqVarLimits a = fullRecord();
    a.mode = LimitUpper;
    LqVarLimits b = a;
    b.lowerWeight.value = 9;
    EXPECT_FALSE(limitsOf({a}).equalEffective(limitsOf({b})));
    b.lowerWeight = {};
    EXPECT_FALSE(limitsOf({a}).equalEffective(limitsOf({b})));
}

TEST(LqLimitsData, EqualEffectComparesTheGuideValueOfARecordWithALimit) {
    LqVarLimits a = fullRecord();
    a.guideWeight = 0;
    LqVarLimits b = a;
    b.guideValue = 9;
    EXPECT_FALSE(limitsOf({a}).equalEffective(limitsOf({b})));
}

TEST(LqLimitsData, EqualEffectPassesOverRecordsWithoutEffect) {
    LqVarLimits idle(3);
    idle.guideValue = 5; // without a weight
    idle.upperWeight.set(1);
    EXPECT_TRUE(limitsOf({idle, fullRecord(), idle}).equalEffective(limitsOf({fullRecord()})));
    EXPECT_TRUE(limitsOf({fullRecord()}).equalEffective(limitsOf({idle, idle, fullRecord()})));
    EXPECT_TRUE(limitsOf({idle}).equalEffective(LqLimitsData()));
    EXPECT_FALSE(limitsOf({fullRecord(), fullRecord()}).equalEffective(limitsOf({fullRecord()})));
    EXPECT_FALSE(limitsOf({fullRecord()}).equalEffective(limitsOf({fullRecord(), fullRecord()})));
    LqVarLimits guideOnly(3);
    guideOnly.guideWeight = 1;
    EXPECT_FALSE(limitsOf({guideOnly}).equalEffective(LqLimitsData()));
}

TEST(LqLimitsData, EqualEffectComparesInListOrder) {
    LqVarLimits other = fullRecord();
    other.id = 8;
    EXPECT_FALSE(limitsOf({fullRecord(), other}).equalEffective(limitsOf({other, fullRecord()})));
}

TEST(LqLimitsData, ANotANumberIsNotEvenEqualToItself) {
    LqVarLimits record = fullRecord();
    record.upperValue = std::numeric_limits<float>::quiet_NaN();
    const LqLimitsData limits = limitsOf({record});
    EXPECT_FALSE(limits.equalEffective(limits));
}

} // namespace
} // namespace quillon
