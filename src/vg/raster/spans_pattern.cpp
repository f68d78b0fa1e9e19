#include "vg/raster/span_row.h"

namespace vg::raster {

constinit const SpanRow kPatternSpans = spanRow<PatternPaint>(BlendColumns{});

}  // namespace vg::raster
