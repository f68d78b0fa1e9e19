#include "vg/image/image.h"

#include <cassert>
#include <limits>
#include <utility>

namespace vg {
/// Ancestors that only this image kept alive go with it, one after the other: generations may be
/// many more than calls can nest.
Image::~Image() {
    while (parent != nullptr && parent->references == 1) {
        Image* const orphan = parent;
        parent = std::exchange(orphan->parent, nullptr);
        release(orphan);
    }
    release(parent);
}

bool Image::allocate(VGint imageFormat, VGint imageWidth, VGint imageHeight) noexcept {
    assert(imageWidth > 0 && imageHeight > 0);
    subKind = format = imageFormat;
    width = imageWidth;
    height = imageHeight;
    const int64_t bits = int64_t{width} * descriptor().bitsPerPixel;
    stride = static_cast<VGint>((bits + 31) / 32 * 4);
    assert(int64_t{stride} * height <= std::numeric_limits<VGint>::max());
    const VGint bytes = stride * height;
    if (!storage.reserve(bytes) || !storage.resizeZeroed(bytes)) return false;
    storageStart = pixels = storage.data();
    return true;
}

void Image::share(Image& ancestor, const raster::PixelRect& rect) noexcept {
    assert(0 <= rect.x0 && rect.x0 < rect.x1 && rect.x1 <= ancestor.width);
    assert(0 <= rect.y0 && rect.y0 < rect.y1 && rect.y1 <= ancestor.height);
    retain(&ancestor);
    parent = &ancestor;
    subKind = format = ancestor.format;
    width = rect.x1 - rect.x0;
    height = rect.y1 - rect.y0;
    stride = ancestor.stride;
    storageStart = ancestor.storageStart;
    allowedQuality = ancestor.allowedQuality;
    const int64_t bits = int64_t{ancestor.firstX + rect.x0} * descriptor().bitsPerPixel;
    pixels = ancestor.pixels + int64_t{rect.y0} * stride + bits / 8;
    firstX = static_cast<VGint>(bits % 8 / descriptor().bitsPerPixel);
}

raster::TextureQuality Image::limitQuality(VGint quality) const noexcept {
    for (VGint bit = quality; bit > VG_IMAGE_QUALITY_NONANTIALIASED; bit >>= 1) {
        if ((allowedQuality & static_cast<VGbitfield>(bit)) != 0) {
            return static_cast<raster::TextureQuality>(bit);
        }
    }
    return raster::TextureQuality::kNearest;
}

raster::SampledImage Image::sampled() const noexcept {
    raster::SampledImage image;
    image.pixels = pixels;
    image.firstX = firstX;
    image.stride = stride;
    image.width = width;
    image.height = height;
    image.format = static_cast<uint32_t>(format);
    image.widthLog2 = raster::sideLog2(width);
    image.heightLog2 = raster::sideLog2(height);
    return image;
}

}  // namespace vg
