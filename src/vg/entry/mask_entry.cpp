// Masks and mask layers. Rendering to a mask draws the path in opaque black on a surface of its
// own and combines the mask with its alpha.

#include <new>
#include <utility>

#include "base/finite.h"
#include "vg/context.h"
#include "vg/draw/draw_path.h"
#include "vg/entry/image_checks.h"
#include "vg/entry/path_checks.h"
#include "vg/image/mask_values.h"
#include "vg/vg.h"

namespace vg {
namespace {

bool isMaskOperation(VGint operation) noexcept {
    return VG_CLEAR_MASK <= operation && operation <= VG_SUBTRACT_MASK;
}

/// The image or mask layer behind the handle; null, with the error raised, when there is none.
Image* findValuesOrRaise(Context& context, VGHandle handle) noexcept {
    Image* layer = context.findMaskLayer(handle);
    return layer != nullptr ? layer : findImageOrRaise(context, handle);
}

Image* findLayerOrRaise(Context& context, VGMaskLayer handle) noexcept {
    Image* layer = context.findMaskLayer(handle);
    if (layer == nullptr) context.raise(VG_BAD_HANDLE_ERROR);
    return layer;
}

/// Enters a mask layer of ones; 0 when memory runs out.
VGMaskLayer createLayer(Context& context, VGint width, VGint height) noexcept {
    auto* layer = new (std::nothrow) Image(ObjectKind::kMaskLayer);
    if (layer == nullptr) return VG_INVALID_HANDLE;
    VGMaskLayer handle = VG_INVALID_HANDLE;
    if (layer->allocate(VG_A_8, width, height)) {
        setMask(layer->area(), VG_FILL_MASK, wholeOf(layer->area()));
        handle = context.shared->objects.add(layer, context.contextId);
    }
    if (handle == VG_INVALID_HANDLE) release(layer);
    return handle;
}

/// Makes every draw one of opaque black on what it finds, and undoes that in the end.
class PlainPaint {
public:
    explicit PlainPaint(Context& context) noexcept : context_(context) { swap(); }
    ~PlainPaint() { swap(); }
    PlainPaint(const PlainPaint&) = delete;
    PlainPaint& operator=(const PlainPaint&) = delete;

private:
    void swap() noexcept {
        std::swap(context_.fillPaint, fillPaint_);
        std::swap(context_.strokePaint, strokePaint_);
        std::swap(context_.fillBlendMode, fillBlendMode_);
        std::swap(context_.strokeBlendMode, strokeBlendMode_);
        std::swap(context_.masking, masking_);
        std::swap(context_.colorTransformEnabled, colorTransformEnabled_);
    }

    Context& context_;
    Paint* fillPaint_ = nullptr;
    Paint* strokePaint_ = nullptr;
    VGint fillBlendMode_ = VG_BLEND_SRC_OVER;
    VGint strokeBlendMode_ = VG_BLEND_SRC_OVER;
    bool masking_ = false;
    bool colorTransformEnabled_ = false;
};

/// Draws the path, on nothing, so that alpha is its coverage. False when memory runs out.
bool drawCoverage(Context& context, Surface& work, const Surface& surface, Path& path,
                  VGbitfield paintMode) noexcept {
    work.format = VG_sARGB_8888_PRE;
    work.width = surface.width;
    work.height = surface.height;
    if (!work.pixels.allocate(surface.width * surface.height)) return false;
    const PlainPaint plain(context);
    DrawProgress progress;
    return drawPath(context, work, path, paintMode, progress);
}

/// Combines the mask with the coverage of the fill or the stroke.
void renderToMask(Context& context, Surface& surface, Path& path, VGbitfield paintMode,
                  VGint operation) noexcept {
    Surface& work = context.coverageWork;
    const auto draw = [&]() noexcept {
        return drawCoverage(context, work, surface, path, paintMode);
    };
    if (doOrRaise(context, draw)) {
        combineMask(surface.maskArea(), operation, work.area(),
                    {0, 0, 0, 0, surface.width, surface.height});
    }
}

}  // namespace
}  // namespace vg

void vgMask(VGHandle mask, VGint operation, VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    const bool takesValues = vg::takesValues(operation);
    vg::Image* values = takesValues ? vg::findValuesOrRaise(*context, mask) : nullptr;
    if (takesValues && values == nullptr) return;
    if (!vg::isMaskOperation(operation)) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    if (!vg::isSizeOrRaise(*context, width, height)) return;
    vg::Surface& surface = *vg::currentSurface();
    if (!surface.hasMask) return;
    if (takesValues) {
        const vg::PixelCopy copy = {x, y, 0, 0, width, height};
        return vg::combineMask(surface.maskArea(), operation, values->area(), copy);
    }
    vg::setMask(surface.maskArea(), operation, vg::pixelRect(x, y, width, height));
}

void vgRenderToMask(VGPath handle, VGbitfield paintModes, VGint operation) {
    vg::Context* context = vg::currentContext();
    vg::Path* path = context != nullptr ? vg::findOrRaise(*context, handle) : nullptr;
    if (path == nullptr) return;
    constexpr VGbitfield kModes = VG_STROKE_PATH | VG_FILL_PATH;
    if (paintModes == 0 || (paintModes & ~kModes) != 0 || !vg::isMaskOperation(operation)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    vg::Surface& surface = *vg::currentSurface();
    if (!surface.hasMask) return;
    if (!vg::takesValues(operation)) {
        return vg::setMask(surface.maskArea(), operation, {0, 0, surface.width, surface.height});
    }
    for (const VGbitfield mode : {VG_FILL_PATH, VG_STROKE_PATH}) {
        if ((paintModes & mode) == 0) continue;
        vg::renderToMask(*context, surface, *path, mode, operation);
    }
}

VGMaskLayer vgCreateMaskLayer(VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return VG_INVALID_HANDLE;
    if (!vg::isImageSize(width, height)) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return VG_INVALID_HANDLE;
    }
    if (!vg::currentSurface()->hasMask) return VG_INVALID_HANDLE;
    VGMaskLayer handle = VG_INVALID_HANDLE;
    vg::doOrRaise(*context, [&] {
        handle = vg::createLayer(*context, width, height);
        return handle != VG_INVALID_HANDLE;
    });
    return handle;
}

void vgDestroyMaskLayer(VGMaskLayer handle) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr || vg::findLayerOrRaise(*context, handle) == nullptr) return;
    context->shared->objects.remove(handle);
}

void vgFillMaskLayer(VGMaskLayer handle, VGint x, VGint y, VGint width, VGint height,
                     VGfloat value) {
    vg::Context* context = vg::currentContext();
    vg::Image* layer = context != nullptr ? vg::findLayerOrRaise(*context, handle) : nullptr;
    if (layer == nullptr) return;
    const float amount = base::finite(value);
    if (!(0.0F <= amount && amount <= 1.0F) || !vg::isInside(x, width, layer->width) ||
        !vg::isInside(y, height, layer->height)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    vg::fillArea(layer->area(), vg::pixelRect(x, y, width, height),
                 static_cast<uint32_t>(amount * 255.0F + 0.5F));
}

void vgCopyMask(VGMaskLayer handle, VGint dx, VGint dy, VGint sx, VGint sy, VGint width,
                VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* layer = context != nullptr ? vg::findLayerOrRaise(*context, handle) : nullptr;
    if (layer == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    vg::Surface& surface = *vg::currentSurface();
    if (!surface.hasMask) return;
    const vg::PixelArea to = layer->area();
    vg::copyArea(to, surface.maskArea(), {dx, dy, sx, sy, width, height}, vg::wholeOf(to));
}
