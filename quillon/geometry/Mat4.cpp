#include "quillon/geometry/Mat4.h"

#include "quillon/geometry/Elements.h"

#include <utility>

namespace quillon {

namespace {

bool hasAffineColumn(const LmMat4& m) {
    return m[3] == 0.0F && m[7] == 0.0F && m[11] == 0.0F && m[15] == 1.0F;
}

LmVec3 dividedByFourth(const LmVec4& v) {
    return {v[0] / v[3], v[1] / v[3], v[2] / v[3]};
}

} // namespace

void copy(LmMat4& out, const LmMat4& m) {
    out = m;
}

void add(LmMat4& out, const LmMat4& a, const LmMat4& b) {
    elements::add(out, a, b);
}

void sub(LmMat4& out, const LmMat4& a, const LmMat4& b) {
    elements::sub(out, a, b);
}

void addScalar(LmMat4& out, const LmMat4& a, float s) {
    elements::addScalar(out, a, s);
}

void scaleBy(LmMat4& a, float s) {
    elements::mulScalar(a, a, s);
}

void setDiagonal(LmMat4& a, float s) {
    a.fill(0.0F);
    fillDiagonal(a, s);
}

void fillDiagonal(LmMat4& a, float s) {
    elements::fillDiagonal(a, 4, s);
}

void multiply(LmMat4& out, const LmMat4& a, const LmMat4& b) {
    LmMat4 product;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            product[4 * row + column] =
                element(a, row, 0) * element(b, 0, column) + element(a, row, 1) * element(b, 1, column) +
                element(a, row, 2) * element(b, 2, column) + element(a, row, 3) * element(b, 3, column);
        }
    }
    out = product;
}

void transpose(LmMat4& out, const LmMat4& m) {
    out = m;
    transposeInPlace(out);
}

void transposeInPlace(LmMat4& m) {
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = row + 1; column < 4; ++column) {
            std::swap(m[4 * row + column], m[4 * column + row]);
        }
    }
}

void getRotation(const LmMat4& m, LmMat3& r) {
    for (std::size_t row = 0; row < 3; ++row) {
        setRow(r, row, {element(m, row, 0), element(m, row, 1), element(m, row, 2)});
    }
}

void setRotation(LmMat4& m, const LmMat3& r) {
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            m[4 * row + column] = element(r, row, column);
        }
    }
}

void getTranslation(const LmMat4& m, LmVec3& v) {
    v = {m[12], m[13], m[14]};
}

void setTranslation(LmMat4& m, const LmVec3& v) {
    m[12] = v[0];
    m[13] = v[1];
    m[14] = v[2];
}

void fromRotationTranslation(LmMat4& out, const LmMat3& r, const LmVec3& t) {
    out = identityMat4;
    setRotation(out, r);
    setTranslation(out, t);
}

void rowTimes(LmVec4& out, const LmVec4& v, const LmMat4& m) {
    const LmVec4 row = v;
    for (std::size_t column = 0; column < 4; ++column) {
        out[column] = row[0] * element(m, 0, column) + row[1] * element(m, 1, column) +
                      row[2] * element(m, 2, column) + row[3] * element(m, 3, column);
    }
}

void timesColumn(LmVec4& out, const LmMat4& m, const LmVec4& v) {
    const LmVec4 column = v;
    for (std::size_t row = 0; row < 4; ++row) {
        out[row] = element(m, row, 0) * column[0] + element(m, row, 1) * column[1] +
                   element(m, row, 2) * column[2] + element(m, row, 3) * column[3];
    }
}

void transformPoint(LmVec3& out, const LmVec3& p, const LmMat4& m) {
    LmVec4 transformed;
    rowTimes(transformed, {p[0], p[1], p[2], 1.0F}, m);
    out = dividedByFourth(transformed);
}

void transformPointColumn(LmVec3& out, const LmMat4& m, const LmVec3& p) {
    LmVec4 transformed;
    timesColumn(transformed, m, {p[0], p[1], p[2], 1.0F});
    out = dividedByFourth(transformed);
}

bool equalExact(const LmMat4& a, const LmMat4& b) {
    return elements::equalExact(a, b);
}

bool equalApprox(const LmMat4& a, const LmMat4& b) {
    return elements::equalApprox(a, b);
}

bool hasNoNaN(const LmMat4& m) {
    return elements::hasNoNaN(m);
}

bool isAffine(const LmMat4& m) {
    return hasNoNaN(m) && hasAffineColumn(m);
}

bool isOrthogonal(const LmMat4& m) {
    LmMat3 r;
    getRotation(m, r);
    return isOrthogonal(r);
}

bool isRigid(const LmMat4& m) {
    LmMat3 r;
    getRotation(m, r);
    return hasAffineColumn(m) && isUnitRows(r);
}

LmVec3 removeScale(LmMat4& m) {
    LmMat3 r;
    getRotation(m, r);
    const LmVec3 lengths = normalizeRows(r);
    setRotation(m, r);
    return lengths;
}

void printBracketed(std::ostream& out, const LmMat4& m) {
    elements::printBracketed(out, m, 4);
}

void printPlain(std::ostream& out, const LmMat4& m) {
    elements::printPlain(out, m, 4);
}

} // namespace quillon
