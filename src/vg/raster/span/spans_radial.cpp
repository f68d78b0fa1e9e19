#include "vg/raster/span/span_row.h"

namespace vg::raster {

constinit const SpanRow kRadialSpans = spanRow<RadialPaint>(BlendColumns{});

}  // namespace vg::raster
