#include "vg/stroke_joins.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vg {

namespace {

void addLongForm(Vector2 vertex, Vector2 from, Vector2 to,
                 base::Array<raster::Point>& side) noexcept {
    side.push(toPoint(vertex + from));
    side.push(toPoint(vertex));
    side.push(toPoint(vertex + to));
}

}  // namespace

StrokeJoiner::StrokeJoiner(double halfWidth, VGint style, double miterLengthSquared,
                           RoundFan& fan) noexcept
    : fan_(fan),
      style_(style),
      inverseHalfWidth_(1.0 / halfWidth),
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
    const double sign = turn >= 0.0 ? 1.0 : -1.0;  // of offsets towards the inner side
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
    const bool leavesKiteOut = !isReversal && extent < corner.reach;
    base::Array<raster::Point>& inner = turn >= 0.0 ? left : right;
    if (leavesKiteOut) {
        inner.push(toPoint(corner.vertex + tip));
    } else {
        addLongForm(corner.vertex, from, to, inner);
    }

    base::Array<raster::Point>& outer = turn >= 0.0 ? right : left;
    const bool isRound = corner.isSmooth || style_ == VG_JOIN_ROUND;
    if (square >= leastTipSquare(isRound)) {
        outer.push(toPoint(corner.vertex - tip));
    } else {
        addOuter(corner.vertex, from * -1.0, to * -1.0, isRound, outer);
    }
    return leavesKiteOut ? extent * sign : 0.0;
}

double StrokeJoiner::leastTipSquare(bool isRound) const noexcept {
    if (isRound) return roundSquare_;
    return style_ == VG_JOIN_MITER ? miterSquare_ : straightSquare_;
}

void StrokeJoiner::addOuter(Vector2 vertex, Vector2 from, Vector2 to, bool isRound,
                            base::Array<raster::Point>& side) noexcept {
    side.push(toPoint(vertex + from));
    if (isRound) fan_.addTurn(vertex, from, to, side);
    side.push(toPoint(vertex + to));
}

}  // namespace vg
