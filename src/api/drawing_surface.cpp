#include "api/drawing_surface.h"

#include <new>

namespace quor {

DrawingSurface* DrawingSurface::create(uint32_t width, uint32_t height) noexcept {
    vg::SurfaceFlags flags;
    flags.premultiplied = true;
    vg::Surface* engineSurface =
        vg::createSurface(static_cast<int32_t>(width), static_cast<int32_t>(height), flags);
    if (engineSurface == nullptr) return nullptr;
    auto* surface = new (std::nothrow) DrawingSurface(engineSurface);
    if (surface == nullptr) vg::destroySurface(engineSurface);
    return surface;
}

bool DrawingSurface::resize(uint32_t width, uint32_t height) noexcept {
    if (!vg::resizeSurface(engineSurface_, static_cast<int32_t>(width),
                           static_cast<int32_t>(height))) {
        return false;
    }
    resetPlacement();
    return true;
}

PixelBlock DrawingSurface::pixelBlock() const noexcept {
    return {pixels(), vg::surfaceWidth(engineSurface_), vg::surfaceHeight(engineSurface_),
            vg::surfaceFormat(engineSurface_)};
}

void DrawingSurface::resetPlacement() noexcept {
    viewport.set(0.0F, 0.0F, static_cast<float>(width()), static_cast<float>(height()));
    transform = {};
}

SvgMatrix DrawingSurface::transformMatrix() const noexcept {
    return SvgMatrix::translation(transform.translationX, transform.translationY) *
           SvgMatrix::rotationAbout(transform.rotation * kRadiansPerDegree, transform.pivotX,
                                    transform.pivotY);
}

}  // namespace quor
