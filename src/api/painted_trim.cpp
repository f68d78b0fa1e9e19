#include "api/painted_trim.h"

#include <algorithm>

#include "api/draw/document_draw.h"
#include "svg/engine_error.h"
#include "vg/vg.h"

namespace quor {

namespace {

/// The pixels of one element: rows from the top.
struct PaintedArea {
    const uint32_t* pixels;
    int32_t stride;

    bool isFree(int32_t x, int32_t y) const noexcept { return pixels[y * stride + x] >> 24 == 0; }
    bool isRowFree(int32_t y, int32_t left, int32_t right) const noexcept {
        for (int32_t x = left; x < right; ++x) {
            if (!isFree(x, y)) return false;
        }
        return true;
    }
    bool isColumnFree(int32_t x, int32_t top, int32_t bottom) const noexcept {
        for (int32_t y = top; y < bottom; ++y) {
            if (!isFree(x, y)) return false;
        }
        return true;
    }
};

}  // namespace

PaintedTrim::~PaintedTrim() {
    if (surface_ == nullptr) return;
    vg::makeCurrent(vg::currentContext(), before_);
    vg::destroySurface(surface_);
}

bool PaintedTrim::prepare(int32_t width, int32_t height) noexcept {
    if (surface_ == nullptr) {
        vg::SurfaceFlags flags;
        flags.premultiplied = true;
        surface_ = vg::createSurface(width, height, flags);
        if (surface_ == nullptr) return false;
        vg::makeCurrent(vg::currentContext(), surface_);
        setDrawState(RenderingQuality::kBetter);
        return true;
    }
    width = std::max(width, vg::surfaceWidth(surface_));
    height = std::max(height, vg::surfaceHeight(surface_));
    const bool isLargeEnough =
        width == vg::surfaceWidth(surface_) && height == vg::surfaceHeight(surface_);
    return isLargeEnough || vg::resizeSurface(surface_, width, height);
}

Status PaintedTrim::trim(PackingElement& element) noexcept {
    if (!prepare(element.width, element.height)) return Status::kOutOfMemory;
    const int32_t height = vg::surfaceHeight(surface_);
    constexpr VGfloat kTransparent[4] = {0.0F, 0.0F, 0.0F, 0.0F};
    vgSetfv(VG_CLEAR_COLOR, 4, kTransparent);
    vgClear(0, height - element.height, element.width, element.height);
    const Status status = elementDraw_.draw(element, 0, 0, static_cast<uint32_t>(height));
    vg::finishSurface(surface_);
    if (status == Status::kOk) shrinkToPaint(element);
    return status;
}

void PaintedTrim::shrinkToPaint(PackingElement& element) const noexcept {
    const PaintedArea area = {vg::surfacePixels(surface_), vg::surfaceWidth(surface_)};
    int32_t left = 0, top = 0, right = element.width, bottom = element.height;
    while (top < bottom && area.isRowFree(top, left, right)) ++top;
    while (top < bottom && area.isRowFree(bottom - 1, left, right)) --bottom;
    while (top < bottom && left < right && area.isColumnFree(left, top, bottom)) ++left;
    while (top < bottom && left < right && area.isColumnFree(right - 1, top, bottom)) --right;
    element.originX += left;
    element.originY += top;
    element.width = top < bottom ? right - left : 0;
    element.height = bottom - top;
}

}  // namespace quor
