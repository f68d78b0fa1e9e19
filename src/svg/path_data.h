#pragma once

#include <cstdint>

#include "base/array.h"
#include "svg/status.h"

namespace quor {

/// Segment commands and coordinates for vgAppendPathData, kept and reused from path to path.
struct PathData {
    base::Array<uint8_t> segments;
    base::Array<float> coordinates;
};

/// Reads a `d` attribute into `data` (cleared first): every segment completed before the first
/// thing that cannot be read. Only kOutOfMemory is reported; the arrays' failure flags are then
/// cleared again.
Status parsePathData(const char* text, PathData& data) noexcept;

}  // namespace quor
