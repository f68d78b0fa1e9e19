#pragma once

#include <cstdint>

#include "vg/geometry/outline.h"
#include "vg/geometry/tolerance.h"

namespace vg {

struct Path;

/// Most points of a flattened path, or two for each of its segments where that is more. A path
/// that would need more gets its later curves in fewer segments, down to one each.
inline constexpr int32_t kMaxFlattenedPoints = 1 << 23;

/// Replaces `result` by the path as closed contours to be filled, one for each subpath that has a
/// drawing segment. Every segment ends exactly where it should. Points inside of a curve lie a
/// little outside of it, so that as much area lies between the curve and the polyline on one side
/// as on the other, and no point of the polyline is farther than a third of the tolerance's radius
/// from the curve, within the two limits above. False when memory runs out; `result` is then empty.
[[nodiscard]] bool flatten(const Path& path, const FlatteningTolerance& tolerance,
                           Outline& result) noexcept;

}  // namespace vg
