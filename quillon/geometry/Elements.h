#pragma once

#include <cstddef>
#include <iosfwd>
#include <span>

/// The work that 3x3 and 4x4 matrices share, on their elements as plain runs of floats.
/// Runs that are handed in together have one length; an output may be one of the inputs.
namespace quillon::elements {

/// out = a + b, element by element.
void add(std::span<float> out, std::span<const float> a, std::span<const float> b);

/// out = a - b, element by element.
void sub(std::span<float> out, std::span<const float> a, std::span<const float> b);

/// out = a + s on each element.
void addScalar(std::span<float> out, std::span<const float> a, float s);

/// out = a s on each element.
void mulScalar(std::span<float> out, std::span<const float> a, float s);

/// Writes `s` on the diagonal of the square matrix `m` of `size` rows; the rest stays.
void fillDiagonal(std::span<float> m, std::size_t size, float s);

/// Whether all elements are equal; a NaN makes it false.
bool equalExact(std::span<const float> a, std::span<const float> b);

/// Whether no difference is above `comparisonTolerance`; a NaN difference is not above it.
bool equalApprox(std::span<const float> a, std::span<const float> b);

/// Whether no element is a NaN.
bool hasNoNaN(std::span<const float> m);

/// Prints the square matrix `m` of `size` rows in brackets, each element 14 wide, and flushes `out`.
void printBracketed(std::ostream& out, std::span<const float> m, std::size_t size);

/// Prints the square matrix `m` of `size` rows with one blank after each element; does not flush.
void printPlain(std::ostream& out, std::span<const float> m, std::size_t size);

/// Turns two rows or columns into each other: first becomes c first + s second, second becomes
/// c second - s first, with c and s the cosine and sine of `angle` (radians). Each holds `count`
/// elements, `step` floats apart.
void turnPair(float* first, float* second, std::size_t step, std::size_t count, float angle);

} // namespace quillon::elements
