// Every allocation of a session with images, patterns and masks fails in turn: nothing leaks, a
// failure alone is overcome, and what is reported of more is the lack of memory.

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "failing_allocator.h"
#include "vg/engine.h"
#include "vg/image/image_samples.h"

namespace vg {
namespace {

constexpr int kSide = 20;

void makePaint(VGImage image) {
    const VGPaint paint = vgCreatePaint();
    vgPaintPattern(paint, image);
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_PATTERN);
    vgSetPaint(paint, VG_FILL_PATH);
    vgDestroyPaint(paint);
}

void drawImages(const std::vector<uint32_t>& colors) {
    const VGImage image = imageOf(colors, 8, 8);
    const VGImage child = vgChildImage(image, 1, 1, 6, 6);
    vgDestroyImage(image);
    const VGPaint gradient = vgCreatePaint();
    vgSetParameteri(gradient, VG_PAINT_TYPE, VG_PAINT_TYPE_LINEAR_GRADIENT);
    vgSetPaint(gradient, VG_FILL_PATH);
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_MULTIPLY);
    loadMatrix(VG_MATRIX_IMAGE_USER_TO_SURFACE, {{1, 0.5F, 3.5F}, {-0.5F, 1, 4}, {0, 0, 1}});
    vgDrawImage(child);
    const VGint rects[] = {0, 0, 9, 9, 5, 5, 9, 9};
    vgSetiv(VG_SCISSOR_RECTS, 8, rects);
    vgSeti(VG_SCISSORING, VG_TRUE);
    vgDrawImage(child);
    vgSeti(VG_SCISSORING, VG_FALSE);
    vgCopyImage(child, 1, 1, child, 0, 0, 5, 5, VG_FALSE);
    makePaint(child);
    vgDrawPath(rectanglePath(2.5F, 3, 9, 9), VG_FILL_PATH);
}

void useMasks(const std::vector<uint32_t>& colors) {
    const VGImage image = imageOf(colors, 8, 8, VG_A_8);
    const VGMaskLayer layer = vgCreateMaskLayer(9, 9);
    vgMask(image, VG_INTERSECT_MASK, 2, 2, 8, 8);
    const VGPath path = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1, 0, 0, 0,
                                     VG_PATH_CAPABILITY_ALL);
    vguEllipse(path, 10, 10, 15, 12);
    vgRenderToMask(path, VG_FILL_PATH | VG_STROKE_PATH, VG_UNION_MASK);
    if (layer != VG_INVALID_HANDLE) {
        vgCopyMask(layer, 0, 0, 4, 4, 9, 9);
        vgDestroyMaskLayer(layer);
    }
    vgSeti(VG_MASKING, VG_TRUE);
    vgDrawPath(path, VG_STROKE_PATH);
}

/// The pending error; calls with handles that could not be made complain of those afterwards.
VGErrorCode runSession(bool& isBegun, const std::vector<uint32_t>& colors) {
    Context* context = createContext(nullptr);
    Surface* surface = createSurface(kSide, kSide, {.alphaMask = true, .premultiplied = true});
    VGErrorCode error = VG_NO_ERROR;
    isBegun = context != nullptr && surface != nullptr;
    if (isBegun) {
        makeCurrent(context, surface);
        drawImages(colors);
        useMasks(colors);
        error = vgGetError();
    }
    destroyContext(context);
    destroySurface(surface);
    return error;
}

void failEachAllocation(bool allLater) {
    const auto colors = opaqueColors(64, 71);
    bool isBegun = false;
    ASSERT_EQ(runSession(isBegun, colors), VG_NO_ERROR);  // and whatever is made once in a process
    int failedAfterStart = 0, reported = 0;
    for (long index = 0;; ++index) {
        const long before = liveAllocations();
        failAllocation(index, allLater);
        const VGErrorCode error = runSession(isBegun, colors);
        const bool wasReached = stopFailingAllocations();
        ASSERT_EQ(liveAllocations(), before) << "allocation " << index;
        const bool isOvercome = !allLater || !wasReached || !isBegun;
        // What is only kept for later draws may fail unnoticed.
        if (error != VG_NO_ERROR) {
            ASSERT_FALSE(isOvercome) << index;
            ASSERT_EQ(error, VG_OUT_OF_MEMORY_ERROR) << index;
        }
        if (!wasReached) break;
        failedAfterStart += isBegun;
        reported += error != VG_NO_ERROR;
    }
    EXPECT_GT(failedAfterStart, 30) << "the allocations of the session were not seen";
    EXPECT_EQ(reported > 30, allLater);
}

TEST(ImageAllocationFailure, AloneIsOvercome) { failEachAllocation(false); }

TEST(ImageAllocationFailure, FromOneOnIsReported) { failEachAllocation(true); }

}  // namespace
}  // namespace vg
