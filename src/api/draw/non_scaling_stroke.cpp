#include "api/draw/non_scaling_stroke.h"

#include <cmath>

#include "base/finite.h"
#include "svg/shapes.h"

namespace quor {

float lengthScale(const SvgMatrix& transform) noexcept {
    return std::sqrt(std::fabs(transform.determinant()));
}

Status NonScalingStroke::setup(const SvgMatrix& transform, SvgShape& shape,
                               bool& isDrawable) noexcept {
    if (!transform.isAnglePreserving()) {
        const Status status = carryToSurface(transform, shape);
        isDrawable = status == Status::kOk;
        return status;
    }
    const float scale = lengthScale(transform);
    isDrawable = scale > base::kSmallestExtent;
    if (!isDrawable) return Status::kOk;
    savedWidth_ = vgGetf(VG_STROKE_LINE_WIDTH);
    hasSavedWidth_ = true;
    vgSetf(VG_STROKE_LINE_WIDTH, savedWidth_ / scale);
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
