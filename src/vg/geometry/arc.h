#pragma once

#include "vg/geometry/affine_map.h"
#include "vg/geometry/vector2.h"

namespace vg {

/// The ellipse of an arc: two radii and the turn of the first from the x axis, in degrees. The
/// signs of the radii do not matter.
struct EllipseShape {
    double radiusX = 0.0;
    double radiusY = 0.0;
    double rotation = 0.0;
};

/// An elliptical arc as path data gives it. Counter-clockwise means that the angle increases, from
/// +x towards +y.
struct EndpointArc {
    Vector2 from, to;
    EllipseShape ellipse;
    bool isLarge = false;
    bool isCounterClockwise = false;
};

/// The same arc about its centre, `center = from - cosAxis`:
///
///     point(angle) = center + cosAxis cos(angle) + sinAxis sin(angle),  angle from 0 to sweep
///
/// cosAxis and sinAxis are conjugate half diameters, so that an affine map of the arc is the map
/// of `from` and of the two axes.
struct CenterArc {
    Vector2 from;
    Vector2 cosAxis, sinAxis;
    double sweep = 0.0;         ///< radians, 0 < |sweep| <= 2 pi; positive counter-clockwise
    double largerRadius = 0.0;  ///< after scaling up radii that were too small

    Vector2 at(double angle) const noexcept;
    Vector2 velocity(double angle) const noexcept;  ///< derivative by the angle

    /// The angles inside the sweep at which the arc turns back along `direction`, in the order in
    /// which the arc meets them. At most two; returns their count.
    int extremes(Vector2 direction, double angles[2]) const noexcept;

    /// The same arc about the same centre with both radii longer by `share` of them.
    CenterArc enlarged(double share) const noexcept {
        return {from + cosAxis * share, cosAxis * (1.0 + share), sinAxis * (1.0 + share), sweep,
                largerRadius * (1.0 + share)};
    }

    CenterArc transformed(const AffineMap& map) const noexcept;  ///< largerRadius is kept
};

enum class ArcKind {
    kNothing,  ///< the end points are the same
    kLine,     ///< a radius is zero, or the ellipse is too large for floats
    kArc,
};

/// Converts to the centre form. Radii too small to reach both end points are scaled up. `center`
/// is set for kArc only.
ArcKind toCenterForm(const EndpointArc& arc, CenterArc& center) noexcept;

/// The image of an ellipse under the linear part of a map: the larger radius first, a rotation
/// within (-90, 90].
EllipseShape transformed(const EllipseShape& ellipse, const AffineMap& map) noexcept;

}  // namespace vg
