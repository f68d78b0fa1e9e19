#include <gtest/gtest.h>

#include <cmath>

#include "svg/containers.h"
#include "tree_fixture.h"

namespace quor {
namespace {

Rect rectOf(float x, float y, float width, float height) {
    Rect rect;
    rect.set(x, y, width, height);
    return rect;
}

TEST(ViewportAlignment, TextGivesAlignAndMeetOrSlice) {
    struct Case {
        const char* text;
        int align, meetOrSlice;
    };
    const Case cases[] = {
        {nullptr, 5, 0},
        {"", 5, 0},
        {"none", 0, 0},
        {"xMinYMin", 1, 0},
        {"xMidYMin", 2, 0},
        {"xMaxYMin", 3, 0},
        {"xMinYMid", 4, 0},
        {"xMidYMid", 5, 0},
        {"xMaxYMid", 6, 0},
        {"xMinYMax", 7, 0},
        {"xMidYMax", 8, 0},
        {"xMaxYMax", 9, 0},
        {"none slice", 0, 1},
        {" \n xMaxYMin \t meet ", 3, 0},
        {"defer xMinYMax slice", 7, 1},
        {"deferxMinYMin", 1, 0},
        {"xMinYMin sliced", 1, 1},
        {"xMinYMin nonsense", 1, 0},
        {"slice", 5, 0},
        {"defer", 5, 0},
        {"xMinY slice", 5, 0},
        {"XMINYMIN", 5, 0},
        {"xMin YMin", 5, 0},
    };
    for (const Case& c : cases) {
        const ViewportAlignment alignment = parsePreserveAspectRatio(c.text);
        EXPECT_EQ(alignment.align, c.align) << (c.text != nullptr ? c.text : "null");
        EXPECT_EQ(alignment.meetOrSlice, c.meetOrSlice) << (c.text != nullptr ? c.text : "null");
    }
}

TEST(ViewportMapping, FitsThePictureAsAligned) {
    struct Case {
        const char* alignment;
        float width, height;  ///< of the target, at (10, 20); (-5, 7, 100, 50) is shown
        float sx, sy, tx, ty;
        uint32_t kind;
    };
    const uint32_t even = SvgMatrix::kAnglePreserving;
    const Case cases[] = {
        {"xMidYMid", 200, 200, 2, 2, 0, 50, even},
        {"xMidYMid slice", 200, 200, 4, 4, -100, 0, even},
        {"xMinYMin slice", 200, 200, 4, 4, 0, 0, even},
        {"xMaxYMax slice", 200, 200, 4, 4, -200, 0, even},
        {"xMinYMax", 200, 200, 2, 2, 0, 100, even},
        {"xMaxYMin", 300, 100, 2, 2, 100, 0, even},
        {"none", 200, 200, 2, 4, 0, 0, SvgMatrix::kGeneral},
        {"none slice", 200, 100, 2, 2, 0, 0, even},
        {"xMidYMid", 0, 100, 0, 0, 0, 50, even},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.alignment);
        const SvgMatrix mapping =
            viewportMapping(rectOf(-5, 7, 100, 50), rectOf(10, 20, c.width, c.height),
                            parsePreserveAspectRatio(c.alignment));
        float x = 0.0F;
        float y = 0.0F;
        mapping.apply(-5, 7, x, y);  // the shown corner lands on the target's, moved by (tx, ty)
        EXPECT_EQ(x, 10 + c.tx);
        EXPECT_EQ(y, 20 + c.ty);
        EXPECT_EQ(mapping.m00, c.sx);
        EXPECT_EQ(mapping.m11, c.sy);
        EXPECT_EQ(mapping.m01, 0.0F);
        EXPECT_EQ(mapping.m10, 0.0F);
        EXPECT_EQ(mapping.kind, c.kind);
    }
}

TEST(ViewportMapping, IsFiniteForAnyRectangles) {
    const float sizes[] = {0.0F, 1e-30F, 1e-6F, 1.0F, 1e30F, 3.4e38F};
    for (float shownSize : sizes) {
        for (float targetSize : sizes) {
            for (uint8_t align = 0; align <= 9; ++align) {
                for (uint8_t slice = 0; slice <= 1; ++slice) {
                    const SvgMatrix m =
                        viewportMapping(rectOf(-3.4e38F, shownSize, shownSize, 1),
                                        rectOf(targetSize, 0, 5, targetSize), {align, slice});
                    ASSERT_TRUE(std::isfinite(m.m00) && std::isfinite(m.m02) &&
                                std::isfinite(m.m11) && std::isfinite(m.m12));
                    if (shownSize < 1e-20F) {
                        ASSERT_EQ(m.m00, 0.0F);
                    }
                }
            }
        }
    }
}

TEST(Viewport, TheRecordOfAnSvgElement) {
    struct Case {
        const char* attributes;
        bool isSet;
        float x, y, width, height;
    };
    const Case cases[] = {
        {"viewBox='1 2 3 4'", true, 1, 2, 3, 4},
        {"viewBox='1 2 3 4' width='50' height='60'", true, 1, 2, 3, 4},
        {"viewBox=' -1,-2 ,, 3\n4 5'", true, -1, -2, 3, 4},
        {"viewBox='1 2 -3 4'", true, 1, 2, 0, 4},
        {"viewBox='none'", true, 0, 0, 0, 0},
        {"viewBox=''", true, 0, 0, 0, 0},
        {"viewBox='1 2 3'", true, 0, 0, 0, 0},
        {"viewBox='1 2 x 4'", true, 0, 0, 0, 0},
        {"width='50' height='2in' x='7'", true, 0, 0, 50, 180},
        {"width='50%' height='25%'", true, 0, 0, 150, 100},
        {"width='-5' height='5'", true, 0, 0, 0, 5},
        {"width='50'", false, 0, 0, 0, 0},
        {"height='50'", false, 0, 0, 0, 0},
        {"", false, 0, 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.attributes);
        const SvgTree tree(std::string("<svg ") + c.attributes + "/>");
        ASSERT_EQ(tree.status, Status::kOk);
        EXPECT_EQ(SvgTree::messages().size(), c.isSet ? 0U : 1U);
        const Rect* viewport = tree.root->viewport();
        ASSERT_EQ(viewport != nullptr, c.isSet);
        if (viewport == nullptr) continue;
        EXPECT_EQ(viewport->x, c.x);
        EXPECT_EQ(viewport->y, c.y);
        EXPECT_EQ(viewport->width, c.width);
        EXPECT_EQ(viewport->height, c.height);
    }
    const SvgTree tree("<svg width='3'/>");
    EXPECT_EQ(SvgTree::messages(),
              std::vector<std::string>{"<svg> element didn't define 'viewBox' attribute nor "
                                       "'widht' and 'height' attributes"});
}

TEST(Viewport, LengthsReferToTheNearestSvgOrTheScreen) {
    const SvgTree tree(
        "<svg id='out' viewBox='0 0 10 20'><g><rect id='a'/></g>"
        "<svg viewBox='0 0 1 2'><rect id='b'/></svg><svg><rect id='c'/></svg></svg>");
    EXPECT_EQ(tree.find("a")->lengthViewport().width, 10.0F);
    EXPECT_EQ(tree.find("b")->lengthViewport().width, 1.0F);
    EXPECT_EQ(tree.find("c")->lengthViewport().width, 300.0F);
    EXPECT_EQ(tree.find("out")->lengthViewport().height, 20.0F);
    const SvgTree bare("<g><rect id='d'/></g>");
    EXPECT_EQ(bare.find("d")->lengthViewport().height, 400.0F);
}

TEST(Viewport, ANestedSvgMapsItsViewBoxIntoItsPlace) {
    struct Case {
        const char* attributes;
        bool isDrawn;
        float x, y;  ///< where (10, 10) goes
    };
    const Case cases[] = {
        {"x='5' y='6' width='40' height='40' viewBox='0 0 20 20'", true, 25, 26},
        {"x='10%' y='6' viewBox='10 10 200 100'", true, 20, 6},
        {"x='5' y='6' width='40' height='40' viewBox='10 10 20 40'", true, 15, 6},
        {"width='50%' height='50%' viewBox='0 0 10 10' preserveAspectRatio='none'", true, 100, 50},
        {"x='5' y='6' width='9' height='9'", true, 15, 16},
        {"x='5' y='6'", true, 15, 16},
        {"x='5' y='6' width='5cx'", true, 15, 16},
        {"x='5' width='0' viewBox='0 0 20 20'", false, 0, 0},
        {"x='5' height='-1'", false, 0, 0},
        {"x='5' viewBox='0 0 0 20'", false, 0, 0},
        {"viewBox='none'", false, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.attributes);
        const SvgTree tree(std::string("<svg viewBox='0 0 200 100'><svg id='n' ") + c.attributes +
                           "/></svg>");
        SvgMatrix mapping;
        ASSERT_EQ(tree.find<SvgSvg>("n")->ownMapping(mapping), c.isDrawn);
        if (!c.isDrawn) continue;
        float x = 0.0F;
        float y = 0.0F;
        mapping.apply(10, 10, x, y);
        EXPECT_FLOAT_EQ(x, c.x);
        EXPECT_FLOAT_EQ(y, c.y);
    }
}

TEST(Viewport, TheOutermostSvgIsPlacedByTheDocument) {
    const SvgTree tree("<svg id='s' x='5' width='0' viewBox='0'/>");
    auto* svg = tree.find<SvgSvg>("s");
    svg->setOutermostMapping(SvgMatrix::scaling(2, 3));
    SvgMatrix mapping;
    ASSERT_TRUE(svg->ownMapping(mapping));
    EXPECT_EQ(mapping.m00, 2.0F);
    EXPECT_EQ(mapping.m11, 3.0F);
    EXPECT_EQ(mapping.m02, 0.0F);
}

}  // namespace
}  // namespace quor
