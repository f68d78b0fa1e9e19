#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/draw/recent_cache.h"
#include "vg/geometry/matrix.h"
#include "vg/geometry/outline.h"
#include "vg/geometry/tolerance.h"
#include "vg/path/path.h"
#include "vg/path/path_bounds.h"
#include "vg/raster/band_cache.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/stroke/stroker.h"

namespace vg {

/// A path as straight segments under one tolerance.
struct KeptFlattening {
    uint64_t serial = 0;
    float toleranceSquared = 0.0F;
    Outline outline;

    size_t byteCount() const noexcept;
};

/// The outline of a path under one tolerance and one state of the stroke.
struct KeptStroke {
    uint64_t serial = 0;
    float toleranceSquared = 0.0F;
    StrokeParams params;  ///< its dashes point to those below
    base::Array<float> dashes;
    Outline outline;

    size_t byteCount() const noexcept;
};

/// The box of an outline under a matrix, in 1/32 pixel; see paintedBounds().
struct KeptBox {
    uint64_t serial = 0;  ///< of the outline; 0: there is none
    Matrix3 matrix;
    raster::FixedBox box = {};
};

/// What draws of a path leave for the next ones. Forgotten when the path changes.
///
/// Of flattenings and of outlines there are at most 64 KiB each, besides the latest flattening
/// however long it is; a longer outline is made anew at each draw. Either band list has at most
/// 128 KiB of values, as many bands, and 72 KiB of cells.
struct PathCache final : PathLeftovers {
    RecentCache<KeptFlattening> flattenings;
    RecentCache<KeptStroke> strokes;
    raster::BandCache fillBands;
    raster::BandCache strokeBands;
    KeptBox fillBox;
    KeptBox strokeBox;

    /// The path as straight segments, made unless it is there. Null when memory runs out.
    const KeptFlattening* flatten(const Path& path, const FlatteningTolerance& tolerance) noexcept;

    /// The kept outline of a stroke, or null.
    const KeptStroke* findStroke(const StrokeParams& params, float toleranceSquared) noexcept;

    /// Keeps a copy of an outline. Null when it is too large or memory runs out.
    const KeptStroke* keepStroke(const StrokeParams& params, float toleranceSquared,
                                 const Outline& outline) noexcept;

    /// The tight box of the path under the matrix; the last one is kept.
    PathBox boundsUnder(const Path& path, const Matrix3& matrix) noexcept;

    /// Forgets everything; some of the memory serves what is made next.
    void clear() noexcept override;

    /// Of memory, but for the band lists.
    size_t byteCount() const noexcept override {
        return sizeof *this + flattenings.byteCount() + strokes.byteCount();
    }

private:
    bool hasBounds_ = false;
    Matrix3 boundsMatrix_;
    PathBox bounds_;
};

/// The path's cache, or null before ensureCache().
inline PathCache* cacheOf(const Path& path) noexcept {
    return static_cast<PathCache*>(path.leftovers);
}

/// Gives the path a cache unless it has one. False when memory runs out.
[[nodiscard]] bool ensureCache(Path& path) noexcept;

}  // namespace vg
