// Draws an image as a polygon of its four corners, filled with the image as a texture under the
// inverse of the matrix.

#include "vg/draw/draw_image.h"

#include <algorithm>

#include "vg/context.h"
#include "vg/draw/paint_params.h"
#include "vg/draw/scissored_fill.h"
#include "vg/image/image.h"
#include "vg/paint/inverse_map.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace vg {
namespace {

constexpr int32_t kCornerCount = 4;

/// The image's outline on the surface.
struct Corners {
    raster::Point points[kCornerCount];

    raster::Polygon polygon() const noexcept { return {points, kCornerCount, &kCornerCount, 1}; }
};

/// Beyond every surface, with room in a float for the rasterizer's units.
float limitCoordinate(double coordinate) noexcept {
    constexpr double kFar = 1e30;
    return static_cast<float>(std::clamp(coordinate, -kFar, kFar));
}

/// False when a corner lies behind the viewer, w <= 0.
bool findCorners(const Image& image, const Matrix3& matrix, Corners& corners) noexcept {
    for (int i = 0; i < kCornerCount; ++i) {  // counter-clockwise from the lower left
        const double x = i == 1 || i == 2 ? image.width : 0;
        const double y = i >= 2 ? image.height : 0;
        double place[3];
        for (int row = 0; row < 3; ++row) {
            place[row] = matrix.m[row][0] * x + matrix.m[row][1] * y + matrix.m[row][2];
        }
        const double w = place[2];
        if (!(w > 0.0)) return false;
        corners.points[i] = {limitCoordinate(place[0] / w), limitCoordinate(place[1] / w)};
    }
    return true;
}

/// Under a projective matrix there are no other modes than the normal one.
raster::ImageMode modeOf(const Context& context, const Matrix3& matrix) noexcept {
    return isAffine(matrix) ? static_cast<raster::ImageMode>(context.imageMode)
                            : raster::ImageMode::kNormal;
}

/// The colour transform is applied to what the image and the paint make together: it goes with the
/// image, or with the paint that a stencil lets through.
PaintSetup setupColors(Context& context, const Surface& surface, const Image& image,
                       raster::FillParams& params) noexcept {
    const bool isStencil = params.imageMode == raster::ImageMode::kStencil;
    setupTexture(context, image, !isStencil, params.image);
    if (params.imageMode == raster::ImageMode::kNormal) return PaintSetup::kReady;
    PaintUse use = VG_FILL_PATH;
    use.userMatrix = VG_MATRIX_IMAGE_USER_TO_SURFACE;
    use.transformsColors = isStencil;
    use.imageMode = params.imageMode;
    return setupPaintParams(context, surface, use, params.paint);
}

}  // namespace

bool drawImage(Context& context, Surface& surface, const Image& image) noexcept {
    const Matrix3& matrix = context.matrix(VG_MATRIX_IMAGE_USER_TO_SURFACE);
    raster::FillParams params;
    Corners corners;
    const bool isVisible =
        findCorners(image, matrix, corners) &&
        (isAffine(matrix) ? invert(AffineMap(matrix), params.image.surfaceToTexture)
                          : invertProjective(matrix, params.image.surfaceToTexture));
    if (!isVisible) return true;
    params.polygon = corners.polygon();
    params.quality = static_cast<raster::Quality>(context.renderingQuality);
    params.blendMode = context.fillBlendMode;
    params.surface = surface.drawTarget();
    params.mask = activeMask(context, surface);
    params.imageMode = modeOf(context, matrix);
    switch (setupColors(context, surface, image, params)) {
        case PaintSetup::kReady:
            return fillScissored(context, surface, params);
        case PaintSetup::kDrawsNothing:
            return true;
        case PaintSetup::kOutOfMemory:
            break;
    }
    return false;
}

}  // namespace vg
