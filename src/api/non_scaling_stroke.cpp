#include "api/non_scaling_stroke.h"

#include <cmath>

#include "base/finite.h"
#include "svg/engine_error.h"

namespace quor {

Status transformedCopy(VGPath path, VGPath& copy) noexcept {
    copy = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1.0F, 0.0F, 0, 0,
                        VG_PATH_CAPABILITY_ALL);
    if (copy == VG_INVALID_HANDLE) return takeEngineError();
    vgTransformPath(copy, path);
    const Status status = takeEngineError();
    if (status != Status::kOk) {
        vgDestroyPath(copy);
        copy = VG_INVALID_HANDLE;
    }
    return status;
}

float lengthScale(const SvgMatrix& transform) noexcept {
    return std::sqrt(std::fabs(transform.determinant()));
}

Status NonScalingStroke::setup(const SvgMatrix& transform, VGPath shapePath,
                               bool& isDrawable) noexcept {
    if (!transform.isAnglePreserving()) {
        const Status status = carryToSurface(shapePath);
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

Status NonScalingStroke::carryToSurface(VGPath shapePath) noexcept {
    if (const Status status = transformedCopy(shapePath, path_); status != Status::kOk) {
        return status;
    }
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
        vgDestroyPath(path_);
        path_ = VG_INVALID_HANDLE;
    }
}

}  // namespace quor
