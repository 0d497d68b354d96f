#include "quillon/geometry/Mat4Transform.h"

#include "tests/geometry/GeometryTesting.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillon {
namespace {

using namespace testing_geometry;

constexpr LmMat4 counting = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
constexpr LmMat3 shuffle = {0, 1, 0, 0, 0, 2, 3, 0, 0};

/// The angle of the 3-4-5 triangle: sine 0.6, cosine 0.8.
const float angle345 = std::atan2(3.0F, 4.0F);

/// Elements up to 16 carry a rounding of 1e-6, and a rotation adds two or three products.
constexpr float turnedTolerance = 6e-6F;

struct TransformCase {
    const char* what;
    void (*change)(LmMat4&);
    LmMat4 expected;
};

TEST(Mat4Local, TranslationAndScaleWorkOnWholeRows) {
    const TransformCase cases[] = {
        {"translateX",
         [](LmMat4& m) { translateX(m, 2); },
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 15, 18, 21, 24}},
        {"translateY",
         [](LmMat4& m) { translateY(m, 2); },
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 23, 26, 29, 32}},
        {"translateZ",
         [](LmMat4& m) { translateZ(m, 2); },
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 31, 34, 37, 40}},
        {"translate by numbers",
         [](LmMat4& m) { translate(m, 1, 2, 3); },
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 51, 58, 65, 72}},
        {"translate by a vector",
         [](LmMat4& m) {
             translate(m, LmVec3{1, 2, 3});
         },
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 51, 58, 65, 72}},
        {"translateX by 0", [](LmMat4& m) { translateX(m, 0); }, counting},
        {"scale by numbers",
         [](LmMat4& m) { scale(m, 2, 3, 4); },
         {2, 4, 6, 8, 15, 18, 21, 24, 36, 40, 44, 48, 13, 14, 15, 16}},
        {"scale by a vector",
         [](LmMat4& m) {
             scale(m, LmVec3{2, 3, 4});
         },
         {2, 4, 6, 8, 15, 18, 21, 24, 36, 40, 44, 48, 13, 14, 15, 16}},
        {"leftMultiply",
         [](LmMat4& m) { leftMultiply(m, shuffle); },
         {5, 6, 7, 4, 18, 20, 22, 8, 3, 6, 9, 12, 13, 14, 15, 16}},
    };
    for (const TransformCase& c : cases) {
        LmMat4 m = counting;
        c.change(m);
        EXPECT_EQ(m, c.expected) << c.what;
    }
}

TEST(Mat4Parent, TranslationAndScaleWorkOnWholeColumns) {
    const TransformCase cases[] = {
        {"postTranslateX",
         [](LmMat4& m) { postTranslateX(m, 2); },
         {9, 2, 3, 4, 21, 6, 7, 8, 33, 10, 11, 12, 45, 14, 15, 16}},
        {"postTranslateY",
         [](LmMat4& m) { postTranslateY(m, 2); },
         {1, 10, 3, 4, 5, 22, 7, 8, 9, 34, 11, 12, 13, 46, 15, 16}},
        {"postTranslateZ",
         [](LmMat4& m) { postTranslateZ(m, 2); },
         {1, 2, 11, 4, 5, 6, 23, 8, 9, 10, 35, 12, 13, 14, 47, 16}},
        {"postTranslate",
         [](LmMat4& m) {
             postTranslate(m, {1, 2, 3});
         },
         {5, 10, 15, 4, 13, 22, 31, 8, 21, 34, 47, 12, 29, 46, 63, 16}},
        {"postScale",
         [](LmMat4& m) {
             postScale(m, {2, 3, 4});
         },
         {2, 6, 12, 4, 10, 18, 28, 8, 18, 30, 44, 12, 26, 42, 60, 16}},
        {"postMultiply",
         [](LmMat4& m) { postMultiply(m, shuffle); },
         {9, 1, 4, 4, 21, 5, 12, 8, 33, 9, 20, 12, 45, 13, 28, 16}},
        {"postMultiplyAffine, whose last column is ignored",
         [](LmMat4& m) {
             postMultiplyAffine(m, {0, 1, 0, 7, 0, 0, 2, 7, 3, 0, 0, 7, 100, 200, 300, 7});
         },
         {9, 1, 4, 4, 21, 5, 12, 8, 33, 9, 20, 12, 145, 213, 328, 16}},
    };
    for (const TransformCase& c : cases) {
        LmMat4 m = counting;
        c.change(m);
        EXPECT_EQ(m, c.expected) << c.what;
    }
}

TEST(Mat4Parent, PostMultiplyAffineTakesItsOwnTarget) {
    LmMat4 m = {0, 1, 0, 0, 0, 0, 2, 0, 3, 0, 0, 0, 1, 2, 3, 1};
    postMultiplyAffine(m, m);
    EXPECT_EQ(m, (LmMat4{0, 0, 2, 0, 6, 0, 0, 0, 0, 3, 0, 0, 10, 3, 7, 1}));
}

TEST(Mat4Local, RotationMixesTwoRowsAndOnlyTheOneAboutAnAxisReachesColumnThree) {
    const TransformCase cases[] = {
        {"rotateX",
         [](LmMat4& m) { rotateX(m, angle345); },
         {1, 2, 3, 4, 9.4F, 10.8F, 12.2F, 8, 4.2F, 4.4F, 4.6F, 12, 13, 14, 15, 16}},
        {"rotateY",
         [](LmMat4& m) { rotateY(m, angle345); },
         {-4.6F, -4.4F, -4.2F, 4, 5, 6, 7, 8, 7.8F, 9.2F, 10.6F, 12, 13, 14, 15, 16}},
        {"rotateZ",
         [](LmMat4& m) { rotateZ(m, angle345); },
         {3.8F, 5.2F, 6.6F, 4, 3.4F, 3.6F, 3.8F, 8, 9, 10, 11, 12, 13, 14, 15, 16}},
        {"rotateAxis about X",
         [](LmMat4& m) {
             rotateAxis(m, {1, 0, 0}, angle345);
         },
         {1, 2, 3, 4, 9.4F, 10.8F, 12.2F, 13.6F, 4.2F, 4.4F, 4.6F, 4.8F, 13, 14, 15, 16}},
        {"rotateAxis about Z",
         [](LmMat4& m) {
             rotateAxis(m, {0, 0, 1}, angle345);
         },
         {3.8F, 5.2F, 6.6F, 8, 3.4F, 3.6F, 3.8F, 4, 9, 10, 11, 12, 13, 14, 15, 16}},
        {"rotateAxis about the diagonal, which passes the rows on",
         [](LmMat4& m) {
             rotateAxis(m, normalized({1, 1, 1}), twoPi / 3);
         },
         {5, 6, 7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 13, 14, 15, 16}},
    };
    for (const TransformCase& c : cases) {
        LmMat4 m = counting;
        c.change(m);
        EXPECT_THAT(m, elementsNear(c.expected, turnedTolerance)) << c.what;
    }
}

TEST(Mat4Parent, RotationMixesTwoColumnsOfAllRows) {
    const TransformCase cases[] = {
        {"postRotateX",
         [](LmMat4& m) { postRotateX(m, angle345); },
         {1, -0.2F, 3.6F, 4, 5, 0.6F, 9.2F, 8, 9, 1.4F, 14.8F, 12, 13, 2.2F, 20.4F, 16}},
        {"postRotateY",
         [](LmMat4& m) { postRotateY(m, angle345); },
         {2.6F, 2, 1.8F, 4, 8.2F, 6, 2.6F, 8, 13.8F, 10, 3.4F, 12, 19.4F, 14, 4.2F, 16}},
        {"postRotateZ",
         [](LmMat4& m) { postRotateZ(m, angle345); },
         {-0.4F, 2.2F, 3, 4, 0.4F, 7.8F, 7, 8, 1.2F, 13.4F, 11, 12, 2, 19, 15, 16}},
        {"postRotateAxis about Y",
         [](LmMat4& m) {
             postRotateAxis(m, {0, 1, 0}, angle345);
         },
         {2.6F, 2, 1.8F, 4, 8.2F, 6, 2.6F, 8, 13.8F, 10, 3.4F, 12, 19.4F, 14, 4.2F, 16}},
        {"postRotateAxis about the diagonal, which passes the columns on",
         [](LmMat4& m) {
             postRotateAxis(m, normalized({1, 1, 1}), twoPi / 3);
         },
         {3, 1, 2, 4, 7, 5, 6, 8, 11, 9, 10, 12, 15, 13, 14, 16}},
    };
    for (const TransformCase& c : cases) {
        LmMat4 m = counting;
        c.change(m);
        EXPECT_THAT(m, elementsNear(c.expected, turnedTolerance)) << c.what;
    }
}

TEST(Mat4Transform, AboutAPointKeepsThatPointInPlace) {
    LmMat4 m = identityMat4;
    rotateZ(m, halfPi);
    aboutPoint(m, {1, 2, 3});
    LmVec3 p{};
    transformPoint(p, {1, 2, 3}, m);
    EXPECT_THAT(p, elementsNear(LmVec3{1, 2, 3}, turnedTolerance));
    transformPoint(p, {2, 2, 3}, m);
    EXPECT_THAT(p, elementsNear(LmVec3{1, 3, 3}, turnedTolerance));
}

TEST(Mat4Transform, AboutAPointIsALocalThenAParentTranslation) {
    LmMat4 m = counting;
    aboutPoint(m, {1, 0, 2});
    // Row 3 first loses row 0 and twice row 2, then columns 0 and 2 gain column 3 and twice column 3.
    EXPECT_EQ(m, (LmMat4{5, 2, 11, 4, 13, 6, 23, 8, 21, 10, 35, 12, -18, -8, -34, -12}));
}

} // namespace
} // namespace quillon
