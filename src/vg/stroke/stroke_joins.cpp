// Decides both sides of a corner from the squared length of the sum of its two normals alone, 2
// h^2 (1 + cos(phi)): no angle is computed unless a round join needs points.

#include "vg/stroke/stroke_joins.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vg {

StrokeJoiner::StrokeJoiner(double halfWidth, VGint style, double miterLengthSquared, double slack,
                           RoundFan& fan) noexcept
    : fan_(fan),
      style_(style),
      inverseHalfWidth_(1.0 / halfWidth),
      slack_(slack),
      twiceSquare_(2.0 * halfWidth * halfWidth),
      roundSquare_(twiceSquare_ * (1.0 + fan.stepCosine())) {
    constexpr double kAlmostOne = 1.0 - 0x1p-24;
    straightSquare_ = 2.0 * twiceSquare_ * kAlmostOne;
    miterSquare_ = miterLengthSquared > 0.0 ? twiceSquare_ * twiceSquare_ / miterLengthSquared
                                            : std::numeric_limits<double>::infinity();
    miterSquare_ = std::min(miterSquare_, straightSquare_);
}

double StrokeJoiner::add(const StrokeCorner& corner, base::Array<raster::Point>& left,
                         base::Array<raster::Point>& right) noexcept {
    const double turn = cross(corner.before, corner.after);
    const bool turnsLeft = turn >= 0.0;
    const double sign = turnsLeft ? 1.0 : -1.0;  // of offsets towards the inner side
    const Vector2 from = corner.before * sign;
    const Vector2 to = corner.after * sign;
    const Vector2 sum = from + to;
    const double square = dot(sum, sum);
    // At a reversal nothing but rounding is left of the sum, and the turn may be exactly 0.
    const bool isReversal = square <= twiceSquare_ * 1e-12;
    const double scale = isReversal ? 0.0 : twiceSquare_ / square;
    const Vector2 tip = sum * scale;

    // h sin(phi) = |turn| / h, h tan(phi / 2) = 2 h |turn| / |n0 + n1|^2
    const double extent = std::fabs(turn) * inverseHalfWidth_ * std::max(scale, 1.0);
    const bool isAlmostStraight = !isReversal && extent <= slack_;
    const bool leavesKiteOut =
        !isReversal && extent < corner.reach && (!corner.isBesideCurve || isAlmostStraight);
    base::Array<raster::Point>& inner = turnsLeft ? left : right;
    if (leavesKiteOut) {
        inner.push(toPoint(corner.vertex + tip));
    } else {
        inner.push(toPoint(corner.vertex + from));
        inner.push(toPoint(corner.vertex));
        inner.push(toPoint(corner.vertex + to));
    }

    base::Array<raster::Point>& outer = turnsLeft ? right : left;
    const bool isRound = corner.isRound || style_ == VG_JOIN_ROUND;
    const bool hasTip = square >= leastTipSquare(isRound);
    const bool isTipAlone = hasTip && (!corner.isBesideCurve || isAlmostStraight);
    if (!isTipAlone) outer.push(toPoint(corner.vertex - from));
    if (hasTip) {
        outer.push(toPoint(corner.vertex - tip));
    } else if (isRound) {
        const RoundFan::Way way =
            turnsLeft ? RoundFan::Way::kCounterClockwise : RoundFan::Way::kClockwise;
        fan_.addTurn(corner.vertex, from * -1.0, to * -1.0, way, outer);
    }
    if (!isTipAlone) outer.push(toPoint(corner.vertex - to));
    return leavesKiteOut ? extent * sign : 0.0;
}

double StrokeJoiner::leastTipSquare(bool isRound) const noexcept {
    if (isRound) return roundSquare_;
    return style_ == VG_JOIN_MITER ? miterSquare_ : straightSquare_;
}

}  // namespace vg
