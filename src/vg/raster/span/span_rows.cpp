// Instantiates the span functions of the five paints on premultiplied surfaces.

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
constinit const SpanRow kLinearSpans = spanRow<LinearPaint>(BlendColumns{});
constinit const SpanRow kRadialSpans = spanRow<RadialPaint>(BlendColumns{});
constinit const SpanRow kPatternSpans = spanRow<PatternPaint>(BlendColumns{});
constinit const SpanRow kConicalSpans = spanRow<ConicalPaint>(BlendColumns{});

}  // namespace vg::raster
