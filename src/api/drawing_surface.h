#pragma once

#include <cstdint>

#include "api/surface_copy.h"
#include "svg/matrix.h"
#include "svg/rect.h"
#include "vg/engine.h"

namespace quor {

/// A motion of the drawing on the surface: rotation about the pivot, then the translation.
/// The fields are the five floats of the exported getter, in their order.
struct ViewportTransform {
    float pivotX = 0.0F;  ///< pixels
    float pivotY = 0.0F;
    float rotation = 0.0F;  ///< degrees
    float translationX = 0.0F;
    float translationY = 0.0F;
};

/// The caller's target: an engine surface, and where documents go on it.
class DrawingSurface {
public:
    /// Zero pixels, the viewport the whole surface. Sides are clamped to the engine's largest.
    /// Null when a side is 0 or above 2^31 - 1, or when memory runs out.
    static DrawingSurface* create(uint32_t width, uint32_t height) noexcept;

    DrawingSurface(const DrawingSurface&) = delete;
    DrawingSurface& operator=(const DrawingSurface&) = delete;
    ~DrawingSurface() { vg::destroySurface(engineSurface_); }

    /// Zeroes the pixels and resets viewport and transform. False, with nothing changed, in the
    /// cases in which create() gives null.
    [[nodiscard]] bool resize(uint32_t width, uint32_t height) noexcept;

    uint32_t width() const noexcept {
        return static_cast<uint32_t>(vg::surfaceWidth(engineSurface_));
    }
    uint32_t height() const noexcept {
        return static_cast<uint32_t>(vg::surfaceHeight(engineSurface_));
    }
    uint32_t* pixels() const noexcept { return vg::surfacePixels(engineSurface_); }
    PixelBlock pixelBlock() const noexcept;
    vg::Surface* engineSurface() const noexcept { return engineSurface_; }

    /// The viewport transform as a map of pixels, y downward.
    SvgMatrix transformMatrix() const noexcept;

    Rect viewport;  ///< pixels, y downward; never degenerate
    ViewportTransform transform;

private:
    explicit DrawingSurface(vg::Surface* engineSurface) noexcept : engineSurface_(engineSurface) {
        resetPlacement();
    }

    void resetPlacement() noexcept;

    vg::Surface* engineSurface_;
};

}  // namespace quor
