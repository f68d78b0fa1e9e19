#include "vg/raster/span_row.h"

namespace vg::raster {

constinit const SpanRow kRadialSpans = spanRow<RadialPaint>(BlendColumns{});

}  // namespace vg::raster
