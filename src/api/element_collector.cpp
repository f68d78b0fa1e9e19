// Walks a document for the elements to pack and measures them under the packing's scale.

#include "api/element_collector.h"

#include <cmath>

#include "api/draw/document_draw.h"
#include "api/draw/node_draw.h"
#include "api/draw/node_visit.h"
#include "api/painted_trim.h"
#include "svg/engine_error.h"

namespace quor {

namespace {

/// Coordinates beyond this are too large for any bin; within it they are exact as floats.
constexpr double kLargestCoordinate = 1e6;

/// Elements without a class of their own draw what they hold, as a `g` does.
bool isContainer(const SvgNode& node) noexcept {
    return node.kind() == SvgNodeKind::kGroup || node.kind() == SvgNodeKind::kSvg ||
           node.kind() == SvgNodeKind::kGeneric;
}

class ElementCollector {
public:
    ElementCollector(Document& document, const CollectionRequest& request,
                     base::Array<PackingElement>& elements, CollectionCounts& counts) noexcept
        : document_(document),
          traversal_(document.traversal()),
          request_(request),
          elements_(elements),
          counts_(counts) {}

    Status collect() noexcept {
        (void)takeEngineError();  // an error that an earlier call left pending
        SvgSvg& root = document_.root();
        root.setOutermostMapping(SvgMatrix());
        const float scale = request_.scale;
        const Status status = traversal_.begin(SvgMatrix::scaling(scale, scale));
        setDrawState(RenderingQuality::kBetter);
        return status != Status::kOk ? status : openContainer(root);
    }

private:
    Status openContainer(SvgNode& container) noexcept {
        return visitNode(container, traversal_, [&] { return collectChildren(container); });
    }

    Status collectChildren(SvgNode& container) noexcept {
        for (SvgNode* child : container.children()) {
            if (child->style().display == SvgDisplay::kNone) continue;
            const bool opens = request_.opensGroups && isContainer(*child);
            const Status status = opens ? openContainer(*child) : measure(*child);
            if (status != Status::kOk) return status;
        }
        return Status::kOk;
    }

    Status measure(SvgNode& node) noexcept {
        Box box;
        traversal_.measureInto(&box);
        const Status status = drawNode(node, traversal_);
        traversal_.measureInto(nullptr);
        if (status != Status::kOk || box.isEmpty()) return status;
        return take(node, std::floor(double{box.minX}), std::floor(double{box.minY}),
                    std::ceil(double{box.maxX}), std::ceil(double{box.maxY}));
    }

    Status take(SvgNode& node, double left, double top, double right, double bottom) noexcept {
        if (left < -kLargestCoordinate || top < -kLargestCoordinate || right > kLargestCoordinate ||
            bottom > kLargestCoordinate || right - left > request_.largestSide ||
            bottom - top > request_.largestSide) {
            ++counts_.tooLarge;
            return Status::kOk;
        }
        if (!(left < right && top < bottom)) return Status::kOk;
        ++counts_.taken;
        const bool isStored = elements_.push({&document_, &node, request_.handle, request_.scale,
                                              static_cast<int32_t>(left), static_cast<int32_t>(top),
                                              static_cast<int32_t>(right - left),
                                              static_cast<int32_t>(bottom - top)});
        return isStored ? Status::kOk : Status::kOutOfMemory;
    }

    Document& document_;
    Traversal& traversal_;
    const CollectionRequest& request_;
    base::Array<PackingElement>& elements_;
    CollectionCounts& counts_;
};

/// Trims the elements from `first` on and drops those that paint nothing.
Status trimToPaint(base::Array<PackingElement>& elements, int first,
                   CollectionCounts& counts) noexcept {
    PaintedTrim trim;
    int kept = first;
    for (int i = first; i < elements.count(); ++i) {
        PackingElement element = elements[i];
        if (const Status status = trim.trim(element); status != Status::kOk) return status;
        if (element.width > 0) elements[kept++] = element;
    }
    counts.taken -= static_cast<uint32_t>(elements.count() - kept);
    elements.truncate(kept);
    return Status::kOk;
}

}  // namespace

Status collectElements(Document& document, const CollectionRequest& request,
                       base::Array<PackingElement>& elements, CollectionCounts& counts) noexcept {
    const int before = elements.count();
    counts = {};
    Status status = ElementCollector(document, request, elements, counts).collect();
    if (status == Status::kOk) status = trimToPaint(elements, before, counts);
    if (status != Status::kOk) {
        elements.truncate(before);
        elements.clearFailure();
    }
    return status;
}

}  // namespace quor
