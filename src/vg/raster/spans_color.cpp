#include "vg/raster/kernels.h"
#include "vg/raster/span_row.h"

namespace vg::raster {
namespace {

void coverSource(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                 int32_t end) noexcept {
    kernels().runSource(surface.row(y) + first, end - first, span.color);
}

void coverSourceOver(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                     int32_t end) noexcept {
    kernels().runSourceOver(surface.row(y) + first, end - first, span.color);
}

/// The two most frequent modes have runs, and a composite of whole rows, in the kernels.
constexpr SpanRow colorSpans() noexcept {
    SpanRow row = spanRow<SolidPaint>(BlendColumns{});
    row[0].plain = {row[0].plain.span, &coverSource, FlatBlend::kSource};
    row[1].plain = {row[1].plain.span, &coverSourceOver, FlatBlend::kSourceOver};
    return row;
}

}  // namespace

constinit const SpanRow kColorSpans = colorSpans();

}  // namespace vg::raster
