#include "vg/round_fan.h"

#include <algorithm>
#include <cmath>

namespace vg {

namespace {

/// The turn whose chord stays within `flatness` of its arc: 2 acos(1 - flatness / radius).
double largestStep(double radius, double flatness) noexcept {
    constexpr double kQuarterTurnGap = 0.29289321881345254;  // 1 - cos(45 degrees)
    const double gap = flatness > 0.0 ? std::min(flatness / radius, kQuarterTurnGap) : 0.0;
    const double halfAngle = angleOf(1.0 - gap, std::sqrt(gap * (2.0 - gap)));
    return std::max(2.0 * halfAngle, kPi / RoundFan::kMaxHalfTurnSteps);
}

}  // namespace

RoundFan::RoundFan(double radius, double flatness) noexcept
    : step_(largestStep(radius, flatness)),
      stepCosine_(std::max(sinCos(step_).cos, 0.0)),
      halfTurnSteps_(stepsOf(kPi)),
      halfTurnStep_(sinCos(-kPi / halfTurnSteps_)) {}

void RoundFan::addTurn(Vector2 center, Vector2 from, Vector2 to,
                       base::Array<raster::Point>& points) noexcept {
    const double turn = cross(from, to);
    const double angle = angleOf(dot(from, to), std::fabs(turn));
    const int32_t steps = stepsOf(angle);
    if (steps < 2) return;
    addPoints(center, from, sinCos(std::copysign(angle / steps, turn)), steps - 1, points);
}

void RoundFan::addHalfTurn(Vector2 center, Vector2 from,
                           base::Array<raster::Point>& points) noexcept {
    addPoints(center, from, halfTurnStep_, halfTurnSteps_ - 1, points);
}

int32_t RoundFan::stepsOf(double angle) const noexcept {
    constexpr double kSlack = 1e-9;  // exact quotients are not rounded up to one step more
    const double steps = std::ceil(angle / step_ - kSlack);
    return static_cast<int32_t>(std::clamp(steps, 1.0, 1.0 * kMaxHalfTurnSteps));
}

void RoundFan::addPoints(Vector2 center, Vector2 from, SinCos step, int32_t count,
                         base::Array<raster::Point>& points) noexcept {
    if (count > pointsLeft_ || !points.reserveMore(count)) return;
    pointsLeft_ -= count;
    Vector2 radius = from;
    for (int32_t i = 0; i < count; ++i) {
        radius = {radius.x * step.cos - radius.y * step.sin,
                  radius.x * step.sin + radius.y * step.cos};
        points.pushReserved(toPoint(center + radius));
    }
}

}  // namespace vg
