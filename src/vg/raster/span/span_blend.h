#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/pixels/pixel_lanes.h"
#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/coverage_walk.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {

// The loops of all span functions but the general one, by paint (span_sources.h), blend mode
// (blend_modes.h), kind of surface (span_surfaces.h) and masking.

template <class Blend>
inline constexpr bool kIsFrequent =
    std::is_same_v<Blend, Source> || std::is_same_v<Blend, SourceOver>;

/// Calls emit(x, count, source) for the pieces of the columns `begin` to `end` - 1.
template <class Paint, class Emit>
void forEachPart(Paint& paint, int32_t begin, int32_t end, Emit&& emit) noexcept {
    for (int32_t x = begin; x < end;) {
        const int32_t partEnd = std::min(end, paint.partEnd(x));
        emit(x, partEnd - x, paint.pixels(x, partEnd - x));
        x = partEnd;
    }
}

/// Paints whose pixels can be made where they are wanted.
template <class Paint>
inline constexpr bool kWritesPixels = requires(Paint paint, uint32_t* out) {
    paint.write(0, 0, out);
};

/// Blends columns of coverage 256.
template <class Paint, class Blend, class Surface>
void blendRun(Paint& paint, uint32_t* pixels, int32_t begin, int32_t end) noexcept {
    if constexpr (Surface::template kIsColorRun<Paint, Blend>) {
        const auto run =
            std::is_same_v<Blend, Source> ? kernels().runSource : kernels().runSourceOver;
        return run(pixels + begin, end - begin, paint.color());
    }
    if constexpr (std::is_same_v<Blend, Source> && kWritesPixels<Paint>) {
        for (int32_t x = begin; x < end;) {
            const int32_t partEnd = std::min(end, paint.partEnd(x));
            paint.write(x, partEnd - x, pixels + x);
            x = partEnd;
        }
        return;
    }
    forEachPart(paint, begin, end, [&](int32_t x, int32_t count, auto source) {
        uint32_t* const d = pixels + x;
        if constexpr (std::is_same_v<Blend, SourceOver> &&
                      Surface::template kIsPixelRun<Blend, decltype(source)>) {
            kernels().sourceOver(source, d, count);
        } else {
            for (int32_t i = 0; i < count; ++i) {
                d[i] = Surface::template blend<Blend>(source[i], d[i]);
            }
        }
    });
}

/// Leaves out the columns at both ends that nothing covers.
inline void trim(CoverageWalk::Piece& piece) noexcept {
    while (piece.begin < piece.end && piece.coverage[piece.end - piece.begin - 1] == 0) --piece.end;
    while (piece.begin < piece.end && *piece.coverage == 0) {
        ++piece.begin;
        ++piece.coverage;
    }
}

/// Blends columns of coverage 0..256 each.
template <class Paint, class Blend, class Surface>
void mixPiece(Paint& paint, uint32_t* pixels, CoverageWalk::Piece piece) noexcept {
    if constexpr (!Paint::kIsVectorised) trim(piece);
    forEachPart(paint, piece.begin, piece.end, [&](int32_t x, int32_t count, auto source) {
        const uint32_t* const coverage = piece.coverage + (x - piece.begin);
        uint32_t* const d = pixels + x;
        if constexpr (Surface::template kIsPixelRun<Blend, decltype(source)>) {
            const auto mixPixels =
                std::is_same_v<Blend, Source> ? kernels().mixSource : kernels().mixSourceOver;
            mixPixels(source, coverage, d, count);
        } else {
            for (int32_t i = 0; i < count; ++i) {
                d[i] = Surface::template mixIn<Blend>(source[i], d[i], coverage[i]);
            }
        }
    });
}

template <class Paint, class Blend, class Surface>
void blendSpan(const PixelSurface& surface, const SpanContext& span, int32_t y,
               const RowCells& row) noexcept {
    Paint paint(span, y);
    uint32_t* const pixels = surface.row(y);
    CoverageWalk::Coverage coverage;
    CoverageWalk walk(row, surface.width, nullptr, coverage);
    constexpr bool kIsInlined = Paint::kIsVectorised && kIsFrequent<Blend>;
    for (CoverageWalk::Piece piece; kIsInlined ? walk.advance(piece) : walk.next(piece);) {
        if (piece.coverage == nullptr) {
            blendRun<Paint, Blend, Surface>(paint, pixels, piece.begin, piece.end);
        } else {
            mixPiece<Paint, Blend, Surface>(paint, pixels, piece);
        }
    }
}

template <class Paint, class Blend, class Surface>
void blendCovered(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                  int32_t end) noexcept {
    Paint paint(span, y);
    blendRun<Paint, Blend, Surface>(paint, surface.row(y), first, end);
}

template <class Paint, class Blend, class Surface>
void blendMasked(const PixelSurface& surface, const SpanContext& span, int32_t y,
                 CoverageWalk&& walk) noexcept {
    Paint paint(span, y);
    uint32_t* const pixels = surface.row(y);
    for (CoverageWalk::Piece piece; walk.next(piece);) {
        mixPiece<Paint, Blend, Surface>(paint, pixels, piece);
    }
}

template <class Paint, class Blend, class Surface>
void blendMaskedSpan(const PixelSurface& surface, const SpanContext& span, int32_t y,
                     const RowCells& row) noexcept {
    CoverageWalk::Coverage coverage;
    blendMasked<Paint, Blend, Surface>(
        surface, span, y, CoverageWalk(row, surface.width, span.maskRow(surface, y), coverage));
}

template <class Paint, class Blend, class Surface>
void blendMaskedCovered(const PixelSurface& surface, const SpanContext& span, int32_t y,
                        int32_t first, int32_t end) noexcept {
    CoverageWalk::Coverage coverage;
    blendMasked<Paint, Blend, Surface>(
        surface, span, y, CoverageWalk(first, end, span.maskRow(surface, y), coverage));
}

template <class Paint, class Blend, class Surface>
constexpr SpanFunctions plainFunctions() noexcept {
    return {&blendSpan<Paint, Blend, Surface>, &blendCovered<Paint, Blend, Surface>};
}

template <class Paint, class Blend, class Surface>
constexpr SpanFunctions maskedFunctions() noexcept {
    return {&blendMaskedSpan<Paint, Blend, Surface>, &blendMaskedCovered<Paint, Blend, Surface>};
}

}  // namespace vg::raster
