#pragma once

#include "vg/context.h"
#include "vg/param_values.h"

namespace vg {

/// Keeps the dash pattern as given and derives the dashes in effect: an odd last value is left out,
/// negative values become 0, and a total length of next to nothing switches dashing off. False,
/// with nothing changed, when memory runs out.
bool setDashPattern(StrokeState& stroke, const ParamInput& pattern) noexcept;

}  // namespace vg
