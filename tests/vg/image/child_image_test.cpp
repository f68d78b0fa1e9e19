#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/image/image.h"
#include "vg/image/image_samples.h"

namespace vg {
namespace {

using ChildImages = EngineFixture;

TEST_F(ChildImages, ShowAndChangeTheirParentsPixelsInEveryFormat) {
    for (VGint format = 0; format < 0x100; ++format) {
        if (raster::findPixelFormat(static_cast<uint32_t>(format)) == nullptr) continue;
        SCOPED_TRACE(testing::Message() << std::hex << format);
        const VGImage parent = imageOf(opaqueColors(13 * 7, 31), 13, 7, format);
        const VGImage child = vgChildImage(parent, 3, 2, 9, 4);
        const VGImage grandchild = vgChildImage(child, 2, 1, 5, 2);
        EXPECT_EQ(vgGetParameteri(grandchild, VG_IMAGE_FORMAT), format);
        EXPECT_EQ(vgGetParameteri(grandchild, VG_IMAGE_WIDTH), 5);
        const auto all = contentsOf(parent);
        const auto part = contentsOf(grandchild);
        for (size_t i = 0; i < part.size(); ++i) {
            ASSERT_EQ(part[i], all[(3 + i / 5) * 13 + 5 + i % 5]) << i;
        }
        const VGfloat half[] = {0.5F, 0.5F, 0.5F, 0.5F};
        vgSetfv(VG_CLEAR_COLOR, 4, half);
        vgClearImage(grandchild, -1, -1, 100, 100);
        const auto cleared = contentsOf(parent);
        const uint32_t color = contentsOf(grandchild)[0];
        for (size_t i = 0; i < cleared.size(); ++i) {
            const size_t x = i % 13, y = i / 13;
            const bool isInside = x >= 5 && x < 10 && y >= 3 && y < 5;
            ASSERT_EQ(cleared[i], isInside ? color : all[i]) << x << ", " << y;
        }
        for (const VGImage image : {child, parent, grandchild}) vgDestroyImage(image);
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(ChildImages, OutliveTheirParentsHandles) {
    const auto colors = opaqueColors(16, 32);
    const VGImage eldest = imageOf(colors, 4, 4);
    const VGImage middle = vgChildImage(eldest, 1, 1, 3, 3);
    const VGImage youngest = vgChildImage(middle, 1, 1, 2, 1);
    EXPECT_EQ(vgGetParent(eldest), eldest);
    EXPECT_EQ(vgGetParent(middle), eldest);
    EXPECT_EQ(vgGetParent(youngest), middle);
    vgDestroyImage(middle);
    EXPECT_EQ(vgGetParent(youngest), eldest);
    vgDestroyImage(eldest);
    EXPECT_EQ(vgGetParent(youngest), youngest);
    EXPECT_EQ(contentsOf(youngest), (std::vector<uint32_t>{colors[10], colors[11]}));
    vgDestroyImage(youngest);
    EXPECT_EQ(vgGetParent(youngest), VG_INVALID_HANDLE);
    EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
}

TEST_F(ChildImages, MayBeGenerationsDeep) {
    VGImage image = imageOf(opaqueColors(1, 33), 1, 1);
    for (int i = 0; i < 200'000; ++i) {
        const VGImage child = vgChildImage(image, 0, 0, 1, 1);
        ASSERT_NE(child, VG_INVALID_HANDLE);
        vgDestroyImage(image);
        image = child;
    }
    EXPECT_EQ(vgGetParent(image), image);
    vgDestroyImage(image);  // frees all of them, one after the other
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(ChildImages, LieWithinTheirParent) {
    const VGImage parent = imageOf(opaqueColors(12, 34), 4, 3);
    const struct {
        VGint x, y, width, height;
    } cases[] = {{-1, 0, 2, 2},      {0, -1, 2, 2},      {4, 0, 1, 1},      {0, 3, 1, 1},
                 {1, 0, 4, 1},       {0, 1, 1, 3},       {0, 0, 0, 1},      {0, 0, 1, -1},
                 {1, 1, INT_MAX, 1}, {INT_MAX, 0, 1, 1}, {INT_MIN, 0, 1, 1}};
    for (const auto& c : cases) {
        EXPECT_EQ(vgChildImage(parent, c.x, c.y, c.width, c.height), VG_INVALID_HANDLE);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << c.x << ", " << c.y;
    }
    EXPECT_NE(vgChildImage(parent, 3, 2, 1, 1), VG_INVALID_HANDLE);
    EXPECT_EQ(vgChildImage(parent + 1000, 0, 0, 1, 1), VG_INVALID_HANDLE);
    EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
}

TEST_F(ChildImages, CopyOverEachOtherAsIfByWayOfAThird) {
    const auto colors = opaqueColors(64, 35);
    const VGImage parent = imageOf(colors, 8, 8);
    const VGImage low = vgChildImage(parent, 0, 0, 6, 6);
    const VGImage high = vgChildImage(parent, 1, 2, 6, 6);
    vgCopyImage(high, 0, 0, low, 0, 0, 6, 6, VG_FALSE);
    const auto copied = contentsOf(high);
    for (size_t i = 0; i < copied.size(); ++i) {
        ASSERT_EQ(copied[i], colors[i / 6 * 8 + i % 6]) << i;
    }
}

}  // namespace
}  // namespace vg
