#include "quillon/geometry/Mat4Transform.h"

#include "quillon/geometry/Elements.h"
#include "quillon/geometry/RotationVector.h"

#include <cstddef>

namespace quillon {

namespace {

void addToTranslationRow(LmMat4& m, std::size_t row, float factor) {
    for (std::size_t column = 0; column < 4; ++column) {
        m[12 + column] += factor * element(m, row, column);
    }
}

void addColumn3To(LmMat4& m, std::size_t column, float factor) {
    for (std::size_t row = 0; row < 4; ++row) {
        m[4 * row + column] += factor * element(m, row, 3);
    }
}

void turnRows(LmMat4& m, std::size_t first, std::size_t second, float angle) {
    elements::turnPair(&m[4 * first], &m[4 * second], 1, 3, angle);
}

void turnColumns(LmMat4& m, std::size_t first, std::size_t second, float angle) {
    elements::turnPair(&m[first], &m[second], 4, 4, angle);
}

void multiplyRows(LmMat4& m, const LmMat3& r, std::size_t columns) {
    for (std::size_t column = 0; column < columns; ++column) {
        LmVec3 product;
        timesColumn(product, r, {m[column], m[4 + column], m[8 + column]});
        m[column] = product[0];
        m[4 + column] = product[1];
        m[8 + column] = product[2];
    }
}

} // namespace

void translateX(LmMat4& m, float d) {
    addToTranslationRow(m, 0, d);
}

void translateY(LmMat4& m, float d) {
    addToTranslationRow(m, 1, d);
}

void translateZ(LmMat4& m, float d) {
    addToTranslationRow(m, 2, d);
}

void translate(LmMat4& m, float x, float y, float z) {
    for (std::size_t column = 0; column < 4; ++column) {
        m[12 + column] += x * m[column] + y * m[4 + column] + z * m[8 + column];
    }
}

void translate(LmMat4& m, const LmVec3& v) {
    translate(m, v[0], v[1], v[2]);
}

void scale(LmMat4& m, float sx, float sy, float sz) {
    scale(m, LmVec3{sx, sy, sz});
}

void scale(LmMat4& m, const LmVec3& v) {
    for (std::size_t i = 0; i < 12; ++i) {
        m[i] *= v[i / 4];
    }
}

void rotateX(LmMat4& m, float angle) {
    turnRows(m, 1, 2, angle);
}

void rotateY(LmMat4& m, float angle) {
    turnRows(m, 2, 0, angle);
}

void rotateZ(LmMat4& m, float angle) {
    turnRows(m, 0, 1, angle);
}

void rotateAxis(LmMat4& m, const LmVec3& axis, float angle) {
    LmMat3 rotation;
    axisAngleToMatrix(rotation, axis, angle);
    multiplyRows(m, rotation, 4);
}

void leftMultiply(LmMat4& m, const LmMat3& r) {
    multiplyRows(m, r, 3);
}

void postTranslateX(LmMat4& m, float d) {
    addColumn3To(m, 0, d);
}

void postTranslateY(LmMat4& m, float d) {
    addColumn3To(m, 1, d);
}

void postTranslateZ(LmMat4& m, float d) {
    addColumn3To(m, 2, d);
}

void postTranslate(LmMat4& m, const LmVec3& v) {
    postTranslateX(m, v[0]);
    postTranslateY(m, v[1]);
    postTranslateZ(m, v[2]);
}

void postScale(LmMat4& m, const LmVec3& v) {
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            m[4 * row + column] *= v[column];
        }
    }
}

void postRotateX(LmMat4& m, float angle) {
    turnColumns(m, 2, 1, angle);
}

void postRotateY(LmMat4& m, float angle) {
    turnColumns(m, 0, 2, angle);
}

void postRotateZ(LmMat4& m, float angle) {
    turnColumns(m, 1, 0, angle);
}

void postRotateAxis(LmMat4& m, const LmVec3& axis, float angle) {
    LmMat3 rotation;
    axisAngleToMatrix(rotation, axis, angle);
    postMultiply(m, rotation);
}

void postMultiply(LmMat4& m, const LmMat3& r) {
    for (std::size_t row = 0; row < 4; ++row) {
        LmVec3 product;
        rowTimes(product, {element(m, row, 0), element(m, row, 1), element(m, row, 2)}, r);
        m[4 * row] = product[0];
        m[4 * row + 1] = product[1];
        m[4 * row + 2] = product[2];
    }
}

void postMultiplyAffine(LmMat4& a, const LmMat4& b) {
    LmMat3 rotation;
    LmVec3 translation;
    getRotation(b, rotation);
    getTranslation(b, translation);
    postMultiply(a, rotation);
    for (std::size_t column = 0; column < 3; ++column) {
        a[12 + column] += translation[column];
    }
}

void aboutPoint(LmMat4& m, const LmVec3& p) {
    translate(m, -p[0], -p[1], -p[2]);
    postTranslate(m, p);
}

} // namespace quillon
