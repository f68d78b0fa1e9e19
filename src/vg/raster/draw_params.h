#pragma once

// What one fill hands to the rasterizer: plain structures, never the engine's context.

#include <cstdint>

#include "vg/raster/gradient_params.h"
#include "vg/raster/pending_clear.h"
#include "vg/raster/texture_params.h"

namespace vg::raster {

/// A point in path user space.
struct Point {
    float x;
    float y;
};

/// Closed contours of straight segments. Contour i owns the next contourSizes[i] points; its last
/// point joins its first. Points may be any floats; non-finite ones are left out.
struct Polygon {
    const Point* points = nullptr;
    int32_t pointCount = 0;
    const int32_t* contourSizes = nullptr;
    int32_t contourCount = 0;
};

/// Maps path user space to surface pixels, y upwards: (m00 x + m01 y + m02, m10 x + m11 y + m12).
struct Affine {
    float m00 = 1.0F, m01 = 0.0F, m02 = 0.0F;
    float m10 = 0.0F, m11 = 1.0F, m12 = 0.0F;
};

/// Whole pixels, y upwards, x1 and y1 exclusive; empty when x1 <= x0 or y1 <= y0.
struct PixelRect {
    int32_t x0 = 0, y0 = 0, x1 = 0, y1 = 0;

    bool isEmpty() const noexcept { return x1 <= x0 || y1 <= y0; }
};

enum class FillRule : int32_t { kEvenOdd = 0x1900, kNonZero = 0x1901 };

enum class Quality : int32_t {
    kNonAntialiased = 0x1200,
    kFaster = 0x1201,
    kBetter = 0x1202,
};

/// The pixels that are drawn on: 32-bit words, rows from the top down without padding. Pixel row y
/// (upwards) lies in memory row height - 1 - y.
struct PixelSurface {
    uint32_t* pixels = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    /// VG_sARGB_8888 (0x41), VG_lARGB_8888 (0x48) or the premultiplied format that follows each.
    uint32_t format = 0x42;
    PendingClear* pendingClear = nullptr;  ///< rows to be cleared before a draw

    uint32_t* row(int32_t y) const noexcept {
        return pixels + static_cast<int64_t>(height - 1 - y) * width;
    }
    /// Must come before drawing on the rows bottom <= y <= top.
    void finishClear(int32_t bottom, int32_t top) const noexcept {
        if (pendingClear != nullptr) pendingClear->finishRows(*this, bottom, top);
    }
    /// The same for a row that is wholly overwritten.
    void forgetClear(int32_t y) const noexcept {
        if (pendingClear != nullptr) pendingClear->forgetRow(y);
    }
};

/// The paint of one draw.
struct PaintParams {
    PaintKind kind = PaintKind::kColor;
    GradientParams gradient;                    ///< of a gradient
    TextureParams pattern;                      ///< of a pattern; a colour has the three below
    float color[4] = {0.0F, 0.0F, 0.0F, 1.0F};  ///< red, green, blue, alpha; not premultiplied
    bool colorTransformEnabled = false;
    float colorTransform[8] = {1, 1, 1, 1, 0, 0, 0, 0};  ///< four scales, then four biases
};

/// Everything that one fill needs.
struct FillParams {
    Polygon polygon;
    Affine userToSurface;
    FillRule fillRule = FillRule::kEvenOdd;
    Quality quality = Quality::kBetter;
    int32_t blendMode = 0x2001;  ///< a VGBlendMode
    PixelSurface surface;
    PixelRect clip;  ///< inside the surface
    PaintParams paint;
    /// One byte a pixel, in the surface's row order; scales coverage. Null: no masking.
    const uint8_t* mask = nullptr;
    ImageMode imageMode = ImageMode::kNone;  ///< how `image` goes with the paint
    /// Of an image draw. Its colour transform applies to the colours drawn: under kMultiply to the
    /// product, with none on the paint; a stencil has none, and the paint's counts.
    TextureParams image;
};

}  // namespace vg::raster
