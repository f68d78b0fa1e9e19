// Interpolates linearly between the absolute coordinates of two paths, segment by segment.

#include "vg/path/path_interpolate.h"

#include <cassert>

#include "vg/path/path_writer.h"
#include "vg/path/segment_reader.h"

namespace vg {

namespace {

/// Lines, full curves and arcs, all absolute; the direction and size of an arc are those of the
/// nearer path.
bool appendBetween(PathWriter& writer, const Segment& start, const Segment& end,
                   double amount) noexcept {
    const auto between = [&](double a, double b) { return a + (b - a) * amount; };
    const auto pointBetween = [&](Vector2 a, Vector2 b) {
        return Vector2{between(a.x, b.x), between(a.y, b.y)};
    };
    const Vector2 to = pointBetween(start.to, end.to);
    const Vector2 control1 = pointBetween(start.control1, end.control1);
    const Vector2 control2 = pointBetween(start.control2, end.control2);
    switch (start.kind) {
        case Segment::Kind::kClose:
            return writer.append(VG_CLOSE_PATH, {});
        case Segment::Kind::kMove:
            return writer.append(VG_MOVE_TO, to);
        case Segment::Kind::kLine:
            return writer.append(VG_LINE_TO, to);
        case Segment::Kind::kQuadratic:
            return writer.append(VG_QUAD_TO, {control1.x, control1.y, to.x, to.y});
        case Segment::Kind::kCubic:
            return writer.append(VG_CUBIC_TO,
                                 {control1.x, control1.y, control2.x, control2.y, to.x, to.y});
        default:
            return writer.append(
                amount < 0.5 ? start.code : end.code,
                {between(start.ellipse.radiusX, end.ellipse.radiusX),
                 between(start.ellipse.radiusY, end.ellipse.radiusY),
                 between(start.ellipse.rotation, end.ellipse.rotation), to.x, to.y});
    }
}

}  // namespace

bool canInterpolate(const Path& startPath, const Path& endPath) noexcept {
    SegmentReader start(startPath);
    SegmentReader end(endPath);
    for (;;) {
        const bool hasStart = start.next();
        const bool hasEnd = end.next();
        if (!hasStart || !hasEnd) return hasStart == hasEnd;
        if (start.segment().kind != end.segment().kind) return false;
    }
}

bool interpolate(Path& destination, const Path& startPath, const Path& endPath,
                 double amount) noexcept {
    PathWriter writer(destination);
    SegmentReader start(startPath);
    SegmentReader end(endPath);
    while (start.next() && end.next()) {
        assert(start.segment().kind == end.segment().kind);
        if (!appendBetween(writer, start.segment(), end.segment(), amount)) return false;
    }
    writer.commit();
    return true;
}

}  // namespace vg
