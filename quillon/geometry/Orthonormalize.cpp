#include "quillon/geometry/Orthonormalize.h"

#include <array>
#include <cstddef>

namespace quillon {

namespace {

void normalizeColumns(LmMat3& m) {
    transposeInPlace(m);
    normalizeRows(m);
    transposeInPlace(m);
}

LmMat3 cofactorMatrix(const LmMat3& m) {
    LmMat3 cofactors;
    for (std::size_t row = 0; row < 3; ++row) {
        setRow(cofactors, row, cross(getRow(m, (row + 1) % 3), getRow(m, (row + 2) % 3)));
    }
    return cofactors;
}

} // namespace

void orthonormalize(LmMat3& m) {
    for (int pass = 0; pass < 2; ++pass) {
        normalizeRows(m);
        normalizeColumns(m);
        addTo(m, cofactorMatrix(m));
        scaleBy(m, 0.5F);
    }
}

void orthonormalizeSeries(LmMat3& m) {
    // The binomial series of (1 + x)^(-1/2) behind its leading 1.
    constexpr std::array<float, 9> coefficients = {
        -0.5F,         0.375F,          -0.3125F,           0.2734375F,           -0.24609375F,
        0.2255859375F, -0.20947265625F, 0.196380615234375F, -0.1854705810546875F,
    };
    LmMat3 excess;
    transpose(excess, m);
    mul(excess, excess, m);
    sub(excess, excess, identityMat3);
    LmMat3 sum = identityMat3;
    LmMat3 power = identityMat3;
    for (const float coefficient : coefficients) {
        mul(power, power, excess);
        LmMat3 term;
        mulScalar(term, power, coefficient);
        addTo(sum, term);
    }
    mul(m, m, sum);
}

void orthonormalizeSeries(LmMat4& m) {
    LmMat3 rotation;
    getRotation(m, rotation);
    orthonormalizeSeries(rotation);
    setRotation(m, rotation);
}

} // namespace quillon
