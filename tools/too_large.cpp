#include "too_large.h"

#include <algorithm>

#include "library_error.h"
#include "quor/quor.h"

namespace tool {

namespace {

/// Packs the document; false when something is too large even so.
bool packAt(std::uint32_t document, bool explodesGroups, float scale) {
    std::uint32_t info[2] = {};  // taken, too large
    requireSuccess(quorPackingBegin(quorSurfaceMaxDimension(), 0, 0, scale));
    const std::uint32_t error = quorPackingAdd(document, explodesGroups, 1, info);
    const bool isComplete = error == QUOR_NO_ERROR && info[1] == 0;
    requireSuccess(quorPackingEnd(isComplete));
    requireSuccess(error);
    return isComplete;
}

std::vector<TooLargeElement> listElements(double shrinking) {
    std::vector<TooLargeElement> elements;
    for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) {
        std::uint32_t info[3];  // width, height, rectangles
        requireSuccess(quorPackingBinInfo(bin, info));
        const QuorPackedRect* rects = quorPackingBinRects(bin);
        for (std::uint32_t i = 0; i < info[2]; ++i) {
            elements.push_back({rects[i].id, rects[i].element,
                                std::max(rects[i].width, rects[i].height) * shrinking});
        }
    }
    return elements;
}

}  // namespace

std::vector<TooLargeElement> findTooLarge(std::uint32_t document, bool explodesGroups, float scale,
                                          std::uint32_t count) {
    float shrinking = 2;
    while (!packAt(document, explodesGroups, scale / shrinking)) {
        shrinking *= 2;
        if (shrinking > 1e30f) return {};  // not a matter of scale
    }
    std::vector<TooLargeElement> elements = listElements(shrinking);
    std::sort(elements.begin(), elements.end(), [](const auto& a, const auto& b) {
        return a.longerSide != b.longerSide ? a.longerSide > b.longerSide : a.index < b.index;
    });
    elements.resize(std::min<std::size_t>(elements.size(), count));
    return elements;
}

}  // namespace tool
