#pragma once

#include <cstdint>

#include "vg/raster/geometry/fixed.h"
#include "vg/raster/pixels/pixel_surface.h"

namespace vg::raster {

/// A lazy clear of a whole surface: a row is cleared just before something is drawn on it. Large
/// surfaces do not fit the cache, so a clear in one go reads and writes all their memory once more.
class PendingClear {
public:
    bool isEmpty() const noexcept { return count_ == 0; }

    /// All of `rows` rows, at most kRowCount, are to be filled with `pixel`.
    void begin(int32_t rows, uint32_t pixel) noexcept;

    /// Clears those of the rows bottom <= y <= top, which must lie on the surface, that are not
    /// cleared yet.
    void finishRows(const PixelSurface& surface, int32_t bottom, int32_t top) noexcept {
        if (!isEmpty()) clearRows(surface, bottom, top);
    }
    void finish(const PixelSurface& surface) noexcept;

    /// A row whose pixels are all about to be overwritten, or are gone, needs no clear.
    void forgetRow(int32_t y) noexcept { take(y); }
    void forget() noexcept { begin(0, 0); }

private:
    void clearRows(const PixelSurface& surface, int32_t bottom, int32_t top) noexcept;
    /// True when the row was pending; now it is not.
    bool take(int32_t y) noexcept {
        const bool isPending = isPending_[y];
        count_ -= isPending ? 1 : 0;
        isPending_[y] = false;
        return isPending;
    }

    bool isPending_[kRowCount] = {};
    int32_t count_ = 0;  ///< pending rows
    uint32_t pixel_ = 0;
};

/// Must come before drawing on the rows bottom <= y <= top.
inline void finishClear(const PixelSurface& surface, int32_t bottom, int32_t top) noexcept {
    if (surface.pendingClear != nullptr) surface.pendingClear->finishRows(surface, bottom, top);
}

/// The same for a row that is wholly overwritten.
inline void forgetClear(const PixelSurface& surface, int32_t y) noexcept {
    if (surface.pendingClear != nullptr) surface.pendingClear->forgetRow(y);
}

}  // namespace vg::raster
