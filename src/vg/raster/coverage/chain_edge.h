#pragma once

#include <cstdint>

#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

/// One segment of a contour. Horizontal ones are kept: they span no band.
struct ChainEdge {
    int32_t x, y;     ///< the upper end; x counts from the left of the polygon's box
    int32_t slope;    ///< change of x per unit of y downwards, 15 fractional bits
    int32_t endBand;  ///< the first band below the edge

    /// Edges are made a vector at a time.
    static constexpr int32_t kSlack = 8;
};

/// Which way up to 32 edges of a contour go, in terms of bands; what is neither rises.
struct EdgeDirections {
    static constexpr int32_t kCount = 32;

    uint32_t falling;
    uint32_t flat;  ///< within one band, or horizontal
};

/// A contour while its edges are made: edge i runs from step i to step i + 1.
struct ContourSteps {
    FixedPoint* points;          ///< points[0] is a copy of the last one: edge 0 has a predecessor
    int32_t* bands;              ///< of each point: the band below it
    EdgeDirections* directions;  ///< of edge i: bit i % 32 of element i / 32
};

/// From a height to the index of the sweep line at or below it (SweepLines::index()).
struct LineIndex {
    const uint32_t* rowBits;    ///< by pixel row: bit 31 - f is set for a line at fraction f
    const int32_t* rowIndices;  ///< by pixel row: the index of the first line of that row or below
};

}  // namespace vg::raster
