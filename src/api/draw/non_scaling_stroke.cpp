// Strokes in units of the surface, by a divided width or on a transformed copy of the outline.

#include "api/draw/non_scaling_stroke.h"

#include <cassert>
#include <cmath>

#include "base/finite.h"
#include "svg/shapes.h"

namespace quor {

float lengthScale(const SvgMatrix& transform) noexcept {
    return std::sqrt(std::fabs(transform.determinant()));
}

bool leavesStroke(const SvgMatrix& transform) noexcept {
    return !transform.isAnglePreserving() || lengthScale(transform) > base::kSmallestExtent;
}

Status NonScalingStroke::setup(const SvgMatrix& transform, SvgShape& shape) noexcept {
    assert(leavesStroke(transform));
    if (!transform.isAnglePreserving()) return carryToSurface(transform, shape);
    savedWidth_ = vgGetf(VG_STROKE_LINE_WIDTH);
    hasSavedWidth_ = true;
    vgSetf(VG_STROKE_LINE_WIDTH, savedWidth_ / lengthScale(transform));
    return Status::kOk;
}

Status NonScalingStroke::carryToSurface(const SvgMatrix& transform, SvgShape& shape) noexcept {
    const Status status = shape.findSurfacePath(transform, path_);
    if (status != Status::kOk) return status;
    vgSeti(VG_MATRIX_MODE, VG_MATRIX_STROKE_PAINT_TO_USER);
    vgGetMatrix(savedStrokePaintMatrix_);
    vgSeti(VG_MATRIX_MODE, VG_MATRIX_PATH_USER_TO_SURFACE);
    vgGetMatrix(savedPathMatrix_);
    vgLoadIdentity();
    // The paint stays where it was: paint to user to surface, user space now being the surface.
    vgSeti(VG_MATRIX_MODE, VG_MATRIX_STROKE_PAINT_TO_USER);
    vgLoadMatrix(savedPathMatrix_);
    vgMultMatrix(savedStrokePaintMatrix_);
    return Status::kOk;
}

void NonScalingStroke::restore() noexcept {
    if (hasSavedWidth_) {
        vgSetf(VG_STROKE_LINE_WIDTH, savedWidth_);
        hasSavedWidth_ = false;
    }
    if (path_ != VG_INVALID_HANDLE) {
        vgSeti(VG_MATRIX_MODE, VG_MATRIX_STROKE_PAINT_TO_USER);
        vgLoadMatrix(savedStrokePaintMatrix_);
        vgSeti(VG_MATRIX_MODE, VG_MATRIX_PATH_USER_TO_SURFACE);
        vgLoadMatrix(savedPathMatrix_);
        path_ = VG_INVALID_HANDLE;
    }
}

}  // namespace quor
