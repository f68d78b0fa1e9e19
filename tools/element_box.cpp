#include "element_box.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <optional>

#include "library_error.h"
#include "quor/quor.h"

namespace tool {

namespace {

/// The box of all placed elements, in pixels of the scaled document.
struct ScaledBox {
    std::int64_t x0 = INT_MAX, y0 = INT_MAX, x1 = INT_MIN, y1 = INT_MIN;

    bool isEmpty() const { return x0 >= x1 || y0 >= y1; }
    std::int64_t longerSide() const { return std::max(x1 - x0, y1 - y0); }

    void include(const QuorPackedRect& rect) {
        x0 = std::min<std::int64_t>(x0, rect.originX);
        y0 = std::min<std::int64_t>(y0, rect.originY);
        x1 = std::max<std::int64_t>(x1, std::int64_t{rect.originX} + rect.width);
        y1 = std::max<std::int64_t>(y1, std::int64_t{rect.originY} + rect.height);
    }

    Region unscaled(float scale) const {
        return {static_cast<float>(x0) / scale, static_cast<float>(y0) / scale,
                static_cast<float>(x1 - x0) / scale, static_cast<float>(y1 - y0) / scale};
    }
};

ScaledBox boxOfBins() {
    ScaledBox box;
    for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) {
        std::uint32_t info[3];  // width, height, rectangles
        requireSuccess(quorPackingBinInfo(bin, info));
        const QuorPackedRect* rects = quorPackingBinRects(bin);
        std::for_each(rects, rects + info[2], [&](const QuorPackedRect& r) { box.include(r); });
    }
    return box;
}

/// The packer knows the elements' boxes. Nothing when some are too large for it at this scale.
std::optional<ScaledBox> boxAt(std::uint32_t document, float scale) {
    std::uint32_t info[2] = {};  // taken, too large
    requireSuccess(quorPackingBegin(quorSurfaceMaxDimension(), 0, 0, scale));
    const std::uint32_t error = quorPackingAdd(document, 0, 1, info);
    requireSuccess(quorPackingEnd(error == QUOR_NO_ERROR && info[1] == 0 ? 1 : 0));
    requireSuccess(error);
    if (info[1] > 0) return std::nullopt;
    return boxOfBins();
}

}  // namespace

Region boxOfDrawing(std::uint32_t document) {
    constexpr float kSide = 1024;  // pixels: exact enough, and well below the largest
    float viewport[4];             // x, y, width, height
    requireSuccess(quorDocViewportGet(document, viewport));
    float scale = kSide / std::max({viewport[2], viewport[3], 1e-6f});
    std::optional<ScaledBox> box;
    for (box = boxAt(document, scale); !box && scale > 1e-30f; box = boxAt(document, scale))
        scale /= 2;
    if (!box || box->isEmpty())
        throw FileError("nothing of it is drawn, so there is nothing to fit the picture to");
    const float finer = scale * kSide / static_cast<float>(box->longerSide());
    if (const std::optional<ScaledBox> again = boxAt(document, finer); again && !again->isEmpty())
        return again->unscaled(finer);
    return box->unscaled(scale);
}

}  // namespace tool
