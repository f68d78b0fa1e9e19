#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "vg/raster/blend_modes.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/kernels.h"
#include "vg/raster/pixel_lanes.h"
#include "vg/raster/span_function.h"

namespace vg::raster {

// The loops of all span functions but the general one, by paint (span_sources.h), blend mode
// (blend_modes.h), kind of surface (span_surfaces.h) and masking.

/// Coverage 0..256 of a running sum. Truncation can push a sum slightly out of its range.
inline uint32_t coverageOf(uint32_t sum) noexcept {
    const auto bounded =
        std::clamp(static_cast<int32_t>(sum), 0, static_cast<int32_t>(kFullCoverage));
    return static_cast<uint32_t>(bounded) >> 22;
}

inline uint32_t maskedCoverage(uint32_t coverage, uint32_t mask) noexcept {
    return coverage * mask >> 8;
}

/// The first cell at or after `cell` that is not zero, or `end`. Reads up to 7 cells past `end`.
inline const uint32_t* skipZeros(const uint32_t* cell, const uint32_t* end) noexcept {
    if (*cell != 0) return std::min(cell, end);
    for (; cell < end; cell += 8) {
        uint64_t pairs[4];
        std::memcpy(pairs, cell, sizeof pairs);
        if ((pairs[0] | pairs[1] | pairs[2] | pairs[3]) != 0) break;
    }
    while (cell < end && *cell == 0) ++cell;
    return std::min(cell, end);
}

/// Calls emit(x, end, coverage) for each run of columns of equal coverage from `first` to `last`:
/// between cells that are not zero it does not change. Leaves the cells zero.
template <class Emit>
void forEachRun(uint32_t* cells, int32_t first, int32_t last, Emit&& emit) noexcept {
    uint32_t sum = 0;
    for (int32_t x = first; x <= last;) {
        sum += cells[x];
        cells[x] = 0;
        const auto end = static_cast<int32_t>(skipZeros(cells + x + 1, cells + last + 1) - cells);
        emit(x, end, coverageOf(sum));
        x = end;
    }
    cells[last + 1] = 0;
}

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
        if constexpr (Surface::template kIsSourceOver<Blend, decltype(source)>) {
            kernels().sourceOver(source, d, count);
        } else {
            for (int32_t i = 0; i < count; ++i) {
                d[i] = Surface::template blend<Blend>(source[i], d[i]);
            }
        }
    });
}

/// Blends columns of one coverage in 0..256.
template <class Paint, class Blend, class Surface>
void mixRun(Paint& paint, uint32_t* pixels, int32_t begin, int32_t end,
            uint32_t coverage) noexcept {
    forEachPart(paint, begin, end, [&](int32_t x, int32_t count, auto source) {
        uint32_t* const d = pixels + x;
        for (int32_t i = 0; i < count; ++i) {
            d[i] = Surface::template mixIn<Blend>(source[i], d[i], coverage);
        }
    });
}

/// The same under a mask, which has a byte for every column.
template <class Paint, class Blend, class Surface>
void mixMaskedRun(Paint& paint, uint32_t* pixels, const uint8_t* mask, int32_t begin, int32_t end,
                  uint32_t coverage) noexcept {
    forEachPart(paint, begin, end, [&](int32_t x, int32_t count, auto source) {
        uint32_t* const d = pixels + x;
        for (int32_t i = 0; i < count; ++i) {
            d[i] = Surface::template mixIn<Blend>(source[i], d[i],
                                                  maskedCoverage(coverage, mask[x + i]));
        }
    });
}

template <class Paint, class Blend, class Surface>
void blendSpan(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
               int32_t last) noexcept {
    Paint paint(span, y);
    uint32_t* const pixels = surface.row(y);
    forEachRun(span.cells, first, last, [&](int32_t begin, int32_t end, uint32_t coverage) {
        if (coverage == 0) return;
        if (end - begin == 1) {  // most of what an edge leaves behind
            const uint32_t s = paint.pixels(begin, 1)[0];
            pixels[begin] = Surface::template mixIn<Blend>(s, pixels[begin], coverage);
        } else if (coverage == 256) {
            blendRun<Paint, Blend, Surface>(paint, pixels, begin, end);
        } else {
            mixRun<Paint, Blend, Surface>(paint, pixels, begin, end, coverage);
        }
    });
}

template <class Paint, class Blend, class Surface>
void blendCovered(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                  int32_t end) noexcept {
    Paint paint(span, y);
    blendRun<Paint, Blend, Surface>(paint, surface.row(y), first, end);
}

template <class Paint, class Blend, class Surface>
void blendMaskedSpan(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                     int32_t last) noexcept {
    Paint paint(span, y);
    uint32_t* const pixels = surface.row(y);
    const uint8_t* const mask = span.maskRow(surface, y);
    forEachRun(span.cells, first, last, [&](int32_t begin, int32_t end, uint32_t coverage) {
        if (coverage == 0) return;
        mixMaskedRun<Paint, Blend, Surface>(paint, pixels, mask, begin, end, coverage);
    });
}

template <class Paint, class Blend, class Surface>
void blendMaskedCovered(const PixelSurface& surface, const SpanContext& span, int32_t y,
                        int32_t first, int32_t end) noexcept {
    Paint paint(span, y);
    mixMaskedRun<Paint, Blend, Surface>(paint, surface.row(y), span.maskRow(surface, y), first, end,
                                        256);
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
