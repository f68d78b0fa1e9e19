// Dispatch by table: paint by row, blend mode by column, after the mode was replaced by a cheaper
// one that gives the same pixels.

#include "vg/raster/span/span_selection.h"

#include <array>

#include "vg/raster/span/span_row.h"

namespace vg::raster {
namespace {

constexpr int32_t kSource = 0x2000;
constexpr int32_t kSourceOver = 0x2001;
constexpr int32_t kDestinationIn = 0x2004;

/// By paint; padded to a power of two with rows that no paint selects.
constexpr std::array<const SpanRow*, 8> kSpanRows = {&kColorSpans,   &kLinearSpans,  &kRadialSpans,
                                                     &kPatternSpans, &kConicalSpans, &kColorSpans,
                                                     &kColorSpans,   &kColorSpans};

size_t paintRowOf(PaintKind paint) noexcept {
    switch (paint) {
        case PaintKind::kColor:
            return 0;
        case PaintKind::kLinearGradient:
            return 1;
        case PaintKind::kRadialGradient:
            return 2;
        case PaintKind::kPattern:
            return 3;
        case PaintKind::kConicalGradient:
            return 4;
    }
    return 0;
}

/// Source and source over of one paint on one kind of surface.
template <class Paint, class Surface>
SpanFunctions selectOfTwo(int32_t blendMode) noexcept {
    static constexpr SpanFunctions kSourceFunctions = plainFunctions<Paint, Source, Surface>();
    static constexpr SpanFunctions kOverFunctions = plainFunctions<Paint, SourceOver, Surface>();
    return blendMode == kSource ? kSourceFunctions : kOverFunctions;
}

SpanFunctions selectForPlainSurface(const SpanChoice& choice) noexcept {
    switch (choice.paint) {
        case PaintKind::kColor:
            return selectOfTwo<SolidPaint, PlainSurface>(choice.blendMode);
        case PaintKind::kLinearGradient:
            return selectOfTwo<LinearPaint, PlainSurface>(choice.blendMode);
        case PaintKind::kRadialGradient:
            return selectOfTwo<RadialPaint, PlainSurface>(choice.blendMode);
        default:
            return selectOfTwo<DirectPaint, PlainSurface>(choice.blendMode);
    }
}

bool isSourceOrOver(int32_t blendMode) noexcept {
    return blendMode == kSource || blendMode == kSourceOver;
}

bool isCopied(const SpanChoice& choice) noexcept {
    return choice.isDirectCopy && !choice.isMasked && isSourceOrOver(choice.blendMode);
}

/// Destination in with an opaque colour keeps all of d; so does source over with a transparent one.
bool changesNothing(const SpanChoice& choice) noexcept {
    if (blendColumnOf(choice.blendMode) == kNoBlendColumn) return true;
    if (choice.paint != PaintKind::kColor) return false;
    return (choice.blendMode == kSourceOver && alphaOf(choice.color) == 0) ||
           (choice.blendMode == kDestinationIn && alphaOf(choice.color) == 255);
}

/// The column of a cheaper mode that gives the same pixels, or the mode's own.
size_t columnOf(const SpanChoice& choice) noexcept {
    const bool isErasing = choice.blendMode == kDestinationIn &&
                           choice.paint == PaintKind::kColor && alphaOf(choice.color) == 0;
    const bool isCovering = choice.blendMode == kSourceOver && choice.isOpaque;
    return isErasing || isCovering ? 0 : static_cast<size_t>(blendColumnOf(choice.blendMode));
}

}  // namespace

bool hasOwnSpanFunctions(const SpanChoice& choice) noexcept {
    if (choice.isPremultiplied) return true;
    if (choice.isMasked || !isSourceOrOver(choice.blendMode)) return false;
    return choice.paint == PaintKind::kColor || choice.paint == PaintKind::kLinearGradient ||
           choice.paint == PaintKind::kRadialGradient || isCopied(choice);
}

SpanFunctions selectSpanFunctions(const SpanChoice& choice) noexcept {
    if (changesNothing(choice) || !hasOwnSpanFunctions(choice)) return {};
    if (!choice.isPremultiplied) return selectForPlainSurface(choice);
    if (isCopied(choice)) return selectOfTwo<DirectPaint, PremultipliedSurface>(choice.blendMode);
    const SpanPair& pair = (*kSpanRows[paintRowOf(choice.paint)])[columnOf(choice)];
    return choice.isMasked ? pair.masked : pair.plain;
}

}  // namespace vg::raster
