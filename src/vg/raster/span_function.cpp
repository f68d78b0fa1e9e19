#include "vg/raster/span_function.h"

#include <algorithm>
#include <cstring>

#include "vg/raster/blend_modes.h"
#include "vg/raster/coverage_row.h"

namespace vg::raster {
namespace {

/// Coverage 0..256 of a running sum. Truncation can push a sum slightly out of its range.
uint32_t coverageOf(uint32_t sum) noexcept {
    const auto bounded =
        std::clamp(static_cast<int32_t>(sum), 0, static_cast<int32_t>(kFullCoverage));
    return static_cast<uint32_t>(bounded) >> 22;
}

/// The first cell at or after `cell` that is not zero, or `end`. Reads up to 7 cells past `end`.
const uint32_t* skipZeros(const uint32_t* cell, const uint32_t* end) noexcept {
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

/// A paint of one colour.
struct SolidPaint {
    uint32_t color;

    explicit SolidPaint(const SpanContext& span, int32_t /*first*/, int32_t /*y*/) noexcept
        : color(span.color) {}
    uint32_t at(int32_t /*x*/) const noexcept { return color; }
};

template <class Paint, class Blend>
void blendSpan(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
               int32_t last) noexcept {
    const Paint paint(span, first, y);
    uint32_t* const pixels = surface.row(y);
    forEachRun(span.cells, first, last, [&](int32_t begin, int32_t end, uint32_t coverage) {
        if (coverage == 0) return;
        if (end - begin == 1) {  // most of what an edge leaves behind
            pixels[begin] =
                mix(pixels[begin], Blend::apply(paint.at(begin), pixels[begin]), coverage);
        } else if (coverage == 256) {
            for (int32_t x = begin; x < end; ++x) pixels[x] = Blend::apply(paint.at(x), pixels[x]);
        } else {
            for (int32_t x = begin; x < end; ++x) {
                pixels[x] = mix(pixels[x], Blend::apply(paint.at(x), pixels[x]), coverage);
            }
        }
    });
}

template <class Blend>
void blendRun(uint32_t* pixels, int32_t count, uint32_t color) noexcept {
    for (int32_t i = 0; i < count; ++i) pixels[i] = Blend::apply(color, pixels[i]);
}

template <class Blend>
constexpr SpanFunctions kSolid = {&blendSpan<SolidPaint, Blend>, &blendRun<Blend>};

constexpr int32_t kBlendSource = 0x2000;
constexpr int32_t kBlendSourceOver = 0x2001;

}  // namespace

SpanFunctions selectSpanFunctions(int32_t blendMode, uint32_t color) noexcept {
    if (blendMode == kBlendSource) return kSolid<Source>;
    if (blendMode != kBlendSourceOver) return {};
    if (color == 0) return {};  // source over adds nothing and keeps all of d
    // Source over with an opaque colour is source.
    return alphaOf(color) == 255 ? kSolid<Source> : kSolid<SourceOver>;
}

}  // namespace vg::raster
