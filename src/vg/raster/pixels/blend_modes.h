#pragma once

#include <algorithm>
#include <cstddef>

#include "vg/raster/pixels/pixel_lanes.h"
#include "vg/raster/pixels/soft_light_curve.h"

namespace vg::raster {

// Porter and Duff's operators ("Compositing digital images", 1984) and the separable blend modes of
// PDF 1.4 and SVG compositing, on premultiplied 32-bit pixels: s the paint, d the surface, a_s and
// a_d their alpha, all as fractions of 255 in the formulas above the operators. The formula holds
// for each colour channel, and for alpha unless said otherwise. A sum of products is divided by 255
// once, so that it is rounded once. Channels of both pixels must not exceed their alpha.

struct Source {  // s
    static constexpr uint32_t apply(uint32_t s, uint32_t /*d*/) noexcept { return s; }
};

struct SourceOver {  // s + d (1 - a_s)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return s + scale255(d, 255 - alphaOf(s));
    }
};

struct DestinationOver {  // s (1 - a_d) + d
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return SourceOver::apply(d, s);
    }
};

struct SourceIn {  // s a_d
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return scale255(s, alphaOf(d));
    }
};

struct DestinationIn {  // d a_s
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return scale255(d, alphaOf(s));
    }
};

/// s * factorS + d * factorD in every channel, divided by 255. The factors (0..255) and channels
/// must keep the sum within 255 * 255.
constexpr uint32_t weightedSum255(uint32_t s, uint32_t factorS, uint32_t d,
                                  uint32_t factorD) noexcept {
    const uint32_t low = (s & kLanes) * factorS + (d & kLanes) * factorD;
    const uint32_t high = (s >> 8 & kLanes) * factorS + (d >> 8 & kLanes) * factorD;
    return divideLanes255(low) | divideLanes255(high) << 8;
}

/// The products of the channels of two pairs of lanes.
constexpr uint32_t multiplyLanes(uint32_t s, uint32_t d) noexcept {
    return (s & 0xFF) * (d & 0xFF) | (s >> 16) * (d >> 16) << 16;
}

constexpr uint32_t maxLanes(uint32_t s, uint32_t d) noexcept {
    return std::max(s & 0xFF, d & 0xFF) | std::max(s >> 16, d >> 16) << 16;
}

constexpr uint32_t minLanes(uint32_t s, uint32_t d) noexcept {
    return std::min(s & 0xFF, d & 0xFF) | std::min(s >> 16, d >> 16) << 16;
}

/// Applies an operation on two lanes to all four channels.
template <class Operation>
constexpr uint32_t onLanes(uint32_t s, uint32_t d, Operation operation) noexcept {
    return operation(s & kLanes, d & kLanes) | operation(s >> 8 & kLanes, d >> 8 & kLanes) << 8;
}

struct Multiply {  // s (1 - a_d) + d (1 - a_s) + s d
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        const uint32_t restS = 255 - alphaOf(s);
        const uint32_t restD = 255 - alphaOf(d);
        return onLanes(s, d, [=](uint32_t sLanes, uint32_t dLanes) {
            return divideLanes255(sLanes * restD + dLanes * restS + multiplyLanes(sLanes, dLanes));
        });
    }
};

struct Screen {  // s + d - s d
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return onLanes(s, d, [](uint32_t sLanes, uint32_t dLanes) {
            return sLanes + dLanes - divideLanes255(multiplyLanes(sLanes, dLanes));
        });
    }
};

struct Darken {  // min(s + d (1 - a_s), d + s (1 - a_d))
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return onLanes(SourceOver::apply(s, d), DestinationOver::apply(s, d), minLanes);
    }
};

struct Lighten {  // max(s + d (1 - a_s), d + s (1 - a_d))
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return onLanes(SourceOver::apply(s, d), DestinationOver::apply(s, d), maxLanes);
    }
};

struct Additive {  // min(s + d, 1)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return onLanes(s, d, [](uint32_t sLanes, uint32_t dLanes) {
            const uint32_t sum = sLanes + dLanes;
            const uint32_t carries = sum >> 8 & 0x00010001;
            return (sum | carries * 0xFF) & kLanes;
        });
    }
};

struct SourceOut {  // s (1 - a_d)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return scale255(s, 255 - alphaOf(d));
    }
};

struct DestinationOut {  // d (1 - a_s)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return scale255(d, 255 - alphaOf(s));
    }
};

struct SourceAtop {  // s a_d + d (1 - a_s)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return weightedSum255(s, alphaOf(d), d, 255 - alphaOf(s));
    }
};

struct DestinationAtop {  // s (1 - a_d) + d a_s
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return weightedSum255(s, 255 - alphaOf(d), d, alphaOf(s));
    }
};

struct ExclusiveOr {  // s (1 - a_d) + d (1 - a_s)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return weightedSum255(s, 255 - alphaOf(d), d, 255 - alphaOf(s));
    }
};

/// One colour channel of both pixels beside their alphas: bytes, in a type whose products of three
/// fit.
struct ChannelPair {
    int32_t s, d, alphaS, alphaD;

    /// The part where only one of the two covers: s (1 - a_d) + d (1 - a_s), times 255 * 255.
    constexpr int32_t uncovered() const noexcept { return s * (255 - alphaD) + d * (255 - alphaS); }
};

/// A separable mode, defined by one colour channel: Mode::sum gives 255 times the channel's value.
/// Alpha is a_s + a_d - a_s a_d; colours are clamped to 0..alpha. A call, since span functions that
/// each had the long arithmetic in several loops would be most of the library.
template <class Mode>
struct Separable {
    [[gnu::noinline]] static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        const uint32_t alpha = alphaOf(s) + alphaOf(d) - divideLanes255(alphaOf(s) * alphaOf(d));
        uint32_t pixel = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8) {
            const auto byte = [](uint32_t value) { return static_cast<int32_t>(value & 0xFF); };
            const ChannelPair channels = {byte(s >> shift), byte(d >> shift), byte(s >> 24),
                                          byte(d >> 24)};
            const int32_t sum = std::max(Mode::sum(channels), 0);
            pixel |= std::min(static_cast<uint32_t>(sum + 127) / 255, alpha) << shift;
        }
        return pixel;
    }
};

struct OverlayMode {  // 2 s d where 2 d <= a_d, else a_s a_d - 2 (a_d - d) (a_s - s); + uncovered
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        const int32_t covered = 2 * c.d <= c.alphaD
                                    ? 2 * c.s * c.d
                                    : c.alphaS * c.alphaD - 2 * (c.alphaD - c.d) * (c.alphaS - c.s);
        return covered + c.uncovered();
    }
};
using Overlay = Separable<OverlayMode>;

struct HardLightMode {  // overlay with s and d exchanged
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return OverlayMode::sum({c.d, c.s, c.alphaD, c.alphaS});
    }
};
using HardLight = Separable<HardLightMode>;

struct ColorDodgeMode {  // min(a_s a_d, d a_s^2 / (a_s - s)), 0 where d is 0; + uncovered
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return covered(c) + c.uncovered();
    }
    static constexpr int32_t covered(const ChannelPair& c) noexcept {
        const int32_t most = c.alphaS * c.alphaD;
        if (c.d == 0) return 0;
        if (c.s >= c.alphaS) return most;
        return std::min(most, c.d * c.alphaS * c.alphaS / (c.alphaS - c.s));
    }
};
using ColorDodge = Separable<ColorDodgeMode>;

struct ColorBurnMode {  // max(0, a_s a_d - (a_d - d) a_s^2 / s), a_s a_d where d is a_d; +
                        // uncovered
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return covered(c) + c.uncovered();
    }
    static constexpr int32_t covered(const ChannelPair& c) noexcept {
        const int32_t most = c.alphaS * c.alphaD;
        if (c.d >= c.alphaD) return most;
        if (c.s == 0) return 0;
        return std::max(0, most - (c.alphaD - c.d) * c.alphaS * c.alphaS / c.s);
    }
};
using ColorBurn = Separable<ColorBurnMode>;

/// With m = d / a_d: d a_s - (a_s - 2 s) d (1 - m) where 2 s <= a_s, else
/// d a_s + (2 s - a_s) (a_d D(m) - d); + uncovered. D brightens (see softLightCurve).
struct SoftLightMode {
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return covered(c) + c.uncovered();
    }
    static constexpr int32_t covered(const ChannelPair& c) noexcept {
        if (c.alphaD == 0) return 0;
        const int32_t d = std::min(c.d, c.alphaD);
        const int32_t excess = 2 * c.s - c.alphaS;
        const int32_t base = d * c.alphaS;
        if (excess <= 0) return base + excess * d * (c.alphaD - d) / c.alphaD;
        return base + ((excess * (softLightCurve(d, c.alphaD) - (d << kCurveBits))) >> kCurveBits);
    }
};
using SoftLight = Separable<SoftLightMode>;

struct DifferenceMode {  // s + d - 2 min(s a_d, d a_s)
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return 255 * (c.s + c.d) - 2 * std::min(c.s * c.alphaD, c.d * c.alphaS);
    }
};
using Difference = Separable<DifferenceMode>;

struct ExclusionMode {  // s + d - 2 s d
    static constexpr int32_t sum(const ChannelPair& c) noexcept {
        return 255 * (c.s + c.d) - 2 * c.s * c.d;
    }
};
using Exclusion = Separable<ExclusionMode>;

struct NoBlend {};  ///< a column without an operator

template <class... Modes>
struct BlendList {
    static constexpr size_t kCount = sizeof...(Modes);
};

/// The operators in the order of their columns.
using BlendColumns =
    BlendList<Source, SourceOver, DestinationOver, SourceIn, DestinationIn, Multiply, Screen,
              Darken, Lighten, Additive, NoBlend, NoBlend, SourceOut, DestinationOut, SourceAtop,
              DestinationAtop, ExclusiveOr, Overlay, ColorDodge, ColorBurn, HardLight, SoftLight,
              Difference, Exclusion>;

inline constexpr int32_t kBlendColumnCount = 24;
inline constexpr int32_t kNoBlendColumn = -1;
inline constexpr int32_t kBlendClear = 0x2090;  ///< drawn as Source with a paint of zero
static_assert(BlendColumns::kCount == kBlendColumnCount);

/// The column of a blend mode: 0 to 9 from 0x2000, 12 to 23 from 0x2092. The column of kBlendClear
/// is 0. kNoBlendColumn for modes that change no pixel: 0x2091, which keeps the destination, and
/// every number without a mode.
constexpr int32_t blendColumnOf(int32_t blendMode) noexcept {
    if (0x2000 <= blendMode && blendMode <= 0x2009) return blendMode - 0x2000;
    if (0x2092 <= blendMode && blendMode <= 0x209D) return blendMode - 0x2086;
    return blendMode == kBlendClear ? 0 : kNoBlendColumn;
}

}  // namespace vg::raster
