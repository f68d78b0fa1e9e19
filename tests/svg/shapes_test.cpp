#include "svg/shapes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tree_fixture.h"
#include "vg/engine.h"
#include "vg/engine_fixture.h"

namespace quor {
namespace {

class Shapes : public vg::EngineFixture {};

constexpr float kNone = -1.0F;  ///< the length of an empty path

float outlineLength(VGPath path) {
    const VGint segments = vgGetParameteri(path, VG_PATH_NUM_SEGMENTS);
    return segments > 0 ? vgPathLength(path, 0, segments) : kNone;
}

struct ShapeCase {
    const char* element;
    Box box;
    float length;
};

constexpr Box kEmpty;
constexpr float kPi = 3.14159265F;

// In a viewport of 300 x 400, whose diagonal counts 353.55.
const ShapeCase kShapeCases[] = {
    {"circle cx='50' cy='60' r='10'", {40, 50, 60, 70}, 20 * kPi},
    {"circle r='10%'", {-35.3553F, -35.3553F, 35.3553F, 35.3553F}, 70.7107F * kPi},
    {"circle cx='50' r='0'", kEmpty, kNone},
    {"circle cx='50' r='-3'", kEmpty, kNone},
    {"circle", kEmpty, kNone},
    {"ellipse cx='20%' cy='20%' rx='10%' ry='7.5%'", {30, 50, 90, 110}, 60 * kPi},
    {"ellipse rx='5'", kEmpty, kNone},
    {"ellipse rx='5' ry='-5'", kEmpty, kNone},
    {"line x1='1' y1='2' x2='4' y2='6'", {1, 2, 4, 6}, 5},
    {"line x1='10%' y1='10%'", {0, 0, 30, 40}, 50},
    {"line", {0, 0, 0, 0}, 0},
    {"rect x='1' y='2' width='100' height='50'", {1, 2, 101, 52}, 300},
    {"rect width='10%' height='10%'", {0, 0, 30, 40}, 140},
    {"rect width='1in' height='10'", {0, 0, 90, 10}, 200},
    {"rect style='width:10;height:20'", {0, 0, 10, 20}, 60},
    {"rect width='0' height='50'", kEmpty, kNone},
    {"rect width='10' height='-5'", kEmpty, kNone},
    {"rect width='10' height='0' rx='3'", kEmpty, kNone},
    {"rect", kEmpty, kNone},
    {"rect width='100' height='50' ry='5'", {0, 0, 100, 50}, 260 + 10 * kPi},
    {"rect width='100' height='50' rx='5'", {0, 0, 100, 50}, 260 + 10 * kPi},
    {"rect width='100' height='50' rx='20' ry='20'", {0, 0, 100, 50}, 140 + 40 * kPi},
    {"rect width='50' height='50' rx='1000'", {0, 0, 50, 50}, 50 * kPi},
    {"polyline points='0,0 3,4 3,0'", {0, 0, 3, 4}, 9},
    {"polygon points='0,0 3,4 3,0'", {0, 0, 3, 4}, 12},
    {"polyline points='0,0 10,10 20'", {0, 0, 10, 10}, 14.1421F},
    {"polygon points='7'", kEmpty, kNone},
    {"polyline points='oops'", kEmpty, kNone},
    {"polygon", kEmpty, kNone},
    {"path d='M1 1H4V5z'", {1, 1, 4, 5}, 12},
    {"path d='M1 1 l3 0 # 0 4'", {1, 1, 4, 1}, 3},
    {"path d='garbage first'", kEmpty, kNone},
    {"path d=''", kEmpty, kNone},
    {"path", kEmpty, kNone},
};

TEST_F(Shapes, BuildTheOutlineOfTheirAttributes) {
    for (const ShapeCase& c : kShapeCases) {
        SCOPED_TRACE(c.element);
        const SvgTree tree(inSvg(std::string("<") + c.element + "/>"));
        auto* shape = dynamic_cast<SvgShape*>(*tree.root->children().begin());
        EXPECT_EQ(shape->path(), VG_INVALID_HANDLE);  // not before it is needed
        ASSERT_EQ(shape->ensurePath(), Status::kOk);
        ASSERT_NE(shape->path(), VG_INVALID_HANDLE);
        EXPECT_NEAR(outlineLength(shape->path()), c.length, 0.01F + 1e-3F * c.length);
        const Box& box = shape->pathBounds();
        ASSERT_EQ(box.isEmpty(), c.box.isEmpty());
        if (box.isEmpty()) continue;
        EXPECT_NEAR(box.minX, c.box.minX, 1e-3F);
        EXPECT_NEAR(box.minY, c.box.minY, 1e-3F);
        EXPECT_NEAR(box.maxX, c.box.maxX, 1e-3F);
        EXPECT_NEAR(box.maxY, c.box.maxY, 1e-3F);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    }
}

TEST_F(Shapes, HostileNumbersNeitherFailNorLeaveNonFiniteBounds) {
    const char* const elements[] = {
        "circle cx='1e38' r='3e38'",
        "circle cx='-1e300' cy='1e300' r='1e300'",
        "ellipse rx='1e300%' ry='1e-300'",
        "line x1='-1e300' x2='1e300'",
        "rect x='3e38' width='3e38' height='1e300in'",
        "rect width='3e38' height='3e38' rx='-1e300'",
        "polygon points='1e300,1e300 -1e300,-1e300 0,0'",
        "path d='M1e300 0 c1e300 1e300 -1e300 -1e300 0 0 A1e300 1e-300 1e300 1 1 1e300 5'",
    };
    for (const char* element : elements) {
        SCOPED_TRACE(element);
        const SvgTree tree(inSvg(std::string("<") + element + "/>"));
        auto* shape = dynamic_cast<SvgShape*>(*tree.root->children().begin());
        EXPECT_EQ(shape->ensurePath(), Status::kOk);
        const Box& box = shape->pathBounds();
        EXPECT_TRUE(std::isfinite(box.minX) && std::isfinite(box.minY) && std::isfinite(box.maxX) &&
                    std::isfinite(box.maxY));
    }
}

TEST_F(Shapes, KeepOneReadOnlyPathForTheirLife) {
    VGPath path = VG_INVALID_HANDLE;
    {
        const SvgTree tree(inSvg("<rect id='r' width='3' height='4'/>"));
        auto* rect = tree.find<SvgShape>("r");
        ASSERT_EQ(rect->ensurePath(), Status::kOk);
        path = rect->path();
        ASSERT_EQ(rect->ensurePath(), Status::kOk);
        EXPECT_EQ(rect->path(), path);
        EXPECT_EQ(vgGetPathCapabilities(path), VGbitfield{0xFA9});
    }
    vgGetPathCapabilities(path);
    EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
}

TEST_F(Shapes, AFailureLeavesNoPathAndMayPass) {
    const SvgTree tree(inSvg("<rect id='r' width='3' height='4'/>"));
    auto* rect = tree.find<SvgShape>("r");
    ASSERT_TRUE(vg::makeCurrent(nullptr, nullptr));
    EXPECT_EQ(rect->ensurePath(), Status::kUnknown);
    EXPECT_EQ(rect->path(), VG_INVALID_HANDLE);
    EXPECT_TRUE(rect->pathBounds().isEmpty());
    ASSERT_TRUE(vg::makeCurrent(context, surface));
    EXPECT_EQ(rect->ensurePath(), Status::kOk);
    EXPECT_EQ(rect->pathBounds().maxY, 4.0F);
}

TEST_F(Shapes, PathLengthIsTheAttributeElseMeasured) {
    const SvgTree tree(
        inSvg("<path id='given' d='M0 0H9' pathLength='120'/><path id='measured' d='M0 0H9V9'/>"
              "<path id='empty'/>"));
    auto* measured = tree.find<SvgPath>("measured");
    EXPECT_EQ(measured->pathLength(), 0.0F);
    for (const char* id : {"given", "measured", "empty"}) {
        ASSERT_EQ(tree.find<SvgPath>(id)->ensurePath(), Status::kOk);
    }
    EXPECT_EQ(tree.find<SvgPath>("given")->pathLength(), 120.0F);
    EXPECT_FLOAT_EQ(measured->pathLength(), 18.0F);
    EXPECT_EQ(tree.find<SvgPath>("empty")->pathLength(), 0.0F);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

}  // namespace
}  // namespace quor
