#pragma once

#include "base/array.h"
#include "svg/status.h"

namespace quor {

/// Reads a `points` attribute into `numbers` (cleared first); an odd last number is dropped. Ends
/// at the first thing that is no number.
Status parsePointList(const char* text, base::Array<float>& numbers) noexcept;

}  // namespace quor
