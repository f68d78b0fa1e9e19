// Maps control points; an arc gets the ellipse that the map makes of its own, from a singular
// value decomposition, and turns the other way under a map that mirrors.

#include "vg/path/path_transform.h"

#include "vg/path/path_writer.h"
#include "vg/path/segment_reader.h"

namespace vg {

namespace {

/// The arc code of the other direction: counter-clockwise and clockwise alternate.
uint8_t reversedArc(uint8_t code) noexcept {
    const bool isCounterClockwise = code == VG_SCCWARC_TO || code == VG_LCCWARC_TO;
    return static_cast<uint8_t>(isCounterClockwise ? code + 2 : code - 2);
}

bool appendArc(PathWriter& writer, uint8_t code, const EllipseShape& ellipse, Vector2 to) noexcept {
    return writer.append(code, {ellipse.radiusX, ellipse.radiusY, ellipse.rotation, to.x, to.y});
}

/// Below this ratio of its radii an ellipse counts as flat: rounding its rotation to float would
/// move the arc by more than straightening it does.
constexpr double kFlatEllipse = 1.0 / 4096.0;

/// An arc that the map has squeezed flat, as the lines through its extreme points.
bool appendFlatArc(PathWriter& writer, const CenterArc& arc, Vector2 to) noexcept {
    const Vector2 longer =
        dot(arc.cosAxis, arc.cosAxis) > dot(arc.sinAxis, arc.sinAxis) ? arc.cosAxis : arc.sinAxis;
    double angles[2];
    const int count = arc.extremes(longer, angles);
    for (int i = 0; i < count; ++i) {
        if (!writer.append(VG_LINE_TO, arc.at(angles[i]))) return false;
    }
    return writer.append(VG_LINE_TO, to);
}

/// Both radii and rotation of the image say it exactly: whether the radii have to be scaled up to
/// reach the end points is the same before and after an affine map.
bool appendTransformedArc(PathWriter& writer, const Segment& segment,
                          const AffineMap& map) noexcept {
    const Vector2 to = map.point(segment.to);
    const EllipseShape image = transformed(segment.ellipse, map);
    CenterArc arc;
    if (image.radiusY < image.radiusX * kFlatEllipse &&
        toCenterForm(segment.arc(), arc) == ArcKind::kArc) {
        return appendFlatArc(writer, arc.transformed(map), to);
    }
    const bool mirrors = map.determinant() < 0.0;
    return appendArc(writer, mirrors ? reversedArc(segment.code) : segment.code, image, to);
}

bool appendTransformed(PathWriter& writer, const Segment& segment, const AffineMap& map) noexcept {
    const Vector2 to = map.point(segment.to);
    const Vector2 control1 = map.point(segment.control1);
    const Vector2 control2 = map.point(segment.control2);
    switch (segment.code) {
        case VG_CLOSE_PATH:
            return writer.append(VG_CLOSE_PATH, {});
        case VG_MOVE_TO:
            return writer.append(VG_MOVE_TO, to);
        case VG_QUAD_TO:
            return writer.append(VG_QUAD_TO, {control1.x, control1.y, to.x, to.y});
        case VG_SQUAD_TO:
            return writer.append(VG_SQUAD_TO, to);
        case VG_CUBIC_TO:
            return writer.append(VG_CUBIC_TO,
                                 {control1.x, control1.y, control2.x, control2.y, to.x, to.y});
        case VG_SCUBIC_TO:
            return writer.append(VG_SCUBIC_TO, {control2.x, control2.y, to.x, to.y});
        case VG_LINE_TO:
        case VG_HLINE_TO:
        case VG_VLINE_TO:
            return writer.append(VG_LINE_TO, to);
        default:
            return appendTransformedArc(writer, segment, map);
    }
}

}  // namespace

bool transformPath(Path& destination, const Path& source, const AffineMap& map) noexcept {
    PathWriter writer(destination);
    bool isFirst = true;
    for (SegmentReader reader(source); reader.next(); isFirst = false) {
        const Segment& segment = reader.segment();
        if (isFirst && segment.kind != Segment::Kind::kMove &&
            !writer.append(VG_MOVE_TO, map.point(segment.from))) {
            return false;
        }
        if (!appendTransformed(writer, segment, map)) return false;
    }
    writer.commit();
    return true;
}

}  // namespace vg
