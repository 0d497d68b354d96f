#pragma once

#include <cstdint>
#include <iosfwd>
#include <limits>

namespace quillon {

class LqMeasuredData;

namespace scaleDef {

/// What each limit stands for that is given as "*": the least and the greatest finite number.
inline constexpr float noLowerLimit = std::numeric_limits<float>::lowest();
inline constexpr float noUpperLimit = std::numeric_limits<float>::max();

/// A number of a scale definition: a literal, or a reference to a measured constant of the subject.
///
/// With measured id 0 the number is `value`. Otherwise m is the measured constant: the scale form, whose
/// factor `value` is not 0, gives m / value - 1, and the offset form, whose `value` is 0, gives m + `offset`.
struct ScaleFloat {
    float value = 0;             ///< the literal, or the factor of a reference
    float offset = 0;            ///< the offset of the offset form, 0 otherwise
    std::int32_t measuredId = 0; ///< the number of a measured constant, counted from 1; 0 for a literal

    /// The number, in single precision. A reference must lie within the measured data, which is not tested.
    float evaluate(const LqMeasuredData& measured) const;
    /// Changes the literal, the factor or the offset so that `evaluate` gives x.
    void setEvaluated(const LqMeasuredData& measured, float x);
    /// The part of the number that needs no measured data: literal or offset; 0 in the scale form.
    float baseValue() const;
    /// Prints the literal, or "[m", the number, a blank, the offset and "]". Both kinds of reference show
    /// their offset: this is the form of reports, deliberately not that of the file.
    void print(std::ostream& output) const;

    /// Field by field; a NaN is unequal to itself.
    friend bool operator==(const ScaleFloat&, const ScaleFloat&) = default;
};

} // namespace scaleDef
} // namespace quillon
