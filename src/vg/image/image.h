#pragma once

#include "base/array.h"
#include "vg/image/pixel_area.h"
#include "vg/object_handles.h"
#include "vg/raster/paint/image_sampler.h"
#include "vg/raster/paint/texture_params.h"
#include "vg/raster/pixels/pixel_format.h"

namespace vg {

/// The largest side whose square has four bytes a pixel below 2^31.
inline constexpr VGint kMaxImageSide = 23170;

/// An image object: rows of pixels in any format, the lowest row first. A paint that uses the
/// image holds a reference, so destroying the handle keeps the pixels alive for it.
///
/// A child shows a rectangle of its parent's pixels and holds a reference to the parent.
///
/// A mask layer is an image of kind kMaskLayer and format VG_A_8.
struct Image final : Object {
    explicit Image(ObjectKind objectKind = ObjectKind::kImage) noexcept : Object(objectKind) {}
    ~Image() override;

    VGint format = VG_sRGBA_8888;
    VGint width = 0;
    VGint height = 0;
    VGint stride = 0;                       ///< bytes from row to row, a multiple of 4
    VGint firstX = 0;                       ///< see PixelArea
    VGbitfield allowedQuality = 0;          ///< bits of VGImageQuality
    uint8_t* pixels = nullptr;              ///< in `storage`, or in that of the eldest ancestor
    const uint8_t* storageStart = nullptr;  ///< tells which storage that is
    base::Array<uint8_t> storage;
    Image* parent = nullptr;              ///< null unless this is a child
    VGHandle handle = VG_INVALID_HANDLE;  ///< its own; 0 once the handle is destroyed

    /// Gives the image a size, and pixels of zero. False when memory runs out. Preconditions: the
    /// format exists, both sides are positive, and the pixels take less than 2^31 bytes.
    [[nodiscard]] bool allocate(VGint imageFormat, VGint imageWidth, VGint imageHeight) noexcept;

    /// Makes the image a child. Precondition: the rectangle lies in `ancestor`.
    void share(Image& ancestor, const raster::PixelRect& rect) noexcept;

    /// Whether both show pixels of the same storage.
    bool sharesStorageWith(const Image& other) const noexcept {
        return storageStart == other.storageStart;
    }

    /// The best quality that is allowed and not above `quality`, else the plainest.
    raster::TextureQuality limitQuality(VGint quality) const noexcept;

    const raster::PixelFormatDescriptor& descriptor() const noexcept {
        return *raster::findPixelFormat(static_cast<uint32_t>(format));
    }
    PixelArea area() noexcept { return {pixels, stride, &descriptor(), width, height, firstX}; }

    /// What a sampler reads; valid while the image lives.
    raster::SampledImage sampled() const noexcept;
};

}  // namespace vg
