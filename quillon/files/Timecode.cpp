#include "quillon/files/Timecode.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace quillon {

namespace {

struct Rate {
    const char* name;
    float fps;
    bool dropFrame;
};

constexpr std::array<Rate, timecodeRateCount> rates = {{
    {"23.976", 23.976023F, false},
    {"24", 24.0F, false},
    {"25", 25.0F, false},
    {"29.97", 29.970028F, false},
    {"29.97df", 29.970028F, true},
    {"30", 30.0F, false},
    {"47.952", 47.952045F, false},
    {"48", 48.0F, false},
    {"59.94", 59.940056F, false},
    {"60", 60.0F, false},
}};

constexpr LmTimecodeRate dropFrameRate = 4;
constexpr float tolerance = 0.0001F;

constexpr const Rate& rateAt(LmTimecodeRate index) {
    return rates[static_cast<std::size_t>(index)];
}

/// Null for what is no rate; aborts for the count, which a caller can only have taken for one.
const Rate* findRate(LmTimecodeRate index) {
    if (index == timecodeRateCount) {
        std::abort();
    }
    return index < 0 || index > timecodeRateCount ? nullptr : &rateAt(index);
}

/// The next rate up that is no drop-frame rate.
LmTimecodeRate rateAbove(LmTimecodeRate index) {
    const LmTimecodeRate next = index + 1;
    return next == dropFrameRate ? next + 1 : next;
}

} // namespace

LmStr timecodeRateName(LmTimecodeRate rate) {
    const Rate* const found = findRate(rate);
    return found == nullptr ? "" : found->name;
}

LmTimecodeRate timecodeRateFromName(const LmStr& name) {
    for (LmTimecodeRate index = 0; index < timecodeRateCount; ++index) {
        if (name == rateAt(index).name) {
            return index;
        }
    }
    return noTimecodeRate;
}

float timecodeRateFps(LmTimecodeRate rate) {
    const Rate* const found = findRate(rate);
    return found == nullptr ? 0.0F : found->fps;
}

void timecodeRateInfo(LmTimecodeRate rate, float& fpsOut, bool& dropFrameOut) {
    fpsOut = timecodeRateFps(rate);
    dropFrameOut = rate == dropFrameRate;
}

LmTimecodeRate timecodeRateFromFps(bool dropFrame, bool exact, float fps) {
    LmTimecodeRate lastBelow = noTimecodeRate;
    for (LmTimecodeRate index = 0; index < timecodeRateCount; ++index) {
        const Rate& rate = rateAt(index);
        if (rate.dropFrame != dropFrame) {
            continue;
        }
        if (std::fabs(rate.fps - fps) <= tolerance) {
            return index;
        }
        if (rate.fps < fps) {
            lastBelow = index;
        }
    }
    return exact ? noTimecodeRate : lastBelow;
}

float snapTimecodeRate(bool dropFrame, float fps) {
    if (timecodeRateFromFps(dropFrame, true, fps) != noTimecodeRate) {
        return fps;
    }
    if (dropFrame) {
        return rateAt(dropFrameRate).fps;
    }
    if (fps > rates.back().fps) {
        return rates.back().fps;
    }
    const LmTimecodeRate below = timecodeRateFromFps(false, false, fps);
    return below == noTimecodeRate ? rates.front().fps : rateAt(rateAbove(below)).fps;
}

bool readTimecodeRate(LmStr& text, LmTimecodeRate& out, LmStatus& status) {
    text.trimLeft();
    const LmStr name = text.firstToken(" \t\n\r");
    const LmTimecodeRate rate = timecodeRateFromName(name);
    if (rate == noTimecodeRate) {
        status.pushErrorf("Unsupported timecode rate.");
        return false;
    }
    text.remove(0, name.length());
    out = rate;
    return true;
}

} // namespace quillon
