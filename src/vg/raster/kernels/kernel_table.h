// The table of kernels of one level. Not an ordinary header: a file of one level defines
// QUOR_KERNELS and includes it once, compiled for that level. All that it
// pulls in has internal linkage, so that levels cannot mix.

#include "vg/raster/kernels/kernel_amounts.h"
#include "vg/raster/kernels/kernel_columns.h"
#include "vg/raster/kernels/kernel_composite.h"
#include "vg/raster/kernels/kernel_contours.h"
#include "vg/raster/kernels/kernel_edges.h"
#include "vg/raster/kernels/kernel_gradient.h"
#include "vg/raster/kernels/kernel_mix.h"
#include "vg/raster/kernels/kernel_neighbours.h"
#include "vg/raster/kernels/kernel_order.h"
#include "vg/raster/kernels/kernel_ramp.h"
#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

constexpr Kernels QUOR_KERNELS = {
    &boxOf,
    &makeEdges,
    &evaluate,
    &standUpright,
    &proveOrder,
    &orderLanes,
    &resolveLanes,
    &addChains,
    &addRows,
    &passBand,
    &addColumns,
    &exchangeNeighbours,
    &composite<FlatSource>,
    &composite<FlatSourceOver>,
    &run<FlatSource>,
    &run<FlatSourceOver>,
    &linearPixels,
    &radialPixels,
    &takeCoverage,
    &sourceOver,
    &rampPixels,
    &mixSource,
    &mixSourceOver,
};

}  // namespace vg::raster
