// What paths are asked: their boxes, their length, a point along them.

#include "vg/path_query.h"

#include <algorithm>

#include "base/finite.h"
#include "vg/context.h"
#include "vg/path_access.h"
#include "vg/path_bounds.h"
#include "vg/segment_curve.h"

namespace vg {

namespace {

/// A place on a path and the direction of travel there.
struct PathPosition {
    Vector2 point;
    Vector2 tangent{1.0, 0.0};
};

double lengthOfSegments(const Path& path, VGint first, VGint count) noexcept {
    double length = 0.0;
    for (SegmentReader reader(path); reader.next();) {
        const Segment& segment = reader.segment();
        if (segment.index - first >= count) break;
        if (segment.index < first || segment.kind == Segment::Kind::kMove) continue;
        length += SegmentCurve(segment).length();
    }
    return length;
}

/// Distances outside the path are those of its ends. Segments of no length are passed over; if
/// there are no others, the place is the last end point and the tangent (1, 0).
PathPosition positionAlong(const Path& path, VGint first, VGint count, double distance) noexcept {
    PathPosition position;
    double rest = std::max(0.0, distance);
    for (SegmentReader reader(path); reader.next();) {
        const Segment& segment = reader.segment();
        if (segment.index - first >= count) break;
        if (segment.index < first) continue;
        if (segment.kind == Segment::Kind::kMove) {
            position.point = segment.to;
            continue;
        }
        const SegmentCurve curve(segment);
        const double length = curve.length();
        if (!(length > 0.0)) continue;
        const double u = rest < length ? curve.parameterAt(rest) : 1.0;
        position = {curve.at(u), curve.tangentAt(u)};
        if (rest <= length) break;
        rest -= length;
    }
    return position;
}

VGfloat toFloat(double value) noexcept { return base::finite(static_cast<VGfloat>(value)); }

void storePair(Vector2 value, VGfloat* x, VGfloat* y) noexcept {
    *x = toFloat(value.x);
    *y = toFloat(value.y);
}

/// The common body of the two box entry points.
void storeBounds(VGPath handle, VGbitfield capability, bool isTransformed, VGfloat* minX,
                 VGfloat* minY, VGfloat* width, VGfloat* height) noexcept {
    Context* context = currentPair();
    if (context == nullptr) return;
    const Path* path = findAllowing(*context, handle, capability);
    if (path == nullptr) return;
    for (const VGfloat* result : {minX, minY, width, height}) {
        if (!isUsableArray(result, alignof(VGfloat))) {
            return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        }
    }
    const AffineMap map = isTransformed
                              ? AffineMap(context->matrix(VG_MATRIX_PATH_USER_TO_SURFACE).value)
                              : AffineMap();
    const Bounds bounds = boundsOf(*path, map);
    if (bounds.isEmpty()) {
        storePair({0.0, 0.0}, minX, minY);
        return storePair({-1.0, -1.0}, width, height);
    }
    storePair(bounds.low, minX, minY);
    storePair(bounds.high - bounds.low, width, height);
}

}  // namespace

PathBox transformedPathBounds(const Path& path, const Matrix3& matrix) noexcept {
    const Bounds bounds = boundsOf(path, AffineMap(matrix));
    if (bounds.isEmpty()) return {};
    return {toFloat(bounds.low.x), toFloat(bounds.low.y), toFloat(bounds.high.x),
            toFloat(bounds.high.y)};
}

}  // namespace vg

using vg::Context;
using vg::Path;

void vgPathBounds(VGPath path, VGfloat* minX, VGfloat* minY, VGfloat* width, VGfloat* height) {
    vg::storeBounds(path, VG_PATH_CAPABILITY_PATH_BOUNDS, false, minX, minY, width, height);
}

void vgPathTransformedBounds(VGPath path, VGfloat* minX, VGfloat* minY, VGfloat* width,
                             VGfloat* height) {
    vg::storeBounds(path, VG_PATH_CAPABILITY_PATH_TRANSFORMED_BOUNDS, true, minX, minY, width,
                    height);
}

VGfloat vgPathLength(VGPath handle, VGint startSegment, VGint segmentCount) {
    Context* context = vg::currentPair();
    if (context == nullptr) return -1.0F;
    const Path* path = vg::findAllowing(*context, handle, VG_PATH_CAPABILITY_PATH_LENGTH);
    if (path == nullptr) return -1.0F;
    if (!vg::hasSegments(*path, startSegment, segmentCount)) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return -1.0F;
    }
    return vg::toFloat(vg::lengthOfSegments(*path, startSegment, segmentCount));
}

void vgPointAlongPath(VGPath handle, VGint startSegment, VGint segmentCount, VGfloat distance,
                      VGfloat* x, VGfloat* y, VGfloat* tangentX, VGfloat* tangentY) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    const Path* path = vg::findOrRaise(*context, handle);
    if (path == nullptr) return;
    const bool wantsPoint = x != nullptr && y != nullptr;
    const bool wantsTangent = tangentX != nullptr && tangentY != nullptr;
    const VGbitfield needed = (wantsPoint ? VG_PATH_CAPABILITY_POINT_ALONG_PATH : 0U) |
                              (wantsTangent ? VG_PATH_CAPABILITY_TANGENT_ALONG_PATH : 0U);
    if (!vg::allows(*context, *path, needed)) return;
    const bool isAligned =
        vg::isAligned(x, alignof(VGfloat)) && vg::isAligned(y, alignof(VGfloat)) &&
        vg::isAligned(tangentX, alignof(VGfloat)) && vg::isAligned(tangentY, alignof(VGfloat));
    if (!isAligned || !vg::hasSegments(*path, startSegment, segmentCount)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    const auto along = static_cast<double>(base::finite(distance));
    const vg::PathPosition position = vg::positionAlong(*path, startSegment, segmentCount, along);
    if (wantsPoint) vg::storePair(position.point, x, y);
    if (wantsTangent) vg::storePair(position.tangent, tangentX, tangentY);
}
