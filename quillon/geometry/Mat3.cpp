#include "quillon/geometry/Mat3.h"

#include "quillon/geometry/Elements.h"

#include <cmath>
#include <utility>

namespace quillon {

namespace {

void turnRows(LmMat3& m, std::size_t first, std::size_t second, float angle) {
    elements::turnPair(&m[3 * first], &m[3 * second], 1, 3, angle);
}

void turnColumns(LmMat3& m, std::size_t first, std::size_t second, float angle) {
    elements::turnPair(&m[first], &m[second], 3, 3, angle);
}

} // namespace

LmVec3 getRow(const LmMat3& m, std::size_t row) {
    return {m[3 * row], m[3 * row + 1], m[3 * row + 2]};
}

void setRow(LmMat3& m, std::size_t row, const LmVec3& v) {
    for (std::size_t column = 0; column < 3; ++column) {
        m[3 * row + column] = v[column];
    }
}

void copy(LmMat3& out, const LmMat3& m) {
    out = m;
}

void add(LmMat3& out, const LmMat3& a, const LmMat3& b) {
    elements::add(out, a, b);
}

void sub(LmMat3& out, const LmMat3& a, const LmMat3& b) {
    elements::sub(out, a, b);
}

void addTo(LmMat3& a, const LmMat3& b) {
    elements::add(a, a, b);
}

void addScalar(LmMat3& out, const LmMat3& a, float s) {
    elements::addScalar(out, a, s);
}

void subScalar(LmMat3& out, const LmMat3& a, float s) {
    elements::addScalar(out, a, -s);
}

void mulScalar(LmMat3& out, const LmMat3& a, float s) {
    elements::mulScalar(out, a, s);
}

void scaleBy(LmMat3& a, float s) {
    elements::mulScalar(a, a, s);
}

void setDiagonal(LmMat3& a, float s) {
    a.fill(0.0F);
    fillDiagonal(a, s);
}

void fillDiagonal(LmMat3& a, float s) {
    elements::fillDiagonal(a, 3, s);
}

void mul(LmMat3& out, const LmMat3& a, const LmMat3& b) {
    LmMat3 product;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            product[3 * row + column] = element(a, row, 0) * element(b, 0, column) +
                                        element(a, row, 1) * element(b, 1, column) +
                                        element(a, row, 2) * element(b, 2, column);
        }
    }
    out = product;
}

void rowTimes(LmVec3& out, const LmVec3& v, const LmMat3& m) {
    const LmVec3 row = v;
    for (std::size_t column = 0; column < 3; ++column) {
        out[column] =
            row[0] * element(m, 0, column) + row[1] * element(m, 1, column) + row[2] * element(m, 2, column);
    }
}

void timesColumn(LmVec3& out, const LmMat3& m, const LmVec3& v) {
    out = LmVec3{dot(getRow(m, 0), v), dot(getRow(m, 1), v), dot(getRow(m, 2), v)};
}

void transpose(LmMat3& out, const LmMat3& m) {
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            out[3 * row + column] = element(m, column, row);
        }
    }
}

void transposeAliasSafe(LmMat3& out, const LmMat3& m) {
    out = m;
    transposeInPlace(out);
}

void transposeInPlace(LmMat3& m) {
    std::swap(m[1], m[3]);
    std::swap(m[2], m[6]);
    std::swap(m[5], m[7]);
}

float determinant(const LmMat3& m) {
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
           m[2] * (m[3] * m[7] - m[4] * m[6]);
}

void inverse(LmMat3& out, const LmMat3& m) {
    const float divisor = determinant(m);
    LmMat3 transposed;
    transpose(transposed, m);
    for (std::size_t row = 0; row < 3; ++row) {
        const LmVec3 cofactors = cross(getRow(transposed, (row + 1) % 3), getRow(transposed, (row + 2) % 3));
        setRow(out, row, {cofactors[0] / divisor, cofactors[1] / divisor, cofactors[2] / divisor});
    }
}

void invertRigid(LmMat3& out, const LmMat3& m) {
    transposeAliasSafe(out, m);
}

void invertRigidInPlace(LmMat3& m) {
    invertRigid(m, m);
}

void invertRotationScale(LmMat3& out, const LmMat3& m) {
    out = m;
    const LmVec3 lengths = normalizeRows(out);
    transposeInPlace(out);
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] *= 1.0F / lengths[i % 3];
    }
}

void invertRotationScaleInPlace(LmMat3& m) {
    invertRotationScale(m, m);
}

LmVec3 normalizeRows(LmMat3& m) {
    const LmVec3 lengths = {length(getRow(m, 0)), length(getRow(m, 1)), length(getRow(m, 2))};
    for (std::size_t i = 0; i < m.size(); ++i) {
        m[i] /= lengths[i / 3];
    }
    return lengths;
}

void scaleAlong(LmMat3& m, std::size_t row, const LmVec3& v) {
    const LmVec3 r = getRow(m, row);
    const float size = length(v);
    const float factor = dot(r, v) / size * (size - 1.0F) / size;
    setRow(m, row, {r[0] + v[0] * factor, r[1] + v[1] * factor, r[2] + v[2] * factor});
}

void scaleAlongAll(LmMat3& m, const LmVec3& v) {
    scaleAlong(m, 0, v);
    scaleAlong(m, 1, v);
    scaleAlong(m, 2, v);
}

void rotateX(LmMat3& m, float angle) {
    turnRows(m, 1, 2, angle);
}

void rotateY(LmMat3& m, float angle) {
    turnRows(m, 2, 0, angle);
}

void rotateZ(LmMat3& m, float angle) {
    turnRows(m, 0, 1, angle);
}

void postRotateX(LmMat3& m, float angle) {
    turnColumns(m, 2, 1, angle);
}

void postRotateY(LmMat3& m, float angle) {
    turnColumns(m, 0, 2, angle);
}

void postRotateZ(LmMat3& m, float angle) {
    turnColumns(m, 1, 0, angle);
}

bool equalExact(const LmMat3& a, const LmMat3& b) {
    return elements::equalExact(a, b);
}

bool equalApprox(const LmMat3& a, const LmMat3& b) {
    return elements::equalApprox(a, b);
}

bool hasNoNaN(const LmMat3& m) {
    return elements::hasNoNaN(m);
}

bool isRightHanded(const LmMat3& m) {
    return dot(cross(getRow(m, 0), getRow(m, 1)), getRow(m, 2)) > 0.0F;
}

bool isOrthogonal(const LmMat3& m) {
    const LmVec3 row0 = normalized(getRow(m, 0));
    const LmVec3 row1 = normalized(getRow(m, 1));
    const LmVec3 row2 = normalized(getRow(m, 2));
    return std::fabs(dot(row0, row1)) <= comparisonTolerance &&
           std::fabs(dot(row0, row2)) <= comparisonTolerance &&
           std::fabs(dot(row1, row2)) <= comparisonTolerance;
}

bool isUnitRows(const LmMat3& m) {
    return hasUnitLength(getRow(m, 0)) && hasUnitLength(getRow(m, 1)) && hasUnitLength(getRow(m, 2));
}

void printBracketed(std::ostream& out, const LmMat3& m) {
    elements::printBracketed(out, m, 3);
}

void printPlain(std::ostream& out, const LmMat3& m) {
    elements::printPlain(out, m, 3);
}

} // namespace quillon
