#include "vg/raster/span/span_row.h"

namespace vg::raster {

constinit const SpanRow kLinearSpans = spanRow<LinearPaint>(BlendColumns{});

}  // namespace vg::raster
