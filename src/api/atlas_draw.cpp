// Draws the elements of a bin one by one: each walk goes down the path from the outermost element
// to the one that is drawn, so that it has the styles and transforms of its ancestors.

#include "api/atlas_draw.h"

#include "api/draw/document_draw.h"
#include "api/draw/node_draw.h"
#include "api/draw/node_visit.h"
#include "base/array.h"
#include "svg/engine_error.h"

namespace quor {

namespace {

/// From scaled document pixels to the place in the bin: whole pixels, so nothing is resampled.
SvgMatrix placement(const QuorPackedRect& rect) noexcept {
    const auto shift = [](uint32_t place, int32_t origin) {
        return static_cast<float>(static_cast<int32_t>(place) - origin);
    };
    return SvgMatrix::translation(shift(rect.x, rect.originX), shift(rect.y, rect.originY)) *
           SvgMatrix::scaling(rect.scale, rect.scale);
}

/// Draws single elements of a document with the style and the transforms of their ancestors.
class ElementDraw {
public:
    Status draw(const PackingElement& element, const SvgMatrix& base) noexcept {
        if (!listPath(*element.node)) return Status::kOutOfMemory;
        traversal_ = &element.document->traversal();
        element.document->root().setOutermostMapping(SvgMatrix());
        const Status status = traversal_->begin(base);
        return status != Status::kOk ? status : drawFrom(path_.count() - 1);
    }

private:
    /// From the element out to the outermost one.
    bool listPath(SvgNode& element) noexcept {
        path_.clear();
        for (SvgNode* node = &element; node != nullptr; node = node->parent()) path_.push(node);
        return !path_.failed();
    }

    // Trees are no deeper than the XML library lets elements nest, so the recursion is bounded.
    Status drawFrom(int level) noexcept {
        SvgNode& node = *path_[level];
        if (level == 0) return drawNode(node, *traversal_);
        return visitNode(node, *traversal_, [&] { return drawFrom(level - 1); });
    }

    Traversal* traversal_ = nullptr;
    base::Array<SvgNode*> path_;
};

}  // namespace

Status drawPackedRects(const AtlasSession& atlas, const QuorPackedRect* rects, uint32_t count,
                       const DrawingSurface& surface, RenderingQuality quality) noexcept {
    setDrawState(quality);
    const SvgMatrix flip = surfaceFlip(surface.height());
    ElementDraw elementDraw;
    for (uint32_t i = 0; i < count; ++i) {
        const SvgMatrix base = flip * placement(rects[i]);
        const Status status = elementDraw.draw(atlas.elementOf(rects[i]), base);
        const Status pending = takeEngineError();
        if (status != Status::kOk) return status;
        if (pending != Status::kOk) return pending;
    }
    return Status::kOk;
}

}  // namespace quor
