#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "vg/raster/kernels/gradient_runs.h"
#include "vg/raster/kernels/gradient_spreads.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/paint/conical_angles.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {

// Gradients as sources of pixels.
//
// A row is cut into chunks of kGradientChunk columns at fixed places. A chunk starts from the exact
// value at the centre of the pixel before it and adds an increment a pixel. So a pixel's colour
// depends on its place alone, not on the shape around it, and the error of the increment does not
// grow along the row.
//
// A gradient is a type with a Chunk, the values that its chunks start from, and pixels(), which
// writes `count` pixels from the one that is k steps after the chunk's start. kIsVectorised: see
// span_sources.h.

inline constexpr int32_t kGradientChunk = 64;

inline RowLine lineOf(const PixelPlane& plane, int32_t x, int32_t y) noexcept {
    return {static_cast<float>(plane.at(x, y)), static_cast<float>(plane.perX)};
}

struct LinearGradient {
    static constexpr bool kIsVectorised = true;

    struct Chunk {
        int64_t start = 0;

        Chunk() noexcept = default;
        Chunk(const GradientState& state, int32_t x, int32_t y) noexcept
            : start(toFixedParameter(state.parameter.at(x, y))) {}
    };

    static void pixels(const GradientState& state, const Chunk& chunk, int32_t k, int32_t count,
                       uint32_t* out) noexcept {
        const int64_t step = state.parameterPerX;
        kernels().linearPixels({state.ramp, state.spread, chunk.start + step * k, step}, count,
                               out);
    }
};

struct RadialGradient {
    static constexpr bool kIsVectorised = true;

    struct Chunk {
        RowLine u, v, dot, cross;

        Chunk() noexcept = default;
        Chunk(const GradientState& state, int32_t x, int32_t y) noexcept
            : u(lineOf(state.u, x, y)),
              v(lineOf(state.v, x, y)),
              dot(lineOf(state.dot, x, y)),
              cross(lineOf(state.cross, x, y)) {}
    };

    static void pixels(const GradientState& state, const Chunk& chunk, int32_t k, int32_t count,
                       uint32_t* out) noexcept {
        kernels().radialPixels(
            {state.ramp, state.spread, k, chunk.u, chunk.v, chunk.dot, chunk.cross, state.scale},
            count, out);
    }
};

/// 1 / sqrt(d) by an estimate from the bits of d and one Newton step (C. Lomont, "Fast inverse
/// square root", 2003); within 0.2 %. Finite for 0.
inline float fastInverseSqrt(float d) noexcept {
    const float y = std::bit_cast<float>(0x5F3759DFU - (std::bit_cast<uint32_t>(d) >> 1));
    return y * (1.5F - 0.5F * d * y * y);
}

/// Angles from a table, a full turn being 2^18; no atan2 a pixel.
struct ConicalGradient {
    static constexpr bool kIsVectorised = false;

    struct Chunk {
        RowLine u, v;

        Chunk() noexcept = default;
        Chunk(const GradientState& state, int32_t x, int32_t y) noexcept
            : u(lineOf(state.u, x, y)), v(lineOf(state.v, x, y)) {}
    };

    static void pixels(const GradientState& state, const Chunk& chunk, int32_t k, int32_t count,
                       uint32_t* out) noexcept {
        withSpread(state.spread,
                   [&](auto spread) { entries<decltype(spread)>(state, chunk, k, count, out); });
        for (int32_t i = 0; i < count; ++i) out[i] = state.ramp[out[i]];
    }

private:
    template <class Spread>
    static void entries(const GradientState& state, const Chunk& chunk, int32_t k, int32_t count,
                        uint32_t* out) noexcept {
        const Chunk line = chunk;  // a copy, since `out` might hide it from the compiler
        for (int32_t i = 0; i < count; ++i) {
            const auto at = static_cast<float>(k + i);
            out[i] = static_cast<uint32_t>(entryOf(line.u.at(at), line.v.at(at)));
        }
        for (int32_t i = 0; i < count; ++i) {
            const auto angle = static_cast<double>(state.angles[out[i]]);
            out[i] = Spread::conicalEntry(static_cast<int64_t>(angle * state.repeats) >> 8);
        }
    }

    /// The entry of the table for the direction (u, v); the middle for none.
    static int32_t entryOf(float u, float v) noexcept {
        const float scale = fastInverseSqrt(u * u + v * v);
        return stepAlong(v * scale) * kAngleSteps + stepAlong(u * scale);
    }

    /// Row or column of a coordinate in -1..1, which the estimate may slightly leave.
    static int32_t stepAlong(float coordinate) noexcept {
        constexpr float kLast = kAngleSteps - 1;
        const float step = (coordinate + 1.0F) * kAngleScale;
        const float raised = step > 0.0F ? step : 0.0F;
        return static_cast<int32_t>(raised < kLast ? raised : kLast);
    }
};

/// The pixels of a gradient along one row.
template <class Gradient>
class GradientPaint {
public:
    static constexpr bool kIsVectorised = Gradient::kIsVectorised;

    GradientPaint(const SpanContext& span, int32_t y) noexcept : state_(span.gradient), y_(y) {}

    static int32_t partEnd(int32_t x) noexcept { return chunkOf(x) + kGradientChunk; }

    /// Valid until the next call. The columns x to x + count - 1 lie in one chunk.
    const uint32_t* pixels(int32_t x, int32_t count) noexcept {
        write(x, count, pixels_);
        return pixels_;
    }

    /// The same pixels into memory of the caller.
    void write(int32_t x, int32_t count, uint32_t* out) noexcept {
        const int32_t chunkX = chunkOf(x);
        if (chunkX != chunkX_) {
            chunkX_ = chunkX;
            chunk_ = typename Gradient::Chunk(state_, chunkX - 1, y_);
        }
        Gradient::pixels(state_, chunk_, x - chunkX + 1, count, out);
    }

private:
    static int32_t chunkOf(int32_t x) noexcept { return x & ~(kGradientChunk - 1); }

    const GradientState& state_;
    int32_t y_;
    int32_t chunkX_ = -1;
    typename Gradient::Chunk chunk_;
    uint32_t pixels_[kGradientChunk];
};

}  // namespace vg::raster
