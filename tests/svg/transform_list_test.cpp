#include "svg/transform_list.h"

#include <gtest/gtest.h>

#include <cmath>

#include "hostile_text.h"

namespace quor {
namespace {

constexpr uint32_t kGeneral = SvgMatrix::kGeneral;
constexpr uint32_t kAnglePreserving = SvgMatrix::kAnglePreserving;
constexpr uint32_t kIdentity = SvgMatrix::kIdentity;

TEST(TransformList, MapsPointsAndClassifies) {
    const struct {
        const char* text;
        float x, y;  ///< where (20, 10) goes
        uint32_t kind;
    } cases[] = {
        {"", 20, 10, kIdentity},
        {" , ", 20, 10, kIdentity},
        {"none", 20, 10, kIdentity},
        {"translate(10) scale(2)", 50, 20, kAnglePreserving},
        {"scale(2),translate(10 -1e1)", 60, 0, kAnglePreserving},
        {"translate(0)", 20, 10, kIdentity},
        {"scale(1)", 20, 10, kIdentity},
        {"scale(2,3)", 40, 30, kGeneral},
        {"scale(2,3) scale(1)", 40, 30, kGeneral},
        {"rotate(90 10 10)", 10, 20, kAnglePreserving},
        {"rotate( 90 )", -10, 20, kAnglePreserving},
        {"rotate(0 5 5)", 20, 10, kIdentity},
        {"rotate(90 10)", 0, 10, kAnglePreserving},
        {"skewX(45)", 30, 10, kGeneral},
        {"skewY(45)", 20, 30, kGeneral},
        {"skewY(0)", 20, 10, kIdentity},
        {"matrix(1 2 3 4 5 6)", 55, 86, kGeneral},
        {"matrix(1,0,0,1,-1.2e-5,3)", 20, 13, kGeneral},
        {"scale(2 3 4 5)translate(1)", 42, 30, kGeneral},
        {"translate(10px, 20px)", 30, 10, kAnglePreserving},
        // Text that ends within a transform makes that one the identity.
        {"scale(2) rotate(45", 40, 20, kAnglePreserving},
        {"scale(2) rotate(45 1", 40, 20, kAnglePreserving},
        {"scale(2) matrix(1 2 3 4 5", 40, 20, kAnglePreserving},
        {"scale(2) translate(", 40, 20, kAnglePreserving},
        {"matrix(1 2 3 4 5 6", 55, 86, kGeneral},
        // One fault anywhere: nothing is kept.
        {"scale (2)", 20, 10, kIdentity},
        {"translate(10) bogus(1)", 20, 10, kIdentity},
        {"translate(10) none", 20, 10, kIdentity},
        {"translate(10))", 20, 10, kIdentity},
        {"Scale(2)", 20, 10, kIdentity},
        {"scale(2) matrix(1 2 3 4 5)", 20, 10, kIdentity},
        {"scale()", 20, 10, kIdentity},
        {"scal", 20, 10, kIdentity},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const SvgMatrix matrix = parseTransformList(ExactText(c.text));
        float x = 0.0F;
        float y = 0.0F;
        matrix.apply(20.0F, 10.0F, x, y);
        EXPECT_NEAR(x, c.x, 1e-4F);
        EXPECT_NEAR(y, c.y, 1e-4F);
        EXPECT_EQ(matrix.kind, c.kind);
    }
}

TEST(TransformList, AnglesAreConvertedInFloat) {
    EXPECT_EQ(parseTransformList("skewX(45)").m01, std::tan(0.7853982F));
    EXPECT_EQ(parseTransformList("rotate(30)").m10, std::sin(30.0F * 0.017453292F));
}

TEST(TransformList, AnyTextEndsAndIdentityIsExact) {
    const std::string_view words[] = {"matrix(",    "rotate(", "scale(", "skewX(",
                                      "translate(", ")",       "1",      "-2.5",
                                      ",",          " ",       "none",   "1e30"};
    forHostileTexts(words, [](const ExactText& text) {
        const SvgMatrix matrix = parseTransformList(text);
        if (!matrix.isIdentity()) return;
        ASSERT_EQ(matrix.m00 + matrix.m11, 2.0F) << text;
        ASSERT_TRUE(matrix.m01 == 0.0F && matrix.m02 == 0.0F) << text;
        ASSERT_TRUE(matrix.m10 == 0.0F && matrix.m12 == 0.0F) << text;
    });
}

}  // namespace
}  // namespace quor
