// What the writers of both forms write is read back.

#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"

#include "tests/limits/LimitsText.h"
#include "tests/support/RandomLimits.h"
#include "tests/support/RoundTrip.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

namespace quillon {
namespace {

using test::error;
using test::linesOf;
using test::RandomLimits;
using test::RandomSource;
using test::StatusChain;
using test::takeChain;

constexpr int times = 10000;
constexpr int timesWithLosses = 2000;

void writeTagged(std::ostream& output, const LqLimitsData& limits) {
    writeTaggedLimits(limits, output);
}

void writeOlder(std::ostream& output, const LqLimitsData& limits) {
    writeOlderLimits(limits, output);
}

void read(std::istream& input, LqLimitsData& target) {
    EXPECT_TRUE(readLimitsStream(target, input, false));
}

/// The fields of a record, of its reals the bits: the sign of a zero counts, too.
auto fieldsOf(const LqVarLimits& record) {
    const auto bits = [](float real) { return std::bit_cast<std::uint32_t>(real); };
    return std::tuple(record.id, record.mode, bits(record.upperValue), bits(record.upperWeight.value),
                      record.upperWeight.notSet, bits(record.lowerValue), bits(record.lowerWeight.value),
                      record.lowerWeight.notSet, bits(record.guideValue), bits(record.guideWeight));
}

bool sameIncludes(const LqLimitsInclude& a, const LqLimitsInclude& b) {
    return a.fileName == b.fileName && a.idOffset == b.idOffset;
}

template <class Record, class Same>
bool sameList(const LmDoubleLinkedList& a, const LmDoubleLinkedList& b, Same same) {
    if (a.count() != b.count()) {
        return false;
    }
    const LmListView<const Record> others(b);
    auto other = others.begin();
    for (const Record* record : LmListView<const Record>(a)) {
        if (!same(*record, **other)) {
            return false;
        }
        ++other;
    }
    return true;
}

/// Equal in every field.
void expectSame(const LqLimitsData& a, const LqLimitsData& b) {
    const bool same = sameList<LqVarLimits>(a.vars, b.vars,
                                            [](const LqVarLimits& one, const LqVarLimits& other) {
                                                return fieldsOf(one) == fieldsOf(other);
                                            }) &&
                      sameList<LqLimitsInclude>(a.includes, b.includes, sameIncludes);
    if (!same) {
        EXPECT_EQ(linesOf(a), linesOf(b));
        ADD_FAILURE() << "the limits differ";
    }
}

bool same(const LqLimitsData& a, const LqLimitsData& b) {
    expectSame(a, b);
    return a.equalEffective(b) && b.equalEffective(a);
}

class LimitsRoundTrip : public testing::Test {
protected:
    test::CleanStatus cleanStatus_;
};

TEST_F(LimitsRoundTrip, TheTaggedFormGivesBackWhatItCanHold) {
    test::forGenerated(times, [](RandomSource& random) {
        test::expectRoundTrip(RandomLimits(random).tagged(), writeTagged, read, same);
    });
}

TEST_F(LimitsRoundTrip, TheOlderFormGivesBackWhatItCanHold) {
    test::forGenerated(times, [](RandomSource& random) {
        test::expectRoundTrip(RandomLimits(random).older(), writeOlder, read, same);
    });
}

// --- What is lost --------------------------------------------------------------------------------

/// The value that stays when its text has so many decimals.
float cut(float value, int decimals) {
    char text[64];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, static_cast<double>(value),
                                                   std::chars_format::fixed, decimals);
    double back = 0;
    std::from_chars(text, end.ptr, back);
    return static_cast<float>(back);
}

void keepLimits(const LqVarLimits& from, LqVarLimits& kept, int decimals) {
    kept.mode = from.mode;
    if (from.hasUpperLimit()) {
        kept.upperValue = cut(from.upperValue, decimals);
    }
    if (from.hasLowerLimit()) {
        kept.lowerValue = cut(from.lowerValue, decimals);
    }
}

/// What is left of limits behind the tagged form.
LqLimitsData leftByTagged(const LqLimitsData& limits) {
    LqLimitsData left;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        const bool hasGuide = record->guideValue != 0 || record->guideWeight != 0;
        if (record->mode == LimitNone && !hasGuide) {
            continue;
        }
        auto* const kept = new LqVarLimits(record->id);
        keepLimits(*record, *kept, 2);
        if (record->hasUpperLimit() && !record->upperWeight.notSet) {
            kept->upperWeight.set(cut(record->upperWeight.value, 4));
        }
        if (record->hasLowerLimit() && !record->lowerWeight.notSet) {
            kept->lowerWeight.set(cut(record->lowerWeight.value, 4));
        }
        if (hasGuide) {
            kept->guideValue = cut(record->guideValue, 2);
            kept->guideWeight = record->guideWeight == 0 ? 0 : cut(record->guideWeight, 2);
        }
        left.vars.append(kept);
    }
    return left;
}

/// What is left of limits behind the older form.
LqLimitsData leftByOlder(const LqLimitsData& limits) {
    LqLimitsData left;
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        auto* const kept = new LqVarLimits(record->id);
        keepLimits(*record, *kept, 4);
        left.vars.append(kept);
    }
    return left;
}

/// Writes and reads the limits.
template <class Write>
LqLimitsData readBack(const LqLimitsData& limits, Write write) {
    std::istringstream input(test::writtenBy([&](std::ostream& output) { write(output, limits); }));
    LqLimitsData back;
    read(input, back);
    EXPECT_EQ(takeChain(), StatusChain{}) << input.str();
    return back;
}

TEST_F(LimitsRoundTrip, TheTaggedFormLosesDecimalsAndWhatHasNoEffect) {
    test::forGenerated(timesWithLosses, [](RandomSource& random) {
        const LqLimitsData limits = RandomLimits(random).any();
        const LqLimitsData back = readBack(limits, writeTagged);
        expectSame(back, leftByTagged(limits));
        // A second time nothing more is lost but guides that have become 0.
        expectSame(readBack(back, writeTagged), leftByTagged(back));
    });
}

TEST_F(LimitsRoundTrip, TheOlderFormLosesDecimalsWeightsAndGuides) {
    test::forGenerated(timesWithLosses, [](RandomSource& random) {
        const LqLimitsData limits = RandomLimits(random).any();
        const LqLimitsData back = readBack(limits, writeOlder);
        expectSame(back, leftByOlder(limits));
        test::expectRoundTrip(back, writeOlder, read, same);
    });
}

TEST_F(LimitsRoundTrip, AGuideThatTwoDecimalsLoseIsGoneAfterTheSecondWriting) {
    LqLimitsData limits;
    limits.setGuideWeight(7, 0.004F);
    const LqLimitsData back = readBack(limits, writeTagged);
    EXPECT_EQ(linesOf(back),
              std::vector<std::string>{"7 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"});
    EXPECT_EQ(linesOf(readBack(back, writeTagged)), std::vector<std::string>{});
}

TEST_F(LimitsRoundTrip, InfinitiesAndNotANumbersOfTheTaggedFormAreWrittenAndThenRefused) {
    for (const float value :
         {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        LqLimitsData limits;
        limits.setUpperLimit(7, value);
        const std::string text = test::writtenBy([&](std::ostream& output) { writeTagged(output, limits); });
        EXPECT_EQ(text,
                  "Kym System Variable Limits File\nv2.00\nVARIABLE {\n  ID: 7\n  UPPER {\n    VALUE: " +
                      std::string(std::isinf(value) ? "inf" : "nan") + "\n  }\n}\n");
        std::istringstream input(text);
        LqLimitsData back;
        EXPECT_FALSE(readLimitsStream(back, input, false));
        EXPECT_EQ(takeChain(),
                  (StatusChain{error("Unable to read limits for variable."),
                               error("Unable to read value for the upper limit of system variable 7."),
                               error("Invalid floating point value.")}));
    }
}

} // namespace
} // namespace quillon
