// Walks the tree depth first, in document order, once to draw and once to measure. What a node does
// follows from its kind: `defs` is passed over, `svg` maps its viewport, `use` goes on to its
// target, a shape is painted or measured, and any other node stands for its children.

#include "api/draw/node_draw.h"

#include <cassert>

#include "api/draw/node_visit.h"
#include "api/draw/shape_bounds.h"
#include "api/draw/shape_painter.h"
#include "svg/containers.h"

namespace quor {

namespace {

/// Runs `content` on the target of an entered `use`, translated by its x and y, with the `use` as
/// the target's parent meanwhile: styles and lengths are inherited from where it is used.
template <class Content>
Status visitTarget(SvgUse& use, Traversal& traversal, Content content) noexcept {
    SvgNode* target = use.target();
    if (target == nullptr) return Status::kOk;
    Status status = traversal.enterTarget(use, *target);
    if (status != Status::kOk) return status;
    SvgNode* parent = target->parent();
    target->setParent(&use);
    status = traversal.withTransform(SvgMatrix::translation(use.x, use.y),
                                     [&] { return content(*target); });
    target->setParent(parent);
    traversal.leaveTarget(use);
    return status;
}

/// Draws what an entered node holds.
Status drawContent(SvgNode& node, Traversal& traversal) noexcept {
    if (isShape(node.kind())) {
        if (traversal.style().visibility == SvgVisibility::kVisible) {
            const Status status = ShapePainter(traversal, static_cast<SvgShape&>(node)).paint();
            if (status != Status::kOk) return status;
        }
    } else if (node.kind() == SvgNodeKind::kUse) {
        return visitTarget(static_cast<SvgUse&>(node), traversal,
                           [&](SvgNode& target) { return drawNode(target, traversal); });
    }
    for (SvgNode* child : node.children()) {
        if (const Status status = drawNode(*child, traversal); status != Status::kOk) return status;
    }
    return Status::kOk;
}

Status childrenBounds(SvgNode& node, Traversal& traversal, Box& box) noexcept {
    for (SvgNode* child : node.children()) {
        if (!isRenderable(child->kind())) continue;
        Box childBox;
        const Status status = nodeBounds(*child, traversal, childBox);
        if (status != Status::kOk) return status;
        box.unite(childBox);
    }
    return Status::kOk;
}

/// Measures what an entered node holds. Precondition: `box` is empty.
Status contentBounds(SvgNode& node, Traversal& traversal, Box& box) noexcept {
    assert(box.isEmpty());
    if (isShape(node.kind())) return shapeBounds(static_cast<SvgShape&>(node), traversal, box);
    if (node.kind() != SvgNodeKind::kUse) return childrenBounds(node, traversal, box);
    return visitTarget(static_cast<SvgUse&>(node), traversal, [&](SvgNode& target) {
        // What does not count as a child does not count as a target either.
        return isRenderable(target.kind()) ? nodeBounds(target, traversal, box) : Status::kOk;
    });
}

}  // namespace

Status drawNode(SvgNode& node, Traversal& traversal) noexcept {
    if (node.kind() == SvgNodeKind::kDefs) return Status::kOk;
    return visitNode(node, traversal, [&] { return drawContent(node, traversal); });
}

Status nodeBounds(SvgNode& node, Traversal& traversal, Box& box) noexcept {
    assert(isRenderable(node.kind()));
    box = {};
    return visitNode(node, traversal, [&] { return contentBounds(node, traversal, box); });
}

}  // namespace quor
