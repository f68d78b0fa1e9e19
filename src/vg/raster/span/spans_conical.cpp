#include "vg/raster/span/span_row.h"

namespace vg::raster {

constinit const SpanRow kConicalSpans = spanRow<ConicalPaint>(BlendColumns{});

}  // namespace vg::raster
