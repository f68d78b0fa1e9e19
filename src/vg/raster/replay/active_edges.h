#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/replay/edge.h"
#include "vg/raster/sweep/sweep_lines.h"

namespace vg::raster {

/// An edge on the sweep line, with its ends in the current band.
struct ActiveEdge {
    int32_t xTop;
    int32_t xBottom;
    const RasterEdge* edge;

    /// The order of a band: x at the top, then x at the bottom, then direction. With all three the
    /// spans of a band depend on the set of its edges alone.
    uint64_t key() const noexcept {
        return static_cast<uint64_t>(static_cast<uint32_t>(xTop)) << 32 |
               static_cast<uint32_t>(xBottom) << 1 | (edge->direction > 0 ? 1U : 0U);
    }
};

/// The edges that the sweep line crosses, in the order of the current band.
class ActiveEdges {
public:
    /// Sorts the edges into lists by the line they start on. False when memory runs out.
    [[nodiscard]] bool begin(base::Array<RasterEdge>& edges, const SweepLines& lines) noexcept;

    /// Drops the edges that end at or above height `y` and takes in those that start on the line.
    void advance(int32_t lineIndex, int32_t y) noexcept;

    /// Puts the edges in the order of their keys.
    void sort() noexcept;

    ActiveEdge* begin() noexcept { return active_.begin(); }
    ActiveEdge* end() noexcept { return active_.end(); }

    void shrinkToFit() noexcept;

private:
    RasterEdge* edges_ = nullptr;
    base::Array<int32_t> firstOnLine_;  ///< head of each line's list; -1 is empty
    base::Array<ActiveEdge> active_;
};

}  // namespace vg::raster
