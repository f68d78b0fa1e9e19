// Interpolates stops linearly, or smoothly by a cubic Hermite spline whose slopes are those between
// the neighbours of a stop, as in Catmull and Rom's (1974); the entries between two stops are one
// kernel call.

#include "vg/raster/paint/color_ramp.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/array.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/pixels/pixel_lanes.h"

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

static_assert(kLastRampEntry == ColorRamp::kSize - 1);

float spanOf(const RampOptions& options) noexcept { return options.isMirrored ? 2.0F : 1.0F; }

/// Where an entry lies among the stops' offsets.
float positionOf(int32_t entry, float span) noexcept {
    return static_cast<float>(entry) * span / kLastRampEntry;
}

/// The first entry at or after `entry` whose position is not before the offset.
int32_t entryAt(float offset, int32_t entry, float span) noexcept {
    const auto isBefore = [=](int32_t i) { return positionOf(i, span) < offset; };
    const auto estimate = static_cast<int32_t>(offset * kLastRampEntry / span);
    int32_t end = std::clamp(estimate, entry, ColorRamp::kSize);
    while (end > entry && !isBefore(end - 1)) --end;
    while (end < ColorRamp::kSize && isBefore(end)) ++end;
    return end;
}

/// The entries `first` to `end` - 1, which lie between two knots.
RampRun runBetween(const Knot& from, const Knot& to, int32_t first, int32_t end,
                   float span) noexcept {
    RampRun run = {first, end, span, from.offset, to.offset - from.offset, {}};
    for (int i = 0; i < kChannels; ++i) {
        run.channels[i] = {from.color.channels[i], to.color.channels[i],
                           from.slope.channels[i] * run.distance,
                           to.slope.channels[i] * run.distance};
    }
    return run;
}

uint32_t pixelOf(const Color& color, const RampOptions& options) noexcept {
    const Knot from = {0.0F, color, {}}, to = {1.0F, color, {}};
    uint32_t pixel = 0;
    kernels().rampPixels(runBetween(from, to, 0, 1, 1.0F), options, &pixel);
    return pixel;
}

/// Entry i is the colour at i * span / 1023, between the last knot that is not beyond this place
/// and the first one that is; past the last knot it is the last colour.
void fillEntries(const Knots& knots, const RampOptions& options, ColorRamp& ramp) noexcept {
    const float span = spanOf(options);
    int32_t entry = 0;
    for (int32_t i = 1; i < knots.count(); ++i) {
        const int32_t end = entryAt(knots[i].offset, entry, span);
        if (entry < end) {
            kernels().rampPixels(runBetween(knots[i - 1], knots[i], entry, end, span), options,
                                 ramp.pixels + entry);
        }
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
