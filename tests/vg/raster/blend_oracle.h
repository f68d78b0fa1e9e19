#pragma once

// Blending and mixing of pixels in real numbers, from the formulas of the modes.

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vg::raster::oracle {

/// Premultiplied, 0..1: red, green, blue, alpha.
struct RealColor {
    double channel[4];
    double alpha() const { return channel[3]; }
};

inline double softLight(double s, double d, double sa, double da) {
    if (2 * s <= sa) return da == 0 ? 0 : d * sa - (sa - 2 * s) * d * (da - d) / da;
    const double m = da == 0 ? 0 : d / da;
    const double curve = m <= 0.25 ? ((16 * m - 12) * m + 4) * m : std::sqrt(m);
    return d * sa + (2 * s - sa) * (curve * da - d);
}

inline double dodge(double s, double d, double sa, double da) {
    if (d == 0) return 0;
    return s >= sa ? sa * da : std::min(sa * da, d * sa * sa / (sa - s));
}

inline double burn(double s, double d, double sa, double da) {
    if (d >= da) return sa * da;
    return s == 0 ? 0 : std::max(0.0, sa * da - (da - d) * sa * sa / s);
}

inline double hardLight(double s, double d, double sa, double da) {
    return 2 * s <= sa ? 2 * s * d : sa * da - 2 * (da - d) * (sa - s);
}

/// One channel; for alpha the modes from overlay on have a rule of their own.
inline double blendChannel(int32_t mode, double s, double d, double sa, double da) {
    const double uncovered = s * (1 - da) + d * (1 - sa);
    switch (mode) {
        case 0x2000:
            return s;
        case 0x2001:
            return s + d * (1 - sa);
        case 0x2002:
            return s * (1 - da) + d;
        case 0x2003:
            return s * da;
        case 0x2004:
            return d * sa;
        case 0x2005:
            return uncovered + s * d;
        case 0x2006:
            return s + d - s * d;
        case 0x2007:
            return std::min(s + d * (1 - sa), d + s * (1 - da));
        case 0x2008:
            return std::max(s + d * (1 - sa), d + s * (1 - da));
        case 0x2009:
            return std::min(s + d, 1.0);
        case 0x2090:
            return 0;
        case 0x2092:
            return s * (1 - da);
        case 0x2093:
            return d * (1 - sa);
        case 0x2094:
            return s * da + d * (1 - sa);
        case 0x2095:
            return s * (1 - da) + d * sa;
        case 0x2096:
            return uncovered;
        case 0x2097:
            return hardLight(d, s, da, sa) + uncovered;
        case 0x2098:
            return dodge(s, d, sa, da) + uncovered;
        case 0x2099:
            return burn(s, d, sa, da) + uncovered;
        case 0x209A:
            return hardLight(s, d, sa, da) + uncovered;
        case 0x209B:
            return softLight(s, d, sa, da) + uncovered;
        case 0x209C:
            return s + d - 2 * std::min(s * da, d * sa);
        case 0x209D:
            return s + d - 2 * s * d;
        default:
            return d;
    }
}

/// One channel under an alpha of its own, which a stencil gives it.
inline double blendBounded(int32_t mode, double s, double d, double sa, double da) {
    const double result = blendChannel(mode, s, d, sa, da);
    return mode >= 0x2097 ? std::clamp(result, 0.0, sa + da - sa * da) : result;
}

inline double blendAlpha(int32_t mode, double sa, double da) {
    return mode >= 0x2097 ? sa + da - sa * da : blendChannel(mode, sa, da, sa, da);
}

/// The pixel under a paint: blended, then mixed with the old one by coverage 0..1.
inline RealColor composite(int32_t mode, const RealColor& s, const RealColor& d, double coverage) {
    RealColor result;
    for (int i = 0; i < 4; ++i) {
        const double blended =
            i == 3 ? blendAlpha(mode, s.alpha(), d.alpha())
                   : blendBounded(mode, s.channel[i], d.channel[i], s.alpha(), d.alpha());
        result.channel[i] = d.channel[i] + (blended - d.channel[i]) * coverage;
    }
    return result;
}

/// The same through a stencil: a premultiplied colour whose channels are opacities of the paint's.
inline RealColor compositeStencil(int32_t mode, const RealColor& paint, const RealColor& stencil,
                                  const RealColor& d, double coverage) {
    RealColor result;
    for (int i = 0; i < 4; ++i) {
        const double s = paint.channel[i] * stencil.channel[i];
        const double sa = paint.alpha() * stencil.channel[i];
        const double blended = i == 3 ? blendAlpha(mode, s, d.alpha())
                                      : blendBounded(mode, s, d.channel[i], sa, d.alpha());
        result.channel[i] = d.channel[i] + (blended - d.channel[i]) * coverage;
    }
    return result;
}

/// Of a word 0xAARRGGBB.
inline RealColor realOf(uint32_t pixel, bool isPremultiplied) {
    const auto byte = [pixel](int shift) { return (pixel >> shift & 0xFF) / 255.0; };
    const double alpha = byte(24);
    const double factor = isPremultiplied ? 1.0 : alpha;
    return {{byte(16) * factor, byte(8) * factor, byte(0) * factor, alpha}};
}

/// The largest difference of a channel, in levels of 255.
inline double distance(const RealColor& a, const RealColor& b) {
    double farthest = 0;
    for (int i = 0; i < 4; ++i) {
        farthest = std::max(farthest, std::fabs(a.channel[i] - b.channel[i]) * 255);
    }
    return farthest;
}

}  // namespace vg::raster::oracle
