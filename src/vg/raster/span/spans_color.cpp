#include "vg/raster/span/span_row.h"

namespace vg::raster {
namespace {

/// Of the two most frequent modes the kernels composite whole rows.
constexpr SpanRow colorSpans() noexcept {
    SpanRow row = spanRow<SolidPaint>(BlendColumns{});
    row[0].plain.flat = FlatBlend::kSource;
    row[1].plain.flat = FlatBlend::kSourceOver;
    return row;
}

}  // namespace

constinit const SpanRow kColorSpans = colorSpans();

}  // namespace vg::raster
