#include "vg/raster/color_ramp.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/array.h"
#include "vg/raster/linear_curve.h"
#include "vg/raster/pixel_lanes.h"

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

/// Some entries of a ramp on their way from stops to pixels, channel by channel, so that each step
/// is one plain loop.
class EntryBlock {
public:
    static constexpr int32_t kMost = 128;

    EntryBlock(int32_t first, int32_t count, int32_t span) noexcept : count_(count) {
        for (int32_t i = 0; i < count; ++i) t_[i] = positionOf(first + i, span);
    }

    /// Where entry `entry` lies among the stops' offsets.
    static float positionOf(int32_t entry, int32_t span) noexcept {
        return static_cast<float>(entry * span) / static_cast<float>(ColorRamp::kSize - 1);
    }

    void interpolate(const Knot& from, const Knot& to, bool isSmooth) noexcept {
        const float distance = to.offset - from.offset;
        for (int32_t i = 0; i < count_; ++i) t_[i] = (t_[i] - from.offset) / distance;
        for (int channel = 0; channel < kChannels; ++channel) {
            if (isSmooth) {
                interpolateSmoothly(from, to, distance, channel);
            } else {
                interpolateLinearly(from, to, channel);
            }
        }
    }

    /// Of one colour all over.
    void setColor(const Color& color) noexcept {
        for (int channel = 0; channel < kChannels; ++channel) {
            std::fill_n(channels_[channel], count_, color.channels[channel]);
        }
    }

    /// To the surface's format.
    void pack(const RampOptions& options, uint32_t* pixels) noexcept {
        clampToUnit();
        if (options.interpolatesPremultiplied) divideByAlpha();
        if (options.colorTransform != nullptr) transform(options.colorTransform);
        if (options.isLinearSpace) makeLinear();
        if (options.isPremultiplied) multiplyByAlpha();
        const auto byte = [this](int channel, int32_t i) {
            return static_cast<uint32_t>(
                static_cast<int32_t>(channels_[channel][i] * 255.0F + 0.5F));
        };
        for (int32_t i = 0; i < count_; ++i) {
            pixels[i] = byte(3, i) << 24 | byte(0, i) << 16 | byte(1, i) << 8 | byte(2, i);
        }
    }

private:
    void interpolateLinearly(const Knot& from, const Knot& to, int channel) noexcept {
        const float start = from.color.channels[channel];
        const float change = to.color.channels[channel] - start;
        float* const out = channels_[channel];
        for (int32_t i = 0; i < count_; ++i) out[i] = start + change * t_[i];
    }

    /// Cubic Hermite interpolation.
    void interpolateSmoothly(const Knot& from, const Knot& to, float distance,
                             int channel) noexcept {
        const float start = from.color.channels[channel];
        const float end = to.color.channels[channel];
        const float startSlope = from.slope.channels[channel] * distance;
        const float endSlope = to.slope.channels[channel] * distance;
        float* const out = channels_[channel];
        for (int32_t i = 0; i < count_; ++i) {
            const float t = t_[i];
            const float t2 = t * t;
            const float t3 = t2 * t;
            const float h00 = 2.0F * t3 - 3.0F * t2 + 1.0F;
            const float h01 = 3.0F * t2 - 2.0F * t3;
            const float h10 = t3 - 2.0F * t2 + t;
            const float h11 = t3 - t2;
            out[i] = h00 * start + h01 * end + h10 * startSlope + h11 * endSlope;
        }
    }

    static float unit(float c) noexcept {
        const float raised = c > 0.0F ? c : 0.0F;
        return raised < 1.0F ? raised : 1.0F;
    }

    void clampToUnit() noexcept {
        for (float(&channel)[kMost] : channels_) {
            for (int32_t i = 0; i < count_; ++i) channel[i] = unit(channel[i]);
        }
    }

    void divideByAlpha() noexcept {
        const float* const alpha = channels_[3];
        for (int channel = 0; channel < 3; ++channel) {
            float* const c = channels_[channel];
            for (int32_t i = 0; i < count_; ++i) {
                c[i] = unit(c[i] / (alpha[i] > 0.0F ? alpha[i] : 1.0F));
            }
        }
    }

    void multiplyByAlpha() noexcept {
        for (int channel = 0; channel < 3; ++channel) {
            for (int32_t i = 0; i < count_; ++i) channels_[channel][i] *= channels_[3][i];
        }
    }

    /// Four scales, then four biases.
    void transform(const float* values) noexcept {
        for (int channel = 0; channel < kChannels; ++channel) {
            const float scale = values[channel];
            const float bias = values[kChannels + channel];
            float* const c = channels_[channel];
            for (int32_t i = 0; i < count_; ++i) c[i] = unit(c[i] * scale + bias);
        }
    }

    void makeLinear() noexcept {
        for (int channel = 0; channel < 3; ++channel) {
            float* const c = channels_[channel];
            for (int32_t i = 0; i < count_; ++i) c[i] = linearOfSrgb(c[i]);
        }
    }

    int32_t count_;
    float t_[kMost];  ///< positions, then their fractions between two knots
    float channels_[kChannels][kMost];
};

/// The first entry at or after `entry` whose position is not before the offset.
int32_t entryAt(float offset, int32_t entry, int32_t span) noexcept {
    const auto isBefore = [=](int32_t i) { return EntryBlock::positionOf(i, span) < offset; };
    const auto estimate = static_cast<int32_t>(offset * (ColorRamp::kSize - 1)) / span;
    int32_t end = std::clamp(estimate, entry, ColorRamp::kSize);
    while (end > entry && !isBefore(end - 1)) --end;
    while (end < ColorRamp::kSize && isBefore(end)) ++end;
    return end;
}

/// Fills the entries `first` to `end` - 1 by blocks that `prepare` gives their colours.
template <class Prepare>
void fillBlocks(int32_t first, int32_t end, const RampOptions& options, ColorRamp& ramp,
                const Prepare& prepare) noexcept {
    for (int32_t entry = first; entry < end; entry += EntryBlock::kMost) {
        EntryBlock block(entry, std::min(EntryBlock::kMost, end - entry),
                         options.isMirrored ? 2 : 1);
        prepare(block);
        block.pack(options, ramp.pixels + entry);
    }
}

uint32_t pixelOf(const Color& color, const RampOptions& options) noexcept {
    uint32_t pixel = 0;
    EntryBlock block(0, 1, 1);
    block.setColor(color);
    block.pack(options, &pixel);
    return pixel;
}

/// Entry i is the colour at i * span / 1023, between the last knot that is not beyond this place
/// and the first one that is; past the last knot it is the last colour.
void fillEntries(const Knots& knots, const RampOptions& options, ColorRamp& ramp) noexcept {
    const int32_t span = options.isMirrored ? 2 : 1;
    int32_t entry = 0;
    for (int32_t i = 1; i < knots.count(); ++i) {
        const Knot& from = knots[i - 1];
        const Knot& to = knots[i];
        const int32_t end = entryAt(to.offset, entry, span);
        fillBlocks(entry, end, options, ramp,
                   [&](EntryBlock& block) { block.interpolate(from, to, options.isSmooth); });
        entry = end;
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
    if (options.isSmooth) setSlopes(knots);
    fillEntries(knots, options, ramp);
    ramp.lastColor = pixelOf(knots[count - 1].color, options);
    uint32_t everyBit = ramp.lastColor;
    for (const uint32_t pixel : ramp.pixels) everyBit &= pixel;
    ramp.isOpaque = alphaOf(everyBit) == 255;
    return true;
}

}  // namespace vg::raster
