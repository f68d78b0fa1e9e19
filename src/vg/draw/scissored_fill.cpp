// Fills once for each scissor rectangle that the polygon's box touches.

#include "vg/draw/scissored_fill.h"

#include <algorithm>
#include <cmath>

#include "vg/surface.h"

namespace vg {
namespace {

/// A box around the polygon on the surface, with room for the rasterizer's rounding: it works in
/// float, to 1/32 pixel. A point that is not finite makes the box as large as can be.
class SurfaceBox {
public:
    explicit SurfaceBox(const raster::FillParams& params) noexcept {
        const raster::Affine& m = params.userToSurface;
        for (int32_t i = 0; i < params.polygon.pointCount; ++i) {
            const double x = params.polygon.points[i].x;
            const double y = params.polygon.points[i].y;
            include(m.m00 * x, m.m01 * y, m.m02, minX_, maxX_);
            include(m.m10 * x, m.m11 * y, m.m12, minY_, maxY_);
        }
    }

    bool touches(const raster::PixelRect& rect) const noexcept {
        return minX_ < rect.x1 && maxX_ > rect.x0 && minY_ < rect.y1 && maxY_ > rect.y0;
    }

private:
    static constexpr double kFar = 1e300;

    /// The three terms of a coordinate.
    static void include(double a, double b, double c, double& low, double& high) noexcept {
        constexpr double kFloatError = 1e-6;  // of a sum of three products
        const double size = std::fabs(a) + std::fabs(b) + std::fabs(c);
        const bool isFinite = size < kFar;  // false for NaN
        const double center = isFinite ? a + b + c : 0.0;
        const double margin = isFinite ? 1.0 + size * kFloatError : kFar;
        low = std::min(low, center - margin);
        high = std::max(high, center + margin);
    }

    double minX_ = kFar, minY_ = kFar, maxX_ = -kFar, maxY_ = -kFar;
};

}  // namespace

bool fillScissored(Context& context, const Surface& surface, raster::FillParams& params) noexcept {
    if (!context.scissoring) {
        params.clip = {0, 0, surface.width, surface.height};
        return context.rasterizer.fill(params);
    }
    const SurfaceBox box(params);
    const auto fillPart = [&](const raster::PixelRect& rect) noexcept {
        if (!box.touches(rect)) return true;
        params.clip = rect;
        return context.rasterizer.fill(params);
    };
    return forEachScissorRect(context, surface.width, surface.height, fillPart);
}

}  // namespace vg
