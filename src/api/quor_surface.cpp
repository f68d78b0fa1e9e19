#include "api/arguments.h"
#include "api/library.h"
#include "api/surface_copy.h"
#include "base/finite.h"

using quor::DrawingSurface;
using quor::isUsableArray;
using quor::library;

namespace {

/// Null when the library is not initialised or the handle is bad.
DrawingSurface* liveSurface(uint32_t handle) noexcept {
    return library.isInitialized() ? library.findSurface(handle) : nullptr;
}

/// A value that is not at least 0 becomes 0.
float clampedComponent(float value) noexcept {
    value = base::finite(value);
    if (!(value >= 0.0F)) return 0.0F;
    return value > 1.0F ? 1.0F : value;
}

}  // namespace

QUOR_API uint32_t quorSurfaceCreate(uint32_t width, uint32_t height) {
    return library.isInitialized() ? library.createSurface(width, height) : QUOR_INVALID_HANDLE;
}

QUOR_API uint32_t quorSurfaceDestroy(uint32_t surface) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    return codeOf(library.destroySurface(surface));
}

QUOR_API uint32_t quorSurfaceResize(uint32_t surface, uint32_t width, uint32_t height) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    DrawingSurface* target = library.findSurface(surface);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    if (width == 0 || height == 0) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    return target->resize(width, height) ? QUOR_NO_ERROR : QUOR_OUT_OF_MEMORY_ERROR;
}

QUOR_API uint32_t quorSurfaceWidth(uint32_t surface) {
    const DrawingSurface* source = liveSurface(surface);
    return source != nullptr ? source->width() : 0;
}

QUOR_API uint32_t quorSurfaceHeight(uint32_t surface) {
    const DrawingSurface* source = liveSurface(surface);
    return source != nullptr ? source->height() : 0;
}

QUOR_API uint32_t* quorSurfacePixels(uint32_t surface) {
    const DrawingSurface* source = liveSurface(surface);
    return source != nullptr ? source->pixels() : nullptr;
}

QUOR_API uint32_t quorSurfaceMaxDimension(void) { return vg::kMaxSurfaceDimension; }

QUOR_API uint32_t quorSurfaceCopy(uint32_t surface, uint32_t* destination,
                                  uint32_t dilateEdgesFix) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    const DrawingSurface* source = library.findSurface(surface);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    if (!isUsableArray(destination)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const quor::PixelBlock block = source->pixelBlock();
    if (dilateEdgesFix != 0) {
        quor::copyPixelsDilated(block, destination);
    } else {
        quor::copyPixels(block, destination);
    }
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorSurfaceViewportGet(uint32_t surface, float* viewport) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(viewport)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const DrawingSurface* source = library.findSurface(surface);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    quor::storeRect(source->viewport, viewport);
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorSurfaceViewportSet(uint32_t surface, const float* viewport) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(viewport)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    DrawingSurface* target = library.findSurface(surface);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    return quor::loadRect(viewport, target->viewport) ? QUOR_NO_ERROR : QUOR_ILLEGAL_ARGUMENT_ERROR;
}

QUOR_API uint32_t quorSurfaceViewportTransformGet(uint32_t surface, float* values) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(values)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const DrawingSurface* source = library.findSurface(surface);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    const quor::ViewportTransform& transform = source->transform;
    values[0] = transform.pivotX;
    values[1] = transform.pivotY;
    values[2] = transform.rotation;
    values[3] = transform.translationX;
    values[4] = transform.translationY;
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorSurfaceViewportTransformSet(uint32_t surface, const float* values) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(values)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    DrawingSurface* target = library.findSurface(surface);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    target->transform = {base::finite(values[0]), base::finite(values[1]), base::finite(values[2]),
                         base::finite(values[3]), base::finite(values[4])};
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorClearColor(float red, float green, float blue, float alpha) {
    float* color = library.clearing.color;
    color[0] = clampedComponent(red);
    color[1] = clampedComponent(green);
    color[2] = clampedComponent(blue);
    color[3] = clampedComponent(alpha);
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorClearPerform(uint32_t doClear) {
    library.clearing.isEnabled = doClear != 0;
    return QUOR_NO_ERROR;
}
