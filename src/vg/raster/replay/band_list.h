#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/replay/recorded_cells.h"

namespace vg::raster {

struct Band {
    uint16_t height;      ///< 1/32 pixel
    uint16_t coordCount;  ///< values in BandList::coords; 0 is an empty band
};

/// Where a band list is to be drawn: all x values move by dx, the first band begins at startY.
/// 1/32 pixel.
struct BandShift {
    int32_t dx;
    int32_t startY;
};

/// A path after sweep and fill rule, which can be drawn again at another place.
///
/// Bands follow each other from startY downwards. The edges of a band come in pairs, left and
/// right, that bound spans. Anti-aliased, a band lies within one pixel row unless it is empty, and
/// an edge has two values: its x at the band's top and at its bottom. Otherwise a band is one whole
/// row, startY lies on the centre of the first, and an edge has one value: its x there.
struct BandList {
    /// Lists with more values are not made: they are no faster than the sweep.
    static constexpr int32_t kMaxCoords = 0xFFFF;

    float originX = 0.0F;  ///< the translation of the path at recording, in pixels
    float originY = 0.0F;
    uint16_t startY = 0;
    bool nonEmpty = false;  ///< false: the path covers no pixel
    base::Array<uint16_t> coords;
    base::Array<Band> bands;

    // The box of all bands, 1/32 pixel.
    uint16_t minX = 0;
    uint16_t maxX = 0;
    uint16_t depth = 0;  ///< how far it reaches below startY

    uint16_t largestBand = 0;  ///< the most values of a band

    /// The path is a rectangle along pixel borders, and the box of all bands is that rectangle.
    bool isAlignedRectangle = false;

    RecordedCells cells;  ///< made by the replays

    int32_t bandCount() const noexcept { return bands.count(); }

    /// The shift for a path translated to (x, y): to 1/32 pixel across, both truncated toward the
    /// origin; by whole pixels up and down, so that startY keeps its place within the pixel.
    BandShift shiftTo(float x, float y) const noexcept;

    /// True when all of the shifted list lies inside the clip and can be replayed.
    bool fits(const BandShift& shift, const PixelRect& clip) const noexcept;

    void clear() noexcept;
};

/// What may be kept as a band list and how far it may move.
struct BandCacheRules {
    int32_t maxWidth = 0;  ///< of a path's box, in pixels; 0: nothing is kept
    int32_t maxHeight = 0;
    bool allowSnapToPixel = false;  ///< a path may move up and down by whole pixels only
};

/// True when a list made at one translation may replace the path at another, `deltaY` pixels
/// higher or lower: always where snapping to whole pixels is allowed, else when the distance is
/// nearly one that a replay can go. `deltaY` must be finite.
bool allowsVerticalMove(Quality quality, bool allowSnapToPixel, float deltaY) noexcept;

}  // namespace vg::raster
