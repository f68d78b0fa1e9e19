#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/geometry/vector2.h"
#include "vg/raster/geometry/polygon.h"

namespace vg {

/// Makes the round parts of one stroke: arcs of one radius as evenly spaced points, as few as keep
/// the polyline within a third of the flatness of its arc, at most a quarter turn and at least
/// kPi / kMaxHalfTurnSteps apart. The points lie on a radius larger by a twelfth of the squared
/// step, which gives the polyline the area of the arc; the ends are where they are. After
/// kMaxPoints points in all it makes none, and round parts become straight.
class RoundFan {
public:
    static constexpr int32_t kMaxHalfTurnSteps = 4096;
    static constexpr int32_t kMaxPoints = 1 << 24;

    /// Precondition: radius > 0. A flatness that is not above 0 asks for the most steps.
    RoundFan(double radius, double flatness) noexcept;

    /// The cosine, in [0, 1), of the largest turn that is made in one step.
    double stepCosine() const noexcept { return stepCosine_; }

    /// Which way round; counter-clockwise is from +x towards +y.
    enum class Way { kCounterClockwise, kClockwise };

    /// Appends the points between center + from and center + to, both left out. Both are radii of
    /// the fan's length, at most half a turn apart on that way.
    void addTurn(Vector2 center, Vector2 from, Vector2 to, Way way,
                 base::Array<raster::Point>& points) noexcept;

    /// The same clockwise to center - from.
    void addHalfTurn(Vector2 center, Vector2 from, base::Array<raster::Point>& points) noexcept;

private:
    int32_t stepsOf(double angle) const noexcept;
    void addPoints(Vector2 center, Vector2 from, double step, int32_t count,
                   base::Array<raster::Point>& points) noexcept;

    double step_;  ///< the largest step, in radians
    double stepCosine_;
    int32_t halfTurnSteps_;
    int32_t pointsLeft_ = kMaxPoints;
};

}  // namespace vg
