#pragma once

#include "quillon/core/LmStatus.h"
#include "quillon/core/LmStr.h"

#include <cstdint>

namespace quillon {

/// The frame rate of a timecode: its index among 23.976, 24, 25, 29.97, 29.97 drop-frame, 30, 47.952, 48,
/// 59.94 and 60 frames per second.
using LmTimecodeRate = std::int32_t;

/// How many rates there are. No rate itself, and asking for its facts is a program error that aborts.
inline constexpr LmTimecodeRate timecodeRateCount = 10;
/// What searches give that find no rate.
inline constexpr LmTimecodeRate noTimecodeRate = 11;

/// The name in data files; empty for what is no rate. Aborts for `timecodeRateCount`.
LmStr timecodeRateName(LmTimecodeRate rate);
/// The rate of exactly that name, or `noTimecodeRate`.
LmTimecodeRate timecodeRateFromName(const LmStr& name);
/// The frames per second, 0 for what is no rate. Aborts for `timecodeRateCount`.
float timecodeRateFps(LmTimecodeRate rate);
/// The frames per second, as `timecodeRateFps`, and whether it is the drop-frame rate.
void timecodeRateInfo(LmTimecodeRate rate, float& fpsOut, bool& dropFrameOut);

/// The first rate within 0.0001 of `fps`, among the drop-frame rate alone or among the others. When there is
/// none: with `exact` `noTimecodeRate`, otherwise the last rate that lies below `fps`, if one does.
LmTimecodeRate timecodeRateFromFps(bool dropFrame, bool exact, float fps);

/// Frames per second for any `fps`: itself when it is within 0.0001 of a rate, otherwise the next rate up,
/// and 60 when there is none. With `dropFrame` the drop-frame rate is the only one.
float snapTimecodeRate(bool dropFrame, float fps);

/// Eats white space and a word from the front of the text, up to blank, tab, LF or CR, which must name a
/// rate: "Unsupported timecode rate.". On failure the word stays.
bool readTimecodeRate(LmStr& text, LmTimecodeRate& out, LmStatus& status = currentStatus());

} // namespace quillon
