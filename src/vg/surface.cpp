// Surfaces, and the functions of engine.h that concern them.

#include "vg/surface.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "vg/current_pair.h"
#include "vg/image/mask_values.h"

namespace vg {
namespace {

// VGImageFormat codes: alpha in the high bits, then red, green, blue.
constexpr uint32_t kStandardArgb = 0x41;
constexpr uint32_t kLinearArgb = 0x48;

/// Each colour space's premultiplied format follows its plain one.
uint32_t formatOf(const SurfaceFlags& flags) noexcept {
    return (flags.linear ? kLinearArgb : kStandardArgb) + (flags.premultiplied ? 1U : 0U);
}

}  // namespace

bool Surface::isLinear() const noexcept {
    return format == kLinearArgb || format == kLinearArgb + 1U;
}

PixelArea Surface::maskArea() noexcept {
    assert(hasMask);
    uint8_t* const lowest = mask.data() + int64_t{height - 1} * width;
    return {lowest, -int64_t{width}, &maskFormat(), width, height};
}

Surface* createSurface(int32_t width, int32_t height, const SurfaceFlags& flags) noexcept {
    auto* surface = new (std::nothrow) Surface;
    if (surface == nullptr) return nullptr;
    surface->format = formatOf(flags);
    surface->hasMask = flags.alphaMask;
    if (!resizeSurface(surface, width, height)) {
        delete surface;
        return nullptr;
    }
    return surface;
}

void destroySurface(Surface* surface) noexcept {
    if (surface == nullptr) return;
    if (currentPair.surface == surface) currentPair = {};
    delete surface;
}

bool resizeSurface(Surface* surface, int32_t width, int32_t height) noexcept {
    if (width < 1 || height < 1) return false;
    width = std::min(width, kMaxSurfaceDimension);
    height = std::min(height, kMaxSurfaceDimension);
    const int count = width * height;
    PixelMemory pixels;
    base::Array<uint8_t> mask;
    if (!pixels.allocate(count)) return false;
    if (surface->hasMask && (!mask.reserve(count) || !mask.resize(count))) return false;
    std::fill(mask.begin(), mask.end(), kFullMask);
    surface->pixels.swap(pixels);
    surface->mask.swap(mask);
    surface->width = width;
    surface->height = height;
    surface->pendingClear.forget();
    return true;
}

int32_t surfaceWidth(const Surface* surface) noexcept { return surface->width; }

int32_t surfaceHeight(const Surface* surface) noexcept { return surface->height; }

uint32_t surfaceFormat(const Surface* surface) noexcept { return surface->format; }

uint32_t* surfacePixels(Surface* surface) noexcept { return surface->view().pixels; }

void finishSurface(Surface* surface) noexcept { surface->finishClear(); }

}  // namespace vg
