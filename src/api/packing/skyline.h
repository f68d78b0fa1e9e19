#pragma once

#include "api/packing/geometry.h"
#include "base/array.h"

namespace quor::packing {

/// The upper contour of what was placed, from the left edge of the free area to its right edge.
/// y grows upward here; neighbouring steps have different heights.
class Skyline {
public:
    /// The lowest step, the leftmost of equals.
    struct Gap {
        int step;
        int x, y;
        int width;
        int leftWall;   ///< how far the neighbours rise above it; the free area's edges
        int rightWall;  ///< rise to its top
    };

    /// An empty contour. False when memory runs out.
    [[nodiscard]] bool reset(const Size& area) noexcept;

    int stepCount() const noexcept { return stepCount_; }
    Gap lowest() const noexcept;

    /// Covers a part of the gap, at its left or its right end.
    void cover(const Gap& gap, const Size& size, bool atLeft) noexcept;

    /// Gives the gap up: raises it to its lower wall. Returns the area that is lost.
    int64_t raise(const Gap& gap) noexcept;

private:
    struct Step {
        int x;
        int y;
    };

    int endOf(int step) const noexcept { return steps_[step + 1].x; }
    void insert(int step, Step inserted) noexcept;
    void remove(int step) noexcept;
    /// Merges the step with neighbours of its height.
    void join(int step) noexcept;

    base::Array<Step> steps_;  ///< the last one is the right edge and no step
    int stepCount_ = 0;
    Size area_ = {0, 0};
};

}  // namespace quor::packing
