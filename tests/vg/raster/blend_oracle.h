#pragma once

// Blending and mixing of pixels in real numbers, from the formulas of the modes.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace vg::raster::oracle {

/// Premultiplied, 0..1: red, green, blue, alpha.
struct RealColor {
    double channel[4];
    double alpha() const { return channel[3]; }
};

/// A blend mode as compositing is usually defined, on colours as fractions that are not
/// premultiplied: a function B(backdrop, source) composed by alpha, or, for Porter and Duff's
/// operators, the share of each side by the alpha of the other.
struct Mode {
    int32_t number;
    const char* name;
    double (*blend)(double b, double s);  // or null, and the shares:
    double (*ofSource)(double otherAlpha) = nullptr;
    double (*ofDestination)(double otherAlpha) = nullptr;
};

inline double hardLight(double b, double s) {
    return s <= 0.5 ? b * 2 * s : b + (2 * s - 1) * (1 - b);
}
inline double softLight(double b, double s) {
    if (s <= 0.5) return b - (1 - 2 * s) * b * (1 - b);
    const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    return b + (2 * s - 1) * (d - b);
}
inline double dodge(double b, double s) {
    return b <= 0 ? 0.0 : s >= 1 ? 1.0 : std::min(1.0, b / (1 - s));
}
inline double burn(double b, double s) {
    return b >= 1 ? 1.0 : s <= 0 ? 0.0 : 1 - std::min(1.0, (1 - b) / s);
}

inline double none(double) { return 0; }
inline double all(double) { return 1; }
inline double inside(double alpha) { return alpha; }
inline double outside(double alpha) { return 1 - alpha; }

inline const Mode kModes[] = {
    {0x2000, "source", nullptr, all, none},
    {0x2001, "source over", nullptr, all, outside},
    {0x2002, "destination over", nullptr, outside, all},
    {0x2003, "source in", nullptr, inside, none},
    {0x2004, "destination in", nullptr, none, inside},
    {0x2005, "multiply", [](double b, double s) { return b * s; }},
    {0x2006, "screen", [](double b, double s) { return b + s - b * s; }},
    {0x2007, "darken", [](double b, double s) { return std::min(b, s); }},
    {0x2008, "lighten", [](double b, double s) { return std::max(b, s); }},
    {0x2009, "additive", nullptr, all, all},
    {0x2090, "clear", nullptr, none, none},
    {0x2091, "destination", nullptr, none, all},
    {0x2092, "source out", nullptr, outside, none},
    {0x2093, "destination out", nullptr, none, outside},
    {0x2094, "source atop", nullptr, inside, outside},
    {0x2095, "destination atop", nullptr, outside, inside},
    {0x2096, "exclusive or", nullptr, outside, outside},
    {0x2097, "overlay", [](double b, double s) { return hardLight(s, b); }},
    {0x2098, "colour dodge", dodge},
    {0x2099, "colour burn", burn},
    {0x209A, "hard light", hardLight},
    {0x209B, "soft light", softLight},
    {0x209C, "difference", [](double b, double s) { return std::fabs(b - s); }},
    {0x209D, "exclusion", [](double b, double s) { return b + s - 2 * b * s; }},
};

/// The mode of a number; numbers without one keep the destination.
inline const Mode& modeOf(int32_t number) {
    const auto* const mode = std::find_if(std::begin(kModes), std::end(kModes),
                                          [=](const Mode& m) { return m.number == number; });
    return mode != std::end(kModes) ? *mode : modeOf(0x2091);
}

/// One premultiplied channel, all in 0..1.
inline double blendChannel(const Mode& mode, double s, double d, double sa, double da) {
    if (mode.blend == nullptr) {
        return std::min(1.0, s * mode.ofSource(da) + d * mode.ofDestination(sa));
    }
    const double source = sa > 0 ? s / sa : 0, backdrop = da > 0 ? d / da : 0;
    return (1 - da) * s + (1 - sa) * d + sa * da * mode.blend(backdrop, source);
}

inline double blendAlpha(const Mode& mode, double sa, double da) {
    return mode.blend == nullptr ? blendChannel(mode, sa, da, sa, da) : sa + da - sa * da;
}

/// The pixel under a paint: blended, then mixed with the old one by coverage 0..1.
inline RealColor composite(int32_t number, const RealColor& s, const RealColor& d,
                           double coverage) {
    const Mode& mode = modeOf(number);
    RealColor result;
    for (int i = 0; i < 4; ++i) {
        const double blended =
            i == 3 ? blendAlpha(mode, s.alpha(), d.alpha())
                   : blendChannel(mode, s.channel[i], d.channel[i], s.alpha(), d.alpha());
        result.channel[i] = d.channel[i] + (blended - d.channel[i]) * coverage;
    }
    return result;
}

/// The same through a stencil: a premultiplied colour whose channels are opacities of the paint's.
inline RealColor compositeStencil(int32_t number, const RealColor& paint, const RealColor& stencil,
                                  const RealColor& d, double coverage) {
    const Mode& mode = modeOf(number);
    RealColor result;
    for (int i = 0; i < 4; ++i) {
        const double s = paint.channel[i] * stencil.channel[i];
        const double sa = paint.alpha() * stencil.channel[i];
        const double blended = i == 3 ? blendAlpha(mode, s, d.alpha())
                                      : blendChannel(mode, s, d.channel[i], sa, d.alpha());
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
