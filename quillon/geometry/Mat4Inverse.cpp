#include "quillon/geometry/Mat4Inverse.h"

namespace quillon {

namespace {

constexpr SubDeterminantIndices allIndices = {0, 1, 2, 3};

/// The six 2x2 sub-determinants of two rows of a 4x4 matrix, named by their columns.
struct PairDeterminants {
    float c01, c02, c03, c12, c13, c23;
};

PairDeterminants pairDeterminants(const LmMat4& m, std::size_t upper, std::size_t lower) {
    const auto minor = [&m, upper, lower](std::size_t left, std::size_t right) {
        return element(m, upper, left) * element(m, lower, right) -
               element(m, upper, right) * element(m, lower, left);
    };
    return {minor(0, 1), minor(0, 2), minor(0, 3), minor(1, 2), minor(1, 3), minor(2, 3)};
}

SubDeterminantIndices without(const SubDeterminantIndices& indices, std::size_t dropped) {
    SubDeterminantIndices rest{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (i != dropped) {
            rest[count++] = indices[i];
        }
    }
    return rest;
}

bool isOdd(std::size_t number) {
    return number % 2 == 1;
}

/// Writes the transform with the 3x3 part `r` that takes the point `t` to the origin.
void setWithOriginAt(LmMat4& out, const LmMat3& r, const LmVec3& t) {
    LmVec3 moved;
    rowTimes(moved, t, r);
    fromRotationTranslation(out, r, {-moved[0], -moved[1], -moved[2]});
}

} // namespace

void inverse(LmMat4& out, const LmMat4& m) {
    const PairDeterminants s = pairDeterminants(m, 0, 1);
    const PairDeterminants t = pairDeterminants(m, 2, 3);
    const float divisor =
        s.c01 * t.c23 - s.c02 * t.c13 + s.c03 * t.c12 + s.c12 * t.c03 - s.c13 * t.c02 + s.c23 * t.c01;
    LmMat4 cofactors = {
        m[5] * t.c23 - m[6] * t.c13 + m[7] * t.c12,    //
        -m[1] * t.c23 + m[2] * t.c13 - m[3] * t.c12,   //
        m[13] * s.c23 - m[14] * s.c13 + m[15] * s.c12, //
        -m[9] * s.c23 + m[10] * s.c13 - m[11] * s.c12, //

        -m[4] * t.c23 + m[6] * t.c03 - m[7] * t.c02,    //
        m[0] * t.c23 - m[2] * t.c03 + m[3] * t.c02,     //
        -m[12] * s.c23 + m[14] * s.c03 - m[15] * s.c02, //
        m[8] * s.c23 - m[10] * s.c03 + m[11] * s.c02,   //

        m[4] * t.c13 - m[5] * t.c03 + m[7] * t.c01,    //
        -m[0] * t.c13 + m[1] * t.c03 - m[3] * t.c01,   //
        m[12] * s.c13 - m[13] * s.c03 + m[15] * s.c01, //
        -m[8] * s.c13 + m[9] * s.c03 - m[11] * s.c01,  //

        -m[4] * t.c12 + m[5] * t.c02 - m[6] * t.c01,    //
        m[0] * t.c12 - m[1] * t.c02 + m[2] * t.c01,     //
        -m[12] * s.c12 + m[13] * s.c02 - m[14] * s.c01, //
        m[8] * s.c12 - m[9] * s.c02 + m[10] * s.c01,    //
    };
    for (float& cofactor : cofactors) {
        cofactor /= divisor;
    }
    out = cofactors;
}

void invertInPlace(LmMat4& m) {
    const float divisor = subDeterminant(m, 4, allIndices, allIndices);
    adjugate(m);
    for (float& cofactor : m) {
        cofactor /= divisor;
    }
}

void adjugate(LmMat4& m) {
    transposeInPlace(m);
    const LmMat4 transposed = m;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            const float minor =
                subDeterminant(transposed, 3, without(allIndices, row), without(allIndices, column));
            m[4 * row + column] = isOdd(row + column) ? -minor : minor;
        }
    }
}

void invertRigid(LmMat4& out, const LmMat4& m) {
    LmMat3 rotation;
    LmVec3 translation;
    getRotation(m, rotation);
    getTranslation(m, translation);
    transposeInPlace(rotation);
    setWithOriginAt(out, rotation, translation);
}

void invertRigidInPlace(LmMat4& m) {
    invertRigid(m, m);
}

void invertRotationScale(LmMat4& out, const LmMat4& m) {
    out = m;
    const LmVec3 lengths = removeScale(out);
    invertRigidInPlace(out);
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            out[4 * row + column] *= 1.0F / lengths[column];
        }
    }
}

void invertRotationScaleInPlace(LmMat4& m) {
    invertRotationScale(m, m);
}

void invertAffine(LmMat4& out, const LmMat4& m) {
    LmMat3 linear;
    LmVec3 translation;
    getRotation(m, linear);
    getTranslation(m, translation);
    inverse(linear, linear);
    setWithOriginAt(out, linear, translation);
}

float subDeterminant(const LmMat4& m, std::size_t n, const SubDeterminantIndices& rows,
                     const SubDeterminantIndices& columns) {
    if (n == 1) {
        return element(m, rows[0], columns[0]);
    }
    const SubDeterminantIndices lowerRows = without(rows, 0);
    float sum = 0.0F;
    for (std::size_t j = 0; j < n; ++j) {
        const float product =
            element(m, rows[0], columns[j]) * subDeterminant(m, n - 1, lowerRows, without(columns, j));
        sum += isOdd(j) ? -product : product;
    }
    return sum;
}

} // namespace quillon
