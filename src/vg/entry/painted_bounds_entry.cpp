// The box of what a draw of a path paints: its outline as it is rounded to surface coordinates.

#include <algorithm>
#include <cmath>

#include "vg/context.h"
#include "vg/draw/draw_path.h"
#include "vg/draw/paint_params.h"
#include "vg/draw/path_cache.h"
#include "vg/engine.h"
#include "vg/entry/path_checks.h"
#include "vg/path/path.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/paint/color_ramp.h"
#include "vg/surface.h"

namespace vg {
namespace {

using raster::FixedBox;

constexpr FixedBox kEmptyBox = {0, 0, 0, 0};

/// Products of differences of coordinates up to this, in 1/32 pixel, fit 64 bits. What goes beyond
/// it has the largest box.
constexpr int32_t kLargest = 1 << 29;
constexpr FixedBox kLargestBox = {-kLargest, -kLargest, kLargest, kLargest};

// Where the same outline is drawn at another place, rounding differs in the last bits: a
// coordinate so near, in 1/32 pixel, to the middle of two counts as either.
constexpr double kTie = 1.0 / 64.0;

bool showsColor(const raster::PaintParams& paint) noexcept {
    constexpr float kLeastAlpha = 0.5F / 255.0F;
    float alpha = paint.color[3];
    if (paint.colorTransformEnabled) {
        alpha = alpha * paint.colorTransform[3] + paint.colorTransform[7];
    }
    return alpha >= kLeastAlpha;
}

bool showsRamp(const raster::ColorRamp& ramp) noexcept {
    return std::any_of(ramp.pixels, ramp.pixels + raster::ColorRamp::kSize,
                       [](uint32_t pixel) { return pixel >> 24 != 0; });
}

/// Stores whether the paint of the mode shows. False when memory runs out.
bool findWhetherShown(Context& context, const Surface& surface, VGPaintMode mode,
                      bool& isShown) noexcept {
    raster::PaintParams paint;
    const PaintSetup setup = setupPaintParams(context, surface, mode, paint);
    isShown = setup == PaintSetup::kReady;
    if (!isShown) return setup == PaintSetup::kDrawsNothing;
    if (paint.kind == raster::PaintKind::kColor) {
        isShown = showsColor(paint);
    } else if (paint.kind != raster::PaintKind::kPattern) {
        isShown = showsRamp(*paint.gradient.ramp);
    }
    return true;
}

FixedBox unionOf(const FixedBox& a, const FixedBox& b) noexcept {
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX),
            std::max(a.maxY, b.maxY)};
}

bool isEmpty(const FixedBox& box) noexcept { return box.minX >= box.maxX || box.minY >= box.maxY; }

/// A contour in 1/32 pixel, and whether it has an area: points on one line paint nothing.
class ContourBox {
public:
    void add(double x, double y) noexcept {
        if (std::isnan(x) || std::isnan(y)) return;
        if (std::abs(x) > kLargest || std::abs(y) > kLargest) {
            hasArea_ = true;
            box_ = kLargestBox;
            return;
        }
        const FixedBox point = {rounded(x - kTie), rounded(y - kTie), rounded(x + kTie),
                                rounded(y + kTie)};
        box_ = count_ == 0 && !hasArea_ ? point : unionOf(box_, point);
        if (!hasArea_) lookForArea(rounded(x), rounded(y));
        ++count_;
    }

    bool hasArea() const noexcept { return hasArea_; }
    const FixedBox& box() const noexcept { return box_; }

private:
    static int32_t rounded(double value) noexcept {
        return static_cast<int32_t>(std::floor(value + 0.5));
    }

    /// The line goes through the first point and the first other one.
    void lookForArea(int32_t x, int32_t y) noexcept {
        if (count_ == 0) {
            startX_ = x;
            startY_ = y;
            return;
        }
        const int64_t dx = int64_t{x} - startX_;
        const int64_t dy = int64_t{y} - startY_;
        if (lineX_ == 0 && lineY_ == 0) {
            lineX_ = dx;
            lineY_ = dy;
        } else {
            hasArea_ = lineX_ * dy != lineY_ * dx;
        }
    }

    int count_ = 0;
    bool hasArea_ = false;
    FixedBox box_ = kEmptyBox;
    int32_t startX_ = 0, startY_ = 0;
    int64_t lineX_ = 0, lineY_ = 0;
};

FixedBox boxOf(const raster::Polygon& polygon, const Matrix3& matrix) noexcept {
    const auto& m = matrix.m;
    const auto map = [](const float(&row)[3], const raster::Point& point) {
        return raster::kSubpixels * (double{row[0]} * point.x + double{row[1]} * point.y + row[2]);
    };
    FixedBox all = kEmptyBox;
    const raster::Point* point = polygon.points;
    for (int32_t i = 0; i < polygon.contourCount; ++i) {
        ContourBox contour;
        const raster::Point* const end = point + polygon.contourSizes[i];
        for (; point != end; ++point) contour.add(map(m[0], *point), map(m[1], *point));
        if (!contour.hasArea()) continue;
        all = isEmpty(all) ? contour.box() : unionOf(all, contour.box());
    }
    return all;
}

/// A measurement that goes with one call of vgDrawPath.
class BoundsCall {
public:
    BoundsCall(Context& context, Surface& surface, Path& path, VGbitfield paintModes) noexcept
        : context_(context), surface_(surface), path_(path), paintModes_(paintModes) {}

    /// False when memory runs out.
    bool find(FixedBox& all) noexcept {
        all = kEmptyBox;
        for (const VGPaintMode mode : {VG_FILL_PATH, VG_STROKE_PATH}) {
            if ((paintModes_ & mode) == 0) continue;
            FixedBox box = kEmptyBox;
            if (!findBox(mode, box)) return false;
            if (!isEmpty(box)) all = isEmpty(all) ? box : unionOf(all, box);
        }
        return true;
    }

private:
    bool findBox(VGPaintMode mode, FixedBox& box) noexcept {
        bool isShown = false;
        if (!findWhetherShown(context_, surface_, mode, isShown)) return false;
        if (!isShown) return true;
        DrawOutline outline;
        if (!findOutline(context_, surface_, path_, paintModes_, mode, outline)) return false;
        KeptBox& kept = mode == VG_FILL_PATH ? cacheOf(path_)->fillBox : cacheOf(path_)->strokeBox;
        const Matrix3& matrix = context_.matrix(VG_MATRIX_PATH_USER_TO_SURFACE);
        if (outline.serial == 0 || kept.serial != outline.serial || kept.matrix != matrix) {
            kept = {outline.serial, matrix, boxOf(outline.polygon, matrix)};
        }
        box = kept.box;
        return true;
    }

    Context& context_;
    Surface& surface_;
    Path& path_;
    VGbitfield paintModes_;
};

}  // namespace

PaintedBounds paintedBounds(uint32_t handle, uint32_t paintModes) noexcept {
    Context* const context = currentContext();
    Path* const path = context != nullptr ? findOrRaise(*context, handle) : nullptr;
    if (path == nullptr) return {};
    FixedBox box = kEmptyBox;
    BoundsCall call(*context, *currentSurface(), *path, paintModes);
    if (!call.find(box)) {
        context->recoverMemory();
        if (!call.find(box)) context->raise(VG_OUT_OF_MEMORY_ERROR);
    }
    constexpr float kPixel = 1.0F / static_cast<float>(raster::kSubpixels);
    return {static_cast<float>(box.minX) * kPixel, static_cast<float>(box.minY) * kPixel,
            static_cast<float>(box.maxX) * kPixel, static_cast<float>(box.maxY) * kPixel};
}

}  // namespace vg
