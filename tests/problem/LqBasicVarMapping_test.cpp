#include "quillon/problem/LqBasicVarMapping.h"

#include "tests/problem/ProblemDefSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::test {
namespace {

using Terms = std::vector<std::pair<int, float>>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

TEST(LqBasicVarMapping, IsNotDrivenWhenNew) {
    const LqBasicVarMapping<float> mapping;
    EXPECT_EQ(mapping.id, 0);
    EXPECT_EQ(mapping.constant, 0.0F);
    EXPECT_EQ(mapping.terms.count(), 0);
}

TEST(LqBasicVarMapping, AppendingATermSetsTheIdToMatch) {
    LqBasicVarMapping<float> mapping;
    mapping.appendTerm(7, 0.5F);
    EXPECT_EQ(mapping.id, -2);
    mapping.appendTerm(3, -1.0F);
    EXPECT_EQ(mapping.id, -3);
    EXPECT_EQ(termsOf(mapping), (Terms{{7, 0.5F}, {3, -1.0F}}));
}

TEST(LqBasicVarMapping, RemovingTermsKeepsTheOthersInOrderAndCountsTheDropped) {
    LqBasicVarMapping<float> mapping = combination(0.25F, {{1, 1.0F}, {2, 2.0F}, {1, 3.0F}, {4, 4.0F}});
    EXPECT_EQ(mapping.removeTerms({1, 9}), 2);
    EXPECT_EQ(mapping.id, -3);
    EXPECT_EQ(mapping.constant, 0.25F);
    EXPECT_EQ(termsOf(mapping), (Terms{{2, 2.0F}, {4, 4.0F}}));
}

TEST(LqBasicVarMapping, RemovingTheLastTermLeavesAConstant) {
    LqBasicVarMapping<float> mapping = combination(0.25F, {{5, 1.0F}});
    EXPECT_EQ(mapping.removeTerms({5}), 1);
    EXPECT_EQ(mapping.id, -1);
    EXPECT_EQ(mapping.constant, 0.25F);
    EXPECT_EQ(mapping.terms.count(), 0);
}

TEST(LqBasicVarMapping, RemovingTermsMakesAConstantOfEveryMappingWithoutAny) {
    for (const int form : {0, 4, -1}) {
        LqBasicVarMapping<float> mapping(form);
        mapping.constant = 0.5F;
        EXPECT_EQ(mapping.removeTerms({4}), 0) << form;
        EXPECT_EQ(mapping.id, -1) << form;
        EXPECT_EQ(mapping.constant, 0.5F) << form;
    }
}

TEST(LqBasicVarMapping, RemovingNoTermsSetsTheIdToMatchTheirNumber) {
    LqBasicVarMapping<float> mapping = combination(0.25F, {{1, 1.0F}, {2, 2.0F}});
    mapping.id = -9;
    EXPECT_EQ(mapping.removeTerms({}), 0);
    EXPECT_EQ(mapping.id, -3);
}

TEST(LqBasicVarMapping, CopiesItsTerms) {
    const LqBasicVarMapping<float> source = combination(1.0F, {{1, 1.0F}, {2, 2.0F}});
    LqBasicVarMapping<float> copy(source);
    LqBasicVarMapping<float> assigned = combination(9.0F, {{9, 9.0F}});
    assigned = source;
    copy.appendTerm(3, 3.0F);
    assigned.clearTerms();
    EXPECT_EQ(source.id, -3);
    EXPECT_EQ(termsOf(source), (Terms{{1, 1.0F}, {2, 2.0F}}));
    EXPECT_EQ(termsOf(copy), (Terms{{1, 1.0F}, {2, 2.0F}, {3, 3.0F}}));
}

TEST(LqBasicVarMapping, AssignedToItselfStays) {
    LqBasicVarMapping<float> mapping = combination(1.0F, {{1, 1.0F}});
    const LqBasicVarMapping<float>& same = mapping;
    mapping = same;
    EXPECT_EQ(mapping.id, -2);
    EXPECT_EQ(termsOf(mapping), (Terms{{1, 1.0F}}));
}

TEST(LqBasicVarMapping, MovesWithItsArray) {
    LmArray<LqBasicVarMapping<float>> mappings(2);
    mappings[0].appendTerm(4, 0.5F);
    const LmArray<LqBasicVarMapping<float>> copy(mappings);
    mappings[0].clearTerms();
    EXPECT_EQ(termsOf(copy[0]), (Terms{{4, 0.5F}}));
}

struct EqualityCase {
    const char* what;
    LqBasicVarMapping<float> left;
    LqBasicVarMapping<float> right;
    bool equal;
};

TEST(LqBasicVarMapping, ComparesIdConstantAndTerms) {
    LqBasicVarMapping<float> directWithConstant(4);
    directWithConstant.constant = 2.0F;
    LqBasicVarMapping<float> tooFewTerms = constantMapping(1.0F);
    tooFewTerms.id = -2;
    const EqualityCase cases[] = {
        {"two new ones", {}, {}, true},
        {"direct", LqBasicVarMapping<float>(4), LqBasicVarMapping<float>(4), true},
        {"another id", LqBasicVarMapping<float>(4), LqBasicVarMapping<float>(5), false},
        {"a constant that is not used", directWithConstant, LqBasicVarMapping<float>(4), true},
        {"constants", constantMapping(1.5F), constantMapping(1.5F), true},
        {"another constant", constantMapping(1.5F), constantMapping(1.25F), false},
        {"zeros of both signs", constantMapping(0.0F), constantMapping(-0.0F), true},
        {"a NaN constant", constantMapping(nan), constantMapping(nan), false},
        {"terms", combination(1, {{1, 2}, {3, 4}}), combination(1, {{1, 2}, {3, 4}}), true},
        {"terms in another order", combination(1, {{1, 2}, {3, 4}}), combination(1, {{3, 4}, {1, 2}}), false},
        {"another coefficient", combination(1, {{1, 2}}), combination(1, {{1, 3}}), false},
        {"another variable", combination(1, {{1, 2}}), combination(1, {{2, 2}}), false},
        {"a NaN coefficient", combination(1, {{1, nan}}), combination(1, {{1, nan}}), false},
        {"fewer terms than the id says", combination(1, {{1, 2}}), tooFewTerms, false},
    };
    for (const EqualityCase& each : cases) {
        EXPECT_EQ(equals(each.left, each.right), each.equal) << each.what;
        EXPECT_EQ(equals(each.right, each.left), each.equal) << each.what;
    }
}

TEST(LqBasicVarMapping, WithANaNIsNotEvenEqualToItself) {
    const LqBasicVarMapping<float> mapping = constantMapping(nan);
    EXPECT_FALSE(equals(mapping, mapping));
}

} // namespace
} // namespace quillon::test
