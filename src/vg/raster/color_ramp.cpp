#include "vg/raster/color_ramp.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/array.h"
#include "vg/raster/linear_curve.h"
#include "vg/raster/pixel_lanes.h"
#include "vg/raster/rasterizer.h"

namespace vg::raster {
namespace {

constexpr ColorStop kDefaultStops[] = {{0.0F, {0, 0, 0, 1}}, {1.0F, {1, 1, 1, 1}}};

constexpr int kChannels = 4;

struct Color {
    float channels[kChannels];
};

/// A stop as it is interpolated.
struct Knot {
    float offset;
    Color color;
    Color slope;  ///< of the smooth ramp, in colour per unit of offset
};

using Knots = base::Array<Knot>;

Knot knotOf(const ColorStop& stop, float offset, bool premultiplies) noexcept {
    Knot knot = {offset, {}, {}};
    std::copy_n(stop.color, kChannels, knot.color.channels);
    if (premultiplies) {
        for (int i = 0; i < 3; ++i) knot.color.channels[i] *= stop.color[3];
    }
    return knot;
}

/// The stops, followed, when mirrored, by their mirror images about offset 1; the last is shared.
bool collectKnots(const ColorStop* stops, int32_t count, const RampOptions& options,
                  Knots& knots) noexcept {
    if (!knots.reserve(options.isMirrored ? 2 * count - 1 : count)) return false;
    const bool premultiplies = options.interpolatesPremultiplied;
    for (int32_t i = 0; i < count; ++i) {
        knots.pushReserved(knotOf(stops[i], stops[i].offset, premultiplies));
    }
    for (int32_t i = count - 2; options.isMirrored && i >= 0; --i) {
        knots.pushReserved(knotOf(stops[i], 2.0F - stops[i].offset, premultiplies));
    }
    return true;
}

/// 0 between knots of one offset. Bounded, so that what is computed from it stays finite.
Color slopeBetween(const Knot& from, const Knot& to) noexcept {
    constexpr float kSteepest = 1e30F;
    Color slope = {};
    const float distance = to.offset - from.offset;
    if (distance <= 0.0F) return slope;
    for (int i = 0; i < kChannels; ++i) {
        const float difference = to.color.channels[i] - from.color.channels[i];
        slope.channels[i] = std::clamp(difference / distance, -kSteepest, kSteepest);
    }
    return slope;
}

/// Inside, the slope of a knot is that between its neighbours; at the ends and at a jump, where
/// two knots share an offset, that of its own side.
void setSlopes(Knots& knots) noexcept {
    const int32_t last = knots.count() - 1;
    for (int32_t i = 0; i <= last; ++i) {
        const bool hasBefore = i > 0 && knots[i - 1].offset < knots[i].offset;
        const bool hasAfter = i < last && knots[i].offset < knots[i + 1].offset;
        const Knot& from = hasBefore ? knots[i - 1] : knots[i];
        const Knot& to = hasAfter ? knots[i + 1] : knots[i];
        knots[i].slope = slopeBetween(from, to);
    }
}

struct LinearInterpolation {
    static Color between(const Knot& from, const Knot& to, float t) noexcept {
        Color color;
        for (int i = 0; i < kChannels; ++i) {
            const float c = from.color.channels[i];
            color.channels[i] = c + (to.color.channels[i] - c) * t;
        }
        return color;
    }
};

/// Cubic Hermite interpolation.
struct SmoothInterpolation {
    static Color between(const Knot& from, const Knot& to, float t) noexcept {
        const float t2 = t * t;
        const float t3 = t2 * t;
        const float h00 = 2.0F * t3 - 3.0F * t2 + 1.0F;
        const float h01 = 3.0F * t2 - 2.0F * t3;
        const float h10 = t3 - 2.0F * t2 + t;
        const float h11 = t3 - t2;
        const float distance = to.offset - from.offset;
        Color color;
        for (int i = 0; i < kChannels; ++i) {
            color.channels[i] = h00 * from.color.channels[i] + h01 * to.color.channels[i] +
                                h10 * (from.slope.channels[i] * distance) +
                                h11 * (to.slope.channels[i] * distance);
        }
        return color;
    }
};

void clampToUnit(Color& color) noexcept {
    for (float& c : color.channels) c = std::clamp(c, 0.0F, 1.0F);
}

/// From an interpolated colour to the surface's format.
uint32_t pixelOf(Color color, const RampOptions& options) noexcept {
    float* const c = color.channels;
    clampToUnit(color);
    if (options.interpolatesPremultiplied && c[3] > 0.0F) {
        for (int i = 0; i < 3; ++i) c[i] /= c[3];
        clampToUnit(color);
    }
    if (const float* transform = options.colorTransform) {
        for (int i = 0; i < kChannels; ++i) c[i] = c[i] * transform[i] + transform[kChannels + i];
        clampToUnit(color);
    }
    if (options.isLinearSpace) {
        for (int i = 0; i < 3; ++i) c[i] = linearOfSrgb(c[i]);
    }
    return options.isPremultiplied ? packPremultiplied(c) : packPlain(c);
}

/// Entry i is the colour at i * span / 1023, between the last knot that is not beyond this place
/// and the first one that is; past the last knot it is the last colour.
template <class Interpolation>
void fillEntries(const Knots& knots, const RampOptions& options, ColorRamp& ramp) noexcept {
    const int32_t span = options.isMirrored ? 2 : 1;
    const auto positionOf = [span](int32_t entry) {
        return static_cast<float>(entry * span) / static_cast<float>(ColorRamp::kSize - 1);
    };
    int32_t entry = 0;
    for (int32_t i = 1; i < knots.count(); ++i) {
        const Knot& from = knots[i - 1];
        const Knot& to = knots[i];
        const float distance = to.offset - from.offset;
        for (; entry < ColorRamp::kSize && positionOf(entry) < to.offset; ++entry) {
            const float t = (positionOf(entry) - from.offset) / distance;
            ramp.pixels[entry] = pixelOf(Interpolation::between(from, to, t), options);
        }
    }
    std::fill(ramp.pixels + entry, ramp.pixels + ColorRamp::kSize,
              pixelOf(knots.last().color, options));
}

}  // namespace

bool buildColorRamp(const ColorStop* stops, int32_t count, const RampOptions& options,
                    ColorRamp& ramp) noexcept {
    if (count == 0) return buildColorRamp(kDefaultStops, 2, options, ramp);
    assert(stops[0].offset == 0.0F && stops[count - 1].offset == 1.0F);
    Knots knots;
    if (!collectKnots(stops, count, options, knots)) return false;
    if (options.isSmooth) {
        setSlopes(knots);
        fillEntries<SmoothInterpolation>(knots, options, ramp);
    } else {
        fillEntries<LinearInterpolation>(knots, options, ramp);
    }
    ramp.lastColor = pixelOf(knots[count - 1].color, options);
    ramp.isOpaque = std::all_of(ramp.pixels, ramp.pixels + ColorRamp::kSize,
                                [](uint32_t pixel) { return alphaOf(pixel) == 255; });
    return true;
}

}  // namespace vg::raster
