// Resolves relative coordinates, shorthand lines and reflected control points one command at a
// time; a segment that leaves the range of floats is skipped with the state as it was.

#include "vg/path/segment_reader.h"

#include "vg/path/path_coordinates.h"

namespace vg {

bool SegmentReader::next() noexcept {
    while (index_ < end_) {
        segment_.index = index_;
        const uint8_t command = path_.segments[index_++];
        const int32_t count = coordinatesOf(command);
        double values[kMaxSegmentCoordinates];
        loadCoordinates(path_, coordinate_, count, values);
        coordinate_ += count;
        if (resolve(command, values)) return true;
    }
    return false;
}

bool SegmentReader::resolve(uint8_t command, const double* values) noexcept {
    const Vector2 origin = (command & VG_RELATIVE) != 0 ? current_ : Vector2{};
    const auto point = [&](int i) { return origin + Vector2{values[i], values[i + 1]}; };
    segment_.from = current_;
    segment_.code = static_cast<uint8_t>(command & ~VG_RELATIVE);
    switch (segment_.code) {
        case VG_CLOSE_PATH:
            return setClose();
        case VG_MOVE_TO:
            return setMove(point(0));
        case VG_LINE_TO:
            return setLine(point(0));
        case VG_HLINE_TO:
            return setLine({origin.x + values[0], current_.y});
        case VG_VLINE_TO:
            return setLine({current_.x, origin.y + values[0]});
        case VG_QUAD_TO:
            return setQuadratic(point(0), point(2));
        case VG_SQUAD_TO:
            return setQuadratic(reflectedControl(), point(0));
        case VG_CUBIC_TO:
            return setCubic(point(0), point(2), point(4));
        case VG_SCUBIC_TO:
            return setCubic(reflectedControl(), point(0), point(2));
        default:
            return setArc({values[0], values[1], values[2]}, point(3));
    }
}

bool SegmentReader::setMove(Vector2 to) noexcept {
    if (!fitsFloat(to)) return false;
    segment_.to = start_ = to;
    return finish(Segment::Kind::kMove, to);
}

bool SegmentReader::setLine(Vector2 to) noexcept {
    if (!fitsFloat(to)) return false;
    segment_.to = to;
    return finish(Segment::Kind::kLine, to);
}

bool SegmentReader::setQuadratic(Vector2 control, Vector2 to) noexcept {
    if (!fitsFloat(control) || !fitsFloat(to)) return false;
    segment_.control1 = control;
    segment_.to = to;
    return finish(Segment::Kind::kQuadratic, control);
}

bool SegmentReader::setCubic(Vector2 control1, Vector2 control2, Vector2 to) noexcept {
    if (!fitsFloat(control1) || !fitsFloat(control2) || !fitsFloat(to)) return false;
    segment_.control1 = control1;
    segment_.control2 = control2;
    segment_.to = to;
    return finish(Segment::Kind::kCubic, control2);
}

bool SegmentReader::setArc(const EllipseShape& ellipse, Vector2 to) noexcept {
    if (!fitsFloat({ellipse.radiusX, ellipse.radiusY}) || !fitsFloat({ellipse.rotation, 0.0}) ||
        !fitsFloat(to)) {
        return false;
    }
    segment_.ellipse = ellipse;
    segment_.isLargeArc = segment_.code >= VG_LCCWARC_TO;
    segment_.isCounterClockwise = segment_.code == VG_SCCWARC_TO || segment_.code == VG_LCCWARC_TO;
    segment_.to = to;
    return finish(Segment::Kind::kArc, to);
}

bool SegmentReader::setClose() noexcept {
    segment_.to = start_;
    return finish(Segment::Kind::kClose, start_);
}

bool SegmentReader::finish(Segment::Kind kind, Vector2 control) noexcept {
    segment_.kind = kind;
    current_ = segment_.to;
    control_ = control;
    return true;
}

}  // namespace vg
