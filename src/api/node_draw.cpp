// How containers are drawn and measured: the operations of SvgNode that walk, and those of the
// containers that walk in a way of their own.

#include "api/container_visit.h"
#include "api/traversal.h"
#include "svg/containers.h"

namespace quor {

namespace {

/// Draws what an entered node holds.
Status drawContent(SvgNode& node, Traversal& traversal) noexcept {
    if (traversal.style().visibility == SvgVisibility::kVisible) {
        if (const Status status = node.paint(traversal); status != Status::kOk) return status;
    }
    for (SvgNode* child : node.children()) {
        if (const Status status = child->draw(traversal); status != Status::kOk) return status;
    }
    return Status::kOk;
}

/// Runs `content` on the target of an entered `use`, which places the target at its x and y and is
/// its parent for as long.
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

}  // namespace

Status SvgNode::draw(Traversal& traversal) noexcept {
    return traversal.visit(*this, transform_, [&] { return drawContent(*this, traversal); });
}

Status SvgNode::bounds(Traversal& traversal, Box& box) noexcept {
    box = {};
    return traversal.visit(*this, transform_, [&] { return contentBounds(traversal, box); });
}

Status SvgNode::contentBounds(Traversal& traversal, Box& box) noexcept {
    box = {};
    for (SvgNode* child : children_) {
        if (!child->isRenderable()) continue;
        Box childBox;
        const Status status = child->bounds(traversal, childBox);
        if (status != Status::kOk) return status;
        box.unite(childBox);
    }
    return Status::kOk;
}

Status SvgNode::paint(Traversal& /*traversal*/) noexcept { return Status::kOk; }

Status SvgDefs::draw(Traversal& /*traversal*/) noexcept { return Status::kOk; }

Status SvgSvg::draw(Traversal& traversal) noexcept {
    return visitViewport(*this, traversal, [&] { return drawContent(*this, traversal); });
}

Status SvgSvg::bounds(Traversal& traversal, Box& box) noexcept {
    box = {};
    return visitViewport(*this, traversal, [&] { return contentBounds(traversal, box); });
}

Status SvgUse::draw(Traversal& traversal) noexcept {
    return traversal.visit(*this, transform_, [&] {
        return visitTarget(*this, traversal,
                           [&](SvgNode& target) { return target.draw(traversal); });
    });
}

Status SvgUse::contentBounds(Traversal& traversal, Box& box) noexcept {
    box = {};
    return visitTarget(*this, traversal, [&](SvgNode& target) {
        // What does not count as a child does not count as a target either.
        return target.isRenderable() ? target.bounds(traversal, box) : Status::kOk;
    });
}

}  // namespace quor
