#pragma once

#include <cstdint>

#include "base/array.h"
#include "svg/matrix.h"
#include "svg/node.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/style.h"
#include "vg/vg.h"

namespace quor {

class SvgUse;

/// The walk over a document's tree: the computed styles and transforms of the nodes that it is
/// inside of, kept equal to the engine's state, and the limits that keep a small file from
/// drawing forever.
///
/// The nodes' operations drive it: visit() enters a node and leaves it whatever happens, so an
/// error unwinds everything on its way out. The memory is kept from walk to walk.
class Traversal {
public:
    static constexpr int kMaxNesting = 4096;       ///< elements inside each other
    static constexpr int kMaxUseNesting = 512;     ///< `use` elements inside each other
    static constexpr int kMaxUseTargets = 500000;  ///< targets visited in one walk

    Traversal() noexcept = default;
    Traversal(const Traversal&) = delete;
    Traversal& operator=(const Traversal&) = delete;
    ~Traversal();

    /// Allocates the stacks. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// Starts a walk: the stacks hold the base transform (loaded into the engine) and the initial
    /// style, and the two paints exist. A walk that continues others counts their targets too.
    Status begin(const SvgMatrix& base, int useTargets = 0) noexcept;

    /// `use` targets visited since begin(), and those it was given.
    int useTargets() const noexcept { return useTargets_; }

    /// Until it is called with null, draws paint nothing: the tight boxes of what they would have
    /// painted are united with this one, in the coordinates of the bottom of the transform stack.
    void measureInto(Box* painted) noexcept { painted_ = painted; }
    /// Null while draws paint.
    Box* painted() const noexcept { return painted_; }

    /// Runs `content`, a callable that returns a Status, with the node's style and transform
    /// pushed. Does nothing for a node that is not displayed.
    template <class Content>
    Status visit(SvgNode& node, const SvgMatrix& transform, Content content) noexcept {
        if (node.style().display == SvgDisplay::kNone) return Status::kOk;
        Status status = enter(node);
        if (status != Status::kOk) return status;
        if (style().display != SvgDisplay::kNone) status = withTransform(transform, content);
        leave(node);
        return status;
    }

    /// Runs `content` with the transform multiplied on the right of the current one.
    template <class Content>
    Status withTransform(const SvgMatrix& transform, Content content) noexcept {
        if (transform.isIdentity()) return content();
        Status status = pushTransform(transform);
        if (status != Status::kOk) return status;
        status = content();
        popTransform();
        return status;
    }

    /// Counts and marks a `use` that the walk is inside of and that goes on to its target. A
    /// reference circle, and a walk over the limits, give kInvalidSvg.
    Status enterTarget(SvgUse& use, const SvgNode& target) noexcept;
    void leaveTarget(SvgUse& use) noexcept;

    /// The computed style of the innermost node.
    const SvgStyle& style() const noexcept { return styles_.last(); }
    /// From the innermost node's coordinates to those of the bottom of the stack: the surface's.
    const SvgMatrix& transform() const noexcept { return transforms_.last(); }

    /// Colour paints for the shapes to fill and stroke with.
    VGPaint fillPaint() const noexcept { return fillPaint_; }
    VGPaint strokePaint() const noexcept { return strokePaint_; }

private:
    /// A node that the walk is inside of, outermost first.
    struct Level {
        const SvgNode* node;
        const char* color;  ///< the value of `color` in force; null until asked for
    };

    Status enter(SvgNode& node) noexcept;
    void leave(const SvgNode& node) noexcept;
    Status pushTransform(const SvgMatrix& transform) noexcept;
    void popTransform() noexcept;

    bool isInside(const SvgNode& node) const noexcept;
    const char* inheritedColor() noexcept;
    void resolveCurrentColor(SvgPaint& paint) noexcept;

    base::Array<SvgStyle> styles_;  ///< the initial style, then one a level
    base::Array<SvgMatrix> transforms_;
    base::Array<Level> levels_;
    Box* painted_ = nullptr;
    int useNesting_ = 0;
    int useTargets_ = 0;
    VGPaint fillPaint_ = VG_INVALID_HANDLE;
    VGPaint strokePaint_ = VG_INVALID_HANDLE;
};

}  // namespace quor
