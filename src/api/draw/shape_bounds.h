#pragma once

#include "api/draw/traversal.h"
#include "svg/rect.h"
#include "svg/shapes.h"

namespace quor {

/// The box of a shape with its stroke under the traversal's style and transform, in the coordinates
/// of the bottom of the transform stack. The stroke's share is an upper bound. Empty for a shape
/// that draws nothing.
Status shapeBounds(SvgShape& shape, const Traversal& traversal, Box& box) noexcept;

}  // namespace quor
