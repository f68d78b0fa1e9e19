#include <bit>

#include "api/arguments.h"
#include "api/atlas_session.h"
#include "api/library.h"
#include "base/finite.h"

using quor::library;
using quor::PackedBin;

namespace {

/// Whether bins of these rules can hold a rectangle.
bool areUsableRules(uint32_t maxDimension, uint32_t border, bool isPowerOfTwo) noexcept {
    if (maxDimension == 0 || maxDimension > vg::kMaxSurfaceDimension) return false;
    if (uint64_t{border} * 2 >= maxDimension) return false;
    return !isPowerOfTwo || std::has_single_bit(maxDimension);
}

/// Null without a result and for a bin out of range.
const PackedBin* findBin(uint32_t bin) noexcept {
    const quor::AtlasSession& atlas = library.atlas();
    if (!atlas.hasResult() || bin >= static_cast<uint32_t>(atlas.bins().count())) {
        return nullptr;
    }
    return &atlas.bins()[static_cast<int>(bin)];
}

}  // namespace

QUOR_API uint32_t quorPackingBegin(uint32_t maxDimension, uint32_t border, uint32_t pow2Bins,
                                   float scale) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (library.atlas().isPacking()) return QUOR_STILL_PACKING_ERROR;
    scale = base::finite(scale);
    if (!areUsableRules(maxDimension, border, pow2Bins != 0) || !(scale > 0.0F)) {
        return QUOR_ILLEGAL_ARGUMENT_ERROR;
    }
    return codeOf(library.beginPacking(
        {static_cast<int>(maxDimension), static_cast<int>(border), pow2Bins != 0}, scale));
}

QUOR_API uint32_t quorPackingAdd(uint32_t document, uint32_t explodeGroups, float scale,
                                 uint32_t* info) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!library.atlas().isPacking()) return QUOR_NOT_PACKING_ERROR;
    quor::Document* source = library.findDocument(document);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    scale = base::finite(scale);
    if (!quor::isUsableArray(info) || !(scale > 0.0F)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    quor::CollectionCounts counts;
    const quor::Status status =
        library.atlas().add(*source, document, explodeGroups != 0, scale, counts);
    if (status != quor::Status::kOk) return codeOf(status);
    info[0] = counts.taken;
    info[1] = counts.tooLarge;
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorPackingEnd(uint32_t performPacking) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!library.atlas().isPacking()) return QUOR_NOT_PACKING_ERROR;
    return codeOf(library.atlas().end(performPacking != 0));
}

QUOR_API uint32_t quorPackingBinsCount(void) {
    if (!library.isInitialized() || !library.atlas().hasResult()) return 0;
    return static_cast<uint32_t>(library.atlas().bins().count());
}

QUOR_API uint32_t quorPackingBinInfo(uint32_t bin, uint32_t* info) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (library.atlas().isPacking()) return QUOR_STILL_PACKING_ERROR;
    const PackedBin* found = findBin(bin);
    if (!quor::isUsableArray(info) || found == nullptr) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    info[0] = found->width;
    info[1] = found->height;
    info[2] = static_cast<uint32_t>(found->rectsCount);
    return QUOR_NO_ERROR;
}

QUOR_API const QuorPackedRect* quorPackingBinRects(uint32_t bin) {
    if (!library.isInitialized()) return nullptr;
    const PackedBin* found = findBin(bin);
    return found != nullptr ? library.atlas().rectsOf(*found) : nullptr;
}

QUOR_API uint32_t quorPackingDraw(uint32_t bin, uint32_t firstRect, uint32_t rectsCount,
                                  uint32_t surface, uint32_t renderingQuality) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (library.atlas().isPacking()) return QUOR_STILL_PACKING_ERROR;
    const PackedBin* found = findBin(bin);
    if (found == nullptr ||
        uint64_t{firstRect} + rectsCount > static_cast<uint32_t>(found->rectsCount)) {
        return QUOR_ILLEGAL_ARGUMENT_ERROR;
    }
    quor::DrawingSurface* target = library.findSurface(surface);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    if (renderingQuality > QUOR_RENDERING_QUALITY_BETTER) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const QuorPackedRect* rects = library.atlas().rectsOf(*found) + firstRect;
    return codeOf(library.drawPackedRects(rects, rectsCount, *target,
                                          static_cast<quor::RenderingQuality>(renderingQuality)));
}
