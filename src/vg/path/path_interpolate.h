#pragma once

#include "vg/path/path.h"

namespace vg {

/// Whether both paths have the same kinds of segments in the same order.
bool canInterpolate(const Path& startPath, const Path& endPath) noexcept;

/// Appends the path in between two others: the first at amount 0, the second at 1, beyond them
/// elsewhere. False, with the destination as it was, when memory runs out. Precondition:
/// canInterpolate().
[[nodiscard]] bool interpolate(Path& destination, const Path& startPath, const Path& endPath,
                               double amount) noexcept;

}  // namespace vg
