// Fetches paint and image chunk by chunk, then blends pixel by pixel through a function pointer.

#include "vg/raster/span/general_span.h"

#include <array>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/span_blend.h"
#include "vg/raster/span/span_sources.h"
#include "vg/raster/span/span_surfaces.h"

namespace vg::raster {
namespace {

template <class Blend>
constexpr BlendOperator operatorOf() noexcept {
    if constexpr (std::is_same_v<Blend, NoBlend>) {
        return nullptr;
    } else {
        return &Blend::apply;
    }
}

template <class... Blend>
constexpr std::array<BlendOperator, sizeof...(Blend)> operatorsOf(BlendList<Blend...>) noexcept {
    return {operatorOf<Blend>()...};
}

constexpr auto kOperators = operatorsOf(BlendColumns{});

/// The plain pixels of the paint; `count` columns from x that lie in one part.
void fetchPaint(const SpanContext& span, int32_t y, int32_t x, int32_t count,
                uint32_t* out) noexcept {
    if (span.paint == PaintKind::kColor) {
        std::fill_n(out, count, span.color);
    } else {
        AnyPaint paint(span, y);
        std::copy_n(paint.pixels(x, count), count, out);
    }
}

/// Channel by channel the product of two pixels.
uint32_t multiplied(uint32_t a, uint32_t b) noexcept {
    return onLanes(a, b, [](uint32_t aLanes, uint32_t bLanes) {
        return divideLanes255(multiplyLanes(aLanes, bLanes));
    });
}

/// Blends a paint through a stencil, both premultiplied: every channel of the stencil is the
/// opacity of that channel of the paint, so that each is blended with an alpha of its own.
uint32_t blendStencil(BlendOperator blend, uint32_t paint, uint32_t stencil, uint32_t d) noexcept {
    const uint32_t s = multiplied(paint, stencil);
    uint32_t result = blend(s, d) & 0xFF000000;
    const uint32_t alphas = scale255(stencil, alphaOf(paint));
    for (int shift = 0; shift < 24; shift += 8) {
        const uint32_t channel = 0xFFU << shift;
        const uint32_t alpha = alphas >> shift & 0xFF;
        result |= blend(alpha << 24 | (s & channel), d) & channel;
    }
    return result;
}

/// A part of a row: the pixels of paint and image, and how they meet the surface.
class Part {
public:
    Part(const SpanContext& span, int32_t y, int32_t x, int32_t count) noexcept
        : general_(span.general) {
        fetchPaint(span, y, x, count, paint_);
        if (general_.imageMode == ImageMode::kNone) return;
        sampleTexture(general_.image, x, y, count, image_);
        if (general_.imageMode != ImageMode::kMultiply) return;
        for (int32_t i = 0; i < count; ++i) paint_[i] = multiplied(paint_[i], image_[i]);
        if (general_.transformsProduct) transformColors(general_.image, paint_, count);
    }

    /// Pixel i of the part over d, by coverage 0..256.
    uint32_t mixedInto(uint32_t d, int32_t i, uint32_t coverage) const noexcept {
        const uint32_t s = premultiply(paint_[i]);
        if (general_.isPremultiplied) return mix(d, blended(s, i, d), coverage);
        const uint32_t premultipliedD = premultiply(d);
        return plainResult(mix(premultipliedD, blended(s, i, premultipliedD), coverage),
                           premultipliedD, d);
    }

private:
    uint32_t blended(uint32_t s, int32_t i, uint32_t d) const noexcept {
        return general_.imageMode == ImageMode::kStencil
                   ? blendStencil(general_.blend, s, image_[i], d)
                   : general_.blend(s, d);
    }

    const GeneralBlend& general_;
    uint32_t paint_[kGradientChunk];
    uint32_t image_[kGradientChunk];
};

void blendPiece(const PixelSurface& surface, const SpanContext& span, int32_t y,
                CoverageWalk::Piece piece) noexcept {
    if (piece.coverage != nullptr) trim(piece);
    uint32_t* const pixels = surface.row(y);
    for (int32_t x = piece.begin; x < piece.end;) {
        const int32_t count = std::min(AnyPaint::partEnd(x), piece.end) - x;
        const Part part(span, y, x, count);
        for (int32_t i = 0; i < count; ++i) {
            const uint32_t c = piece.coverage != nullptr ? *piece.coverage++ : 256;
            if (c != 0) pixels[x + i] = part.mixedInto(pixels[x + i], i, c);
        }
        x += count;
    }
}

void blendPieces(const PixelSurface& surface, const SpanContext& span, int32_t y,
                 CoverageWalk&& walk) noexcept {
    for (CoverageWalk::Piece piece; walk.next(piece);) blendPiece(surface, span, y, piece);
}

const uint8_t* maskRowOf(const PixelSurface& surface, const SpanContext& span, int32_t y) noexcept {
    return span.mask != nullptr ? span.maskRow(surface, y) : nullptr;
}

void blendGeneralSpan(const PixelSurface& surface, const SpanContext& span, int32_t y,
                      const RowCells& row) noexcept {
    CoverageWalk::Coverage coverage;
    blendPieces(surface, span, y,
                CoverageWalk(row, surface.width, maskRowOf(surface, span, y), coverage));
}

void blendGeneralCovered(const PixelSurface& surface, const SpanContext& span, int32_t y,
                         int32_t first, int32_t end) noexcept {
    CoverageWalk::Coverage coverage;
    blendPieces(surface, span, y, CoverageWalk(first, end, maskRowOf(surface, span, y), coverage));
}

}  // namespace

SpanFunctions generalSpanFunctions() noexcept { return {&blendGeneralSpan, &blendGeneralCovered}; }

BlendOperator blendOperator(int32_t column) noexcept {
    return kOperators[static_cast<size_t>(column)];
}

}  // namespace vg::raster
