#pragma once

#include "api/draw/traversal.h"
#include "svg/containers.h"

namespace quor {

/// Runs `content` inside an `svg` element: in its own coordinates, its viewport being mapped into
/// its parent's. Does nothing for one without area.
template <class Content>
Status visitViewport(SvgSvg& svg, Traversal& traversal, Content content) noexcept {
    SvgMatrix mapping;
    if (!svg.ownMapping(mapping)) return Status::kOk;
    return traversal.visit(svg, mapping * svg.transform(), content);
}

/// Runs `content` inside a node, `svg` or not.
template <class Content>
Status visitNode(SvgNode& node, Traversal& traversal, Content content) noexcept {
    if (node.kind() == SvgNodeKind::kSvg) {
        return visitViewport(static_cast<SvgSvg&>(node), traversal, content);
    }
    return traversal.visit(node, node.transform(), content);
}

}  // namespace quor
