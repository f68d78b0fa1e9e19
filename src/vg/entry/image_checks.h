#pragma once

#include "vg/entry/entry_checks.h"
#include "vg/image/image.h"

// The checks that entry points of images and pixels have in common.
namespace vg {

/// The image behind the handle. Null, with the error raised, when there is none.
inline Image* findImageOrRaise(Context& context, VGImage handle) noexcept {
    Image* image = context.findImage(handle);
    if (image == nullptr) context.raise(VG_BAD_HANDLE_ERROR);
    return image;
}

/// Whether an image or a mask layer may have this size.
inline bool isImageSize(VGint width, VGint height) noexcept {
    return 0 < width && width <= kMaxImageSide && 0 < height && height <= kMaxImageSide;
}

/// Whether at least one pixel from `start` on, and all `length` of them, lie in 0..limit.
inline bool isInside(VGint start, VGint length, VGint limit) noexcept {
    return start >= 0 && length > 0 && length <= limit && start <= limit - length;
}

/// True for a rectangle of pixels; else the error is raised.
inline bool isSizeOrRaise(Context& context, VGint width, VGint height) noexcept {
    if (width > 0 && height > 0) return true;
    context.raise(VG_ILLEGAL_ARGUMENT_ERROR);
    return false;
}

/// The caller's memory as rows of pixels. False, with the error raised, when the format does not
/// exist, the size is not positive, or the memory is null or not aligned to 16- or 32-bit pixels.
template <class Byte>
bool describeMemory(Context& context, Byte* data, VGint stride, VGint format, VGint width,
                    VGint height, BasicPixelArea<Byte>& area) noexcept {
    const auto* descriptor = raster::findPixelFormat(static_cast<uint32_t>(format));
    if (descriptor == nullptr) {
        context.raise(VG_UNSUPPORTED_IMAGE_FORMAT_ERROR);
        return false;
    }
    if (!isSizeOrRaise(context, width, height)) return false;
    const int32_t bytes = descriptor->bitsPerPixel / 8;
    if (!isUsableArray(data, bytes > 0 ? static_cast<uintptr_t>(bytes) : 1)) {
        context.raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return false;
    }
    area = {data, stride, descriptor, width, height};
    return true;
}

}  // namespace vg
