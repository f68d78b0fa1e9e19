#include "vg/raster/span/coverage_walk.h"

namespace vg::raster {

bool CoverageWalk::next(Piece& piece) noexcept { return advance(piece); }

}  // namespace vg::raster
