#pragma once

#include "vg/geometry/affine_map.h"
#include "vg/path/path.h"

namespace vg {

/// Appends the image of the source under the map, and returns false, with the destination as it
/// was, when memory runs out.
///
/// Every coordinate becomes absolute. A source that does not begin with a move starts at (0, 0),
/// and its copy with a move to the image of that point.
[[nodiscard]] bool transformPath(Path& destination, const Path& source,
                                 const AffineMap& map) noexcept;

}  // namespace vg
