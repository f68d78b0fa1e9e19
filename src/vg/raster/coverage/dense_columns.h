#pragma once

#include <cstdint>

#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

/// The edges of one band, in a pigeonhole for every 1/32 pixel of x at the top.
///
///   position     0   1   2   3   4   5  ...      counts[p] edges have their top at p. Their keys
///   counts       0   2   0   1   1   0           lie in slots[0][p], slots[1][p] ... in any order.
///   slots[0]     .   k   .   k   k   .
///   slots[1]     .   k   .   .   .   .
///
/// Invariant  all counts are zero between bands: whoever reads the holes empties them.
struct DenseColumns {
    static constexpr int32_t kSlots = 16;  ///< edges that find room in one place

    uint8_t* counts;
    uint16_t* slots;  ///< slot s of position p is slots[s * positions + p]
    int32_t positions;
};

/// A key tells, from its upper bits down, how far an edge goes to the right within the band, plus
/// kKeyBias, and whether it falls. Keys of edges with the same top rise in the order of the band.
inline constexpr int32_t kKeyBias = 1 << 14;

/// Edges of consecutive bands, by index.
struct DenseEdges {
    /// Bit 31: the edge falls. The rest: x at the height reached, 15 fractional bits.
    uint32_t* place;
    uint32_t* slope;  ///< what is added to `place` for each 1/32 pixel downwards
    uint16_t* top;    ///< of the band just passed
    uint16_t* key;    ///< of the band just passed
    int32_t count;

    /// Entries past the last that vectors take in; of those, place and slope are 0.
    static constexpr int32_t kSlack = 16;
};

}  // namespace vg::raster
