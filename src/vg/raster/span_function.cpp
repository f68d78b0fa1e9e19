#include "vg/raster/span_function.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "vg/raster/blend_modes.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/gradient_paints.h"
#include "vg/raster/kernels.h"

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
class SolidPaint {
public:
    static constexpr int32_t kChunk = std::numeric_limits<int32_t>::max();  // nothing to split at

    /// A pixel for every index.
    struct Pixels {
        uint32_t color;
        uint32_t operator[](int32_t /*i*/) const noexcept { return color; }
    };

    SolidPaint(const SpanContext& span, int32_t /*y*/) noexcept : pixels_{span.color} {}
    Pixels pixels(int32_t /*x*/, int32_t /*count*/) const noexcept { return pixels_; }

private:
    Pixels pixels_;
};

/// Calls emit(x, count) for the parts that the paint's chunks cut the columns `begin` to `end` - 1
/// into.
template <class Paint, class Emit>
void forEachPart(int32_t begin, int32_t end, Emit&& emit) noexcept {
    if constexpr (Paint::kChunk == std::numeric_limits<int32_t>::max()) {
        emit(begin, end - begin);
    } else {
        for (int32_t x = begin; x < end;) {
            const int32_t partEnd = std::min(end, (x & ~(Paint::kChunk - 1)) + Paint::kChunk);
            emit(x, partEnd - x);
            x = partEnd;
        }
    }
}

template <class Paint, class Blend>
void blendRun(Paint& paint, uint32_t* pixels, int32_t begin, int32_t end) noexcept {
    forEachPart<Paint>(begin, end, [&](int32_t x, int32_t count) {
        const auto source = paint.pixels(x, count);
        uint32_t* const d = pixels + x;
        for (int32_t i = 0; i < count; ++i) d[i] = Blend::apply(source[i], d[i]);
    });
}

template <class Paint, class Blend>
void mixRun(Paint& paint, uint32_t* pixels, int32_t begin, int32_t end,
            uint32_t coverage) noexcept {
    forEachPart<Paint>(begin, end, [&](int32_t x, int32_t count) {
        const auto source = paint.pixels(x, count);
        uint32_t* const d = pixels + x;
        for (int32_t i = 0; i < count; ++i) {
            d[i] = mix(d[i], Blend::apply(source[i], d[i]), coverage);
        }
    });
}

template <class Paint, class Blend>
void blendSpan(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
               int32_t last) noexcept {
    Paint paint(span, y);
    uint32_t* const pixels = surface.row(y);
    forEachRun(span.cells, first, last, [&](int32_t begin, int32_t end, uint32_t coverage) {
        if (coverage == 0) return;
        if (end - begin == 1) {  // most of what an edge leaves behind
            const uint32_t s = paint.pixels(begin, 1)[0];
            pixels[begin] = mix(pixels[begin], Blend::apply(s, pixels[begin]), coverage);
        } else if (coverage == 256) {
            blendRun<Paint, Blend>(paint, pixels, begin, end);
        } else {
            mixRun<Paint, Blend>(paint, pixels, begin, end, coverage);
        }
    });
}

template <class Paint, class Blend>
void blendCovered(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                  int32_t end) noexcept {
    Paint paint(span, y);
    blendRun<Paint, Blend>(paint, surface.row(y), first, end);
}

void coverSource(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                 int32_t end) noexcept {
    kernels().runSource(surface.row(y) + first, end - first, span.color);
}

void coverSourceOver(const PixelSurface& surface, const SpanContext& span, int32_t y, int32_t first,
                     int32_t end) noexcept {
    kernels().runSourceOver(surface.row(y) + first, end - first, span.color);
}

enum BlendColumn : int32_t { kSourceColumn, kSourceOverColumn, kBlendCount };

/// In the order of BlendColumn.
template <class... Blend>
struct BlendList {};
using Blends = BlendList<Source, SourceOver>;

constexpr int kSpreadCount = 3;
constexpr int kPaintCount = 1 + 3 * kSpreadCount;

using PaintFunctions = std::array<SpanFunctions, kBlendCount>;

template <class Paint, class... Blend>
constexpr PaintFunctions functionsOf(BlendList<Blend...>) noexcept {
    static_assert(sizeof...(Blend) == kBlendCount);
    return {SpanFunctions{&blendSpan<Paint, Blend>, &blendCovered<Paint, Blend>}...};
}

/// Flat colours have runs, and a composite of whole rows, in the kernels.
constexpr PaintFunctions kSolidFunctions = {
    SpanFunctions{&blendSpan<SolidPaint, Source>, &coverSource, FlatBlend::kSource},
    SpanFunctions{&blendSpan<SolidPaint, SourceOver>, &coverSourceOver, FlatBlend::kSourceOver},
};

/// By paint (a flat colour, then each gradient in each spread mode) and blend mode.
constexpr std::array kFunctions = {
    kSolidFunctions,
    functionsOf<GradientPaint<LinearGradient, SpreadPad>>(Blends{}),
    functionsOf<GradientPaint<LinearGradient, SpreadRepeat>>(Blends{}),
    functionsOf<GradientPaint<LinearGradient, SpreadReflect>>(Blends{}),
    functionsOf<GradientPaint<RadialGradient, SpreadPad>>(Blends{}),
    functionsOf<GradientPaint<RadialGradient, SpreadRepeat>>(Blends{}),
    functionsOf<GradientPaint<RadialGradient, SpreadReflect>>(Blends{}),
    functionsOf<GradientPaint<ConicalGradient, SpreadPad>>(Blends{}),
    functionsOf<GradientPaint<ConicalGradient, SpreadRepeat>>(Blends{}),
    functionsOf<GradientPaint<ConicalGradient, SpreadReflect>>(Blends{}),
};
static_assert(kFunctions.size() == kPaintCount);

constexpr size_t paintRow(PaintKind kind, Spread spread) noexcept {
    if (kind == PaintKind::kColor) return 0;
    const int gradient = static_cast<int>(kind) - static_cast<int>(PaintKind::kLinearGradient);
    const int mode = static_cast<int>(spread) - static_cast<int>(Spread::kPad);
    return static_cast<size_t>(1 + gradient * kSpreadCount + mode);
}
static_assert(paintRow(PaintKind::kConicalGradient, Spread::kReflect) == kPaintCount - 1);

constexpr int32_t kBlendSource = 0x2000;
constexpr int32_t kBlendSourceOver = 0x2001;

/// Source over with an opaque paint is source.
SpanFunctions select(int32_t blendMode, size_t row, bool isOpaque) noexcept {
    if (blendMode == kBlendSource) return kFunctions[row][kSourceColumn];
    if (blendMode != kBlendSourceOver) return {};
    return kFunctions[row][isOpaque ? kSourceColumn : kSourceOverColumn];
}

}  // namespace

SpanFunctions selectSpanFunctions(int32_t blendMode, uint32_t color) noexcept {
    // Source over with a transparent colour adds nothing and keeps all of d.
    if (blendMode == kBlendSourceOver && color == 0) return {};
    return select(blendMode, paintRow(PaintKind::kColor, Spread::kPad), alphaOf(color) == 255);
}

SpanFunctions selectGradientFunctions(int32_t blendMode, PaintKind kind, Spread spread,
                                      bool isOpaque) noexcept {
    return select(blendMode, paintRow(kind, spread), isOpaque);
}

}  // namespace vg::raster
