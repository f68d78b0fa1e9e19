#pragma once

#include "base/array.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/replay/active_edges.h"
#include "vg/raster/replay/band_list.h"
#include "vg/raster/sweep/sweep_lines.h"

namespace vg::raster {

enum class RecordResult {
    kRecorded,
    kTooManyCoords,
    kTooLarge,  ///< the polygon's box (Rasterizer::record only)
    kClipped,   ///< part of the polygon lies outside the clip (Rasterizer::record only)
    kOutOfMemory,
};

/// Makes band lists of polygons: the sweep, but for the coverage. Replaying the list where it was
/// made gives the pixels that sweeping the polygon gives.
///
/// Recording is apart from drawing, so that sweeps which record nothing pay nothing.
class BandRecorder {
public:
    /// Replaces the bands of `list`; its origin is the caller's. On failure the list is empty.
    RecordResult record(const FixedPolygon& polygon, FillRule rule, Quality quality,
                        BandList& list) noexcept;

    void shrinkToFit() noexcept;

private:
    class BandWriter;

    [[nodiscard]] bool prepare(const FixedPolygon& polygon, Quality quality) noexcept;
    [[nodiscard]] bool recordExact(FillRule rule, BandWriter& writer) noexcept;
    [[nodiscard]] bool pushTrapezoids(FillRule rule, int32_t bottom, BandWriter& writer) noexcept;
    template <int32_t kCopies, class EndBand>
    [[nodiscard]] bool recordSamples(FillRule rule, BandWriter& writer, EndBand endBand) noexcept;
    [[nodiscard]] bool recordHalfRows(FillRule rule, BandWriter& writer) noexcept;
    [[nodiscard]] bool recordCentres(FillRule rule, BandWriter& writer) noexcept;

    base::Array<RasterEdge> edges_;
    SweepLines lines_;
    ActiveEdges active_;
};

}  // namespace vg::raster
