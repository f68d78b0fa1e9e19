#pragma once

#include <cstdint>
#include <limits>
#include <variant>

#include "vg/raster/paint/texture_state.h"
#include "vg/raster/span/gradient_paints.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {

// Paints as sources of pixels. A paint is made for one row and gives the pixels of columns in
// pieces: partEnd(x) is where the piece that begins at column x has to end at the latest, and
// pixels(x, count) gives a pixel for each index below count, valid until the next call.
// kIsVectorised: made by SIMD, so that a few pixels more cost nothing; only others are trimmed.

/// A paint of one colour.
class SolidPaint {
public:
    struct Pixels {
        uint32_t color;
        uint32_t operator[](int32_t /*i*/) const noexcept { return color; }
    };

    static constexpr bool kIsVectorised =
        false;  // of the blend modes that get here, most are scalar

    SolidPaint(const SpanContext& span, int32_t /*y*/) noexcept : pixels_{span.color} {}
    static int32_t partEnd(int32_t /*x*/) noexcept { return std::numeric_limits<int32_t>::max(); }
    Pixels pixels(int32_t /*x*/, int32_t /*count*/) const noexcept { return pixels_; }
    uint32_t color() const noexcept { return pixels_.color; }

private:
    Pixels pixels_;
};

using LinearPaint = GradientPaint<LinearGradient>;
using RadialPaint = GradientPaint<RadialGradient>;
using ConicalPaint = GradientPaint<ConicalGradient>;

/// The pixels of a texture along one row.
class PatternPaint {
public:
    static constexpr bool kIsVectorised = false;

    PatternPaint(const SpanContext& span, int32_t y) noexcept : texture_(span.pattern), y_(y) {}

    static int32_t partEnd(int32_t x) noexcept { return LinearPaint::partEnd(x); }
    const uint32_t* pixels(int32_t x, int32_t count) noexcept {
        sampleTexture(texture_, x, y_, count, pixels_);
        return pixels_;
    }

private:
    const TextureState& texture_;
    int32_t y_;
    uint32_t pixels_[kGradientChunk];
};

/// Any of the paints above, known only when the row is drawn: for what is too rare to have span
/// functions for each paint.
class AnyPaint {
public:
    static constexpr bool kIsVectorised = false;

    AnyPaint(const SpanContext& span, int32_t y) noexcept : paint_(make(span, y)) {}

    static int32_t partEnd(int32_t x) noexcept { return LinearPaint::partEnd(x); }
    // NOLINTNEXTLINE(bugprone-exception-escape): the variant always holds a paint
    [[gnu::noinline]] const uint32_t* pixels(int32_t x, int32_t count) noexcept {
        return std::visit([=](auto& paint) { return paint.pixels(x, count); }, paint_);
    }

private:
    using Paint = std::variant<LinearPaint, RadialPaint, ConicalPaint, PatternPaint>;

    static Paint make(const SpanContext& span, int32_t y) noexcept {
        switch (span.paint) {
            case PaintKind::kLinearGradient:
                return LinearPaint(span, y);
            case PaintKind::kRadialGradient:
                return RadialPaint(span, y);
            case PaintKind::kConicalGradient:
                return ConicalPaint(span, y);
            case PaintKind::kPattern:
            case PaintKind::kColor:
                break;
        }
        return PatternPaint(span, y);
    }

    Paint paint_;
};

/// The texels of a repeated image as they are (see isDirectCopy).
class DirectPaint {
public:
    static constexpr bool kIsVectorised = true;

    DirectPaint(const SpanContext& span, int32_t y) noexcept
        : width_(span.pattern.image.width), texelX_(span.direct.texelX) {
        const SampledImage& image = span.pattern.image;
        const int32_t texelY = (y + span.direct.texelY) % image.height;
        // Rows of 32-bit images begin at multiples of 4 bytes.
        texels_ = reinterpret_cast<const uint32_t*>(image.pixels + int64_t{texelY} * image.stride);
    }

    int32_t partEnd(int32_t x) const noexcept { return x + width_ - texelAt(x); }
    const uint32_t* pixels(int32_t x, int32_t /*count*/) const noexcept {
        return texels_ + texelAt(x);
    }

private:
    int32_t texelAt(int32_t x) const noexcept { return (x + texelX_) % width_; }

    int32_t width_, texelX_;
    const uint32_t* texels_;
};

}  // namespace vg::raster
