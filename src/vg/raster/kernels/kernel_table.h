// The table of kernels of one level. Not an ordinary header: one .cpp a level defines QUOR_KERNELS
// and includes it, compiled for that level. All that it pulls in has internal linkage or is always
// inlined: otherwise the linker could keep a function's AVX2 copy for everybody.

#include "vg/raster/kernels/kernel_amounts.h"
#include "vg/raster/kernels/kernel_composite.h"
#include "vg/raster/kernels/kernel_contours.h"
#include "vg/raster/kernels/kernel_edges.h"
#include "vg/raster/kernels/kernel_gradient.h"
#include "vg/raster/kernels/kernel_mix.h"
#include "vg/raster/kernels/kernel_order.h"
#include "vg/raster/kernels/kernel_ramp.h"
#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

constexpr Kernels QUOR_KERNELS = {
    .boxOf = &boxOf,
    .makeEdges = &makeEdges,
    .evaluate = &evaluate,
    .makeVertical = &makeVertical,
    .proveOrder = &proveOrder,
    .orderLanes = &orderLanes,
    .resolveLanes = &resolveLanes,
    .addChains = &addChains,
    .addRows = &addRows,
    .compositeSource = &composite<FlatSource>,
    .compositeSourceOver = &composite<FlatSourceOver>,
    .runSource = &run<FlatSource>,
    .runSourceOver = &run<FlatSourceOver>,
    .linearPixels = &linearPixels,
    .radialPixels = &radialPixels,
    .takeCoverage = &takeCoverage,
    .sourceOver = &sourceOver,
    .rampPixels = &rampPixels,
    .mixSource = &mixSource,
    .mixSourceOver = &mixSourceOver,
};

}  // namespace vg::raster
