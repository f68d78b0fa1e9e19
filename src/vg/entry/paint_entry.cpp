// Paints, their colour and pattern, and which of them fills and strokes.

#include <algorithm>
#include <new>

#include "vg/context.h"
#include "vg/entry/image_checks.h"
#include "vg/paint/paint.h"
#include "vg/vg.h"

namespace {

constexpr VGbitfield kAllPaintModes = VG_FILL_PATH | VG_STROKE_PATH;

/// Null when memory runs out.
vg::Paint* createPaint(vg::Context& context) noexcept {
    auto* paint = new (std::nothrow) vg::Paint;
    if (paint == nullptr) return nullptr;
    paint->handle = context.shared->objects.add(paint, context.contextId);
    if (paint->handle != VG_INVALID_HANDLE) return paint;
    vg::release(paint);
    return nullptr;
}

/// Holds the object, or nothing, in place of the one that was held there.
template <class T>
void replaceHeld(T*& place, T* object) noexcept {
    vg::retain(object);
    vg::release(place);
    place = object;
}

/// The paint behind the handle; null, with an error raised, for any other handle.
vg::Paint* requirePaint(vg::Context& context, VGPaint handle) noexcept {
    vg::Paint* paint = context.findPaint(handle);
    if (paint == nullptr) context.raise(VG_BAD_HANDLE_ERROR);
    return paint;
}

VGuint toByte(float component) noexcept {
    return static_cast<VGuint>(std::clamp(component, 0.0F, 1.0F) * 255.0F + 0.5F);
}

}  // namespace

VGPaint vgCreatePaint() {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return VG_INVALID_HANDLE;
    vg::Paint* paint = nullptr;
    vg::doOrRaise(*context, [&] { return (paint = createPaint(*context)) != nullptr; });
    return paint != nullptr ? paint->handle : VG_INVALID_HANDLE;
}

void vgDestroyPaint(VGPaint handle) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    vg::Paint* paint = requirePaint(*context, handle);
    if (paint == nullptr) return;
    paint->handle = VG_INVALID_HANDLE;
    context->shared->objects.remove(handle);
}

void vgSetPaint(VGPaint handle, VGbitfield paintModes) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    vg::Paint* paint = nullptr;  // the default paint
    if (handle != VG_INVALID_HANDLE) {
        paint = requirePaint(*context, handle);
        if (paint == nullptr) return;
    }
    if (paintModes == 0 || (paintModes & ~kAllPaintModes) != 0) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    if ((paintModes & VG_FILL_PATH) != 0) replaceHeld(context->fillPaint, paint);
    if ((paintModes & VG_STROKE_PATH) != 0) replaceHeld(context->strokePaint, paint);
}

VGPaint vgGetPaint(VGint paintMode) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return VG_INVALID_HANDLE;
    if (paintMode != VG_FILL_PATH && paintMode != VG_STROKE_PATH) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return VG_INVALID_HANDLE;
    }
    const vg::Paint* paint = paintMode == VG_FILL_PATH ? context->fillPaint : context->strokePaint;
    return paint != nullptr ? paint->handle : VG_INVALID_HANDLE;
}

void vgSetColor(VGPaint handle, VGuint rgba) {
    vg::Context* context = vg::currentContext();
    vg::Paint* paint = context != nullptr ? requirePaint(*context, handle) : nullptr;
    if (paint == nullptr) return;
    for (VGuint i = 0; i < 4; ++i) {
        paint->color[i] = static_cast<float>(rgba >> (24 - 8 * i) & 0xFF) / 255.0F;
    }
}

VGuint vgGetColor(VGPaint handle) {
    vg::Context* context = vg::currentContext();
    const vg::Paint* paint = context != nullptr ? requirePaint(*context, handle) : nullptr;
    if (paint == nullptr) return 0;
    VGuint rgba = 0;
    for (const float component : paint->color) rgba = rgba << 8 | toByte(component);
    return rgba;
}

void vgPaintPattern(VGPaint handle, VGImage pattern) {
    vg::Context* context = vg::currentContext();
    vg::Paint* paint = context != nullptr ? requirePaint(*context, handle) : nullptr;
    if (paint == nullptr) return;
    vg::Image* image = nullptr;
    if (pattern != VG_INVALID_HANDLE) {
        image = vg::findImageOrRaise(*context, pattern);
        if (image == nullptr) return;
    }
    replaceHeld(paint->pattern, image);
}
