#pragma once

#include "quillon/limits/LqLimitsData.h"
#include "tests/support/RandomSource.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

namespace quillon::test {

/// Makes up limits. Ids repeat, stand in no order and may be any integers; a lower limit is never above its
/// upper one.
class RandomLimits {
public:
    explicit RandomLimits(RandomSource& source) : random(source) {}

    /// Limits that the tagged form gives back as they are.
    LqLimitsData tagged() {
        LqLimitsData made;
        for (std::size_t left = random.below(8); left > 0; --left) {
            made.vars.append(new LqVarLimits(taggedRecord()));
        }
        for (std::size_t left = random.below(3); left > 0; --left) {
            const std::string name = random.name(60, pathLetters);
            made.addInclude(LmStr(std::string_view(name)), random.anyInt());
        }
        return made;
    }

    /// Limits that the older form gives back as they are.
    LqLimitsData older() {
        LqLimitsData made;
        for (std::size_t left = random.below(8); left > 0; --left) {
            auto* const record = new LqVarLimits(random.anyInt());
            giveLimits(*record, anyMode(), &RandomLimits::fourDecimals);
            made.vars.append(record);
        }
        return made;
    }

    /// Limits with finite reals of any size and precision, with weights of limits that do not exist, and with
    /// records that have no effect.
    LqLimitsData any() {
        LqLimitsData made;
        for (std::size_t left = random.below(8); left > 0; --left) {
            auto* const record = new LqVarLimits(random.anyInt());
            giveLimits(*record, LimitBoth, &RandomLimits::anyReal);
            record->mode = anyMode();
            giveWeight(record->upperWeight, &RandomLimits::anyReal);
            giveWeight(record->lowerWeight, &RandomLimits::anyReal);
            record->guideValue = random.oneIn(3) ? 0 : anyReal();
            record->guideWeight = random.oneIn(3) ? 0 : anyReal();
            made.vars.append(record);
        }
        return made;
    }

private:
    using Real = float (RandomLimits::*)();

    /// What a path may hold on a line of a block: no brace, which could open a block, and no reference to the
    /// environment.
    static constexpr std::string_view pathLetters = "abcXYZ019 _.,;:#%*+-/[]()\t'\"\\\x80\xa0\xff";

    float twoDecimals() { return random.decimal(2); }
    float fourDecimals() { return random.decimal(4); }
    float anyReal() {
        if (random.oneIn(2)) {
            return random.decimal(6);
        }
        const auto real = std::bit_cast<float>(static_cast<std::uint32_t>(random.next()));
        return std::isfinite(real) ? real : 0.004F;
    }
    float nonZero(Real draw) {
        const float drawn = (this->*draw)();
        return drawn == 0 ? 1 : drawn;
    }
    LqLimitMode anyMode() {
        static constexpr LqLimitMode modes[] = {LimitNone, LimitUpper, LimitLower, LimitBoth};
        return random.oneOf(modes);
    }

    void giveLimits(LqVarLimits& record, LqLimitMode mode, Real draw) {
        record.mode = mode;
        if (record.hasLowerLimit()) {
            record.lowerValue = (this->*draw)();
        }
        if (record.hasUpperLimit()) {
            record.upperValue = random.oneIn(8) ? record.lowerValue : (this->*draw)();
        }
        if (mode == LimitBoth && record.lowerValue > record.upperValue) {
            std::swap(record.lowerValue, record.upperValue);
        }
    }

    void giveWeight(LqLimitWeight& weight, Real draw) {
        if (random.oneIn(2)) {
            weight.set((this->*draw)());
        }
    }

    LqVarLimits taggedRecord() {
        LqVarLimits made(random.anyInt());
        giveLimits(made, anyMode(), &RandomLimits::twoDecimals);
        if (made.hasUpperLimit()) {
            giveWeight(made.upperWeight, &RandomLimits::fourDecimals);
        }
        if (made.hasLowerLimit()) {
            giveWeight(made.lowerWeight, &RandomLimits::fourDecimals);
        }
        // A record without a limit needs a guide: without an effect it is not written.
        const bool hasWeight = random.oneIn(2);
        if (hasWeight) {
            made.guideValue = random.decimal(2);
            made.guideWeight = nonZero(&RandomLimits::twoDecimals);
        } else if (made.mode == LimitNone || random.oneIn(4)) {
            made.guideValue = nonZero(&RandomLimits::twoDecimals);
        }
        return made;
    }

    RandomSource& random;
};

} // namespace quillon::test
