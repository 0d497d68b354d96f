#include "quillon/geometry/Elements.h"

#include "quillon/core/NumberPrinting.h"
#include "quillon/geometry/Vec3.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iomanip>
#include <ostream>

namespace quillon::elements {

void add(std::span<float> out, std::span<const float> a, std::span<const float> b) {
    std::transform(a.begin(), a.end(), b.begin(), out.begin(), std::plus<>());
}

void sub(std::span<float> out, std::span<const float> a, std::span<const float> b) {
    std::transform(a.begin(), a.end(), b.begin(), out.begin(), std::minus<>());
}

void addScalar(std::span<float> out, std::span<const float> a, float s) {
    std::transform(a.begin(), a.end(), out.begin(), [s](float element) { return element + s; });
}

void mulScalar(std::span<float> out, std::span<const float> a, float s) {
    std::transform(a.begin(), a.end(), out.begin(), [s](float element) { return element * s; });
}

void fillDiagonal(std::span<float> m, std::size_t size, float s) {
    for (std::size_t i = 0; i < size; ++i) {
        m[i * size + i] = s;
    }
}

bool equalExact(std::span<const float> a, std::span<const float> b) {
    return std::equal(a.begin(), a.end(), b.begin());
}

bool equalApprox(std::span<const float> a, std::span<const float> b) {
    // Deliberate: only "greater than" fails, so elements that differ by a NaN count as equal.
    const auto near = [](float x, float y) { return !(std::fabs(x - y) > comparisonTolerance); };
    return std::equal(a.begin(), a.end(), b.begin(), near);
}

bool hasNoNaN(std::span<const float> m) {
    return std::none_of(m.begin(), m.end(), [](float element) { return std::isnan(element); });
}

void printBracketed(std::ostream& out, std::span<const float> m, std::size_t size) {
    out << "[\n";
    for (std::size_t row = 0; row < size; ++row) {
        out << (row == 0 ? "[" : "\n [");
        for (const float element : m.subspan(row * size, size)) {
            out << std::setw(14);
            printReal(out, element);
            out << "  ";
        }
        out << "]";
    }
    out << "\n]" << std::flush;
}

void printPlain(std::ostream& out, std::span<const float> m, std::size_t size) {
    out << "[\n";
    for (std::size_t row = 0; row < size; ++row) {
        out << "  [ ";
        for (const float element : m.subspan(row * size, size)) {
            printReal(out, element);
            out << " ";
        }
        out << "]\n";
    }
    out << "\n]";
}

void turnPair(float* first, float* second, std::size_t step, std::size_t count, float angle) {
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    for (std::size_t i = 0; i < count * step; i += step) {
        const float a = first[i];
        const float b = second[i];
        first[i] = c * a + s * b;
        second[i] = c * b - s * a;
    }
}

} // namespace quillon::elements
