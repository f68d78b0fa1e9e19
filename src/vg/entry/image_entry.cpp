// Images, child images, and copies between images and the caller's memory.

#include <new>

#include "vg/context.h"
#include "vg/entry/image_checks.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/vg.h"

namespace {

constexpr VGbitfield kAllQualities =
    VG_IMAGE_QUALITY_NONANTIALIASED | VG_IMAGE_QUALITY_FASTER | VG_IMAGE_QUALITY_BETTER;

/// Enters a new image that prepare(image) has made; 0 when memory runs out.
template <class Prepare>
VGImage enterImage(vg::Context& context, const Prepare& prepare) noexcept {
    auto* image = new (std::nothrow) vg::Image;
    if (image == nullptr) return VG_INVALID_HANDLE;
    if (prepare(*image)) image->handle = context.shared->objects.add(image, context.contextId);
    if (image->handle != VG_INVALID_HANDLE) return image->handle;
    vg::release(image);
    return VG_INVALID_HANDLE;
}

/// The same, or an error is raised.
template <class Prepare>
VGImage enterImageOrRaise(vg::Context& context, const Prepare& prepare) noexcept {
    VGImage handle = VG_INVALID_HANDLE;
    vg::doOrRaise(context, [&] {
        handle = enterImage(context, prepare);
        return handle != VG_INVALID_HANDLE;
    });
    return handle;
}

}  // namespace

VGImage vgCreateImage(VGint format, VGint width, VGint height, VGbitfield allowedQuality) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return VG_INVALID_HANDLE;
    if (vg::raster::findPixelFormat(static_cast<uint32_t>(format)) == nullptr) {
        context->raise(VG_UNSUPPORTED_IMAGE_FORMAT_ERROR);
        return VG_INVALID_HANDLE;
    }
    if (!vg::isImageSize(width, height) || allowedQuality == 0 ||
        (allowedQuality & ~kAllQualities) != 0) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return VG_INVALID_HANDLE;
    }
    return enterImageOrRaise(*context, [&](vg::Image& image) noexcept {
        image.allowedQuality = allowedQuality;
        return image.allocate(format, width, height);
    });
}

VGImage vgChildImage(VGImage parentHandle, VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* parent = context != nullptr ? vg::findImageOrRaise(*context, parentHandle) : nullptr;
    if (parent == nullptr) return VG_INVALID_HANDLE;
    if (!vg::isInside(x, width, parent->width) || !vg::isInside(y, height, parent->height)) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return VG_INVALID_HANDLE;
    }
    return enterImageOrRaise(*context, [&](vg::Image& image) noexcept {
        image.share(*parent, {x, y, x + width, y + height});
        return true;
    });
}

VGImage vgGetParent(VGImage handle) {
    vg::Context* context = vg::currentContext();
    const vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    if (image == nullptr) return VG_INVALID_HANDLE;
    do {
        image = image->parent;
    } while (image != nullptr && image->handle == VG_INVALID_HANDLE);
    return image != nullptr ? image->handle : handle;
}

void vgDestroyImage(VGImage handle) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    if (image == nullptr) return;
    image->handle = VG_INVALID_HANDLE;
    context->shared->objects.remove(handle);
}

void vgClearImage(VGImage handle, VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    if (image == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    vg::fillArea(image->area(), vg::pixelRect(x, y, width, height),
                 vg::raster::packFloatColor(context->clearColor, image->descriptor()));
}

void vgImageSubData(VGImage handle, const void* data, VGint dataStride, VGint dataFormat, VGint x,
                    VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    vg::ConstPixelArea from;
    if (image == nullptr || !vg::describeMemory(*context, static_cast<const uint8_t*>(data),
                                                dataStride, dataFormat, width, height, from)) {
        return;
    }
    const vg::PixelArea to = image->area();
    vg::copyArea(to, from, {x, y, 0, 0, width, height}, vg::wholeOf(to));
}

void vgGetImageSubData(VGImage handle, void* data, VGint dataStride, VGint dataFormat, VGint x,
                       VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    vg::PixelArea to;
    if (image == nullptr || !vg::describeMemory(*context, static_cast<uint8_t*>(data), dataStride,
                                                dataFormat, width, height, to)) {
        return;
    }
    vg::copyArea(to, image->area(), {0, 0, x, y, width, height}, vg::wholeOf(to));
}

void vgCopyImage(VGImage destination, VGint dx, VGint dy, VGImage source, VGint sx, VGint sy,
                 VGint width, VGint height, VGboolean /*dither*/) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    vg::Image* to = vg::findImageOrRaise(*context, destination);
    vg::Image* from = vg::findImageOrRaise(*context, source);
    if (to == nullptr || from == nullptr || !vg::isSizeOrRaise(*context, width, height)) return;
    vg::doOrRaise(*context, [&] {
        vg::PixelCopy copy = {dx, dy, sx, sy, width, height};
        vg::ConstPixelArea pixels = from->area();
        if (to->sharesStorageWith(*from) && !vg::detachSource(pixels, copy, context->pixelWork))
            return false;
        vg::copyArea(to->area(), pixels, copy, vg::wholeOf(to->area()));
        return true;
    });
}
