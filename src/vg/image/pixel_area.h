#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/pixels/pixel_format.h"

namespace vg {

/// Pixels in memory, of an image, a surface or the caller; y upwards.
template <class Byte>
struct BasicPixelArea {
    Byte* lowestRow = nullptr;
    int64_t stride = 0;  ///< bytes from a row to the one above; negative when rows run downwards
    const raster::PixelFormatDescriptor* format = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    int32_t firstX = 0;  ///< pixels of a row's first byte before column 0; 0 from 8 bits a pixel up

    Byte* row(int32_t y) const noexcept { return lowestRow + y * stride; }

    operator BasicPixelArea<const Byte>() const noexcept {
        return {lowestRow, stride, format, width, height, firstX};
    }
};

using PixelArea = BasicPixelArea<uint8_t>;
using ConstPixelArea = BasicPixelArea<const uint8_t>;

/// A rectangle of pixels to copy: its lower left corners and its size. Any integers.
struct PixelCopy {
    int32_t toX, toY;
    int32_t fromX, fromY;
    int32_t width, height;
};

/// The part of the copy that lies in areas of both sizes and in `limits`, a rectangle of the
/// destination; its width or height is 0 when there is none.
PixelCopy clipCopy(const PixelArea& to, const ConstPixelArea& from, const PixelCopy& copy,
                   const raster::PixelRect& limits) noexcept;

/// Copies the part of the rectangle that lies in both areas and in `limits`, a rectangle of the
/// destination. The areas must not overlap.
void copyArea(const PixelArea& to, const ConstPixelArea& from, const PixelCopy& copy,
              const raster::PixelRect& limits) noexcept;

/// The whole area as a rectangle.
template <class Byte>
raster::PixelRect wholeOf(const BasicPixelArea<Byte>& area) noexcept {
    return {0, 0, area.width, area.height};
}

/// The rectangle of a lower left corner and a positive size; sides beyond an integer are cut.
raster::PixelRect pixelRect(int32_t x, int32_t y, int32_t width, int32_t height) noexcept;

/// Replaces the source of a copy by a duplicate of the pixels that it names, kept in `work`, and
/// changes the copy to fit. False when memory runs out.
[[nodiscard]] bool detachSource(ConstPixelArea& from, PixelCopy& copy,
                                base::Array<uint8_t>& work) noexcept;

/// Stores the packed pixel in the part of the rectangle that lies in the area.
void fillArea(const PixelArea& area, const raster::PixelRect& rect, uint32_t packed) noexcept;

}  // namespace vg
