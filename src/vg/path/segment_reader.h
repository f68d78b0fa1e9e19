#pragma once

#include <cstdint>

#include "vg/geometry/arc.h"
#include "vg/geometry/vector2.h"
#include "vg/path/path.h"

namespace vg {

/// One segment of a path in absolute user coordinates, shorthands resolved.
struct Segment {
    /// The command without its relative bit, and what it comes down to: horizontal and vertical
    /// lines are kLine, smooth curves have their reflected control point filled in.
    enum class Kind : uint8_t { kClose, kMove, kLine, kQuadratic, kCubic, kArc };

    Kind kind = Kind::kClose;
    uint8_t code = VG_CLOSE_PATH;
    bool isLargeArc = false;
    bool isCounterClockwise = false;
    int32_t index = 0;     ///< of the command in the path
    Vector2 from;          ///< the current point before the segment
    Vector2 control1;      ///< quadratics and cubics
    Vector2 control2;      ///< cubics
    Vector2 to;            ///< the subpath's start for kClose
    EllipseShape ellipse;  ///< arcs

    EndpointArc arc() const noexcept { return {from, to, ellipse, isLargeArc, isCounterClockwise}; }
};

/// Reads the segments of a path one after another.
///
/// A path starts at (0, 0); after a close command drawing goes on at the subpath's start. A
/// segment is passed over, as if it were not there, when one of its coordinates is not finite or
/// leaves the range of floats, be it as stored, scaled, biased, added to the current point or
/// reflected.
///
/// The path may grow while it is read (also by what is read from it): the reader sees the segments
/// that the path had at the start.
class SegmentReader {
public:
    explicit SegmentReader(const Path& path) noexcept : path_(path), end_(path.segments.count()) {}

    /// Moves on to the next segment; false at the end.
    bool next() noexcept;

    /// Valid after next() returned true.
    const Segment& segment() const noexcept { return segment_; }

private:
    bool resolve(uint8_t command, const double* values) noexcept;
    bool setMove(Vector2 to) noexcept;
    bool setLine(Vector2 to) noexcept;
    bool setQuadratic(Vector2 control, Vector2 to) noexcept;
    bool setCubic(Vector2 control1, Vector2 control2, Vector2 to) noexcept;
    bool setArc(const EllipseShape& ellipse, Vector2 to) noexcept;
    bool setClose() noexcept;
    bool finish(Segment::Kind kind, Vector2 control) noexcept;
    Vector2 reflectedControl() const noexcept { return current_ * 2.0 - control_; }

    const Path& path_;
    int32_t end_;
    int32_t index_ = 0;
    int32_t coordinate_ = 0;
    Vector2 start_;  ///< of the current subpath
    Vector2 current_;
    Vector2 control_;  ///< last control point of the last curve, or its end point
    Segment segment_;
};

}  // namespace vg
