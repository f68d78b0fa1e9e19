#pragma once

#include <type_traits>

#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/raster/span/span_sources.h"

namespace vg::raster {

// How a paint's pixel s meets a surface's pixel d: blend() where it is fully covered, mixIn()
// where coverage, 0..256, takes a part of the result and the rest of d.

/// Both are premultiplied, as the blend modes want them.
struct PremultipliedSurface {
    /// Whether a kernel for runs of one colour does the blend.
    template <class Paint, class Blend>
    static constexpr bool kIsColorRun = std::is_same_v<Paint, SolidPaint> &&
                                        (std::is_same_v<Blend, Source> ||
                                         std::is_same_v<Blend, SourceOver>);

    /// Whether kernels for pixels beside pixels do the blend.
    template <class Blend, class Pixels>
    static constexpr bool kIsPixelRun =
        (std::is_same_v<Blend, Source> ||
         std::is_same_v<Blend, SourceOver>)&&std::is_pointer_v<Pixels>;

    template <class Blend>
    static constexpr uint32_t blend(uint32_t s, uint32_t d) noexcept {
        return Blend::apply(s, d);
    }
    template <class Blend>
    static constexpr uint32_t mixIn(uint32_t s, uint32_t d, uint32_t coverage) noexcept {
        return mix(d, Blend::apply(s, d), coverage);
    }
};

/// Puts a premultiplied result in place of the plain pixel d, whose premultiplied form it began
/// with: d stays as it is, colour and all, where nothing has changed.
inline uint32_t plainResult(uint32_t mixed, uint32_t premultipliedD, uint32_t d) noexcept {
    return mixed == premultipliedD ? d : unpremultiply(mixed);
}

/// Neither is premultiplied. Both are premultiplied for blending and mixing, so that the colour of
/// transparent pixels does not bleed.
struct PlainSurface {
    template <class Paint, class Blend>
    static constexpr bool kIsColorRun = false;
    template <class Blend, class Pixels>
    static constexpr bool kIsPixelRun = false;

    template <class Blend>
    static uint32_t blend(uint32_t s, uint32_t d) noexcept {
        return mixIn<Blend>(s, d, 256);
    }
    template <class Blend>
    static uint32_t mixIn(uint32_t s, uint32_t d, uint32_t coverage) noexcept {
        const uint32_t premultipliedD = premultiply(d);
        const uint32_t blended = Blend::apply(premultiply(s), premultipliedD);
        return plainResult(mix(premultipliedD, blended, coverage), premultipliedD, d);
    }
};

/// Where it covers a pixel wholly, the source is stored as it is.
template <>
inline uint32_t PlainSurface::mixIn<Source>(uint32_t s, uint32_t d, uint32_t coverage) noexcept {
    if (coverage == 256) return s;
    const uint32_t premultipliedD = premultiply(d);
    return plainResult(mix(premultipliedD, premultiply(s), coverage), premultipliedD, d);
}

}  // namespace vg::raster
