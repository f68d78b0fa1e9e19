#pragma once

#include <array>
#include <type_traits>

#include "vg/raster/span/span_blend.h"
#include "vg/raster/span/span_sources.h"
#include "vg/raster/span/span_surfaces.h"

namespace vg::raster {

struct SpanPair {
    SpanFunctions plain, masked;  ///< without and with a mask
};

/// The span functions of one paint on premultiplied surfaces, by column of the blend mode. Columns
/// without a mode hold none.
using SpanRow = std::array<SpanPair, kBlendColumnCount>;

/// In the rare modes all paints but flat colours share their functions, which keeps the library
/// small.
template <class Paint, class Blend>
constexpr SpanPair spanPair() noexcept {
    using Shared = std::conditional_t<kIsFrequent<Blend> || std::is_same_v<Paint, SolidPaint>,
                                      Paint, AnyPaint>;
    if constexpr (std::is_same_v<Blend, NoBlend>) {
        return {};
    } else {
        return {plainFunctions<Shared, Blend, PremultipliedSurface>(),
                maskedFunctions<Shared, Blend, PremultipliedSurface>()};
    }
}

template <class Paint, class... Blend>
constexpr SpanRow spanRow(BlendList<Blend...>) noexcept {
    return {spanPair<Paint, Blend>()...};
}

extern const SpanRow kColorSpans;
extern const SpanRow kLinearSpans;
extern const SpanRow kRadialSpans;
extern const SpanRow kPatternSpans;
extern const SpanRow kConicalSpans;

}  // namespace vg::raster
