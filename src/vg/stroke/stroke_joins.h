#pragma once

#include "base/array.h"
#include "vg/geometry/vector2.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/stroke/round_fan.h"
#include "vg/vg.h"

namespace vg {

/// A vertex between two edges, as the stroker sees it.
struct StrokeCorner {
    Vector2 vertex;
    Vector2 before;  ///< from an edge to the outline on its left, as long as half of the line width
    Vector2 after;   ///< the same for the edge that follows
    double reach;    ///< the length of the shorter edge; 0 keeps the inner side in its long form
    bool isRound;    ///< inside a curve: rounded whatever the join style is
    bool isBesideCurve;  ///< an edge is curved: it leaves the line along its direction at once
};

/// How the edges of one stroke are joined.
///
/// With half line width h, turn phi and normals n0, n1 of length h towards one side, the offset
/// lines of both edges meet in v + m, m = 2 h^2 (n0 + n1) / |n0 + n1|^2.
///
///   outer   v + n0, v + n1 is a bevel; round parts put points between them; v + m alone is a
///           miter, and stands in for any join that would look the same
///   inner   v + n0, v, v + n1 (the long form) makes the outline the plain sum of the edges' quads;
///           v + m alone leaves out once the kite (v, v + n0, v + m, v + n1), where two quads
///           overlap. The union stays exact while the kite lies in both of them, and it reaches
///           h max(tan(phi / 2), sin(phi)) along each edge.
///
/// Beside a curved edge v + m alone will do only where it hardly leaves v + n0 and v + n1.
class StrokeJoiner {
public:
    /// `fan` must outlive the joiner. Miters longer than the root of `miterLengthSquared` are cut.
    /// Lengths up to `slack` do not count.
    StrokeJoiner(double halfWidth, VGint style, double miterLengthSquared, double slack,
                 RoundFan& fan) noexcept;

    /// Appends the points of both sides. Returns how far the kite that the inner side leaves out
    /// reaches along both edges, negative when it lies on the right; 0 when it leaves none out.
    double add(const StrokeCorner& corner, base::Array<raster::Point>& left,
               base::Array<raster::Point>& right) noexcept;

private:
    /// The least |n0 + n1|^2 = 2 h^2 (1 + cos(phi)) at which the outer side has a tip.
    double leastTipSquare(bool isRound) const noexcept;

    RoundFan& fan_;
    VGint style_;
    double inverseHalfWidth_;
    double slack_;
    double twiceSquare_;     ///< 2 h^2
    double roundSquare_;     ///< the turn is one step of the fan
    double straightSquare_;  ///< tip and bevel are the same point as floats
    double miterSquare_;     ///< |m|^2 = 4 h^4 / |n0 + n1|^2 is within the limit
};

}  // namespace vg
