#pragma once

#include "base/array.h"
#include "vg/object_handles.h"
#include "vg/pixel_area.h"
#include "vg/raster/image_sampler.h"
#include "vg/raster/pixel_format.h"

namespace vg {

/// The largest side whose square has four bytes a pixel below 2^31.
inline constexpr VGint kMaxImageSide = 23170;

/// An image object: rows of pixels in any format, the lowest row first. A paint that uses the
/// image holds a reference, so destroying the handle keeps the pixels alive for it.
struct Image final : Object {
    Image() noexcept : Object(ObjectKind::kImage) {}

    VGint format = VG_sRGBA_8888;
    VGint width = 0;
    VGint height = 0;
    VGint stride = 0;               ///< bytes from row to row, a multiple of 4
    VGbitfield allowedQuality = 0;  ///< bits of VGImageQuality
    base::Array<uint8_t> pixels;

    /// Gives the image a size, and pixels of zero. False when memory runs out. Preconditions: the
    /// format exists, both sides are positive, and the pixels take less than 2^31 bytes.
    [[nodiscard]] bool allocate(VGint imageFormat, VGint imageWidth, VGint imageHeight) noexcept;

    const raster::PixelFormatDescriptor& descriptor() const noexcept {
        return *raster::findPixelFormat(static_cast<uint32_t>(format));
    }
    PixelArea area() noexcept { return {pixels.data(), stride, &descriptor(), width, height}; }

    /// What a sampler reads; valid while the image lives.
    raster::SampledImage sampled() const noexcept;
};

}  // namespace vg
