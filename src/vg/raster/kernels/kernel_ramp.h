#pragma once

// Kernels: the entries of a colour ramp between two stops, a vector of them at a time, from their
// place between the stops to pixels.

#include "vg/raster/kernels/gradient_runs.h"
#include "vg/raster/kernels/lanes.h"
#include "vg/raster/pixels/linear_curve.h"

namespace vg::raster {
namespace {

constexpr int kColorChannels = 3;
constexpr int kAlpha = 3;

/// Clamped to 0..1; NaN becomes 0.
QUOR_LANES_INLINE F32s unit(F32s c) noexcept { return smaller(larger(c, F32s{}), F32s{} + 1.0F); }

/// How far the entries from `entry` on are on the way between the stops.
QUOR_LANES_INLINE F32s fractionsOf(const RampRun& run, int32_t entry) noexcept {
    const F32s entries = __builtin_convertvector(kLaneNumbers + entry, F32s);
    return (entries * run.span / kLastRampEntry - run.offset) / run.distance;
}

struct LinearCurve {
    [[gnu::always_inline]] static F32s at(const RampCurve& curve, F32s t) noexcept {
        return curve.start + (curve.end - curve.start) * t;
    }
};

/// Cubic Hermite interpolation.
struct SmoothCurve {
    [[gnu::always_inline]] static F32s at(const RampCurve& curve, F32s t) noexcept {
        const F32s t2 = t * t;
        const F32s t3 = t2 * t;
        const F32s h00 = 2.0F * t3 - 3.0F * t2 + 1.0F;
        const F32s h01 = 3.0F * t2 - 2.0F * t3;
        const F32s h10 = t3 - 2.0F * t2 + t;
        const F32s h11 = t3 - t2;
        return h00 * curve.start + h01 * curve.end + h10 * curve.startSlope + h11 * curve.endSlope;
    }
};

QUOR_LANES_INLINE void divideByAlpha(F32s (&c)[4]) noexcept {
    const F32s divisor = c[kAlpha] > 0.0F ? c[kAlpha] : F32s{} + 1.0F;
    for (int i = 0; i < kColorChannels; ++i) c[i] = unit(c[i] / divisor);
}

/// `values` are four scales, then four biases.
QUOR_LANES_INLINE void transformColors(const float* values, F32s (&c)[4]) noexcept {
    for (int i = 0; i < 4; ++i) c[i] = unit(c[i] * values[i] + values[4 + i]);
}

QUOR_LANES_INLINE F32s linearLanes(F32s c) noexcept {
    float lanes[kWords];
    store(lanes, c);
    for (float& lane : lanes) lane = linearOfSrgb(lane);
    return load<F32s>(lanes);
}

QUOR_LANES_INLINE U32s bytesOf(F32s c) noexcept {
    return (U32s) __builtin_convertvector(c * 255.0F + 0.5F, I32s);
}

/// What is done to interpolated colours before they are packed. Most ramps need no more than this.
struct PlainColors {
    [[gnu::always_inline]] static void prepare(const RampOptions& /*options*/,
                                               F32s (&c)[4]) noexcept {
        for (F32s& channel : c) channel = unit(channel);
    }
};

struct AnyColors {
    [[gnu::always_inline]] static void prepare(const RampOptions& options, F32s (&c)[4]) noexcept {
        PlainColors::prepare(options, c);
        if (options.interpolatesPremultiplied) divideByAlpha(c);
        if (options.colorTransform != nullptr) transformColors(options.colorTransform, c);
        for (int i = 0; options.isLinearSpace && i < kColorChannels; ++i) c[i] = linearLanes(c[i]);
    }
};

template <class Curve, class Colors>
QUOR_LANES_INLINE U32s entriesAt(const RampRun& run, const RampOptions& options,
                                 int32_t entry) noexcept {
    const F32s t = fractionsOf(run, entry);
    F32s c[4];
    for (int i = 0; i < 4; ++i) c[i] = Curve::at(run.channels[i], t);
    Colors::prepare(options, c);
    const F32s alpha = options.isPremultiplied ? c[kAlpha] : F32s{} + 1.0F;
    return bytesOf(c[kAlpha]) << 24 | bytesOf(c[0] * alpha) << 16 | bytesOf(c[1] * alpha) << 8 |
           bytesOf(c[2] * alpha);
}

template <class Curve, class Colors>
void fillRun(RampRun run, const RampOptions& options, uint32_t* pixels) noexcept {
    int32_t entry = run.first;
    for (; entry + kWords <= run.end; entry += kWords, pixels += kWords) {
        store(pixels, entriesAt<Curve, Colors>(run, options, entry));
    }
    const U32s rest = entriesAt<Curve, Colors>(run, options, entry);
    std::memcpy(pixels, &rest, static_cast<size_t>(run.end - entry) * sizeof(uint32_t));
}

void rampPixels(const RampRun& run, const RampOptions& options, uint32_t* pixels) noexcept {
    const bool isPlain = !options.interpolatesPremultiplied && !options.isLinearSpace &&
                         options.colorTransform == nullptr;
    const auto fill = options.isSmooth ? &fillRun<SmoothCurve, AnyColors>
                      : isPlain        ? &fillRun<LinearCurve, PlainColors>
                                       : &fillRun<LinearCurve, AnyColors>;
    fill(run, options, pixels);
}

}  // namespace
}  // namespace vg::raster
