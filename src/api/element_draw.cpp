// Goes down the path from the outermost element to the one that is drawn.

#include "api/element_draw.h"

#include "api/draw/document_draw.h"
#include "api/draw/node_draw.h"
#include "api/draw/node_visit.h"
#include "svg/engine_error.h"
#include "vg/vg.h"

namespace quor {

namespace {

/// Keeps a draw to the element's box. At another place a last bit that is rounded the other way, or
/// a shape that is replayed from another fraction of a pixel, could paint a pixel beside it.
class BoxScissor {
public:
    BoxScissor(const PackingElement& element, int32_t x, int32_t y,
               uint32_t surfaceHeight) noexcept {
        const VGint fromBottom = static_cast<VGint>(surfaceHeight) - y - element.height;
        const VGint box[4] = {x, fromBottom, element.width, element.height};
        vgSetiv(VG_SCISSOR_RECTS, 4, box);
        vgSeti(VG_SCISSORING, VG_TRUE);
    }
    ~BoxScissor() { vgSeti(VG_SCISSORING, VG_FALSE); }
    BoxScissor(const BoxScissor&) = delete;
    BoxScissor& operator=(const BoxScissor&) = delete;
};

}  // namespace

Status ElementDraw::draw(const PackingElement& element, int32_t x, int32_t y,
                         uint32_t surfaceHeight) noexcept {
    if (!listPath(*element.node)) return Status::kOutOfMemory;
    const BoxScissor scissor(element, x, y, surfaceHeight);
    traversal_ = &element.document->traversal();
    element.document->root().setOutermostMapping(SvgMatrix());
    const SvgMatrix shift = SvgMatrix::translation(static_cast<float>(x - element.originX),
                                                   static_cast<float>(y - element.originY));
    const SvgMatrix base =
        surfaceFlip(surfaceHeight) * (shift * SvgMatrix::scaling(element.scale, element.scale));
    Status status = traversal_->begin(base, useTargets_);
    if (status == Status::kOk) status = drawFrom(path_.count() - 1);
    useTargets_ = traversal_->useTargets();
    const Status pending = takeEngineError();
    return status != Status::kOk ? status : pending;
}

bool ElementDraw::listPath(SvgNode& element) noexcept {
    path_.clear();
    for (SvgNode* node = &element; node != nullptr; node = node->parent()) path_.push(node);
    return !path_.failed();
}

// Trees are no deeper than the XML library lets elements nest, so the recursion is bounded.
Status ElementDraw::drawFrom(int level) noexcept {
    SvgNode& node = *path_[level];
    if (level == 0) return drawNode(node, *traversal_);
    return visitNode(node, *traversal_, [&] { return drawFrom(level - 1); });
}

}  // namespace quor
