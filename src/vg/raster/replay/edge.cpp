// Turns segments so that they fall, and computes their slopes.

#include "vg/raster/replay/edge.h"

namespace vg::raster {
namespace {

RasterEdge edgeBetween(const FixedPoint& from, const FixedPoint& to) noexcept {
    const bool runsDown = from.y > to.y;
    const FixedPoint& upper = runsDown ? from : to;
    const FixedPoint& lower = runsDown ? to : from;
    const int32_t dx = lower.x - upper.x;
    const int32_t dy = upper.y - lower.y;
    return {&upper, dx * (1 << 15) / dy, -1, lower.y, static_cast<int16_t>(runsDown ? 1 : -1)};
}

}  // namespace

bool buildEdges(const FixedPolygon& polygon, base::Array<RasterEdge>& edges) noexcept {
    edges.clear();
    if (!edges.reserveMore(polygon.points.count())) return false;
    const FixedPoint* contour = polygon.points.data();
    for (const int32_t size : polygon.contourSizes) {
        const FixedPoint* from = contour + size - 1;
        for (const FixedPoint* to = contour; to != contour + size; from = to++) {
            if (from->y != to->y) edges.pushReserved(edgeBetween(*from, *to));
        }
        contour += size;
    }
    return true;
}

}  // namespace vg::raster
