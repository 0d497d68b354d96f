#pragma once

namespace quillon {

/// Half a turn in radians, single precision.
inline constexpr float pi = 3.1415927F;

/// A turn in radians, single precision.
inline constexpr float twoPi = 6.2831855F;

/// A quarter of a turn in radians, single precision.
inline constexpr float halfPi = 1.5707964F;

/// A turn in radians, double precision.
inline constexpr double twoPiDouble = 6.283185307179586;

/// The arc sine of `s`, clamped to -1 .. 1, or pi minus it where the cosine `c` of the angle is below 0.
float clampedAsin(float s, float c);

} // namespace quillon
