#pragma once

#include "api/draw/traversal.h"
#include "svg/node.h"
#include "svg/rect.h"

namespace quor {

/// Draws the node and what is in it, as the traversal stands. Anything but kOk ends the walk.
Status drawNode(SvgNode& node, Traversal& traversal) noexcept;

/// The node's box in the coordinates of the bottom of the transform stack; empty when it draws
/// nothing. Precondition: the node is renderable.
Status nodeBounds(SvgNode& node, Traversal& traversal, Box& box) noexcept;

}  // namespace quor
