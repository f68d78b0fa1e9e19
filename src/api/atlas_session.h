#pragma once

#include <cstdint>

#include "api/document.h"
#include "api/drawing_surface.h"
#include "api/element_collector.h"
#include "api/packing/bin_packer.h"
#include "base/array.h"
#include "quor/quor.h"
#include "svg/status.h"

namespace quor {

/// A bin of the result and where its rectangles begin among all.
struct PackedBin {
    uint32_t width;
    uint32_t height;
    int32_t firstRect;
    int32_t rectsCount;
};

/// The atlas packer: collects between begin() and end(), then holds the result until the next
/// begin().
class AtlasSession {
public:
    /// Allocates the first records. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// Gives the memory back and forgets everything.
    void release() noexcept;

    bool isPacking() const noexcept { return isPacking_; }
    bool hasResult() const noexcept { return hasResult_; }

    /// Precondition: the rules can hold a rectangle; the scale is positive.
    void begin(const packing::BinRules& rules, float scale) noexcept;

    /// Collects the document's elements at begin()'s scale times this one. On failure nothing of
    /// this call stays.
    Status add(Document& document, uint32_t handle, bool opensGroups, float scale,
               CollectionCounts& counts) noexcept;

    /// Packs what was collected, or drops it. There is a result only after kOk with performPacking.
    Status end(bool performPacking) noexcept;

    /// To be called before a document is destroyed.
    void forgetDocument(const Document* document) noexcept;

    const base::Array<PackedBin>& bins() const noexcept { return bins_; }
    const QuorPackedRect* rectsOf(const PackedBin& bin) const noexcept {
        return rects_.data() + bin.firstRect;
    }
    const PackingElement& elementOf(const QuorPackedRect& rect) const noexcept {
        return elements_[static_cast<int>(rect.element)];
    }

private:
    Status pack() noexcept;
    bool listSizes() noexcept;
    bool runPackers() noexcept;
    bool buildResult() noexcept;
    QuorPackedRect rectOf(int item) const noexcept;
    void forgetResult() noexcept;

    bool isPacking_ = false;
    bool hasResult_ = false;
    packing::BinRules rules_;
    float scale_ = 1.0F;
    base::Array<PackingElement> elements_;  ///< in collecting order
    base::Array<int> items_;                ///< the elements to pack, indices
    base::Array<packing::Size> sizes_;      ///< of the items
    packing::BinPacker packers_[packing::kHeuristicCount];
    const packing::BinPacker* chosen_ = nullptr;
    base::Array<PackedBin> bins_;
    base::Array<QuorPackedRect> rects_;  ///< by bin, in collecting order within each
};

}  // namespace quor
