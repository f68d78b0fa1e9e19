#pragma once

#include "base/array.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/geometry/polygon_clip.h"

namespace vg::raster {

/// Brings polygons from path user space into clipped surface coordinates.
class FixedTransform {
public:
    /// Replaces `fixed` by the polygon under the matrix, inside the clip. False when memory runs
    /// out.
    [[nodiscard]] bool run(const Polygon& polygon, const Affine& userToSurface,
                           const PixelRect& clip, FixedPolygon& fixed) noexcept;

    /// Whether a point of the last polygon was outside the clip, or not finite.
    bool wasClipped() const noexcept { return wasClipped_; }

    void shrinkToFit() noexcept;

private:
    /// Fills scaled_; true when every point lies inside the limits.
    bool transform(const Polygon& polygon, const Affine& userToSurface,
                   const ClipLimits& limits) noexcept;
    [[nodiscard]] bool clipContours(const Polygon& polygon, const ClipLimits& limits,
                                    FixedPolygon& fixed) noexcept;
    [[nodiscard]] bool roundAll(const Polygon& polygon, FixedPolygon& fixed) noexcept;

    base::Array<Point> scaled_;  ///< 1/32 pixel, not rounded
    PolygonClipper clipper_;
    bool wasClipped_ = false;
};

}  // namespace vg::raster
