#pragma once

#include "vg/raster/fill_params.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/to_fixed.h"
#include "vg/raster/replay/band_recorder.h"
#include "vg/raster/replay/band_replay.h"
#include "vg/raster/sweep/chain_sweep.h"

namespace vg::raster {

/// Fills polygons. Owns the work buffers, which grow as needed and are kept for the next draw.
class Rasterizer {
public:
    /// Draws the filled polygon. False when memory runs out; the surface may then be drawn on in
    /// part, and the next call starts afresh.
    [[nodiscard]] bool fill(const FillParams& params) noexcept;

    /// Records the polygon, where it is, as a band list. Without kRecorded the list is empty.
    [[nodiscard]] RecordResult record(const FillParams& params, const BandCacheRules& rules,
                                      BandList& list) noexcept;

    /// Draws a band list in place of the polygon, with the paint, blend mode and mask of `params`.
    /// Precondition: the list fits the shift inside params.clip. False when memory runs out;
    /// nothing is drawn then.
    [[nodiscard]] bool replay(const FillParams& params, BandList& list,
                              const BandShift& shift) noexcept;

    /// Gives back the memory that the last fill did not use.
    void shrinkBuffers() noexcept;

private:
    FixedTransform transform_;
    FixedPolygon fixed_;
    ChainSweep sweep_;
    BandRecorder recorder_;
    BandReplayer replayer_;
};

}  // namespace vg::raster
