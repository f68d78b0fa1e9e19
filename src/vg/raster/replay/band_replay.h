#pragma once

#include "base/array.h"
#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/replay/band_list.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// Draws band lists: the sweep without transform, edges, sorting and fill rule. The coverage of
/// sixteen pixel rows at a time is delivered to the target as the sweep does it, in every quality.
/// A list replayed twice in a row at the same place within the pixel is drawn from its cells.
class BandReplayer {
public:
    /// Precondition: list.fits() the shift inside the surface. False when memory runs out; nothing
    /// is drawn then.
    [[nodiscard]] bool replayBands(BandList& list, Quality quality, const BandShift& shift,
                                   SweepTarget& target) noexcept;

    void shrinkToFit() noexcept { rows_.shrinkToFit(); }

private:
    bool hasCells(BandList& list, Quality quality, int32_t phase) noexcept;
    bool makeCells(BandList& list, Quality quality, int32_t phase) noexcept;

    template <class Window>
    void addBands(const BandList& list, Quality quality, const BandShift& shift,
                  int32_t originColumn, Window&& window) noexcept;

    CoverageRing ring_;
    base::Array<BoundaryRow> rows_;  ///< as many as a band has boundaries
};

}  // namespace vg::raster
