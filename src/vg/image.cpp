#include "vg/image.h"

namespace vg {

bool Image::allocate(VGint imageFormat, VGint imageWidth, VGint imageHeight) noexcept {
    format = imageFormat;
    width = imageWidth;
    height = imageHeight;
    const int64_t bits = int64_t{width} * descriptor().bitsPerPixel;
    stride = static_cast<VGint>((bits + 31) / 32 * 4);
    const VGint bytes = stride * height;
    return pixels.reserve(bytes) && pixels.resizeZeroed(bytes);
}

raster::SampledImage Image::sampled() const noexcept {
    raster::SampledImage image;
    image.pixels = pixels.data();
    image.stride = stride;
    image.width = width;
    image.height = height;
    image.format = static_cast<uint32_t>(format);
    image.widthLog2 = raster::sideLog2(width);
    image.heightLog2 = raster::sideLog2(height);
    return image;
}

}  // namespace vg
