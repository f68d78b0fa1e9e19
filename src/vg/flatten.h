#pragma once

#include <cstdint>

#include "vg/flattened_path.h"
#include "vg/tolerance.h"

namespace vg {

struct Path;

/// Most straight segments of one curve.
inline constexpr int32_t kMaxCurveSegments = 4096;

/// Most points of a flattened path, or two for each of its segments where that is more. A path
/// that would need more gets its later curves in fewer segments, down to one each.
inline constexpr int32_t kMaxFlattenedPoints = 1 << 23;

/// Replaces `result` by the path as straight segments: no point of a curve is farther than the
/// tolerance's radius from them, within the two limits above, and every segment ends exactly where
/// it should. A move followed at once by a close is a closed contour of one point. False when
/// memory runs out; `result` is then empty.
[[nodiscard]] bool flatten(const Path& path, const FlatteningTolerance& tolerance,
                           FlattenedPath& result) noexcept;

}  // namespace vg
