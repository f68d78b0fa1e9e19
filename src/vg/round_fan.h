#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/trigonometry.h"
#include "vg/vector2.h"

namespace vg {

/// Makes the round parts of one stroke: arcs of one radius as evenly spaced points, the fewest that
/// keep the chords within the flatness, at most a quarter turn and at least kPi / kMaxHalfTurnSteps
/// apart. After kMaxPoints points in all it makes none, and round parts become straight.
class RoundFan {
public:
    static constexpr int32_t kMaxHalfTurnSteps = 4096;
    static constexpr int32_t kMaxPoints = 1 << 24;

    /// Precondition: radius > 0. A flatness that is not above 0 asks for the most steps.
    RoundFan(double radius, double flatness) noexcept;

    /// The cosine, in [0, 1), of the largest turn that is made in one step.
    double stepCosine() const noexcept { return stepCosine_; }

    /// Appends the points between center + from and center + to, both left out, the shorter way
    /// round (counter-clockwise for a half turn). Both are radii of the fan's length.
    void addTurn(Vector2 center, Vector2 from, Vector2 to,
                 base::Array<raster::Point>& points) noexcept;

    /// The same clockwise to center - from.
    void addHalfTurn(Vector2 center, Vector2 from, base::Array<raster::Point>& points) noexcept;

private:
    int32_t stepsOf(double angle) const noexcept;
    void addPoints(Vector2 center, Vector2 from, SinCos step, int32_t count,
                   base::Array<raster::Point>& points) noexcept;

    double step_;  ///< the largest step, in radians
    double stepCosine_;
    int32_t halfTurnSteps_;
    SinCos halfTurnStep_;
    int32_t pointsLeft_ = kMaxPoints;
};

}  // namespace vg
