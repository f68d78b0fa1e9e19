// What paths are asked: their boxes, their length, a point along them.

#include "base/finite.h"
#include "vg/context.h"
#include "vg/entry/path_checks.h"
#include "vg/path/path_bounds.h"
#include "vg/path/path_query.h"

namespace vg {

namespace {

VGfloat toFloat(double value) noexcept { return base::finite(static_cast<VGfloat>(value)); }

void storePair(Vector2 value, VGfloat* x, VGfloat* y) noexcept {
    *x = toFloat(value.x);
    *y = toFloat(value.y);
}

/// The common body of the two box entry points.
void storeBounds(VGPath handle, VGbitfield capability, bool isTransformed, VGfloat* minX,
                 VGfloat* minY, VGfloat* width, VGfloat* height) noexcept {
    Context* context = currentContext();
    if (context == nullptr) return;
    const Path* path = findAllowing(*context, handle, capability);
    if (path == nullptr) return;
    for (const VGfloat* result : {minX, minY, width, height}) {
        if (!isUsableArray(result, alignof(VGfloat))) {
            return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        }
    }
    const AffineMap map =
        isTransformed ? AffineMap(context->matrix(VG_MATRIX_PATH_USER_TO_SURFACE)) : AffineMap();
    const Bounds bounds = boundsOf(*path, map);
    if (bounds.isEmpty()) {
        storePair({0.0, 0.0}, minX, minY);
        return storePair({-1.0, -1.0}, width, height);
    }
    storePair(bounds.low, minX, minY);
    storePair(bounds.high - bounds.low, width, height);
}

}  // namespace

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
    Context* context = vg::currentContext();
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
    Context* context = vg::currentContext();
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
