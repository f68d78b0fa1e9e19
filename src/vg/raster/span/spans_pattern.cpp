#include "vg/raster/span/span_row.h"

namespace vg::raster {

constinit const SpanRow kPatternSpans = spanRow<PatternPaint>(BlendColumns{});

}  // namespace vg::raster
