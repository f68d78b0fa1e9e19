#pragma once

#include <algorithm>
#include <cassert>

#include "vg/raster/geometry/polygon.h"
#include "vg/raster/replay/active_edges.h"

namespace vg::raster {

/// Edges are paired in order: first with second, third with fourth, and so on.
template <class Emit>
void forEachEvenOddSpan(const ActiveEdge* edge, const ActiveEdge* end, Emit&& emit) noexcept {
    for (; end - edge >= 2; edge += 2) emit(edge[0], edge[1]);
}

/// A span opens at the edge where the sum of directions leaves 0 and closes at the edge where it
/// returns to 0; edges in between are skipped.
template <class Emit>
void forEachNonZeroSpan(const ActiveEdge* edge, const ActiveEdge* end, Emit&& emit) noexcept {
    const ActiveEdge* left = nullptr;
    for (int32_t winding = 0; edge != end; ++edge) {
        if (winding == 0) left = edge;
        winding += edge->edge->direction;
        if (winding == 0) emit(*left, *edge);
    }
}

/// Calls emit(left, right) for each span that the fill rule makes of the edges of one band.
/// Precondition: the edges are in the band's order.
template <class Emit>
void forEachSpan(const ActiveEdge* first, const ActiveEdge* end, FillRule rule,
                 Emit&& emit) noexcept {
    assert(std::is_sorted(
        first, end, [](const ActiveEdge& a, const ActiveEdge& b) { return a.key() < b.key(); }));
    if (rule == FillRule::kEvenOdd) {
        forEachEvenOddSpan(first, end, emit);
    } else {
        forEachNonZeroSpan(first, end, emit);
    }
}

}  // namespace vg::raster
