// Collects elements, packs their sizes with every heuristic, keeps the best result and sorts its
// rectangles by bin (a counting sort, so the collecting order stays within a bin).

#include "api/atlas_session.h"

#include <cassert>

#include "base/finite.h"

namespace quor {

namespace {

constexpr int kInitialElements = 16;

}  // namespace

bool AtlasSession::initialize() noexcept {
    release();
    return elements_.reserve(kInitialElements);
}

void AtlasSession::release() noexcept {
    forgetResult();
    isPacking_ = false;
    elements_.release();
    items_.release();
    sizes_.release();
    bins_.release();
    rects_.release();
    for (packing::BinPacker& packer : packers_) packer.release();
}

void AtlasSession::begin(const packing::BinRules& rules, float scale) noexcept {
    assert(rules.usableDimension() > 0 && scale > 0.0F);
    forgetResult();
    elements_.clear();
    rules_ = rules;
    scale_ = scale;
    isPacking_ = true;
}

void AtlasSession::forgetResult() noexcept {
    hasResult_ = false;
    chosen_ = nullptr;
    bins_.clear();
    rects_.clear();
}

Status AtlasSession::add(Document& document, uint32_t handle, bool opensGroups, float scale,
                         CollectionCounts& counts) noexcept {
    const CollectionRequest request = {handle, base::finite(scale_ * scale), opensGroups,
                                       rules_.usableDimension()};
    return collectElements(document, request, elements_, counts);
}

Status AtlasSession::end(bool performPacking) noexcept {
    isPacking_ = false;
    const Status status = performPacking ? pack() : Status::kOk;
    hasResult_ = performPacking && status == Status::kOk;
    if (!hasResult_) {
        forgetResult();
        elements_.clear();
    }
    return status;
}

Status AtlasSession::pack() noexcept {
    return listSizes() && runPackers() && buildResult() ? Status::kOk : Status::kOutOfMemory;
}

bool AtlasSession::listSizes() noexcept {
    items_.clear();
    sizes_.clear();
    for (int i = 0; i < elements_.count(); ++i) {
        const PackingElement& element = elements_[i];
        if (element.document == nullptr) continue;
        if (!items_.push(i) || !sizes_.push({element.width, element.height})) return false;
    }
    return true;
}

bool AtlasSession::runPackers() noexcept {
    chosen_ = nullptr;
    for (int i = 0; i < packing::kHeuristicCount; ++i) {
        packing::BinPacker& packer = packers_[i];
        const auto heuristic = static_cast<packing::Heuristic>(i);
        if (!packer.pack(sizes_.data(), sizes_.count(), rules_, heuristic)) return false;
        if (chosen_ == nullptr || packer.isBetterThan(*chosen_)) chosen_ = &packer;
    }
    return true;
}

/// Sorts the placed items by bin; counting keeps the collecting order.
bool AtlasSession::buildResult() noexcept {
    for (const packing::Size& size : chosen_->bins()) {
        if (!bins_.push(
                {static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height), 0, 0})) {
            return false;
        }
    }
    if (!rects_.resize(items_.count())) return false;
    for (const packing::PlacedItem& item : chosen_->items()) ++bins_[item.bin].rectsCount;
    int first = 0;
    for (PackedBin& bin : bins_) {
        bin.firstRect = first;
        first += bin.rectsCount;
        bin.rectsCount = 0;
    }
    for (int i = 0; i < items_.count(); ++i) {
        PackedBin& bin = bins_[chosen_->items()[i].bin];
        rects_[bin.firstRect + bin.rectsCount++] = rectOf(i);
    }
    return true;
}

QuorPackedRect AtlasSession::rectOf(int item) const noexcept {
    const PackingElement& element = elements_[items_[item]];
    const packing::PlacedItem& place = chosen_->items()[item];
    const char* id = element.node->id();
    return {id != nullptr ? id : "",
            element.handle,
            static_cast<uint32_t>(items_[item]),
            element.originX,
            element.originY,
            static_cast<uint32_t>(place.x),
            static_cast<uint32_t>(place.y),
            static_cast<uint32_t>(element.width),
            static_cast<uint32_t>(element.height),
            element.scale};
}

void AtlasSession::forgetDocument(const Document* document) noexcept {
    for (PackingElement& element : elements_) {
        if (element.document == document) element.document = nullptr;
    }
    for (QuorPackedRect& rect : rects_) {
        if (elementOf(rect).document == nullptr) rect.id = "";
    }
}

}  // namespace quor
