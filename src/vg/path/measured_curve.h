#pragma once

#include "vg/geometry/arc.h"
#include "vg/geometry/bezier.h"
#include "vg/path/segment_reader.h"

namespace vg {

/// What one drawing segment draws, as a curve over u from 0 to 1, for measuring along it.
class MeasuredCurve {
public:
    /// Precondition: the segment is no move.
    explicit MeasuredCurve(const Segment& segment) noexcept;

    Vector2 at(double u) const noexcept;

    /// The direction of travel, of length 1; (1, 0) for a curve without length.
    Vector2 tangentAt(double u) const noexcept;

    /// Arc length, to about six digits.
    double length() const noexcept;

    /// The u up to which the curve is `distance` long. Precondition: 0 <= distance <= length().
    double parameterAt(double distance) const noexcept;

private:
    Vector2 velocity(double u) const noexcept;
    double speed(double u) const noexcept { return lengthOf(velocity(u)); }
    double lengthOfStep(double u0, double u1) const noexcept;
    double lengthBetween(double u0, double u1, double estimate, int depth) const noexcept;
    double lengthUpTo(double u) const noexcept;

    Vector2 from_, to_;
    BezierPolynomial polynomial_;
    CenterArc arc_;
    bool isArc_ = false;
    bool isLine_ = false;
};

}  // namespace vg
