// Copies between the current surface, images and the caller's memory.

#include "vg/context.h"
#include "vg/draw/scissored_fill.h"
#include "vg/entry/image_checks.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace {

/// Copies into the current surface, within the scissor. False, with nothing drawn, when memory
/// runs out.
bool copyToSurface(vg::Context& context, const vg::ConstPixelArea& from,
                   const vg::PixelCopy& copy) noexcept {
    const vg::PixelArea to = vg::currentSurface()->area();
    const auto copyPart = [&](const vg::raster::PixelRect& rect) noexcept {
        vg::copyArea(to, from, copy, rect);
        return true;
    };
    return vg::forEachScissorRect(context, to.width, to.height, copyPart);
}

}  // namespace

void vgSetPixels(VGint dx, VGint dy, VGImage source, VGint sx, VGint sy, VGint width,
                 VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, source) : nullptr;
    if (image == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    vg::doOrRaise(*context, [&] {
        return copyToSurface(*context, image->area(), {dx, dy, sx, sy, width, height});
    });
}

void vgGetPixels(VGImage destination, VGint dx, VGint dy, VGint sx, VGint sy, VGint width,
                 VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, destination) : nullptr;
    if (image == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    const vg::PixelArea to = image->area();
    vg::copyArea(to, vg::currentSurface()->area(), {dx, dy, sx, sy, width, height},
                 vg::wholeOf(to));
}

void vgWritePixels(const void* data, VGint dataStride, VGint dataFormat, VGint dx, VGint dy,
                   VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    vg::ConstPixelArea from;
    if (context == nullptr || !vg::describeMemory(*context, static_cast<const uint8_t*>(data),
                                                  dataStride, dataFormat, width, height, from)) {
        return;
    }
    vg::doOrRaise(*context, [&] {
        return copyToSurface(*context, from, {dx, dy, 0, 0, width, height});
    });
}

void vgReadPixels(void* data, VGint dataStride, VGint dataFormat, VGint sx, VGint sy, VGint width,
                  VGint height) {
    vg::Context* context = vg::currentContext();
    vg::PixelArea to;
    if (context == nullptr || !vg::describeMemory(*context, static_cast<uint8_t*>(data), dataStride,
                                                  dataFormat, width, height, to)) {
        return;
    }
    vg::copyArea(to, vg::currentSurface()->area(), {0, 0, sx, sy, width, height}, vg::wholeOf(to));
}

void vgCopyPixels(VGint dx, VGint dy, VGint sx, VGint sy, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    vg::doOrRaise(*context, [&] {
        vg::PixelCopy copy = {dx, dy, sx, sy, width, height};
        vg::ConstPixelArea from = vg::currentSurface()->area();
        return vg::detachSource(from, copy, context->pixelWork) &&
               copyToSurface(*context, from, copy);
    });
}
