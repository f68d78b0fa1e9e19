// Places points on a circle by rotating the radius step by step: one sine and cosine an arc.

#include "vg/stroke/round_fan.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "vg/geometry/trigonometry.h"

namespace vg {

namespace {

/// The turn whose chord leaves its arc by half of the flatness, 2 acos(1 - flatness / 2 radius):
/// the points outside of the arc take back two thirds of that on one side and are there on the
/// other.
double largestStep(double radius, double flatness) noexcept {
    constexpr double kQuarterTurnGap = 0.29289321881345254;  // 1 - cos(45 degrees)
    const double gap = flatness > 0.0 ? std::min(0.5 * flatness / radius, kQuarterTurnGap) : 0.0;
    const double halfAngle = angleOf(1.0 - gap, std::sqrt(gap * (2.0 - gap)));
    return std::max(2.0 * halfAngle, kPi / RoundFan::kMaxHalfTurnSteps);
}

}  // namespace

RoundFan::RoundFan(double radius, double flatness) noexcept
    : step_(largestStep(radius, flatness)),
      stepCosine_(std::max(sinCos(step_).cos, 0.0)),
      halfTurnSteps_(stepsOf(kPi)) {
    assert(radius > 0.0);
}

// Where the path turns back, cross(from, to) is 0 up to rounding: the caller knows the way round.
void RoundFan::addTurn(Vector2 center, Vector2 from, Vector2 to, Way way,
                       base::Array<raster::Point>& points) noexcept {
    const double angle = angleOf(dot(from, to), std::fabs(cross(from, to)));
    const int32_t steps = stepsOf(angle);
    const double step = angle / steps;
    addPoints(center, from, way == Way::kClockwise ? -step : step, steps - 1, points);
}

void RoundFan::addHalfTurn(Vector2 center, Vector2 from,
                           base::Array<raster::Point>& points) noexcept {
    addPoints(center, from, -kPi / halfTurnSteps_, halfTurnSteps_ - 1, points);
}

int32_t RoundFan::stepsOf(double angle) const noexcept {
    constexpr double kSlack = 1e-9;  // exact quotients are not rounded up to one step more
    const double steps = std::ceil(angle / step_ - kSlack);
    return static_cast<int32_t>(std::clamp(steps, 1.0, 1.0 * kMaxHalfTurnSteps));
}

void RoundFan::addPoints(Vector2 center, Vector2 from, double step, int32_t count,
                         base::Array<raster::Point>& points) noexcept {
    if (count < 1 || count > pointsLeft_ || !points.reserveMore(count)) return;
    pointsLeft_ -= count;
    const SinCos turn = sinCos(step);
    Vector2 radius = from * (1.0 + step * step / 12.0);
    for (int32_t i = 0; i < count; ++i) {
        radius = {radius.x * turn.cos - radius.y * turn.sin,
                  radius.x * turn.sin + radius.y * turn.cos};
        points.pushReserved(toPoint(center + radius));
    }
}

}  // namespace vg
