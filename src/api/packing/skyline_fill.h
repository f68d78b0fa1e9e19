#pragma once

#include <cstdint>

#include "api/packing/fill.h"
#include "api/packing/size_index.h"
#include "api/packing/skyline.h"

namespace quor::packing {

class RandomSequence;

/// How a rectangle is rated for a gap: the sum of what applies; the highest is placed.
struct FitWeights {
    int exactWidth = 0;   ///< it fills the gap's width
    int pairedWidth = 0;  ///< another rectangle can fill the rest of the width
    int deadWidth = 0;    ///< (subtracted) nothing fits the rest of the width
    int wallHeight = 0;   ///< it ends level with a wall
    int towerHeight = 0;  ///< (subtracted) it rises above both walls
    int topHeight = 0;    ///< it ends at the top of the free area
    int width = 0;        ///< times the width
    int height = 0;       ///< times the height
    int noise = 0;        ///< a scattered number up to this
    int looks = 8;        ///< how many rectangles are looked at, the widest first
    uint32_t seed = 0;    ///< of the noise
    bool isTransposed = false;

    static FitWeights random(RandomSequence& random) noexcept;
    /// These with one or two of them changed.
    FitWeights varied(RandomSequence& random) const noexcept;
};

/// Fills one bin: takes the lowest gap of the skyline and the rectangle that suits it best, again
/// and again.
class SkylineFill {
public:
    /// The area to fill, in the orientation of the index, and how much of it may be lost before
    /// the attempt ends as one that cannot succeed.
    struct Task {
        Size area;
        int64_t allowedLoss;
    };
    enum class Result : uint8_t { kComplete, kGivenUp, kOutOfMemory };

    /// The index is as it was before when this returns. `steps` sinks by the work done.
    Result run(const Task& task, const FitWeights& weights, SizeIndex& index, Fill& fill,
               int64_t& steps) noexcept;

private:
    Result place(const Task& task, const FitWeights& weights, SizeIndex& index, Fill& fill,
                 int64_t& steps) noexcept;
    int chooseEntry(const Skyline::Gap& gap, int room, const FitWeights& weights,
                    const SizeIndex& index, int64_t& steps) const noexcept;

    Skyline skyline_;
    base::Array<int> taken_;  ///< entries of the index
};

}  // namespace quor::packing
