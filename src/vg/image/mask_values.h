#pragma once

#include <cstdint>

#include "vg/image/pixel_area.h"
#include "vg/vg.h"

namespace vg {

// A mask is an area of VG_A_8 pixels: bytes for values in 0..1.

inline constexpr uint8_t kFullMask = 255;

/// The descriptor of VG_A_8.
const raster::PixelFormatDescriptor& maskFormat() noexcept;

/// True for an operation that takes values: all but VG_CLEAR_MASK and VG_FILL_MASK.
constexpr bool takesValues(VGint operation) noexcept {
    return operation != VG_CLEAR_MASK && operation != VG_FILL_MASK;
}

/// Sets the part of the rectangle that lies in the mask to 0 or 1. Precondition: the operation
/// takes no values.
void setMask(const PixelArea& mask, VGint operation, const raster::PixelRect& rect) noexcept;

/// Combines values with the part of the rectangle that lies in both areas: the alpha of the source,
/// or its red or grey in a format without one. Precondition: the operation takes values.
void combineMask(const PixelArea& mask, VGint operation, const ConstPixelArea& from,
                 const PixelCopy& copy) noexcept;

}  // namespace vg
