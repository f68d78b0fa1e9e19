// The active-edge table of the scanline algorithm (Foley, van Dam, "Computer Graphics", 1990, 3.6):
// a counting sort by starting line, then insertion sort from line to line.

#include "vg/raster/replay/active_edges.h"

#include <algorithm>

#include "base/array.h"

namespace vg::raster {

bool ActiveEdges::begin(base::Array<RasterEdge>& edges, const SweepLines& lines) noexcept {
    active_.clear();
    if (!active_.reserveMore(edges.count())) return false;
    if (!firstOnLine_.resize(lines.count())) return false;
    std::fill(firstOnLine_.begin(), firstOnLine_.end(), -1);
    edges_ = edges.data();
    for (int32_t i = 0; i < edges.count(); ++i) {
        const int32_t line = lines.indexAtOrBelow(edges[i].upper->y);
        if (line >= lines.count()) continue;  // ends above the first sample below it
        edges[i].next = firstOnLine_[line];
        firstOnLine_[line] = i;
    }
    return true;
}

void ActiveEdges::advance(int32_t lineIndex, int32_t y) noexcept {
    ActiveEdge* kept = active_.begin();
    for (const ActiveEdge& active : active_) {
        if (active.edge->lowerY < y) *kept++ = active;
    }
    active_.truncate(static_cast<int32_t>(kept - active_.begin()));
    for (int32_t i = firstOnLine_[lineIndex]; i >= 0; i = edges_[i].next) {
        if (edges_[i].lowerY < y) {
            active_.pushReserved({edges_[i].upper->x, edges_[i].upper->x, &edges_[i]});
        }
    }
}

void ActiveEdges::sort() noexcept {
    // Nearly sorted from the band before: insertion, unless that turns out to be a long way.
    ActiveEdge* const edges = active_.begin();
    const int32_t count = active_.count();
    int64_t movesLeft = 16 * static_cast<int64_t>(count);
    for (int32_t i = 1; i < count; ++i) {
        const ActiveEdge edge = edges[i];
        const uint64_t key = edge.key();
        int32_t place = i;
        for (; place > 0 && key < edges[place - 1].key(); --place) edges[place] = edges[place - 1];
        edges[place] = edge;
        movesLeft -= i - place;
        if (movesLeft < 0) {
            std::sort(edges, edges + count,
                      [](const ActiveEdge& a, const ActiveEdge& b) { return a.key() < b.key(); });
            return;
        }
    }
}

void ActiveEdges::shrinkToFit() noexcept {
    firstOnLine_.shrinkToFit();
    active_.shrinkToFit();
}

}  // namespace vg::raster
